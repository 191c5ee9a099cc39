#include "shell/OptionDialog.h"

#include "shell/EigenDialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velk {

namespace {
// The form's fields by the names of the controls.
#define CHECK(name)                                                                                \
  { #name, &frmOption::name }
const std::pair<const char*, int frmOption::*> kChecks[] = {CHECK(chkCoordinate),
                                                            CHECK(chkBoundary),
                                                            CHECK(chkLoad),
                                                            CHECK(chkBrace),
                                                            CHECK(chkStiffener),
                                                            CHECK(chkBoundaryValue),
                                                            CHECK(chkLoadValue),
                                                            CHECK(chkBraceValue),
                                                            CHECK(chkShowNodeNumber),
                                                            CHECK(chkShowStiffenerNumber),
                                                            CHECK(chkShowPlateNumber),
                                                            CHECK(chkPlate),
                                                            CHECK(chkHideModelBuckle),
                                                            CHECK(chkShade)};
const std::pair<const char*, std::string frmOption::*> kFields[] = {
    CHECK(txtInpMag),      CHECK(txtOutpMag),  CHECK(txtSelectedMarker), CHECK(txtPropertyMarker),
    CHECK(txtLayerOffset), CHECK(txtFontSize), CHECK(txtZoomFactor)};
#undef CHECK
} // namespace

QCheckBox* OptionDialog::AddCheck(const QString& name, const QString& caption) {
  auto* c = new QCheckBox(caption);
  c->setObjectName(name);
  checks_.insert(name, c);
  return c;
}

QLineEdit* OptionDialog::AddField(const QString& name) {
  auto* e = new QLineEdit;
  e->setObjectName(name);
  SelectTextOnFocus(e);
  fields_.insert(name, e);
  return e;
}

OptionDialog::OptionDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmOption");
  setWindowTitle("View Option");
  setProperty("helpContext", 20240);
  auto* tabs = new QTabWidget(this);
  tabs->setUsesScrollButtons(false);
  tabs->setElideMode(Qt::ElideNone);

  // "Model": each symbol with its values beside it, then the numbers.
  auto* model = new QWidget;
  auto* grid = new QGridLayout(model);
  grid->addWidget(AddCheck("chkCoordinate", "Show Coordinate System"), 0, 0);
  grid->addWidget(AddCheck("chkBoundary", "Show Boundary Conditions"), 1, 0);
  grid->addWidget(AddCheck("chkBoundaryValue", "Show Values"), 1, 1);
  grid->addWidget(AddCheck("chkLoad", "Show Loads"), 2, 0);
  grid->addWidget(AddCheck("chkLoadValue", "Show Values"), 2, 1);
  grid->addWidget(AddCheck("chkBrace", "Show Braces"), 3, 0);
  grid->addWidget(AddCheck("chkBraceValue", "Show Values"), 3, 1);
  grid->addWidget(AddCheck("chkStiffener", "Show Stiffeners"), 4, 0);
  grid->addWidget(AddCheck("chkPlate", "Show Plate"), 5, 0);
  grid->addWidget(AddCheck("chkShowNodeNumber", "Show Node Number"), 6, 0);
  grid->addWidget(AddCheck("chkShowStiffenerNumber", "Show Stiffener Number"), 7, 0);
  grid->addWidget(AddCheck("chkShowPlateNumber", "Show Plate Number"), 8, 0);
  grid->setRowStretch(9, 1);
  tabs->addTab(model, "Model");

  auto* result = new QWidget;
  auto* rform = new QFormLayout(result);
  rform->addRow("In-plane Magnification Factor :", AddField("txtInpMag"));
  rform->addRow("Out-of-plane Magnification Factor :", AddField("txtOutpMag"));
  rform->addRow(AddCheck("chkHideModelBuckle", "Hide the model when buckled shape is shown"));
  rform->addRow(AddCheck("chkShade", "Shading"));
  tabs->addTab(result, "Result");

  auto* marker = new QWidget;
  auto* mform = new QFormLayout(marker);
  mform->addRow("Selected Element Marker Size :", AddField("txtSelectedMarker"));
  mform->addRow("Property Marker Size :", AddField("txtPropertyMarker"));
  mform->addRow("Layer Offset Distance :", AddField("txtLayerOffset"));
  mform->addRow("Font Size", AddField("txtFontSize"));
  tabs->addTab(marker, "Marker");

  auto* zoom = new QWidget;
  auto* zform = new QFormLayout(zoom);
  zform->addRow("Zoom In/Out Center Factor [1.0 - 10.0]", AddField("txtZoomFactor"));
  tabs->addTab(zoom, "Zoom");

  auto button = [this](const char* name, const char* caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
  };
  auto* apply = button("cmdApply", "Apply");
  auto* close = button("cmdClose", "Close");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(apply);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs);
  layout->addLayout(buttons);
  connect(apply, &QPushButton::clicked, this, [this] {
    ToForm();
    form_.cmdApply_Click();
    FromForm();
  });
  connect(close, &QPushButton::clicked, this, [this] {
    form_.cmdClose_Click();
    reject();
  });
}

void OptionDialog::showEvent(QShowEvent* e) {
  form_.Form_Activate();
  FromForm();
  QDialog::showEvent(e);
}

void OptionDialog::ToForm() {
  for (const auto& [name, field] : kChecks)
    form_.*field = checks_.value(name)->isChecked() ? 1 : 0;
  for (const auto& [name, field] : kFields)
    form_.*field = fields_.value(name)->text().toStdString();
}

void OptionDialog::FromForm() {
  for (const auto& [name, field] : kChecks)
    checks_.value(name)->setChecked(form_.*field == 1);
  for (const auto& [name, field] : kFields)
    fields_.value(name)->setText(QString::fromStdString(form_.*field));
}

} // namespace velk
