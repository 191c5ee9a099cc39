#pragma once
// The small models the deck fuzzer runs against, built as a user would: the
// girder dialog for a flat 2 x 2 web, then restraints, loads and springs on its
// nodes. The seed decks in corpus/deck_reader are Write_Deck's output for them.
#include "forms/frmBeamShape.h"
#include "session/VELKMain.h"

#include <cstdlib>

namespace velk::fuzz {

inline Nodeb& GridNode(int ix, int iy) {
  Nodes& nodes = gMesh().Nodes();
  return *nodes.Item(static_cast<long>(ix) * nodes.NumberNodesY() + iy + 1);
}

// A 10 x 10 web, t 0.1, E 1000, nu 0.3, on 2 x 2 plates; u held along x = 0,
// v at the origin, w on all four sides, a load in -X along x = 10.
inline void Plain_Web() {
  frmBeamShape f;
  f.Form_Activate();
  f.txtBL = "10";
  f.txtBWH = f.txtBWHE = "10";
  f.txtBWT = f.txtBWTE = "0.1";
  f.txtBTFW = f.txtBTFT = f.txtBBFW = f.txtBBFT = "0";
  f.txtBTFWE = f.txtBTFTE = f.txtBBFWE = f.txtBBFTE = "0";
  f.txtOffset = "0";
  f.txtMOE = "1000";
  f.txtPR = "0.3";
  f.txtNumXElements = "2";
  f.txtNumYElements = "2";
  f.cmdGenerate_Click();
  if (!f.Unloaded) std::abort(); // the generator refused: no model to fuzz against
  for (int i = 0; i <= 2; ++i) {
    GridNode(0, i).SetXTDir(1);
    for (Nodeb* edge : {&GridNode(0, i), &GridNode(2, i), &GridNode(i, 0), &GridNode(i, 2)})
      edge->SetZTDir(1);
    GridNode(2, i).XLoad = i == 1 ? -5.0f : -2.5f;
  }
  GridNode(0, 0).SetYTDir(1);
  for (const auto& node : gMesh().Nodes())
    node->UpdatePropertyDefined();
}

// The same web with a line of stiffeners along y = 5, an in-plane spring with a
// prescribed value, and out-of-plane springs: every block of the deck present.
inline void Stiffened_Web() {
  Plain_Web();
  for (const auto& bar : gMesh().twoNodes()) {
    if (bar->Node1->ycoord != 5.0f || bar->Node2->ycoord != 5.0f) continue;
    bar->Thickness = 0.1f;
    bar->width = 1.0f;
    bar->UpdatePropertyDefined();
  }
  GridNode(2, 0).SetYTDir(1);
  GridNode(2, 0).YTDirValue = 0.001f;
  GridNode(1, 2).YTStiff = 50.0f;
  GridNode(1, 1).ZTStiff = 2.0f;
  GridNode(1, 1).XRStiff = 0.5f;
  for (const auto& node : gMesh().Nodes())
    node->UpdatePropertyDefined();
  gMesh().GeneratevID();
}

} // namespace velk::fuzz
