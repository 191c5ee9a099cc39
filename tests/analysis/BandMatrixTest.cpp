// Upper-band storage: assembly with its overflow, prescribed freedoms, the
// factoring without row exchange, the solve and the product; and which of the
// kernels does the work.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <random>

#include "SymmetricEigen.h"
#include "analysis/BandMatrix.h"
#include "analysis/CheckedArithmetic.h"

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

TEST(BandAssemble, StoresTheUpperTriangleWhateverTheOrderOfFreedoms) {
  ElementMatrix Ke;
  const double k[3][3] = {{4, 1, 2}, {1, 5, 3}, {2, 3, 6}};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      Ke(i + 1, j + 1) = k[i][j];
  BandMatrix M(6, 6);
  int bw = 0;
  const std::int16_t dofs[] = {5, 3, 1}; // descending
  EXPECT_FALSE(Band_Assemble(Ke, M, bw, dofs).has_value());
  EXPECT_EQ(bw, 5);
  // (5,5) (3,5) (1,5) (3,3) (1,3) (1,1)
  const double stored[] = {M(5, 1), M(3, 3), M(1, 5), M(3, 1), M(1, 3), M(1, 1)};
  EXPECT_EQ(Vector(std::begin(stored), std::end(stored)), (Vector{4, 1, 2, 5, 3, 6}));
  EXPECT_FALSE(Band_Assemble(Ke, M, bw, dofs).has_value()); // again: adds
  EXPECT_EQ(M(1, 5), 4);
}

TEST(BandAssemble, OverflowsOfTheBandTheRowsAndTheFreedomNumbers) {
  ElementMatrix Ke;
  for (int i = 1; i <= 2; ++i)
    for (int j = 1; j <= 2; ++j)
      Ke(i, j) = 1;
  BandMatrix M(10, 3);
  int bw = 0;
  const std::int16_t fits[] = {2, 4}; // b == B
  EXPECT_FALSE(Band_Assemble(Ke, M, bw, fits).has_value());
  EXPECT_EQ(bw, 3);
  EXPECT_EQ(M(2, 3), 1);

  struct Case {
    std::int16_t dofs[2];
    int dof, band, bw;
  };
  const Case cases[] = {
      {{2, 5}, 2, 4, 4},    // B + 1; bw raised before the test against the capacity
      {{11, 1}, 11, 0, 4},  // a row beyond R, before any column is computed
      {{1, 11}, 1, 11, 11}, // the second freedom beyond R
  };
  for (const Case& c : cases) {
    const auto overflow = Band_Assemble(Ke, M, bw, c.dofs);
    ASSERT_TRUE(overflow.has_value()) << c.dofs[0] << "," << c.dofs[1];
    EXPECT_EQ(overflow->dof, c.dof);
    EXPECT_EQ(overflow->band, c.band);
    EXPECT_EQ(bw, c.bw);
  }
  EXPECT_EQ(M(2, 1), 2); // the entry before the failing one went in

  EXPECT_EQ(Dof_Number(10922, 3, 3), 32766);
  EXPECT_EQ(Dof_Number(10923, 1, 3), 32767);
  EXPECT_EQ(FaultOf([] { Dof_Number(10923, 2, 3); }), errOverflow);
  EXPECT_EQ(FaultOf([] { Dof_Number(10924, 1, 3); }), errOverflow);
}

TEST(BandPrescribe, MovesCouplingsToTheRightHandSideAndKeepsSymmetry) {
  const int R = 6, bw = 3;
  BandMatrix M = RandomBand(R, 3, R, bw, 5.0, 1);
  const Dense before = Full(M, R);
  Vector F{1, 2, 3, 4, 5, 6};
  Band_Prescribe(M, F, 3, 0.5, bw, 2);
  const Dense after = Full(M, R);
  for (int i = 0; i < R; ++i)
    if (i != 2) {
      EXPECT_EQ(after[2][i], 0.0) << i;
      EXPECT_DOUBLE_EQ(F[i], (i + 1) - before[i][2] * 0.5) << i;
    }
  EXPECT_EQ(after[2][2], 1.0);
  EXPECT_EQ(F[2], 0.5);
  Band_Prescribe(M, F, 4, 0.0, bw, 1); // the geometric matrix: zero diagonal
  EXPECT_EQ(M(4, 1), 0.0);

  // Freedom 1 has only a row part.
  BandMatrix first(3, 3);
  first(1, 1) = 4, first(1, 2) = 1, first(1, 3) = 2, first(2, 1) = 5, first(3, 1) = 6;
  Vector G{0, 0, 0};
  Band_Prescribe(first, G, 1, 2.0, 3, 2);
  EXPECT_EQ(G, (Vector{2, -2, -4}));
  EXPECT_EQ(first(1, 2), 0.0);
  EXPECT_EQ(first(1, 3), 0.0);
}

TEST(BandPrescribe, PrescribingTwiceIsOnceAndTheValueComesBackExactly) {
  const int R = 8, B = 4, bw = 4;
  BandMatrix once = RandomBand(R, B, R, bw, 6.0, 2), twice = once;
  Vector F1{1, -1, 2, -2, 3, -3, 4, -4}, F2 = F1;
  Band_Prescribe(once, F1, 5, 0.3125, bw, 2);
  Band_Prescribe(twice, F2, 5, 0.3125, bw, 2);
  Band_Prescribe(twice, F2, 5, 0.3125, bw, 2);
  for (int r = 1; r <= R; ++r)
    for (int b = 1; b <= B; ++b)
      EXPECT_EQ(once(r, b), twice(r, b));
  EXPECT_EQ(F1, F2);
  Band_Factor(once, R, bw);
  Band_Solve(once, F1, F1, R, bw);
  EXPECT_EQ(F1[4], 0.3125);
}

