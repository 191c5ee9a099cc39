// The girder dialog before the command: filling the fields, the two section
// previews, the key handlers and "Set End 2 = End 1".
#include "TestSession.h"
#include "mesh/frmBeamShape.h"
#include "model/ProjectFile.h"
#include "model/VELKMain.h"

#include <functional>
#include <string>
#include <vector>

namespace velk::test {
namespace {

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

TEST_F(GirderDialog, OpensWithTheModelValues) {
  form.Form_Activate();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(form.txtBTFW, "12");
  EXPECT_EQ(form.txtBTFT, "0.5");
  EXPECT_EQ(form.txtBWH, "16");
  EXPECT_EQ(form.txtBWT, "0.5");
  EXPECT_EQ(form.txtBBFW, "12");
  EXPECT_EQ(form.txtBBFT, "0.5");
  EXPECT_EQ(form.txtBL, "120");
  EXPECT_EQ(form.txtMOE, "29000");
  EXPECT_EQ(form.txtPR, "0.3");
  EXPECT_EQ(form.txtNumXElements, "14");
  EXPECT_EQ(form.txtNumYElements, "3");
  EXPECT_EQ(form.chkProportionalMesh, 0);
  EXPECT_EQ(form.txtBTFWE, "12");
  EXPECT_EQ(form.txtBWHE, "16");
  EXPECT_EQ(form.txtBBFTE, "0.5");
  EXPECT_EQ(form.txtOffset, "0");
  EXPECT_TRUE(form.Picture1.Drawn);
  EXPECT_TRUE(form.Picture2.Drawn);
}

TEST_F(GirderDialog, CountsComeFromAMeshThatExists) {
  gBeamShape().Web_T = 1.0f / 3.0f;
  gBeamShape().ProportionalMesh = 1;
  gMaterial().MOE = 2e5f;
  Nodes& nodes = gMesh().Nodes();
  nodes.SetNumberNodesX(21);
  nodes.SetNumberNodesY(6);
  form.txtNumXElements = "9";
  form.Form_Activate();
  EXPECT_EQ(form.txtNumXElements, "20");
  EXPECT_EQ(form.txtNumYElements, "5");
  EXPECT_EQ(form.txtBWT, "0.3333333");
  EXPECT_EQ(form.txtMOE, "200000");
  EXPECT_EQ(form.chkProportionalMesh, 1);
}

TEST_F(GirderDialog, CountsKeepTheirTextWithoutAMesh) {
  form.txtNumXElements = "9";
  form.txtNumYElements = "2";
  form.Form_Activate();
  EXPECT_EQ(form.txtNumXElements, "9");
  EXPECT_EQ(form.txtNumYElements, "2");
}

TEST_F(GirderDialog, PreviewOfTheDefaultSection) {
  Activate();
  for (const SectionPicture* p : {&form.Picture1, &form.Picture2}) {
    ASSERT_TRUE(p->Drawn);
    const double C = 10.2f; // 0.6 x the depth 17, as a Single
    EXPECT_EQ(p->Left, 0);
    EXPECT_EQ(p->Bottom, 0);
    EXPECT_DOUBLE_EQ(p->Top, 2 * C);
    EXPECT_DOUBLE_EQ(p->Right, 2 * C);
    ExpectRect(p->Rects[0], C - 6, C + 8, 12, 0.5);
    ExpectRect(p->Rects[1], C - 0.25, C - 8, 0.5, 16);
    ExpectRect(p->Rects[2], C - 6, C - 8.5, 12, 0.5);
  }
}

TEST_F(GirderDialog, ThickerTopFlangeShiftsTheSectionDown) {
  Activate();
  form.txtBTFT = "1.0";
  form.Picture1_Click();
  EXPECT_TRUE(host.messages.empty());
  const double C = 0.6f * 17.5f; // the depth is 1 + 16 + 0.5
  const double D = 0.25;
  ExpectRect(form.Picture1.Rects[0], C - 6, C + 8 - D, 12, 1);
  ExpectRect(form.Picture1.Rects[1], C - 0.25, C - 8 - D, 0.5, 16);
  ExpectRect(form.Picture1.Rects[2], C - 6, C - 8 - 0.5 - D, 12, 0.5);
}

TEST_F(GirderDialog, WideWebAndNarrowFlangesScaleByTheWidest) {
  Activate();
  form.txtBWHE = "2";
  form.txtBWTE = "30";
  form.txtBTFWE = "4";
  form.txtOffset = "500"; // read, but not drawn
  form.Picture2_Click();
  const double C = 0.6f * 30.0f;
  EXPECT_DOUBLE_EQ(form.Picture2.Right, 2 * C);
  ExpectRect(form.Picture2.Rects[0], C - 2, C + 1, 4, 0.5);
  ExpectRect(form.Picture2.Rects[1], C - 15, C - 1, 30, 2);
}

TEST_F(GirderDialog, MissingTopFlangeShowsOnlyWebAndBottomFlange) {
  Activate();
  form.txtBTFW = "0";
  form.Picture1_Click();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(form.txtBTFT, "0.5"); // the field keeps its text
  const double C = 0.6f * 16.5f;
  const double D = -0.25;
  ExpectRect(form.Picture1.Rects[0], C, C + 8 - D, 0, 0);
  ExpectRect(form.Picture1.Rects[1], C - 0.25, C - 8 - D, 0.5, 16);
  ExpectRect(form.Picture1.Rects[2], C - 6, C - 8.5 - D, 12, 0.5);
}

TEST_F(GirderDialog, EmptySectionLeavesThePictureCleared) {
  Activate();
  form.txtBWH = "-1";
  form.txtBTFT = "0.5";
  form.txtBBFT = "0.5"; // depth 0
  form.Picture1_Click();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_FALSE(form.Picture1.Drawn);
}

struct DrawCase {
  const char* name;
  std::function<void(frmBeamShape&)> edit;
  int picture;
  const char* message;
};

class PreviewChecks : public GirderDialog, public ::testing::WithParamInterface<DrawCase> {};

TEST_P(PreviewChecks, ReportInTheirOrder) {
  Activate();
  GetParam().edit(form);
  if (GetParam().picture == 1) form.Picture1_Click();
  else form.Picture2_Click();
  EXPECT_EQ(host.Texts(), std::vector<std::string>{GetParam().message});
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PreviewChecks,
    ::testing::Values(
        DrawCase{"LengthNotANumber", [](frmBeamShape& f) { f.txtBL = "?"; }, 1,
                 "Input Data Error : Numbers!"},
        DrawCase{"NumbersBeforeWeb",
                 [](frmBeamShape& f) {
                   f.txtBWT = "0";
                   f.txtBBFT = "";
                 },
                 1, "Input Data Error : Numbers!"},
        DrawCase{"NoWebThickness", [](frmBeamShape& f) { f.txtBWT = "0"; }, 1,
                 "Invalid Input Data : Beam Web!"},
        DrawCase{"WebBeforeLength",
                 [](frmBeamShape& f) {
                   f.txtBL = "0";
                   f.txtBWH = "0";
                 },
                 1, "Invalid Input Data : Beam Web!"},
        DrawCase{"NoLength", [](frmBeamShape& f) { f.txtBL = "0"; }, 1,
                 "Invalid Input Data : Beam Length!"},
        DrawCase{"OffsetNotANumber", [](frmBeamShape& f) { f.txtOffset = "a"; }, 2,
                 "Input Data Error : Numbers!"},
        DrawCase{"NoWebHeightAtEndTwo", [](frmBeamShape& f) { f.txtBWHE = "0"; }, 2,
                 "Invalid Input Data : Beam Web!"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GirderDialog, EndTwoHasNoLengthCheck) {
  Activate();
  form.txtBL = "0";
  form.Picture2_Click();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(form.Picture2.Drawn);
}

TEST_F(GirderDialog, NonNumericKeyHidesThePreviewQuietly) {
  Activate();
  form.txtBWH = "1a";
  form.txtBWH_KeyUp();
  EXPECT_FALSE(form.Picture1.Visible);
  EXPECT_TRUE(form.Picture2.Visible);
  EXPECT_TRUE(host.messages.empty());
  form.txtBWH = "18";
  form.txtBWH_KeyUp();
  EXPECT_TRUE(form.Picture1.Visible);
  EXPECT_TRUE(form.Picture1.Drawn);
  ExpectRect(form.Picture1.Rects[1], 0.6f * 19.0f - 0.25, 0.6f * 19.0f - 9, 0.5, 18);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(GirderDialog, KeyInANumericFieldDrawsAndReportsAnotherField) {
  Activate();
  form.txtBWH = "x";
  form.txtBTFW = "10";
  form.txtBTFW_KeyUp();
  EXPECT_TRUE(form.Picture1.Visible);
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Input Data Error : Numbers!"});
}

TEST_F(GirderDialog, KeyThatMakesTheWebZeroReportsIt) {
  Activate();
  form.txtBWHE = "0";
  form.txtBWHE_KeyUp();
  EXPECT_TRUE(form.Picture2.Visible);
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Invalid Input Data : Beam Web!"});
}

TEST_F(GirderDialog, NumberBeyondASingleHidesThePreviewOnAKey) {
  Activate();
  form.txtBBFWE = "1e39";
  form.txtBBFWE_KeyUp();
  EXPECT_FALSE(form.Picture2.Visible);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(GirderDialog, EveryDimensionFieldHasItsKeyHandler) {
  Activate();
  struct Key {
    std::string frmBeamShape::*field;
    void (frmBeamShape::*handler)();
    bool endTwo;
  };
  const Key keys[] = {{&frmBeamShape::txtBTFW, &frmBeamShape::txtBTFW_KeyUp, false},
                      {&frmBeamShape::txtBTFT, &frmBeamShape::txtBTFT_KeyUp, false},
                      {&frmBeamShape::txtBWH, &frmBeamShape::txtBWH_KeyUp, false},
                      {&frmBeamShape::txtBWT, &frmBeamShape::txtBWT_KeyUp, false},
                      {&frmBeamShape::txtBBFW, &frmBeamShape::txtBBFW_KeyUp, false},
                      {&frmBeamShape::txtBBFT, &frmBeamShape::txtBBFT_KeyUp, false},
                      {&frmBeamShape::txtBTFWE, &frmBeamShape::txtBTFWE_KeyUp, true},
                      {&frmBeamShape::txtBTFTE, &frmBeamShape::txtBTFTE_KeyUp, true},
                      {&frmBeamShape::txtBWHE, &frmBeamShape::txtBWHE_KeyUp, true},
                      {&frmBeamShape::txtBWTE, &frmBeamShape::txtBWTE_KeyUp, true},
                      {&frmBeamShape::txtBBFWE, &frmBeamShape::txtBBFWE_KeyUp, true},
                      {&frmBeamShape::txtBBFTE, &frmBeamShape::txtBBFTE_KeyUp, true}};
  for (const auto& k : keys) {
    std::string kept = form.*k.field;
    form.*k.field = "-";
    (form.*k.handler)();
    EXPECT_EQ(form.Picture1.Visible, k.endTwo);
    EXPECT_EQ(form.Picture2.Visible, !k.endTwo);
    form.*k.field = kept;
    (form.*k.handler)();
    EXPECT_TRUE(form.Picture1.Visible && form.Picture2.Visible);
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(GirderDialog, SetEqualCopiesTheTextsOfEndOne) {
  Activate();
  form.txtBTFW = "10";
  form.txtBTFT = "0.75";
  form.txtBWH = "20";
  form.txtBWT = "0.375";
  form.txtBBFW = "14";
  form.txtBBFT = "1.";
  form.txtOffset = "3";
  form.setEqual_Click();
  EXPECT_EQ(form.txtBTFWE, "10");
  EXPECT_EQ(form.txtBTFTE, "0.75");
  EXPECT_EQ(form.txtBWHE, "20");
  EXPECT_EQ(form.txtBWTE, "0.375");
  EXPECT_EQ(form.txtBBFWE, "14");
  EXPECT_EQ(form.txtBBFTE, "1.");
  EXPECT_EQ(form.txtOffset, "3");
  EXPECT_TRUE(host.messages.empty());
  ExpectRect(form.Picture2.Rects[1], 0.6f * 21.75f - 0.1875, 0.6f * 21.75f - 10 + 0.125, 0.375,
             20);
  EXPECT_EQ(gBeamShape().Web_HE, 16.0f); // nothing reaches the model
}

TEST_F(GirderDialog, SetEqualWithATextThatIsNoNumber) {
  Activate();
  form.txtBWT = "thin";
  form.setEqual_Click();
  EXPECT_EQ(form.txtBWTE, "thin");
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Input Data Error : Numbers!"});
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
