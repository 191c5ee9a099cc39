#include "forms/frmBeamShape.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "editing/Selection.h"
#include "mesh/GirderBuilder.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace velk {

namespace {

constexpr const char* kNumbers = "Input Data Error : Numbers!";
constexpr const char* kOutOfRange = "Input Data Error : Number out of range!";
constexpr const char* kWeb = "Invalid Input Data : Beam Web!";
constexpr const char* kLength = "Invalid Input Data : Beam Length!";

bool AllNumeric(std::initializer_list<const std::string*> fields) {
  return std::all_of(fields.begin(), fields.end(),
                     [](const std::string* f) { return IsNumeric(*f); });
}

bool IsZero(const std::string& text) {
  return TextToDouble(text) == 0.0;
}

// Fills the picture from one end's section, as the dialog draws it.
void DrawSection(SectionPicture& pic, Single topW, Single topT, Single webH, Single webT,
                 Single botW, Single botT) {
  pic.Drawn = false;
  double H = double(topT) + webH + botT;
  double W = std::max(topW, botW);
  if (webT > W) W = webT;
  if (H == 0 || W == 0) return;
  double C = static_cast<Single>(0.6 * std::max(H, W));
  double D = (double(topT) - botT) * 0.5;
  pic.Left = 0;
  pic.Top = 2 * C;
  pic.Right = 2 * C;
  pic.Bottom = 0;
  pic.Rects[0] = {C - topW * 0.5, C + webH * 0.5 - D, topW, topT};
  pic.Rects[1] = {C - webT * 0.5, C - webH * 0.5 - D, webT, webH};
  pic.Rects[2] = {C - botW * 0.5, C - webH * 0.5 - botT - D, botW, botT};
  pic.Drawn = true;
}

// A 16-bit count from text, or nothing when it cannot be one.
bool CountFits(const std::string& text, Integer& out) {
  double d = TextToDouble(text);
  if (!(std::fabs(d) < 32767.5)) return false;
  out = CInt(d);
  return true;
}

} // namespace

frmBeamShape::frmBeamShape() = default;

BeamShape frmBeamShape::FieldsToShape() const {
  BeamShape b;
  b.Top_Flange_W = TextToSingle(txtBTFW);
  b.Top_Flange_T = TextToSingle(txtBTFT);
  b.Web_H = TextToSingle(txtBWH);
  b.Web_T = TextToSingle(txtBWT);
  b.Bot_Flange_W = TextToSingle(txtBBFW);
  b.Bot_Flange_T = TextToSingle(txtBBFT);
  b.Length = TextToSingle(txtBL);
  b.Top_Flange_WE = TextToSingle(txtBTFWE);
  b.Top_Flange_TE = TextToSingle(txtBTFTE);
  b.Web_HE = TextToSingle(txtBWHE);
  b.Web_TE = TextToSingle(txtBWTE);
  b.Bot_Flange_WE = TextToSingle(txtBBFWE);
  b.Bot_Flange_TE = TextToSingle(txtBBFTE);
  b.Offset = TextToSingle(txtOffset);
  b.ProportionalMesh = chkProportionalMesh ? 1 : 0;
  return b;
}

template <class Fn> void frmBeamShape::Guarded(Fn&& fn) {
  try {
    fn();
  } catch (const Fault&) {
    MsgBox(kOutOfRange);
  }
}

void frmBeamShape::Picture1_Click() {
  Guarded([this] { Draw_End1(); });
}
void frmBeamShape::Picture2_Click() {
  Guarded([this] { Draw_End2(); });
}

void frmBeamShape::Form_Activate() {
  Guarded([this] {
    Fill_End1();
    Fill_End2();
  });
}

void frmBeamShape::Fill_End1() {
  const BeamShape& b = gBeamShape();
  txtBTFW = SingleToText(b.Top_Flange_W);
  txtBTFT = SingleToText(b.Top_Flange_T);
  txtBWH = SingleToText(b.Web_H);
  txtBWT = SingleToText(b.Web_T);
  txtBBFW = SingleToText(b.Bot_Flange_W);
  txtBBFT = SingleToText(b.Bot_Flange_T);
  txtBL = SingleToText(b.Length);
  txtMOE = SingleToText(gMaterial().MOE);
  txtPR = SingleToText(gMaterial().PR);
  const Nodes& nodes = gMesh().Nodes();
  if (nodes.NumberNodesX() > 1 && nodes.NumberNodesY() > 1) {
    txtNumXElements = std::to_string(nodes.NumberNodesX() - 1);
    txtNumYElements = std::to_string(nodes.NumberNodesY() - 1);
  }
  chkProportionalMesh = b.ProportionalMesh;
  Draw_End1();
}

