#include "forms/frmBucklingModes.h"

#include "analysis/EigenCalculation.h"
#include "common/Host.h"
#include "common/TextRules.h"
#include "forms/ResultCheckText.h"
#include "forms/frmEigen.h"
#include "session/VELKMain.h"
#include "view/View.h"

namespace velk {

namespace {
constexpr const char* kTitle = "Buckling Modes";
constexpr int kMostModes = 20;
} // namespace

void frmBucklingModes::cmdRun_Click() {
  const std::string text = txtModes;
  int count = 0;
  if (!IsNumeric(text) || (count = static_cast<int>(TextToDouble(text))) != TextToDouble(text) ||
      count < 1 || count > kMostModes) {
    MsgBox("The number of modes is a whole number from 1 to 20.", vbExclamation, kTitle);
    return;
  }
  rows.clear();
  cboShow = 1;
  cmdRunEnabled = false;
  cmdCancelEnabled = true;
  lblStatus = "Running...";
  // The run dialog's own run, with its fields as the model holds them; the
  // table says what the check found, so no box of its own.
  frmEigen run;
  run.ShowCheck = false;
  run.Form_Load();
  struct ModesGuard {
    explicit ModesGuard(int n) { Request_Modes(n); }
    ~ModesGuard() { Request_Modes(0); }
  } modes(count);
  run.cmdApply_Click();
  cmdRunEnabled = true;
  cmdCancelEnabled = false;
  lblStatus = "Ready...";
  if (LastRunOutcome() != RunOutcome::Completed) {
    if (LastRunOutcome() == RunOutcome::Cancelled) lblStatus = "Process Interrupted...";
    return;
  }
  const BucklingModes& found = LastRunModes();
  const ResultCheck& check = LastRunCheck();
  for (std::size_t i = 0; i < found.eigenvalues.size(); ++i)
    rows.push_back({static_cast<int>(i) + 1, found.eigenvalues[i],
                    Format(found.eigenvalues[i], "0.0000E+00"), Mode_Verdict(check, i)});
  if (rows.empty())
    lblStatus = "No further modes: " + (found.failure.empty() ? std::string("the analysis did not "
                                                                            "get so far")
                                                              : found.failure);
  else if (!found.converged)
    lblStatus = "The modes did not settle in " + std::to_string(found.iterations) + " cycles.";
}

void frmBucklingModes::cmdCancel_Click() {
  AnalysisCancel = -1;
}

void frmBucklingModes::cboShow_Click() {
  View& v = gView();
  // A run made since, from the run dialog, has no further modes: the table
  // speaks of a result the model no longer holds.
  if (LastRunModes().eigenvalues.size() != rows.size()) {
    rows.clear();
    cboShow = 1;
    lblStatus = "Ready...";
  }
  if (cboShow <= 1 || static_cast<std::size_t>(cboShow) > rows.size()) {
    v.ModeShown = 0;
  } else {
    const auto shapes = Node_Mode_Shapes(LastRunModes(), gMesh().Nodes());
    const std::vector<Single>& w = shapes.at(static_cast<std::size_t>(cboShow - 1));
    Nodes& nodes = gMesh().Nodes();
    for (long p = 1; p <= nodes.Count(); ++p)
      nodes.Item(p)->ShownZ = w[static_cast<std::size_t>(p - 1)];
    v.ModeShown = cboShow;
  }
  v.OptionShowResult = vbTrue;
  v.Refresh();
}

} // namespace velk
