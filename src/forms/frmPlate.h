#pragma once
// The plate dialog's logic: one thickness for every selected plate. A
// thickness of 0 takes the plates out of the structure.
#include "forms/PropertyForm.h"

namespace velk {

class frmPlate : public PropertyForm {
public:
  // Caption "Plate".
  std::string txtthick; // "Thickness"

  void Form_Activate() { Fill_Fields(); }
  void cmdApply_Click();
  void cmdClose_Click() { Unloaded = true; }

private:
  void Fill_Fields();
};

} // namespace velk
