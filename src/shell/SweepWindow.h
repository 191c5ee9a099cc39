#pragma once
// "Parameter Sweep": a passive view over frmSweep, not modal. Run starts the
// batch tool's sweep as a child process and follows its cases as they end.
#include "forms/frmSweep.h"
#include "shell/SupportsLoadsDialog.h"

#include <QPointer>
#include <QProcess>
#include <QWidget>

class QComboBox;
class QLabel;
class QProgressBar;

namespace velk {

// The buckling load over the field, point by point as the cases end.
class SweepCurve : public QWidget {
public:
  SweepCurve(const frmSweep& form, QWidget* parent);
  QSize sizeHint() const override { return {440, 260}; }

protected:
  void paintEvent(QPaintEvent* e) override;

private:
  const frmSweep& form_;
};

class SweepWindow : public RuleRowsDialog {
public:
  explicit SweepWindow(QWidget* mainWindow);
  ~SweepWindow() override;
  frmSweep& Form() { return form_; }
  bool Running() const { return process_ && process_->state() != QProcess::NotRunning; }
  // The batch tool that runs the study: beside the program unless set.
  QString tool;

protected:
  void showEvent(QShowEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void FromForm() override;

private:
  void Start();
  void Stop();
  void TakeOutput();
  frmSweep form_;
  QWidget* main_;
  QComboBox* field_;
  QProgressBar* progress_;
  QLabel* lblStatus_;
  SweepCurve* curve_;
  QPushButton *cmdRun_, *cmdCancel_;
  QPointer<QProcess> process_;
  QByteArray pending_;  // a line not yet ended
  QString lastMessage_; // the tool's last word that was not a case
  bool stopped_ = false, placed_ = false;
};

} // namespace velk