void frmBeamShape::Fill_End2() {
  const BeamShape& b = gBeamShape();
  txtBTFWE = SingleToText(b.Top_Flange_WE);
  txtBTFTE = SingleToText(b.Top_Flange_TE);
  txtBWHE = SingleToText(b.Web_HE);
  txtBWTE = SingleToText(b.Web_TE);
  txtBBFWE = SingleToText(b.Bot_Flange_WE);
  txtBBFTE = SingleToText(b.Bot_Flange_TE);
  txtOffset = SingleToText(b.Offset);
  Draw_End2();
}

void frmBeamShape::setEqual_Click() {
  txtBTFWE = txtBTFW;
  txtBTFTE = txtBTFT;
  txtBWHE = txtBWH;
  txtBWTE = txtBWT;
  txtBBFWE = txtBBFW;
  txtBBFTE = txtBBFT;
  Guarded([this] { Draw_End2(); });
}

// One end's preview, the same for both ends: checks, then the section drawn
// from a scratch copy of the fields. End 1 also checks the length; End 2 reads
// the offset, which does not show in a section.
static void DrawEnd(SectionPicture& pic, const std::string& tfw, const std::string& tft,
                    const std::string& wh, const std::string& wt, const std::string& bfw,
                    const std::string& bft, const std::string& lengthOrOffset, bool isLength) {
  if (!AllNumeric({&tfw, &tft, &wh, &wt, &bfw, &bft, &lengthOrOffset}))
    return void(MsgBox(kNumbers));
  if (IsZero(wt) || IsZero(wh)) return void(MsgBox(kWeb));
  if (isLength && IsZero(lengthOrOffset)) return void(MsgBox(kLength));
  Single topW = TextToSingle(tfw), topT = TextToSingle(tft);
  const Single webH = TextToSingle(wh), webT = TextToSingle(wt);
  Single botW = TextToSingle(bfw), botT = TextToSingle(bft);
  TextToSingle(lengthOrOffset); // read like the others: a value beyond a Single fails here
  if (IsZero(tfw) || IsZero(tft)) topW = topT = 0;
  if (IsZero(bfw) || IsZero(bft)) botW = botT = 0;
  DrawSection(pic, topW, topT, webH, webT, botW, botT);
}

void frmBeamShape::Draw_End1() {
  DrawEnd(Picture1, txtBTFW, txtBTFT, txtBWH, txtBWT, txtBBFW, txtBBFT, txtBL, true);
}

void frmBeamShape::Draw_End2() {
  DrawEnd(Picture2, txtBTFWE, txtBTFTE, txtBWHE, txtBWTE, txtBBFWE, txtBBFTE, txtOffset, false);
}

void frmBeamShape::KeyUp(const std::string& field, SectionPicture& pic,
                         void (frmBeamShape::*draw)()) {
  try {
    if (!IsNumeric(field)) Raise(errTypeMismatch);
    pic.Visible = true;
    (this->*draw)();
  } catch (const Fault&) {
    pic.Visible = false;
  }
}

void frmBeamShape::KeyUpEnd1(const std::string& field) {
  KeyUp(field, Picture1, &frmBeamShape::Draw_End1);
}
void frmBeamShape::KeyUpEnd2(const std::string& field) {
  KeyUp(field, Picture2, &frmBeamShape::Draw_End2);
}

