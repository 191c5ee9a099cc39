#include "shell/SupportsLoadsDialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velk {

namespace {
constexpr int kSupportsLoadsHelp = 20310; // contexts.txt
}

void RuleRowsDialog::AddRuleRows(frmSupportsLoads& f, int& row) {
  QGridLayout* rows = Rows();
  auto label = [&](const char* text, int column = 0) {
    rows->addWidget(new QLabel(text, this), row, column);
  };
  rows->addWidget(Check(&f.chkFork, "chkFork", "Fork supports"), row, 0, 1, 2);
  rows->addWidget(Check(&f.chkSimple, "chkSimple", "Simple supports (plate)"), row++, 2, 1, 3);
  label("End moment M");
  rows->addWidget(Field(&f.txtMoment, "txtMoment"), row++, 1);
  label("Axial load P");
  rows->addWidget(Field(&f.txtAxial, "txtAxial"), row++, 1);
  label("Point load P");
  rows->addWidget(Field(&f.txtPoint, "txtPoint"), row, 1);
  label("at x", 2);
  rows->addWidget(Field(&f.txtPointX, "txtPointX"), row, 3);
  rows->addWidget(Check(&f.chkPointBottom, "chkPointBottom", "on the bottom flange"), row++, 4);
  label("Line load q");
  rows->addWidget(Field(&f.txtUdl, "txtUdl"), row++, 1);
  label("Patch load F");
  rows->addWidget(Field(&f.txtPatch, "txtPatch"), row, 1);
  label("over c", 2);
  rows->addWidget(Field(&f.txtPatchC, "txtPatchC"), row, 3);
  label("centred at x", 4);
  rows->addWidget(Field(&f.txtPatchX, "txtPatchX"), row++, 5);
  label("Edge stress S1 (bottom)");
  rows->addWidget(Field(&f.txtEdgeS1, "txtEdgeS1"), row, 1);
  label("S2 (top)", 2);
  rows->addWidget(Field(&f.txtEdgeS2, "txtEdgeS2"), row++, 3);
  label("Edge shear T");
  rows->addWidget(Field(&f.txtEdgeShear, "txtEdgeShear"), row++, 1);
  auto* note = new QLabel("x along the girder from End 1; blank x: mid-length. Loads add to "
                          "those on the nodes; compression positive.",
                          this);
  note->setWordWrap(true);
  rows->addWidget(note, row++, 0, 1, 6);
}

SupportsLoadsDialog::SupportsLoadsDialog(QWidget* parent)
    : RuleRowsDialog(parent, "frmSupportsLoads", "Supports and Loads", kSupportsLoadsHelp) {
  activate_ = [this] { form_.Unloaded = false; };
  unloaded_ = &form_.Unloaded;
  int row = 0;
  AddRuleRows(form_, row);
  Finish({Command("cmdApply", "Apply", [this] { form_.cmdApply_Click(); }),
          Command("cmdClose", "Close", [this] { form_.cmdClose_Click(); })});
}

} // namespace velk
