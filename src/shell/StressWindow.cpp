#include "shell/StressWindow.h"

#include "session/VELKMain.h"
#include "shell/WindowPlacement.h"
#include "view/View.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

#include <cmath>

namespace velk {

ColourScale::ColourScale(const frmStress& form, QWidget* parent) : QWidget(parent), form_(form) {
  setObjectName("ColourScale");
  setMinimumSize(120, 120);
}

QRect ColourScale::Bar() const {
  const int pad = fontMetrics().height() / 2 + 2;
  return {4, pad, 24, std::max(1, height() - 2 * pad)};
}

Single ColourScale::ValueAt(int y) const {
  const QRect bar = Bar();
  const double t = bar.height() > 1 ? double(y - bar.top()) / (bar.height() - 1) : 0;
  return static_cast<Single>(form_.ShownMax + (form_.ShownMin - form_.ShownMax) * t);
}

// Only the stress frame knows its range: until one is drawn, the bar stays empty.
void ColourScale::paintEvent(QPaintEvent*) {
  QPainter p(this);
  const QRect bar = Bar();
  p.setPen(palette().color(QPalette::WindowText));
  p.drawRect(bar.adjusted(-1, -1, 0, 0));
  const View& v = gView();
  if (!form_.RangeShown || v.OptionShowStress == StressPlots::None) return;
  const Single r = static_cast<Single>(v.maxStress);
  for (int y = bar.top(); y <= bar.bottom(); ++y) {
    const StressColour c = StressColourOf(ValueAt(y), r);
    p.setPen(QColor::fromRgbF(c[0], c[1], c[2]));
    p.drawLine(bar.left(), y, bar.right(), y);
  }
  p.setPen(palette().color(QPalette::WindowText));
  const int ascent = fontMetrics().ascent();
  for (int i = 0; i < kLabels; ++i) {
    const int y = bar.top() + (bar.height() - 1) * i / (kLabels - 1);
    const Single value = form_.ShownMax + (form_.ShownMin - form_.ShownMax) * i / (kLabels - 1);
    p.drawLine(bar.right() + 1, y, bar.right() + 4, y);
    const QString text = QString::fromStdString(Format(value, "0.00E+00"));
    p.drawText(bar.right() + 8, y + ascent / 2 - 1, text);
  }
}

StressWindow::StressWindow(QWidget* mainWindow) : QDialog(mainWindow), main_(mainWindow) {
  setObjectName("frmStress");
  setWindowTitle("Plot");
  setModal(false);
  setProperty("helpContext", 20160);
  auto radio = [this](const char* name, const char* caption) {
    auto* r = new QRadioButton(caption, this);
    r->setObjectName(name);
    return r;
  };
  // "&&" shows one ampersand, as the caption means it.
  optSx_ = radio("optSx", "Sx && Stiffener ");
  optSy_ = radio("optSy", "Sy");
  optSxy_ = radio("optSxy", "Sxy");
  optMises_ = radio("optMises", "Mises");
  auto* group = new QButtonGroup(this);
  for (QRadioButton* r : {optSx_, optSy_, optSxy_, optMises_})
    group->addButton(r);
  auto label = [this](const char* name) {
    auto* l = new QLabel(this);
    l->setObjectName(name);
    l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    l->setMinimumWidth(fontMetrics().horizontalAdvance("-9.99E+99") + 8);
    return l;
  };
  lblStress_ = label("lblStress");
  lblMax_ = label("lblMax");
  lblMin_ = label("lblMin");
  scale_ = new ColourScale(form_, this);
  auto* ok = new QPushButton("Apply", this);
  ok->setObjectName("OKButton");
  ok->setAutoDefault(false);
  auto* cancel = new QPushButton("Close", this);
  cancel->setObjectName("CancelButton");
  cancel->setAutoDefault(false);

  auto* choices = new QVBoxLayout;
  for (QRadioButton* r : {optSx_, optSy_, optSxy_, optMises_})
    choices->addWidget(r);
  auto* values = new QFormLayout;
  values->addRow(lblStress_);
  values->addRow("Max", lblMax_);
  values->addRow("Min", lblMin_);
  choices->addLayout(values);
  choices->addStretch();
  auto* top = new QHBoxLayout;
  top->addLayout(choices);
  top->addWidget(scale_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top, 1);
  layout->addLayout(buttons);

  form_.Changed = [this] { FromForm(); };
  connect(ok, &QPushButton::clicked, this, [this] {
    ToForm();
    form_.OKButton_Click();
    FromForm();
  });
  connect(cancel, &QPushButton::clicked, this, [this] { close(); });
}

void StressWindow::showEvent(QShowEvent* e) {
  if (!form_.Visible) {
    form_.Form_Load();
    FromForm();
    PlaceToolWindow(this, main_, sizeHint());
  }
  QDialog::showEvent(e);
}

void StressWindow::reject() {
  form_.Form_Unload();
  QDialog::reject();
}

void StressWindow::ToForm() {
  form_.optSx = optSx_->isChecked();
  form_.optSy = optSy_->isChecked();
  form_.optSxy = optSxy_->isChecked();
  form_.optMises = optMises_->isChecked();
}

void StressWindow::FromForm() {
  // With no plot no choice is set: the group must let all four go off.
  auto* group = optSx_->group();
  group->setExclusive(false);
  optSx_->setChecked(form_.optSx);
  optSy_->setChecked(form_.optSy);
  optSxy_->setChecked(form_.optSxy);
  optMises_->setChecked(form_.optMises);
  group->setExclusive(true);
  lblStress_->setText(QString::fromStdString(form_.lblStress));
  lblMax_->setText(QString::fromStdString(form_.lblMax));
  lblMin_->setText(QString::fromStdString(form_.lblMin));
  scale_->update();
}

} // namespace velk
