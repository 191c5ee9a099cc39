#include "shell/PropertyDialogs.h"

#include "view/View.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velk {

namespace {

// Help contexts of the dialogs (contexts.txt).
constexpr int kPlateHelp = 20131, kStiffenerHelp = 20132, kBoundaryHelp = 20133, kBraceHelp = 20134,
              kLoadHelp = 20136;

void AddRow(QGridLayout* rows, const char* caption, QWidget* field) {
  const int r = rows->rowCount();
  rows->addWidget(new QLabel(caption), r, 0);
  rows->addWidget(field, r, 1);
}

} // namespace

PlateDialog::PlateDialog(QWidget* parent)
    : PropertyDialog(parent, "frmPlate", "Plate", kPlateHelp) {
  Bind();
  AddRow(Rows(), "Thickness", Field(&form_.txtthick, "txtthick"));
  Finish({Command("cmdApply", "Apply", [this] { form_.cmdApply_Click(); }),
          Command("cmdClose", "Close", [this] { form_.cmdClose_Click(); })});
}

StiffenerDialog::StiffenerDialog(QWidget* parent)
    : PropertyDialog(parent, "frmStiffener", "Stiffener", kStiffenerHelp) {
  Bind();
  AddRow(Rows(), "Width", Field(&form_.txtWidth, "txtWidth"));
  AddRow(Rows(), "Thickness", Field(&form_.txtthick, "txtthick"));
  Finish({Command("cmdApply", "Apply", [this] { form_.cmdApply_Click(); }),
          Command("cmdClose", "Close", [this] { form_.cmdClose_Click(); })});
}

BoundaryDialog::BoundaryDialog(QWidget* parent)
    : PropertyDialog(parent, "frmBoundary", "Boundary Condition", kBoundaryHelp) {
  Bind();
  static const char* const captions[] = {"Set X Displacement to", "Set Y Displacement to ",
                                         "Set Z Displacement to", "Set X Rotation to",
                                         "Set Y Rotation to"};
  static const char* const names[] = {"Check1_0", "Check1_1", "Check1_2", "Check1_3", "Check1_4"};
  QGridLayout* rows = Rows();
  for (int k = 0; k < 5; ++k) {
    rows->addWidget(Check(&form_.Check1[static_cast<std::size_t>(k)], names[k], captions[k]), k, 0);
    if (k == 0) {
      rows->addWidget(Field(&form_.txtX, "txtX"), k, 1);
    } else if (k == 1) {
      rows->addWidget(Field(&form_.txtY, "txtY"), k, 1);
    } else { // restraints that can only be zero
      auto* zero = new QLabel("0", this);
      zero->setObjectName(QString("lblZero%1").arg(k));
      rows->addWidget(zero, k, 1);
    }
  }
  Finish({Command("Command1", "Apply", [this] { form_.Command1_Click(); }),
          Command("Command2", "Close", [this] { form_.Command2_Click(); })});
}

BraceDialog::BraceDialog(QWidget* parent)
    : PropertyDialog(parent, "frmBrace", "Brace", kBraceHelp) {
  Bind();
  QGridLayout* rows = Rows();
  rows->addWidget(new QLabel("Direction", this), 0, 0);
  rows->addWidget(new QLabel("Stiffness", this), 0, 1);
  AddRow(rows, "X Direction", Field(&form_.txtX, "txtX"));
  AddRow(rows, "Y Direction", Field(&form_.txtY, "txtY"));
  AddRow(rows, "Z Direction", Field(&form_.txtZ, "txtZ"));
  AddRow(rows, "Rotation about X", Field(&form_.txtXR, "txtXR"));
  AddRow(rows, "Rotation about Y", Field(&form_.txtYR, "txtYR"));
  Finish({Command("Command1", "Apply", [this] { form_.Command1_Click(); }),
          Command("Command2", "Close", [this] { form_.Command2_Click(); })});
}

LoadDialog::LoadDialog(QWidget* parent) : PropertyDialog(parent, "frmLoad", "Load", kLoadHelp) {
  Bind();
  AddRow(Rows(), "Load in X Dir.", Field(&form_.txtLoadX, "txtLoadX"));
  AddRow(Rows(), "Load in Y Dir.", Field(&form_.txtLoadY, "txtLoadY"));
  Finish({Command("cmdApply", "Apply", [this] { form_.cmdApply_Click(); }),
          Command("cmdClose", "Close", [this] { form_.cmdClose_Click(); })});
}

std::unique_ptr<QDialog> NewPropertyDialog(Long propertyMode, QWidget* parent) {
  switch (propertyMode) {
  case PropertyModes::Plate:
    return std::make_unique<PlateDialog>(parent);
  case PropertyModes::Stiffener:
    return std::make_unique<StiffenerDialog>(parent);
  case PropertyModes::Boundary:
    return std::make_unique<BoundaryDialog>(parent);
  case PropertyModes::Brace:
    return std::make_unique<BraceDialog>(parent);
  case PropertyModes::Load:
    return std::make_unique<LoadDialog>(parent);
  default:
    return nullptr;
  }
}

} // namespace velk
