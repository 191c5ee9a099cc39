#pragma once
// The Supports and Loads dialog's logic: the rules of `velk-batch generate`
// put on the girder in the window, through the same rule code. Apply checks
// every field, then applies the rules in the order of the fields; a rule that
// does not fit the model is refused with its reason and nothing is written.
// Loads add to what the nodes carry, restraints are set, as the property
// dialogs do.
#include <string>
#include <vector>

namespace velk {

class frmSupportsLoads {
public:
  bool Unloaded = false; // the dialog has closed itself

  // Caption "Supports and Loads".
  int chkFork = 0;          // "Fork supports"
  int chkSimple = 0;        // "Simple supports (plate)"
  std::string txtMoment;    // "End moment M"
  std::string txtAxial;     // "Axial load P"
  std::string txtPoint;     // "Point load P"
  std::string txtPointX;    // "at x" (blank: mid-length)
  int chkPointBottom = 0;   // "on the bottom flange"
  std::string txtUdl;       // "Line load q"
  std::string txtPatch;     // "Patch load F"
  std::string txtPatchC;    // "over the length c"
  std::string txtPatchX;    // "centred at x" (blank: mid-length)
  std::string txtEdgeS1;    // "Edge stress S1 (bottom)"
  std::string txtEdgeS2;    // "S2 (top)" (blank: S1)
  std::string txtEdgeShear; // "Edge shear T"

  struct Rule {
    std::string option, value;
  };
  // The rules the fields stand for, in the order they are applied. A field
  // that is not a number, or a part without its whole, leaves its message in
  // `why` and no rules.
  std::vector<Rule> Rules(std::string& why) const;

  void cmdApply_Click();
  void cmdClose_Click() { Unloaded = true; }
};

} // namespace velk
