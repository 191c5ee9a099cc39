// The report windows under a real display: the bitmap box against the frame,
// the property table printed to a PDF, and the clip bounds on the frame.
#include "ShellFixture.h"

#include "session/ProjectFile.h"
#include "shell/ClipDialog.h"
#include "shell/PropertyViewWindow.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QtTest>
#include <QtWidgets>
#include <functional>

using namespace velk;
using namespace velk::test;

namespace {

bool IsWhite(const QColor& c) {
  return c == QColor(255, 255, 255);
}

} // namespace

class tst_reports : public QObject {
  Q_OBJECT
private slots:
  // The box's pixels as the frame shows them, the box one pixel wider and its
  // lower edge turned into GL rows by H - y + 1; a box with no height writes nothing.
  void bitmapBoxHoldsTheFramesPixels() {
    ShellSession s;
    QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp"));
    const QImage frame = s.menu->Surface()->grabFramebuffer();
    const QString path = QDir(s.dir.path()).filePath("box.bmp");
    s.host.saveAnswers = {path.toStdString()};
    const QPoint centre = CameraPoint(frame.size(), 5, 5); // the plate's middle
    const int left = centre.x() - 50, top = centre.y() - 30;
    // Dragged with the bitmap tool from bottom right to top left.
    s.menu->mnuCreate_BMP_Click();
    QWidget* gl = s.menu->Surface();
    QTest::mousePress(gl, Qt::LeftButton, {}, QPoint(left + 100, top + 60));
    QMouseEvent move(QEvent::MouseMove, QPointF(left + 50, top + 30),
                     gl->mapToGlobal(QPointF(left + 50, top + 30)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(gl, &move);
    QTest::mouseRelease(gl, Qt::LeftButton, {}, QPoint(left, top));
    QCOMPARE(s.host.dialogsShown.back().DialogTitle, std::string("Save Bitmap"));
    const QImage box(path);
    QCOMPARE(box.size(), QSize(101, 60));
    int marked = 0;
    for (int r = 0; r < box.height(); ++r)
      for (int c = 0; c < box.width(); ++c) {
        QCOMPARE(box.pixelColor(c, r), frame.pixelColor(left + c, top - 1 + r));
        marked += !IsWhite(box.pixelColor(c, r));
      }
    QVERIFY(marked > 100);
    s.host.dialogsShown.clear();
    QTest::mousePress(gl, Qt::LeftButton, {}, QPoint(40, 30));
    QTest::mouseRelease(gl, Qt::LeftButton, {}, QPoint(90, 30));
    QVERIFY(s.host.dialogsShown.empty());
    s.host.saveAnswers = {QDir(s.dir.path()).filePath("no/such/box.bmp").toStdString()};
    s.host.messages.clear();
    s.menu->BitmapBox(40, 30, 90, 60);
    QCOMPARE(s.host.Texts(), std::vector<std::string>{"Error: Saving Operation Failed!"});
  }

  // The tool bar button opens the table beside the window, pressed and
  // checked; Print to a PDF file gives the coordinates on paper; the close
  // box releases both.
  void propertyTablePrintsToPdf() {
    ShellSession s;
    QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp"));
    s.menu->Toolbar1_ButtonClick("property");
    PropertyViewWindow* table = s.menu->PropertyView();
    QVERIFY(table && table->isVisible() && !table->isModal());
    QVERIFY(s.menu->ToolButton("property")->isChecked() &&
            s.menu->Menu("mnuProperty_ShowProperty")->isChecked());
    QVERIFY(QFontInfo(table->Text()->font()).fixedPitch());
    QCOMPARE(table->Tabs()->currentIndex(), 2);
    const std::string row = "00049     1.00E+01     1.00E+01";
    QVERIFY(table->Text()->toPlainText().contains(QString::fromStdString(row)));

    const QString pdf = QDir(s.dir.path()).filePath("table.pdf");
    const auto print = WhenModal([pdf](QDialog* w) {
      auto* dialog = qobject_cast<QPrintDialog*>(w);
      if (!dialog) return;
      if (auto* name = dialog->findChild<QLineEdit*>("filename")) name->setText(pdf);
      dialog->printer()->setOutputFileName(pdf);
      dialog->accept();
    });
    table->Command2_Click();
    QVERIFY(QFileInfo(pdf).size() > 0);
    QProcess text;
    text.start("pdftotext", {"-layout", pdf, "-"});
    QVERIFY(text.waitForFinished(10000));
    const QString printed = QString::fromUtf8(text.readAllStandardOutput()).simplified();
    QVERIFY2(printed.contains(QString::fromStdString(row).simplified()), qPrintable(printed));

    table->close();
    QVERIFY(!s.menu->ToolButton("property")->isChecked() &&
            !s.menu->Menu("mnuProperty_ShowProperty")->isChecked());
    QTRY_VERIFY(!s.menu->PropertyView());
  }

  // The To slider of x moved to the middle of the plate: the right half of
  // the frame is white and the left half still shows the plate. Bounds that
  // leave nothing draw an empty frame.
  void clipBoundCutsTheFrame() {
    ShellSession s;
    QVERIFY(Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp"));
    auto pixel = [&](double x, double y) {
      const QImage img = s.menu->Surface()->grabFramebuffer();
      return img.pixelColor(CameraPoint(img.size(), x, y));
    };
    QVERIFY(!IsWhite(pixel(7.5, 2.5)));
    const auto close = WhenModal([](QDialog* w) {
      auto* clip = qobject_cast<ClipDialog*>(w);
      if (!clip) return;
      clip->Slider("sldHEnd")->setValue(5);
      clip->findChild<QPushButton*>("cmdClose")->click();
    });
    s.menu->mnuView_Clip_Click();
    QCOMPARE(gView().HClipTo, 5.0f);
    QVERIFY(IsWhite(pixel(7.5, 2.5)));
    QVERIFY(IsWhite(pixel(9.5, 7.5)));
    QVERIFY(!IsWhite(pixel(2.5, 2.5)));
    s.host.messages.clear();
    gView().SetUpClipEq(20, 30, 20, 30);
    const QImage empty = s.menu->Surface()->grabFramebuffer();
    int marked = 0;
    for (int r = 0; r < empty.height(); ++r)
      for (int c = 0; c < empty.width(); ++c)
        marked += !IsWhite(empty.pixelColor(c, r));
    QCOMPARE(marked, 0);
    QVERIFY(s.host.messages.empty());
  }
};

QTEST_MAIN(tst_reports)
#include "tst_reports.moc"
