#pragma once
// Plane-stress quadrilateral of the in-plane stage: four corners plus an
// internal bubble for the normal strains, one constant shear strain taken at
// the centre. The shape derivatives also serve the stress recovery.
#include <array>

#include "analysis/ElementMatrix.h"

namespace velk {

using Corners4 = std::array<double, 4>;

// Coordinate differences of a quadrilateral, xij = xi - xj, and A2 = twice its
// area. Computed once per element and shared by every derivative evaluation.
struct QuadDifferences {
  double x12, x13, x14, x23, x24, x34;
  double y12, y13, y14, y23, y24, y34;
  double A2;
};

// Derivatives at one point: dN1..dN4 by x and y, the bubble's two derivatives
// and det J.
struct QuadDerivativesAt {
  std::array<double, 4> dNdx{}, dNdy{};
  double dN5dx = 0.0, dN5dy = 0.0;
  double detJ = 0.0;
};

// Centre derivatives: b(i) = dNi/dx, c(i) = dNi/dy at xi = eta = 0.
struct QuadCentreDerivatives {
  std::array<double, 4> b{}, c{};
};

QuadDifferences Quad_Differences(const Corners4& cornerX, const Corners4& cornerY);

// Derivatives at natural coordinates (xi, eta). A zero det J is a division by
// zero (a degenerate element).
QuadDerivativesAt Quad_Derivatives(double xi, double eta, const QuadDifferences& differences,
                                   const Corners4& cornerX, const Corners4& cornerY);

QuadCentreDerivatives Quad_Centre_Derivatives(double x13, double x24, double y13, double y24,
                                              double A2);

// Forms the membrane matrix of one plate into the top left 8 x 8 of Ke, order
// u1, v1, .. u4, v4. Ke is cleared in full first; rows and columns 9 and 10
// keep the condensed bubble's leftovers and are not part of the result.
void Plate_Membrane(const Corners4& cornerX, const Corners4& cornerY, double thick, double E,
                    double nu, ElementMatrix& Ke);

} // namespace velk
