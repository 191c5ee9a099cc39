#pragma once
#include <QDialog>
#include <QPointer>

class QTextBrowser;

namespace velk {

// The help: HTML pages shipped with the program, opened at a context number,
// beside the main window and usable while a modal dialog is open.
class HelpWindow : public QDialog {
  Q_OBJECT
public:
  explicit HelpWindow(QWidget* home);
  void ShowContext(int context);
  static QString PageFor(int context);
  QTextBrowser* Browser() const { return browser_; }

protected:
  bool event(QEvent* e) override;
  bool eventFilter(QObject* o, QEvent* e) override;

private:
  void JoinOwner(QWidget* owner);
  void PlaceBesideHome();

  QTextBrowser* browser_;
  QWidget* home_;           // the main window
  QPointer<QWidget> owner_; // the window the help belongs to now
};

} // namespace velk
