// The Studies menu of the main window: what the batch tool does, brought into
// the window. Its commands live here, apart from the classic menus.
#include "shell/SupportsLoadsDialog.h"
#include "shell/frmMenu.h"

#include <QMenu>

namespace velk {

void frmMenu::BuildStudiesMenu() {
  QMenu* studies = AddTopMenu("mnuStudies", "Studies", 20300);
  AddMenu(studies, "mnuStudies_SupportsLoads", "Supports and Loads...",
          [this] { mnuStudies_SupportsLoads_Click(); })
      ->setData(20310);
}

void frmMenu::mnuStudies_SupportsLoads_Click() {
  Trap("Error..[Supports and Loads]", [this] {
    SupportsLoadsDialog dlg(this);
    dlg.exec();
  });
}

} // namespace velk
