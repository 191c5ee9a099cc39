#pragma once
// The view state: mouse tool, edit mode, model extents, orthographic volume,
// pan, rotation, zoom, clip bounds and every display option. The camera math is
// plain C++; the drawing files load the matrices kept here into GL.
#include "common/TextRules.h"

#include <array>
#include <functional>
#include <vector>

namespace velk {

class FieldReader;
class FieldWriter;
class Nodeb;
class Nodes;
class fourNode;
class fourNodes;
class twoNodes;

using Matrix4 = std::array<double, 16>; // column-major, as GL keeps it

// The values the modes of the view take; the fields stay plain integers
// because the settings file and the dialogs store them as such.
struct ViewModes { // the tool of the left mouse button
  enum : Long {
    Select = 0,
    Translate = 1,
    Rotate = 2,
    Zoom = 4,
    BitmapBox = 6,
    ZoomInCenter = 7,
    ZoomOutCenter = 8,
    MoveToCenter = 9
  };
};
struct PropertyModes { // the edit mode
  enum : Long { Plate = 1, Stiffener = 2, Boundary = 3, Brace = 4, Load = 5 };
};
struct MeshModes { // what a pick selects
  enum : Long { Node = 1, Stiffener = 2, Plate = 3 };
};
struct ScreenModes {
  enum : Long { Actual = 0, Fit = 1 };
};
struct StressPlots { // OptionShowStress
  enum : Long { None = 0, Sx = 1, Sy = 2, Sxy = 3, Mises = 4 };
};
struct Vec3f {
  float x = 0, y = 0, z = 0;
};

// A colour of the stress map, red, green, blue, alpha: zero white, +r pure red,
// -r pure blue.
using StressColour = std::array<float, 4>;
StressColour StressColourOf(Single s, Single r);

// The class of object that an edit mode picks.
constexpr Long MeshModeOf(Long propertyMode) {
  return propertyMode == PropertyModes::Plate       ? MeshModes::Plate
         : propertyMode == PropertyModes::Stiffener ? MeshModes::Stiffener
                                                    : MeshModes::Node;
}

class View {
public:
  View();

  Long ViewMode = ViewModes::Select;
  Long PropertyMode = PropertyModes::Plate;
  Long MeshMode = MeshModes::Plate;
  Long ScreenMode = ScreenModes::Actual;
  double ViewX = 0, ViewY = 0;
  double ViewRX = 0, ViewRY = 0, ViewRZ = 0;
  Single ViewZoom = 1;
  Single ScreenModeFactorX = 1, ScreenModeFactorY = 1;
  double LimitX0 = 0, LimitX1 = 0, LimitY0 = 0;
  Single LimitY1 = 0;
  double LimitMaxX = 0, LimitMaxY = 0;
  Single LimitMaxXY = 0;
  double LimitCX = 0;
  Single LimitCY = 0;
  double SLimitX0 = 0, SLimitX1 = 0, SLimitY0 = 0, SLimitY1 = 0;
  double SLimitZ0 = 0;
  Single SLimitZ1 = 0;
  double SLimitMaxX = 0, SLimitMaxY = 0;
  Single SLimitMaxXY = 0;
  double SLimitCX = 0;
  Single SLimitCY = 0;
  Single HClipFrom = 0, HClipTo = 0, VClipFrom = 0, VClipTo = 0;
  double maxStress = 0;

  Boolean OptionShowNodeNumber = vbFalse;
  Boolean OptionShowStiffenerNumber = vbFalse;
  Boolean OptionShowPlateNumber = vbFalse;
  Boolean OptionShowCoordinate = vbTrue;
  Boolean OptionShowPlate = vbTrue;
  Boolean OptionShowStiffener = vbTrue;
  Boolean OptionShowBoundary = vbTrue;
  Boolean OptionShowBoundaryValue = vbFalse;
  Boolean OptionShowLoad = vbTrue;
  Boolean OptionShowLoadValue = vbFalse;
  Boolean OptionShowBrace = vbTrue;
  Boolean OptionShowBraceValue = vbFalse;
  Boolean OptionShowModel = vbTrue;
  Boolean OptionShowResult = vbFalse;
  // The further mode drawn with each node's ShownZ in place of its zcoord; 0
  // for the run's own. A new run, model or mesh sets it back to 0.
  int ModeShown = 0;
  Boolean OptionHideModelWhenBuckle = vbFalse;
  Single OptionInpMagFactor = 1;
  Single OptionOutpMagFactor = 1;
  Single OptionSelectedMarker_Size = 3;
  Single OptionPropertyMarker_Size = 3;
  Single OptionLayerOffset_Distance = 3;
  Integer OptionFontSize = 10;
  Long OptionShowStress = StressPlots::None;
  Single OptionZoomCenterFactor = 2;
  Boolean OptionShading = vbFalse;

