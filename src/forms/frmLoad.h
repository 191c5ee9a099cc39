#pragma once
// The load dialog's logic: two in-plane point loads for every selected node.
// A load's sign is its direction, so any number goes.
#include "forms/PropertyForm.h"

namespace velk {

class frmLoad : public PropertyForm {
public:
  // Caption "Load".
  std::string txtLoadX; // "Load in X Dir."
  std::string txtLoadY; // "Load in Y Dir."

  void Form_Activate() { Fill_Fields(); }
  void cmdApply_Click();
  void cmdClose_Click() { Unloaded = true; }

private:
  void Fill_Fields();
};

} // namespace velk
