// The element matrices: plate membrane with its stress recovery, plate bending,
// plate geometric stiffness, and the stiffener as bar, beam and geometric
// stiffness. Reference spectra, rigid modes, patch energies and exact entries.
#include <gtest/gtest.h>

#include <functional>

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
// of a field w with gradient (wx, wy).
using Field = std::function<double(double, double)>;
Vector CornerFreedoms(const Corners4& x, const Corners4& y, Field w, Field wx, Field wy) {
  Vector u(12);
  for (int k = 0; k < 4; ++k) {
    u[3 * k] = w(x[k], y[k]);
    u[3 * k + 1] = wy(x[k], y[k]);
    u[3 * k + 2] = -wx(x[k], y[k]);
  }
  return u;
}
const Field kZero = [](double, double) { return 0.0; }, kOne = [](double, double) { return 1.0; };

TEST(PlateElements, SkewQuadrilateralHasTheReferenceEigenvalues) {
  const Vector membrane = SymmetricEigenvalues(Membrane(kSkewX, kSkewY));
  const double expected[5] = {3344.8395, 6688.7006, 9640.8795, 11824.0709, 24093.3305};
  for (int i = 0; i < 5; ++i)
    EXPECT_NEAR(membrane[3 + i], expected[i], 5e-5) << i;
  const Vector bending = SymmetricEigenvalues(Bending(kSkewX, kSkewY));
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(membrane[i], 0.0, 1e-8) << i;
    EXPECT_NEAR(bending[i], 0.0, 1e-8) << i;
  }
  EXPECT_NEAR(bending[3], 19.25198, 5e-6);
  EXPECT_NEAR(bending[11], 2080.70541, 5e-6);
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
    const Field px = [](double a, double) { return a; }, py = [](double, double b) { return b; };
    ExpectZeroModes(Bending(x, y),
                    {CornerFreedoms(x, y, kOne, kZero, kZero),
                     CornerFreedoms(x, y, px, kOne, kZero), CornerFreedoms(x, y, py, kZero, kOne)},
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
    const double A = 0.5 * ((x[0] - x[2]) * (y[1] - y[3]) - (x[1] - x[3]) * (y[0] - y[2]));
    const auto bend = CornerFreedoms(
        x, y, [](double a, double) { return a * a / 2; }, [](double a, double) { return a; },
        kZero);
    EXPECT_NEAR(Energy(K, bend), D * A / 2, 1e-9 * D * A);
    const auto twist = CornerFreedoms(
        x, y, [](double a, double b) { return a * b; }, [](double, double b) { return b; },
        [](double a, double) { return a; });
    EXPECT_NEAR(Energy(K, twist), D * A * (1 - nu), 1e-9 * D * A);
  }
}

TEST(PlateMembrane, ClockwiseCornersGiveTheOppositeSign) {
  const Dense ccw = Membrane(kSkewX, kSkewY);
  const Dense cw = Membrane({kSkewX[0], kSkewX[3], kSkewX[2], kSkewX[1]},
                            {kSkewY[0], kSkewY[3], kSkewY[2], kSkewY[1]});
  const int from[4] = {0, 3, 2, 1};
  for (int a = 0; a < 8; ++a)
    for (int b = 0; b < 8; ++b)
      EXPECT_NEAR(cw[a][b], -ccw[2 * from[a / 2] + a % 2][2 * from[b / 2] + b % 2], 1e-8);
}

