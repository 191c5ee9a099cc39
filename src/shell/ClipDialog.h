#pragma once
// The clipping dialog: a passive view over frmClip.
#include "forms/frmClip.h"

#include <QDialog>

class QLabel;
class QSlider;

namespace velk {

class ClipDialog : public QDialog {
  Q_OBJECT
public:
  explicit ClipDialog(QWidget* parent = nullptr);
  frmClip& Form() { return form_; }
  QSlider* Slider(const QString& name) const;

private:
  struct Pair {
    ClipSlider frmClip::*slider;
    std::string frmClip::*label;
    QSlider* widget;
    QLabel* text;
  };
  void FromForm();
  void Moved(int index, void (frmClip::*handler)());
  frmClip form_;
  Pair pairs_[4];
};

} // namespace velk
