#pragma once
// "Buckling Modes": a passive view over frmBucklingModes, beside the main
// window and not modal.
#include "forms/frmBucklingModes.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace velk {

class BucklingModesWindow : public QDialog {
  Q_OBJECT
public:
  explicit BucklingModesWindow(QWidget* mainWindow);
  frmBucklingModes& Form() { return form_; }
  // Called after a mode is drawn, so the main window's Results menu follows.
  std::function<void()> OnShown;

protected:
  void showEvent(QShowEvent* e) override;
  // Closed during a run, the window cancels it and closes when it has ended:
  // the run is still on the stack of its Run button.
  void closeEvent(QCloseEvent* e) override;
  void reject() override { close(); }

private:
  void FromForm();
  frmBucklingModes form_;
  QWidget* main_;
  QLineEdit* txtModes_;
  QPushButton *cmdRun_, *cmdCancel_;
  QTableWidget* table_;
  QComboBox* cboShow_;
  QLabel* lblStatus_;
  bool placed_ = false;
  bool running_ = false, closeAfterRun_ = false;
};

} // namespace velk