TEST(BandSolve, DefiniteAndIndefiniteSystemsLeaveASmallResidual) {
  for (const Shape& s : kShapes)
    for (double shift : {0.5 * s.bw + 8, 0.3}) {
      BandMatrix M = RandomBand(s.R, s.B, s.n, s.bw, shift, 7);
      const Dense A = Full(M, s.n);
      if (&s == kShapes && shift < 1) { // the indefinite case really is indefinite
        ASSERT_LT(SymmetricEigenvalues(A).front(), 0.0);
      }
      Poison(M, s.n, s.bw);
      Vector f(s.n + 4, 7.0); // entries beyond n stay as they are
      for (int i = 0; i < s.n; ++i)
        f[i] = std::sin(i + 1.0);
      Band_Factor(M, s.n, s.bw);
      Vector x(s.n + 4, 7.0), inPlace = f, rhs = f; // f is overwritten
      Band_Solve(M, x, rhs, s.n, s.bw);
      Band_Solve(M, inPlace, inPlace, s.n, s.bw);
      EXPECT_EQ(inPlace, x) << s.n << " x " << s.bw;
      const Vector Ax = Multiply(A, Vector(x.begin(), x.begin() + s.n));
      double residual = 0;
      for (int i = 0; i < s.n; ++i)
        residual = std::max(residual, std::abs(Ax[i] - f[i]));
      EXPECT_LT(residual, 1e-10 * MaxAbs(A) * MaxAbs(x)) << s.n << " x " << s.bw << " " << shift;
      for (int i = s.n; i < s.n + 4; ++i)
        ASSERT_EQ(x[i], 7.0);
    }
}

TEST(BandFactor, MatchesTheEntryByEntryEliminationAndTouchesNothingElse) {
  // The elimination takes the same terms pivot after pivot and in blocks, so
  // each sum is added in another order and the last bits differ. On a
  // positive definite matrix that is all: each entry to 1e-13 of its size (1e-15
  // seen). Without pivoting an indefinite matrix grows large entries and small
  // pivots that magnify rounding, so there the bound is taken against the
  // largest entry (1.5e-11 seen).
  for (const Shape& s : kShapes)
    for (double shift : {3.0 * s.bw, 0.7}) {
      const bool definite = shift > 1;
      BandMatrix M = RandomBand(s.R, s.B, s.n, s.bw, shift, 11), reference = M;
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
          ASSERT_TRUE(std::isfinite(M(r, b))) << r << "," << b;
          const double ref = reference(r, b), error = std::abs(M(r, b) - ref);
          worst = std::max(worst, definite ? error / std::max(1.0, std::abs(ref)) : error);
          largest = std::max(largest, std::abs(ref));
        }
      EXPECT_LT(worst, definite ? 1e-13 : 1e-10 * largest) << s.n << " x " << s.bw;
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
  // A later block: rows 1..40 random and positive definite, uncoupled from the
  // rest; rows 41 and 42 hold [[1, 1], [1, 1]] with `beside` next to pivot
  // 42; the identity after.
  const int n = 90, bw = 36;
  auto later = [&](double beside) {
    BandMatrix M = RandomBand(n, bw, n, bw, 3.0 * bw, 4);
    for (int r = 1; r <= n; ++r)
      for (int b = 1; b <= bw; ++b)
        if (r + b - 1 > 40 && (r > 40 || b > 1)) M(r, b) = 0;
    for (int r = 41; r <= n; ++r)
      M(r, 1) = 1;
    M(41, 2) = 1, M(42, 2) = beside;
    return M;
  };
  // A tiny first pivot and a huge entry beside it: the update overflows.
  BandMatrix huge(3, 2), wide = RandomBand(n, bw, n, bw, 3.0 * bw, 5);
  huge(1, 1) = 1e-300, huge(1, 2) = 1e200, huge(2, 1) = 1, huge(2, 2) = 1, huge(3, 1) = 1;
  wide(1, 1) = 1e-300, wide(1, bw) = 1e200;
  struct Case {
    const char* name;
    BandMatrix M;
    int n, bw, fault;
  };
  Case cases[] = {
      {"zero pivot", small(1), 3, 2, errDivByZero},   {"0 / 0", small(0), 3, 2, errOverflow},
      {"later block", later(1), n, bw, errDivByZero}, {"later 0 / 0", later(0), n, bw, errOverflow},
      {"overflow", huge, 3, 2, errOverflow},          {"block overflow", wide, n, bw, errOverflow},
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
  BandMatrix big = RandomBand(10, 3, 10, 3, 1.0, 6);
  big(4, 2) = 1e308;
  Vector x(10, 1e10), y(10);
  EXPECT_EQ(FaultOf([&] { Band_Multiply(big, x, y, 10, 3); }), errOverflow);
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
  if (asked == nullptr) {
    BandKernel widest = BandKernel::Plain;
    for (BandKernel k : all)
      if (Band_KernelRuns(k)) widest = k;
    EXPECT_EQ(Band_KernelName(Band_Kernel()), std::string(Band_KernelName(widest)));
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
