// The main window under a real display: caption, menus, tool bar, status bar,
// the girder dialog, frames read back, resize, files and traps.
#include "ShellFixture.h"

#include "editing/Selection.h"
#include "session/ProjectFile.h"
#include "shell/BeamShapeDialog.h"
#include "shell/EigenDialog.h"
#include "shell/GLView.h"
#include "shell/HelpWindow.h"
#include "shell/QtHost.h"
#include "view/View.h"

#include <GL/gl.h>
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStatusBar>
#include <QTabBar>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>
#include <QtTest>
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

QColor PixelAtModel(frmMenu& menu, double x, double y, double z = 0) {
  QImage img = menu.Surface()->grabFramebuffer();
  double wx, wy, wz;
  gView().ModelToScreen(x, y, z, wx, wy, wz);
  const int px = static_cast<int>(wx), py = img.height() - 1 - static_cast<int>(wy);
  return img.pixelColor(px, py);
}

// Answers the modal windows as they come up, in order, and notes each by its
// title on the screen and its text (or class); one left without an answer
// is noted and closed.
struct ModalScript {
  using Answer = std::function<void(QWidget*)>;
  std::deque<Answer> answers;
  QStringList seen;
  QTimer timer;
  QPointer<QWidget> last;
  explicit ModalScript(std::deque<Answer> a) : answers(std::move(a)) {
    QObject::connect(&timer, &QTimer::timeout, [this] {
      QWidget* w = QApplication::activeModalWidget();
      if (!w || w == last || !w->windowHandle()) return;
      last = w;
      auto* box = qobject_cast<QMessageBox*>(w);
      seen << w->windowHandle()->title() + ": " +
                  (box ? box->text() : w->metaObject()->className());
      if (answers.empty()) return static_cast<QDialog*>(w)->reject();
      Answer next = std::move(answers.front());
      answers.pop_front();
      next(w);
    });
    timer.start(10);
  }
};

} // namespace

class tst_frmMenu : public QObject {
  Q_OBJECT
private slots:
  void startsWithTheCaptionAndNoMessageButTheMissingSettings();
  void menusHaveTheirCaptionsInOrder();
  void popupHoldsItsEntries();
  void toolBarKeysAndTips();
  void statusPanelsByKey();
  void girderDialogGeneratesTheDefaultMesh();
  void frameShowsBackgroundPlateOutlineAndAxes();
  void resizeFollowsTheViewMode();
  void saveThenOpenPutsTheFileInTheCaption();
  void aTrapShowsItsMessageAndTheSessionGoesOn();
  void editModesSetChecksAndDropTheSelection();
  void f1OpensTheHelpAtTheActiveWindowsContext();
  void runDialogRunsAnExampleAndShowsTheEigenvalue();
  void optionDialogStoresAndRefuses();
  void pointerOverTheModelShowsItsCoordinates();
  void cameraMatricesAreThoseGLBuilds();
  void statusPanelsShowTheirWholeTextAtAnySize();
  void helpStandsBesideTheMainWindow();
  void helpTakesInputOverAModalDialogAndOutlivesIt();
  void theKeyThatClosedAMessageIsNoKeyOfTheGirderField();
  void saveAddsTheFiltersExtensionAndAsksAboutThatName();
};

void tst_frmMenu::startsWithTheCaptionAndNoMessageButTheMissingSettings() {
  ShellSession s;
  QCOMPARE(s.menu->windowTitle(), QString("VELK V1.4.0: No Title"));
  QCOMPARE(s.host.Texts(), std::vector<std::string>{"Error: Reading INI file!"});
  // The client area below the menu bar starts at 639 x 465.
  QCOMPARE(s.menu->width(), 639);
}

