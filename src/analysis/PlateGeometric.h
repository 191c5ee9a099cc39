#pragma once
// Geometric stiffness of a plate from its in-plane stresses. It couples the
// corner deflections only: the quadrilateral is covered twice by
// constant-gradient triangles, each seeing the mean stress of its corners.
// The same pass recovers the plate's stresses from the in-plane displacements.
#include <array>

#include "analysis/ElementMatrix.h"
#include "analysis/PlateMembrane.h"

namespace velk {

using Matrix3 = std::array<std::array<double, 3>, 3>;

// Stresses of one plate: Sx, Sy at each corner (order Node1..Node4) and one
// shear stress for the whole element.
struct PlateStress {
  std::array<double, 4> Sx{}, Sy{};
  double Sxy = 0.0;
};

// Stresses from the corner displacements u, v of the in-plane stage: normal
// stresses at the corners themselves, shear from the centre derivatives. The
// bubble takes no part.
PlateStress Plate_Stress(const Corners4& cornerX, const Corners4& cornerY, const Corners4& cornerU,
                         const Corners4& cornerV, double E, double nu);

// 3 x 3 geometric matrix of a triangle of thickness t under constant stresses:
// G' S G with G the unscaled constant gradient and S = 0.5 t / A2 [Sx Sxy; Sxy Sy].
Matrix3 Triangle_Geometric(const std::array<double, 3>& x, const std::array<double, 3>& y, double t,
                           double Sx, double Sy, double Sxy);

// Computes the plate's stresses (returned for the caller to list and average at
// the nodes) and forms its 12 x 12 geometric matrix, order as the bending
// element, into the top left of Kg (cleared first). Only the w rows and columns
// 1, 4, 7, 10 are non-zero; tension gives a positive matrix.
PlateStress Plate_Geometric(const Corners4& cornerX, const Corners4& cornerY, double thick,
                            double E, double nu, const Corners4& cornerU, const Corners4& cornerV,
                            ElementMatrix& Kg);

} // namespace velk
