#pragma once
// The coordinate dialog: a passive view over frmCoord.
#include "forms/frmCoord.h"
#include "shell/BoundDialog.h"

#include <memory>

class QLabel;

namespace velk {

// "Nodal Coordinates" on one node; stays open after Apply.
class CoordDialog : public BoundDialog {
public:
  CoordDialog(std::shared_ptr<Nodeb> node, QWidget* parent = nullptr);
  frmCoord& form() { return form_; }

protected:
  void FromForm() override;

private:
  frmCoord form_;
  QLabel* lblNode_ = nullptr;
  QPushButton* cmdUndo_ = nullptr;
};

} // namespace velk
