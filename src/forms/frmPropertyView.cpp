#include "forms/frmPropertyView.h"

#include "common/TextFile.h"
#include "reports/PropertyTables.h"
#include "session/ProjectFile.h"
#include "session/VELKMain.h"

namespace velk {

void frmPropertyView::Show(int tab) {
  try {
    rtbProperty = Property_Table(tab, gMesh());
  } catch (const std::exception&) {
    MsgBox("Error..[Property View]");
  }
}

void frmPropertyView::Form_Load() {
  SSTab1 = PropertyTabs::Coordinate;
  Show(SSTab1);
}

void frmPropertyView::SSTab1_Click(int PreviousTab) {
  if (PreviousTab == SSTab1) return;
  Show(SSTab1);
}

void frmPropertyView::Command1_Click() {
  Run_File_Command("File Error!", [this] {
    FileDialog& d = CommonDialog1;
    d.DialogTitle = "Save As";
    d.Filter = "All Files (*.*)|*.*|Text Files|*.txt";
    d.FilterIndex = 2;
    d.Flags = FileDialog::cdlOFNOverwritePrompt | FileDialog::cdlOFNHideReadOnly;
    if (!host().ShowSave(d)) Raise(errCancel);
    OutFile file(d.FileName);
    file.Put(rtbProperty);
    file.Close();
  });
}

void frmPropertyView::Form_Unload() {
  Unloaded = true;
  if (OnUnload) OnUnload();
}

} // namespace velk
