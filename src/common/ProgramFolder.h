#pragma once
#include <string>

namespace velk {

// The program's own folder: settings, the temporary deck and listing, and help
// lie there. Set once at start from the executable's path; tests point it at a
// scratch folder.
const std::string& ProgramFolder();
void SetProgramFolder(const std::string& folder);
// The folder of the running executable (from /proc/self/exe), or "." if unknown.
std::string ExecutableFolder();
// The folder for files the program writes: the program's folder when it is
// writable, otherwise $XDG_CONFIG_HOME/velk (or ~/.config/velk), created on demand.
std::string WritableFolder();
std::string JoinPath(const std::string& folder, const std::string& name);

} // namespace velk
