#pragma once
// Stiffener of the buckling stage: a two-node flat-bar beam lying in the
// plate's plane with w, rotation about X and rotation about Y at each end. It
// bends out of the plane, twists (St. Venant) and, with the shear option,
// deforms in shear; its axial force from the in-plane stage gives it a
// geometric stiffness, with a torsional part under the torsion option.
#include <array>

#include "analysis/ElementMatrix.h"
#include "analysis/StiffenerMembrane.h"

namespace velk {

// Writes one 3 x 3 block at (row, column) (1-based, the block's top left) for
// a member of direction cosines c, s:
//   [ a      -s p            c p           ]
//   [ -s q   c^2 t + s^2 d   (t - d) c s   ]
//   [ c q    (t - d) c s     s^2 t + c^2 d ]
void Stiffener_Block(ElementMatrix& Ke, int row, int column, double c, double s, double a, double p,
                     double q, double t, double d);

// Forms the 6 x 6 bending matrix, order w1, rotation X 1, rotation Y 1, w2,
// rotation X 2, rotation Y 2, into the top left of Ke. `shear` is the shear
// option (non-zero: Timoshenko form). `thick` lies in the plate, `width` stands
// out of it. Zero length, or zero width with a non-zero thickness, is a
// division by zero.
void Stiffener_Bending(const Ends2& endX, const Ends2& endY, double thick, double width, double E,
                       double nu, int shear, ElementMatrix& Ke);

// Axial stress of the in-plane stage from the end displacements (u, v) of the
// two ends: positive in tension.
double Stiffener_Stress(const Ends2& endX, const Ends2& endY, const Ends2& endU, const Ends2& endV,
                        double E);

// Computes the stiffener's axial stress from the in-plane end displacements,
// forms the 6 x 6 geometric matrix into the top left of Kg (cleared first) and
// returns the stress, which the caller stores and lists. `torsion` is the
// torsion option (non-zero adds the torsional part). Tension gives a positive
// matrix.
double Stiffener_Geometric(const Ends2& endX, const Ends2& endY, double thick, double width,
                           double E, int torsion, const Ends2& endU, const Ends2& endV,
                           ElementMatrix& Kg);

} // namespace velk
