#include "shell/WindowPlacement.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace velk {

namespace {

long long Area(const QRect& r) {
  return r.isEmpty() ? 0LL : 1LL * r.width() * r.height();
}

} // namespace

QRect PlaceBeside(const QRect& main, const QSize& size, const QRect& screen,
                  const std::vector<QRect>& taken) {
  const QSize readable(320, 240); // narrower than this, a page is no use
  int w = std::min(size.width(), screen.width());
  int h = std::min(size.height(), screen.height());
  auto onScreen = [&](int x, int y) {
    return QRect(std::clamp(x, screen.left(), screen.right() + 1 - w),
                 std::clamp(y, screen.top(), screen.bottom() + 1 - h), w, h);
  };
  auto clear = [&](const QRect& r) {
    return std::none_of(taken.begin(), taken.end(), [&](const QRect& t) { return r.intersects(t); });
  };

  // Each side in turn, first where the main window's edge starts, then past
  // each window already there.
  std::vector<int> ys{main.top()}, xs{main.left()};
  for (const QRect& t : taken) {
    ys.push_back(t.bottom() + 1);
    xs.push_back(t.right() + 1);
  }
  std::vector<QRect> places;
  for (int y : ys)
    places.emplace_back(main.right() + 1, y, w, h);
  for (const QRect& t : taken) // further out on the right
    places.emplace_back(t.right() + 1, main.top(), w, h);
  for (int y : ys)
    places.emplace_back(main.left() - w, y, w, h);
  for (const QRect& t : taken) // further out on the left
    places.emplace_back(t.left() - w, main.top(), w, h);
  for (int x : xs)
    places.emplace_back(x, main.bottom() + 1, w, h);
  for (int x : xs)
    places.emplace_back(x, main.top() - h, w, h);
  auto free = [&](const QRect& r) { return !r.intersects(main) && clear(r); };
  for (const QRect& r : places) // the whole size
    if (screen.contains(r) && free(r)) return r;
  for (const QRect& r : places) { // what of it the screen holds, if still readable
    const QRect cut = r.intersected(screen);
    if (cut.width() >= readable.width() && cut.height() >= readable.height() && free(cut))
      return cut;
  }
  // No room beside it: against the screen's edge where the least of the
  // main window and of the others is covered.
  std::vector<QRect> candidates{onScreen(screen.right(), main.top()),
                                onScreen(screen.left(), main.top()),
                                onScreen(main.left(), screen.bottom()),
                                onScreen(main.left(), screen.top())};
  for (const QRect& t : taken) {
    candidates.push_back(onScreen(t.right() + 1, t.top()));
    candidates.push_back(onScreen(t.left(), t.bottom() + 1));
  }
  auto covered = [&](const QRect& r) {
    long long sum = Area(r.intersected(main));
    for (const QRect& t : taken)
      sum += Area(r.intersected(t));
    return sum;
  };
  return *std::min_element(candidates.begin(), candidates.end(),
                           [&](const QRect& a, const QRect& b) { return covered(a) < covered(b); });
}

void PlaceToolWindow(QWidget* window, QWidget* main, const QSize& size) {
  // The frame of a window not yet shown is unknown: take the main window's.
  const QRect mainFrame = main->frameGeometry(), mainInner = main->geometry();
  const QMargins frame(mainInner.left() - mainFrame.left(), mainInner.top() - mainFrame.top(),
                       mainFrame.right() - mainInner.right(),
                       mainFrame.bottom() - mainInner.bottom());
  std::vector<QRect> taken;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w != window && w != main && w->isVisible() && !w->isModal() &&
        w->windowType() != Qt::ToolTip && w->windowType() != Qt::Popup)
      taken.push_back(w->frameGeometry());
  const QRect screen = main->screen()->availableGeometry();
  window->setGeometry(
      PlaceBeside(mainFrame, size.grownBy(frame), screen, taken).marginsRemoved(frame));
}

} // namespace velk
