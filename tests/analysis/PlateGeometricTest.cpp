// Geometric stiffness of a plate from its in-plane stresses.
#include <gtest/gtest.h>

#include "SymmetricEigen.h"
#include "analysis/PlateGeometric.h"
#include "common/Fault.h"

namespace velk {
namespace {

using test::Dense;

TEST(PlateGeometric, UnitSquareInUniaxialCompression) {
  // Displacements that give Sx = -1, Sy = 0, Sxy = 0 at every corner.
  const double E = 1000, nu = 0.3;
  const Corners4 x{0, 1, 1, 0}, y{0, 0, 1, 1};
  Corners4 u, v;
  for (int k = 0; k < 4; ++k) {
    u[k] = -x[k] / E;
    v[k] = nu * y[k] / E;
  }
  ElementMatrix Kg;
  Kg.Clear();
  Kg(13, 13) = 7; // outside the 12 x 12 corner: left alone
  for (int i = 1; i <= 12; ++i)
    Kg(i, i) = 5; // inside: cleared
  const PlateStress s = Plate_Geometric(x, y, 1.0, E, nu, u, v, Kg);
  for (int k = 0; k < 4; ++k) {
    EXPECT_NEAR(s.Sx[k], -1, 1e-12);
    EXPECT_NEAR(s.Sy[k], 0, 1e-12);
  }
  EXPECT_NEAR(s.Sxy, 0, 1e-12);

  Dense expected(12, std::vector<double>(12, 0.0));
  auto set = [&](int i, int j, double value) {
    expected[i - 1][j - 1] = expected[j - 1][i - 1] = value;
  };
  set(1, 1, -0.5);
  set(1, 4, 0.5);
  set(4, 4, -0.5);
  set(7, 7, -0.5);
  set(7, 10, 0.5);
  set(10, 10, -0.5);
  for (int i = 1; i <= 12; ++i)
    for (int j = 1; j <= 12; ++j)
      EXPECT_NEAR(Kg(i, j), expected[i - 1][j - 1], 1e-12) << i << "," << j;
  EXPECT_EQ(Kg(13, 13), 7.0);
}

TEST(PlateGeometric, RigidDeflectionHasNoEnergyAndTensionIsPositive) {
  const Corners4 x{0, 10, 11, -1}, y{0, 1, 9, 8};
  const double E = 29000, nu = 0.3;
  // A general linear strain field: tension along X, some Y and shear.
  Corners4 u, v;
  for (int k = 0; k < 4; ++k) {
    u[k] = 2e-3 * x[k] + 3e-4 * y[k];
    v[k] = 5e-4 * y[k] + 1e-4 * x[k];
  }
  ElementMatrix Kg;
  Plate_Geometric(x, y, 0.5, E, nu, u, v, Kg);
  const Dense K = test::Leading(Kg, 12);
  EXPECT_LT(test::Asymmetry(K), 1e-12 * test::MaxAbs(K));
  for (int i = 0; i < 12; ++i) {
    double row = 0;
    for (int k = 0; k < 4; ++k)
      row += K[i][3 * k];
    EXPECT_NEAR(row, 0.0, 1e-10 * test::MaxAbs(K));
    if (i % 3 != 0) {
      for (int j = 0; j < 12; ++j)
        EXPECT_EQ(K[i][j], 0.0);
    }
  }
  // Principal stresses are both tensile here: the matrix is positive semi-definite.
  const auto values = test::SymmetricEigenvalues(K);
  EXPECT_GT(values.back(), 0.0);
  EXPECT_GT(values.front(), -1e-10 * values.back());
}

TEST(TriangleGeometric, ZeroAreaIsADivisionByZero) {
  try {
    Triangle_Geometric({0, 1, 2}, {0, 1, 2}, 1, 1, 0, 0);
    FAIL() << "no fault";
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), errDivByZero);
  }
}

} // namespace
} // namespace velk
