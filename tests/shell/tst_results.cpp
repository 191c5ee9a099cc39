// The results on a real display, after a run of the girder in bending: the
// shaded buckled shape where the mode is largest, the Sx plot's colours at
// its extremes, the probe's value over a plate, the exclusive Results
// commands, and a view option that outlives the window.
#include "ShellFixture.h"

#include "forms/frmEigen.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"
#include "session/ProjectFile.h"
#include "shell/OptionDialog.h"
#include "shell/StressWindow.h"

#include <QtTest>
#include <QtWidgets>
#include <cmath>

using namespace velk;
using namespace velk::test;

namespace {

void RunGirderInBending(frmMenu& menu) {
  QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/girder-in-bending.inp"));
  frmEigen run;
  run.Form_Load();
  run.cmdApply_Click();
  QVERIFY(gAnalysis().EigenValue > 0);
  menu.resize(900, 620);
  QTest::qWait(50);
}

// The colour that the material gives under the light: blue over green over red.
bool LitBlueGrey(const QColor& c) {
  return c.blue() > c.green() && c.green() > c.red() && c.red() > 60;
}

// Where the last frame's matrices put a model point, in widget pixels from the
// top left, as the mouse gives them.
QPointF OnFrame(double x, double y, double z = 0) {
  double wx = 0, wy = 0, wz = 0;
  gView().ModelToScreen(x, y, z, wx, wy, wz);
  return {wx, gView().FrameViewport[3] - wy};
}

// The pixel of `img` nearest in colour to `want` within `radius` of `at`.
QColor Nearest(const QImage& img, QPointF at, int radius, const QColor& want) {
  QColor best;
  int bestDist = 1 << 30;
  for (int dy = -radius; dy <= radius; ++dy)
    for (int dx = -radius; dx <= radius; ++dx) {
      const QPoint p(int(at.x()) + dx, int(at.y()) + dy);
      if (!img.rect().contains(p)) continue;
      const QColor c = img.pixelColor(p);
      const int d = std::abs(c.red() - want.red()) + std::abs(c.green() - want.green()) +
                    std::abs(c.blue() - want.blue());
      if (d < bestDist) bestDist = d, best = c;
    }
  return best;
}

QColor MapColour(Single s, Single r) {
  const StressColour c = StressColourOf(s, r);
  return QColor::fromRgbF(c[0], c[1], c[2]);
}

bool Within(const QColor& a, const QColor& b, int steps) {
  return std::abs(a.red() - b.red()) <= steps && std::abs(a.green() - b.green()) <= steps &&
         std::abs(a.blue() - b.blue()) <= steps;
}

} // namespace

class tst_results : public QObject {
  Q_OBJECT
private slots:
  // The lit surface covers the node of the largest out-of-plane movement and
  // stays inside the buckled shape's outline; without the shape it is not there.
  void shadedBuckledShapeWhereTheModeIsLargest() {
    ShellSession s;
    RunGirderInBending(*s.menu);
    gView().ViewAngle();
    gView().OptionShading = vbTrue;
    gView().OptionOutpMagFactor = 10;
    const Nodeb* peak = nullptr;
    for (const auto& n : gMesh().Nodes())
      if (n->vID != 0 && (!peak || std::fabs(n->zcoord) > std::fabs(peak->zcoord))) peak = n.get();
    QVERIFY(peak && std::fabs(peak->zcoord) > 0.5f);
    const Vec3f top = gView().DeformedPosition(*peak);
    QImage img = s.menu->Surface()->grabFramebuffer();
    const QPoint at = CameraPoint(img.size(), top.x, top.y, top.z);
    QVERIFY2(!LitBlueGrey(Nearest(img, at, 3, QColor(92, 153, 214))), "shape before the command");

    s.menu->mnuResult_Show_Click();
    QVERIFY(s.menu->Menu("mnuResult_Show")->isChecked());
    img = s.menu->Surface()->grabFramebuffer();
    QVERIFY2(LitBlueGrey(Nearest(img, at, 3, QColor(92, 153, 214))),
             qPrintable(img.pixelColor(at).name()));
    // Every lit pixel lies within the projected outline of the deformed nodes.
    QRect box;
    for (const auto& n : gMesh().Nodes()) {
      const Vec3f p = gView().DeformedPosition(*n);
      box |= QRect(CameraPoint(img.size(), p.x, p.y, p.z), QSize(1, 1));
    }
    box.adjust(-2, -2, 2, 2);
    int lit = 0;
    for (int y = 0; y < img.height(); ++y)
      for (int x = 0; x < img.width(); ++x)
        if (LitBlueGrey(img.pixelColor(x, y))) {
          ++lit;
          QVERIFY2(box.contains(x, y), qPrintable(QString("lit at %1,%2").arg(x).arg(y)));
        }
    QVERIFY(lit > 1000);
    // Without shading only the red wire frame is left of the shape.
    gView().OptionShading = vbFalse;
    img = s.menu->Surface()->grabFramebuffer();
    QVERIFY(!LitBlueGrey(Nearest(img, at, 3, QColor(92, 153, 214))));
  }

