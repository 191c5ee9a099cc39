#pragma once
// The view option dialog's logic: what is drawn, the scale of the buckled
// shape, marker and font sizes and the centre zoom factor, all bound to gView.
#include <string>

namespace velk {

class frmOption {
public:
  // Caption "View Option". Check boxes: 0 clear, 1 checked.
  // Tab "Model"
  int chkCoordinate = 0;          // "Show Coordinate System"
  int chkBoundary = 0;            // "Show Boundary Conditions"
  int chkLoad = 0;                // "Show Loads"
  int chkBrace = 0;               // "Show Braces"
  int chkStiffener = 0;           // "Show Stiffeners"
  int chkBoundaryValue = 0;       // "Show Values"
  int chkLoadValue = 0;           // "Show Values"
  int chkBraceValue = 0;          // "Show Values"
  int chkShowNodeNumber = 0;      // "Show Node Number"
  int chkShowStiffenerNumber = 0; // "Show Stiffener Number"
  int chkShowPlateNumber = 0;     // "Show Plate Number"
  int chkPlate = 0;               // "Show Plate"
  // Tab "Result"
  std::string txtInpMag;      // "In-plane Magnification Factor :"
  std::string txtOutpMag;     // "Out-of-plane Magnification Factor :"
  int chkHideModelBuckle = 0; // "Hide the model when buckled shape is shown"
  int chkShade = 0;           // "Shading"
  // Tab "Marker"
  std::string txtSelectedMarker; // "Selected Element Marker Size :"
  std::string txtPropertyMarker; // "Property Marker Size :"
  std::string txtLayerOffset;    // "Layer Offset Distance :"
  std::string txtFontSize;       // "Font Size", 6 to 19
  // Tab "Zoom"
  std::string txtZoomFactor; // "Zoom In/Out Center Factor [1.0 - 10.0]", 1 to 10

  bool Unloaded = false;

  void Form_Activate();
  void cmdApply_Click(); // the dialog stays open
  void cmdClose_Click() { Unloaded = true; }
};

} // namespace velk
