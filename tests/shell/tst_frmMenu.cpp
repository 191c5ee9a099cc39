// The main window under a real display: caption, commands, frames, resize,
// files, traps, the dialogs, the help window and the status bar.
#include "ShellFixture.h"

#include "editing/Selection.h"
#include "session/ProjectFile.h"
#include "shell/BeamShapeDialog.h"
#include "shell/EigenDialog.h"
#include "shell/QtHost.h"
#include "shell/WindowPlacement.h"
#include "shell/SweepWindow.h"

#include <GL/gl.h>
#include <QtTest>
#include <QtWidgets>
#include <deque>

using namespace velk;
using namespace velk::test;

namespace {

void GenerateDefaultGirder(frmMenu& menu) {
  BeamShapeDialog dlg(&menu);
  dlg.show();
  QTRY_COMPARE(dlg.Field("txtBL")->text(), QString("120"));
  QTest::mouseClick(dlg.findChild<QPushButton*>("cmdGenerate"), Qt::LeftButton);
  QVERIFY2(dlg.result() == QDialog::Accepted, qPrintable(dlg.Field("txtNumXElements")->text()));
}

// The colour of a new frame where the view's camera math puts a model point.
QColor PixelAtModel(frmMenu& menu, double x, double y, double z = 0) {
  const QImage img = menu.Surface()->grabFramebuffer();
  return img.pixelColor(CameraPoint(img.size(), x, y, z));
}

// Answers the modal windows as they come up, in order, and notes each by its
// title on the screen and its text or name; one left without an answer is
// noted and closed.
struct ModalScript {
  using Answer = std::function<void(QWidget*)>;
  std::deque<Answer> answers;
  QStringList seen;
  QTimer timer;
  QPointer<QWidget> last;
  explicit ModalScript(std::deque<Answer> a = {}) : answers(std::move(a)) {
    QObject::connect(&timer, &QTimer::timeout, [this] {
      QWidget* w = QApplication::activeModalWidget();
      if (!w || w == last || !w->windowHandle()) return;
      last = w;
      auto* box = qobject_cast<QMessageBox*>(w);
      seen << w->windowHandle()->title() + ": " + (box ? box->text() : w->objectName());
      if (answers.empty()) return static_cast<QDialog*>(w)->reject();
      Answer next = std::move(answers.front());
      answers.pop_front();
      next(w);
    });
    timer.start(10);
  }
};

// What a command can change that the user sees, as "name=value".
QStringList Observe(ShellSession& s, const ModalScript& modals) {
  const View& v = gView();
  frmMenu& m = *s.menu;
  QString checked, files, texts;
  for (QAction* a : m.Menu("mnuElements")->menu()->actions())
    checked += a->isChecked() ? a->text() : "";
  for (const auto& d : s.host.dialogsShown)
    files += QString::fromStdString(d.DialogTitle);
  for (const auto& t : s.host.Texts())
    texts += QString::fromStdString(t);
  return {QString("tool=%1 %2").arg(v.ViewMode).arg(m.Panel("operationmode")->text()),
          QString("edit=%1/%2 %3 ").arg(v.PropertyMode).arg(v.MeshMode).arg(checked) +
              m.Panel("editmode")->property("picture").toString(),
          QString("turn=%1,%2,%3").arg(v.ViewRX).arg(v.ViewRY).arg(v.ViewRZ),
          QString("zoom=%1 pan %2,%3").arg(v.ViewZoom).arg(v.ViewX).arg(v.ViewY),
          "scale=" + m.Panel("viewscale")->text(),
          QString("selected=%1").arg(gSelection().SelectedCounter()),
          QString("nodes=%1").arg(gMesh().Nodes().Count()),
          QString("toolbar=%1 %2")
              .arg(m.Toolbar1()->isVisible())
              .arg(m.Menu("mnuView_Toolbar")->isChecked()),
          QString("pressed=%1").arg(m.ToolButton("property")->isChecked()),
          "modal=" + modals.seen.join(", "),
          "file=" + files,
          "messages=" + texts};
}

} // namespace

