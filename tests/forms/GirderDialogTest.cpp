// The girder dialog before the command: filling the fields, the two section
// previews, the key handlers and "Set End 2 = End 1".
#include "TestSession.h"
#include "forms/frmBeamShape.h"
#include "session/ProjectFile.h"
#include "session/VELKMain.h"

#include <functional>
#include <string>
#include <vector>

namespace velk::test {
namespace {

using Text = std::vector<std::string>;
using Edit = std::function<void(frmBeamShape&)>;
using Field = std::string frmBeamShape::*;
const char* kNumbers = "Input Data Error : Numbers!";
const char* kWeb = "Invalid Input Data : Beam Web!";

class GirderDialog : public SessionTest {
protected:
  frmBeamShape form;
  void Activate() {
    form.Form_Activate();
    host.messages.clear();
  }
};

void ExpectRect(const SectionPicture::Rect& r, double x, double y, double w, double h) {
  EXPECT_NEAR(r.x, x, 1e-5);
  EXPECT_NEAR(r.y, y, 1e-5);
  EXPECT_NEAR(r.width, w, 1e-6);
  EXPECT_NEAR(r.height, h, 1e-6);
}

TEST_F(GirderDialog, OpensWithTheModelValuesAndTheCountsOfAMesh) {
  form.txtNumXElements = "9"; // kept without a mesh
  form.Form_Activate();
  EXPECT_TRUE(host.messages.empty());
  const std::pair<Field, const char*> fields[] = {
      {&frmBeamShape::txtBTFW, "12"},   {&frmBeamShape::txtBTFT, "0.5"},
      {&frmBeamShape::txtBWH, "16"},    {&frmBeamShape::txtBWT, "0.5"},
      {&frmBeamShape::txtBBFW, "12"},   {&frmBeamShape::txtBBFT, "0.5"},
      {&frmBeamShape::txtBL, "120"},    {&frmBeamShape::txtMOE, "29000"},
      {&frmBeamShape::txtPR, "0.3"},    {&frmBeamShape::txtNumXElements, "9"},
      {&frmBeamShape::txtBTFWE, "12"},  {&frmBeamShape::txtBWHE, "16"},
      {&frmBeamShape::txtBBFTE, "0.5"}, {&frmBeamShape::txtOffset, "0"}};
  for (const auto& [field, text] : fields)
    EXPECT_EQ(form.*field, text);
  EXPECT_TRUE(form.Picture1.Drawn && form.Picture2.Drawn);

  gBeamShape().Web_T = 1.0f / 3.0f;
  gBeamShape().ProportionalMesh = 1;
  gMaterial().MOE = 2e5f;
  gMesh().Nodes().SetNumberNodesX(21);
  gMesh().Nodes().SetNumberNodesY(6);
  form.Form_Activate();
  EXPECT_EQ(form.txtNumXElements, "20");
  EXPECT_EQ(form.txtNumYElements, "5");
  EXPECT_EQ(form.txtBWT, "0.3333333");
  EXPECT_EQ(form.txtMOE, "200000");
  EXPECT_EQ(form.chkProportionalMesh, 1);
}

TEST_F(GirderDialog, PreviewRectangles) {
  Activate();
  const double C = 10.2f; // 0.6 x the depth 17, as a Single
  for (const SectionPicture* p : {&form.Picture1, &form.Picture2}) {
    ASSERT_TRUE(p->Drawn);
    EXPECT_EQ(p->Left, 0);
    EXPECT_EQ(p->Bottom, 0);
    EXPECT_DOUBLE_EQ(p->Top, 2 * C);
    EXPECT_DOUBLE_EQ(p->Right, 2 * C);
    ExpectRect(p->Rects[0], C - 6, C + 8, 12, 0.5);
    ExpectRect(p->Rects[1], C - 0.25, C - 8, 0.5, 16);
    ExpectRect(p->Rects[2], C - 6, C - 8.5, 12, 0.5);
  }

  // A thicker top flange moves the section down, the widest part sets the
  // scale (the offset is read, but not drawn), and a missing top flange leaves
  // its thickness field as it was.
  struct Case {
    Edit edit;
    void (frmBeamShape::*click)();
    double C, D; // the centre, and how far the section moves down
    double rects[3][4];
  };
  const Case cases[] = {{[](frmBeamShape& f) { f.txtBTFT = "1.0"; },
                         &frmBeamShape::Picture1_Click,
                         0.6f * 17.5f,
                         0.25,
                         {{-6, 8, 12, 1}, {-0.25, -8, 0.5, 16}, {-6, -8.5, 12, 0.5}}},
                        {[](frmBeamShape& f) {
                           f.txtBWHE = "2", f.txtBWTE = "30", f.txtBTFWE = "4", f.txtOffset = "500";
                         },
                         &frmBeamShape::Picture2_Click,
                         0.6f * 30.0f,
                         0,
                         {{-2, 1, 4, 0.5}, {-15, -1, 30, 2}, {-6, -1.5, 12, 0.5}}},
                        {[](frmBeamShape& f) { f.txtBTFW = "0"; },
                         &frmBeamShape::Picture1_Click,
                         0.6f * 16.5f,
                         -0.25,
                         {{0, 8, 0, 0}, {-0.25, -8, 0.5, 16}, {-6, -8.5, 12, 0.5}}}};
  for (const auto& c : cases) {
    Activate();
    c.edit(form);
    (form.*c.click)();
    EXPECT_TRUE(host.messages.empty());
    const SectionPicture& p =
        c.click == &frmBeamShape::Picture1_Click ? form.Picture1 : form.Picture2;
    EXPECT_NEAR(p.Right, 2 * c.C, 1e-5);
    for (int k = 0; k < 3; ++k)
      ExpectRect(p.Rects[k], c.C + c.rects[k][0], c.C + c.rects[k][1] - c.D, c.rects[k][2],
                 c.rects[k][3]);
  }
  EXPECT_EQ(form.txtBTFT, "0.5");

  // A section of no depth leaves the picture cleared.
  Activate();
  form.txtBWH = "-1";
  form.Picture1_Click();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_FALSE(form.Picture1.Drawn);
}

TEST_F(GirderDialog, PreviewChecksReportInTheirOrder) {
  const auto one = &frmBeamShape::Picture1_Click, two = &frmBeamShape::Picture2_Click;
  const struct {
    Edit edit;
    void (frmBeamShape::*click)();
    const char* message; // none: drawn quietly
  } cases[] = {{[](frmBeamShape& f) { f.txtBL = "?"; }, one, kNumbers},
               {[](frmBeamShape& f) { f.txtBWT = "0", f.txtBBFT = ""; }, one, kNumbers},
               {[](frmBeamShape& f) { f.txtBWT = "0"; }, one, kWeb},
               {[](frmBeamShape& f) { f.txtBL = "0", f.txtBWH = "0"; }, one, kWeb},
               {[](frmBeamShape& f) { f.txtBL = "0"; }, one, "Invalid Input Data : Beam Length!"},
               {[](frmBeamShape& f) { f.txtOffset = "a"; }, two, kNumbers},
               {[](frmBeamShape& f) { f.txtBWHE = "0"; }, two, kWeb},
               {[](frmBeamShape& f) { f.txtBL = "0"; }, two, nullptr}}; // End 2 has no length
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    Activate();
    cases[i].edit(form);
    (form.*cases[i].click)();
    EXPECT_EQ(host.Texts(), cases[i].message ? Text{cases[i].message} : Text{}) << "case " << i;
  }
  EXPECT_TRUE(form.Picture2.Drawn);
}

TEST_F(GirderDialog, KeyUpShowsOrHidesThePreviewOfItsEnd) {
  Activate();
#define KEY(field)                                                                                 \
  std::pair {                                                                                      \
    &frmBeamShape::field, &frmBeamShape::field##_KeyUp                                             \
  }
  const std::pair<Field, void (frmBeamShape::*)()> end1[] = {
      KEY(txtBTFW), KEY(txtBTFT), KEY(txtBWH), KEY(txtBWT), KEY(txtBBFW), KEY(txtBBFT)};
  const std::pair<Field, void (frmBeamShape::*)()> end2[] = {
      KEY(txtBTFWE), KEY(txtBTFTE), KEY(txtBWHE), KEY(txtBWTE), KEY(txtBBFWE), KEY(txtBBFTE)};
#undef KEY
  for (bool endTwo : {false, true}) {
    for (const auto& [field, handler] : endTwo ? end2 : end1) {
      std::string kept = form.*field;
      form.*field = "-"; // not a number: that end's preview hides quietly
      (form.*handler)();
      EXPECT_EQ(form.Picture1.Visible, endTwo);
      EXPECT_EQ(form.Picture2.Visible, !endTwo);
      form.*field = kept;
      (form.*handler)();
      EXPECT_TRUE(form.Picture1.Visible && form.Picture2.Visible);
    }
  }
  form.txtBWH = "18";
  form.txtBWH_KeyUp();
  ExpectRect(form.Picture1.Rects[1], 0.6f * 19.0f - 0.25, 0.6f * 19.0f - 9, 0.5, 18);
  form.txtBBFWE = "1e39"; // beyond a Single: hidden, quietly
  form.txtBBFWE_KeyUp();
  EXPECT_FALSE(form.Picture2.Visible);
  EXPECT_TRUE(host.messages.empty());

  // A number that draws may meet another field that is wrong, or a zero web.
  form.txtBWH = "x";
  form.txtBTFW = "10";
  form.txtBTFW_KeyUp();
  EXPECT_TRUE(form.Picture1.Visible);
  EXPECT_EQ(host.Texts(), Text{kNumbers});
  host.messages.clear();
  form.txtBBFWE = "12";
  form.txtBWHE = "0";
  form.txtBWHE_KeyUp();
  EXPECT_TRUE(form.Picture2.Visible);
  EXPECT_EQ(host.Texts(), Text{kWeb});
}

TEST_F(GirderDialog, SetEqualCopiesTheTextsOfEndOne) {
  Activate();
  const Field end1[] = {&frmBeamShape::txtBTFW, &frmBeamShape::txtBTFT, &frmBeamShape::txtBWH,
                        &frmBeamShape::txtBWT,  &frmBeamShape::txtBBFW, &frmBeamShape::txtBBFT};
  const Field end2[] = {&frmBeamShape::txtBTFWE, &frmBeamShape::txtBTFTE, &frmBeamShape::txtBWHE,
                        &frmBeamShape::txtBWTE,  &frmBeamShape::txtBBFWE, &frmBeamShape::txtBBFTE};
  const char* texts[] = {"10", "0.75", "20", "0.375", "14", "1."};
  for (int i = 0; i < 6; ++i)
    form.*end1[i] = texts[i];
  form.txtOffset = "3";
  form.setEqual_Click();
  for (int i = 0; i < 6; ++i)
    EXPECT_EQ(form.*end2[i], texts[i]);
  EXPECT_EQ(form.txtOffset, "3");
  EXPECT_TRUE(host.messages.empty());
  ExpectRect(form.Picture2.Rects[1], 0.6f * 21.75f - 0.1875, 0.6f * 21.75f - 10 + 0.125, 0.375, 20);
  EXPECT_EQ(gBeamShape().Web_HE, 16.0f); // nothing reaches the model

  form.txtBWT = "thin";
  form.setEqual_Click();
  EXPECT_EQ(form.txtBWTE, "thin");
  EXPECT_EQ(host.Texts(), Text{kNumbers});
}

TEST_F(GirderDialog, CancelWritesNothing) {
  Activate();
  form.txtBL = "60";
  form.txtMOE = "1";
  form.txtBWHE = "40";
  form.chkProportionalMesh = 1;
  form.cmdClose2_Click();
  EXPECT_TRUE(form.Unloaded);
  EXPECT_EQ(gBeamShape().Length, 120.0f);
  EXPECT_EQ(gBeamShape().Web_HE, 16.0f);
  EXPECT_EQ(gBeamShape().ProportionalMesh, 0);
  EXPECT_EQ(gMaterial().MOE, 29000.0f);
  EXPECT_EQ(gMesh().Nodes().Count(), 0);
}

TEST_F(GirderDialog, ProjectReadFromAFileShowsItsCounts) {
  frmBeamShape generator;
  generator.Form_Activate();
  generator.txtNumXElements = "20";
  generator.txtNumYElements = "5";
  generator.txtBL = "250";
  generator.cmdGenerate_Click();
  ASSERT_TRUE(Save_Project_Path(Scratch("g.inp")));
  Clear_Session();
  InstallHost(&host);
  ASSERT_TRUE(Open_Project_Path(Scratch("g.inp")));
  form.Form_Activate();
  EXPECT_EQ(form.txtNumXElements, "20");
  EXPECT_EQ(form.txtNumYElements, "5");
  EXPECT_EQ(form.txtBL, "250");
}

} // namespace
} // namespace velk::test
