// Writes the PNG pictures of the main window that the README shows, into the
// folder given (printed at the end). Most are only pictures for a person to
// look at; the two of the default girder, in actual and in fit view, must show
// the web's fill where the view's camera math puts a point of the web.
#include "ShellFixture.h"

#include "editing/Selection.h"
#include "forms/frmEigen.h"
#include "session/ProjectFile.h"
#include "shell/BeamShapeDialog.h"
#include "shell/PropertyDialogs.h"
#include "shell/StressWindow.h"
#include "shell/SupportsLoadsDialog.h"
#include "shell/SweepWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <cstdio>

using namespace velk;
using namespace velk::test;

namespace {

QImage Save(QWidget* w, const QString& folder, const QString& name) {
  QTest::qWait(50);
  QImage img = w->grab().toImage();
  if (!img.save(folder + "/" + name + ".png")) img = QImage();
  return img;
}

// The main window's picture inside a web plate, left of and below its number.
bool ShowsTheWeb(const QImage& img, frmMenu& menu) {
  const GLView* surface = menu.Surface();
  const QPoint at = surface->mapTo(&menu, CameraPoint(surface->size(), 96, 7));
  const bool shown = !img.isNull() && IsThickestPlateFill(img.pixelColor(at));
  if (!shown) std::fprintf(stderr, "no web fill at %d, %d\n", at.x(), at.y());
  return shown;
}

} // namespace

int main(int argc, char** argv) {
  GLView::SetDefaultFormat();
  QApplication app(argc, argv);
  const QString folder = argc > 1 ? argv[1] : QDir::currentPath() + "/screenshots";
  QDir().mkpath(folder);
  int failures = 0;
  {
    ShellSession s;
    frmMenu* menu = s.menu.get();
    menu->resize(900, 620);
    failures += Save(menu, folder, "01-empty").isNull();
    BeamShapeDialog dlg(menu);
    dlg.show();
    failures += Save(&dlg, folder, "02-girder-dialog").isNull();
    dlg.findChild<QPushButton*>("cmdGenerate")->click();
    failures += !ShowsTheWeb(Save(menu, folder, "03-default-girder"), *menu);
    gView().ViewAngle();
    failures += Save(menu, folder, "04-default-girder-angle").isNull();
    gView().OptionShowNodeNumber = gView().OptionShowPlateNumber = vbTrue;
    menu->mnuView_Window_Click();
    failures += !ShowsTheWeb(Save(menu, folder, "05-fit-view-numbers"), *menu);
    // An example model after a run: supports, loads and the eigenvalue panel.
    failures += !Open_Project_Path(VELK_EXAMPLES_DIR "/girder-in-bending.inp");
    gView().ViewAngle();
    frmEigen run;
    run.Form_Load();
    run.cmdApply_Click();
    menu->Paint();
    failures += Save(menu, folder, "06-girder-in-bending-after-run").isNull();
    // Its buckled shape, shaded, turned so that the light grazes it, and the
    // Sx plot with the Plot window.
    gView().OptionOutpMagFactor = 10;
    gView().OptionShading = vbTrue;
    gView().ViewRX = -25;
    menu->mnuResult_Show_Click();
    failures += Save(menu, folder, "07-buckled-shape-shaded").isNull();
    menu->mnuStressPlot_Click();
    menu->Stress()->findChild<QRadioButton*>("optSx")->setChecked(true);
    menu->Stress()->findChild<QPushButton*>("OKButton")->click();
    gView().Zoom_All();
    failures += Save(menu, folder, "08-stress-plot-sx").isNull();
    failures += Save(menu->Stress(), folder, "09-plot-window").isNull();
    menu->mnuStressPlot_Click();
    // Picking: the plate example in boundary mode, its loaded edge selected,
    // and the boundary dialog on that selection.
    failures += !Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp");
    menu->mnuElements_Boundary_Click();
    gView().OptionShowNodeNumber = gView().OptionShowPlateNumber = vbFalse;
    gView().OptionSelectedMarker_Size = 12;
    gView().ViewAngle();
    for (const auto& n : gMesh().Nodes())
      if (n->xcoord == 10) gSelection().AddObject(n);
    menu->Paint();
    failures += Save(menu, folder, "10-selection").isNull();
    BoundaryDialog boundary(menu);
    boundary.show();
    failures += Save(&boundary, folder, "11-boundary-dialog").isNull();
    boundary.close();
  }
  {
    // The Studies windows on the default girder: supports and loads by rule,
    // three modes with mode 3 shown, and a sweep of the length.
    ShellSession s;
    frmMenu* menu = s.menu.get();
    menu->resize(900, 620);
    BeamShapeDialog girder(menu);
    girder.show();
    QTest::qWait(50);
    girder.findChild<QPushButton*>("cmdGenerate")->click();
    SupportsLoadsDialog rules(menu);
    rules.show();
    rules.findChild<QCheckBox*>("chkFork")->setChecked(true);
    rules.findChild<QLineEdit*>("txtMoment")->setText("1000");
    failures += Save(&rules, folder, "12-supports-and-loads").isNull();
    rules.findChild<QPushButton*>("cmdApply")->click();
    menu->mnuStudies_Modes_Click();
    menu->Modes()->findChild<QPushButton*>("cmdRun")->click();
    auto* show = menu->Modes()->findChild<QComboBox*>("cboShow");
    show->setCurrentIndex(2);
    emit show->activated(2);
    gView().ViewAngle();
    gView().OptionOutpMagFactor = 20;
    failures += Save(menu, folder, "13-mode-3-shown").isNull();
    failures += Save(menu->Modes(), folder, "14-buckling-modes").isNull();
    menu->Modes()->close();
    menu->mnuStudies_Sweep_Click();
    SweepWindow* sweep = menu->Sweep();
    sweep->tool = VELK_BATCH;
    for (const auto& [name, text] : std::map<QString, QString>{
             {"txtFrom", "60"}, {"txtTo", "600"}, {"txtStep", "30"}, {"txtMoment", "1000"},
             {"txtCsv", folder + "/sweep.csv"}})
      sweep->findChild<QLineEdit*>(name)->setText(text);
    sweep->findChild<QCheckBox*>("chkFork")->setChecked(true);
    sweep->findChild<QPushButton*>("cmdRun")->click();
    for (int i = 0; i < 600 && sweep->Running(); ++i)
      QTest::qWait(50);
    failures += Save(sweep, folder, "15-parameter-sweep").isNull();
    sweep->close();
  }
  std::printf("screenshots written to %s\n", qPrintable(folder));
  return failures;
}
