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
#include "shell/BucklingModesWindow.h"
#include "shell/StressWindow.h"
#include "analysis/EigenCalculation.h"

#include <QtTest>
#include <QtWidgets>
#include <algorithm>
#include <array>
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

// Sx at (x, y) interpolated linearly over the triangle of `v` that holds it,
// of the two given by corner indices; NaN when neither holds it.
double InTriangles(const Nodeb* const (&v)[4], std::array<int, 6> t, double x, double y) {
  for (int k = 0; k < 6; k += 3) {
    const Nodeb &a = *v[t[k]], &b = *v[t[k + 1]], &c = *v[t[k + 2]];
    const double det = (b.xcoord - a.xcoord) * (c.ycoord - a.ycoord) -
                       (c.xcoord - a.xcoord) * (b.ycoord - a.ycoord);
    const double l1 =
        ((x - a.xcoord) * (c.ycoord - a.ycoord) - (c.xcoord - a.xcoord) * (y - a.ycoord)) / det;
    const double l2 =
        ((b.xcoord - a.xcoord) * (y - a.ycoord) - (x - a.xcoord) * (b.ycoord - a.ycoord)) / det;
    if (l1 >= -1e-9 && l2 >= -1e-9 && l1 + l2 <= 1 + 1e-9)
      return a.Sx + l1 * (b.Sx - a.Sx) + l2 * (c.Sx - a.Sx);
  }
  return std::nan("");
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
    // Turned so that the light, along the viewer's x, falls on the faces' far
    // side: the flat parts show the ambient colour of the material, which the
    // faces' unnormalised normals would otherwise saturate to white.
    gView().ViewAngle();
    gView().ViewRX = -25;
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
  }

  // Studies > Buckling Modes: three modes, smallest first, each checked; the
  // mode shown is drawn from its own shape while the model, and so the saved
  // project, keeps the run's mode 1.
  void bucklingModesWindowListsAndShowsFurtherModes() {
    ShellSession s;
    QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/girder-in-bending.inp"));
    s.menu->Menu("mnuStudies_Modes")->trigger();
    BucklingModesWindow* w = s.menu->Modes();
    QVERIFY(w && w->isVisible());
    w->findChild<QLineEdit*>("txtModes")->setText("3");
    s.host.messages.clear();
    QTest::mouseClick(w->findChild<QPushButton*>("cmdRun"), Qt::LeftButton);
    QCOMPARE(s.host.Texts(), std::vector<std::string>{"Eigenvalue of 2.4660E+04"});
    auto* table = w->findChild<QTableWidget*>("tblModes");
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(table->item(0, 1)->text(), QString("2.4660E+04"));
    for (int r = 0; r < 3; ++r) {
      QCOMPARE(table->item(r, 2)->text(), QString("ok"));
      if (r > 0)
        QVERIFY(std::abs(table->item(r, 1)->text().toDouble()) >=
                std::abs(table->item(r - 1, 1)->text().toDouble()));
    }
    const QString saved = s.dir.path() + "/a.inp", again = s.dir.path() + "/b.inp";
    QVERIFY(Save_Project_Path(saved.toStdString()));
    const QImage mode1 = s.menu->Surface()->grabFramebuffer();
    auto* show = w->findChild<QComboBox*>("cboShow");
    show->setCurrentIndex(2);
    emit show->activated(2);
    QCOMPARE(gView().ModeShown, 3);
    QVERIFY(s.menu->Menu("mnuResult_Show")->isChecked());
    const auto shapes = Node_Mode_Shapes(LastRunModes(), gMesh().Nodes());
    const Nodeb& node = *gMesh().Nodes().Item(30);
    QCOMPARE(gView().DeformedPosition(node).z, shapes[2][29] * gView().OptionOutpMagFactor);
    QVERIFY(shapes[2][29] != node.zcoord);
    QVERIFY(s.menu->Surface()->grabFramebuffer() != mode1);
    QVERIFY(Save_Project_Path(again.toStdString()));
    QFile a(saved), b(again);
    QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    QVERIFY(a.readAll() == b.readAll());
    w->close();

    // Export for ParaView: the grid the batch tool writes of the same run,
    // every mode in it.
    const QString vtu = s.dir.path() + "/window.vtu", made = s.dir.path() + "/batch.vtu";
    s.host.saveAnswers.push_back(vtu.toStdString());
    s.menu->Menu("mnuStudies_Export")->trigger();
    QProcess batch;
    batch.start(VELK_BATCH, {"run", VELK_EXAMPLES_DIR "/girder-in-bending.inp", "--modes", "3",
                             "--vtu", made});
    QVERIFY(batch.waitForFinished(30000));
    QCOMPARE(batch.exitCode(), 0);
    QFile x(vtu), y(made);
    QVERIFY(x.open(QIODevice::ReadOnly) && y.open(QIODevice::ReadOnly));
    const QByteArray grid = x.readAll();
    QVERIFY(grid.contains("Name=\"Mode3\"") && !grid.contains("Name=\"Mode4\""));
    QVERIFY(grid == y.readAll());
  }

  // The plot's colours at the plates of the extremes are the map's, and the
  // probe over a plate reads its stress back to within a colour step.
  void sxPlotAndProbe() {
    ShellSession s;
    RunGirderInBending(*s.menu);
    s.menu->mnuStressPlot_Click();
    StressWindow* w = s.menu->Stress();
    QVERIFY(w && w->isVisible() && s.menu->Menu("mnuStressPlot")->isChecked());
    QCOMPARE(HelpWindow::PageFor(w->property("helpContext").toInt()), QString("plot.html"));
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
    // pure red when it sets the scale; likewise blue at the smallest. The
    // vertex itself lies under the outline, and the colour runs some 5 steps
    // a pixel there: the nearest pixel is within about one pixel's change.
    for (const Nodeb* n : {hi, lo}) {
      const QColor want = MapColour(n->Sx, r);
      const QColor got = Nearest(img, OnFrame(n->xcoord, n->ycoord), 4, want);
      QVERIFY2(std::max({std::abs(got.red() - want.red()), std::abs(got.green() - want.green()),
                         std::abs(got.blue() - want.blue())}) <= 6,
               qPrintable(got.name() + " for " + want.name()));
    }
    if (maxS == hi->Sx && hi->Sx >= -lo->Sx) QCOMPARE(MapColour(hi->Sx, r), QColor(255, 0, 0));

    // The probe over plates of one sign (across zero the colours blend through
    // grey): the value at the centre of the pixel it reads, interpolated over
    // the plate's two triangles, as GL fills a quad, by either diagonal.
    int probed = 0;
    for (const auto& p : gMesh().fourNodes()) {
      const Nodeb* v[] = {p->Node1.get(), p->Node4.get(), p->Node3.get(), p->Node2.get()};
      const bool oneSign = std::all_of(v, v + 4, [](auto n) { return n->Sx > 0; }) ||
                           std::all_of(v, v + 4, [](auto n) { return n->Sx < 0; });
      if (!p->PropertyDefined || p->ID % 4 != 0 || !oneSign) continue;
      // The pixel at the plate's centre, and the mouse position whose window y reads it.
      const QPointF c = OnFrame(p->CPX, p->CPY);
      const int H = gView().FrameViewport[3], X = int(c.x()), row = int(H - c.y());
      const QPointF unit = OnFrame(p->CPX + 1, p->CPY + 1) - c; // pixels per model unit
      const double mx = p->CPX + (X + 0.5 - c.x()) / unit.x();
      const double my = p->CPY + (row + 0.5 - (H - c.y())) / -unit.y();
      std::array<double, 2> want = {InTriangles(v, {0, 1, 2, 0, 2, 3}, mx, my),
                                    InTriangles(v, {0, 1, 3, 1, 2, 3}, mx, my)};
      w->findChild<QLabel*>("lblStress")->clear();
      // Straight to the surface: a move of the real pointer can be lost on a busy display.
      const QPointF at(X, H + 1 - row);
      QMouseEvent move(QEvent::MouseMove, at, s.menu->Surface()->mapToGlobal(at), Qt::NoButton,
                       Qt::NoButton, Qt::NoModifier);
      QApplication::sendEvent(s.menu->Surface(), &move);
      QVERIFY(!w->findChild<QLabel*>("lblStress")->text().isEmpty());
      const double read = w->findChild<QLabel*>("lblStress")->text().toDouble();
      const double err = std::min(std::fabs(read - want[0]), std::fabs(read - want[1]));
      QVERIFY2(err <= r / 255 + 0.005 * std::fabs(read), // a colour step, the label's figures
               qPrintable(QString("plate %1: %2 for %3").arg(p->ID).arg(read).arg(want[0])));
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
    QVERIFY(!s.menu->Menu("mnuStressPlot")->isChecked() &&
            !s.menu->Menu("mnuResult_Show")->isChecked());
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
      title = dlg->windowTitle() + " " + HelpWindow::PageFor(dlg->property("helpContext").toInt());
      QCOMPARE(dlg->Field("txtPropertyMarker")->text(), QString("3"));
      dlg->Field("txtPropertyMarker")->setText("7.5");
      dlg->Check("chkShade")->setChecked(true);
      dlg->findChild<QPushButton*>("cmdApply")->click();
      dlg->findChild<QPushButton*>("cmdClose")->click();
    });
    s.menu->Menu("mnuPopup_ViewOption")->trigger();
    QCOMPARE(title, QString("View Option option.html"));
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
