#pragma once
// Starts the desktop program as Main does, in a scratch folder, with a
// scripted host so that every message is recorded.
#include "FakeHost.h"
#include "common/ProgramFolder.h"
#include "session/VELKMain.h"
#include "shell/GLView.h"
#include "shell/frmMenu.h"
#include "view/View.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QTemporaryDir>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>

namespace velk::test {

struct ShellSession {
  QTemporaryDir dir;
  FakeHost host;
  std::unique_ptr<frmMenu> menu;

  ShellSession() {
    SetProgramFolder(dir.path().toStdString());
    SetOptionFileEnabled(true);
    Clear_Session();
    InstallHost(&host);
    menu = std::make_unique<frmMenu>();
    menu->show();
    SetCaption("VELK V1.4.0: No Title");
  }
  ~ShellSession() {
    InstallHost(&host); // in place of one a test put in
    menu.reset();
    Clear_Session();
    InstallHost(nullptr);
  }
};

// Where the view's own camera math puts a model point on a surface of the
// given size, in pixels from the top left: worked out without GL, so that a
// frame that loads the wrong matrices shows something else there.
inline QPoint CameraPoint(const QSize& surface, double x, double y, double z = 0) {
  auto times = [](const Matrix4& m, const std::array<double, 4>& p) {
    std::array<double, 4> out{};
    for (int r = 0; r < 4; ++r)
      for (int c = 0; c < 4; ++c)
        out[r] += m[4 * c + r] * p[c];
    return out;
  };
  const auto c = times(gView().Projection, times(gView().ModelView, {x, y, z, 1}));
  return {static_cast<int>((c[0] / c[3] + 1) / 2 * surface.width()),
          static_cast<int>((1 - c[1] / c[3]) / 2 * surface.height())};
}

// Answers the next modal dialog once it is up, while the timer lives; one the
// answer leaves open is closed, so that a failed Apply cannot hang the test.
inline std::unique_ptr<QTimer> WhenModal(std::function<void(QDialog*)> answer) {
  auto timer = std::make_unique<QTimer>();
  QObject::connect(timer.get(), &QTimer::timeout, [t = timer.get(), answer] {
    auto* dlg = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dlg || !dlg->isVisible()) return;
    t->stop();
    answer(dlg);
    if (dlg->isVisible()) dlg->reject();
  });
  timer->start(10);
  return timer;
}

// The fill of the thickest plate, (1, 1, 0.7).
inline bool IsThickestPlateFill(const QColor& c) {
  return c.red() == 255 && c.green() == 255 && std::abs(c.blue() - 178) <= 1;
}

} // namespace velk::test
