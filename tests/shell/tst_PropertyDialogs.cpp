// The property dialogs and the coordinate dialog under a real display: Set
// Property opens the dialog of the edit mode on a one-item selection, keys
// typed into a field reach the model through Apply.
#include "ShellFixture.h"

#include "editing/Selection.h"
#include "mesh/GirderBuilder.h"
#include "shell/CoordDialog.h"
#include "shell/PropertyDialogs.h"

#include <QtTest>
#include <QtWidgets>

using namespace velk;
using namespace velk::test;

namespace {

// Answers the next modal dialog once it is up; one the answer leaves open is
// closed, so that a failed Apply cannot hang the test. Watches while the
// returned timer lives.
std::unique_ptr<QTimer> WhenModal(std::function<void(QDialog*)> answer) {
  auto timer = std::make_unique<QTimer>();
  QObject::connect(timer.get(), &QTimer::timeout, [t = timer.get(), answer] {
    auto* dlg = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dlg || !dlg->isVisible()) return;
    t->stop();
    answer(dlg);
    if (dlg->isVisible()) dlg->reject();
  });
  timer->start(10);
  return timer;
}

void Type(QDialog* dlg, const char* field, const char* text) {
  auto* e = dlg->findChild<QLineEdit*>(field);
  QVERIFY2(e, field);
  e->setFocus();
  QTest::keyClick(e, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(e, text);
}

void Click(QDialog* dlg, const char* name) {
  auto* b = dlg->findChild<QAbstractButton*>(name);
  QVERIFY2(b, name);
  QTest::mouseClick(b, Qt::LeftButton);
}

// The fixed texts of a dialog, in the order of its children.
QStringList Labels(QDialog* dlg) {
  QStringList texts;
  for (auto* l : dlg->findChildren<QLabel*>())
    texts << l->text();
  return texts;
}

} // namespace

