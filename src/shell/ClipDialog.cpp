#include "shell/ClipDialog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

namespace velk {

ClipDialog::ClipDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmClip");
  setWindowTitle("Clipping");
  setProperty("helpContext", 20235);
  struct Row {
    const char* slider;
    const char* label;
    ClipSlider frmClip::*field;
    std::string frmClip::*text;
    void (frmClip::*handler)();
  };
  const Row rows[4] = {
      {"sldHStart", "lblHS", &frmClip::sldHStart, &frmClip::lblHS, &frmClip::sldHStart_Change},
      {"sldHEnd", "lblHE", &frmClip::sldHEnd, &frmClip::lblHE, &frmClip::sldHEnd_Change},
      {"sldVStart", "lblVS", &frmClip::sldVStart, &frmClip::lblVS, &frmClip::sldVStart_Change},
      {"sldVEnd", "lblVE", &frmClip::sldVEnd, &frmClip::lblVE, &frmClip::sldVEnd_Change}};
  auto* layout = new QVBoxLayout(this);
  QGridLayout* grid = nullptr;
  for (int i = 0; i < 4; ++i) {
    if (i % 2 == 0) {
      auto* box = new QGroupBox(i == 0 ? "X Direction" : "Y Direction", this);
      grid = new QGridLayout(box);
      layout->addWidget(box);
    }
    auto* slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(rows[i].slider);
    slider->setMinimumWidth(240);
    auto* label = new QLabel(this);
    label->setObjectName(rows[i].label);
    label->setMinimumWidth(60);
    grid->addWidget(new QLabel(i % 2 == 0 ? "From" : "To", this), i % 2, 0);
    grid->addWidget(slider, i % 2, 1);
    grid->addWidget(label, i % 2, 2);
    pairs_[i] = {rows[i].field, rows[i].text, slider, label};
    const auto handler = rows[i].handler;
    connect(slider, &QSlider::valueChanged, this, [this, i, handler] { Moved(i, handler); });
  }
  auto* reset = new QPushButton("Reset", this);
  reset->setObjectName("cmdReset");
  auto* close = new QPushButton("Close", this);
  close->setObjectName("cmdClose");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(reset);
  buttons->addWidget(close);
  layout->addLayout(buttons);
  connect(reset, &QPushButton::clicked, this, [this] {
    form_.cmdReset_Click();
    FromForm();
  });
  connect(close, &QPushButton::clicked, this, [this] {
    form_.cmdClose_Click();
    accept();
  });
  form_.Form_Load();
  FromForm();
}

QSlider* ClipDialog::Slider(const QString& name) const {
  return findChild<QSlider*>(name);
}

void ClipDialog::FromForm() {
  for (const Pair& p : pairs_) {
    const QSignalBlocker quiet(p.widget); // the form has already answered for these
    const ClipSlider& s = form_.*p.slider;
    p.widget->setRange(static_cast<int>(s.Min), static_cast<int>(s.Max));
    p.widget->setValue(static_cast<int>(s.Value));
    p.text->setText(QString::fromStdString(form_.*p.label));
  }
}

void ClipDialog::Moved(int index, void (frmClip::*handler)()) {
  (form_.*pairs_[index].slider).Value = pairs_[index].widget->value();
  (form_.*handler)();
  FromForm();
}

} // namespace velk
