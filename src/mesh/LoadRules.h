#pragma once
// Supports and loads put on a generated girder or plate by rule, written into
// the nodes as the boundary and load dialogs would write them by hand. Axes:
// x along the girder, y up the web, z out of its plane. Every rule checks the
// model first and refuses with RuleRefused before it writes anything; loads
// add to what the nodes already carry, so rules combine.
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

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

// A load P downward at the node of the top row (or of the bottom row) at x
// along the girder, mid-length when x is not given: the height at which a
// load stands changes lateral-torsional buckling. There must be a node there.
void Apply_Point_Load(Mesh& mesh, const BeamShape& b, double P, std::optional<double> x = {},
                      bool top = true);

// A patch load on the top flange: F downward spread evenly over the length c
// centred at x (mid-length when not given), as the work-equivalent forces of
// the top row's nodes: a wheel, or a support reaction, on a girder's web.
void Apply_Patch_Load(Mesh& mesh, const BeamShape& b, double F, double c,
                      std::optional<double> x = {});

// q per unit length downward on the nodes of the top row, each taking its
// half of the neighbouring segments.
void Apply_Line_Load(Mesh& mesh, const BeamShape& b, double q);

// Plates without flanges: an edge stress along x (compression positive)
// varying linearly over the height from S1 at the bottom edge to S2 at the
// top, a web in bending or in bending with compression; or a uniform shear T
// on the boundary. As nodal forces: the work-equivalent share of each edge
// segment, stress times the adjacent plate's thickness.
void Apply_Edge_Stress(Mesh& mesh, const BeamShape& b, double S1, double S2);
void Apply_Edge_Compression(Mesh& mesh, const BeamShape& b, double S); // S1 = S2 = S
void Apply_Edge_Shear(Mesh& mesh, const BeamShape& b, double T);

// The rules by name, as `velk-batch generate` and the Supports and Loads
// dialog give them: "--supports" fork|simple, "--moment" M, "--axial" P,
// "--point" P[:x[:top|bottom]], "--udl" q, "--edge-sx" S or S1:S2,
// "--edge-sxy" T, "--patch" F:c[:x].
const std::vector<std::string>& Rule_Options();
// Why a value's text does not suit its rule, without looking at a model (a
// usage error); empty when it does.
std::string Rule_Value_Problem(const std::string& option, const std::string& value);
// Applies one rule by name to the mesh; RuleRefused when it does not fit it.
void Apply_Rule(Mesh& mesh, const BeamShape& b, const std::string& option,
                const std::string& value);

} // namespace velk
