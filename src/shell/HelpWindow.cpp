#include "shell/HelpWindow.h"

#include "shell/WindowPlacement.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QScreen>
#include <QTextBrowser>
#include <QTextStream>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace velk {

HelpWindow::HelpWindow(QWidget* home) : QDialog(home), home_(home), owner_(home) {
  setObjectName("HelpWindow");
  setWindowTitle("VELK Help");
  setModal(false);
  browser_ = new QTextBrowser(this);
  browser_->setObjectName("HelpBrowser");
  browser_->setSearchPaths({":/help", ":/"});
  browser_->setOpenLinks(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(browser_);
  resize(640, 560);
}

QString HelpWindow::PageFor(int context) {
  // contexts.txt: "<number> <page>" per line.
  QFile f(":/help/contexts.txt");
  if (f.open(QIODevice::ReadOnly | QIODevice::Text)) {
    QTextStream in(&f);
    while (!in.atEnd()) {
      const QStringList parts = in.readLine().split(' ', Qt::SkipEmptyParts);
      if (parts.size() >= 2 && parts[0].toInt() == context) return parts[1];
    }
  }
  return "index.html";
}

void HelpWindow::ShowContext(int context) {
  browser_->setSource(QUrl("qrc:/help/" + PageFor(context)));
  // A modal window blocks input to every window but its own children.
  QWidget* modal = QApplication::activeModalWidget();
  JoinOwner(modal && modal != this ? modal : home_);
  if (!isVisible()) PlaceBesideHome();
  show();
  raise();
  activateWindow();
}

void HelpWindow::JoinOwner(QWidget* owner) {
  if (parentWidget() == owner) return;
  const bool shown = isVisible();
  const QPoint at = pos();
  if (owner_ && owner_ != home_) owner_->removeEventFilter(this);
  setParent(owner, windowFlags());
  owner_ = owner;
  if (owner != home_) owner->installEventFilter(this);
  if (shown) {
    move(at);
    show();
  }
}

bool HelpWindow::event(QEvent* e) {
  // A modal window came up over the open help: the help goes with it, once
  // the modal window has settled, so as to stay usable.
  if (e->type() == QEvent::WindowBlocked)
    QTimer::singleShot(0, this, [this] {
      QWidget* modal = QApplication::activeModalWidget();
      if (modal && modal != this) JoinOwner(modal);
    });
  return QDialog::event(e);
}

bool HelpWindow::eventFilter(QObject* o, QEvent* e) {
  // The modal window closes: the help stays open and goes back to the one
  // below it, before the closing window takes its children with it.
  if (o == owner_ && e->type() == QEvent::Hide) {
    QWidget* modal = QApplication::activeModalWidget();
    JoinOwner(modal && modal != o && modal != this ? modal : home_);
  }
  return QDialog::eventFilter(o, e);
}

void HelpWindow::PlaceBesideHome() {
  PlaceToolWindow(this, home_, size());
}

} // namespace velk
