#include "shell/HelpWindow.h"

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
  // The frame of a window not yet shown is unknown: take the main window's.
  const QRect mainFrame = home_->frameGeometry(), mainInner = home_->geometry();
  const QMargins frame(mainInner.left() - mainFrame.left(), mainInner.top() - mainFrame.top(),
                       mainFrame.right() - mainInner.right(),
                       mainFrame.bottom() - mainInner.bottom());
  const QRect screen = home_->screen()->availableGeometry();
  setGeometry(PlaceBeside(mainFrame, size().grownBy(frame), screen).marginsRemoved(frame));
}

QRect HelpWindow::PlaceBeside(const QRect& main, const QSize& size, const QRect& screen) {
  const QSize readable(320, 240); // narrower than this, a page is no use
  int w = std::min(size.width(), screen.width());
  int h = std::min(size.height(), screen.height());
  auto onScreen = [&](int x, int y) {
    return QRect(std::clamp(x, screen.left(), screen.right() + 1 - w),
                 std::clamp(y, screen.top(), screen.bottom() + 1 - h), w, h);
  };
  const int right = screen.right() - main.right(), left = main.left() - screen.left();
  const int below = screen.bottom() - main.bottom(), above = main.top() - screen.top();
  if (right >= w) return onScreen(main.right() + 1, main.top());
  if (left >= w) return onScreen(main.left() - w, main.top());
  if (below >= h) return onScreen(main.left(), main.bottom() + 1);
  if (above >= h) return onScreen(main.left(), main.top() - h);
  if (std::max(right, left) >= readable.width()) {
    w = std::max(right, left);
    return onScreen(right >= left ? main.right() + 1 : screen.left(), main.top());
  }
  if (std::max(below, above) >= readable.height()) {
    h = std::max(below, above);
    return onScreen(main.left(), below >= above ? main.bottom() + 1 : screen.top());
  }
  // No room beside it: against the screen's edge where the least of the
  // main window is covered.
  const QRect candidates[] = {
      onScreen(screen.right(), main.top()), onScreen(screen.left(), main.top()),
      onScreen(main.left(), screen.bottom()), onScreen(main.left(), screen.top())};
  auto covered = [&](const QRect& r) {
    const QRect c = r.intersected(main);
    return c.isEmpty() ? 0LL : 1LL * c.width() * c.height();
  };
  return *std::min_element(std::begin(candidates), std::end(candidates),
                           [&](const QRect& a, const QRect& b) { return covered(a) < covered(b); });
}

} // namespace velk
