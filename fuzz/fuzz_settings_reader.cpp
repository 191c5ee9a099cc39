// Reads any bytes as the settings file. The reader never fails: damaged fields
// give fallbacks. The options it leaves save to nine lines that read back to
// the same lines.
#include "session/VELKMain.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace velk;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Clear_Session();
  Read_Option_Data(std::string(reinterpret_cast<const char*>(data), size));
  std::string saved = Option_Data();
  Clear_Session();
  Read_Option_Data(saved);
  if (Option_Data() != saved) std::abort();
  return 0;
}