void tst_frmMenu::menusHaveTheirCaptionsInOrder() {
  ShellSession s;
  QStringList tops;
  for (QAction* a : s.menu->menuBar()->actions())
    tops << a->text();
  QCOMPARE(tops, (QStringList{"File", "Beam", "Elements", "Analysis", "Property", "View", "Results",
                              "Help"}));

  auto captions = [&](const char* menuName) {
    QStringList out;
    for (QAction* a : s.menu->Menu(menuName)->menu()->actions())
      out << (a->isSeparator() ? "-" : a->text());
    return out;
  };
  QCOMPARE(captions("mnuFile"),
           (QStringList{"New Data", "-", "Read  Data", "Save Data", "-", "Create Report File",
                        "Create Bitmap File", "-", "Exit"}));
  QCOMPARE(captions("mnuFile_SavePost"), (QStringList{"Report All", "Displacement Grid"}));
  QCOMPARE(captions("mnuBeam"), (QStringList{"Geometry", "Edit Geometry"}));
  QVERIFY(!s.menu->Menu("mnuEditGeometry")->isVisible());
  QVERIFY(!s.menu->Menu("mnuEditGeometry")->isEnabled());
  QCOMPARE(captions("mnuElements"),
           (QStringList{"Plate", "Stiffener", "-", "Boundary", "Brace", "Load"}));
  QCOMPARE(captions("mnuRun"), (QStringList{"Run", "-", "Analysis Option"}));
  QCOMPARE(captions("mnuProperty"), (QStringList{"Set Property", "Copy Property", "Paste Property",
                                                 "Delete Property", "-", "Show Property Window"}));
  QCOMPARE(captions("mnuView"), (QStringList{"Refresh",
                                             "-",
                                             "Select",
                                             "Translate",
                                             "Rotate",
                                             "Zoom In/Out",
                                             "Zoom All",
                                             "-",
                                             "Move to Center",
                                             "Zoom In: Center",
                                             "Zoom Out: Center",
                                             "-",
                                             "Zoom   50%",
                                             "Zoom 100%",
                                             "Zoom 200%",
                                             "Zoom 500%",
                                             "Zoom1000%",
                                             "-",
                                             "Actual/Fit View",
                                             "Clipping",
                                             "-",
                                             "Show/Hide Toolbar",
                                             "View Option"}));
  QCOMPARE(captions("mnuResult"), (QStringList{"Show Buckled Shape", "Stress Plot"}));
  QCOMPARE(captions("mnuHelp"), (QStringList{"Help Topics", "-", "About VELK "}));
  QVERIFY(s.menu->Menu("mnuView_Toolbar")->isChecked());
}

void tst_frmMenu::popupHoldsItsEntries() {
  ShellSession s;
  QStringList out;
  for (QAction* a : s.menu->Popup()->actions())
    out << (a->isSeparator() ? "-" : a->text());
  QCOMPARE(out, (QStringList{"Selection", "Property", "-", "View", "-", "Refresh", "-",
                             "View Options"}));
  QCOMPARE(s.menu->Menu("mnuPopUp_ShowProperty")->text(), QString("Show Proeprty"));
}

void tst_frmMenu::toolBarKeysAndTips() {
  ShellSession s;
  QStringList keys, tips;
  for (QAction* a : s.menu->Toolbar1()->actions()) {
    keys << (a->isSeparator() ? "|" : a->data().toString());
    if (!a->isSeparator()) tips << a->toolTip();
  }
  QCOMPARE(keys,
           (QStringList{"new",      "open",      "save",     "|",        "mesh",      "|",
                        "plate",    "stiffener", "boundary", "brace",    "load",      "|",
                        "select",   "set",       "delete",   "copy",     "paste",     "|",
                        "property", "|",         "topview",  "leftview", "viewangle", "zoomall",
                        "zoomin",   "zoomout",   "center",   "refresh",  "|",         "run"}));
  QCOMPARE(tips.first(), QString("New Data"));
  QCOMPARE(tips.last(), QString("Calculate Buckling Strength"));
  QVERIFY(tips.contains("Set Point Loading Condition"));
}

void tst_frmMenu::statusPanelsByKey() {
  ShellSession s;
  const std::pair<const char*, const char*> panels[] = {{"x", "X Coordinate"},
                                                        {"y", "Y Coordinate"},
                                                        {"eigenvalue", "Eigenvalue"},
                                                        {"editmode", "Edit Mode"},
                                                        {"operationmode", "Operation Mode"},
                                                        {"viewscale", "View Scale"}};
  for (const auto& [key, tip] : panels) {
    QVERIFY2(s.menu->Panel(key), key);
    QCOMPARE(s.menu->Panel(key)->toolTip(), QString(tip));
  }
  s.menu->Update(); // visible now: the decorations are written
  QCOMPARE(s.menu->Panel("operationmode")->text(), QString("SELECT"));
  QCOMPARE(s.menu->Panel("viewscale")->text(), QString("ACTUAL VIEW"));
  QCOMPARE(s.menu->Panel("eigenvalue")->text(), QString("Eigenvalue : 0.00"));
}

