#include "shell/EigenDialog.h"

#include "analysis/EigenCalculation.h"

#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace velk {

namespace {

class SelectAllFilter : public QObject {
public:
  using QObject::QObject;
  bool eventFilter(QObject* o, QEvent* e) override {
    if (e->type() == QEvent::FocusIn)
      if (auto* line = qobject_cast<QLineEdit*>(o))
        QTimer::singleShot(0, line, [line] { line->selectAll(); });
    return false;
  }
};

QLineEdit* Field(QWidget* parent, const char* name, int maxLength = 0) {
  auto* e = new QLineEdit(parent);
  e->setObjectName(name);
  if (maxLength > 0) e->setMaxLength(maxLength);
  SelectTextOnFocus(e);
  return e;
}

QPushButton* Button(QWidget* parent, const char* name, const char* caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}

} // namespace

void SelectTextOnFocus(QLineEdit* e) {
  e->installEventFilter(new SelectAllFilter(e));
}

// ---- run dialog ----

EigenDialog::EigenDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmEigen");
  setWindowTitle("Run Analysis");
  setProperty("helpContext", 20010);
  txtTitle_ = Field(this, "txtTitle", static_cast<int>(frmEigen::kTitleLimit));
  txtDiscription_ = Field(this, "txtDiscription", static_cast<int>(frmEigen::kDiscriptionLimit));
  txtRunNumber_ = Field(this, "txtRunNumber");
  txtEstimation_ = Field(this, "txtEstimation");
  auto* form = new QFormLayout;
  form->addRow("Title", txtTitle_);
  form->addRow("Discription", txtDiscription_); // the program's own spelling: keep it
  form->addRow("Run Number", txtRunNumber_);
  form->addRow("Estimated", txtEstimation_);
  processreport_ = new QLabel(this);
  processreport_->setObjectName("processreport");
  processreport_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  cmdApply_ = Button(this, "cmdApply", "Run");
  cmdCancel_ = Button(this, "cmdCancel", "Cancel");
  cmdClose_ = Button(this, "cmdClose", "Close");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdApply_);
  buttons->addWidget(cmdCancel_);
  buttons->addWidget(cmdClose_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(processreport_);
  layout->addLayout(buttons);
  setMinimumWidth(420);

  connect(cmdApply_, &QPushButton::clicked, this, [this] { Run(&frmEigen::cmdApply_Click); });
  // Cancel acts during the run's yields: it only raises the flag, so the
  // fields are left alone.
  connect(cmdCancel_, &QPushButton::clicked, this, [this] { form_.cmdCancel_Click(); });
  connect(cmdClose_, &QPushButton::clicked, this, [this] { Run(&frmEigen::cmdClose_Click); });

  // Progress texts come while the run is inside the Run command: show them,
  // and the run's button states with them, at once.
  analysisHooks().ProgressSink = [this](const std::string& text) {
    form_.processreport = text;
    processreport_->setText(QString::fromStdString(text));
    cmdApply_->setEnabled(form_.cmdApplyEnabled);
    cmdCancel_->setEnabled(form_.cmdCancelEnabled);
    cmdClose_->setEnabled(form_.cmdCloseEnabled);
    processreport_->repaint();
  };
  FromForm();
}

EigenDialog::~EigenDialog() {
  analysisHooks().ProgressSink = nullptr;
}

namespace {
// Title, description and run ID go into the project file, the deck and the
// listing as 8-bit text: each byte is shown as its Latin-1 character and
// written back as that byte, so what the file held comes back unchanged. A
// typed character beyond Latin-1 has no byte and becomes '?'.
QString ShownText(const std::string& bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}
std::string FileText(const QString& text) {
  const QByteArray bytes = text.toLatin1();
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}
} // namespace

void EigenDialog::ToForm() {
  form_.txtTitle = FileText(txtTitle_->text());
  form_.txtDiscription = FileText(txtDiscription_->text());
  form_.txtRunNumber = FileText(txtRunNumber_->text());
  form_.txtEstimation = txtEstimation_->text().toStdString();
}

