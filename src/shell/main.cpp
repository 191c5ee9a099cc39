// Main: shows the main window and sets its caption.
#include "common/ProgramFolder.h"
#include "model/VELKMain.h"
#include "shell/QtHost.h"
#include "shell/frmMenu.h"

#include <QApplication>
#include <QSurfaceFormat>

int main(int argc, char** argv) {
  // Fixed-function GL wants a compatibility profile; set before the first widget.
  QSurfaceFormat fmt;
  fmt.setProfile(QSurfaceFormat::CompatibilityProfile);
  fmt.setVersion(2, 1);
  fmt.setDepthBufferSize(24);
  fmt.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
  fmt.setSamples(0);
  QSurfaceFormat::setDefaultFormat(fmt);

  QApplication app(argc, argv);
  velk::SetProgramFolder(QCoreApplication::applicationDirPath().toStdString());
  velk::QtHost host;
  velk::InstallHost(&host);
  velk::frmMenu menu;
  host.SetParent(&menu);
  menu.show();
  velk::SetCaption("VELK V1.4.0: No Title");
  int rc = app.exec();
  velk::InstallHost(nullptr);
  return rc;
}
