#pragma once
// The settings file velk1_4.ini: the run options of gAnalysis and the display
// options of gView, nine lines, no header.
#include <string>

namespace velk {

// With the file switched off (the batch tool), the
// options still survive New_Model: they go through memory instead.
std::string SettingsPath();
void SetOptionFileEnabled(bool enabled);
void Save_Option();
void Read_Option();
// The reading of Read_Option on text in memory, with the same fallbacks.
void Read_Option_Data(std::string data);
// The nine lines that Save_Option writes.
std::string Option_Data();

} // namespace velk
