#include "forms/GirderFields.h"

namespace velk {

const std::vector<GirderField>& Girder_Fields() {
  using F = frmBeamShape;
  static const std::vector<GirderField> fields = {
      {"txtBL", "Beam Length", &F::txtBL},
      {"txtBTFW", "Top Flange Width, End 1", &F::txtBTFW},
      {"txtBTFT", "Top Flange Thickness, End 1", &F::txtBTFT},
      {"txtBWH", "Web Height, End 1", &F::txtBWH},
      {"txtBWT", "Web Thickness, End 1", &F::txtBWT},
      {"txtBBFW", "Bottom Flange Width, End 1", &F::txtBBFW},
      {"txtBBFT", "Bottom Flange Thickness, End 1", &F::txtBBFT},
      {"txtBTFWE", "Top Flange Width, End 2", &F::txtBTFWE},
      {"txtBTFTE", "Top Flange Thickness, End 2", &F::txtBTFTE},
      {"txtBWHE", "Web Height, End 2", &F::txtBWHE},
      {"txtBWTE", "Web Thickness, End 2", &F::txtBWTE},
      {"txtBBFWE", "Bottom Flange Width, End 2", &F::txtBBFWE},
      {"txtBBFTE", "Bottom Flange Thickness, End 2", &F::txtBBFTE},
      {"txtOffset", "Offset Distance", &F::txtOffset},
      {"txtMOE", "Modulus of Elasticity", &F::txtMOE},
      {"txtPR", "Poisson Ratio", &F::txtPR},
      {"txtNumXElements", "Longitudinal Elements", &F::txtNumXElements},
      {"txtNumYElements", "Transverse Elements", &F::txtNumYElements}};
  return fields;
}

std::string Field_Label(const std::string& name) {
  for (const GirderField& f : Girder_Fields())
    if (name == f.name) return std::string(f.caption) + " (" + name + ")";
  return name;
}

} // namespace velk
