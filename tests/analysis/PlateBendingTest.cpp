// Conforming bending quadrilateral (four compatible triangles, inner freedoms
// condensed) and its triangle.
#include <gtest/gtest.h>

#include <cmath>

#include "SymmetricEigen.h"
#include "analysis/PlateBending.h"
#include "common/Fault.h"

namespace velk {
namespace {

using test::Dense;

const Corners4 kSkewX{0, 10, 11, -1};
const Corners4 kSkewY{0, 1, 9, 8};

Dense Bending(const Corners4& x, const Corners4& y, double t = 0.5, double E = 29000,
              double nu = 0.3) {
  ElementMatrix Ke;
  Plate_Bending(E, nu, t, x, y, Ke);
  return test::Leading(Ke, 12);
}

double QuadArea(const Corners4& x, const Corners4& y) {
  return 0.5 * ((x[0] - x[2]) * (y[1] - y[3]) - (x[1] - x[3]) * (y[0] - y[2]));
}

// Corner freedoms (w, rotation X = dw/dy, rotation Y = -dw/dx) of a field
// given by its value and gradient.
template <class W, class Wx, class Wy>
std::vector<double> CornerFreedoms(const Corners4& x, const Corners4& y, W w, Wx wx, Wy wy) {
  std::vector<double> u(12);
  for (int k = 0; k < 4; ++k) {
    u[3 * k] = w(x[k], y[k]);
    u[3 * k + 1] = wy(x[k], y[k]);
    u[3 * k + 2] = -wx(x[k], y[k]);
  }
  return u;
}

TEST(PlateBending, SkewQuadrilateralHasTheReferenceExtremeEigenvalues) {
  const auto values = test::SymmetricEigenvalues(Bending(kSkewX, kSkewY));
  for (int i = 0; i < 3; ++i)
    EXPECT_NEAR(values[i], 0.0, 1e-8) << i;
  EXPECT_NEAR(values[3], 19.25198, 5e-6);
  EXPECT_NEAR(values[11], 2080.70541, 5e-6);
}

TEST(PlateBending, RigidModesAreTheOnlyZeroModesAndMatrixIsSymmetric) {
  const std::pair<Corners4, Corners4> shapes[] = {
      {kSkewX, kSkewY}, {{0, 4, 4, 0}, {0, 0, 2, 2}}, {{2, 7, 6, 1}, {-1, 0, 5, 3}}};
  for (const auto& [x, y] : shapes) {
    const Dense K = Bending(x, y);
    const double scale = test::MaxAbs(K);
    EXPECT_LT(test::Asymmetry(K), 1e-12 * scale);
    const auto one = CornerFreedoms(
        x, y, [](double, double) { return 1.0; }, [](double, double) { return 0.0; },
        [](double, double) { return 0.0; });
    const auto tiltX = CornerFreedoms(
        x, y, [](double px, double) { return px; }, [](double, double) { return 1.0; },
        [](double, double) { return 0.0; });
    const auto tiltY = CornerFreedoms(
        x, y, [](double, double py) { return py; }, [](double, double) { return 0.0; },
        [](double, double) { return 1.0; });
    for (const auto& mode : {one, tiltX, tiltY})
      EXPECT_LT(test::MaxAbs(test::Multiply(K, mode)), 1e-10 * scale);
    EXPECT_GT(test::SymmetricEigenvalues(K)[3], 1e-4 * scale);
  }
}

TEST(PlateBending, ConstantCurvaturePatchTests) {
  const double E = 29000, nu = 0.3, t = 0.5;
  const double D = E * t * t * t / (12 * (1 - nu * nu));
  const std::pair<Corners4, Corners4> shapes[] = {{kSkewX, kSkewY}, {{2, 7, 6, 1}, {-1, 0, 5, 3}}};
  for (const auto& [x, y] : shapes) {
    const Dense K = Bending(x, y, t, E, nu);
    const double A = QuadArea(x, y);
    // w = x^2 / 2: rotation X = 0, rotation Y = -x.
    const auto bend = CornerFreedoms(
        x, y, [](double px, double) { return px * px / 2; }, [](double px, double) { return px; },
        [](double, double) { return 0.0; });
    EXPECT_NEAR(0.5 * test::Dot(bend, test::Multiply(K, bend)), D * A / 2, 1e-9 * D * A);
    // w = x y: rotation X = x, rotation Y = -y.
    const auto twist = CornerFreedoms(
        x, y, [](double px, double py) { return px * py; }, [](double, double py) { return py; },
        [](double px, double) { return px; });
    EXPECT_NEAR(0.5 * test::Dot(twist, test::Multiply(K, twist)), D * A * (1 - nu), 1e-9 * D * A);
  }
}

TEST(PlateBending, CornerOnTheCentreIsADivisionByZero) {
  ElementMatrix Ke;
  // Corner 2 lies at the mean of the four corners: triangle 1 loses a side.
  try {
    Plate_Bending(29000, 0.3, 0.5, {0, 1, 2, 1}, {0, 1, 2, 1}, Ke);
    FAIL() << "no fault";
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), errDivByZero);
  }
}