void EigenDialog::FromForm() {
  txtTitle_->setText(ShownText(form_.txtTitle));
  txtDiscription_->setText(ShownText(form_.txtDiscription));
  txtRunNumber_->setText(ShownText(form_.txtRunNumber));
  txtEstimation_->setText(QString::fromStdString(form_.txtEstimation));
  processreport_->setText(QString::fromStdString(form_.processreport));
  cmdApply_->setEnabled(form_.cmdApplyEnabled);
  cmdCancel_->setEnabled(form_.cmdCancelEnabled);
  cmdClose_->setEnabled(form_.cmdCloseEnabled);
}

void EigenDialog::Run(void (frmEigen::*handler)()) {
  ToForm();
  (form_.*handler)();
  FromForm();
  if (form_.Unloaded) accept();
}

void EigenDialog::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  form_.Unloaded = false;
  form_.Form_Load();
  FromForm();
}

void EigenDialog::reject() {
  if (form_.cmdCloseEnabled) QDialog::reject();
}

// ---- options dialog ----

AnalysisOptionDialog::AnalysisOptionDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAnalysisOption");
  setWindowTitle("Analysis Option");
  setProperty("helpContext", 20020);
  auto* tabs = new QTabWidget(this);
  // The dialog is as wide as its tab titles, each shown whole.
  tabs->setUsesScrollButtons(false);
  tabs->setElideMode(Qt::ElideNone);
  auto* iteration = new QWidget;
  auto* iform = new QFormLayout(iteration);
  txtShift_ = Field(iteration, "txtShift");
  txtCycle_ = Field(iteration, "txtCycle");
  txtFactor_ = Field(iteration, "txtFactor");
  iform->addRow("Max. Shift", txtShift_);
  iform->addRow("Max. Cycle", txtCycle_);
  iform->addRow("Factor", txtFactor_);
  tabs->addTab(iteration, "Iteration");
  auto* misc = new QWidget;
  auto* mlayout = new QVBoxLayout(misc);
  chkshear_ = new QCheckBox("Approximate Shear Distortion");
  chkshear_->setObjectName("chkshear");
  chktorsion_ = new QCheckBox("Torsional Geometric Stiffness");
  chktorsion_->setObjectName("chktorsion");
  mlayout->addWidget(chkshear_);
  mlayout->addWidget(chktorsion_);
  mlayout->addStretch();
  tabs->addTab(misc, "Misc.");
  auto* shape = new QWidget;
  auto* slayout = new QVBoxLayout(shape);
  optAll_ = new QRadioButton("Sym.");
  optAll_->setObjectName("optAll");
  optOneThird_ = new QRadioButton("Unsym.");
  optOneThird_->setObjectName("optOneThird");
  slayout->addWidget(optAll_);
  slayout->addWidget(optOneThird_);
  slayout->addStretch();
  tabs->addTab(shape, "Initial Buckled Shape");
  auto* apply = Button(this, "cmdApply", "Apply");
  auto* cancel = Button(this, "cmdClose", "Cancel");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(apply);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs);
  layout->addLayout(buttons);
  connect(apply, &QPushButton::clicked, this, [this] { Run(&frmAnalysisOption::cmdApply_Click); });
  connect(cancel, &QPushButton::clicked, this, [this] { Run(&frmAnalysisOption::cmdClose_Click); });
  form_.Form_Load();
  FromForm();
}

void AnalysisOptionDialog::ToForm() {
  form_.txtShift = txtShift_->text().toStdString();
  form_.txtCycle = txtCycle_->text().toStdString();
  form_.txtFactor = txtFactor_->text().toStdString();
  form_.chkshear = chkshear_->isChecked() ? 1 : 0;
  form_.chktorsion = chktorsion_->isChecked() ? 1 : 0;
  form_.optAll = optAll_->isChecked();
  form_.optOneThird = optOneThird_->isChecked();
}

void AnalysisOptionDialog::FromForm() {
  txtShift_->setText(QString::fromStdString(form_.txtShift));
  txtCycle_->setText(QString::fromStdString(form_.txtCycle));
  txtFactor_->setText(QString::fromStdString(form_.txtFactor));
  chkshear_->setChecked(form_.chkshear != 0);
  chktorsion_->setChecked(form_.chktorsion != 0);
  optAll_->setChecked(form_.optAll);
  optOneThird_->setChecked(form_.optOneThird);
}

void AnalysisOptionDialog::Run(void (frmAnalysisOption::*handler)()) {
  ToForm();
  (form_.*handler)();
  FromForm();
  if (form_.Unloaded) accept();
}

} // namespace velk