void tst_frmMenu::girderDialogGeneratesTheDefaultMesh() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  QCOMPARE(gMesh().Nodes().Count(), 60L);
  QCOMPARE(gMesh().fourNodes().Count(), 42L);
  QCOMPARE(gMesh().twoNodes().Count(), 101L);
  QCOMPARE(gView().PropertyMode, 1);
}

void tst_frmMenu::frameShowsBackgroundPlateOutlineAndAxes() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  s.menu->Surface()->grabFramebuffer(); // one frame fixes the frame state
  QImage img = s.menu->Surface()->grabFramebuffer();
  QCOMPARE(img.pixelColor(2, 2), QColor(255, 255, 255));
  // Inside a plate away from the axes: the fill of the thickest plate, (1, 1, 0.7).
  QColor fill = PixelAtModel(*s.menu, 100, 8);
  QCOMPARE(fill.red(), 255);
  QCOMPARE(fill.green(), 255);
  QVERIFY2(std::abs(fill.blue() - 178) <= 1, qPrintable(QString::number(fill.blue())));
  // On a vertical grid line between two plates: the black outline.
  const auto& n = gMesh().Nodes().Item(4 * 12 + 2); // column 13, row 2
  QColor line =
      PixelAtModel(*s.menu, n->xcoord, (n->ycoord + gMesh().Nodes().Item(4 * 12 + 3)->ycoord) / 2);
  QVERIFY2(line.red() < 80 && line.green() < 80 && line.blue() < 80, qPrintable(line.name()));
  // Half way along the x axis from the mesh centre: red.
  const View& v = gView();
  QColor axis =
      PixelAtModel(*s.menu, v.LimitCX + 0.05 * v.SLimitMaxXY, v.LimitCY, 0.001 * v.SLimitMaxXY);
  QVERIFY2(axis.red() > 200 && axis.green() < 80 && axis.blue() < 80, qPrintable(axis.name()));
}

void tst_frmMenu::resizeFollowsTheViewMode() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  QTest::qWait(20);
  const double before = gView().SLimitMaxY;
  s.menu->resize(s.menu->width(), s.menu->height() + 100);
  QTRY_VERIFY(gView().SLimitMaxY > before); // actual view: limits follow the window's aspect
  s.menu->mnuView_Window_Click();
  QCOMPARE(s.menu->Panel("viewscale")->text(), QString("FIT VIEW"));
  const Matrix4 projection = gView().Projection;
  const Single fx = gView().ScreenModeFactorX;
  s.menu->resize(s.menu->width() + 150, s.menu->height());
  QTest::qWait(50);
  QCOMPARE(gView().Projection, projection); // fit view: only the viewport changes
  QCOMPARE(gView().ScreenModeFactorX, fx);
  s.menu->mnuView_Window_Click();
  QCOMPARE(s.menu->Panel("viewscale")->text(), QString("ACTUAL VIEW"));
}

void tst_frmMenu::saveThenOpenPutsTheFileInTheCaption() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  const std::string path = (s.dir.path() + "/girder.inp").toStdString();
  s.host.saveAnswers.push_back(path);
  s.menu->mnuFile_SaveData_Click();
  QCOMPARE(s.menu->windowTitle(), QString("VELK V1.4.0:girder.inp"));
  s.menu->mnuFile_New_Click();
  QCOMPARE(gMesh().Nodes().Count(), 0L);
  s.menu->setWindowTitle("something else");
  s.host.openAnswers.push_back(path);
  s.menu->mnuFile_Open_Click();
  QCOMPARE(gMesh().Nodes().Count(), 60L);
  QCOMPARE(s.menu->windowTitle(), QString("VELK V1.4.0:girder.inp"));
  // Cancel ends quietly.
  const auto before = s.host.messages.size();
  s.menu->mnuFile_Open_Click();
  QCOMPARE(s.host.messages.size(), before);
  QCOMPARE(gMesh().Nodes().Count(), 60L);
}