class tst_frmMenu : public QObject {
  Q_OBJECT
private slots:
  // From the start, with the missing settings file its only message, to an
  // open that puts the file in the caption; File New leaves it.
  void captionFromTheStartThroughOpenAndNew() {
    ShellSession s;
    QCOMPARE(s.menu->windowTitle(), QString("VELK V1.4.0: No Title"));
    QCOMPARE(s.host.Texts(), std::vector<std::string>{"Error: Reading INI file!"});
    QCOMPARE(s.menu->width(), 639); // 9585 twips of client area
    // and the whole tool bar shows in it, no button behind the chevron
    QTRY_VERIFY(s.menu->ToolButton("run") && s.menu->isVisible());
    for (QAction* a : s.menu->findChild<QToolBar*>()->actions())
      if (!a->isSeparator())
        QVERIFY2(s.menu->findChild<QToolBar*>()->widgetForAction(a)->isVisible(),
                 qPrintable(a->objectName()));
    s.menu->Update();               // visible now: the decorations are written
    QCOMPARE(s.menu->Panel("operationmode")->text(), QString("SELECT"));
    QCOMPARE(s.menu->Panel("viewscale")->text(), QString("ACTUAL VIEW"));
    QCOMPARE(s.menu->Panel("eigenvalue")->text(), QString("Eigenvalue : 0.00"));
    s.host.openAnswers.push_back(VELK_EXAMPLES_DIR "/stiffened-plate.inp");
    s.menu->mnuFile_Open_Click();
    QVERIFY(gMesh().Nodes().Count() > 0);
    const QString caption = "VELK V1.4.0:stiffened-plate.inp";
    QCOMPARE(s.menu->windowTitle(), caption);
    s.menu->mnuFile_New_Click();
    QCOMPARE(s.menu->windowTitle(), caption);
  }

