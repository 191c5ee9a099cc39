#pragma once
// The dialog "View Option": a passive view over frmOption.
#include "forms/frmOption.h"

#include <QDialog>
#include <QMap>

class QCheckBox;
class QLineEdit;

namespace velk {

class OptionDialog : public QDialog {
  Q_OBJECT
public:
  explicit OptionDialog(QWidget* parent = nullptr);
  frmOption& Form() { return form_; }
  QLineEdit* Field(const QString& name) const { return fields_.value(name); }
  QCheckBox* Check(const QString& name) const { return checks_.value(name); }

protected:
  void showEvent(QShowEvent* e) override;

private:
  QCheckBox* AddCheck(const QString& name, const QString& caption);
  QLineEdit* AddField(const QString& name);
  void ToForm();
  void FromForm();
  frmOption form_;
  QMap<QString, QCheckBox*> checks_;
  QMap<QString, QLineEdit*> fields_;
};

} // namespace velk
