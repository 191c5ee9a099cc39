#pragma once
// From girder parameters to a complete, numbered mesh: the one procedure that
// the girder dialog, the batch tool, the benchmarks and the tests build with.
#include "model/BeamShape.h"
#include "model/Mesh.h"

namespace velk {

// The depths of the grid at the two ends, between the flange centre lines:
// the first column runs from 0 up to H1, the last from B2 up to T2.
struct GirderEnds {
  Single H1 = 0, T2 = 0, B2 = 0;
  // Depth at End 2 over depth at End 1; a proportional grid is graded only
  // when this is not 1.
  Single Ratio() const;
};
GirderEnds Girder_Ends(const BeamShape& b);

// Fills an empty `mesh` with the grid of elementsX by elementsY plates, the
// stiffener segments, the web thickness on every plate and the flanges on the
// bottom and top rows of stiffeners (each tapered along the length and taken
// at the element's centre), then numbers it. A graded grid is used when
// b.ProportionalMesh is set and the two end depths differ.
void Build_Girder(const BeamShape& b, Long elementsX, Long elementsY, Mesh& mesh);

// The node at column ix (0 at End 1) and row iy (0 at the bottom) of the grid.
const std::shared_ptr<Nodeb>& Grid_Node(const Nodes& nodes, long ix, long iy);

} // namespace velk
