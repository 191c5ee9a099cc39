#include "session/ReportCommands.h"

#include "analysis/EigenCalculation.h"
#include "common/TextFile.h"
#include "reports/GridFile.h"
#include "reports/ReportFile.h"
#include "reports/VtuFile.h"
#include "session/ProjectFile.h"
#include "session/VELKMain.h"

namespace velk {

namespace {

void ReportFileStep(const std::string& path) {
  OutFile file(path);
  Write_Report_To(file, gAnalysis(), gMesh());
  file.Close();
}

void GridFileStep(const std::string& path) {
  OutFile file(path);
  Write_GridFile_To(file, gAnalysis(), gMesh().Nodes());
  file.Close();
}

void VtuFileStep(const std::string& path, const std::vector<ModeShape>& extraModes) {
  OutFile file(path);
  Write_Vtu_To(file, gMesh(), extraModes);
  file.Close();
}

// The reports share the common dialog with the project commands: its flags
// stay as the last command left them, and the name starts empty.
template <class Step> void SaveThroughDialog(const char* title, const char* filter, Step step) {
  FileDialog& d = session().cdlFile;
  Run_File_Command("File Error!", [&] {
    d.DialogTitle = title;
    d.Filter = filter;
    d.FilterIndex = 2;
    d.FileName.clear();
    if (!host().ShowSave(d)) Raise(errCancel);
    step(d.FileName);
  });
}

} // namespace

void Write_Report() {
  SaveThroughDialog("Save Report File As", kReportFilter, ReportFileStep);
}

void Write_GridFile() {
  SaveThroughDialog("Save Grid File As", kGridFilter, GridFileStep);
}

void Write_Vtu(const std::vector<ModeShape>& extraModes) {
  SaveThroughDialog("Export for ParaView", kVtuFilter,
                    [&](const std::string& path) { VtuFileStep(path, extraModes); });
}

std::vector<ModeShape> Further_Mode_Shapes() {
  std::vector<ModeShape> shapes = Node_Mode_Shapes(LastRunModes(), gMesh().Nodes());
  if (!shapes.empty()) shapes.erase(shapes.begin());
  return shapes;
}

bool Write_Report_Path(const std::string& path) {
  return Run_File_Command("File Error!", [&] { ReportFileStep(path); });
}

bool Write_GridFile_Path(const std::string& path) {
  return Run_File_Command("File Error!", [&] { GridFileStep(path); });
}

bool Write_Vtu_Path(const std::string& path, const std::vector<ModeShape>& extraModes) {
  return Run_File_Command("File Error!", [&] { VtuFileStep(path, extraModes); });
}

} // namespace velk
