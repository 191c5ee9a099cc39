// Writes PNG pictures of the main window for a person to look at; the folder
// is printed. Checks only that each picture was written and is not blank.
#include "ShellFixture.h"

#include "forms/frmEigen.h"
#include "session/ProjectFile.h"
#include "shell/BeamShapeDialog.h"
#include "shell/GLView.h"
#include "view/View.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>
#include <cstdio>

using namespace velk;
using namespace velk::test;

namespace {

bool Save(QWidget* w, const QString& folder, const QString& name) {
  QImage img = w->grab().toImage();
  const QString path = folder + "/" + name + ".png";
  if (!img.save(path)) return false;
  // A picture of one colour means nothing was drawn.
  const QColor first = img.pixelColor(0, 0);
  for (int y = 0; y < img.height(); y += 7)
    for (int x = 0; x < img.width(); x += 7)
      if (img.pixelColor(x, y) != first) return true;
  return false;
}

} // namespace

int main(int argc, char** argv) {
  SetDefaultSurface();
  QApplication app(argc, argv);
  const QString folder = argc > 1 ? argv[1] : QDir::currentPath() + "/screenshots";
  QDir().mkpath(folder);
  int failures = 0;
  {
    ShellSession s;
    s.menu->resize(900, 620);
    QTest::qWait(50);
    failures += !Save(s.menu.get(), folder, "01-empty");
    BeamShapeDialog dlg(s.menu.get());
    dlg.show();
    QTest::qWait(50);
    failures += !Save(&dlg, folder, "02-girder-dialog");
    dlg.findChild<QPushButton*>("cmdGenerate")->click();
    QTest::qWait(50);
    failures += !Save(s.menu.get(), folder, "03-default-girder");
    gView().ViewAngle();
    QTest::qWait(50);
    failures += !Save(s.menu.get(), folder, "04-default-girder-angle");
    gView().OptionShowNodeNumber = gView().OptionShowPlateNumber = vbTrue;
    s.menu->mnuView_Window_Click();
    QTest::qWait(50);
    failures += !Save(s.menu.get(), folder, "05-fit-view-numbers");
    // An example model after a run: supports, loads and the eigenvalue panel.
    if (!Open_Project_Path(VELK_EXAMPLES_DIR "/girder-in-bending.inp")) ++failures;
    gView().ViewAngle();
    frmEigen run;
    run.Form_Load();
    run.cmdApply_Click();
    s.menu->Paint();
    QTest::qWait(50);
    failures += !Save(s.menu.get(), folder, "06-girder-in-bending-after-run");
  }
  std::printf("screenshots written to %s\n", qPrintable(folder));
  return failures;
}
