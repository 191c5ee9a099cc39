#include "analysis/PlateMembrane.h"

#include "analysis/CheckedArithmetic.h"

namespace velk {

QuadDifferences Quad_Differences(const Corners4& x, const Corners4& y) {
  QuadDifferences d{};
  d.x12 = x[0] - x[1];
  d.x13 = x[0] - x[2];
  d.x14 = x[0] - x[3];
  d.x23 = x[1] - x[2];
  d.x24 = x[1] - x[3];
  d.x34 = x[2] - x[3];
  d.y12 = y[0] - y[1];
  d.y13 = y[0] - y[2];
  d.y14 = y[0] - y[3];
  d.y23 = y[1] - y[2];
  d.y24 = y[1] - y[3];
  d.y34 = y[2] - y[3];
  d.A2 = Finite(d.x13 * d.y24 - d.x24 * d.y13);
  return d;
}

QuadDerivativesAt Quad_Derivatives(double xi, double eta, const QuadDifferences& d,
                                   const Corners4& x, const Corners4& y) {
  QuadDerivativesAt r;
  const double Dn =
      Finite(d.A2 + (d.x34 * d.y12 - d.x12 * d.y34) * xi + (d.x23 * d.y14 - d.x14 * d.y23) * eta);
  Divisor(Dn);
  r.detJ = Dn / 8.0;

  r.dNdx[0] = Div(d.y24 - d.y34 * xi - d.y23 * eta, Dn);
  r.dNdy[0] = Div(-d.x24 + d.x34 * xi + d.x23 * eta, Dn);
  r.dNdx[1] = Div(-d.y13 + d.y34 * xi + d.y14 * eta, Dn);
  r.dNdy[1] = Div(d.x13 - d.x34 * xi - d.x14 * eta, Dn);
  r.dNdx[2] = Div(-d.y24 + d.y12 * xi - d.y14 * eta, Dn);
  r.dNdy[2] = Div(d.x24 - d.x12 * xi + d.x14 * eta, Dn);
  r.dNdx[3] = Div(d.y13 - d.y12 * xi + d.y23 * eta, Dn);
  r.dNdy[3] = Div(-d.x13 + d.x12 * xi - d.x23 * eta, Dn);

  // The bubble (1 - xi^2)(1 - eta^2) through the Jacobian of the corner map.
  const double P = (1.0 - xi) * eta * (1.0 + xi);
  const double R = (1.0 - eta) * xi * (1.0 + eta);
  const double xXi =
      (-(1.0 - eta) * x[0] + (1.0 - eta) * x[1] + (1.0 + eta) * x[2] - (1.0 + eta) * x[3]) / 4.0;
  const double yXi =
      (-(1.0 - eta) * y[0] + (1.0 - eta) * y[1] + (1.0 + eta) * y[2] - (1.0 + eta) * y[3]) / 4.0;
  const double xEta =
      (-(1.0 - xi) * x[0] - (1.0 + xi) * x[1] + (1.0 + xi) * x[2] + (1.0 - xi) * x[3]) / 4.0;
  const double yEta =
      (-(1.0 - xi) * y[0] - (1.0 + xi) * y[1] + (1.0 + xi) * y[2] + (1.0 - xi) * y[3]) / 4.0;
  r.dN5dx = Div(2.0 * (P * yXi - R * yEta), r.detJ);
  r.dN5dy = Div(-2.0 * (P * xXi - R * xEta), r.detJ);
  return r;
}

QuadCentreDerivatives Quad_Centre_Derivatives(double x13, double x24, double y13, double y24,
                                              double A2) {
  QuadCentreDerivatives r;
  Divisor(A2);
  r.b[0] = Div(y24, A2);
  r.c[0] = Div(-x24, A2);
  r.b[1] = Div(-y13, A2);
  r.c[1] = Div(x13, A2);
  r.b[2] = Div(-y24, A2);
  r.c[2] = Div(x24, A2);
  r.b[3] = Div(y13, A2);
  r.c[3] = Div(-x13, A2);
  return r;
}

void Plate_Membrane(const Corners4& cornerX, const Corners4& cornerY, double thick, double E,
                    double nu, ElementMatrix& Ke) {
  Ke.Clear();

  const double D11 = Div(E * thick, 1.0 - nu * nu);
  const double D12 = nu * D11;
  const double D33 = (1.0 - nu) * D11 * 0.5;
  const double D[3][3] = {{D11, D12, 0.0}, {D12, D11, 0.0}, {0.0, 0.0, D33}};

  const QuadDifferences d = Quad_Differences(cornerX, cornerY);
  const QuadCentreDerivatives centre = Quad_Centre_Derivatives(d.x13, d.x24, d.y13, d.y24, d.A2);

  constexpr double g = 0.577350269189626;
  const double points[4][2] = {{-g, -g}, {g, -g}, {g, g}, {-g, g}};

  // Freedoms u1, v1, .. u4, v4, u5, v5 (bubble last), stored 0-based here.
  for (const auto& pt : points) {
    const QuadDerivativesAt at = Quad_Derivatives(pt[0], pt[1], d, cornerX, cornerY);
    double B[3][10] = {};
    for (int i = 0; i < 4; ++i) {
      B[0][2 * i] = at.dNdx[i];
      B[1][2 * i + 1] = at.dNdy[i];
      // The shear strain is the centre value at every point: it keeps the
      // element free of shear locking in bending.
      B[2][2 * i] = centre.c[i];
      B[2][2 * i + 1] = centre.b[i];
    }
    B[0][8] = at.dN5dx;
    B[1][9] = at.dN5dy;

    double DB[3][10];
    for (int r = 0; r < 3; ++r)
      for (int col = 0; col < 10; ++col)
        DB[r][col] = D[r][0] * B[0][col] + D[r][1] * B[1][col] + D[r][2] * B[2][col];

    for (int i = 0; i < 10; ++i)
      for (int j = 0; j < 10; ++j) {
        const double v = B[0][i] * DB[0][j] + B[1][i] * DB[1][j] + B[2][i] * DB[2][j];
        Ke(i + 1, j + 1) += at.detJ * v;
      }
  }

  // Condense the bubble so the element keeps 8 freedoms: v5 first, then u5.
  for (int m = 10; m >= 9; --m) {
    const int n = m - 1;
    const double pivot = Ke(m, m);
    for (int i = 1; i <= n; ++i) {
      const double f = Div(Ke(i, m), pivot);
      for (int j = 1; j <= n; ++j)
        Ke(i, j) = Ke(i, j) - f * Ke(m, j);
    }
  }
  for (int i = 1; i <= 8; ++i)
    for (int j = 1; j <= 8; ++j)
      Finite(Ke(i, j));
}

} // namespace velk
