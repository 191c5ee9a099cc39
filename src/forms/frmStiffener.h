#pragma once
// The stiffener dialog's logic: one section for every selected stiffener. The
// dialog refuses a section of 0; only Delete Property removes a stiffener.
#include "forms/PropertyForm.h"

namespace velk {

class frmStiffener : public PropertyForm {
public:
  // Caption "Stiffener".
  std::string txtWidth; // "Width"
  std::string txtthick; // "Thickness"

  void Form_Activate() { Fill_Fields(); }
  void cmdApply_Click();
  void cmdClose_Click() { Unloaded = true; }

private:
  void Fill_Fields();
};

} // namespace velk
