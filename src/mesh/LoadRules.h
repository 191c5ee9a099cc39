#pragma once
// Supports and loads put on a generated girder or plate by rule, written into
// the nodes as the boundary and load dialogs would write them by hand. Axes:
// x along the girder, y up the web, z out of its plane. Every rule checks the
// model first and refuses with RuleRefused before it writes anything; loads
// add to what the nodes already carry, so rules combine.
#include <stdexcept>

#include "model/BeamShape.h"
#include "model/Mesh.h"

namespace velk {

// A rule that does not fit the model; its text says why, and no node was
// touched.
class RuleRefused : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

// Fork supports: Z held at every node of both end columns (lateral movement
// and twist), no rotation held (warping free); in the plane Y at the bottom
// node of both ends and X at the bottom node of End 1.
void Apply_Fork_Supports(Mesh& mesh, const BeamShape& b);

// A simply supported plate without flanges: Z held on all four edges; in the
// plane X at the corner (0, 0) and Y there and at the bottom corner of End 2,
// which stops rigid-body motion and nothing else.
void Apply_Simple_Supports(Mesh& mesh, const BeamShape& b);

// Equal and opposite end moments M: the linear stress M (y - yc) / I of each
// end section as X forces on its end column, the top in compression for a
// positive M.
void Apply_End_Moment(Mesh& mesh, const BeamShape& b, double M);

// Uniform compression P over both end sections, P / A the same way.
void Apply_Axial_Load(Mesh& mesh, const BeamShape& b, double P);

// A load P downward at the top node of the column at mid-length.
void Apply_Point_Load(Mesh& mesh, const BeamShape& b, double P);

// q per unit length downward on the nodes of the top row, each taking its
// half of the neighbouring segments.
void Apply_Line_Load(Mesh& mesh, const BeamShape& b, double q);

// Plates without flanges: a uniform edge stress S (compression along x) or a
// uniform shear T on the boundary, as nodal forces: stress times the
// adjacent plate's thickness over each node's share of the edge.
void Apply_Edge_Compression(Mesh& mesh, const BeamShape& b, double S);
void Apply_Edge_Shear(Mesh& mesh, const BeamShape& b, double T);

} // namespace velk
