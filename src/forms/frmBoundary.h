#pragma once
// The boundary dialog's logic: five restraints for every selected node. Apply
// writes all five flags; a prescribed value only where its box is checked.
#include "forms/PropertyForm.h"

#include <array>

namespace velk {

class frmBoundary : public PropertyForm {
public:
  // Caption "Boundary Condition". 0 clear, 1 checked:
  // "Set X Displacement to", "Set Y Displacement to ", "Set Z Displacement to",
  // "Set X Rotation to", "Set Y Rotation to".
  std::array<int, 5> Check1{};
  std::string txtX; // value of the X displacement
  std::string txtY; // value of the Y displacement

  void Form_Activate() { Fill_Fields(); }
  void Command1_Click();                     // "Apply"
  void Command2_Click() { Unloaded = true; } // "Close"

private:
  void Fill_Fields();
};

} // namespace velk
