// The Studies menu of the main window: what the batch tool does, brought into
// the window. Its commands live here, apart from the classic menus.
#include "shell/SupportsLoadsDialog.h"
#include "shell/frmMenu.h"
#include "session/ReportCommands.h"
#include "session/VELKMain.h"

#include <QMenu>

namespace velk {

void frmMenu::BuildStudiesMenu() {
  QMenu* studies = AddTopMenu("mnuStudies", "Studies", 20300);
  AddMenu(studies, "mnuStudies_SupportsLoads", "Supports and Loads...",
          [this] { mnuStudies_SupportsLoads_Click(); })
      ->setData(20310);
  AddMenu(studies, "mnuStudies_Modes", "Buckling Modes...", [this] { mnuStudies_Modes_Click(); })
      ->setData(20320);
  AddMenu(studies, "mnuStudies_Export", "Export for ParaView...",
          [this] { mnuStudies_Export_Click(); })
      ->setData(20330);
  AddMenu(studies, "mnuStudies_Sweep", "Parameter Sweep...", [this] { mnuStudies_Sweep_Click(); })
      ->setData(20340);
}

void frmMenu::mnuStudies_Sweep_Click() {
  Trap("Error..[Parameter Sweep]", [this] {
    if (!sweep_) {
      sweep_ = new SweepWindow(this);
      sweep_->setAttribute(Qt::WA_DeleteOnClose);
    }
    sweep_->show();
    sweep_->raise();
  });
}

// The model with its results, and every mode the last run sought.
void frmMenu::mnuStudies_Export_Click() {
  Trap("Error..[Export]", [] { Write_Vtu(Further_Mode_Shapes()); });
}

// One window, kept while it is open; Show Buckled Shape follows the mode it draws.
void frmMenu::mnuStudies_Modes_Click() {
  Trap("Error..[Buckling Modes]", [this] {
    if (!modes_) {
      modes_ = new BucklingModesWindow(this);
      modes_->setAttribute(Qt::WA_DeleteOnClose);
      modes_->OnShown = [this] {
        menus_["mnuResult_Show"]->setChecked(IsTrue(gView().OptionShowResult));
        Paint();
      };
    }
    modes_->show();
    modes_->raise();
  });
}

void frmMenu::mnuStudies_SupportsLoads_Click() {
  Trap("Error..[Supports and Loads]", [this] {
    SupportsLoadsDialog dlg(this);
    dlg.exec();
  });
}

} // namespace velk
