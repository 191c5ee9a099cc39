#pragma once
// The brace dialog's logic: five spring stiffnesses, none negative, for every
// selected node.
#include "forms/PropertyForm.h"

namespace velk {

class frmBrace : public PropertyForm {
public:
  // Caption "Brace"; columns "Direction" and "Stiffness".
  std::string txtX;  // "X Direction"
  std::string txtY;  // "Y Direction"
  std::string txtZ;  // "Z Direction"
  std::string txtXR; // "Rotation about X"
  std::string txtYR; // "Rotation about Y"

  void Form_Activate() { Fill_Fields(); }
  void Command1_Click();                     // "Apply"
  void Command2_Click() { Unloaded = true; } // "Close"

private:
  void Fill_Fields();
};

} // namespace velk