TEST(PlateStress, UniformFieldsAreRecoveredExactly) {
  const double E = 29000, nu = 0.3, G = E / (2 * (1 + nu)), Eb = E / (1 - nu * nu);
  struct Case {
    double uxx, uxy, vyy, vyx; // u = uxx x + uxy y, v = vyy y + vyx x
    double Sx, Sy, Sxy;
  };
  const Case cases[] = {
      {10 / E, 0, -nu * 10 / E, 0, 10, 0, 0},           // tension 10 along X
      {0, 2.5 / G, 0, 2.5 / G, 0, 0, 5},                // pure shear 5
      {-1e-3, 0, 0, 0, -1e-3 * Eb, -nu * 1e-3 * Eb, 0}, // shortening: compression
  };
  for (const Case& c : cases) {
    Corners4 u, v;
    for (int k = 0; k < 4; ++k) {
      u[k] = c.uxx * kSkewX[k] + c.uxy * kSkewY[k];
      v[k] = c.vyy * kSkewY[k] + c.vyx * kSkewX[k];
    }
    const PlateStress s = Plate_Stress(kSkewX, kSkewY, u, v, E, nu);
    for (int k = 0; k < 4; ++k) {
      EXPECT_NEAR(s.Sx[k], c.Sx, 1e-9) << k;
      EXPECT_NEAR(s.Sy[k], c.Sy, 1e-9) << k;
    }
    EXPECT_NEAR(s.Sxy, c.Sxy, 1e-9);
  }
}

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
  Kg(13, 13) = 7; // outside the 12 x 12 corner: left alone
  for (int i = 1; i <= 12; ++i)
    Kg(i, i) = 5; // inside: cleared
  const PlateStress s = Plate_Geometric(x, y, 1.0, E, nu, u, v, Kg);
  for (int k = 0; k < 4; ++k) {
    EXPECT_NEAR(s.Sx[k], -1, 1e-12);
    EXPECT_NEAR(s.Sy[k], 0, 1e-12);
  }
  EXPECT_NEAR(s.Sxy, 0, 1e-12);
  Dense expected(12, Vector(12, 0.0));
  for (int i : {0, 6}) { // w of corners 1-2 and 3-4: -0.5 on the diagonal, 0.5 between
    expected[i][i] = expected[i + 3][i + 3] = -0.5;
    expected[i][i + 3] = expected[i + 3][i] = 0.5;
  }
  for (int i = 1; i <= 12; ++i)
    for (int j = 1; j <= 12; ++j)
      EXPECT_NEAR(Kg(i, j), expected[i - 1][j - 1], 1e-12) << i << "," << j;
  EXPECT_EQ(Kg(13, 13), 7.0);
}