// Triangle freedoms of a quadratic field: w and rotations at the vertices and
// the slopes (b(k) w,x + a(k) w,y) / l(k) at the midpoints of sides 1 and 2,
// the orientation that the tie of side 3 gives its own slope.
std::vector<double> TriangleFreedoms(const double x[3], const double y[3], double cxx, double cyy,
                                     double cxy, int keep) {
  auto wx = [&](double px, double py) { return cxx * px + cxy * py; };
  auto wy = [&](double px, double py) { return cyy * py + cxy * px; };
  std::vector<double> u(keep, 0.0);
  for (int v = 0; v < 3; ++v) {
    u[3 * v] = 0.5 * cxx * x[v] * x[v] + 0.5 * cyy * y[v] * y[v] + cxy * x[v] * y[v];
    u[3 * v + 1] = wy(x[v], y[v]);
    u[3 * v + 2] = -wx(x[v], y[v]);
  }
  for (int k = 1; k <= keep - 9; ++k) {
    const int i = k % 3, j = (k + 1) % 3; // side k runs between the other two vertices
    const double a = x[j] - x[i], b = y[i] - y[j];
    const double l = std::hypot(a, b);
    const double mx = 0.5 * (x[i] + x[j]), my = 0.5 * (y[i] + y[j]);
    u[8 + k] = (b * wx(mx, my) + a * wy(mx, my)) / l;
  }
  return u;
}

TEST(TriangleBending, LinearlyVaryingThicknessIntegratesTheCubeExactly) {
  const double E = 1000, nu = 0.25;
  const double x[3] = {0.5, 6, 2}, y[3] = {0, 1.5, 5};
  const double h[3] = {0.2, 0.5, 0.3};
  // Integral of h^3 over a triangle with linear h: A / 10 times the sum of all
  // ten cubic monomials of the vertex values.
  double monomials = 0;
  for (int a = 0; a <= 3; ++a)
    for (int b = 0; a + b <= 3; ++b) {
      const int c = 3 - a - b;
      monomials += std::pow(h[0], a) * std::pow(h[1], b) * std::pow(h[2], c);
    }
  const double A = 0.5 * ((x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]));
  const double cube = A / 10 * monomials;
  const double D11 = E / (1 - nu * nu);

  for (int keep : {11, 10, 9}) {
    TriangleMatrix T;
    Triangle_Bending(E, nu, h[0], h[1], h[2], x[0], x[1], x[2], y[0], y[1], y[2], T, keep);
    Dense K(keep, std::vector<double>(keep));
    for (int i = 0; i < keep; ++i)
      for (int j = 0; j < keep; ++j)
        K[i][j] = T(i + 1, j + 1);
    EXPECT_LT(test::Asymmetry(K), 1e-12 * test::MaxAbs(K));
    for (int i = keep + 1; i <= 12; ++i)
      EXPECT_EQ(T(i, i), 0.0);

    const double cases[3][3] = {{1, 0, 0}, {0.3, -0.7, 0}, {0, 0, 1}};
    for (const auto& cv : cases) {
      const auto u = TriangleFreedoms(x, y, cv[0], cv[1], cv[2], keep);
      // Energy density of curvatures (kxx, kyy, 2kxy) with D / 12 per unit h^3.
      const double kxx = cv[0], kyy = cv[1], kxy2 = 2 * cv[2];
      const double density =
          D11 / 12 * (kxx * kxx + 2 * nu * kxx * kyy + kyy * kyy + (1 - nu) / 2 * kxy2 * kxy2);
      EXPECT_NEAR(0.5 * test::Dot(u, test::Multiply(K, u)), 0.5 * density * cube,
                  1e-9 * density * cube)
          << "keep " << keep;
    }
  }
}

} // namespace
} // namespace velk
