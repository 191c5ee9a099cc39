#pragma once
// "Supports and Loads": a passive view over frmSupportsLoads.
#include "forms/frmSupportsLoads.h"
#include "shell/BoundDialog.h"

namespace velk {

class SupportsLoadsDialog : public BoundDialog {
public:
  explicit SupportsLoadsDialog(QWidget* parent = nullptr);
  frmSupportsLoads& form() { return form_; }

private:
  frmSupportsLoads form_;
};

} // namespace velk
