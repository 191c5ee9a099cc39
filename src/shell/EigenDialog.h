#pragma once
// The run dialog and the options dialog: passive views over frmEigen and
// frmAnalysisOption.
#include "forms/frmAnalysisOption.h"
#include "forms/frmEigen.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace velk {

class EigenDialog : public QDialog {
  Q_OBJECT
public:
  explicit EigenDialog(QWidget* parent = nullptr);
  ~EigenDialog() override;
  frmEigen& Form() { return form_; }

protected:
  void showEvent(QShowEvent* e) override;
  void reject() override; // Escape or the window's close: only when idle

private:
  void ToForm();
  void FromForm();
  void Run(void (frmEigen::*handler)());
  frmEigen form_;
  QLineEdit *txtTitle_, *txtDiscription_, *txtRunNumber_, *txtEstimation_;
  QLabel* processreport_;
  QPushButton *cmdApply_, *cmdCancel_, *cmdClose_;
};

class AnalysisOptionDialog : public QDialog {
  Q_OBJECT
public:
  explicit AnalysisOptionDialog(QWidget* parent = nullptr);
  frmAnalysisOption& Form() { return form_; }

private:
  void ToForm();
  void FromForm();
  void Run(void (frmAnalysisOption::*handler)());
  frmAnalysisOption form_;
  QLineEdit *txtShift_, *txtCycle_, *txtFactor_;
  QCheckBox *chkshear_, *chktorsion_;
  QRadioButton *optAll_, *optOneThird_;
};

// Text fields select their whole text when they get the focus.
void SelectTextOnFocus(QLineEdit* e);

} // namespace velk
