#pragma once
// The Buckling Modes window's logic: a run that also seeks the next modes,
// their load factors with the check of each, and the mode the view shows.
// The model's stored result stays the run's own mode 1: the project file, the
// report and the grid hold it whichever mode is shown.
#include <string>
#include <vector>

namespace velk {

class frmBucklingModes {
public:
  // Caption "Buckling Modes".
  std::string txtModes = "3"; // "Number of modes" (1 to 20)
  struct Row {
    int mode = 0;
    double eigenvalue = 0;
    std::string text;    // as the program prints a load factor, "2.4660E+04"
    std::string verdict; // "ok", "not converged", "not lowest", "free", "not checked"
  };
  std::vector<Row> rows; // the last run's modes, smallest magnitude first
  int cboShow = 1;       // the mode drawn, 1 up
  std::string lblStatus = "Ready...";
  bool cmdRunEnabled = true, cmdCancelEnabled = false;

  // Runs the model as the run dialog does, with its title, estimate and
  // options, asking for txtModes modes; the rows follow.
  void cmdRun_Click();
  void cmdCancel_Click();
  // Draws mode cboShow in the view (mode 1: the run's own).
  void cboShow_Click();
};

} // namespace velk
