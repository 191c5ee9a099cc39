#pragma once
// Plate bending element of the buckling stage: a fully conforming quadrilateral
// made of four linear-curvature compatible triangles meeting at its centre
// (19 freedoms), with the seven inner freedoms condensed out to leave w,
// rotation about X (= dw/dy) and rotation about Y (= -dw/dx) at each corner.
#include <array>

#include "analysis/ElementMatrix.h"
#include "analysis/PlateMembrane.h"

namespace velk {

// The 12 x 12 matrix of one triangle, indexes from 1: w, rotation X, rotation Y
// at vertices 1, 2, 3, then the normal slopes at the midpoints of side 1
// (vertices 2-3), side 2 (3-1), side 3 (1-2).
class TriangleMatrix {
public:
  static constexpr int kSize = 12;
  double& operator()(int i, int j) { return a_[(i - 1) * kSize + (j - 1)]; }
  double operator()(int i, int j) const { return a_[(i - 1) * kSize + (j - 1)]; }
  void Clear() { a_.fill(0.0); }

private:
  std::array<double, kSize * kSize> a_{};
};

// Closed-form stiffness of one triangle with a thickness varying linearly from
// h1, h2, h3 at its vertices. The slope of side 3 is tied to its end rotations,
// so 11 freedoms stay; keep 10 and 9 tie sides 2 and 1 in the same way. Fills
// the top left keep x keep of T (T is cleared first). Zero area or a side of
// zero length is a division by zero.
void Triangle_Bending(double E, double nu, double h1, double h2, double h3, double x1, double x2,
                      double x3, double y1, double y2, double y3, TriangleMatrix& T, int keep);

// Forms the 12 x 12 bending matrix of one plate into the top left of Ke, order
// w, rotation X, rotation Y at corners 1..4. Ke is cleared in full first and the
// condensed inner freedoms leave their leftovers in rows and columns 13..19.
void Plate_Bending(double E, double nu, double thick, const Corners4& cornerX,
                   const Corners4& cornerY, ElementMatrix& Ke);

} // namespace velk
