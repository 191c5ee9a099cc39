// Stiffener as an in-plane bar and as an out-of-plane beam with its geometric
// stiffness.
#include <gtest/gtest.h>

#include <cmath>

#include "SymmetricEigen.h"
#include "analysis/StiffenerBending.h"
#include "analysis/StiffenerMembrane.h"
#include "common/Fault.h"

namespace velk {
namespace {

using test::Dense;

int FaultOf(auto&& action) {
  try {
    action();
  } catch (const Fault& f) {
    return f.number();
  }
  return 0;
}

TEST(StiffenerMembrane, BarAlongXCarriesAxialStiffnessOnly) {
  ElementMatrix Ke;
  Stiffener_Membrane({0, 10}, {2, 2}, 0.5, 4, 29000, Ke);
  EXPECT_DOUBLE_EQ(Ke(1, 1), 5800);
  EXPECT_DOUBLE_EQ(Ke(1, 3), -5800);
  EXPECT_DOUBLE_EQ(Ke(3, 3), 5800);
  for (int j = 1; j <= 4; ++j) {
    EXPECT_EQ(Ke(2, j), 0.0);
    EXPECT_EQ(Ke(4, j), 0.0);
  }
}

TEST(StiffenerMembrane, InclinedBarResistsStretchOnly) {
  ElementMatrix Ke;
  const double x1 = 1, y1 = 2, x2 = 4, y2 = 6; // length 5, c 0.6, s 0.8
  Stiffener_Membrane({x1, x2}, {y1, y2}, 0.5, 4, 29000, Ke);
  const Dense K = test::Leading(Ke, 4);
  EXPECT_EQ(test::Asymmetry(K), 0.0);
  const double k = 4 * 0.5 * 29000 / 5.0;
  // Stretching end 2 by 1 along the bar takes k; rigid motions take nothing.
  const std::vector<double> stretch{0, 0, 0.6, 0.8};
  EXPECT_NEAR(test::Dot(stretch, test::Multiply(K, stretch)), k, 1e-9 * k);
  const std::vector<double> modes[] = {
      {1, 0, 1, 0}, {0, 1, 0, 1}, {-y1, x1, -y2, x2}, {0, 0, -0.8, 0.6}};
  for (const auto& m : modes)
    EXPECT_LT(test::MaxAbs(test::Multiply(K, m)), 1e-9 * k);
}

TEST(StiffenerMembrane, ZeroLengthIsADivisionByZero) {
  ElementMatrix Ke;
  EXPECT_EQ(FaultOf([&] { Stiffener_Membrane({3, 3}, {1, 1}, 0.5, 4, 29000, Ke); }), errDivByZero);
}

Dense Beam(const Ends2& x, const Ends2& y, double t, double w, int shear, double E = 29000,
           double nu = 0.3) {
  ElementMatrix Ke;
  Stiffener_Bending(x, y, t, w, E, nu, shear, Ke);
  return test::Leading(Ke, 6);
}

TEST(StiffenerBending, BeamAlongXIsTheClassicalBeamPlusTorsion) {
  const double t = 0.5, w = 4, E = 29000, nu = 0.3, L = 10;
  const Dense K = Beam({0, L}, {1, 1}, t, w, 0, E, nu);
  const double EI = w * w * w * E * t / 12;
  const double T = t * t * t * E * w * (1 - 0.63 * t / w) / ((1 + nu) * 6 * L);
  // Order w1, rotation X 1, rotation Y 1, w2, ...; w' = -rotation Y.
  EXPECT_NEAR(K[0][0], 12 * EI / (L * L * L), 1e-9);
  EXPECT_NEAR(K[0][2], -6 * EI / (L * L), 1e-9);
  EXPECT_NEAR(K[0][3], -12 * EI / (L * L * L), 1e-9);
  EXPECT_NEAR(K[0][5], -6 * EI / (L * L), 1e-9);
  EXPECT_NEAR(K[2][2], 4 * EI / L, 1e-9);
  EXPECT_NEAR(K[2][5], 2 * EI / L, 1e-9);
  EXPECT_NEAR(K[2][3], 6 * EI / (L * L), 1e-9);
  EXPECT_NEAR(K[1][1], T, 1e-12);
  EXPECT_NEAR(K[1][4], -T, 1e-12);
  for (int j : {0, 2, 3, 5}) {
    EXPECT_EQ(K[1][j], 0.0);
    EXPECT_EQ(K[4][j], 0.0);
  }
  EXPECT_EQ(test::Asymmetry(K), 0.0);
}

TEST(StiffenerBending, BeamAlongYTwistsAboutY) {
  const double t = 0.5, w = 4, E = 29000, nu = 0.3, L = 8;
  const Dense K = Beam({2, 2}, {0, L}, t, w, 0, E, nu);
  const double EI = w * w * w * E * t / 12;
  const double T = t * t * t * E * w * (1 - 0.63 * t / w) / ((1 + nu) * 6 * L);
  EXPECT_NEAR(K[0][1], 6 * EI / (L * L), 1e-9);
  EXPECT_NEAR(K[1][1], 4 * EI / L, 1e-9);
  EXPECT_NEAR(K[2][2], T, 1e-12);
  EXPECT_NEAR(K[2][5], -T, 1e-12);
}

TEST(StiffenerBending, ShearOptionGivesTheTimoshenkoRotationTerms) {
  // w^2 (1 - nu) / (2 L^2) = 0.25 with w 5, nu 0.5, L 5.
  const double t = 0.5, w = 5, E = 29000, nu = 0.5, L = 5;
  const Dense K = Beam({0, L}, {0, 0}, t, w, 1, E, nu);
  const double EI = w * w * w * E * t / 12;
  EXPECT_NEAR(K[2][2], 2.5 * EI / L, 1e-9);
  EXPECT_NEAR(K[2][5], 0.5 * EI / L, 1e-9);
  EXPECT_NEAR(K[0][0], 12 * EI / (L * L * L * 2), 1e-9);
}

TEST(StiffenerBending, PlateRigidModesAreZeroModesWithAndWithoutShear) {
  const Ends2 x{1, 4}, y{2, 6};
  for (int shear : {0, 1}) {
    const Dense K = Beam(x, y, 0.5, 4, shear);
    const double scale = test::MaxAbs(K);
    EXPECT_LT(test::Asymmetry(K), 1e-12 * scale);
    const std::vector<double> modes[] = {
        {1, 0, 0, 1, 0, 0},         // w = 1
        {x[0], 0, -1, x[1], 0, -1}, // w = x
        {y[0], 1, 0, y[1], 1, 0},   // w = y
    };
    for (const auto& m : modes)
      EXPECT_LT(test::MaxAbs(test::Multiply(K, m)), 1e-10 * scale);
    // Bending and twisting are real: three zero modes and no more.
    EXPECT_GT(test::SymmetricEigenvalues(K)[3], 1e-6 * scale);
  }
}

TEST(StiffenerBending, DegenerateSectionsAndLengthsAreDivisionsByZero) {
  EXPECT_EQ(FaultOf([] { Beam({0, 10}, {0, 0}, 0.5, 0, 0); }), errDivByZero);
  EXPECT_EQ(FaultOf([] { Beam({2, 2}, {1, 1}, 0.5, 4, 0); }), errDivByZero);
  ElementMatrix Kg;
  EXPECT_EQ(FaultOf([&] {
              Stiffener_Geometric({2, 2}, {1, 1}, 0.5, 4, 29000, 0, {0, 0}, {0, 0}, Kg);
            }),
            errDivByZero);
}

TEST(StiffenerGeometric, ZeroStressGivesAZeroMatrix) {
  ElementMatrix Kg;
  for (int i = 1; i <= 6; ++i)
    for (int j = 1; j <= 6; ++j)
      Kg(i, j) = 99;
  // A rigid in-plane motion strains nothing.
  const double stress =
      Stiffener_Geometric({1, 4}, {2, 6}, 0.5, 4, 29000, 1, {0.1, 0.1}, {0.2, 0.2}, Kg);
  EXPECT_EQ(stress, 0.0);
  for (int i = 1; i <= 6; ++i)
    for (int j = 1; j <= 6; ++j)
      EXPECT_EQ(Kg(i, j), 0.0);
}

TEST(StiffenerGeometric, AxialForceActsOnDeflectionsAndTorsionOptionOnAxialRotations) {
  const double t = 0.5, w = 4, E = 29000, L = 5, c = 0.6, s = 0.8;
  // End 2 moves 0.01 along the bar: tension.
  const Ends2 u{0, 0.01 * c}, v{0, 0.01 * s};
  ElementMatrix Kg;
  double sig = Stiffener_Geometric({1, 4}, {2, 6}, t, w, E, 0, u, v, Kg);
  EXPECT_NEAR(sig, 0.01 * E / L, 1e-9);
  const double N = sig * w * t / L;
  EXPECT_NEAR(Kg(1, 1), N, 1e-9);
  EXPECT_NEAR(Kg(1, 4), -N, 1e-9);
  EXPECT_NEAR(Kg(4, 4), N, 1e-9);
  for (int i : {2, 3, 5, 6})
    for (int j = 1; j <= 6; ++j)
      EXPECT_EQ(Kg(i, j), 0.0);

  sig = Stiffener_Geometric({1, 4}, {2, 6}, t, w, E, 1, u, v, Kg);
  const double g = sig * t * w * w * w / (12 * L);
  const Dense G = test::Leading(Kg, 6);
  EXPECT_LT(test::Asymmetry(G), 1e-12 * test::MaxAbs(G));
  EXPECT_NEAR(Kg(2, 2), g * c * c, 1e-9);
  EXPECT_NEAR(Kg(3, 5), -g * s * c, 1e-9);
  EXPECT_NEAR(Kg(6, 6), g * s * s, 1e-9);
  // A twist about the bar's axis, (c, s) at end 1 and nothing at end 2, is
  // stiffened by g; a rotation across the axis is not touched.
  const std::vector<double> twist{0, c, s, 0, 0, 0}, across{0, -s, c, 0, -s, c};
  EXPECT_NEAR(test::Dot(twist, test::Multiply(G, twist)), g, 1e-9);
  EXPECT_NEAR(test::MaxAbs(test::Multiply(G, across)), 0.0, 1e-12);
  EXPECT_NEAR(Kg(1, 1), N, 1e-9);
}

} // namespace
} // namespace velk
