#pragma once
// The run dialog's logic: the identity of the run, the Run, Cancel and Close
// commands and the status line. A toolkit dialog copies its widgets into these
// fields, calls a handler and copies them back.
#include <string>

namespace velk {

class frmEigen {
public:
  // Caption "Run Analysis".
  std::string txtTitle;       // "Title", at most kTitleLimit characters
  std::string txtDiscription; // "Discription", at most kDiscriptionLimit characters
  std::string txtRunNumber;   // "Run Number"
  std::string txtEstimation;  // "Estimated"
  std::string processreport;  // the status line

  // Idle: Run and Close enabled, Cancel disabled; Running: the reverse.
  bool cmdApplyEnabled = true;
  bool cmdCancelEnabled = false;
  bool cmdCloseEnabled = true;
  bool Unloaded = false; // the dialog has closed itself
  // After a run whose eigenvalue fails its check, a box titled "Result Check"
  // follows the eigenvalue's own. The batch tool words the check itself.
  bool ShowCheck = true;

  static constexpr std::size_t kTitleLimit = 60;
  static constexpr std::size_t kDiscriptionLimit = 250;

  // Each time the dialog opens: fields from gAnalysis, "Ready..." below.
  void Form_Load();
  void cmdApply_Click();  // "Run"
  void cmdCancel_Click(); // asks the running analysis to stop at its next checkpoint
  void cmdClose_Click() { Unloaded = true; }

private:
  void SetIdle(bool idle);
  void Tell_Check();
};

} // namespace velk