class tst_PropertyDialogs : public QObject {
  Q_OBJECT
private slots:
  void setPropertyOpensTheDialogOfTheModeAndApplies_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("typed"); // field, text, field, text ...
    QTest::addColumn<QString>("check");     // a box to click first, or none
    QTest::addColumn<QString>("apply");
    QTest::addColumn<QString>("labels");
    QTest::newRow("plate") << 1 << "Plate" << QStringList{"txtthick", "0.75"} << "" << "cmdApply"
                           << "Thickness";
    QTest::newRow("stiffener") << 2 << "Stiffener"
                               << QStringList{"txtWidth", "2", "txtthick", "0.25"} << ""
                               << "cmdApply" << "Width Thickness";
    QTest::newRow("boundary") << 3 << "Boundary Condition" << QStringList{"txtX", "0.5"}
                              << "Check1_0" << "Command1" << "0 0 0";
    QTest::newRow("brace") << 4 << "Brace" << QStringList{"txtZ", "7"} << "" << "Command1"
                           << "Direction Stiffness X Direction Y Direction Z Direction "
                              "Rotation about X Rotation about Y";
    QTest::newRow("load") << 5 << "Load" << QStringList{"txtLoadY", "-4"} << "" << "cmdApply"
                          << "Load in X Dir. Load in Y Dir.";
  }
  void setPropertyOpensTheDialogOfTheModeAndApplies() {
    QFETCH(int, mode);
    QFETCH(QString, title);
    QFETCH(QStringList, typed);
    QFETCH(QString, check);
    QFETCH(QString, apply);
    QFETCH(QString, labels);
    ShellSession s;
    Build_Girder(BeamShape{}, 14, 3, gMesh()); // web 0.5, no inner stiffener
    const std::function<void()> modes[] = {
        [&] { s.menu->mnuElements_Plate_Click(); }, [&] { s.menu->mnuElements_Stiffener_Click(); },
        [&] { s.menu->mnuElements_Boundary_Click(); }, [&] { s.menu->mnuElements_Brace_Click(); },
        [&] { s.menu->mnuElements_Load_Click(); }};
    modes[mode - 1]();
    Mesh& m = gMesh();
    const std::shared_ptr<twoNode> bar = m.twoNodes().Item(20); // an inner, undefined segment
    const std::shared_ptr<fourNode> plate = m.fourNodes().Item(4);
    const std::shared_ptr<Nodeb> node = m.Nodes().Item(6);
    if (mode == 1) gSelection().AddObject(plate);
    else if (mode == 2) gSelection().AddObject(bar);
    else gSelection().AddObject(node);

    s.host.messages.clear(); // the settings file the start missed
    QString seen;
    const auto watch = WhenModal([&](QDialog* dlg) {
      seen = dlg->windowTitle() + ": " + Labels(dlg).join(" ");
      if (!check.isEmpty()) Click(dlg, qPrintable(check));
      for (int i = 0; i + 1 < typed.size(); i += 2)
        Type(dlg, qPrintable(typed[i]), qPrintable(typed[i + 1]));
      Click(dlg, qPrintable(apply));
    });
    s.menu->mnuProperty_SetProperty_Click();
    QCOMPARE(seen, title + ": " + labels);
    QCOMPARE(s.host.Texts(), std::vector<std::string>{});
    switch (mode) {
    case 1:
      QCOMPARE(plate->Thickness, 0.75f);
      QCOMPARE(m.fourNodes().MaxThickness(), 0.75f);
      break;
    case 2:
      QCOMPARE(bar->width, 2.0f);
      QCOMPARE(bar->Thickness, 0.25f);
      QVERIFY(bar->vID > 0);
      break;
    case 3:
      QCOMPARE(node->XTDir(), vbTrue);
      QCOMPARE(node->XTDirValue, 0.5f);
      QCOMPARE(node->YTDir(), vbFalse);
      break;
    case 4: QCOMPARE(node->ZTStiff, 7.0f); break;
    case 5:
      QCOMPARE(node->YLoad, -4.0f);
      QCOMPARE(node->XLoad, 0.0f);
      break;
    }
    QCOMPARE(gSelection().SelectedCounter(), 1); // the dialogs keep the selection
  }

  // Nothing selected: no dialog. Each dialog's F1 page is shipped.
  void emptySelectionOpensNothingAndEveryDialogHasItsHelp() {
    ShellSession s;
    Build_Girder(BeamShape{}, 14, 3, gMesh());
    bool opened = false;
    const auto watch = WhenModal([&](QDialog*) { opened = true; });
    s.menu->mnuProperty_SetProperty_Click();
    QTest::qWait(50);
    QVERIFY(!opened);
    for (Long mode = 1; mode <= 5; ++mode) {
      const auto dlg = NewPropertyDialog(mode, s.menu.get());
      const QString page = HelpWindow::PageFor(dlg->property("helpContext").toInt());
      QVERIFY2(page != "index.html" && QFile::exists(":/help/" + page), qPrintable(page));
    }
    CoordDialog coord(gMesh().Nodes().Item(1), s.menu.get());
    QCOMPARE(HelpWindow::PageFor(coord.property("helpContext").toInt()), QString("coordinates.html"));
  }

  void coordinateDialogAppliesAndUndoes() {
    ShellSession s;
    Build_Girder(BeamShape{}, 14, 3, gMesh());
    const std::shared_ptr<Nodeb> node = gMesh().Nodes().Item(6); // column 1, row 1
    const Single x0 = node->xcoord, y0 = node->ycoord;
    gSelection().AddObject(node);
    QString label;
    bool undoAfterApply = false, undoAfterUndo = true;
    Single xApplied = 0;
    const auto watch = WhenModal([&](QDialog* dlg) {
      label = dlg->windowTitle() + " " + dlg->findChild<QLabel*>("lblNode")->text();
      Type(dlg, "txtX", "3");
      Click(dlg, "cmdApply");
      xApplied = node->xcoord;
      undoAfterApply = dlg->findChild<QPushButton*>("cmdUndo")->isEnabled();
      Click(dlg, "cmdUndo");
      undoAfterUndo = dlg->findChild<QPushButton*>("cmdUndo")->isEnabled();
      Click(dlg, "cmdClose");
    });
    s.menu->ShowCoordDialog();
    QCOMPARE(label, QString("Nodal Coordinates Node: %1").arg(node->vID));
    QCOMPARE(xApplied, 3.0f);
    QVERIFY(undoAfterApply && !undoAfterUndo);
    QCOMPARE(node->xcoord, x0);
    QCOMPARE(node->ycoord, y0);
  }
};

int main(int argc, char** argv) {
  GLView::SetDefaultFormat();
  QApplication app(argc, argv);
  tst_PropertyDialogs t;
  return QTest::qExec(&t, argc, argv);
}

#include "tst_PropertyDialogs.moc"
