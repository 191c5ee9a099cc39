// The run dialog and the options dialog as the user drives them.
#include <gtest/gtest.h>

#include <filesystem>

#include "RunModels.h"
#include "analysis/EigenCalculation.h"
#include "forms/frmAnalysisOption.h"
#include "forms/frmEigen.h"

namespace velk::test {
namespace {

using Texts = std::vector<std::string>;

class RunDialogTest : public SessionTest {
protected:
  bool DeckExists() { return std::filesystem::exists(Scratch("velktempin.vlk")); }
  // Apply, Cancel, Close enabled as given.
  static void ExpectButtons(const frmEigen& f, bool apply, bool cancel, bool close) {
    EXPECT_EQ(f.cmdApplyEnabled, apply);
    EXPECT_EQ(f.cmdCancelEnabled, cancel);
    EXPECT_EQ(f.cmdCloseEnabled, close);
  }
};

TEST_F(RunDialogTest, OpensFromTheModelAndRuns) {
  Simply_Supported_Plate(4);
  gAnalysis().Title = "Square";
  gAnalysis().EigenValueEstimation = 0.5f;
  frmEigen f;
  f.Form_Load();
  EXPECT_EQ(Texts({f.txtTitle, f.txtDiscription, f.txtRunNumber, f.txtEstimation, f.processreport}),
            Texts({"Square", "No Discription", "0", "0.5", "Ready..."}));
  ExpectButtons(f, true, false, true);
  // While it runs: Cancel alone is enabled, and the status line follows the run.
  std::vector<std::string> seen;
  host.onYield = [&] {
    ExpectButtons(f, false, true, false);
    seen.push_back(f.processreport);
  };
  f.txtTitle = "Run 2";
  f.txtRunNumber = "R7";
  f.txtEstimation = "0";
  f.cmdApply_Click();
  host.onYield = nullptr;
  EXPECT_EQ(gAnalysis().Title, "Run 2");
  EXPECT_EQ(gAnalysis().RunID, "R7");
  EXPECT_EQ(gAnalysis().EigenValueEstimation, 0.0f);
  EXPECT_NEAR(gAnalysis().EigenValue, 0.03905, 0.000005);
  EXPECT_EQ(host.messages.back().text, "Eigenvalue of 3.9052E-02");
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen.front(), "Creating Input File...");
  EXPECT_EQ(host.progress.back(), "Buckling Analysis Completes...");
  EXPECT_EQ(f.processreport, "Ready..."); // the end text stands only until the run returns
  ExpectButtons(f, true, false, true);
  EXPECT_FALSE(f.Unloaded);
  f.cmdClose_Click();
  EXPECT_TRUE(f.Unloaded);
}

TEST_F(RunDialogTest, EstimateMustBeNumericAndNothingIsStoredOtherwise) {
  Simply_Supported_Plate(4);
  frmEigen f;
  f.Form_Load();
  f.txtTitle = "Changed";
  for (const char* bad : {"abc", "", "1e"}) {
    host.messages.clear();
    f.txtEstimation = bad;
    f.cmdApply_Click();
    EXPECT_EQ(host.Texts(), Texts{"Input Data Error : Numbers!"}) << bad;
  }
  EXPECT_EQ(gAnalysis().Title, "No Title");
  EXPECT_FALSE(DeckExists());
  f.txtEstimation = "1e3"; // a number: the run goes on
  f.cmdApply_Click();
  EXPECT_EQ(gAnalysis().EigenValueEstimation, 1000.0f);
  EXPECT_TRUE(DeckExists());
}

TEST_F(RunDialogTest, TooSmallModelsAndLongTexts) {
  Mesh& m = gMesh();
  for (int i = 1; i <= 3; ++i)
    m.Nodes().Add(static_cast<Single>(i), 0, i, std::to_string(i));
  frmEigen f;
  f.Form_Load();
  f.txtTitle = std::string(70, 'T');
  f.cmdApply_Click();
  EXPECT_EQ(host.Texts(), Texts{"Error..."});
  EXPECT_FALSE(DeckExists());
  EXPECT_EQ(gAnalysis().Title.size(), frmEigen::kTitleLimit);
  ExpectButtons(f, true, false, true);
  // Four nodes on no element: the deck is written with zero counts and the
  // computation fails.
  m.Nodes().Add(4, 0, 4, "4");
  host.messages.clear();
  f.cmdApply_Click();
  EXPECT_TRUE(DeckExists());
  EXPECT_EQ(host.Texts(), Texts{"Error!"});
  EXPECT_EQ(host.progress.back(), "Error!...");
  EXPECT_EQ(f.processreport, "Ready...");
  ExpectButtons(f, true, false, true);
}

TEST_F(RunDialogTest, CancelStopsAtTheNextCheckpoint) {
  Simply_Supported_Plate(4);
  frmEigen f;
  f.Form_Load();
  int yields = 0;
  host.onYield = [&] {
    if (++yields == 3) {
      f.cmdCancel_Click();
      f.cmdCancel_Click(); // twice is once
    }
  };
  f.cmdApply_Click();
  host.onYield = nullptr;
  EXPECT_EQ(yields, 3);
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Cancelled);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(Texts(host.progress.end() - 2, host.progress.end()),
            (Texts{"Ready...", "Process Interrupted..."}));
  ExpectButtons(f, true, false, true);
  f.cmdApply_Click(); // the next run starts with the flag cleared
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Completed);
}

