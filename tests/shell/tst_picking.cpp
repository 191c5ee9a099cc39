// Building a model with the mouse: real press, move and release events on the
// GL surface pick nodes and elements, drag the view about, and feed the
// property dialogs.
#include "ShellFixture.h"

#include "editing/Selection.h"
#include "shell/BeamShapeDialog.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <QRubberBand>
#include <QtTest>
#include <QtWidgets>

using namespace velk;
using namespace velk::test;

namespace {

// The 10 x 10 web-only plate of 6 x 6 elements, t 0.1, E 1000, through the
// girder dialog as a user fills it.
void GeneratePlate(frmMenu& menu) {
  BeamShapeDialog dlg(&menu);
  dlg.show();
  QTRY_COMPARE(dlg.Field("txtBL")->text(), QString("120"));
  const std::pair<const char*, const char*> fields[] = {
      {"txtBL", "10"},         {"txtBWH", "10"},   {"txtBWT", "0.1"}, {"txtBTFW", "0"},
      {"txtBTFT", "0"},        {"txtBBFW", "0"},   {"txtBBFT", "0"},  {"txtBWHE", "10"},
      {"txtBWTE", "0.1"},      {"txtBTFWE", "0"},  {"txtBTFTE", "0"}, {"txtBBFWE", "0"},
      {"txtBBFTE", "0"},       {"txtMOE", "1000"}, {"txtPR", "0.3"},  {"txtNumXElements", "6"},
      {"txtNumYElements", "6"}};
  for (auto [name, text] : fields)
    dlg.Field(name)->setText(text);
  QTest::mouseClick(dlg.findChild<QPushButton*>("cmdGenerate"), Qt::LeftButton);
  QCOMPARE(gMesh().Nodes().Count(), 49L);
}

// Where a model point stands on the surface, in client pixels, once the
// picture the user points at is on the screen.
QPoint At(frmMenu& menu, double x, double y) {
  menu.Surface()->grabFramebuffer();
  return CameraPoint(menu.Surface()->size(), x, y);
}

// A move straight to the widget: QTest's own goes through the pointer of the
// display, which other tests on the same display move too.
void Move(QWidget* w, QPoint to, Qt::MouseButtons held = Qt::NoButton) {
  QMouseEvent e(QEvent::MouseMove, to, w->mapToGlobal(to), Qt::NoButton, held, Qt::NoModifier);
  QApplication::sendEvent(w, &e);
}

void Drag(QWidget* w, QPoint from, QPoint to, Qt::KeyboardModifiers mods = {}) {
  QTest::mousePress(w, Qt::LeftButton, mods, from);
  Move(w, (from + to) / 2, Qt::LeftButton);
  Move(w, to, Qt::LeftButton);
  QTest::mouseRelease(w, Qt::LeftButton, mods, to);
}

std::vector<Long> SelectedIDs() {
  std::vector<Long> ids;
  for (Long i = 1; i <= gSelection().SelectedCounter(); ++i)
    std::visit([&](const auto& o) { ids.push_back(o->ID); }, gSelection().Item(i));
  return ids;
}

// The first column from the left on row y where the plate begins: its black
// outline or its fill, not the red axes.
int LeftEdge(const QImage& img, int y) {
  for (int x = 0; x < img.width(); ++x) {
    const QColor c = img.pixelColor(x, y);
    if (c == Qt::black || IsThickestPlateFill(c)) return x;
  }
  return -1;
}

// Answers the modal dialog that `open` brings up; false if none came.
bool Answer(const std::function<void()>& open, const std::function<void(QDialog*)>& fill) {
  bool answered = false;
  const auto watch = WhenModal([&](QDialog* d) {
    answered = true;
    fill(d);
  });
  open();
  return answered;
}

void Type(QDialog* d, const char* field, const char* text) {
  auto* e = d->findChild<QLineEdit*>(field);
  QVERIFY2(e, field);
  e->setFocus();
  QTest::keyClick(e, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(e, text);
}

void Click(QDialog* d, const char* name) {
  auto* b = d->findChild<QAbstractButton*>(name);
  QVERIFY2(b, name);
  QTest::mouseClick(b, Qt::LeftButton);
}

// Set Property from the tool bar on the selection: the boundary dialog's
// boxes clicked into the wanted state (it opens with the first node's), or
// the load dialog's X field filled.
bool Restrain(frmMenu& menu, std::initializer_list<int> boxes) {
  return Answer([&] { menu.ToolButton("set")->trigger(); },
                [&](QDialog* d) {
                  for (int k = 0; k < 5; ++k) {
                    const QString name = QString("Check1_%1").arg(k);
                    auto* b = d->findChild<QAbstractButton*>(name);
                    QVERIFY2(b, qPrintable(name));
                    if (b->isChecked() != (std::find(boxes.begin(), boxes.end(), k) != boxes.end()))
                      QTest::mouseClick(b, Qt::LeftButton);
                  }
                  Click(d, "Command1");
                });
}
bool LoadX(frmMenu& menu, const char* value) {
  return Answer([&] { menu.ToolButton("set")->trigger(); },
                [&](QDialog* d) {
                  Type(d, "txtLoadX", value);
                  Click(d, "cmdApply");
                });
}

} // namespace

class tst_picking : public QObject {
  Q_OBJECT
private slots:
  void clicksAndBoxesPickWhatIsUnderThePointer() {
    ShellSession s;
    QWidget* gl = s.menu->Surface();
    QTest::mouseClick(gl, Qt::LeftButton, {}, QPoint(50, 50)); // no model: nothing, silently
    QCOMPARE(gSelection().SelectedCounter(), 0);
    GeneratePlate(*s.menu);
    s.menu->mnuElements_Boundary_Click();
    s.menu->Surface()->grabFramebuffer();
    // Our projection is GLU's, to the last bit, on the frame on the screen.
    s.menu->Surface()->makeCurrent();
    GLint vp[4];
    GLdouble mv[16], pr[16];
    glGetIntegerv(GL_VIEWPORT, vp);
    glGetDoublev(GL_MODELVIEW_MATRIX, mv);
    glGetDoublev(GL_PROJECTION_MATRIX, pr);
    s.menu->Surface()->doneCurrent();
    for (const auto& n : gMesh().Nodes()) {
      const Integer px = CInt(n->xcoord), py = CInt(n->ycoord);
      GLdouble wx, wy, wz;
      QVERIFY(gluProject(px, py, 0, mv, pr, vp, &wx, &wy, &wz));
      Single sx, sy;
      Project_Point(gView(), px, py, sx, sy);
      QCOMPARE(sx, static_cast<Single>(wx));
      QCOMPARE(sy, static_cast<Single>(wy));
    }
    // A box around the left edge, with the band on the screen while it is drawn.
    const QPoint a = At(*s.menu, -0.5, 10.5), b = At(*s.menu, 0.5, -0.5);
    QTest::mousePress(gl, Qt::LeftButton, {}, a);
    Move(gl, b, Qt::LeftButton);
    QVERIFY(s.menu->RubberBand() && s.menu->RubberBand()->isVisible());
    QCOMPARE(s.menu->RubberBand()->geometry(), QRect(a, b).normalized());
    QTest::mouseRelease(gl, Qt::LeftButton, {}, b);
    QVERIFY(!s.menu->RubberBand()->isVisible());
    QCOMPARE(SelectedIDs(), (std::vector<Long>{1, 2, 3, 4, 5, 6, 7}));
    // Shift adds a click's node; a plain click replaces the selection.
    QTest::mouseClick(gl, Qt::LeftButton, Qt::ShiftModifier, At(*s.menu, 10.3, 9.8));
    QCOMPARE(SelectedIDs().back(), 49L);
    QCOMPARE(SelectedIDs().size(), 8u);
    QTest::mouseClick(gl, Qt::LeftButton, {}, At(*s.menu, 5.2, 4.8));
    QCOMPARE(SelectedIDs(), std::vector<Long>{25});
    // A drag with control held is no shift: it replaces.
    Drag(gl, At(*s.menu, 9.5, 0.5), At(*s.menu, 10.5, -0.5),
         Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(SelectedIDs(), std::vector<Long>{43});
    // Plates in plate mode, by their centres.
    s.menu->mnuElements_Plate_Click();
    QCOMPARE(gSelection().SelectedCounter(), 0);
    Drag(gl, At(*s.menu, -1, 3.4), At(*s.menu, 11, 1.6));
    QCOMPARE(SelectedIDs(), (std::vector<Long>{2, 8, 14, 20, 26, 32}));
    // The coordinates under the pointer follow it in the select tool only.
    Move(gl, At(*s.menu, 2.5, 7.5));
    const QString x = s.menu->Panel("x")->text();
    QVERIFY2(x.startsWith("X: ") && std::abs(x.mid(3).toDouble() - 2.5) < 0.05, qPrintable(x));
    s.menu->mnuTranslate_Click();
    Move(gl, At(*s.menu, 2.5, 7.4));
    QCOMPARE(s.menu->Panel("x")->text(), QString());
    // A node beyond the 16-bit range: the release's trap, and the next
    // gesture works again.
    s.menu->mnuView_Selection_Click();
    s.menu->mnuElements_Load_Click();
    gMesh().Nodes().Item(3)->xcoord = 40000;
    s.host.messages.clear();
    QTest::mouseClick(gl, Qt::LeftButton, {}, At(*s.menu, 5, 5));
    QCOMPARE(s.host.Texts(), std::vector<std::string>{"Error..[Form_MouseUp]"});
    QCOMPARE(s.menu->MouseGesture().ButtonUp, 0L);
    gMesh().Nodes().Item(3)->xcoord = 0;
    QTest::mouseClick(gl, Qt::LeftButton, {}, At(*s.menu, 5, 5));
    QCOMPARE(SelectedIDs(), std::vector<Long>{25});
    QCOMPARE(s.menu->MouseGesture().ButtonUp, 1L);
  }

  // From a new session to the buckling load of the simply supported plate
  // example with nothing but the mouse and the dialogs.
  void aPlateBuiltByHandBucklesAsTheExample() {
    ShellSession s;
    GeneratePlate(*s.menu);
    QWidget* gl = s.menu->Surface();
    frmMenu& m = *s.menu;
    auto box = [&](double x0, double y0, double x1, double y1) {
      Drag(gl, At(m, x0, y0), At(m, x1, y1));
      return gSelection().SelectedCounter();
    };
    m.ToolButton("boundary")->trigger();
    QCOMPARE(box(-0.5, 10.5, 0.5, -0.5), 7); // x = 0: u and w
    QVERIFY(Restrain(m, {0, 2}));
    QCOMPARE(box(9.5, 10.5, 10.5, -0.5), 7); // x = 10: w
    QVERIFY(Restrain(m, {2}));
    QCOMPARE(box(0.8, 0.5, 9.2, -0.5), 5); // bottom and top between the corners: w
    QVERIFY(Restrain(m, {2}));
    QCOMPARE(box(0.8, 10.5, 9.2, 9.5), 5);
    QVERIFY(Restrain(m, {2}));
    QTest::mouseClick(gl, Qt::LeftButton, {}, At(m, 0.1, 0.2)); // the origin: u, v, w
    QCOMPARE(SelectedIDs(), std::vector<Long>{1});
    QVERIFY(Restrain(m, {0, 1, 2}));
    // A unit compression per length on x = 10: half shares at the corners.
    m.ToolButton("load")->trigger();
    QCOMPARE(box(9.5, 9.2, 10.5, 0.8), 5);
    QVERIFY(LoadX(m, "-1.666667"));
    QTest::mouseClick(gl, Qt::LeftButton, {}, At(m, 10, 0));
    QTest::mouseClick(gl, Qt::LeftButton, Qt::ShiftModifier, At(m, 10, 10));
    QCOMPARE(SelectedIDs(), (std::vector<Long>{43, 49}));
    QVERIFY(LoadX(m, "-0.8333333"));
    int restrained = 0;
    for (const auto& n : gMesh().Nodes())
      restrained += IsTrue(n->ZTDir());
    QCOMPARE(restrained, 24);
    s.host.messages.clear();
    QVERIFY(Answer([&] { m.Menu("mnuRun_Run")->trigger(); },
                   [&](QDialog* d) {
                     Type(d, "txtEstimation", "0");
                     Click(d, "cmdApply");
                   }));
    QCOMPARE(s.host.Texts(), std::vector<std::string>{"Eigenvalue of 3.7480E-02"});
  }

  void dragToolsMoveThePicture() {
    ShellSession s;
    GeneratePlate(*s.menu);
    QWidget* gl = s.menu->Surface();
    const int row = gl->height() / 2 + 30; // clear of the axes
    // At 200% the picture moves twice as far as the pointer.
    s.menu->mnuView_Zoom(2);
    s.menu->mnuTranslate_Click();
    Drag(gl, QPoint(100, row), QPoint(250, row)); // bring the left edge into sight
    const int before = LeftEdge(s.menu->Surface()->grabFramebuffer(), row);
    Drag(gl, QPoint(100, row), QPoint(130, row));
    QCOMPARE(gView().ViewY, 0.0);
    const int after = LeftEdge(s.menu->Surface()->grabFramebuffer(), row);
    QVERIFY2(std::abs(after - before - 60) <= 1,
             qPrintable(QString("%1 -> %2").arg(before).arg(after)));
    // A drag across the whole width turns by 90 degrees, and adds 100% to the zoom.
    s.menu->mnuRotateXY_Click();
    const QPoint left(0, row), right(gl->width(), row);
    Drag(gl, left, QPoint(gl->width() / 2, row));
    QVERIFY(std::abs(gView().ViewRX - 90.0 * (gl->width() / 2) / gl->width()) < 1e-4);
    s.menu->mnuView_ZoomIn_Click();
    Drag(gl, left, right);
    QCOMPARE(gView().ViewZoom, 3.0f);
    // Centre on a point of the model; a click on the background does nothing.
    s.menu->mnuView_ZoomAll_Click();
    s.menu->mnuView_Center_Click();
    QTest::mouseClick(gl, Qt::LeftButton, {}, QPoint(2, 2));
    QCOMPARE(gView().ViewX, 0.0);
    QTest::mouseClick(gl, Qt::LeftButton, {}, At(*s.menu, 2, 3));
    QVERIFY(std::abs(gView().ViewX - (gView().SLimitCX - 2)) < 0.2);
    QVERIFY(std::abs(gView().ViewY - (gView().SLimitCY - 3)) < 0.2);
  }
};

QTEST_MAIN(tst_picking)
#include "tst_picking.moc"
