// The dialogs as the user drives them. The girder dialog: its checks and their
// messages in order, what the command stores and replaces, the section
// previews, the key handlers, "Set End 2 = End 1" and Cancel. The run dialog
// and the options dialog.
#include "RunModels.h"
#include "analysis/EigenCalculation.h"
#include "editing/Selection.h"
#include "forms/frmAnalysisOption.h"
#include "forms/frmBeamShape.h"
#include "forms/frmEigen.h"
#include "view/View.h"

#include <cmath>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace velk::test {
namespace {

using Text = std::vector<std::string>;
using Field = std::string frmBeamShape::*;
const char* kNumbers = "Input Data Error : Numbers!";
const char* kRange = "Input Data Error : Number out of range!";
const char* kWeb = "Invalid Input Data : Beam Web!";
const char* kLength = "Invalid Input Data : Beam Length!";
const char* kWarning = "Existing Mesh will be destroyed!";
const char* kLongitudinal = "Invalid Input Data : Longitudinal!";
const char* kTransverse = "Invalid Input Data : Transverse!";
const char* kLongitudinalLimit = "Invalid Input Data : Longitudinal! (at most 32766 Elements)";
const char* kTooMany = "Invalid Input Data : Too many Elements! (at most 1000000 Nodes)";
const char* kDepth = "Invalid Input Data : Proportional Mesh needs a positive Depth at both Ends!";
const char* kTwoOrMore =
    "Invalid Input Data : Proportional Mesh needs 2 or more Longitudinal Elements!";

// Types "field=text ..." into the dialog; chkProportionalMesh takes 0 or 1.
void Type(frmBeamShape& f, const std::string& typed) {
#define F(name)                                                                                    \
  { #name, &frmBeamShape::name }
  static const std::map<std::string, Field> fields = {
      F(txtBL),    F(txtBTFW),   F(txtBTFT),  F(txtBWH),  F(txtBWT),          F(txtBBFW),
      F(txtBBFT),  F(txtBTFWE),  F(txtBTFTE), F(txtBWHE), F(txtBWTE),         F(txtBBFWE),
      F(txtBBFTE), F(txtOffset), F(txtMOE),   F(txtPR),   F(txtNumXElements), F(txtNumYElements)};
#undef F
  std::istringstream in(typed);
  for (std::string e; in >> e;) {
    const auto eq = e.find('=');
    if (e.substr(0, eq) == "chkProportionalMesh")
      f.chkProportionalMesh = std::stoi(e.substr(eq + 1));
    else
      f.*fields.at(e.substr(0, eq)) = e.substr(eq + 1);
  }
}

class GirderDialog : public SessionTest {
protected:
  frmBeamShape form;
  // The dialog as it opens, with no message left over.
  void Activate(const std::string& typed = {}) {
    form = frmBeamShape{};
    form.Form_Activate();
    Type(form, typed);
    host.messages.clear();
  }
  void Generate(const std::string& typed = {}) {
    Activate(typed);
    form.cmdGenerate_Click();
  }
};

void ExpectRect(const SectionPicture::Rect& r, double x, double y, double w, double h) {
  EXPECT_TRUE(std::fabs(r.x - x) < 1e-5 && std::fabs(r.y - y) < 1e-5 &&
              std::fabs(r.width - w) < 1e-6 && std::fabs(r.height - h) < 1e-6)
      << r.x << ", " << r.y << ", " << r.width << ", " << r.height;
}

TEST_F(GirderDialog, FirstFailingCheckSpeaks) {
  enum Action { Command, End1, End2 };
  const struct {
    Action action;
    const char* typed;
    const char* message; // none: drawn quietly
  } rows[] = {{Command, "txtBL=abc", kNumbers},
              {Command, "txtNumYElements=", kNumbers},
              {Command, "txtOffset=x", kNumbers},
              {Command, "txtNumXElements=0 txtBBFTE=1..", kNumbers},
              {Command, "txtNumXElements=0.4", kLongitudinal},
              {Command, "txtNumXElements=-3", kLongitudinal},
              {Command, "txtNumXElements=0 txtNumYElements=0", kLongitudinal},
              {Command, "txtNumYElements=0.5", kTransverse},
              {Command, "txtNumYElements=0 txtMOE=0 txtPR=0", kTransverse},
              {Command, "txtMOE=0 txtPR=0", "Invalid Input Data : MoE!"},
              {Command, "txtMOE=-29000", "Invalid Input Data : MoE!"},
              {Command, "txtPR=-0.1 txtBWT=0", "Invalid Input Data : PR!"},
              {Command, "txtBWH=0.0", kWeb},
              {Command, "txtBWTE=0", kWeb},
              {Command, "txtBWHE=-0", kWeb},
              {Command, "txtBL=0 txtBWT=0", kWeb},
              {Command, "txtBL=0", kLength},
              // The limits of the grid and of a Single come last, save the range.
              {Command, "txtBL=0 txtNumXElements=32767", kLength},
              {Command, "txtNumXElements=32767", kLongitudinalLimit},
              {Command, "txtNumXElements=40000", kLongitudinalLimit},
              {Command, "txtNumYElements=32767",
               "Invalid Input Data : Transverse! (at most 32766 Elements)"},
              {Command, "txtNumXElements=2000 txtNumYElements=2000", kTooMany},
              {Command, "txtBL=1e39 txtMOE=0", kRange},
              {Command, "txtOffset=1e400", kRange},
              {Command, "chkProportionalMesh=1 txtBWHE=-20", kDepth},
              {Command, "chkProportionalMesh=1 txtBWH=-0.5", kDepth},
              {Command, "chkProportionalMesh=1 txtNumXElements=1 txtBWHE=32", kTwoOrMore},
              // The previews check their own end only; End 2 has no length.
              {End1, "txtBL=?", kNumbers},
              {End1, "txtBWT=0 txtBBFT=", kNumbers},
              {End1, "txtBL=0 txtBWH=0", kWeb},
              {End1, "txtBL=0", kLength},
              {End1, "txtBWTE=0 txtOffset=?", nullptr},
              {End2, "txtOffset=a", kNumbers},
              {End2, "txtBWHE=0", kWeb},
              {End2, "txtBBFWE=1e39", kRange},
              {End2, "txtBL=0 txtBWT=0", nullptr}};
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    Activate(rows[i].typed);
    if (rows[i].action == Command) form.cmdGenerate_Click();
    if (rows[i].action == End1) form.Picture1_Click();
    if (rows[i].action == End2) form.Picture2_Click();
    EXPECT_EQ(host.Texts(), rows[i].message ? Text{rows[i].message} : Text{}) << "row " << i;
    EXPECT_FALSE(form.Unloaded) << "row " << i;
  }
  EXPECT_EQ(gMesh().Nodes().Count(), 0);
  EXPECT_TRUE(gBeamShape().Length == 120 && gMaterial().MOE == 29000); // nothing stored

  // The largest counts are accepted.
  Generate("txtNumXElements=32766 txtNumYElements=1");
  EXPECT_TRUE(form.Unloaded && host.messages.empty());
  EXPECT_EQ(gMesh().Nodes().Count(), 32767 * 2);
}

TEST_F(GirderDialog, CommandZeroesMissingFlangesAndStoresTheFields) {
  // Flanges zeroed by the checks stay zeroed; End 2 flanges come after the
  // End 1 web, and none is zeroed before the material checks.
  Generate("txtBTFW=0 txtBBFT=0 txtBWHE=0");
  EXPECT_EQ(Text({form.txtBTFT, form.txtBBFW, form.txtBTFTE}), Text({"0", "0", "0.5"}));
  Generate("txtPR=0 txtBTFW=0");
  EXPECT_EQ(form.txtBTFT, "0.5");
  EXPECT_EQ(gBeamShape().Top_Flange_T, 0.5f); // nothing stored on a failure

  Generate("txtMOE=200000 txtPR=5 txtBTFTE=0 txtOffset=1.5 txtNumXElements=2.5 "
           "txtNumYElements=3.5 chkProportionalMesh=1");
  EXPECT_TRUE(form.Unloaded && host.messages.empty() && form.txtBTFWE == "0");
  const BeamShape& b = gBeamShape();
  EXPECT_EQ((std::vector{b.Top_Flange_WE, b.Offset, gMaterial().MOE, gMaterial().PR}),
            (std::vector{0.0f, 1.5f, 200000.0f, 5.0f}));
  // Counts round half to even: 2 by 4 elements; the top line of End 2 has no flange.
  EXPECT_EQ(gMesh().Nodes().Count(), 3 * 5);
  EXPECT_EQ(gMesh().Nodes().Item(15)->ycoord, 16.5f - 1.5f - 0.25f);
  // The dialog opens again with the stored values and the counts of the mesh.
  Activate();
  EXPECT_EQ(Text({form.txtNumXElements, form.txtNumYElements, form.txtOffset, form.txtBTFTE,
                  std::to_string(form.chkProportionalMesh)}),
            Text({"2", "4", "1.5", "0", "1"}));
}

TEST_F(GirderDialog, CommandOverAMeshAsksAndReplacesTheModel) {
  gAnalysis().Title = "Before";
  gView().PropertyMode = 4;
  int toolbarMode = 0;
  hooks().updateToolBar = [&] { toolbarMode = gView().PropertyMode; };
  gSelection().AddObject(std::make_shared<Nodeb>());
  Generate();
  EXPECT_TRUE(host.messages.empty()); // an empty mesh needs no warning, nor a new model
  EXPECT_TRUE(gAnalysis().Title == "Before" && gSelection().SelectedCounter() == 0);
  // The tool bar was updated before the view reset the edit mode.
  EXPECT_EQ(toolbarMode, 4);
  EXPECT_EQ(std::tie(gView().PropertyMode, gView().MeshMode), std::make_tuple(1, 3));

  gAnalysis().Title = "Keep";
  gMaterial().MOE = 12345;
  host.msgAnswers.push_back(vbCancel);
  for (const char* typed : {"txtBL=60", "txtBL=0", "txtNumXElements=32767"}) {
    Generate(typed); // Cancel, then OK and a failing check
    ASSERT_FALSE(host.messages.empty());
    EXPECT_EQ(std::tie(host.messages[0].text, host.messages[0].title),
              std::make_tuple(kWarning, "Warning"));
    EXPECT_EQ(host.messages[0].buttons & 7, vbOKCancel);
    EXPECT_TRUE(!form.Unloaded && gMesh().Nodes().Count() == 60 && gAnalysis().Title == "Keep" &&
                gBeamShape().Length == 120);
  }
  Generate("txtNumXElements=2");
  EXPECT_TRUE(form.Unloaded);
  EXPECT_EQ(host.Texts(), Text{kWarning});
  EXPECT_EQ(gMesh().Nodes().Count(), 12);
  EXPECT_EQ(gMaterial().MOE, 12345.0f); // from the field, filled from the old material
}

TEST_F(GirderDialog, PreviewRectangles) {
  // A thicker top flange moves the section down by D, the widest part sets the
  // scale (the offset is read, but not drawn), and a missing top flange leaves
  // its thickness field as it was.
  const struct {
    const char* typed;
    bool end2;
    float size; // C is 0.6 of the larger of depth and width, as a Single
    double D;   // how far the section moves down
    double rects[3][4];
  } cases[] = {
      {"txtOffset=9", 1, 17, 0, {{-6, 8, 12, .5}, {-.25, -8, .5, 16}, {-6, -8.5, 12, .5}}},
      {"txtBWTE=30", 1, 30, 0, {{-6, 8, 12, .5}, {-15, -8, 30, 16}, {-6, -8.5, 12, .5}}},
      {"txtBTFT=1.0", 0, 17.5, .25, {{-6, 8, 12, 1}, {-.25, -8, .5, 16}, {-6, -8.5, 12, .5}}},
      {"txtBTFW=0", 0, 16.5, -.25, {{0, 8, 0, 0}, {-.25, -8, .5, 16}, {-6, -8.5, 12, .5}}}};
  for (const auto& c : cases) {
    Activate(c.typed);
    c.end2 ? form.Picture2_Click() : form.Picture1_Click();
    EXPECT_TRUE(host.messages.empty());
    const SectionPicture& p = c.end2 ? form.Picture2 : form.Picture1;
    ASSERT_TRUE(p.Drawn);
    const double C = 0.6f * c.size;
    EXPECT_TRUE(p.Left == 0 && p.Bottom == 0 && std::fabs(p.Top - 2 * C) < 1e-5 &&
                std::fabs(p.Right - 2 * C) < 1e-5);
    for (int k = 0; k < 3; ++k)
      ExpectRect(p.Rects[k], C + c.rects[k][0], C + c.rects[k][1] - c.D, c.rects[k][2],
                 c.rects[k][3]);
  }
  EXPECT_EQ(form.txtBTFT, "0.5"); // of the last case: the field stays as it was
  // A section of no depth leaves the picture cleared.
  Activate("txtBWH=-1");
  form.Picture1_Click();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_FALSE(form.Picture1.Drawn);
}

TEST_F(GirderDialog, KeyUpShowsOrHidesThePreviewOfItsEnd) {
  Activate("txtBWH=-");
  form.txtBWH_KeyUp(); // not a number: the preview of its end hides quietly
  EXPECT_TRUE(!form.Picture1.Visible && form.Picture2.Visible);
  form.txtBWH = "18";
  form.txtBWH_KeyUp(); // and comes back at the next number
  EXPECT_TRUE(form.Picture1.Visible);
  ExpectRect(form.Picture1.Rects[1], 0.6f * 19.0f - 0.25, 0.6f * 19.0f - 9, 0.5, 18);
  form.txtBBFWE = "1e39"; // beyond a Single: hidden, quietly
  form.txtBBFWE_KeyUp();
  EXPECT_TRUE(form.Picture1.Visible && !form.Picture2.Visible);
  EXPECT_TRUE(host.messages.empty());
  // A number that draws may meet another field that is wrong.
  form.txtBWH = "x";
  form.txtBTFW = "10";
  form.txtBTFW_KeyUp();
  EXPECT_TRUE(form.Picture1.Visible);
  EXPECT_EQ(host.Texts(), Text{kNumbers});
}

TEST_F(GirderDialog, SetEqualCopiesTheTextsOfEndOneAndCancelWritesNothing) {
  Activate("txtBTFW=10 txtBTFT=0.75 txtBWH=20 txtBWT=0.375 txtBBFW=14 txtBBFT=1. txtOffset=3");
  form.setEqual_Click();
  EXPECT_EQ(Text({form.txtBTFWE, form.txtBTFTE, form.txtBWHE, form.txtBWTE, form.txtBBFWE,
                  form.txtBBFTE, form.txtOffset}),
            Text({"10", "0.75", "20", "0.375", "14", "1.", "3"}));
  EXPECT_TRUE(host.messages.empty());
  ExpectRect(form.Picture2.Rects[1], 0.6f * 21.75f - 0.1875, 0.6f * 21.75f - 10 + 0.125, 0.375, 20);
  form.txtBWT = "thin";
  form.setEqual_Click();
  EXPECT_EQ(form.txtBWTE, "thin");
  EXPECT_EQ(host.Texts(), Text{kNumbers});

  form.chkProportionalMesh = 1;
  form.cmdClose2_Click();
  EXPECT_TRUE(form.Unloaded);
  const BeamShape& b = gBeamShape();
  EXPECT_TRUE(b.Web_HE == 16 && b.Top_Flange_W == 12 && b.ProportionalMesh == 0);
  EXPECT_EQ(gMesh().Nodes().Count(), 0);
}

using RunDialogTest = SessionTest;

// Apply, Cancel, Close enabled as given.
void ExpectButtons(const frmEigen& f, bool apply, bool cancel, bool close) {
  EXPECT_EQ(std::tie(f.cmdApplyEnabled, f.cmdCancelEnabled, f.cmdCloseEnabled),
            std::tie(apply, cancel, close));
}

TEST_F(RunDialogTest, OpensFromTheModelRunsAndCancels) {
  Simply_Supported_Plate(4);
  gAnalysis().Title = "Square";
  gAnalysis().EigenValueEstimation = 0.5f;
  frmEigen f;
  f.Form_Load();
  EXPECT_EQ(Text({f.txtTitle, f.txtDiscription, f.txtRunNumber, f.txtEstimation, f.processreport}),
            Text({"Square", "No Discription", "0", "0.5", "Ready..."}));
  ExpectButtons(f, true, false, true);
  // While it runs: Cancel alone is enabled, and the status line follows the run.
  std::string first;
  host.onYield = [&] {
    ExpectButtons(f, false, true, false);
    first = first.empty() ? f.processreport : first;
  };
  f.txtTitle = "Run 2", f.txtRunNumber = "R7", f.txtEstimation = "0";
  f.cmdApply_Click();
  EXPECT_EQ(std::make_tuple(gAnalysis().Title, gAnalysis().RunID, gAnalysis().EigenValueEstimation),
            std::make_tuple("Run 2", "R7", 0.0f));
  EXPECT_EQ(host.Texts(), Text{"Eigenvalue of 3.9052E-02"});
  EXPECT_EQ(first, "Creating Input File...");
  EXPECT_EQ(host.progress.back(), "Buckling Analysis Completes...");
  EXPECT_EQ(f.processreport, "Ready..."); // the end text stands only until the run returns
  ExpectButtons(f, true, false, true);

  // Cancel stops the run at the next checkpoint; twice is once.
  int yields = 0;
  host.onYield = [&] {
    if (++yields == 3) f.cmdCancel_Click(), f.cmdCancel_Click();
  };
  host.messages.clear();
  f.cmdApply_Click();
  EXPECT_TRUE(yields == 3 && LastRunOutcome() == RunOutcome::Cancelled && host.messages.empty());
  EXPECT_EQ(host.progress.back(), "Process Interrupted...");
  ExpectButtons(f, true, false, true);
  host.onYield = nullptr;
  f.cmdApply_Click(); // the next run starts with the flag cleared
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Completed);
  f.cmdClose_Click();
  EXPECT_TRUE(f.Unloaded);
}

