#include "model/BeamShape.h"

#include "common/TextFile.h"

namespace velk {

void BeamShape::ReadData1_4(FieldReader& in) {
  Bot_Flange_T = in.Single();
  Bot_Flange_W = in.Single();
  Length = in.Single();
  Top_Flange_T = in.Single();
  Top_Flange_W = in.Single();
  Web_H = in.Single();
  Web_T = in.Single();
  Bot_Flange_TE = in.Single();
  Bot_Flange_WE = in.Single();
  Top_Flange_TE = in.Single();
  Top_Flange_WE = in.Single();
  Web_HE = in.Single();
  Web_TE = in.Single();
  Offset = in.Single();
  ProportionalMesh = in.Integer();
}

void BeamShape::StoreData1_4(FieldWriter& out) const {
  for (Single v : {Bot_Flange_T, Bot_Flange_W, Length, Top_Flange_T, Top_Flange_W, Web_H, Web_T})
    out.Single(v);
  out.EndLine();
  for (Single v :
       {Bot_Flange_TE, Bot_Flange_WE, Top_Flange_TE, Top_Flange_WE, Web_HE, Web_TE, Offset})
    out.Single(v);
  out.Integer(ProportionalMesh);
  out.EndLine();
}

} // namespace velk
