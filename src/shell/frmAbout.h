#pragma once
#include <QDialog>

namespace velk {

// The About box: the version from the program's major and minor number; closes
// on OK or when it loses the focus.
class frmAbout : public QDialog {
  Q_OBJECT
public:
  explicit frmAbout(QWidget* parent = nullptr);
  static QString VersionText();

protected:
  void changeEvent(QEvent* e) override;
};

} // namespace velk