  // Client size of the main window in pixels.
  double ScaleWidth = 639;
  double ScaleHeight = 465;

  // What the last Draw_Projection / Draw_ModelView built.
  Matrix4 Projection{};
  Matrix4 ModelView{};
  // The viewport and matrices of the last frame on the screen; the mapping
  // between window and model works from these.
  std::array<int, 4> FrameViewport{0, 0, 639, 465};
  Matrix4 FrameModelView{};
  Matrix4 FrameProjection{};

  // Window y of a mouse position (origin top left), as the depth read wants it.
  int WindowY(double Y) const;
  // A mouse position and the depth read there to a model point; false when the
  // depth says the pointer is off the model (0.1 or less, 0.9 or more).
  bool ScreenToModel(double X, double Y, float depth, double& ox, double& oy, double& oz) const;
  // A model point to window coordinates (y up), as gluProject gives them.
  bool ModelToScreen(double x, double y, double z, double& wx, double& wy, double& wz) const;

  // The model extents come from the nodes; fewer than four give a unit square.
  void Set_Limits(const Nodes& nodes);
  void Draw_Projection();
  void Draw_ModelView();
  // A frame on demand: the owner of the view installs RefreshHook; without
  // one (no window) there is nothing to draw.
  void Refresh();
  std::function<void()> RefreshHook;
  void ScreenModeChange(const Nodes& nodes);
  void Zoom_All();
  void ViewAngle();
  void LeftView();
  void TopView();
  void Center(Single pxcoord, Single pycoord);
  // The drag tools, from the press to the release in client pixels: a drag
  // across the whole window pans by the orthographic width (tilt corrected),
  // turns by 90 degrees, or adds 100% to the zoom.
  void Translate_Drag(Single DownX, Single DownY, Single UpX, Single UpY);
  void Rotate_Drag(Single DownX, Single DownY, Single UpX, Single UpY);
  void Zoom_Drag(Single DownX, Single UpX);
  void ZoomInOutCenter(Single pxcoord, Single pycoord, Integer InOut);
  void SetUpClipEq(double hfrom, double hto, double vfrom, double vto);
  void Initialization(const Nodes& nodes);

  void ReadData1_4Option(FieldReader& in);
  void StoreData1_4Option(FieldWriter& out) const;

  // The buckled shape: a node where the two magnifications put it.
  Vec3f DeformedPosition(const Nodeb& n) const;
  // The corners of a plate's buckled shape in drawing order (Node1, Node4,
  // Node3, Node2) and its face normal (P1 - P3) x (P4 - P3), sized by the face.
  void DeformedPlate(const fourNode& p, Vec3f (&P)[4], Vec3f& normal) const;
  // The face normals of the plates that take part, averaged per node and left
  // unnormalised; indexed by node ID, entry 0 unused.
  std::vector<Vec3f> AveragedNormals(const Nodes& nodes, const fourNodes& plates) const;

  // Extremes of the component in OptionShowStress (plates, and for Sx the
  // stiffeners too) and the colour scale r taken from them.
  Single StressScale(const Nodes& nodes, const twoNodes& stiffeners, Single& maxS,
                     Single& minS) const;
  // The stress frame's modelview: as Draw_ModelView, but always in true proportion.
  Matrix4 StressModelView() const;
  // The value back from a pixel's blue and red; false for white, black and
  // grey, which tell nothing.
  bool StressValueOf(Single CB, Single CR, Single& value) const;
  void ShowStressValue(Single CB, Single CR);
  // The stress window, while it is shown, takes the values of the probe and
  // the extremes of each stress frame.
  std::function<void(Single)> ShowStress;
  std::function<void(Single, Single)> ShowMaxMin;

private:
  Matrix4 BuildModelView(bool trueProportion) const;
  void ComputeLimits(const Nodes& nodes);
  void SetOptionFallbacks();
};

} // namespace velk
