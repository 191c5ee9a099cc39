// The main window's mouse on the view: a gesture takes effect when the left
// button goes up; only the rubber band, the coordinates and the stress probe
// follow the pointer.
#include "common/Host.h"
#include "common/TextRules.h"
#include "editing/Selection.h"
#include "session/VELKMain.h"
#include "shell/GLView.h"
#include "shell/frmMenu.h"
#include "draw/DrawModel.h"
#include "view/View.h"

#include <QMenu>
#include <QRubberBand>

#include <cmath>

namespace velk {

bool frmMenu::ReadModelPoint(Single X, Single Y, double& ox, double& oy, double& oz) {
  // The surface draws into its own frame buffer, which keeps the last frame
  // after it has been shown: the read needs no redraw.
  view_->makeCurrent();
  const bool on = Probe_Model_Point(gView(), X, Y, ox, oy, oz);
  view_->doneCurrent();
  return on;
}

void frmMenu::Form_MouseDown(int Button, int /*Shift*/, Single X, Single Y) {
  Trap("Error..[Form_MouseDown]", [&] {
    if (Button == 1) {
      gesture_.BoxDragging = 0;
      gesture_.ButtonUp = 0;
      gesture_.DownX = gesture_.MoveX = X;
      gesture_.DownY = gesture_.MoveY = Y;
      gesture_.FocusShown = false;
    } else if (Button == 2) {
      popup_->popup(view_->mapToGlobal(QPoint(static_cast<int>(X), static_cast<int>(Y))));
    }
  });
}

// The rubber band lies over the picture as a widget of its own: no GL call
// draws it, and the next frame hides it.
void frmMenu::ShowFocusRect() {
  if (!rubber_) rubber_ = new QRubberBand(QRubberBand::Rectangle, view_);
  const auto left = std::lround(std::min(gesture_.DownX, gesture_.MoveX));
  const auto right = std::lround(std::max(gesture_.DownX, gesture_.MoveX));
  const auto top = std::lround(std::min(gesture_.DownY, gesture_.MoveY));
  const auto bottom = std::lround(std::max(gesture_.DownY, gesture_.MoveY));
  rubber_->setGeometry(QRect(QPoint(int(left), int(top)), QPoint(int(right), int(bottom))));
  rubber_->show();
  gesture_.FocusShown = true;
}

void frmMenu::Form_MouseMove(int Button, int /*Shift*/, Single X, Single Y) {
  Trap("Error..[Form_MouseMove]", [&] {
    const Long tool = gView().ViewMode;
    if (Button == 1 && gesture_.ButtonUp == 0 &&
        (tool == ViewModes::Select || tool == ViewModes::BitmapBox)) {
      gesture_.BoxDragging = 1;
      gesture_.MoveX = X;
      gesture_.MoveY = Y;
      ShowFocusRect();
    }
    const QPoint at(static_cast<int>(X), static_cast<int>(Y));
    ShowCoordinates(at);
    StressProbe(at);
  });
}

void frmMenu::Form_MouseUp(int Button, int Shift, Single X, Single Y) {
  if (Button != 1) return;
  Trap("Error..[Form_MouseUp]", [&] {
    Gesture& g = gesture_;
    g.UpX = X;
    g.UpY = Y;
    if (rubber_) rubber_->hide(); // the frame below wipes it
    View& v = gView();
    Selection& sel = gSelection();
    const bool shift = Shift == 1; // with control or alt as well it is no shift
    double ox = 0, oy = 0, oz = 0;
    switch (v.ViewMode) {
    case ViewModes::Select: {
      // The picking rewrites its arguments: give it copies.
      Single x1 = g.DownX, y1 = g.DownY, x2 = g.UpX, y2 = g.UpY;
      if (g.BoxDragging == 0) {
        if (shift)
          sel.AddItemOne(gMesh(), v, x1, y1);
        else
          sel.SelectItemOne(gMesh(), v, x1, y1);
      } else if (shift) {
        sel.AddItemBox(gMesh(), v, x1, y1, x2, y2);
      } else {
        sel.SelectItemBox(gMesh(), v, x1, y1, x2, y2);
      }
      break;
    }
    case ViewModes::Translate:
      v.Translate_Drag(g.DownX, g.DownY, g.UpX, g.UpY);
      break;
    case ViewModes::Rotate:
      v.Rotate_Drag(g.DownX, g.DownY, g.UpX, g.UpY);
      break;
    case ViewModes::Zoom:
      v.Zoom_Drag(g.DownX, g.UpX);
      break;
    case ViewModes::BitmapBox:
      BitmapBox(g.DownX, g.DownY, g.UpX, g.UpY);
      break;
    case ViewModes::ZoomInCenter:
    case ViewModes::ZoomOutCenter:
      if (ReadModelPoint(g.UpX, g.UpY, ox, oy, oz))
        v.ZoomInOutCenter(static_cast<Single>(ox), static_cast<Single>(oy),
                          v.ViewMode == ViewModes::ZoomInCenter ? 0 : 1);
      break;
    case ViewModes::MoveToCenter:
      if (ReadModelPoint(g.UpX, g.UpY, ox, oy, oz))
        v.Center(static_cast<Single>(ox), static_cast<Single>(oy));
      break;
    default:
      break;
    }
    g.BoxDragging = 0;
    g.ButtonUp = 1;
    g.FocusShown = false;
    Paint();
  });
}

// A double click edits the coordinates of the node nearest to the latest
// press, whatever the edit mode; the selection of that mode is lost.
void frmMenu::Form_DblClick() {
  View& v = gView();
  const Long meshMode = v.MeshMode;
  // A node beyond the 16-bit range must not end the program: report it like
  // the other mouse handlers and put the mode back.
  Trap("Error..[Form_DblClick]", [&] {
    v.MeshMode = MeshModes::Node;
    Single x = gesture_.MoveX, y = gesture_.MoveY;
    gSelection().SelectItemOne(gMesh(), v, x, y);
    if (gSelection().SelectedCounter() == 1) ShowCoordDialog();
  });
  gSelection().ClearSelectedItem();
  v.MeshMode = meshMode;
}

} // namespace velk
