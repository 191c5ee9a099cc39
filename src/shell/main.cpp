// The desktop program's entry: a main window with the program's caption.
#include "common/ProgramFolder.h"
#include "model/VELKMain.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QSurfaceFormat>

int main(int argc, char** argv) {
  // Fixed-function GL wants a compatibility profile; set before the first widget.
  QSurfaceFormat fmt;
  fmt.setProfile(QSurfaceFormat::CompatibilityProfile);
  fmt.setDepthBufferSize(24);
  fmt.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
  fmt.setSamples(0);
  QSurfaceFormat::setDefaultFormat(fmt);

  QApplication app(argc, argv);
  velk::SetProgramFolder(QCoreApplication::applicationDirPath().toStdString());
  QMainWindow w;
  velk::hooks().CaptionChanged = [&w](const std::string& c) {
    w.setWindowTitle(QString::fromStdString(c));
  };
  w.setCentralWidget(new QLabel("Beam > Geometry comes with the next release of the shell."));
  w.resize(639, 465);
  w.show();
  velk::SetCaption(velk::session().Caption);
  return app.exec();
}
