#pragma once
// The girder dialog's logic: four tabs of text fields, two live section
// previews, and the command that builds the mesh.
#include "common/TextRules.h"
#include "model/BeamShape.h"

#include <array>
#include <string>

namespace velk {

// A preview as data: the coordinate window and three filled rectangles (top
// flange, web, bottom flange), each a corner and a size growing right and up.
struct SectionPicture {
  struct Rect {
    double x = 0, y = 0, width = 0, height = 0;
  };
  bool Visible = true;
  bool Drawn = false; // false: cleared, nothing to show
  double Left = 0, Top = 0, Right = 0, Bottom = 0;
  std::array<Rect, 3> Rects{};
};

class frmBeamShape {
public:
  frmBeamShape();

  // "End 1"
  std::string txtBL, txtBTFW, txtBTFT, txtBWH, txtBWT, txtBBFW, txtBBFT;
  // "End 2"
  std::string txtBTFWE, txtBTFTE, txtBWHE, txtBWTE, txtBBFWE, txtBBFTE, txtOffset;
  // "Material"
  std::string txtMOE, txtPR;
  // "Mesh"
  std::string txtNumXElements = "14";
  std::string txtNumYElements = "3";
  int chkProportionalMesh = 0; // 0 unchecked, 1 checked

  SectionPicture Picture1, Picture2;
  bool Unloaded = false; // the dialog has closed itself

  void Form_Activate();
  void cmdGenerate_Click();
  void cmdClose2_Click() { Unloaded = true; }
  void setEqual_Click();
  void Picture1_Click();
  void Picture2_Click();

  // A key released in a section field of End 1 or End 2.
  void txtBTFW_KeyUp() { KeyUpEnd1(txtBTFW); }
  void txtBTFT_KeyUp() { KeyUpEnd1(txtBTFT); }
  void txtBWH_KeyUp() { KeyUpEnd1(txtBWH); }
  void txtBWT_KeyUp() { KeyUpEnd1(txtBWT); }
  void txtBBFW_KeyUp() { KeyUpEnd1(txtBBFW); }
  void txtBBFT_KeyUp() { KeyUpEnd1(txtBBFT); }
  void txtBTFWE_KeyUp() { KeyUpEnd2(txtBTFWE); }
  void txtBTFTE_KeyUp() { KeyUpEnd2(txtBTFTE); }
  void txtBWHE_KeyUp() { KeyUpEnd2(txtBWHE); }
  void txtBWTE_KeyUp() { KeyUpEnd2(txtBWTE); }
  void txtBBFWE_KeyUp() { KeyUpEnd2(txtBBFWE); }
  void txtBBFTE_KeyUp() { KeyUpEnd2(txtBBFTE); }

  // Largest grid the generator builds; beyond it memory, not the user, would decide.
  static constexpr long kMaxNodes = 1000000;

private:
  void Fill_End1();
  void Fill_End2();
  void Draw_End1();
  void Draw_End2();
  void KeyUpEnd1(const std::string& field);
  void KeyUpEnd2(const std::string& field);
  // A key in a section field: the preview shows while the field is numeric.
  void KeyUp(const std::string& field, SectionPicture& pic, void (frmBeamShape::*draw)());
  // Runs a drawing step; a number beyond a Single's range gets a message.
  template <class Fn> void Guarded(Fn&& fn);
  bool CheckFields();
  // The section fields as girder parameters; the texts must be numeric.
  BeamShape FieldsToShape() const;
};

} // namespace velk
