#include "shell/BeamShapeDialog.h"

#include "shell/SectionPreview.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace velk {

namespace {

struct FieldRow {
  const char* name;
  const char* caption;
};

} // namespace

QLineEdit* BeamShapeDialog::AddField(QWidget*, const QString& name) {
  auto* e = new QLineEdit(this);
  e->setObjectName(name);
  e->installEventFilter(this);
  fields_.insert(name, e);
  return e;
}

// A tab with three groups (top flange, web, bottom flange), one more field
// and the section's preview.
QWidget* BeamShapeDialog::AddSectionTab(QTabWidget* tabs, const QString& title,
                                        const QStringList& names, SectionPreview*& pic,
                                        const QString& extraName, const QString& extraGroup,
                                        const QString& extraCaption) {
  auto* page = new QWidget;
  auto* grid = new QHBoxLayout(page);
  auto* left = new QVBoxLayout;
  const char* groups[] = {"Top Flange", "Web", "Bottom Flange"};
  const char* captions[3][2] = {
      {"Width", "Thickness"}, {"Height", "Thickness"}, {"Width", "Thickness"}};
  for (int g = 0; g < 3; ++g) {
    auto* box = new QGroupBox(groups[g]);
    auto* form = new QFormLayout(box);
    form->addRow(captions[g][0], AddField(page, names[2 * g]));
    form->addRow(captions[g][1], AddField(page, names[2 * g + 1]));
    left->addWidget(box);
  }
  auto* box = new QGroupBox(extraGroup);
  auto* form = new QFormLayout(box);
  form->addRow(extraCaption, AddField(page, extraName));
  left->addWidget(box);
  left->addStretch();
  grid->addLayout(left);
  pic = new SectionPreview(page);
  pic->setObjectName(title == "End 1" ? "Picture1" : "Picture2");
  grid->addWidget(pic, 1);
  tabs->addTab(page, title);
  return page;
}

void BeamShapeDialog::AddMaterialAndMeshTabs(QTabWidget* tabs) {
  auto* material = new QWidget;
  auto* mform = new QFormLayout(material);
  mform->addRow("Modulus of Elasticity", AddField(material, "txtMOE"));
  mform->addRow("Poisson Ratio", AddField(material, "txtPR"));
  tabs->addTab(material, "Material");

  auto* mesh = new QWidget;
  auto* meshLayout = new QVBoxLayout(mesh);
  auto* counts = new QGroupBox("Number of Elements");
  auto* cform = new QFormLayout(counts);
  cform->addRow("Longitudinal", AddField(mesh, "txtNumXElements"));
  cform->addRow("Transverse", AddField(mesh, "txtNumYElements"));
  meshLayout->addWidget(counts);
  chkProportionalMesh_ = new QCheckBox("Proportional Size of Elements");
  chkProportionalMesh_->setObjectName("chkProportionalMesh");
  meshLayout->addWidget(chkProportionalMesh_);
  meshLayout->addStretch();
  tabs->addTab(mesh, "Mesh");
}

BeamShapeDialog::BeamShapeDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmBeamShape");
  setWindowTitle("Beam Geometry");
  setProperty("helpContext", 20040);
  auto* tabs = new QTabWidget(this);
  tabs->setObjectName("SSTab1");
  AddSectionTab(tabs, "End 1", {"txtBTFW", "txtBTFT", "txtBWH", "txtBWT", "txtBBFW", "txtBBFT"},
                Picture1_, "txtBL", "Beam", "Beam Length");
  QWidget* end2 = AddSectionTab(
      tabs, "End 2", {"txtBTFWE", "txtBTFTE", "txtBWHE", "txtBWTE", "txtBBFWE", "txtBBFTE"},
      Picture2_, "txtOffset", "Web Height Offset", "Offset Distance");
  auto* setEqual = new QPushButton("Set End 2 = End 1", end2);
  setEqual->setObjectName("setEqual");
  static_cast<QVBoxLayout*>(end2->layout()->itemAt(0)->layout())->insertWidget(4, setEqual);
  AddMaterialAndMeshTabs(tabs);

  auto* generate = new QPushButton("Create Finite Element Mesh");
  generate->setObjectName("cmdGenerate");
  auto* cancel = new QPushButton("Cancel");
  cancel->setObjectName("cmdClose2");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(generate);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs);
  layout->addLayout(buttons);

  const std::pair<const char*, void (frmBeamShape::*)()> keyUps[] = {
      {"txtBTFW", &frmBeamShape::txtBTFW_KeyUp},   {"txtBTFT", &frmBeamShape::txtBTFT_KeyUp},
      {"txtBWH", &frmBeamShape::txtBWH_KeyUp},     {"txtBWT", &frmBeamShape::txtBWT_KeyUp},
      {"txtBBFW", &frmBeamShape::txtBBFW_KeyUp},   {"txtBBFT", &frmBeamShape::txtBBFT_KeyUp},
      {"txtBTFWE", &frmBeamShape::txtBTFWE_KeyUp}, {"txtBTFTE", &frmBeamShape::txtBTFTE_KeyUp},
      {"txtBWHE", &frmBeamShape::txtBWHE_KeyUp},   {"txtBWTE", &frmBeamShape::txtBWTE_KeyUp},
      {"txtBBFWE", &frmBeamShape::txtBBFWE_KeyUp}, {"txtBBFTE", &frmBeamShape::txtBBFTE_KeyUp}};
  for (const auto& [name, handler] : keyUps)
    keyUps_.insert(fields_[name], handler);

  connect(generate, &QPushButton::clicked, this, [this] { Run(&frmBeamShape::cmdGenerate_Click); });
  connect(cancel, &QPushButton::clicked, this, [this] { Run(&frmBeamShape::cmdClose2_Click); });
  connect(setEqual, &QPushButton::clicked, this, [this] { Run(&frmBeamShape::setEqual_Click); });
  connect(Picture1_, &SectionPreview::clicked, this,
          [this] { Run(&frmBeamShape::Picture1_Click); });
  connect(Picture2_, &SectionPreview::clicked, this,
          [this] { Run(&frmBeamShape::Picture2_Click); });
  generate->setDefault(true);
  FromForm(); // the element counts start with the form's own texts
  for (QWidget* w : findChildren<QWidget*>())
    w->installEventFilter(this); // every key that goes down in the dialog
}

