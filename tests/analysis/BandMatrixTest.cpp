// Upper-band storage: assembly with its overflow, prescribed freedoms, the
// factoring without row exchange, the solve and the product; and which of the
// kernels does the work.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <random>

#include "SymmetricEigen.h"
#include "analysis/BandMatrix.h"

namespace velk::test {
namespace {

// Full symmetric matrix of rows 1..n of a band.
Dense Full(const BandMatrix& M, int n) {
  Dense a(n, Vector(n, 0.0));
  for (int r = 1; r <= n; ++r)
    for (int b = 1; b <= M.Columns() && r + b - 1 <= n; ++b)
      a[r - 1][r + b - 2] = a[r + b - 2][r - 1] = M(r, b);
  return a;
}

// A symmetric band matrix with entries in (-1, 1) and a diagonal of `shift`
// plus noise: positive definite for a large shift, indefinite for a small one.
BandMatrix RandomBand(int R, int B, int n, int bw, double shift, unsigned seed) {
  std::mt19937 gen(seed);
  std::uniform_real_distribution<double> dist(-1.0, 1.0);
  BandMatrix M(R, B);
  for (int r = 1; r <= n; ++r)
    for (int b = 1; b <= bw && r + b - 1 <= n; ++b)
      M(r, b) = b == 1 ? shift + dist(gen) : dist(gen);
  return M;
}

// The elimination written entry by entry, in its plain loop order, on rows
// 1..n and band columns 1..bw.
void EntryByEntry(BandMatrix& M, int n, int bw) {
  for (int i = 2; i <= n; ++i)
    for (int j = 1; j <= std::min(bw - 1, n - i + 1); ++j) {
      double s = 0;
      for (int c = 1; c <= std::min(i - 1, bw - j); ++c)
        s = s + M(i - c, c + 1) * M(i - c, j + c) / M(i - c, 1);
      M(i, j) = M(i, j) - s;
    }
}

// NaN wherever the operations must not look: band columns beyond bw, entries
// beyond column n, rows beyond n. One read of them would spread into the
// results.
void Poison(BandMatrix& M, int n, int bw) {
  for (int r = 1; r <= M.Rows(); ++r)
    for (int b = 1; b <= M.Columns(); ++b)
      if (r > n || b > bw || r + b - 1 > n) M(r, b) = std::numeric_limits<double>::quiet_NaN();
}

// Shapes around the elimination's blocks of pivots and register tiles: bands
// narrower and wider than a block, a band wider than the matrix, row counts
// just past a block, storage wider than the band in use.
struct Shape {
  int R, B, n, bw;
};
constexpr Shape kShapes[] = {{60, 12, 60, 12}, {200, 45, 190, 40}, {150, 70, 150, 70},
                             {37, 50, 37, 50}, {33, 33, 33, 33},   {150, 3, 150, 2},
                             {97, 31, 97, 31}, {300, 120, 261, 97}};

TEST(BandAssemble, StoresTheUpperTriangleAndReportsOverflows) {
  ElementMatrix Ke;
  const double k[3][3] = {{4, 1, 2}, {1, 5, 3}, {2, 3, 6}};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      Ke(i + 1, j + 1) = k[i][j];
  BandMatrix M(8, 5);
  int bw = 0;
  const std::int16_t dofs[] = {5, 3, 1}; // descending; b == B is accepted
  for (int pass = 1; pass <= 2; ++pass)  // the second pass adds
    EXPECT_FALSE(Band_Assemble(Ke, M, bw, dofs).has_value());
  EXPECT_EQ(bw, 5);
  // (5,5) (3,5) (1,5) (3,3) (1,3) (1,1)
  const double stored[] = {M(5, 1), M(3, 3), M(1, 5), M(3, 1), M(1, 3), M(1, 1)};
  EXPECT_EQ(Vector(std::begin(stored), std::end(stored)), (Vector{8, 2, 4, 10, 6, 12}));

  // Freedoms; the freedom and band reported; bw after. B + 1, bw raised
  // before the test against the capacity; a row beyond R, before any column
  // is computed; the second freedom beyond R.
  const int cases[][5] = {{2, 7, 2, 6, 6}, {9, 1, 9, 0, 6}, {1, 9, 1, 9, 9}};
  for (const auto& c : cases) {
    const std::int16_t pair[] = {static_cast<std::int16_t>(c[0]), static_cast<std::int16_t>(c[1])};
    const auto overflow = Band_Assemble(Ke, M, bw, pair);
    ASSERT_TRUE(overflow.has_value()) << c[0] << "," << c[1];
    EXPECT_EQ((std::array{overflow->dof, overflow->band, bw}), (std::array{c[2], c[3], c[4]}));
  }
  EXPECT_EQ(M(2, 1), 4); // the entry before the failing one went in
}

// Freedom 4 reaches row 1 with the column part of its coupling; freedom 1 has
// only a row part.
TEST(BandPrescribe, MovesCouplingsToTheRightHandSideOnceAndTheValueComesBack) {
  const int R = 8, bw = 4;
  for (int dof : {4, 1}) {
    BandMatrix M = RandomBand(R, bw, R, bw, 6.0, 2), twice = M;
    const Dense before = Full(M, R);
    Vector F{1, -1, 2, -2, 3, -3, 4, -4}, F2 = F;
    Band_Prescribe(M, F, dof, 0.3125, bw, 2);
    const Dense after = Full(M, R);
    for (int i = 0; i < R; ++i) {
      EXPECT_EQ(after[dof - 1][i], i == dof - 1 ? 1.0 : 0.0) << i;
      EXPECT_DOUBLE_EQ(F[i], i == dof - 1 ? 0.3125 : F2[i] - before[i][dof - 1] * 0.3125) << i;
    }
    for (int pass = 1; pass <= 2; ++pass) // twice is once
      Band_Prescribe(twice, F2, dof, 0.3125, bw, 2);
    EXPECT_EQ(Full(twice, R), after);
    EXPECT_EQ(F2, F);
    Band_Factor(M, R, bw);
    Band_Solve(M, F, F, R, bw);
    EXPECT_EQ(F[dof - 1], 0.3125);
    Band_Prescribe(twice, F2, dof, 0.0, bw, 1); // the geometric matrix: zero diagonal
    EXPECT_EQ(twice(dof, 1), 0.0);
  }
}

// The factoring against the elimination written entry by entry, then the solve
// against the dense product. The elimination takes the same terms pivot after
// pivot and in blocks, so each sum is added in another order and the last bits
// differ: on a positive definite matrix each entry to 1e-13 of its size (1e-15
// seen). Without pivoting an indefinite matrix grows large entries and small
// pivots that magnify rounding, so there the bound is taken against the
// largest entry (1.5e-11 seen). Nothing outside the band in use is read or
// written: the NaN put there stays and spreads nowhere.
TEST(BandFactor, MatchesTheEntryByEntryEliminationAndSolvesWithASmallResidual) {
  for (const Shape& s : kShapes)
    for (double shift : {3.0 * s.bw, 0.7}) {
      const bool definite = shift > 1;
      BandMatrix M = RandomBand(s.R, s.B, s.n, s.bw, shift, 11), reference = M;
      const Dense A = Full(M, s.n);
      if (&s == kShapes && !definite) { // the indefinite case really is indefinite
        ASSERT_LT(SymmetricEigenvalues(A).front(), 0.0);
      }
      EntryByEntry(reference, s.n, s.bw);
      Poison(M, s.n, s.bw);
      Band_Factor(M, s.n, s.bw);
      double worst = 0, largest = 1;
      for (int r = 1; r <= s.R; ++r)
        for (int b = 1; b <= s.B; ++b) {
          if (r > s.n || b > s.bw || r + b - 1 > s.n) {
            ASSERT_TRUE(std::isnan(M(r, b))) << r << "," << b;
            continue;
          }
          const double ref = reference(r, b), error = std::abs(M(r, b) - ref);
          worst = std::max(worst, definite ? error / std::max(1.0, std::abs(ref)) : error);
          largest = std::max(largest, std::abs(ref));
        }
      EXPECT_LT(worst, definite ? 1e-13 : 1e-10 * largest) << s.n << " x " << s.bw;

      Vector f(s.n + 4, 7.0); // entries beyond n stay as they are
      for (int i = 0; i < s.n; ++i)
        f[i] = std::sin(i + 1.0);
      Vector x(s.n + 4, 7.0), inPlace = f, rhs = f; // f is overwritten
      Band_Solve(M, x, rhs, s.n, s.bw);
      Band_Solve(M, inPlace, inPlace, s.n, s.bw);
      EXPECT_EQ(inPlace, x) << s.n << " x " << s.bw;
      const Vector Ax = Multiply(A, Vector(x.begin(), x.begin() + s.n));
      double residual = 0;
      for (int i = 0; i < s.n; ++i)
        residual = std::max(residual, std::abs(Ax[i] - f[i]));
      EXPECT_LT(residual, 1e-10 * MaxAbs(A) * MaxAbs(x)) << s.n << " x " << s.bw << " " << shift;
      EXPECT_TRUE(std::all_of(x.begin() + s.n, x.end(), [](double e) { return e == 7.0; }));
    }
}

TEST(BandFactor, ZeroPivotIsADivisionByZeroAndZeroOverZeroAnOverflow) {
  // [[1, 1, 0], [1, 1, 1], [0, 1, 2]]: the second pivot is 0 with `beside`
  // next to it.
  auto small = [](double beside) {
    BandMatrix M(3, 2);
    M(1, 1) = 1, M(1, 2) = 1, M(2, 1) = 1, M(2, 2) = beside, M(3, 1) = 2;
    return M;
  };
  // A tiny first pivot and a huge entry beside it: the update overflows.
  const int n = 90, bw = 36; // and in a later block of pivots
  BandMatrix huge(3, 2), wide = RandomBand(n, bw, n, bw, 3.0 * bw, 5);
  huge(1, 1) = 1e-300, huge(1, 2) = 1e200, huge(2, 1) = 1, huge(2, 2) = 1, huge(3, 1) = 1;
  wide(1, 1) = 1e-300, wide(1, bw) = 1e200;
  struct Case {
    const char* name;
    BandMatrix M;
    int n, bw, fault;
  };
  Case cases[] = {
      {"zero pivot", small(1), 3, 2, errDivByZero}, {"0 / 0", small(0), 3, 2, errOverflow},
      {"overflow", huge, 3, 2, errOverflow},        {"block overflow", wide, n, bw, errOverflow},
      {"bw beyond B", huge, 3, 3, errSubscript},
  };
  for (Case& c : cases)
    EXPECT_EQ(FaultOf([&] { Band_Factor(c.M, c.n, c.bw); }), c.fault) << c.name;

  // A zero last pivot only shows in the solve.
  BandMatrix S(2, 2);
  S(1, 1) = 1, S(1, 2) = 1, S(2, 1) = 1;
  Band_Factor(S, 2, 2);
  EXPECT_EQ(S(2, 1), 0.0);
  Vector f{1, 3}, g{1, 1}, x(2); // g consistent: 0 / 0 in the last row
  EXPECT_EQ(FaultOf([&] { Band_Solve(S, x, f, 2, 2); }), errDivByZero);
  EXPECT_EQ(FaultOf([&] { Band_Solve(S, x, g, 2, 2); }), errOverflow);
}

TEST(BandMultiply, IsMinusTheSymmetricProduct) {
  for (const Shape& s : kShapes) {
    BandMatrix Kg = RandomBand(s.R, s.B, s.n, s.bw, 1.0, 5);
    const Dense A = Full(Kg, s.n);
    Poison(Kg, s.n, s.bw);
    Vector x(s.n), y(s.n + 4, 99.0);
    for (int i = 0; i < s.n; ++i)
      x[i] = std::cos(0.3 * i);
    Band_Multiply(Kg, x, y, s.n, s.bw);
    const Vector expected = Multiply(A, x);
    for (int i = 0; i < s.n; ++i)
      EXPECT_NEAR(y[i], -expected[i], 1e-12 * s.bw) << s.n << " x " << s.bw << ": " << i;
    for (int i = s.n; i < s.n + 4; ++i)
      ASSERT_EQ(y[i], 99.0);
  }
  // One overflowing entry, in each vector lane and in the tail after them.
  for (int i = 1; i <= 13; ++i) {
    BandMatrix D(13, 1);
    for (int r = 1; r <= 13; ++r)
      D(r, 1) = r == i ? 1e308 : 1.0;
    Vector tens(13, 10.0), z(13);
    EXPECT_EQ(FaultOf([&] { Band_Multiply(D, tens, z, 13, 1); }), errOverflow) << i;
  }
}

// CTest runs this file and the full runs once per kernel, naming it in
// VELK_BAND_KERNEL. The tests above must then have run on that kernel; one
// this processor cannot execute makes the entry a skip, not a pass won on
// another kernel. Unset, the widest the processor executes does the work.
TEST(BandKernel, TheKernelAskedForIsTheOneInUse) {
  const BandKernel all[] = {BandKernel::Plain, BandKernel::Avx2, BandKernel::Avx512};
  const char* asked = std::getenv("VELK_BAND_KERNEL");
  if (asked == nullptr) { // the widest the processor executes
    const auto widest = std::find_if(std::rbegin(all), std::rend(all), Band_KernelRuns);
    EXPECT_EQ(Band_Kernel(), *widest);
    return;
  }
  const auto* k = std::find_if(std::begin(all), std::end(all), [&](BandKernel kernel) {
    return Band_KernelName(kernel) == std::string(asked);
  });
  ASSERT_NE(k, std::end(all)) << "no band kernel is named " << asked;
  if (!Band_KernelRuns(*k))
    GTEST_SKIP() << "band kernel " << asked << " cannot run on this processor";
  EXPECT_EQ(Band_KernelName(Band_Kernel()), std::string(asked));
}

} // namespace
} // namespace velk::test
