#pragma once
// Starts the desktop program as Main does, in a scratch folder, with a
// scripted host so that every message is recorded.
#include "FakeHost.h"
#include "common/ProgramFolder.h"
#include "session/VELKMain.h"
#include "shell/GLView.h"
#include "shell/frmMenu.h"

#include <QDir>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <memory>

namespace velk::test {

inline void SetDefaultSurface() {
  GLView::SetDefaultFormat();
}

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
    menu.reset();
    Clear_Session();
    InstallHost(nullptr);
  }
};

} // namespace velk::test
