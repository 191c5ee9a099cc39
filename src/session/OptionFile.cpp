#include "session/OptionFile.h"

#include "common/Fault.h"
#include "common/ProgramFolder.h"
#include "common/TextFile.h"
#include "session/VELKMain.h"
#include "view/View.h"

namespace velk {

namespace {
bool gFileEnabled = true;
std::string gInMemory; // the options while the file is switched off
} // namespace

std::string SettingsPath() {
  return JoinPath(WritableFolder(), "velk1_4.ini");
}

void SetOptionFileEnabled(bool enabled) {
  gFileEnabled = enabled;
  gInMemory.clear();
}

namespace {
void WriteOptions(OutFile& file) {
  FieldWriter out(file);
  gAnalysis().StoreData1_4Option(out);
  gView().StoreData1_4Option(out);
}
} // namespace

std::string Option_Data() {
  std::string data;
  OutFile sink(&data);
  WriteOptions(sink);
  return data;
}

void Read_Option_Data(std::string data) {
  FieldReader in(std::move(data));
  gAnalysis().ReadData1_4Option(in);
  gView().ReadData1_4Option(in);
}

void Save_Option() {
  try {
    gInMemory.clear();
    OutFile file = gFileEnabled ? OutFile(SettingsPath()) : OutFile(&gInMemory);
    WriteOptions(file);
    file.Close();
  } catch (const std::exception&) {
    MsgBox("Error: Saving INI file!");
  }
}

void Read_Option() {
  try {
    if (!gFileEnabled && gInMemory.empty()) return; // nothing saved yet: defaults stay
    Read_Option_Data(gFileEnabled ? ReadWholeFile(SettingsPath()) : gInMemory);
  } catch (const std::exception&) {
    MsgBox("Error: Reading INI file!");
  }
}

} // namespace velk
