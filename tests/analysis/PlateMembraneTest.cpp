// Plane-stress quadrilateral with condensed bubble, and the stresses recovered
// from its shape functions.
#include <gtest/gtest.h>

#include "SymmetricEigen.h"
#include "analysis/PlateGeometric.h"
#include "analysis/PlateMembrane.h"
#include "common/Fault.h"

namespace velk {
namespace {

using test::Dense;

const Corners4 kSkewX{0, 10, 11, -1};
const Corners4 kSkewY{0, 1, 9, 8};

Dense Membrane(const Corners4& x, const Corners4& y, double t = 0.5, double E = 29000,
               double nu = 0.3) {
  ElementMatrix Ke;
  Plate_Membrane(x, y, t, E, nu, Ke);
  return test::Leading(Ke, 8);
}

TEST(PlateMembrane, SkewQuadrilateralHasTheReferenceEigenvalues) {
  const auto values = test::SymmetricEigenvalues(Membrane(kSkewX, kSkewY));
  for (int i = 0; i < 3; ++i)
    EXPECT_NEAR(values[i], 0.0, 1e-8) << i;
  const double expected[5] = {3344.8395, 6688.7006, 9640.8795, 11824.0709, 24093.3305};
  for (int i = 0; i < 5; ++i)
    EXPECT_NEAR(values[3 + i], expected[i], 5e-5) << i;
}

TEST(PlateMembrane, RigidMotionsCostNoEnergyAndMatrixIsSymmetric) {
  const std::pair<Corners4, Corners4> shapes[] = {
      {kSkewX, kSkewY}, {{0, 4, 4, 0}, {0, 0, 2, 2}}, {{2, 7, 6, 1}, {-1, 0, 5, 3}}};
  for (const auto& [x, y] : shapes) {
    const Dense K = Membrane(x, y);
    EXPECT_LT(test::Asymmetry(K), 1e-9 * test::MaxAbs(K));
    std::vector<double> tx(8), ty(8), rot(8);
    for (int k = 0; k < 4; ++k) {
      tx[2 * k] = 1;
      ty[2 * k + 1] = 1;
      rot[2 * k] = -y[k]; // rotation: u = -y, v = x
      rot[2 * k + 1] = x[k];
    }
    for (const auto& mode : {tx, ty, rot})
      EXPECT_LT(test::MaxAbs(test::Multiply(K, mode)), 1e-9 * test::MaxAbs(K));
    // Exactly three: the fourth smallest eigenvalue is well clear of zero.
    EXPECT_GT(test::SymmetricEigenvalues(K)[3], 1e-3 * test::MaxAbs(K));
  }
}

TEST(PlateMembrane, RectangleUnderUniformStrainStoresTheExactEnergy) {
  // u = ex x + g y / 2, v = ey y + g x / 2 on a 4 x 2 rectangle, t 0.5.
  const Corners4 x{0, 4, 4, 0}, y{0, 0, 2, 2};
  const double E = 29000, nu = 0.3, t = 0.5;
  const double ex = 1e-3, ey = -4e-4, g = 6e-4;
  const Dense K = Membrane(x, y, t, E, nu);
  std::vector<double> u(8);
  for (int k = 0; k < 4; ++k) {
    u[2 * k] = ex * x[k] + 0.5 * g * y[k];
    u[2 * k + 1] = ey * y[k] + 0.5 * g * x[k];
  }
  const double D = E * t / (1 - nu * nu);
  const double energy =
      0.5 * (D * (ex * ex + 2 * nu * ex * ey + ey * ey) + D * (1 - nu) / 2 * g * g) * 8.0;
  EXPECT_NEAR(0.5 * test::Dot(u, test::Multiply(K, u)), energy, 1e-12 * energy * 1e3);
}

TEST(PlateMembrane, ClockwiseCornersGiveTheOppositeSign) {
  const Dense ccw = Membrane(kSkewX, kSkewY);
  // Same corners, clockwise: 1, 4, 3, 2.
  const Dense cw = Membrane({kSkewX[0], kSkewX[3], kSkewX[2], kSkewX[1]},
                            {kSkewY[0], kSkewY[3], kSkewY[2], kSkewY[1]});
  const int from[4] = {0, 3, 2, 1};
  for (int a = 0; a < 4; ++a)
    for (int b = 0; b < 4; ++b)
      for (int p = 0; p < 2; ++p)
        for (int q = 0; q < 2; ++q)
          EXPECT_NEAR(cw[2 * a + p][2 * b + q], -ccw[2 * from[a] + p][2 * from[b] + q], 1e-8);
}

TEST(PlateMembrane, DegenerateQuadrilateralIsADivisionByZero) {
  ElementMatrix Ke;
  // All four corners on one line: A2 = 0.
  try {
    Plate_Membrane({0, 1, 2, 3}, {0, 1, 2, 3}, 0.5, 29000, 0.3, Ke);
    FAIL() << "no fault";
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), errDivByZero);
  }
}

