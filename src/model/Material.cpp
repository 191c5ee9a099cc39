#include "model/Material.h"

#include "common/TextFile.h"

namespace velk {

void Material::ReadData1_4(FieldReader& in) {
  MOE = in.Single();
  PR = in.Single();
}

void Material::StoreData1_4(FieldWriter& out) const {
  out.Single(MOE);
  out.Single(PR);
  out.EndLine();
}

} // namespace velk
