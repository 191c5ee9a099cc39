// The building blocks put together on the simply supported square plate: an
// in-plane solve, stresses into a geometric stiffness, bending and stiffener
// matrices, supports, and a plain inverse iteration for the lowest load
// factor. Checks the elements, the assembly and the solver as one chain
// against the plate's known buckling loads.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "analysis/BandMatrix.h"
#include "analysis/CheckedArithmetic.h"
#include "analysis/PlateBending.h"
#include "analysis/PlateGeometric.h"
#include "analysis/PlateMembrane.h"
#include "analysis/StiffenerBending.h"
#include "analysis/StiffenerMembrane.h"

namespace velk {
namespace {

struct Stiffeners {
  bool present = false;
  int shear = 0;
  int torsion = 0;
};

// Side-10 plate on an n x n grid, t 0.1, E 1000, nu 0.3; u fixed along x = 0, v
// at the origin, w along all four sides; a unit load per length in -X on x = 10.
// With stiffeners: one bar per element along y = 5, thickness 0.1, width 1.
double SquarePlateLoadFactor(int elements, Stiffeners stiff = {}) {
  const double side = 10, t = 0.1, E = 1000, nu = 0.3;
  const double stiffT = 0.1, stiffW = 1;
  const int nx = elements, ny = elements, perColumn = ny + 1;
  const int points = (nx + 1) * perColumn;
  auto node = [&](int ix, int iy) { return ix * perColumn + iy + 1; };
  std::vector<double> X(points + 1), Y(points + 1);
  for (int ix = 0; ix <= nx; ++ix)
    for (int iy = 0; iy <= ny; ++iy) {
      X[node(ix, iy)] = side * ix / nx;
      Y[node(ix, iy)] = side * iy / ny;
    }
  const int R = 3 * points, B = 3 * (perColumn + 2);

  struct Plate {
    int n[4];
    Corners4 x, y;
  };
  std::vector<Plate> plates;
  for (int ix = 0; ix < nx; ++ix)
    for (int iy = 0; iy < ny; ++iy) {
      Plate p{{node(ix, iy), node(ix + 1, iy), node(ix + 1, iy + 1), node(ix, iy + 1)}, {}, {}};
      for (int k = 0; k < 4; ++k) {
        p.x[k] = X[p.n[k]];
        p.y[k] = Y[p.n[k]];
      }
      plates.push_back(p);
    }
  struct Bar {
    int n[2];
    Ends2 x, y;
  };
  std::vector<Bar> bars;
  if (stiff.present)
    for (int ix = 0; ix < nx; ++ix) {
      const int a = node(ix, ny / 2), b = node(ix + 1, ny / 2);
      bars.push_back({{a, b}, {X[a], X[b]}, {Y[a], Y[b]}});
    }

  ElementMatrix Ke, Kge;
  // In-plane stage.
  BandMatrix K(R, B);
  std::vector<double> F(R, 0.0);
  int bw = 0;
  for (const Plate& p : plates) {
    Plate_Membrane(p.x, p.y, t, E, nu, Ke);
    std::int16_t dofs[8];
    for (int k = 0; k < 4; ++k)
      for (int d = 1; d <= 2; ++d)
        dofs[2 * k + d - 1] = Dof_Number(p.n[k], d, 2);
    EXPECT_FALSE(Band_Assemble(Ke, K, bw, dofs));
  }
  for (const Bar& s : bars) {
    Stiffener_Membrane(s.x, s.y, stiffT, stiffW, E, Ke);
    std::int16_t dofs[4];
    for (int k = 0; k < 2; ++k)
      for (int d = 1; d <= 2; ++d)
        dofs[2 * k + d - 1] = Dof_Number(s.n[k], d, 2);
    EXPECT_FALSE(Band_Assemble(Ke, K, bw, dofs));
  }
  for (int iy = 0; iy <= ny; ++iy) {
    const double share = (iy == 0 || iy == ny ? 0.5 : 1.0) * side / ny;
    F[Dof_Number(node(nx, iy), 1, 2) - 1] -= share;
  }
  for (int iy = 0; iy <= ny; ++iy)
    Band_Prescribe(K, F, Dof_Number(node(0, iy), 1, 2), 0, bw, 2);
  Band_Prescribe(K, F, Dof_Number(node(0, 0), 2, 2), 0, bw, 2);
  Band_Factor(K, 2 * points, bw);
  Band_Solve(K, F, F, 2 * points, bw);

  // Buckling stage.
  BandMatrix Kb(R, B), Kg(R, B);
  std::vector<double> iterate(R, 0.0);
  bw = 0;
  for (const Plate& p : plates) {
    Corners4 u, v;
    for (int k = 0; k < 4; ++k) {
      u[k] = F[2 * p.n[k] - 2];
      v[k] = F[2 * p.n[k] - 1];
    }
    Plate_Bending(E, nu, t, p.x, p.y, Ke);
    Plate_Geometric(p.x, p.y, t, E, nu, u, v, Kge);
    std::int16_t dofs[12];
    for (int k = 0; k < 4; ++k)
      for (int d = 1; d <= 3; ++d)
        dofs[3 * k + d - 1] = Dof_Number(p.n[k], d, 3);
    EXPECT_FALSE(Band_Assemble(Kge, Kg, bw, dofs));
    EXPECT_FALSE(Band_Assemble(Ke, Kb, bw, dofs));
  }
  for (const Bar& s : bars) {
    const Ends2 u{F[2 * s.n[0] - 2], F[2 * s.n[1] - 2]}, v{F[2 * s.n[0] - 1], F[2 * s.n[1] - 1]};
    Stiffener_Bending(s.x, s.y, stiffT, stiffW, E, nu, stiff.shear, Ke);
    Stiffener_Geometric(s.x, s.y, stiffT, stiffW, E, stiff.torsion, u, v, Kge);
    std::int16_t dofs[6];
    for (int k = 0; k < 2; ++k)
      for (int d = 1; d <= 3; ++d)
        dofs[3 * k + d - 1] = Dof_Number(s.n[k], d, 3);
    EXPECT_FALSE(Band_Assemble(Kge, Kg, bw, dofs));
    EXPECT_FALSE(Band_Assemble(Ke, Kb, bw, dofs));
  }
  for (int ix = 0; ix <= nx; ++ix)
    for (int iy = 0; iy <= ny; ++iy)
      if (ix == 0 || ix == nx || iy == 0 || iy == ny) {
        const int dof = Dof_Number(node(ix, iy), 1, 3);
        Band_Prescribe(Kb, iterate, dof, 0, bw, 2);
        Band_Prescribe(Kg, iterate, dof, 0, bw, 1);
      }

  // K phi = lambda (-Kg) phi: inverse iteration from an irregular start, so
  // that no symmetry of the plate hides the lowest mode, and the Rayleigh
  // quotient as the estimate.
  const int n = 3 * points;
  BandMatrix factored = Kb;
  Band_Factor(factored, n, bw);
  std::vector<double> x(n), y(n), Kx(n);
  for (int i = 0; i < n; ++i)
    x[i] = std::sin(1.7 * i + 0.3);
  double lambda = 0;
  for (int cycle = 0; cycle < 300; ++cycle) {
    Band_Multiply(Kg, x, y, n, bw); // y = -Kg x
    Band_Solve(factored, y, y, n, bw);
    double largest = 0;
    for (double value : y)
      largest = std::max(largest, std::abs(value));
    for (int i = 0; i < n; ++i)
      x[i] = y[i] / largest;
    Band_Multiply(Kb, x, Kx, n, bw); // -K x
    Band_Multiply(Kg, x, y, n, bw);  // -Kg x
    double num = 0, den = 0;
    for (int i = 0; i < n; ++i) {
      num -= x[i] * Kx[i];
      den += x[i] * y[i];
    }
    lambda = num / den;
  }
  return lambda;
}

TEST(SquarePlateBuckling, SimplySupportedPlateOnFourAndSixElementGrids) {
  EXPECT_NEAR(SquarePlateLoadFactor(4), 0.03905, 5e-6);
  EXPECT_NEAR(SquarePlateLoadFactor(6), 0.03748, 5e-6);
}

TEST(SquarePlateBuckling, FinerGridsFallTowardsTheClassicCoefficient) {
  EXPECT_NEAR(SquarePlateLoadFactor(8), 0.03690, 5e-6);
  EXPECT_NEAR(SquarePlateLoadFactor(10), 0.03663, 5e-6);
}

TEST(SquarePlateBuckling, LineOfStiffenersRaisesTheLoadFactor) {
  EXPECT_NEAR(SquarePlateLoadFactor(6, {true, 0, 0}), 0.1695, 5e-5);
  EXPECT_NEAR(SquarePlateLoadFactor(6, {true, 1, 0}), 0.1683, 5e-5);
  // The mode does not twist the stiffener line: the torsion option changes
  // nothing to four digits.
  EXPECT_NEAR(SquarePlateLoadFactor(6, {true, 0, 1}), 0.1695, 5e-5);
  EXPECT_NEAR(SquarePlateLoadFactor(6, {true, 1, 1}), 0.1683, 5e-5);
}

} // namespace
} // namespace velk
