#pragma once
// The window "Plot": a passive view over frmStress, beside the main window and
// not modal, with a colour scale of the plot in force.
#include "forms/frmStress.h"

#include <QDialog>

class QLabel;
class QRadioButton;

namespace velk {

// A bar from the plot's minimum to its maximum in the colours of the map, with
// a few values beside it.
class ColourScale : public QWidget {
  Q_OBJECT
public:
  explicit ColourScale(const frmStress& form, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {150, 200}; }
  static constexpr int kLabels = 5; // values written beside the bar
  // The value at a height of the bar, from the maximum at the top to the minimum at the bottom.
  Single ValueAt(int y) const;
  QRect Bar() const;

protected:
  void paintEvent(QPaintEvent* e) override;

private:
  const frmStress& form_;
};

class StressWindow : public QDialog {
  Q_OBJECT
public:
  explicit StressWindow(QWidget* mainWindow);
  frmStress& Form() { return form_; }
  ColourScale* Scale() const { return scale_; }

protected:
  void showEvent(QShowEvent* e) override;
  // Closing by any way (the window's close, Escape, Close) goes through here.
  void reject() override;

private:
  void ToForm();
  void FromForm();
  frmStress form_;
  QWidget* main_;
  QRadioButton *optSx_, *optSy_, *optSxy_, *optMises_;
  QLabel *lblStress_, *lblMax_, *lblMin_;
  ColourScale* scale_;
};

} // namespace velk
