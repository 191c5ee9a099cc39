#include "forms/frmEigen.h"

#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "common/Host.h"
#include "common/TextRules.h"
#include "forms/ResultCheckText.h"
#include "model/ModelCheck.h"
#include "session/AnalysisRun.h"
#include "session/VELKMain.h"

#include <cctype>

namespace velk {

void frmEigen::SetIdle(bool idle) {
  cmdApplyEnabled = idle;
  cmdCancelEnabled = !idle;
  cmdCloseEnabled = idle;
}

namespace {

// The check's clause as a sentence. A stale numbering can come from the
// program itself: an Open that fails part-way keeps the records read so far
// with the numbers stored for the whole file. The dialogs and the property
// commands renumber, so the box says which to apply.
std::string ProblemMessage(const ModelProblem& p) {
  std::string text = p.text + '.';
  text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  if (p.numbering)
    text += " To renumber, select one plate and apply Set Property with its thickness unchanged, "
            "and the same for one stiffener that has a section; Delete Property on a plate or "
            "stiffener without one renumbers as well.";
  return text;
}

} // namespace

void frmEigen::Form_Load() {
  try {
    const Analysis& a = gAnalysis();
    txtTitle = a.Title;
    txtDiscription = a.Discription;
    txtRunNumber = a.RunID;
    txtEstimation = SingleToText(a.EigenValueEstimation);
    processreport = "Ready...";
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

void frmEigen::cmdApply_Click() {
  if (!IsNumeric(txtEstimation)) {
    MsgBox("Input Data Error : Numbers!");
    return;
  }
  // The run's progress texts go to this dialog's status line while it runs.
  struct SinkGuard {
    explicit SinkGuard(frmEigen& f) {
      analysisHooks().ProgressSink = [&f](const std::string& t) { f.processreport = t; };
    }
    ~SinkGuard() { analysisHooks().ProgressSink = nullptr; }
  };
  try {
    Analysis& a = gAnalysis();
    const Single estimate = TextToSingle(txtEstimation);
    // A model the dialogs could not have made is refused like bad input:
    // before anything is stored or written.
    if (const auto problem = Check_Model(gMesh(), gMaterial())) {
      MsgBox(ProblemMessage(*problem));
      return;
    }
    // The text fields hold no more than their limits.
    a.Title = txtTitle.substr(0, kTitleLimit);
    a.Discription = txtDiscription.substr(0, kDiscriptionLimit);
    a.RunID = txtRunNumber;
    a.EigenValueEstimation = estimate;
    if (gMesh().Nodes().Count() < 4 || Write_Deck() == 0) {
      MsgBox("Error...");
      SetIdle(true);
      return;
    }
    SinkGuard sink(*this);
    SetIdle(false);
    Run_Analysis();
    SetIdle(true);
    processreport = "Ready...";
    if (ShowCheck && LastRunOutcome() == RunOutcome::Completed) Tell_Check();
  } catch (const std::exception&) {
    MsgBox("Error...");
    SetIdle(true);
  }
}

// The run's own messages stand as they always have; a doubt about its
// eigenvalue comes after them, in a box of its own.
void frmEigen::Tell_Check() {
  std::string text;
  for (const std::string& w : Check_Warnings(LastRunCheck(), CheckReader::Window))
    text += (text.empty() ? "" : "\n\n") + w;
  if (!text.empty()) MsgBox(text, vbExclamation, "Result Check");
}

void frmEigen::cmdCancel_Click() {
  AnalysisCancel = -1;
}

} // namespace velk
