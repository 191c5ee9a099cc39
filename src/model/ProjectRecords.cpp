#include "model/ProjectRecords.h"

#include "common/TextFile.h"

namespace velk {

void Store_Project1_4(FieldWriter& out, const Analysis& analysis, const BeamShape& shape,
                      Mesh& mesh, const Material& material) {
  analysis.StoreData1_4(out);
  shape.StoreData1_4(out);
  mesh.StoreData1_4(out);
  material.StoreData1_4(out);
}

bool Read_Project(FieldReader& in, float version, Analysis& analysis, BeamShape& shape, Mesh& mesh,
                  Material& material) {
  if (version == 1.3f) {
    analysis.ReadData(in);
    mesh.ReadData(in);
    material.ReadData(in);
    return true;
  }
  if (version == 1.4f) {
    analysis.ReadData1_4(in);
    shape.ReadData1_4(in);
    mesh.ReadData1_4(in);
    material.ReadData1_4(in);
    return true;
  }
  return false;
}

} // namespace velk
