#include "analysis/PlateGeometric.h"

#include "analysis/CheckedArithmetic.h"

namespace velk {

PlateStress Plate_Stress(const Corners4& cornerX, const Corners4& cornerY, const Corners4& cornerU,
                         const Corners4& cornerV, double E, double nu) {
  const double Eb = Div(E, 1.0 - nu * nu);
  const double En = Eb * nu;

  const QuadDifferences d = Quad_Differences(cornerX, cornerY);
  const QuadCentreDerivatives centre = Quad_Centre_Derivatives(d.x13, d.x24, d.y13, d.y24, d.A2);

  PlateStress out;
  double shear = 0.0;
  for (int i = 0; i < 4; ++i)
    shear += centre.c[i] * cornerU[i] + centre.b[i] * cornerV[i];
  out.Sxy = Finite(shear * Eb * (1.0 - nu) * 0.5);

  // Corner stresses straight from the corners, no extrapolation from Gauss
  // points: the stress plot then shows what the corners really carry.
  static constexpr double kCorner[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
  for (int k = 0; k < 4; ++k) {
    const QuadDerivativesAt at =
        Quad_Derivatives(kCorner[k][0], kCorner[k][1], d, cornerX, cornerY);
    double ex = 0.0, ey = 0.0;
    for (int i = 0; i < 4; ++i) {
      ex += at.dNdx[i] * cornerU[i];
      ey += at.dNdy[i] * cornerV[i];
    }
    out.Sx[k] = Finite(Eb * ex + En * ey);
    out.Sy[k] = Finite(Eb * ey + En * ex);
  }
  return out;
}

Matrix3 Triangle_Geometric(const std::array<double, 3>& x, const std::array<double, 3>& y, double t,
                           double Sx, double Sy, double Sxy) {
  const double G[2][3] = {{y[1] - y[2], y[2] - y[0], y[0] - y[1]},
                          {x[2] - x[1], x[0] - x[2], x[1] - x[0]}};
  const double A2 = Divisor(Finite((x[1] - x[0]) * (y[2] - y[0]) - (x[0] - x[2]) * (y[0] - y[1])));
  const double f = Div(0.5 * t, A2);
  const double S[2][2] = {{f * Sx, f * Sxy}, {f * Sxy, f * Sy}};

  Matrix3 Kt{};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      const double SG0 = S[0][0] * G[0][j] + S[0][1] * G[1][j];
      const double SG1 = S[1][0] * G[0][j] + S[1][1] * G[1][j];
      Kt[i][j] = Finite(G[0][i] * SG0 + G[1][i] * SG1);
    }
  return Kt;
}

PlateStress Plate_Geometric(const Corners4& cornerX, const Corners4& cornerY, double thick,
                            double E, double nu, const Corners4& cornerU, const Corners4& cornerV,
                            ElementMatrix& Kg) {
  const PlateStress stress = Plate_Stress(cornerX, cornerY, cornerU, cornerV, E, nu);

  // Corners (0-based) of the four triangles and the element freedoms of their w.
  static constexpr int kCorners[4][3] = {{0, 1, 2}, {2, 3, 0}, {0, 1, 3}, {1, 2, 3}};
  static constexpr int kDofs[4][3] = {{1, 4, 7}, {7, 10, 1}, {1, 4, 10}, {4, 7, 10}};

  Kg.ClearCorner(12);
  for (int t = 0; t < 4; ++t) {
    std::array<double, 3> x{}, y{};
    double Sxm = 0.0, Sym = 0.0;
    for (int k = 0; k < 3; ++k) {
      const int corner = kCorners[t][k];
      x[k] = cornerX[corner];
      y[k] = cornerY[corner];
      Sxm += stress.Sx[corner] / 3.0;
      Sym += stress.Sy[corner] / 3.0;
    }
    const Matrix3 Kt = Triangle_Geometric(x, y, thick, Sxm, Sym, stress.Sxy);
    // The four triangles cover the quadrilateral twice.
    for (int i = 0; i < 3; ++i)
      for (int j = 0; j < 3; ++j)
        Kg(kDofs[t][i], kDofs[t][j]) += 0.5 * Kt[i][j];
  }
  return stress;
}

} // namespace velk
