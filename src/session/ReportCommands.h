#pragma once
// The report and the displacement grid of the session's model: the commands
// with their save dialogs, and the same without a dialog for a build without
// windows. Failures go the way of every file command ("File Error!").
#include <string>
#include <vector>

#include "reports/VtuFile.h"

namespace velk {

void Write_Report();
void Write_GridFile();

// True when the file has been written; false after the messages of a failure.
bool Write_Report_Path(const std::string& path);
bool Write_GridFile_Path(const std::string& path);
// The model and its results as a VTK unstructured grid for outside viewers,
// with further mode shapes (by node position) after the model's own.
bool Write_Vtu_Path(const std::string& path, const std::vector<ModeShape>& extraModes = {});
// The same through a save dialog ("Export for ParaView").
void Write_Vtu(const std::vector<ModeShape>& extraModes);

// Modes 2, 3... of the last run, when it sought further modes, by node
// position: what an export adds after the model's own mode.
std::vector<ModeShape> Further_Mode_Shapes();

} // namespace velk
