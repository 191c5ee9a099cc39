#pragma once
// The options dialog's logic: iteration limits, shift factor, the two model
// options and the shape of the first vector, all bound to gAnalysis.
#include <string>

namespace velk {

class frmAnalysisOption {
public:
  // Caption "Analysis Option".
  // Page "Iteration"
  std::string txtShift;  // "Max. Shift"
  std::string txtCycle;  // "Max. Cycle"
  std::string txtFactor; // "Factor"
  // Page "Misc.": 0 clear, 1 checked
  int chkshear = 0;   // "Approximate Shear Distortion"
  int chktorsion = 0; // "Torsional Geometric Stiffness"
  // Page "Initial Buckled Shape": one of the pair is selected
  bool optAll = false;     // "Sym."
  bool optOneThird = true; // "Unsym."

  bool Unloaded = false;

  void Form_Load();
  void cmdApply_Click();
  void cmdClose_Click() { Unloaded = true; } // "Cancel": nothing stored
};

} // namespace velk
