#pragma once
#include "common/TextRules.h"

#include <string>

namespace velk {

class FieldReader;
class FieldWriter;

// The last girder parameters: each section dimension at End 1 and, ending in E,
// at End 2.
struct BeamShape {
  Single Bot_Flange_T = 0.5f;
  Single Bot_Flange_W = 12.0f;
  Single Length = 120.0f;
  Single Top_Flange_T = 0.5f;
  Single Top_Flange_W = 12.0f;
  Single Web_H = 16.0f;
  Single Web_T = 0.5f;
  Single Bot_Flange_TE = 0.5f;
  Single Bot_Flange_WE = 12.0f;
  Single Top_Flange_TE = 0.5f;
  Single Top_Flange_WE = 12.0f;
  Single Web_HE = 16.0f;
  Single Web_TE = 0.5f;
  Single Offset = 0;
  Integer ProportionalMesh = 0;
  void ReadData1_4(FieldReader& in);
  void StoreData1_4(FieldWriter& out) const;
};

} // namespace velk