TEST(PlateGeometric, RigidDeflectionHasNoEnergyAndTensionIsPositive) {
  Corners4 u, v; // tension along X with some Y and shear
  for (int k = 0; k < 4; ++k) {
    u[k] = 2e-3 * kSkewX[k] + 3e-4 * kSkewY[k];
    v[k] = 5e-4 * kSkewY[k] + 1e-4 * kSkewX[k];
  }
  ElementMatrix Kg;
  Plate_Geometric(kSkewX, kSkewY, 0.5, 29000, 0.3, u, v, Kg);
  const Dense K = Leading(Kg, 12);
  EXPECT_LT(Asymmetry(K), 1e-12 * MaxAbs(K));
  for (int i = 0; i < 12; ++i) {
    EXPECT_NEAR(K[i][0] + K[i][3] + K[i][6] + K[i][9], 0.0, 1e-10 * MaxAbs(K)) << i;
    for (int j = 0; j < 12 && i % 3 != 0; ++j)
      EXPECT_EQ(K[i][j], 0.0) << i << "," << j; // rotations carry nothing
  }
  const Vector values = SymmetricEigenvalues(K); // both principal stresses tensile
  EXPECT_GT(values.back(), 0.0);
  EXPECT_GT(values.front(), -1e-10 * values.back());
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
  // Order w1, rotation X 1, rotation Y 1, w2, ...; along X w' = -rotation Y,
  // along Y the beam twists about Y.
  const struct {
    int beam, i, j;
    double value;
  } entries[] = {{0, 0, 0, 12 * EI / 1000},
                 {0, 0, 2, -6 * EI / 100},
                 {0, 0, 3, -12 * EI / 1000},
                 {0, 0, 5, -6 * EI / 100},
                 {0, 2, 2, 4 * EI / 10},
                 {0, 2, 5, 2 * EI / 10},
                 {0, 2, 3, 6 * EI / 100},
                 {0, 1, 1, T10},
                 {0, 1, 4, -T10},
                 {1, 0, 1, 6 * EI / 64},
                 {1, 1, 1, 4 * EI / 8},
                 {1, 2, 2, T8},
                 {1, 2, 5, -T8}};
  for (const auto& e : entries)
    EXPECT_NEAR(K[e.beam][e.i][e.j], e.value, 1e-9) << e.beam << ": " << e.i << "," << e.j;
  for (int j : {0, 2, 3, 5})
    EXPECT_TRUE(K[0][1][j] == 0 && K[0][4][j] == 0) << j;
  EXPECT_EQ(Asymmetry(K[0]), 0.0);
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

TEST(StiffenerGeometric, AxialForceActsOnDeflectionsAndTorsionOptionOnAxialRotations) {
  ElementMatrix Kg;
  for (int i = 1; i <= 6; ++i)
    for (int j = 1; j <= 6; ++j)
      Kg(i, j) = 99;
  // A rigid in-plane motion strains nothing: a zero matrix.
  EXPECT_EQ(Stiffener_Geometric({1, 4}, {2, 6}, 0.5, 4, 29000, 1, {0.1, 0.1}, {0.2, 0.2}, Kg), 0.0);
  EXPECT_EQ(MaxAbs(Leading(Kg, 6)), 0.0);

  const double t = 0.5, w = 4, E = 29000, L = 5, c = 0.6, s = 0.8;
  const Ends2 u{0, 0.01 * c}, v{0, 0.01 * s}; // end 2 moves 0.01 along the bar: tension
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
  const Dense G = Leading(Kg, 6);
  EXPECT_LT(Asymmetry(G), 1e-12 * MaxAbs(G));
  EXPECT_NEAR(Kg(1, 1), N, 1e-9);
  EXPECT_NEAR(Kg(2, 2), g * c * c, 1e-9);
  EXPECT_NEAR(Kg(3, 5), -g * s * c, 1e-9);
  EXPECT_NEAR(Kg(6, 6), g * s * s, 1e-9);
  // A twist about the bar's axis at end 1 is stiffened by g; a rotation
  // across the axis is not touched.
  EXPECT_NEAR(2 * Energy(G, {0, c, s, 0, 0, 0}), g, 1e-9);
  EXPECT_NEAR(MaxAbs(Multiply(G, {0, -s, c, 0, -s, c})), 0.0, 1e-12);
}

TEST(ElementFaults, DegenerateGeometryIsADivisionByZero) {
  ElementMatrix K;
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"plate on a line",
       [&] {
         Plate_Membrane({0, 1, 2, 3}, {0, 1, 2, 3}, 0.5, 29000, 0.3, K);
       }},
      {"corner on the centre",
       [&] {
         Plate_Bending(29000, 0.3, 0.5, {0, 1, 2, 1}, {0, 1, 2, 1}, K);
       }},
      {"flat triangle",
       [] {
         Triangle_Geometric({0, 1, 2}, {0, 1, 2}, 1, 1, 0, 0);
       }},
      {"bar of no length",
       [&] {
         Stiffener_Membrane({3, 3}, {1, 1}, 0.5, 4, 29000, K);
       }},
      {"beam of no width",
       [] {
         Beam({0, 10}, {0, 0}, 0.5, 0, 0);
       }},
      {"beam of no length",
       [] {
         Beam({2, 2}, {1, 1}, 0.5, 4, 0);
       }},
      {"geometric of no length",
       [&] {
         Stiffener_Geometric({2, 2}, {1, 1}, 0.5, 4, 29000, 0, {0, 0}, {0, 0}, K);
       }},
  };
  for (const auto& [name, action] : cases)
    EXPECT_EQ(FaultOf(action), errDivByZero) << name;
}

} // namespace
} // namespace velk::test
