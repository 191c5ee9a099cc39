// Main: shows the main window and sets its caption.
#include "common/ProgramFolder.h"
#include "session/VELKMain.h"
#include "shell/GLView.h"
#include "shell/QtHost.h"
#include "shell/frmMenu.h"

#include <QApplication>
#include <QOpenGLContext>

int main(int argc, char** argv) {
  velk::GLView::SetDefaultFormat();

  QApplication app(argc, argv);
  velk::SetProgramFolder(QCoreApplication::applicationDirPath().toStdString());
  velk::QtHost host;
  velk::InstallHost(&host);
  velk::frmMenu menu;
  host.SetParent(&menu);
  // Without a GL context there is nothing to draw on: say so and end at once.
  QOpenGLContext probe;
  if (!probe.create()) {
    velk::MsgBox("ChoosePixelFormat failed");
    return 1;
  }
  menu.show();
  velk::SetCaption("VELK V1.4.0: No Title");
  int rc = app.exec();
  velk::InstallHost(nullptr);
  return rc;
}