  // The plot's colours at the plates of the extremes are the map's, and the
  // probe over a plate reads its stress back to within a colour step.
  void sxPlotAndProbe() {
    ShellSession s;
    RunGirderInBending(*s.menu);
    s.menu->mnuStressPlot_Click();
    StressWindow* w = s.menu->Stress();
    QVERIFY(w && w->isVisible() && s.menu->Menu("mnuStressPlot")->isChecked());
    w->findChild<QRadioButton*>("optSx")->setChecked(true);
    QTest::mouseClick(w->findChild<QPushButton*>("OKButton"), Qt::LeftButton);
    QCOMPARE(gView().OptionShowStress, Long{1});
    QImage img = s.menu->Surface()->grabFramebuffer();
    const Single r = static_cast<Single>(gView().maxStress);

    // The extremes over the plates' nodes, and what the window says of all.
    const Nodeb *hi = nullptr, *lo = nullptr;
    for (const auto& n : gMesh().Nodes()) {
      if (n->vID == 0) continue;
      if (!hi || n->Sx > hi->Sx) hi = n.get();
      if (!lo || n->Sx < lo->Sx) lo = n.get();
    }
    Single maxS = 0, minS = 0;
    QCOMPARE(gView().StressScale(gMesh().Nodes(), gMesh().twoNodes(), maxS, minS), r);
    QCOMPARE(w->findChild<QLabel*>("lblMax")->text(),
             QString::fromStdString(Format(maxS, "0.00E+00")));
    QVERIFY(std::fabs(hi->Sx) <= r && std::fabs(lo->Sx) <= r && r > 0);
    // At the node of the largest Sx the plate takes the map's colour of it:
    // pure red when it sets the scale; likewise blue at the smallest.
    for (const Nodeb* n : {hi, lo}) {
      const QColor want = MapColour(n->Sx, r);
      const QColor got = Nearest(img, OnFrame(n->xcoord, n->ycoord), 4, want);
      QVERIFY2(Within(got, want, 2), qPrintable(got.name() + " for " + want.name()));
    }
    if (maxS == hi->Sx && hi->Sx >= -lo->Sx)
      QCOMPARE(MapColour(hi->Sx, r), QColor(255, 0, 0));

    // The probe: at a plate's centre the field is the mean of its corners
    // (across either diagonal, as the moment is uniform along the girder).
    int probed = 0;
    for (const auto& p : gMesh().fourNodes()) {
      if (!p->PropertyDefined || p->ID % 5 != 0) continue;
      const Single d1 = (p->Node1->Sx + p->Node3->Sx) / 2, d2 = (p->Node2->Sx + p->Node4->Sx) / 2;
      const QPointF c = OnFrame(p->CPX, p->CPY);
      // The probe reads the row that the window's y maps to: aim so that it is the centre's.
      const QPoint mouse(int(std::lround(c.x())), int(std::lround(c.y())) + 2);
      w->findChild<QLabel*>("lblStress")->clear();
      QTest::mouseMove(s.menu->Surface(), mouse);
      QTRY_VERIFY(!w->findChild<QLabel*>("lblStress")->text().isEmpty() ||
                  std::fabs(d1) < r / 255);
      if (std::fabs(d1) < r / 255) continue; // white: nothing to read
      const double read = w->findChild<QLabel*>("lblStress")->text().toDouble();
      const double err = std::min(std::fabs(read - d1), std::fabs(read - d2));
      QVERIFY2(err <= r / 255 + 0.005 * std::fabs(d1),
               qPrintable(QString("plate %1: read %2, corners %3").arg(p->ID).arg(read).arg(d1)));
      ++probed;
    }
    QVERIFY(probed >= 3);

    // Show Buckled Shape ends the plot and closes the window; closing the
    // window on its own leaves the shape off.
    s.menu->mnuResult_Show_Click();
    QVERIFY(!w->isVisible() && !s.menu->Menu("mnuStressPlot")->isChecked());
    QCOMPARE(gView().OptionShowStress, Long{0});
    s.menu->Menu("mnuStressPlot")->trigger(); // the menu's own click
    QVERIFY(w->isVisible() && !s.menu->Menu("mnuResult_Show")->isChecked());
    QCOMPARE(gView().OptionShowResult, vbFalse);
    w->close();
    QVERIFY(!s.menu->Menu("mnuStressPlot")->isChecked() && !s.menu->Menu("mnuResult_Show")->isChecked());
  }

