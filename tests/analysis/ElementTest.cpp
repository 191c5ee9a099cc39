// The element matrices against theory: reference eigenvalues, rigid modes, patch
// energies and the classical beam, for the plate membrane with its stress
// recovery, plate bending, plate geometric stiffness and the stiffener as bar,
// beam and geometric stiffness.
#include <gtest/gtest.h>

#include <array>

#include "SymmetricEigen.h"
#include "analysis/PlateBending.h"
#include "analysis/PlateGeometric.h"
#include "analysis/PlateMembrane.h"
#include "analysis/StiffenerBending.h"
#include "analysis/StiffenerMembrane.h"

namespace velk::test {
namespace {

const Corners4 kSkewX{0, 10, 11, -1}, kSkewY{0, 1, 9, 8};
const std::pair<Corners4, Corners4> kShapes[] = {
    {kSkewX, kSkewY}, {{0, 4, 4, 0}, {0, 0, 2, 2}}, {{2, 7, 6, 1}, {-1, 0, 5, 3}}};

double Area(const Corners4& x, const Corners4& y) {
  return 0.5 * ((x[0] - x[2]) * (y[1] - y[3]) - (x[1] - x[3]) * (y[0] - y[2]));
}

Dense Membrane(const Corners4& x, const Corners4& y, double t = 0.5, double E = 29000,
               double nu = 0.3) {
  ElementMatrix Ke;
  Plate_Membrane(x, y, t, E, nu, Ke);
  return Leading(Ke, 8);
}

Dense Bending(const Corners4& x, const Corners4& y, double t = 0.5, double E = 29000,
              double nu = 0.3) {
  ElementMatrix Ke;
  Plate_Bending(E, nu, t, x, y, Ke);
  return Leading(Ke, 12);
}

Dense Beam(const Ends2& x, const Ends2& y, double t, double w, int shear, double E = 29000,
           double nu = 0.3) {
  ElementMatrix Ke;
  Stiffener_Bending(x, y, t, w, E, nu, shear, Ke);
  return Leading(Ke, 6);
}

// Symmetric to `tol`, the modes cost nothing, and they are all of the zero
// modes: the next eigenvalue is well clear of zero.
void ExpectZeroModes(const Dense& K, const std::vector<Vector>& modes, double tol, double gap) {
  const double scale = MaxAbs(K);
  EXPECT_LT(Asymmetry(K), tol * scale);
  for (const auto& m : modes)
    EXPECT_LT(MaxAbs(Multiply(K, m)), tol * scale);
  EXPECT_GT(SymmetricEigenvalues(K)[modes.size()], gap * scale);
}

// Bending freedoms (w, rotation X = dw/dy, rotation Y = -dw/dx) at the corners
// of w = c0 + c1 x + c2 y + c3 x^2 / 2 + c4 x y + c5 y^2 / 2.
Vector CornerFreedoms(const Corners4& x, const Corners4& y, std::array<double, 6> c) {
  Vector u(12);
  for (int k = 0; k < 4; ++k) {
    const double p = x[k], q = y[k];
    u[3 * k] = c[0] + c[1] * p + c[2] * q + c[3] * p * p / 2 + c[4] * p * q + c[5] * q * q / 2;
    u[3 * k + 1] = c[2] + c[4] * p + c[5] * q;
    u[3 * k + 2] = -(c[1] + c[3] * p + c[4] * q);
  }
  return u;
}

TEST(PlateElements, SkewQuadrilateralHasTheReferenceEigenvalues) {
  const Vector membrane = SymmetricEigenvalues(Membrane(kSkewX, kSkewY));
  const Vector bending = SymmetricEigenvalues(Bending(kSkewX, kSkewY));
  const double expected[5] = {3344.8395, 6688.7006, 9640.8795, 11824.0709, 24093.3305};
  for (int i = 0; i < 5; ++i)
    EXPECT_NEAR(membrane[3 + i], expected[i], 5e-5) << i;
  EXPECT_NEAR(bending[3], 19.25198, 5e-6);
  EXPECT_NEAR(bending[11], 2080.70541, 5e-6);
  // The same corners taken clockwise: the matrices change sign.
  const Corners4 cwX{kSkewX[0], kSkewX[3], kSkewX[2], kSkewX[1]};
  const Corners4 cwY{kSkewY[0], kSkewY[3], kSkewY[2], kSkewY[1]};
  const Vector m = SymmetricEigenvalues(Membrane(cwX, cwY));
  const Vector b = SymmetricEigenvalues(Bending(cwX, cwY));
  EXPECT_NEAR(m.front(), -expected[4], 5e-5);
  EXPECT_NEAR(b.front(), -2080.70541, 5e-6);
}

TEST(PlateElements, RigidMotionsAreTheOnlyZeroModes) {
  for (const auto& [x, y] : kShapes) {
    Vector tx(8), ty(8), rot(8); // in-plane: two translations, rotation u = -y, v = x
    for (int k = 0; k < 4; ++k) {
      tx[2 * k] = ty[2 * k + 1] = 1;
      rot[2 * k] = -y[k];
      rot[2 * k + 1] = x[k];
    }
    ExpectZeroModes(Membrane(x, y), {tx, ty, rot}, 1e-9, 1e-3);
    ExpectZeroModes(
        Bending(x, y),
        {CornerFreedoms(x, y, {1}), CornerFreedoms(x, y, {0, 1}), CornerFreedoms(x, y, {0, 0, 1})},
        1e-10, 1e-4);
  }
}

TEST(PlateElements, ConstantStrainAndCurvatureStoreTheExactEnergy) {
  const double E = 29000, nu = 0.3, t = 0.5;
  { // u = ex x + g y / 2, v = ey y + g x / 2 on a 4 x 2 rectangle.
    const Corners4 x{0, 4, 4, 0}, y{0, 0, 2, 2};
    const double ex = 1e-3, ey = -4e-4, g = 6e-4, D = E * t / (1 - nu * nu);
    Vector u(8);
    for (int k = 0; k < 4; ++k) {
      u[2 * k] = ex * x[k] + 0.5 * g * y[k];
      u[2 * k + 1] = ey * y[k] + 0.5 * g * x[k];
    }
    const double energy = 4 * D * (ex * ex + 2 * nu * ex * ey + ey * ey + (1 - nu) / 2 * g * g);
    EXPECT_NEAR(Energy(Membrane(x, y, t, E, nu), u), energy, 1e-9 * energy);
  }
  // Bending patch tests on the skew and a general quadrilateral: w = x^2 / 2
  // and the twist w = x y.
  const double D = E * t * t * t / (12 * (1 - nu * nu));
  for (const auto& [x, y] : {kShapes[0], kShapes[2]}) {
    const Dense K = Bending(x, y, t, E, nu);
    const double A = Area(x, y);
    EXPECT_NEAR(Energy(K, CornerFreedoms(x, y, {0, 0, 0, 1})), D * A / 2, 1e-9 * D * A);
    EXPECT_NEAR(Energy(K, CornerFreedoms(x, y, {0, 0, 0, 0, 1})), D * A * (1 - nu), 1e-9 * D * A);
  }
}

// Uniform in-plane fields on every shape: the corner stresses are exact, and a
// plane deflection w = a x + b y stores t A (Sx a^2 + 2 Sxy a b + Sy b^2) / 2,
// negative under compression; a lifted plate stores nothing, the rotations
// nothing at all.
TEST(PlateGeometric, UniformStressIsRecoveredAndPlaneDeflectionsStoreItsEnergy) {
  const double E = 29000, nu = 0.3, t = 0.5, G = E / (2 * (1 + nu)), Eb = E / (1 - nu * nu);
  struct Case {
    double uxx, uxy, vyy, vyx; // u = uxx x + uxy y, v = vyy y + vyx x
    double Sx, Sy, Sxy;
  };
  const Case cases[] = {
      {10 / E, 0, -nu * 10 / E, 0, 10, 0, 0},           // tension 10 along X
      {0, 2.5 / G, 0, 2.5 / G, 0, 0, 5},                // pure shear 5
      {-1e-3, 0, 0, 0, -1e-3 * Eb, -nu * 1e-3 * Eb, 0}, // shortening: compression
  };
  for (const auto& [x, y] : kShapes)
    for (const Case& c : cases) {
      Corners4 u, v;
      for (int k = 0; k < 4; ++k) {
        u[k] = c.uxx * x[k] + c.uxy * y[k];
        v[k] = c.vyy * y[k] + c.vyx * x[k];
      }
      ElementMatrix Kg;
      for (int i = 1; i <= 12; ++i)
        Kg(i, i) = 99; // left from an earlier element: cleared
      const PlateStress s = Plate_Geometric(x, y, t, E, nu, u, v, Kg);
      for (int k = 0; k < 4; ++k) {
        EXPECT_NEAR(s.Sx[k], c.Sx, 1e-9) << k;
        EXPECT_NEAR(s.Sy[k], c.Sy, 1e-9) << k;
      }
      EXPECT_NEAR(s.Sxy, c.Sxy, 1e-9);
      const Dense K = Leading(Kg, 12);
      EXPECT_LT(Asymmetry(K), 1e-12 * MaxAbs(K));
      EXPECT_LT(MaxAbs(Multiply(K, CornerFreedoms(x, y, {1}))), 1e-10 * MaxAbs(K));
      for (const auto& [a, b] : {std::pair{1.0, 0.0}, {0.0, 1.0}, {0.6, -0.8}}) {
        const double energy =
            t * Area(x, y) * (c.Sx * a * a + 2 * c.Sxy * a * b + c.Sy * b * b) / 2;
        EXPECT_NEAR(Energy(K, CornerFreedoms(x, y, {0, a, b})), energy, 1e-9 * MaxAbs(K));
      }
      Vector rotations(12, 0.0);
      for (int k = 0; k < 4; ++k)
        rotations[3 * k + 1] = rotations[3 * k + 2] = k + 1.0;
      EXPECT_EQ(MaxAbs(Multiply(K, rotations)), 0.0);
    }
}

TEST(StiffenerMembrane, BarResistsStretchAlongItsAxisOnly) {
  // Length 5 at (0.6, 0.8): stretching end 2 along the bar takes the axial
  // stiffness; translations, rotation and a turn of end 2 take nothing.
  ElementMatrix Ke;
  const double x1 = 1, y1 = 2, x2 = 4, y2 = 6, k = 4 * 0.5 * 29000 / 5.0;
  Stiffener_Membrane({x1, x2}, {y1, y2}, 0.5, 4, 29000, Ke);
  const Dense K = Leading(Ke, 4);
  EXPECT_EQ(Asymmetry(K), 0.0);
  EXPECT_NEAR(2 * Energy(K, {0, 0, 0.6, 0.8}), k, 1e-9 * k);
  for (const Vector& m : {Vector{1, 0, 1, 0}, {0, 1, 0, 1}, {-y1, x1, -y2, x2}, {0, 0, -0.8, 0.6}})
    EXPECT_LT(MaxAbs(Multiply(K, m)), 1e-9 * k);
}

TEST(StiffenerBending, ClassicalBeamPlusTorsionAlongXAndY) {
  const double t = 0.5, w = 4, E = 29000, nu = 0.3, EI = w * w * w * E * t / 12;
  const double T10 = t * t * t * E * w * (1 - 0.63 * t / w) / ((1 + nu) * 6 * 10),
               T8 = T10 * 10 / 8;
  const Dense K[2] = {Beam({0, 10}, {1, 1}, t, w, 0, E, nu), Beam({2, 2}, {0, 8}, t, w, 0, E, nu)};
  // Row, column, value, in the order w1, rotation X 1, rotation Y 1, w2, ...:
  // along X w' = -rotation Y, along Y the beam twists about Y.
  // clang-format off
  const std::vector<double> entries[2] = {
      {0, 0, 12 * EI / 1000, 0, 2, -6 * EI / 100, 0, 3, -12 * EI / 1000, 0, 5, -6 * EI / 100,
       2, 2, 4 * EI / 10,    2, 5, 2 * EI / 10,   1, 1, T10,             1, 4, -T10},
      {0, 1, 6 * EI / 64, 1, 1, 4 * EI / 8, 2, 2, T8, 2, 5, -T8}};
  // clang-format on
  for (int b = 0; b < 2; ++b)
    for (std::size_t e = 0; e < entries[b].size(); e += 3)
      EXPECT_NEAR(K[b][int(entries[b][e])][int(entries[b][e + 1])], entries[b][e + 2], 1e-9)
          << b << ": " << e / 3;
  for (int j : {0, 2, 3, 5})
    EXPECT_TRUE(K[0][1][j] == 0 && K[0][4][j] == 0) << j;
}

TEST(StiffenerBending, ShearOptionGivesTheTimoshenkoTermsAndKeepsTheRigidModes) {
  // w^2 (1 - nu) / (2 L^2) = 0.25 with w 5, nu 0.5, L 5.
  const double t = 0.5, w = 5, E = 29000, L = 5, EI = w * w * w * E * t / 12;
  const Dense K = Beam({0, L}, {0, 0}, t, w, 1, E, 0.5);
  EXPECT_NEAR(K[2][2], 2.5 * EI / L, 1e-9);
  EXPECT_NEAR(K[2][5], 0.5 * EI / L, 1e-9);
  EXPECT_NEAR(K[0][0], 12 * EI / (L * L * L * 2), 1e-9);

  const Ends2 x{1, 4}, y{2, 6}; // w = 1, w = x, w = y
  for (int shear : {0, 1})
    ExpectZeroModes(Beam(x, y, 0.5, 4, shear),
                    {{1, 0, 0, 1, 0, 0}, {x[0], 0, -1, x[1], 0, -1}, {y[0], 1, 0, y[1], 1, 0}},
                    1e-10, 1e-6);
}

TEST(StiffenerGeometric, AxialForceActsOnDeflectionsAndTorsionOptionOnTwist) {
  // Length 5 along (0.6, 0.8); end 2 moves 0.01 along the bar: tension.
  const double t = 0.5, w = 4, E = 29000, L = 5, c = 0.6, s = 0.8;
  const Ends2 u{0, 0.01 * c}, v{0, 0.01 * s};
  const Vector tilt{0, 0, 0, 1, 0, 0}, twist{0, c, s, 0, 0, 0}, turn{0, -s, c, 0, -s, c};
  ElementMatrix Kg;
  for (int torsion : {1, 0}) { // nothing left from the run before
    const double sig = Stiffener_Geometric({1, 4}, {2, 6}, t, w, E, torsion, u, v, Kg);
    EXPECT_NEAR(sig, 0.01 * E / L, 1e-9);
    // N / L on the difference of the deflections; t w^3 / 12 sigma / L on the
    // twist about the bar's axis with the option; a rotation across the axis
    // is not touched.
    const Dense G = Leading(Kg, 6);
    EXPECT_LT(Asymmetry(G), 1e-12 * MaxAbs(G));
    EXPECT_NEAR(2 * Energy(G, tilt), sig * w * t / L, 1e-9);
    EXPECT_NEAR(2 * Energy(G, twist), torsion * sig * t * w * w * w / (12 * L), 1e-9);
    EXPECT_NEAR(MaxAbs(Multiply(G, turn)), 0.0, 1e-12);
    EXPECT_EQ(MaxAbs(Multiply(G, {1, 0, 0, 1, 0, 0})), 0.0);
  }
}

TEST(ElementFaults, DegenerateGeometryIsADivisionByZero) {
  ElementMatrix K;
  const auto zero = [](auto action) { return FaultOf(action) == errDivByZero; };
  EXPECT_TRUE(zero([&] { Plate_Membrane({0, 1, 2, 3}, {0, 1, 2, 3}, 0.5, 29000, 0.3, K); }));
  EXPECT_TRUE(zero([&] { Plate_Bending(29000, 0.3, 0.5, {0, 1, 2, 1}, {0, 1, 2, 1}, K); }));
  EXPECT_TRUE(zero([] { Triangle_Geometric({0, 1, 2}, {0, 1, 2}, 1, 1, 0, 0); }));
  EXPECT_TRUE(zero([&] { Stiffener_Membrane({3, 3}, {1, 1}, 0.5, 4, 29000, K); }));
  EXPECT_TRUE(zero([] { Beam({0, 10}, {0, 0}, 0.5, 0, 0); })); // no width
  EXPECT_TRUE(zero([] { Beam({2, 2}, {1, 1}, 0.5, 4, 0); }));  // no length
  EXPECT_TRUE(zero([&] {
    Stiffener_Geometric({2, 2}, {1, 1}, 0.5, 4, 29000, 0, {0, 0}, {0, 0}, K);
  }));
}

} // namespace
} // namespace velk::test
