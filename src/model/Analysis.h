#pragma once
#include "common/TextRules.h"

#include <string>

namespace velk {

class FieldReader;
class FieldWriter;

// Identity, options and result of a run.
struct Analysis {
  std::string Title = "No Title";
  // "Discription" is the program's own spelling, in files and on screen: keep it.
  std::string Discription = "No Discription";
  std::string RunID = "0";
  Single EigenValueEstimation = 0;
  Single EigenValue = 0;
  Integer MaxShift = 3;
  Integer MaxCycle = 8;
  Single ShiftFactor = 0.8f;
  Boolean IGSTF = vbFalse;
  Boolean ISHEAR = vbFalse;
  Integer OutputOption = 1;
  Integer OptionInitialB = 0;

  void ReadData(FieldReader& in) { ReadData1_4(in); }
  void ReadData1_4(FieldReader& in);
  void StoreData1_4(FieldWriter& out) const;
  // The run options in the settings file; a failure gives every option its fallback.
  void ReadData1_4Option(FieldReader& in);
  void StoreData1_4Option(FieldWriter& out) const;
};

} // namespace velk
