// Reads any bytes as a project file, as File Open does, then works on whatever
// model the reader left: numbering, centre points and saving must not fail
// other than by a fault. A model read whole saves to a text that reads back to
// the same text.
#include "common/Fault.h"
#include "session/ProjectFile.h"
#include "session/VELKMain.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

using namespace velk;

namespace {

// Every node carries its own position as its number, so the element records
// written from this model point at the nodes they were read with.
bool NodeNumbersArePositions() {
  long position = 0;
  for (const auto& n : gMesh().Nodes())
    if (n->ID != ++position) return false;
  return true;
}

void WorkOnTheModel() {
  Mesh& m = gMesh();
  m.twoNodes().GenerateCP();
  m.fourNodes().GenerateCP();
  m.fourNodes().UpdateMaxThickness();
  m.Nodes().GeneratevID(m.twoNodes(), m.fourNodes());
  try {
    // Numbers from the file may point anywhere; that is a fault, not a crash.
    m.Nodes().GenerateUvID();
    m.twoNodes().GenerateUvID();
    m.fourNodes().GenerateUvID();
  } catch (const Fault&) {
  }
  Single mx = 0, mn = 0;
  for (Integer opt = 0; opt < 4; ++opt)
    m.Nodes().Calculate_MaxMinStress(mx, mn, opt);
  m.twoNodes().Calculate_MaxMinStress(mx, mn, 0);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  SetOptionFileEnabled(false); // New_Model keeps the options in memory
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Clear_Session();
  std::string text(reinterpret_cast<const char*>(data), size);
  bool read = false;
  try {
    read = Open_Project_Data(text, "fuzz.inp");
  } catch (const Fault&) {
  }
  // Whatever was read stays in the model and must be usable.
  std::string saved = Project_Data();
  WorkOnTheModel();
  if (!read || !NodeNumbersArePositions()) return 0;

  saved = Project_Data();
  bool again = false;
  try {
    again = Open_Project_Data(saved, "fuzz.inp");
  } catch (const Fault&) {
    std::abort(); // a saved model must read back
  }
  if (!again || Project_Data() != saved) std::abort();
  return 0;
}
