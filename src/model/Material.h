#pragma once
#include "common/TextRules.h"

#include <string>

namespace velk {

class FieldReader;
class FieldWriter;

// The one isotropic material of the model.
struct Material {
  Single MOE = 29000.0f;
  Single PR = 0.3f;
  void ReadData(FieldReader& in) { ReadData1_4(in); }
  void ReadData1_4(FieldReader& in);
  void StoreData1_4(FieldWriter& out) const;
};

} // namespace velk
