#pragma once
// "Supports and Loads": a passive view over frmSupportsLoads; its rows of
// rules are shared with the Parameter Sweep window.
#include "forms/frmSupportsLoads.h"
#include "shell/BoundDialog.h"

namespace velk {

// A dialog with the rows of the rules, bound to a frmSupportsLoads.
class RuleRowsDialog : public BoundDialog {
public:
  using BoundDialog::BoundDialog;

protected:
  // The rule rows from grid row `row` on; `row` ends past them.
  void AddRuleRows(frmSupportsLoads& f, int& row);
};

class SupportsLoadsDialog : public RuleRowsDialog {
public:
  explicit SupportsLoadsDialog(QWidget* parent = nullptr);
  frmSupportsLoads& form() { return form_; }

private:
  frmSupportsLoads form_;
};

} // namespace velk
