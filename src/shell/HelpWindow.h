#pragma once
#include <QDialog>

class QTextBrowser;

namespace velk {

// The help: HTML pages shipped with the program, opened at a context number.
class HelpWindow : public QDialog {
  Q_OBJECT
public:
  explicit HelpWindow(QWidget* parent = nullptr);
  void ShowContext(int context);
  static QString PageFor(int context);
  QTextBrowser* Browser() const { return browser_; }

private:
  QTextBrowser* browser_;
};

} // namespace velk
