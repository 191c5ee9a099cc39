#include "shell/CoordDialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velk {

namespace {
constexpr int kCoordHelp = 20045; // contexts.txt
}

CoordDialog::CoordDialog(std::shared_ptr<Nodeb> node, QWidget* parent)
    : BoundDialog(parent, "frmCoord", "Nodal Coordinates", kCoordHelp), form_(std::move(node)) {
  activate_ = [this] {
    form_.Unloaded = false;
    form_.Form_Activate();
  };
  unloaded_ = &form_.Unloaded;
  QGridLayout* rows = Rows();
  lblNode_ = new QLabel(this);
  lblNode_->setObjectName("lblNode");
  rows->addWidget(lblNode_, 0, 0, 1, 2);
  rows->addWidget(new QLabel("X :", this), 1, 0);
  rows->addWidget(Field(&form_.txtX, "txtX"), 1, 1);
  rows->addWidget(new QLabel("Y :", this), 2, 0);
  rows->addWidget(Field(&form_.txtY, "txtY"), 2, 1);
  cmdUndo_ = Command("cmdUndo", "Undo", [this] { form_.cmdUndo_Click(); });
  Finish({Command("cmdApply", "Apply", [this] { form_.cmdApply_Click(); }), cmdUndo_,
          Command("cmdClose", "Close", [this] { form_.cmdClose_Click(); })});
}

void CoordDialog::FromForm() {
  BoundDialog::FromForm();
  lblNode_->setText(QString::fromStdString(form_.lblNode));
  cmdUndo_->setEnabled(form_.cmdUndoEnabled);
}

} // namespace velk