TEST_F(RunDialogTest, RefusalsStoreNothingButTheTitle) {
  for (int i = 1; i <= 3; ++i)
    gMesh().Nodes().Add(static_cast<Single>(i), 0, i, std::to_string(i));
  frmEigen f;
  f.Form_Load();
  f.txtTitle = std::string(70, 'T');
  f.txtEstimation = "1e";
  f.cmdApply_Click();
  EXPECT_EQ(host.Texts(), Text{"Input Data Error : Numbers!"});
  EXPECT_EQ(gAnalysis().Title, "No Title");
  // Three nodes are too few; the title is stored, cut to its limit.
  host.messages.clear();
  f.txtEstimation = "1e3";
  f.cmdApply_Click();
  EXPECT_EQ(host.Texts(), Text{"Error..."});
  EXPECT_FALSE(std::filesystem::exists(Scratch("velktempin.vlk")));
  EXPECT_EQ(gAnalysis().Title.size(), frmEigen::kTitleLimit);
  EXPECT_EQ(gAnalysis().EigenValueEstimation, 1000.0f);
}

TEST_F(RunDialogTest, OptionsRefuseBadValuesAndApplyGoodOnes) {
  const std::pair<Text, std::string> rows[] = {
      {{"x", "8", "0.8"}, "Input Data Error : Numbers!"},
      {{"3", "8", ""}, "Input Data Error : Numbers!"},
      {{"40000", "8", "0.8"}, "Error..."},
      {{"0", "8", "0.8"}, "Error..."},
      {{"3", "-2", "0.8"}, "Error..."},
      {{"0.4", "8", "0.8"}, "Error..."},
      {{"2.6", "2.5", "-1"}, ""}}; // 3 and 2, ties to even; any factor is taken
  for (const auto& [fields, message] : rows) {
    frmAnalysisOption o;
    o.Form_Load();
    o.txtShift = fields[0], o.txtCycle = fields[1], o.txtFactor = fields[2];
    o.chkshear = 1, o.optAll = true, o.optOneThird = false;
    host.messages.clear();
    o.cmdApply_Click();
    EXPECT_EQ(host.Texts(), message.empty() ? Text{} : Text{message}) << fields[0];
    EXPECT_EQ(o.Unloaded, message.empty());
    EXPECT_EQ(gAnalysis().ISHEAR, message.empty() ? vbTrue : vbFalse);
  }
  const Analysis& a = gAnalysis();
  EXPECT_EQ(std::make_tuple(a.MaxShift, a.MaxCycle, a.ShiftFactor, a.IGSTF, a.OptionInitialB),
            std::make_tuple(3, 2, -1.0f, vbFalse, 1));
}

} // namespace
} // namespace velk::test