TEST(QuadDerivatives, AreTheExactGradientsOfLinearFields) {
  const QuadDifferences d = Quad_Differences(kSkewX, kSkewY);
  EXPECT_DOUBLE_EQ(d.A2, (0 - 11) * (1 - 8) - (10 + 1) * (0 - 9));
  // f = 3 + 2x - 5y, sampled at the corners; its gradient anywhere is (2, -5).
  Corners4 f;
  for (int k = 0; k < 4; ++k)
    f[k] = 3 + 2 * kSkewX[k] - 5 * kSkewY[k];
  for (double xi : {-1.0, -0.3, 0.0, 0.7, 1.0})
    for (double eta : {-1.0, 0.2, 1.0}) {
      const QuadDerivativesAt at = Quad_Derivatives(xi, eta, d, kSkewX, kSkewY);
      double fx = 0, fy = 0, sx = 0, sy = 0;
      for (int i = 0; i < 4; ++i) {
        fx += at.dNdx[i] * f[i];
        fy += at.dNdy[i] * f[i];
        sx += at.dNdx[i];
        sy += at.dNdy[i];
      }
      EXPECT_NEAR(fx, 2, 1e-12);
      EXPECT_NEAR(fy, -5, 1e-12);
      EXPECT_NEAR(sx, 0, 1e-12);
      EXPECT_NEAR(sy, 0, 1e-12);
    }
  // The bubble has zero slope at the centre and det J is an eighth of Dn.
  const QuadDerivativesAt centre = Quad_Derivatives(0, 0, d, kSkewX, kSkewY);
  EXPECT_DOUBLE_EQ(centre.detJ, d.A2 / 8);
  EXPECT_DOUBLE_EQ(centre.dN5dx, 0);
  EXPECT_DOUBLE_EQ(centre.dN5dy, 0);
  // At the centre the point derivatives equal the centre table.
  const QuadCentreDerivatives c = Quad_Centre_Derivatives(d.x13, d.x24, d.y13, d.y24, d.A2);
  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(c.b[i], centre.dNdx[i], 1e-15);
    EXPECT_NEAR(c.c[i], centre.dNdy[i], 1e-15);
  }
}

TEST(PlateStress, UniformFieldsAreRecoveredExactly) {
  const double E = 29000, nu = 0.3;
  // Uniform tension 10 along X: ex = 10 / E, ey = -nu 10 / E.
  Corners4 u, v;
  for (int k = 0; k < 4; ++k) {
    u[k] = 10 / E * kSkewX[k];
    v[k] = -nu * 10 / E * kSkewY[k];
  }
  PlateStress s = Plate_Stress(kSkewX, kSkewY, u, v, E, nu);
  for (int k = 0; k < 4; ++k) {
    EXPECT_NEAR(s.Sx[k], 10, 1e-10);
    EXPECT_NEAR(s.Sy[k], 0, 1e-10);
  }
  EXPECT_NEAR(s.Sxy, 0, 1e-10);

  // Pure shear 5: engineering shear strain 5 / G.
  const double G = E / (2 * (1 + nu));
  for (int k = 0; k < 4; ++k) {
    u[k] = 0.5 * 5 / G * kSkewY[k];
    v[k] = 0.5 * 5 / G * kSkewX[k];
  }
  s = Plate_Stress(kSkewX, kSkewY, u, v, E, nu);
  for (int k = 0; k < 4; ++k) {
    EXPECT_NEAR(s.Sx[k], 0, 1e-10);
    EXPECT_NEAR(s.Sy[k], 0, 1e-10);
  }
  EXPECT_NEAR(s.Sxy, 5, 1e-10);

  // Shortening along X is compression: negative Sx.
  for (int k = 0; k < 4; ++k) {
    u[k] = -1e-3 * kSkewX[k];
    v[k] = 0;
  }
  s = Plate_Stress(kSkewX, kSkewY, u, v, E, nu);
  EXPECT_NEAR(s.Sx[2], -1e-3 * E / (1 - nu * nu), 1e-9);
  EXPECT_NEAR(s.Sy[2], -nu * 1e-3 * E / (1 - nu * nu), 1e-9);
}

} // namespace
} // namespace velk
