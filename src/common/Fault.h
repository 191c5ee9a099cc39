#pragma once
// Run-time faults with their classic numbers. Every command and form handler
// catches Fault and shows its own trap text; File_Errors reads the number.
#include <stdexcept>
#include <string>

namespace velk {

enum FaultNumber : int {
  errInvalidCall = 5,
  errOverflow = 6,
  errOutOfMemory = 7,
  errSubscript = 9,
  errDivByZero = 11,
  errTypeMismatch = 13,
  errBadFileName = 52,
  errFileNotFound = 53,
  errBadFileMode = 54,
  errFileAlreadyOpen = 55,
  errDeviceIO = 57,
  errDiskFull = 61,
  errInputPastEnd = 62,
  errBadFileNameOrNumber = 64,
  errDeviceUnavailable = 68,
  errPermissionDenied = 70,
  errDiskNotReady = 71,
  errPathFileAccess = 75,
  errPathNotFound = 76,
  errObjectNotSet = 91,
  errDuplicateKey = 457,
  errCancel = 32755,
};

class Fault : public std::runtime_error {
public:
  explicit Fault(int number, const std::string& what = {})
      : std::runtime_error(what.empty() ? "run-time fault " + std::to_string(number) : what),
        number_(number) {}
  int number() const { return number_; }

private:
  int number_;
};

[[noreturn]] inline void Raise(int number, const std::string& what = {}) {
  throw Fault(number, what);
}

} // namespace velk