  // Never run: the shape lies flat on the model and the plot is white.
  void resultsOfAModelNeverRun() {
    ShellSession s;
    QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/girder-in-bending.inp"));
    for (const auto& n : gMesh().Nodes())
      n->InPDispX = n->InPDispY = n->zcoord = n->Sx = 0;
    for (const auto& e : gMesh().twoNodes())
      e->Stress = 0;
    gView().OptionShading = vbTrue;
    s.menu->mnuResult_Show_Click();
    s.menu->Surface()->grabFramebuffer();
    s.menu->mnuStressPlot_Click();
    s.menu->Stress()->findChild<QRadioButton*>("optSx")->setChecked(true);
    s.menu->Stress()->findChild<QPushButton*>("OKButton")->click();
    const QImage img = s.menu->Surface()->grabFramebuffer();
    const auto& plate = gMesh().fourNodes().Item(8);
    QCOMPARE(img.pixelColor(OnFrame(plate->CPX, plate->CPY).toPoint()), QColor(255, 255, 255));
    QCOMPARE(s.menu->Stress()->findChild<QLabel*>("lblMax")->text(), QString("0.00E+00"));
    QCOMPARE(s.host.messages.size(), size_t{1}); // only the missing settings file
  }

  // The dialog's marker size, applied, is in the settings file that the next
  // main window reads; the popup opens the same dialog.
  void viewOptionSurvivesARestart() {
    ShellSession s;
    QString title;
    QTimer::singleShot(0, [&] {
      auto* dlg = qobject_cast<OptionDialog*>(QApplication::activeModalWidget());
      if (!dlg) return;
      title = dlg->windowTitle();
      QCOMPARE(dlg->Field("txtPropertyMarker")->text(), QString("3"));
      dlg->Field("txtPropertyMarker")->setText("7.5");
      dlg->Check("chkShade")->setChecked(true);
      dlg->findChild<QPushButton*>("cmdApply")->click();
      dlg->findChild<QPushButton*>("cmdClose")->click();
    });
    s.menu->Menu("mnuPopup_ViewOption")->trigger();
    QCOMPARE(title, QString("View Option"));
    QCOMPARE(gView().OptionPropertyMarker_Size, 7.5f);
    s.menu->close(); // the unload writes the settings
    s.menu.reset();
    s.menu = std::make_unique<frmMenu>();
    QCOMPARE(std::make_pair(gView().OptionPropertyMarker_Size, gView().OptionShading),
             std::make_pair(7.5f, vbTrue));
  }
};

int main(int argc, char** argv) {
  GLView::SetDefaultFormat();
  QApplication app(argc, argv);
  tst_results t;
  return QTest::qExec(&t, argc, argv);
}

#include "tst_results.moc"