// The checks of the command, in order; false after the first failure's message.
bool frmBeamShape::CheckFields() {
  if (!AllNumeric({&txtBTFW, &txtBTFT, &txtBWH, &txtBWT, &txtBBFW, &txtBBFT, &txtBL, &txtMOE,
                   &txtPR, &txtNumXElements, &txtNumYElements}) ||
      !AllNumeric({&txtBTFWE, &txtBTFTE, &txtBWHE, &txtBWTE, &txtBBFWE, &txtBBFTE, &txtOffset})) {
    MsgBox(kNumbers);
    return false;
  }
  // Every value must fit a Single before any is compared or zeroed.
  for (const std::string* f :
       {&txtBTFW, &txtBTFT, &txtBWH, &txtBWT, &txtBBFW, &txtBBFT, &txtBL, &txtMOE, &txtPR,
        &txtBTFWE, &txtBTFTE, &txtBWHE, &txtBWTE, &txtBBFWE, &txtBBFTE, &txtOffset}) {
    try {
      TextToSingle(*f);
    } catch (const Fault&) {
      MsgBox(kOutOfRange);
      return false;
    }
  }
  Integer nx = 0, ny = 0;
  bool nxFits = CountFits(txtNumXElements, nx), nyFits = CountFits(txtNumYElements, ny);
  if (nxFits && nx <= 0) return MsgBox("Invalid Input Data : Longitudinal!"), false;
  if (nyFits && ny <= 0) return MsgBox("Invalid Input Data : Transverse!"), false;
  if (!(TextToSingle(txtMOE) > 0)) return MsgBox("Invalid Input Data : MoE!"), false;
  if (!(TextToSingle(txtPR) > 0)) return MsgBox("Invalid Input Data : PR!"), false;
  if (IsZero(txtBTFW) || IsZero(txtBTFT)) txtBTFW = txtBTFT = "0";
  if (IsZero(txtBBFW) || IsZero(txtBBFT)) txtBBFW = txtBBFT = "0";
  if (IsZero(txtBWT) || IsZero(txtBWH)) return MsgBox(kWeb), false;
  if (IsZero(txtBTFWE) || IsZero(txtBTFTE)) txtBTFWE = txtBTFTE = "0";
  if (IsZero(txtBBFWE) || IsZero(txtBBFTE)) txtBBFWE = txtBBFTE = "0";
  if (IsZero(txtBWTE) || IsZero(txtBWHE)) return MsgBox(kWeb), false;
  if (IsZero(txtBL)) return MsgBox(kLength), false;

  // Limits of the grid: 16-bit counts, and a node count the machine can hold.
  if (!nxFits || nx > 32766)
    return MsgBox("Invalid Input Data : Longitudinal! (at most 32766 Elements)"), false;
  if (!nyFits || ny > 32766)
    return MsgBox("Invalid Input Data : Transverse! (at most 32766 Elements)"), false;
  if (long(nx + 1) * long(ny + 1) > kMaxNodes)
    return MsgBox("Invalid Input Data : Too many Elements! (at most 1000000 Nodes)"), false;

  // A graded grid needs a positive depth at both ends and two elements or more.
  if (chkProportionalMesh) {
    const GirderEnds ends = Girder_Ends(FieldsToShape());
    const Single ratio = ends.Ratio();
    if (ratio != 1.0f) {
      if (!(ends.H1 > 0) || !(ratio > 0) || !std::isfinite(ratio))
        return MsgBox("Invalid Input Data : Proportional Mesh needs a positive Depth at both "
                      "Ends!"),
               false;
      if (nx < 2)
        return MsgBox("Invalid Input Data : Proportional Mesh needs 2 or more Longitudinal "
                      "Elements!"),
               false;
    }
  }
  return true;
}

void frmBeamShape::cmdGenerate_Click() {
  if (gMesh().Nodes().Count() != 0 &&
      MsgBox("Existing Mesh will be destroyed!", vbOKCancel, "Warning") == vbCancel)
    return;
  try {
    if (!CheckFields()) return;
  } catch (const Fault&) {
    MsgBox(kOutOfRange);
    return;
  }

  if (gMesh().Nodes().Count() != 0) New_Model();

  gBeamShape() = FieldsToShape();
  gMaterial().MOE = TextToSingle(txtMOE);
  gMaterial().PR = TextToSingle(txtPR);
  Build_Girder(gBeamShape(), TextToInteger(txtNumXElements), TextToInteger(txtNumYElements),
               gMesh());

  gSelection().ClearSelectedItem();
  if (hooks().updateToolBar) hooks().updateToolBar();
  gView().Initialization(gMesh().Nodes());
  Unloaded = true;
}

} // namespace velk