// Each text field of the window and the form's field it mirrors.
const std::pair<const char*, std::string frmBeamShape::*> kFields[] = {
    {"txtBL", &frmBeamShape::txtBL},
    {"txtBTFW", &frmBeamShape::txtBTFW},
    {"txtBTFT", &frmBeamShape::txtBTFT},
    {"txtBWH", &frmBeamShape::txtBWH},
    {"txtBWT", &frmBeamShape::txtBWT},
    {"txtBBFW", &frmBeamShape::txtBBFW},
    {"txtBBFT", &frmBeamShape::txtBBFT},
    {"txtBTFWE", &frmBeamShape::txtBTFWE},
    {"txtBTFTE", &frmBeamShape::txtBTFTE},
    {"txtBWHE", &frmBeamShape::txtBWHE},
    {"txtBWTE", &frmBeamShape::txtBWTE},
    {"txtBBFWE", &frmBeamShape::txtBBFWE},
    {"txtBBFTE", &frmBeamShape::txtBBFTE},
    {"txtOffset", &frmBeamShape::txtOffset},
    {"txtMOE", &frmBeamShape::txtMOE},
    {"txtPR", &frmBeamShape::txtPR},
    {"txtNumXElements", &frmBeamShape::txtNumXElements},
    {"txtNumYElements", &frmBeamShape::txtNumYElements}};

void BeamShapeDialog::ToForm() {
  for (const auto& [name, member] : kFields)
    form_.*member = fields_[name]->text().toStdString();
  form_.chkProportionalMesh = chkProportionalMesh_->isChecked() ? 1 : 0;
}

void BeamShapeDialog::FromForm() {
  for (const auto& [name, member] : kFields) {
    QLineEdit* e = fields_[name];
    const QString t = QString::fromStdString(form_.*member);
    if (e->text() != t) e->setText(t);
  }
  chkProportionalMesh_->setChecked(form_.chkProportionalMesh != 0);
  Picture1_->SetPicture(form_.Picture1);
  Picture2_->SetPicture(form_.Picture2);
}

template <class Fn> void BeamShapeDialog::Run(Fn&& handler) {
  ToForm();
  (form_.*handler)();
  FromForm();
  if (form_.Unloaded) accept();
}

void BeamShapeDialog::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  // Filled each time the dialog comes up; the previews appear after the layout.
  QTimer::singleShot(0, this, [this] {
    ToForm();
    form_.Form_Activate();
    FromForm();
  });
}

bool BeamShapeDialog::eventFilter(QObject* o, QEvent* e) {
  if (e->type() == QEvent::FocusIn) {
    // Select_Text: typing replaces the whole field.
    if (auto* line = qobject_cast<QLineEdit*>(o))
      QTimer::singleShot(0, line, [line] { line->selectAll(); });
  } else if (e->type() == QEvent::KeyPress) {
    keysDown_.insert(static_cast<QKeyEvent*>(e)->key());
  } else if (e->type() == QEvent::KeyRelease) {
    // A key pressed elsewhere, such as the Enter or Escape that closed a
    // message box of the preview, is not a key of the field: counting its
    // release would draw the preview and show that message again, forever.
    auto it = keyUps_.find(o);
    if (keysDown_.remove(static_cast<QKeyEvent*>(e)->key()) && it != keyUps_.end()) Run(it.value());
  }
  return QDialog::eventFilter(o, e);
}

} // namespace velk