void tst_frmMenu::aTrapShowsItsMessageAndTheSessionGoesOn() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  // No plate with a thickness left: shading by thickness divides by zero.
  for (const auto& p : gMesh().fourNodes())
    p->Thickness = 0;
  gMesh().fourNodes().UpdateMaxThickness();
  s.host.messages.clear();
  s.menu->Surface()->grabFramebuffer();
  QCOMPARE(s.host.Texts(), std::vector<std::string>{"Error..[Draw Model]"});
  // The session goes on: the next command works and the window still paints.
  s.menu->mnuView_Zoom(2);
  QCOMPARE(gView().ViewZoom, 2.0f);
  QImage img = s.menu->Surface()->grabFramebuffer();
  QCOMPARE(img.pixelColor(2, 2), QColor(255, 255, 255));
}

void tst_frmMenu::editModesSetChecksAndDropTheSelection() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  gSelection().AddObject(gMesh().Nodes().Item(1));
  gView().ViewMode = 2;
  s.menu->ToolButton("boundary")->trigger();
  QCOMPARE(gView().PropertyMode, 3);
  QCOMPARE(gView().MeshMode, 1);
  QCOMPARE(gSelection().SelectedCounter(), 0);
  QCOMPARE(gView().ViewMode, 2); // the mouse tool stays
  QVERIFY(s.menu->Menu("mnuElements_Boundary")->isChecked());
  QVERIFY(!s.menu->Menu("mnuElements_Plate")->isChecked());
  QCOMPARE(s.menu->Panel("editmode")->property("picture").toString(), QString("boundary"));
  s.menu->ToolButton("topview")->trigger();
  QCOMPARE(gView().ViewRY, 89.9);
}

void tst_frmMenu::f1OpensTheHelpAtTheActiveWindowsContext() {
  ShellSession s;
  s.menu->activateWindow();
  QTest::keyClick(s.menu.get(), Qt::Key_F1);
  QVERIFY(s.menu->Help() && s.menu->Help()->isVisible());
  QVERIFY(s.menu->Help()->Browser()->source().toString().endsWith("index.html"));
  QVERIFY(s.menu->Help()->Browser()->toPlainText().size() > 100);
  s.menu->Help()->close();
  BeamShapeDialog dlg(s.menu.get());
  dlg.show();
  QApplication::setActiveWindow(&dlg);
  QTRY_VERIFY(dlg.isActiveWindow());
  QTest::keyClick(dlg.Field("txtBL"), Qt::Key_F1);
  QTRY_VERIFY(s.menu->Help()->isVisible());
  QVERIFY(s.menu->Help()->Browser()->source().toString().endsWith("beam.html"));
}

