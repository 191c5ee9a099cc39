#include "mesh/GirderBuilder.h"

namespace velk {

Single GirderEnds::Ratio() const {
  return static_cast<Single>((double(T2) - B2) / (double(H1) - 0));
}

GirderEnds Girder_Ends(const BeamShape& b) {
  GirderEnds e;
  e.H1 = static_cast<Single>(b.Top_Flange_T / 2.0 + b.Web_H + b.Bot_Flange_T / 2.0);
  // The offset lowers the underside of the top flange at End 2.
  e.T2 =
      static_cast<Single>((double(e.H1) - b.Offset) - b.Top_Flange_T / 2.0 + b.Top_Flange_TE / 2.0);
  e.B2 = static_cast<Single>(e.T2 - b.Top_Flange_TE / 2.0 - b.Web_HE - b.Bot_Flange_TE / 2.0);
  return e;
}

void Build_Girder(const BeamShape& b, Long elementsX, Long elementsY, Mesh& mesh) {
  const Long NX = elementsX + 1;
  const Long NY = elementsY + 1;
  const GirderEnds e = Girder_Ends(b);

  Nodes& nodes = mesh.Nodes();
  nodes.SetNumberNodesX(static_cast<Integer>(NX));
  nodes.SetNumberNodesY(static_cast<Integer>(NY));
  if (b.ProportionalMesh && e.Ratio() != 1.0f)
    nodes.GenerateProportional(0, 0, 0, e.H1, b.Length, e.B2, b.Length, e.T2, NX, NY);
  else
    nodes.Generate(0, 0, 0, e.H1, b.Length, e.B2, b.Length, e.T2, NX, NY);

  twoNodes& stiffeners = mesh.twoNodes();
  fourNodes& plates = mesh.fourNodes();
  stiffeners.Generate(nodes);
  plates.Generate(nodes);
  stiffeners.GenerateCP();
  plates.GenerateCP();

  // Sections vary linearly along the length, taken at each element's centre.
  auto taper = [&](Single S, Single E, Single c) {
    return static_cast<Single>(((double(E) - S) / b.Length) * c + S);
  };
  auto flange = [&](long first, long last, Single T, Single TE, Single W, Single WE) {
    for (long i = first; i <= last; ++i) {
      twoNode& s = *stiffeners.Item(i);
      s.Thickness = taper(T, TE, s.CPX);
      s.width = taper(W, WE, s.CPX);
      s.UpdatePropertyDefined();
    }
  };
  // The longitudinal segments come row by row from the bottom.
  flange(1, NX - 1, b.Bot_Flange_T, b.Bot_Flange_TE, b.Bot_Flange_W, b.Bot_Flange_WE);
  flange((NX - 1) * (NY - 1) + 1, (NX - 1) * NY, b.Top_Flange_T, b.Top_Flange_TE, b.Top_Flange_W,
         b.Top_Flange_WE);
  for (const auto& p : plates) {
    p->Thickness = taper(b.Web_T, b.Web_TE, p->CPX);
    p->UpdatePropertyDefined();
  }
  plates.UpdateMaxThickness();
  mesh.GeneratevID();
}

const std::shared_ptr<Nodeb>& Grid_Node(const Nodes& nodes, long ix, long iy) {
  return nodes.Item(ix * nodes.NumberNodesY() + iy + 1);
}

} // namespace velk
