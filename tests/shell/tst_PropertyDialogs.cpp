// The property dialogs and the coordinate dialog under a real display: Set
// Property opens the dialog of the edit mode, keys typed into a field reach
// the model through Apply.
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

// A missing widget is left out, and the comparisons after the dialog tell.
void Type(QDialog* dlg, const QString& field, const QString& text) {
  if (auto* e = dlg->findChild<QLineEdit*>(field)) {
    QTest::keyClick(e, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(e, text);
  }
}

void Click(QDialog* dlg, const QString& name) {
  if (auto* b = dlg->findChild<QAbstractButton*>(name)) QTest::mouseClick(b, Qt::LeftButton);
}

} // namespace

class tst_PropertyDialogs : public QObject {
  Q_OBJECT
private slots:
  void setPropertyOpensTheDialogOfTheModeAndApplies_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("seen");     // title, fixed labels and the help page
    QTest::addColumn<QStringList>("keys"); // a box to click, a field and its text
    QTest::addColumn<float>("value");
    QTest::newRow("plate") << 1 << "Plate: Thickness plate.html"
                           << QStringList{"", "txtthick", "0.75", "cmdApply"} << 0.75f;
    QTest::newRow("stiffener") << 2 << "Stiffener: Width Thickness stiffener.html"
                               << QStringList{"", "txtWidth", "2", "cmdApply"} << 2.0f;
    QTest::newRow("boundary") << 3 << "Boundary Condition: 0 0 0 boundary.html"
                              << QStringList{"Check1_0", "txtX", "0.5", "Command1"} << 0.5f;
    QTest::newRow("brace") << 4
                           << "Brace: Direction Stiffness X Direction Y Direction Z Direction "
                              "Rotation about X Rotation about Y brace.html"
                           << QStringList{"", "txtZ", "7", "Command1"} << 7.0f;
    QTest::newRow("load") << 5 << "Load: Load in X Dir. Load in Y Dir. load.html"
                          << QStringList{"", "txtLoadY", "-4", "cmdApply"} << -4.0f;
  }
  void setPropertyOpensTheDialogOfTheModeAndApplies() {
    QFETCH(int, mode);
    QFETCH(QString, seen);
    QFETCH(QStringList, keys);
    QFETCH(float, value);
    ShellSession s;
    Build_Girder(BeamShape{}, 14, 3, gMesh()); // web 0.5, no inner stiffener
    gView().PropertyMode = mode;
    const auto bar = gMesh().twoNodes().Item(1); // of the bottom flange
    const auto plate = gMesh().fourNodes().Item(4);
    const auto node = gMesh().Nodes().Item(6);
    const std::function<float()> changed[] = {
        [&] { return plate->Thickness; }, [&] { return bar->width; },
        [&] { return node->XTDirValue; }, [&] { return node->ZTStiff; },
        [&] { return node->YLoad; }};
    bool opened = false;
    {
      const auto stray = WhenModal([&opened](QDialog*) { opened = true; });
      s.menu->mnuProperty_SetProperty_Click(); // nothing selected: no dialog
    }
    QVERIFY(!opened);
    gSelection().AddObject(mode == 1   ? MeshObject(plate)
                           : mode == 2 ? MeshObject(bar)
                                       : MeshObject(node));
    s.host.messages.clear(); // the settings file the start missed
    QString shown;
    const auto watch = WhenModal([&](QDialog* dlg) {
      shown = dlg->windowTitle() + ":";
      for (auto* l : dlg->findChildren<QLabel*>())
        shown += " " + l->text();
      shown += " " + HelpWindow::PageFor(dlg->property("helpContext").toInt());
      if (!keys[0].isEmpty()) Click(dlg, keys[0]);
      Type(dlg, keys[1], keys[2]);
      Click(dlg, keys[3]);
    });
    s.menu->mnuProperty_SetProperty_Click();
    QCOMPARE(shown, seen);
    QCOMPARE(s.host.Texts(), std::vector<std::string>{});
    QCOMPARE(changed[mode - 1](), value);
    QCOMPARE(gSelection().SelectedCounter(), 1); // the dialogs keep the selection
  }

  void coordinateDialogOpensOnTheNodeAndMovesIt() {
    ShellSession s;
    Build_Girder(BeamShape{}, 14, 3, gMesh());
    const std::shared_ptr<Nodeb> node = gMesh().Nodes().Item(6);
    gSelection().AddObject(node);
    QStringList seen;
    const auto watch = WhenModal([&](QDialog* dlg) {
      seen << dlg->windowTitle() << dlg->findChild<QLabel*>("lblNode")->text()
           << HelpWindow::PageFor(dlg->property("helpContext").toInt());
      Type(dlg, "txtX", "3");
      Click(dlg, "cmdApply");
      seen << QString::number(dlg->findChild<QPushButton*>("cmdUndo")->isEnabled());
    });
    s.menu->ShowCoordDialog();
    QCOMPARE(seen, (QStringList{"Nodal Coordinates", QString("Node: %1").arg(node->vID),
                                "coordinates.html", "1"}));
    QCOMPARE(node->xcoord, 3.0f);
  }
};

int main(int argc, char** argv) {
  GLView::SetDefaultFormat();
  QApplication app(argc, argv);
  tst_PropertyDialogs t;
  return QTest::qExec(&t, argc, argv);
}

#include "tst_PropertyDialogs.moc"