void tst_frmMenu::runDialogRunsAnExampleAndShowsTheEigenvalue() {
  ShellSession s;
  QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp"));
  EigenDialog dlg(s.menu.get());
  dlg.show();
  QCOMPARE(dlg.findChild<QLabel*>("processreport")->text(), QString("Ready..."));
  QVERIFY(!dlg.findChild<QPushButton*>("cmdCancel")->isEnabled());
  auto* estimate = dlg.findChild<QLineEdit*>("txtEstimation");
  estimate->setText("abc");
  s.host.messages.clear();
  QTest::mouseClick(dlg.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
  QCOMPARE(s.host.Texts(), std::vector<std::string>{"Input Data Error : Numbers!"});
  estimate->setText("0");
  s.host.messages.clear();
  QTest::mouseClick(dlg.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
  QCOMPARE(s.host.Texts(), std::vector<std::string>{"Eigenvalue of 3.7480E-02"});
  QCOMPARE(s.menu->Panel("eigenvalue")->text(), QString("Eigenvalue : 3.7480E-02"));
  QCOMPARE(dlg.findChild<QLabel*>("processreport")->text(), QString("Ready..."));
  QVERIFY(dlg.findChild<QPushButton*>("cmdApply")->isEnabled());
  QVERIFY(dlg.findChild<QPushButton*>("cmdClose")->isEnabled());
  QTest::mouseClick(dlg.findChild<QPushButton*>("cmdClose"), Qt::LeftButton);
  QCOMPARE(dlg.result(), int(QDialog::Accepted));
}

void tst_frmMenu::optionDialogStoresAndRefuses() {
  ShellSession s;
  AnalysisOptionDialog dlg(s.menu.get());
  dlg.show();
  // Every tab title whole, with no scroll arrows.
  auto* bar = dlg.findChild<QTabBar*>();
  for (int i = 0; i < bar->count(); ++i) {
    QVERIFY2(bar->tabRect(i).right() < bar->width(), qPrintable(bar->tabText(i)));
    QVERIFY(bar->tabRect(i).width() > bar->fontMetrics().horizontalAdvance(bar->tabText(i)));
  }
  for (auto* arrow : bar->findChildren<QToolButton*>())
    QVERIFY(!arrow->isVisible());
  QCOMPARE(dlg.findChild<QLineEdit*>("txtShift")->text(), QString("3"));
  QVERIFY(dlg.findChild<QRadioButton*>("optOneThird")->isChecked());
  dlg.findChild<QLineEdit*>("txtShift")->setText("0");
  s.host.messages.clear();
  QTest::mouseClick(dlg.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
  QCOMPARE(s.host.Texts(), std::vector<std::string>{"Error..."});
  QVERIFY(dlg.isVisible());
  dlg.findChild<QLineEdit*>("txtShift")->setText("2.6");
  dlg.findChild<QCheckBox*>("chkshear")->setChecked(true);
  dlg.findChild<QRadioButton*>("optAll")->setChecked(true);
  QTest::mouseClick(dlg.findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
  QCOMPARE(gAnalysis().MaxShift, 3);
  QCOMPARE(gAnalysis().ISHEAR, vbTrue);
  QCOMPARE(gAnalysis().OptionInitialB, 1);
  QVERIFY(!dlg.isVisible());
}

void tst_frmMenu::pointerOverTheModelShowsItsCoordinates() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  s.menu->Surface()->grabFramebuffer(); // a frame on the screen to read
  s.menu->Surface()->repaint();
  double wx, wy, wz;
  gView().ModelToScreen(100, 8, 0, wx, wy, wz);
  const QPoint mouse(static_cast<int>(std::lround(wx)),
                     static_cast<int>(std::lround(s.menu->Surface()->height() - wy + 1)));
  s.menu->ShowCoordinatesAt(mouse);
  const QString x = s.menu->Panel("x")->text(), y = s.menu->Panel("y")->text();
  QVERIFY2(x.startsWith("X: ") && std::abs(x.mid(3).toDouble() - 100) < 0.5, qPrintable(x));
  QVERIFY2(y.startsWith("Y: ") && std::abs(y.mid(3).toDouble() - 8) < 0.5, qPrintable(y));
  s.menu->ShowCoordinatesAt(QPoint(3, 3)); // background
  QVERIFY(s.menu->Panel("x")->text().isEmpty());
  s.menu->mnuTranslate_Click();
  s.menu->ShowCoordinatesAt(mouse); // another tool: no coordinates
  QVERIFY(s.menu->Panel("y")->text().isEmpty());
}

// The view computes its matrices without GL; they must be what the GL calls
// of the design build, in actual and in fit view, turned and panned.
void tst_frmMenu::cameraMatricesAreThoseGLBuilds() {
  ShellSession s;
  GenerateDefaultGirder(*s.menu);
  View& v = gView();
  for (int fit = 0; fit <= 1; ++fit) {
    if (fit) s.menu->mnuView_Window_Click();
    v.ViewRX = 25;
    v.ViewRY = -40;
    v.ViewRZ = 0.01;
    v.ViewZoom = 1.7f;
    v.ViewX = 3.5;
    v.ViewY = -2;
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
    if (fit)
      glScalef(v.ViewZoom * v.ScreenModeFactorX * 0.8f, v.ViewZoom * v.ScreenModeFactorY * 0.7f,
               v.ViewZoom);
    else
      glScalef(v.ViewZoom, v.ViewZoom, v.ViewZoom);
    glTranslatef(static_cast<float>(v.ViewX - v.SLimitCX), static_cast<float>(v.ViewY - v.SLimitCY),
                 0);
    double mv[16], pr[16];
    glGetDoublev(GL_MODELVIEW_MATRIX, mv);
    glGetDoublev(GL_PROJECTION_MATRIX, pr);
    s.menu->Surface()->doneCurrent();
    for (int i = 0; i < 16; ++i) {
      // GL keeps its matrices in 32-bit floats.
      QVERIFY2(std::abs(mv[i] - v.ModelView[i]) <= 1e-5 * (1 + std::abs(mv[i])),
               qPrintable(QString::number(i)));
      QVERIFY2(std::abs(pr[i] - v.Projection[i]) <= 1e-6 * (1 + std::abs(pr[i])),
               qPrintable(QString::number(i)));
    }
  }
}

void tst_frmMenu::statusPanelsShowTheirWholeTextAtAnySize() {
  ShellSession s;
  s.menu->Panel("eigenvalue")->setText("Eigenvalue : 2.4660E+04"); // girder-in-bending's run
  s.menu->mnuView_ZoomOutCenter_Click();
  s.menu->Panel("x")->setText("X: -123456789.00"); // longer than usual
  for (const QSize size : {QSize(639, s.menu->height()), QSize(300, 200)}) {
    s.menu->resize(size);
    QTest::qWait(20);
    const QString at = QString("%1 x %2").arg(size.width()).arg(size.height());
    int right = -1;
    for (const char* key : {"x", "y", "eigenvalue", "editmode", "operationmode", "viewscale"}) {
      QLabel* p = s.menu->Panel(key);
      // QLabel's own hint is the room its text needs.
      QVERIFY2(p->width() >= p->QLabel::minimumSizeHint().width(), qPrintable(at + " " + key));
      QVERIFY2(p->x() > right, qPrintable(at + " " + key));
      right = p->geometry().right();
    }
    QVERIFY2(right < s.menu->statusBar()->width(), qPrintable(at));
    QVERIFY2(s.menu->Surface()->height() >= 100, qPrintable(at));
  }
  QCOMPARE(s.menu->width(), s.menu->minimumWidth());
}

void tst_frmMenu::helpStandsBesideTheMainWindow() {
  // Frames as (x, y, width, height); the screen is 1280 x 1024 unless named.
  const QRect screen(0, 0, 1280, 1024);
  const struct {
    QRect main;
    QSize help;
    QRect screen, expected;
  } cases[] = {
      {{600, 100, 680, 500}, {640, 560}, screen, {0, 100, 600, 560}}, // left, narrowed
      // No room beside: on the screen, over the least of the main window.
      {{0, 0, 639, 500}, {640, 560}, {0, 0, 800, 600}, {160, 0, 640, 560}},
  };
  for (const auto& c : cases)
    QCOMPARE(HelpWindow::PlaceBeside(c.main, c.help, c.screen), c.expected);
  QVERIFY(screen.contains(HelpWindow::PlaceBeside(screen, {640, 560}, screen)));

  ShellSession s;
  s.menu->mnuVELKHelp_Click();
  HelpWindow* help = s.menu->Help();
  QVERIFY(help && help->isVisible());
  QVERIFY(!help->frameGeometry().intersects(s.menu->frameGeometry()));
  QVERIFY(s.menu->screen()->availableGeometry().contains(help->frameGeometry()));
}

void tst_frmMenu::helpTakesInputOverAModalDialogAndOutlivesIt() {
  ShellSession s;
  s.menu->mnuVELKHelp_Click(); // open before the dialog, and opened from it
  int tookKeys = 0;
  QTimer::singleShot(0, s.menu.get(), [&] {
    auto* dlg = qobject_cast<BeamShapeDialog*>(QApplication::activeModalWidget());
    for (int i = 0; dlg && i < 2; ++i) {
      if (i == 1) QTest::keyClick(dlg->Field("txtBL"), Qt::Key_F1);
      QTest::qWait(20);
      // Escape closes the help only if the modal dialog does not block it.
      QTest::keyClick(s.menu->Help()->windowHandle(), Qt::Key_Escape);
      tookKeys += !s.menu->Help()->isVisible();
    }
    if (!dlg) return;
    QApplication::setActiveWindow(dlg); // F1 opens the page of the active window
    QTest::keyClick(dlg->Field("txtBL"), Qt::Key_F1);
    dlg->reject();
  });
  s.menu->mnuBeam_Beam_Click(); // modal until the timer closes it
  QCOMPARE(tookKeys, 2);
  QVERIFY(s.menu->Help() && s.menu->Help()->isVisible());
  QVERIFY(s.menu->Help()->Browser()->source().toString().endsWith("beam.html"));
  QCOMPARE(s.menu->Help()->parentWidget(), s.menu.get());
}

// Under the Qt host, as the program runs: the Enter or Escape that closes a
// message box of the girder preview comes up in the field, which must not take
// it for its own key and show the box again. The boxes carry the program's name.
void tst_frmMenu::theKeyThatClosedAMessageIsNoKeyOfTheGirderField() {
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
  auto type = [](QLineEdit* field, const char* text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
    QTest::qWait(50);
  };
  ModalScript script({closeWith(Qt::Key_Return), closeWith(Qt::Key_Escape)});
  type(dlg.Field("txtBWH"), "1a"); // hides the preview, no message
  type(dlg.Field("txtBTFW"), "9"); // draws End 1: the web is no number
  type(dlg.Field("txtBWH"), "0");  // a web of no height
  type(dlg.Field("txtBWH"), "16"); // keys typed in the field still count
  InstallHost(&s.host);
  QCOMPARE(script.seen, (QStringList{"VELK: Input Data Error : Numbers!",
                                     "VELK: Invalid Input Data : Beam Web!"}));
  QVERIFY(dlg.Form().Picture1.Visible && dlg.Form().Picture1.Drawn);
}

void tst_frmMenu::saveAddsTheFiltersExtensionAndAsksAboutThatName() {
  ShellSession s;
  QtHost qt(s.menu.get());
  const QString folder = s.dir.path() + "/runs.v2"; // a dot in the folder is no extension
  QVERIFY(QDir().mkpath(folder));
  FileDialog d{"Save As", "All Files (*.*)|*.*|VELK Graphic Interface Files(*.inp)|*.inp",
               2,         FileDialog::cdlOFNHideReadOnly | FileDialog::cdlOFNOverwritePrompt,
               "",        ""};
  auto save = [&](int filterIndex, std::deque<ModalScript::Answer> answers) {
    d.FilterIndex = filterIndex;
    d.FileName = (folder + "/").toStdString();
    ModalScript script(std::move(answers));
    script.seen.prepend(qt.ShowSave(d) ? QString::fromStdString(d.FileName) : "cancelled");
    return script.seen;
  };
  auto typeName = [](const QString& name) -> ModalScript::Answer {
    return [name](QWidget* w) {
      w->findChild<QLineEdit*>("fileNameEdit")->setText(name);
      QMetaObject::invokeMethod(w, "accept");
    };
  };
  auto click = [](QMessageBox::StandardButton b) -> ModalScript::Answer {
    return [b](QWidget* w) { static_cast<QMessageBox*>(w)->button(b)->click(); };
  };
  const QString dialog = "Save As: QFileDialog", inp = folder + "/girder.inp";
  // The question names the file written, and No goes back to the dialog.
  QFile(inp).open(QIODevice::WriteOnly);
  const QString question = "Save As: girder.inp already exists.\nDo you want to replace it?";
  QCOMPARE(save(2, {typeName("girder"), click(QMessageBox::No), typeName("girder"),
                    click(QMessageBox::Yes)}),
           (QStringList{inp, dialog, question, dialog, question}));
  // A name with an extension, or the filter of all files: as typed.
  QCOMPARE(save(2, {typeName("girder.txt")}), (QStringList{folder + "/girder.txt", dialog}));
  QCOMPARE(save(1, {typeName("girder")}), (QStringList{folder + "/girder", dialog}));
}

int main(int argc, char** argv) {
  SetDefaultSurface();
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // Qt's own file dialog, to drive
  QApplication app(argc, argv);
  tst_frmMenu t;
  return QTest::qExec(&t, argc, argv);
}

#include "tst_frmMenu.moc"