  // A tool bar button by its key, a menu or popup entry by its name: what it
  // changes, from a state that each one changes (set below). Edit modes drop
  // the selection and keep the tool; Zoom 50% keeps the turn, Zoom All not.
  void commandsDoTheirWork_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("changes");
    // clang-format off
    const char* const rows[] = {
      "new: selected=0; nodes=0", "open: file=Open Data", "save: file=Save As",
      "mesh: modal=Beam Geometry: frmBeamShape", "run: modal=Run Analysis: frmEigen",
      "mnuRunOption: modal=Analysis Option: frmAnalysisOption",
      "mnuHelp_About: modal=About VELK: frmAbout",
      "plate: edit=1/3 Plate plate; selected=0", "stiffener: edit=2/2 Stiffener stiffener; selected=0",
      "boundary: edit=3/1 Boundary boundary; selected=0", "brace: edit=4/1 Brace brace; selected=0",
      "load: edit=5/1 Load load; selected=0", "refresh: selected=0", "mnuPopUp_Refresh: selected=0",
      "select: tool=0 SELECT", "mnuTranslate: tool=1 TRANSLATE", "mnupopup_Rotate: tool=2 ROTATE:X/Y",
      "mnuView_ZoomIn: tool=4 ZOOM:IN/OUT", "mnuCreate_BMP: tool=6 Create BMP",
      "zoomin: tool=7 ZOOM IN/Center", "zoomout: tool=8 ZOOM OUT/Center",
      "center: tool=9 Move to Center", "property: pressed=1",
      "topview: turn=0.01,89.9,0.01", "leftview: turn=89.9,0.01,0.01", "viewangle: turn=25,25,0",
      "zoomall: turn=0,0,0; zoom=1 pan 0,0", "mnuView_Zoom50: zoom=0.5 pan 2,3",
      "mnuView_Window: scale=FIT VIEW", "mnuView_Toolbar: toolbar=0 0"};
    // clang-format on
    for (const QString row : rows)
      QTest::newRow(qPrintable(row.section(": ", 0, 0)))
          << row.section(": ", 0, 0) << row.section(": ", 1);
  }
  void commandsDoTheirWork() {
    QFETCH(QString, command);
    QFETCH(QString, changes);
    ShellSession s;
    GenerateDefaultGirder(*s.menu);
    // A tool and an edit mode that no command chooses, a turned, panned and
    // zoomed camera, a node selected.
    View& v = gView();
    v.ViewMode = 3, v.PropertyMode = v.MeshMode = 0;
    v.ViewRX = 10, v.ViewRY = 20, v.ViewRZ = 5, v.ViewX = 2, v.ViewY = 3, v.ViewZoom = 1.5f;
    s.menu->updateToolBar();
    gSelection().AddObject(gMesh().Nodes().Item(1));
    s.host.messages.clear();
    ModalScript modals;
    const auto before = Observe(s, modals);
    QAction* a = command.startsWith("mnu") ? s.menu->Menu(command) : s.menu->ToolButton(command);
    QVERIFY(a);
    a->trigger();
    const auto after = Observe(s, modals);
    QStringList changed;
    for (int i = 0; i < after.size(); ++i)
      if (after[i] != before[i]) changed << after[i];
    QCOMPARE(changed.join("; "), changes);
  }

  // The frame shows the model where the view's camera math puts it, and the
  // pointer over it reads the model point back from that frame.
  void frameAndPointerFollowTheCamera() {
    ShellSession s;
    GenerateDefaultGirder(*s.menu);
    QCOMPARE(s.menu->Surface()->grabFramebuffer().pixelColor(2, 2), QColor(255, 255, 255));
    const QColor fill = PixelAtModel(*s.menu, 100, 8); // inside a plate away from the axes
    QVERIFY2(IsThickestPlateFill(fill), qPrintable(fill.name()));
    // On a vertical grid line, column 13 between rows 2 and 3: the black outline.
    const auto& n = gMesh().Nodes().Item(4 * 12 + 2);
    const double y = (n->ycoord + gMesh().Nodes().Item(4 * 12 + 3)->ycoord) / 2;
    const QColor line = PixelAtModel(*s.menu, n->xcoord, y);
    QVERIFY2(line.red() < 80 && line.green() < 80 && line.blue() < 80, qPrintable(line.name()));
    // Half way along the x axis from the mesh centre: red.
    const View& v = gView();
    const QColor axis =
        PixelAtModel(*s.menu, v.LimitCX + 0.05 * v.SLimitMaxXY, v.LimitCY, 0.001 * v.SLimitMaxXY);
    QVERIFY2(axis.red() > 200 && axis.green() < 80 && axis.blue() < 80, qPrintable(axis.name()));

    const QPoint mouse = CameraPoint(s.menu->Surface()->size(), 100, 8);
    s.menu->ShowCoordinatesAt(mouse);
    const QString x = s.menu->Panel("x")->text(), yText = s.menu->Panel("y")->text();
    QVERIFY2(x.startsWith("X: ") && std::abs(x.mid(3).toDouble() - 100) < 0.5, qPrintable(x));
    QVERIFY2(yText.startsWith("Y: ") && std::abs(yText.mid(3).toDouble() - 8) < 0.5,
             qPrintable(yText));
    s.menu->ShowCoordinatesAt(QPoint(3, 3)); // background
    QVERIFY(s.menu->Panel("x")->text().isEmpty());
    s.menu->mnuTranslate_Click();
    s.menu->ShowCoordinatesAt(mouse); // another tool: no coordinates
    QVERIFY(s.menu->Panel("y")->text().isEmpty());
  }

  // The view computes its matrices without GL; read back from GL, the calls of
  // the design build the same, in actual and in fit view, turned and panned.
  void cameraMatricesAreThoseGLBuilds() {
    ShellSession s;
    GenerateDefaultGirder(*s.menu);
    View& v = gView();
    for (const bool fit : {false, true}) {
      if (fit) s.menu->mnuView_Window_Click();
      v.ViewRX = 25, v.ViewRY = -40, v.ViewRZ = 0.01;
      v.ViewZoom = 1.7f, v.ViewX = 3.5, v.ViewY = -2;
      v.Draw_ModelView();
      v.Draw_Projection();
      s.menu->Surface()->makeCurrent();
      glMatrixMode(GL_PROJECTION);
      glLoadIdentity();
      glOrtho(v.SLimitX0, v.SLimitX1, v.SLimitY0, v.SLimitY1, -v.SLimitZ0, -v.SLimitZ1);
      glMatrixMode(GL_MODELVIEW);
      glLoadIdentity();
      glTranslatef(static_cast<float>(v.SLimitCX), v.SLimitCY, 0);
      glRotatef(static_cast<float>(v.ViewRX), 0, 1, 0);
      glRotatef(static_cast<float>(v.ViewRY), 1, 0, 0);
      glRotatef(static_cast<float>(v.ViewRZ), 0, 0, 1);
      const float zoom = v.ViewZoom, fx = fit ? v.ScreenModeFactorX * 0.8f : 1,
                  fy = fit ? v.ScreenModeFactorY * 0.7f : 1;
      glScalef(zoom * fx, zoom * fy, zoom);
      glTranslatef(static_cast<float>(v.ViewX - v.SLimitCX),
                   static_cast<float>(v.ViewY - v.SLimitCY), 0);
      double mv[16], pr[16];
      glGetDoublev(GL_MODELVIEW_MATRIX, mv);
      glGetDoublev(GL_PROJECTION_MATRIX, pr);
      s.menu->Surface()->doneCurrent();
      double worst = 0; // GL keeps its matrices in 32-bit floats
      for (int i = 0; i < 16; ++i)
        worst = std::max({worst, std::abs(mv[i] - v.ModelView[i]) / (1 + std::abs(mv[i])),
                          std::abs(pr[i] - v.Projection[i]) / (1 + std::abs(pr[i]))});
      QVERIFY2(worst < 1e-5, fit ? "fit view" : "actual view");
    }
  }

  void resizeFollowsTheViewMode() {
    ShellSession s;
    GenerateDefaultGirder(*s.menu);
    QTest::qWait(20);
    const double before = gView().SLimitMaxY;
    s.menu->resize(s.menu->width(), s.menu->height() + 100);
    QTRY_VERIFY(gView().SLimitMaxY > before); // actual view: limits follow the window's aspect
    s.menu->mnuView_Window_Click();
    const Matrix4 projection = gView().Projection;
    s.menu->resize(s.menu->width() + 150, s.menu->height());
    QTest::qWait(50);
    QCOMPARE(gView().Projection, projection); // fit view: only the viewport changes
  }

  void aTrapShowsItsMessageAndTheSessionGoesOn() {
    ShellSession s;
    GenerateDefaultGirder(*s.menu);
    for (const auto& p : gMesh().fourNodes()) // shading by thickness divides by zero
      p->Thickness = 0;
    gMesh().fourNodes().UpdateMaxThickness();
    s.host.messages.clear();
    s.menu->Surface()->grabFramebuffer();
    QCOMPARE(s.host.Texts(), std::vector<std::string>{"Error..[Draw Model]"});
    s.menu->mnuView_Zoom(2); // the next command works and the window still paints
    QCOMPARE(gView().ViewZoom, 2.0f);
    QCOMPARE(s.menu->Surface()->grabFramebuffer().pixelColor(2, 2), QColor(255, 255, 255));
  }

  void runDialogRunsAnExampleAndShowsTheEigenvalue() {
    ShellSession s;
    QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp"));
    gAnalysis().Title = "Caf\xE9"; // a Latin-1 byte, as an 8-bit project file holds it
    EigenDialog dlg(s.menu.get());
    dlg.show();
    QCOMPARE(dlg.findChild<QLineEdit*>("txtTitle")->text(), QString::fromUtf8("Café"));
    dlg.findChild<QLineEdit*>("txtEstimation")->setText("0");
    s.host.messages.clear();
    QTest::mouseClick(dlg.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    QCOMPARE(gAnalysis().Title, std::string("Caf\xE9"));
    QCOMPARE(s.host.Texts(), std::vector<std::string>{"Eigenvalue of 3.7480E-02"});
    QCOMPARE(s.menu->Panel("eigenvalue")->text(), QString("Eigenvalue : 3.7480E-02"));
    QCOMPARE(dlg.findChild<QLabel*>("processreport")->text(), QString("Ready..."));
    QVERIFY(dlg.findChild<QPushButton*>("cmdApply")->isEnabled());

    // Every restraint taken off: the run still ends in a number, and a box
    // titled "Result Check" follows the eigenvalue's to say it means nothing.
    for (const auto& n : gMesh().Nodes()) {
      n->SetXTDir(0), n->SetYTDir(0), n->SetZTDir(0), n->SetXRDir(0), n->SetYRDir(0);
      n->UpdatePropertyDefined();
    }
    s.host.messages.clear();
    QTest::mouseClick(dlg.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    QCOMPARE(s.host.messages.size(), std::size_t(2));
    QVERIFY(s.host.messages[0].text.starts_with("Eigenvalue of "));
    QCOMPARE(s.host.messages[1].title, std::string("Result Check"));
    QVERIFY(s.host.messages[1].text.starts_with(
        "The structure is not restrained against rigid-body motion"));
  }

  // Studies > Supports and Loads on the default girder gives the model that
  // the batch tool's generate gives with the same rules, node by node; a rule
  // that does not fit is refused and leaves the model as it was.
  void supportsAndLoadsByRuleAsTheBatchToolMakesThem() {
    ShellSession s;
    GenerateDefaultGirder(*s.menu);
    const QString dir = s.dir.path();
    auto fill = [](std::map<QString, QString> fields, std::vector<std::string>* seen = nullptr) {
      return WhenModal([fields, seen](QDialog* dlg) {
        for (const auto& [name, text] : fields) {
          if (auto* box = dlg->findChild<QCheckBox*>(name))
            box->setChecked(true);
          else
            dlg->findChild<QLineEdit*>(name)->setText(text);
        }
        QTest::mouseClick(dlg->findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
        if (seen) *seen = {dlg->isVisible() ? "open" : "closed"};
      });
    };
    {
      std::vector<std::string> state;
      const auto answer = fill({{"chkFork", ""}, {"txtMoment", "1000"}, {"txtPoint", "5"},
                                {"txtPointX", "55"}},
                               &state);
      s.host.messages.clear();
      s.menu->Menu("mnuStudies_SupportsLoads")->trigger();
      QCOMPARE(state, std::vector<std::string>{"open"});
      QCOMPARE(s.host.Texts(), std::vector<std::string>{
                                   "A point load at x = 55 needs a node there; the nearest are "
                                   "at 51.4286 and 60."});
      for (const auto& n : gMesh().Nodes())
        QVERIFY(!n->LoadDefined() && !n->BoundaryDefined());
    }
    {
      const auto answer = fill({{"chkFork", ""}, {"txtMoment", "1000"}, {"txtPoint", "5"},
                                {"txtPointX", "60"}, {"chkPointBottom", ""}});
      s.menu->Menu("mnuStudies_SupportsLoads")->trigger();
    }
    QVERIFY(Save_Project_Path((dir + "/window.inp").toStdString()));
    QProcess batch;
    batch.start(VELK_BATCH, {"generate", "--supports", "fork", "--moment", "1000", "--point",
                             "5:60:bottom", "-o", dir + "/batch.inp"});
    QVERIFY(batch.waitForFinished(20000));
    QCOMPARE(batch.exitCode(), 0);
    QFile a(dir + "/window.inp"), b(dir + "/batch.inp");
    QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    const QList<QByteArray> window = a.readAll().split('\n'), made = b.readAll().split('\n');
    QCOMPARE(window.size(), made.size());
    for (int i = 0; i < window.size(); ++i)
      QVERIFY2(window[i] == made[i], qPrintable(QString::number(i + 1) + ": " + window[i] +
                                                 " | " + made[i]));
  }

  // Studies > Parameter Sweep: the length of the default girder under fork
  // supports and end moments from 60 to 600 by 60, run by the batch tool as a
  // child; the curve fills with ten points as the cases end, falling in magnitude as the
  // girder grows longer (lateral-torsional buckling), and the CSV and the
  // picture are where the window says.
  void parameterSweepRunsTheBatchToolAndDrawsItsCurve() {
    ShellSession s;
    GenerateDefaultGirder(*s.menu);
    s.menu->Menu("mnuStudies_Sweep")->trigger();
    SweepWindow* w = s.menu->Sweep();
    QVERIFY(w && w->isVisible());
    w->tool = VELK_BATCH;
    const QString csv = s.dir.path() + "/study.csv", png = s.dir.path() + "/study.png";
    const std::map<QString, QString> fields = {{"txtFrom", "60"},  {"txtTo", "600"},
                                               {"txtStep", "60"},  {"txtMoment", "1000"},
                                               {"txtCsv", csv},    {"txtPlot", png},
                                               {"txtJobs", "2"}};
    for (const auto& [name, text] : fields)
      w->findChild<QLineEdit*>(name)->setText(text);
    w->findChild<QCheckBox*>("chkFork")->setChecked(true);
    QTest::mouseClick(w->findChild<QPushButton*>("cmdRun"), Qt::LeftButton);
    QVERIFY(w->Running());
    QTRY_VERIFY_WITH_TIMEOUT(!w->Running(), 60000);
    QCOMPARE(w->findChild<QLabel*>("lblStatus")->text(), QString("Done: 10 cases."));
    QCOMPARE(w->findChild<QProgressBar*>("progress")->value(), 10);
    std::vector<frmSweep::Point> points = w->Form().points;
    QCOMPARE(points.size(), std::size_t(10));
    std::sort(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
    for (std::size_t i = 0; i < points.size(); ++i) {
      QCOMPARE(points[i].x, 60.0 * (i + 1));
      QVERIFY(points[i].eigenvalue && points[i].check == "ok");
      if (i > 0) QVERIFY(std::abs(*points[i].eigenvalue) < std::abs(*points[i - 1].eigenvalue));
    }
    QFile f(csv);
    QVERIFY(f.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = f.readAll().trimmed().split('\n');
    QCOMPARE(lines.size(), 11);
    QVERIFY(lines[2].startsWith("120,"));
    QVERIFY(QFileInfo(png).size() > 0);
    w->close();
  }

  void optionDialogShowsWholeTabsAndStores() {
    ShellSession s;
    AnalysisOptionDialog dlg(s.menu.get());
    dlg.show();
    auto* bar = dlg.findChild<QTabBar*>();
    for (int i = 0; i < bar->count(); ++i) {
      QVERIFY2(bar->tabRect(i).right() < bar->width(), qPrintable(bar->tabText(i)));
      QVERIFY(bar->tabRect(i).width() > bar->fontMetrics().horizontalAdvance(bar->tabText(i)));
    }
    for (auto* arrow : bar->findChildren<QToolButton*>())
      QVERIFY(!arrow->isVisible());
    QCOMPARE(dlg.findChild<QLineEdit*>("txtShift")->text(), QString("3"));
    dlg.findChild<QLineEdit*>("txtShift")->setText("2.6");
    dlg.findChild<QCheckBox*>("chkshear")->setChecked(true);
    dlg.findChild<QRadioButton*>("optAll")->setChecked(true);
    QTest::mouseClick(dlg.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    QCOMPARE(gAnalysis().MaxShift, 3);
    QCOMPARE(gAnalysis().ISHEAR, vbTrue);
    QCOMPARE(gAnalysis().OptionInitialB, 1);
    QVERIFY(!dlg.isVisible());
  }

  void statusPanelsShowTheirWholeTextAtAnySize() {
    ShellSession s;
    s.menu->Update();        // every panel with text, the longest of each
    s.menu->updateToolBar(); // and the picture of the edit mode
    s.menu->mnuView_ZoomOutCenter_Click();
    s.menu->Panel("eigenvalue")->setText("Eigenvalue : 2.4660E+04"); // girder-in-bending's run
    for (const char* key : {"x", "y"})                               // longer than usual
      s.menu->Panel(key)->setText(QString(key).toUpper() + ": -123456789.00");
    for (const QSize size : {QSize(639, s.menu->height()), QSize(300, 200)}) {
      s.menu->resize(size);
      QTest::qWait(20);
      const QString at = QString("%1 x %2 ").arg(size.width()).arg(size.height());
      int right = -1;
      for (const char* key : {"x", "y", "eigenvalue", "editmode", "operationmode", "viewscale"}) {
        QLabel* p = s.menu->Panel(key);
        // QLabel's own hint is the room its text needs.
        QVERIFY2(p->width() >= p->QLabel::minimumSizeHint().width(), qPrintable(at + key));
        QVERIFY2(p->x() > right, qPrintable(at + key));
        right = p->geometry().right();
      }
      QVERIFY2(right < s.menu->statusBar()->width(), qPrintable(at));
      QVERIFY2(s.menu->Surface()->height() >= 100, qPrintable(at));
    }
    QCOMPARE(s.menu->width(), s.menu->minimumWidth());
  }

  // The non-modal windows open wholly on the screen and clear of each other,
  // with the main window filling the screen too.
  void toolWindowsOpenOnTheScreenAndApart() {
    ShellSession s;
    const QRect screen = s.menu->screen()->availableGeometry();
    for (const QRect main : {QRect(screen.topLeft() + QPoint(230, 0), QSize(639, 500)), screen}) {
      s.menu->setGeometry(main);
      QTest::qWait(20);
      s.menu->mnuStressPlot_Click();
      s.menu->mnuProperty_ShowProperty_Click();
      QTest::keyClick(s.menu.get(), Qt::Key_F1);
      std::vector<QWidget*> windows;
      for (QWidget* w : QApplication::topLevelWidgets())
        if (w != s.menu.get() && w->isVisible() && !w->isModal()) windows.push_back(w);
      QCOMPARE(windows.size(), std::size_t(3));
      for (QWidget* w : windows) {
        QVERIFY2(screen.contains(w->frameGeometry()), qPrintable(w->windowTitle()));
        for (QWidget* other : windows)
          QVERIFY2(w == other || !w->frameGeometry().intersects(other->frameGeometry()),
                   qPrintable(w->windowTitle() + " over " + other->windowTitle()));
      }
      s.menu->mnuStressPlot_Click();
      s.menu->mnuProperty_ShowProperty_Click();
      s.menu->Help()->close();
      QTest::qWait(20);
    }
  }

  // F1 opens the help at the context of the active window, beside the main
  // window; over a modal dialog it takes input, and it outlives the dialog.
  void helpStandsBesideAndStaysUsableOverAModalDialog() {
    // No room beside: on the screen, over the least of the main window.
    QCOMPARE(PlaceBeside({0, 0, 639, 500}, {640, 560}, {0, 0, 800, 600}),
             QRect(160, 0, 640, 560));
    // Room on the right for two: the second goes below the first.
    QCOMPARE(PlaceBeside({0, 0, 600, 500}, {300, 250}, {0, 0, 1000, 800}, {{600, 0, 300, 250}}),
             QRect(600, 250, 300, 250));
    ShellSession s;
    s.menu->activateWindow();
    QTest::keyClick(s.menu.get(), Qt::Key_F1);
    HelpWindow* help = s.menu->Help();
    QVERIFY(help && help->isVisible());
    QVERIFY(help->Browser()->source().toString().endsWith("index.html"));
    QVERIFY(help->Browser()->toPlainText().size() > 100);
    QVERIFY(!help->frameGeometry().intersects(s.menu->frameGeometry()));
    QVERIFY(s.menu->screen()->availableGeometry().contains(help->frameGeometry()));
    int tookKeys = 0; // open before the dialog, and opened from it
    QTimer::singleShot(0, s.menu.get(), [&] {
      auto* dlg = qobject_cast<BeamShapeDialog*>(QApplication::activeModalWidget());
      for (int i = 0; dlg && i < 2; ++i) {
        if (i == 1) QTest::keyClick(dlg->Field("txtBL"), Qt::Key_F1);
        QTest::qWait(20);
        // Escape closes the help only if the modal dialog does not block it.
        QTest::keyClick(help->windowHandle(), Qt::Key_Escape);
        tookKeys += !help->isVisible();
      }
      if (!dlg) return;
      QApplication::setActiveWindow(dlg);
      QTest::keyClick(dlg->Field("txtBL"), Qt::Key_F1);
      dlg->reject();
    });
    s.menu->mnuBeam_Beam_Click(); // modal until the timer closes it
    QCOMPARE(tookKeys, 2);
    QVERIFY(s.menu->Help() == help && help->isVisible());
    QVERIFY(help->Browser()->source().toString().endsWith("beam.html"));
    QCOMPARE(help->parentWidget(), s.menu.get());
  }

  // Under the Qt host, as the program runs: the Enter or Escape that closes a
  // message box of the girder preview comes up in the field, which must not
  // take it for its own key and show the box again. The boxes carry the
  // program's name.
  void theKeyThatClosedAMessageIsNoKeyOfTheGirderField() {
    ShellSession s;
    QtHost qt(s.menu.get());
    InstallHost(&qt);
    BeamShapeDialog dlg(s.menu.get());
    dlg.show();
    QApplication::setActiveWindow(&dlg);
    QTRY_COMPARE(dlg.Field("txtBL")->text(), QString("120"));
    auto closeWith = [&dlg](Qt::Key key) -> ModalScript::Answer {
      return [&dlg, key](QWidget* box) {
        QTest::keyPress(box->windowHandle(), key); // the box closes at once
        QTimer::singleShot(0, &dlg, [&dlg, key] { QTest::keyRelease(dlg.windowHandle(), key); });
      };
    };
    auto type = [&dlg](const char* field, const char* text) {
      dlg.Field(field)->setFocus();
      dlg.Field(field)->selectAll();
      QTest::keyClicks(dlg.Field(field), text);
      QTest::qWait(50);
    };
    ModalScript script({closeWith(Qt::Key_Return), closeWith(Qt::Key_Escape)});
    type("txtBWH", "1a"); // hides the preview, no message
    type("txtBTFW", "9"); // draws End 1: the web is no number
    type("txtBWH", "0");  // a web of no height
    type("txtBWH", "16"); // keys typed in the field still count
    QCOMPARE(script.seen, (QStringList{"VELK: Input Data Error : Numbers!",
                                       "VELK: Invalid Input Data : Beam Web!"}));
    QVERIFY(dlg.Form().Picture1.Visible && dlg.Form().Picture1.Drawn);
  }

  // Save Data under the Qt host, through Qt's own file dialog.
  void saveDataAddsTheFiltersExtensionAndAsksAboutThatName() {
    ShellSession s;
    QtHost qt(s.menu.get());
    InstallHost(&qt);
    const QString folder = s.dir.path() + "/runs.v2"; // a dot in the folder is no extension
    QVERIFY(QDir().mkpath(folder));
    QFile(folder + "/girder.inp").open(QIODevice::WriteOnly);
    auto save = [&](std::deque<ModalScript::Answer> answers) {
      ModalScript script(std::move(answers));
      s.menu->mnuFile_SaveData_Click();
      return script.seen << s.menu->windowTitle();
    };
    auto name = [&folder](const QString& name, const QString& filter = {}) {
      return [=](QWidget* w) {
        if (!filter.isEmpty()) static_cast<QFileDialog*>(w)->selectNameFilter(filter);
        w->findChild<QLineEdit*>("fileNameEdit")->setText(folder + "/" + name);
        QMetaObject::invokeMethod(w, "accept");
      };
    };
    auto click = [](QMessageBox::StandardButton b) {
      return [b](QWidget* w) { static_cast<QMessageBox*>(w)->button(b)->click(); };
    };
    const QString dialog = "Save As: QFileDialog";
    // The question names the file written, and No goes back to the dialog.
    const QString question = "Save As: girder.inp already exists.\nDo you want to replace it?";
    QCOMPARE(
        save({name("girder"), click(QMessageBox::No), name("girder"), click(QMessageBox::Yes)}),
        (QStringList{dialog, question, dialog, question, "VELK V1.4.0:girder.inp"}));
    // A name with an extension, or the filter of all files: as typed.
    QCOMPARE(save({name("girder.txt")}), (QStringList{dialog, "VELK V1.4.0:girder.txt"}));
    QCOMPARE(save({name("girder", "All Files (*.*)")}),
             (QStringList{dialog, "VELK V1.4.0:girder"}));
  }
};

int main(int argc, char** argv) {
  GLView::SetDefaultFormat();
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // Qt's own file dialog, to drive
  QApplication app(argc, argv);
  tst_frmMenu t;
  return QTest::qExec(&t, argc, argv);
}

#include "tst_frmMenu.moc"