TEST_F(RunDialogTest, OptionsRefuseBadValuesAndApplyGoodOnes) {
  const std::pair<Texts, std::string> bad[] = {
      {{"x", "8", "0.8"}, "Input Data Error : Numbers!"},
      {{"3", "8", ""}, "Input Data Error : Numbers!"},
      {{"0", "8", "0.8"}, "Error..."},
      {{"3", "-2", "0.8"}, "Error..."},
      {{"0.4", "8", "0.8"}, "Error..."},
      {{"40000", "8", "0.8"}, "Error..."},
  };
  for (const auto& [fields, message] : bad) {
    frmAnalysisOption o;
    o.Form_Load();
    o.txtShift = fields[0];
    o.txtCycle = fields[1];
    o.txtFactor = fields[2];
    o.chktorsion = 1;
    host.messages.clear();
    o.cmdApply_Click();
    EXPECT_EQ(host.Texts(), Texts{message}) << fields[0] << " " << fields[1];
    EXPECT_FALSE(o.Unloaded);
  }
  { // Close leaves without storing.
    frmAnalysisOption o;
    o.Form_Load();
    o.txtShift = "9";
    o.cmdClose_Click();
    EXPECT_TRUE(o.Unloaded);
  }
  EXPECT_EQ(gAnalysis().MaxShift, 3);
  EXPECT_EQ(gAnalysis().IGSTF, vbFalse);

  frmAnalysisOption o;
  o.Form_Load();
  EXPECT_EQ(Texts({o.txtShift, o.txtCycle, o.txtFactor}), Texts({"3", "8", "0.8"}));
  EXPECT_TRUE(o.chkshear == 0 && o.chktorsion == 0);
  EXPECT_TRUE(o.optOneThird && !o.optAll);
  o.txtShift = "2.6"; // rounds to 3
  o.txtCycle = "2.5"; // ties go to even: 2
  o.txtFactor = "-1"; // any factor is taken
  o.chkshear = 1;
  o.optAll = true;
  o.optOneThird = false;
  o.cmdApply_Click();
  EXPECT_TRUE(o.Unloaded);
  const Analysis& a = gAnalysis();
  EXPECT_EQ(a.MaxShift, 3);
  EXPECT_EQ(a.MaxCycle, 2);
  EXPECT_EQ(a.ShiftFactor, -1.0f);
  EXPECT_EQ(a.ISHEAR, vbTrue);
  EXPECT_EQ(a.IGSTF, vbFalse);
  EXPECT_EQ(a.OptionInitialB, 1);
  frmAnalysisOption again;
  again.Form_Load();
  EXPECT_EQ(again.chkshear, 1);
  EXPECT_TRUE(again.optAll && !again.optOneThird);
}

} // namespace
} // namespace velk::test
