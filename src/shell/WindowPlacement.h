#pragma once
// Where the program's non-modal windows (help, plot, properties) open: wholly
// on the screen, beside the main window where there is room, and clear of
// each other.
#include <QRect>
#include <vector>

class QWidget;

namespace velk {

// Where a window of the given frame size goes beside the main window's frame:
// right, left, below or above it, the first place with room that is clear of
// the frames in `taken` (sliding along a side past them); else the first of
// those places cut to the screen that is still readable; else on the screen
// where it covers least of the main window and of the others.
QRect PlaceBeside(const QRect& main, const QSize& size, const QRect& screen,
                  const std::vector<QRect>& taken = {});

// Puts `window`, not yet shown, with a frame around `size` as the main
// window's, beside `main` on its screen, clear of the program's other visible
// windows.
void PlaceToolWindow(QWidget* window, QWidget* main, const QSize& size);

} // namespace velk
