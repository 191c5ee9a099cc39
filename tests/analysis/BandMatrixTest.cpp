// Upper-band storage: assembly with its overflow, prescribed freedoms, the
// factoring without row exchange, the solve and the product.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "SymmetricEigen.h"
#include "analysis/BandMatrix.h"
#include "analysis/CheckedArithmetic.h"
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

// Full symmetric matrix of rows 1..n of a band.
Dense Full(const BandMatrix& M, int n) {
  Dense a(n, std::vector<double>(n, 0.0));
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

// Gauss elimination with partial pivoting on a dense copy.
std::vector<double> DenseSolve(Dense a, std::vector<double> f) {
  const int n = static_cast<int>(a.size());
  for (int k = 0; k < n; ++k) {
    int p = k;
    for (int i = k + 1; i < n; ++i)
      if (std::abs(a[i][k]) > std::abs(a[p][k])) p = i;
    std::swap(a[k], a[p]);
    std::swap(f[k], f[p]);
    for (int i = k + 1; i < n; ++i) {
      const double m = a[i][k] / a[k][k];
      for (int j = k; j < n; ++j)
        a[i][j] -= m * a[k][j];
      f[i] -= m * f[k];
    }
  }
  std::vector<double> x(n);
  for (int i = n - 1; i >= 0; --i) {
    double s = f[i];
    for (int j = i + 1; j < n; ++j)
      s -= a[i][j] * x[j];
    x[i] = s / a[i][i];
  }
  return x;
}

// The elimination written entry by entry, in its plain loop order, on rows
// 1..n and band columns 1..bw.
void EntryByEntry(BandMatrix& M, int n, int bw) {
  for (int i = 2; i <= n; ++i) {
    const int m = std::min(bw - 1, n - i + 1);
    for (int j = 1; j <= m; ++j) {
      double s = 0;
      for (int c = 1; c <= std::min(i - 1, bw - j); ++c)
        s = s + M(i - c, c + 1) * M(i - c, j + c) / M(i - c, 1);
      M(i, j) = M(i, j) - s;
    }
  }
}

// NaN wherever the operations must not look: band columns beyond bw, entries
// beyond column n, rows beyond n. One read of them would spread into the
// results.
void Poison(BandMatrix& M, int n, int bw) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (int r = 1; r <= M.Rows(); ++r)
    for (int b = 1; b <= M.Columns(); ++b)
      if (r > n || b > bw || r + b - 1 > n) M(r, b) = nan;
}

// Shapes around the elimination's blocks of pivots and register tiles: bands
// narrower and wider than a block, a band wider than the matrix, row counts
// just past a block, storage wider than the band in use.
struct Shape {
  int R, B, n, bw;
};
constexpr Shape kShapes[] = {{60, 12, 60, 12},   {200, 45, 190, 40}, {150, 70, 150, 70},
                             {37, 50, 37, 50},   {33, 33, 33, 33},   {150, 3, 150, 2},
                             {97, 31, 97, 31},   {300, 120, 261, 97}};

TEST(BandAssemble, StoresTheUpperTriangleWhateverTheOrderOfFreedoms) {
  ElementMatrix Ke;
  // A symmetric 3 x 3 element at global freedoms 5, 3, 1 (descending).
  const double k[3][3] = {{4, 1, 2}, {1, 5, 3}, {2, 3, 6}};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      Ke(i + 1, j + 1) = k[i][j];
  BandMatrix M(6, 6);
  int bw = 0;
  const std::int16_t dofs[] = {5, 3, 1};
  EXPECT_FALSE(Band_Assemble(Ke, M, bw, dofs).has_value());
  EXPECT_EQ(bw, 5);
  EXPECT_EQ(M(5, 1), 4);
  EXPECT_EQ(M(3, 3), 1); // (3, 5)
  EXPECT_EQ(M(1, 5), 2); // (1, 5)
  EXPECT_EQ(M(3, 1), 5);
  EXPECT_EQ(M(1, 3), 3); // (1, 3)
  EXPECT_EQ(M(1, 1), 6);
  // Assembling the same element again adds.
  EXPECT_FALSE(Band_Assemble(Ke, M, bw, dofs).has_value());
  EXPECT_EQ(M(1, 5), 4);
}

TEST(BandAssemble, BandEqualToCapacityFitsAndOneMoreOverflows) {
  ElementMatrix Ke;
  for (int i = 1; i <= 2; ++i)
    for (int j = 1; j <= 2; ++j)
      Ke(i, j) = 1;
  BandMatrix M(10, 3);
  int bw = 0;
  const std::int16_t fits[] = {2, 4};
  EXPECT_FALSE(Band_Assemble(Ke, M, bw, fits).has_value());
  EXPECT_EQ(bw, 3);
  EXPECT_EQ(M(2, 3), 1);

  const std::int16_t wide[] = {2, 5};
  const auto overflow = Band_Assemble(Ke, M, bw, wide);
  ASSERT_TRUE(overflow.has_value());
  EXPECT_EQ(overflow->dof, 2);
  EXPECT_EQ(overflow->band, 4);
  EXPECT_EQ(bw, 4);      // raised before the test against the capacity
  EXPECT_EQ(M(2, 1), 2); // the entry before the failing one went in

  const std::int16_t beyondRows[] = {11, 1};
  const auto rows = Band_Assemble(Ke, M, bw, beyondRows);
  ASSERT_TRUE(rows.has_value());
  EXPECT_EQ(rows->dof, 11);
  EXPECT_EQ(rows->band, 0); // no column computed yet

  const std::int16_t secondRow[] = {1, 11};
  const auto late = Band_Assemble(Ke, M, bw, secondRow);
  ASSERT_TRUE(late.has_value());
  EXPECT_EQ(late->dof, 1);
  EXPECT_EQ(late->band, 11);
}

TEST(BandAssemble, GridOfSevenNodesPerColumnFillsTheBandExactly) {
  // Stage two, nodes numbered column by column, 7 a column: B = 3 (7 + 2).
  const int perColumn = 7, columns = 4, points = perColumn * columns;
  BandMatrix M(3 * points, 3 * (perColumn + 2));
  ElementMatrix Ke;
  for (int i = 1; i <= 12; ++i)
    for (int j = 1; j <= 12; ++j)
      Ke(i, j) = 1;
  int bw = 0;
  for (int cx = 0; cx + 1 < columns; ++cx)
    for (int cy = 0; cy + 1 < perColumn; ++cy) {
      const int n = cx * perColumn + cy + 1;
      const int nodes[4] = {n, n + perColumn, n + perColumn + 1, n + 1};
      std::int16_t dofs[12];
      for (int k = 0; k < 4; ++k)
        for (int d = 1; d <= 3; ++d)
          dofs[3 * k + d - 1] = Dof_Number(nodes[k], d, 3);
      ASSERT_FALSE(Band_Assemble(Ke, M, bw, dofs).has_value());
    }
  EXPECT_EQ(bw, 27);
}

TEST(DofNumber, SixteenBitOverflowIsAnOverflow) {
  EXPECT_EQ(Dof_Number(10922, 3, 3), 32766);
  EXPECT_EQ(Dof_Number(10923, 1, 3), 32767);
  EXPECT_EQ(FaultOf([] { Dof_Number(10923, 2, 3); }), errOverflow);
  EXPECT_EQ(FaultOf([] { Dof_Number(10924, 1, 3); }), errOverflow);
}

TEST(BandPrescribe, MovesCouplingsToTheRightHandSideAndKeepsSymmetry) {
  const int R = 6, B = 3, bw = 3;
  BandMatrix M = RandomBand(R, B, R, bw, 5.0, 1);
  const Dense before = Full(M, R);
  std::vector<double> F{1, 2, 3, 4, 5, 6};
  Band_Prescribe(M, F, 3, 0.5, bw, 2);
  const Dense after = Full(M, R);
  for (int i = 0; i < R; ++i) {
    if (i == 2) continue;
    EXPECT_EQ(after[2][i], 0.0);
    EXPECT_DOUBLE_EQ(F[i], (i + 1) - before[i][2] * 0.5);
  }
  EXPECT_EQ(after[2][2], 1.0);
  EXPECT_EQ(F[2], 0.5);

  Band_Prescribe(M, F, 4, 0.0, bw, 1);
  EXPECT_EQ(M(4, 1), 0.0);
}

TEST(BandPrescribe, FirstFreedomHasOnlyARowPart) {
  BandMatrix M(3, 3);
  M(1, 1) = 4;
  M(1, 2) = 1;
  M(1, 3) = 2;
  M(2, 1) = 5;
  M(3, 1) = 6;
  std::vector<double> F{0, 0, 0};
  Band_Prescribe(M, F, 1, 2.0, 3, 2);
  EXPECT_EQ(F[0], 2.0);
  EXPECT_EQ(F[1], -2.0);
  EXPECT_EQ(F[2], -4.0);
  EXPECT_EQ(M(1, 2), 0.0);
  EXPECT_EQ(M(1, 3), 0.0);
}

TEST(BandPrescribe, PrescribedValueComesBackExactlyAndTwiceIsOnce) {
  const int R = 8, B = 4, bw = 4;
  BandMatrix once = RandomBand(R, B, R, bw, 6.0, 2);
  BandMatrix twice = once;
  std::vector<double> F1{1, -1, 2, -2, 3, -3, 4, -4}, F2 = F1;
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

TEST(BandPrescribe, SpringOnAPrescribedFreedomScalesTheValue) {
  const int R = 4, bw = 2;
  BandMatrix M = RandomBand(R, 2, R, bw, 4.0, 3);
  std::vector<double> F{1, 1, 1, 1};
  Band_Prescribe(M, F, 2, 0.6, bw, 2);
  M(2, 1) += 2.0; // spring k = 2 after the prescription
  Band_Factor(M, R, bw);
  Band_Solve(M, F, F, R, bw);
  EXPECT_DOUBLE_EQ(F[1], 0.6 / 3.0);
}

TEST(BandFactor, SolvesPositiveAndIndefiniteSystemsLikeADenseSolver) {
  for (double shift : {8.0, 0.3}) {
    const int R = 40, B = 9, n = 37, bw = 7;
    BandMatrix M = RandomBand(R, B, n, bw, shift, 7);
    const Dense A = Full(M, n);
    for (int r = 1; r <= n; ++r) // the band columns beyond bw are never read
      for (int b = bw + 1; b <= B; ++b)
        M(r, b) = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> f(R, 0.0);
    for (int i = 0; i < n; ++i)
      f[i] = std::sin(i + 1.0);
    const std::vector<double> expected =
        DenseSolve(A, std::vector<double>(f.begin(), f.begin() + n));
    if (shift < 1) { // make sure the indefinite case really is indefinite
      const auto values = test::SymmetricEigenvalues(A);
      ASSERT_LT(values.front(), 0.0);
    }
    Band_Factor(M, n, bw);
    std::vector<double> x(R, 0.0), rhs = f;
    Band_Solve(M, x, rhs, n, bw);
    for (int i = 0; i < n; ++i)
      EXPECT_NEAR(x[i], expected[i], 1e-9 * test::MaxAbs(expected));
    // Solving in place gives the same numbers.
    std::vector<double> inPlace = f;
    Band_Solve(M, inPlace, inPlace, n, bw);
    for (int i = 0; i < n; ++i)
      EXPECT_EQ(inPlace[i], x[i]);
    // Rows beyond n are not touched.
    for (int r = n + 1; r <= R; ++r)
      EXPECT_EQ(M(r, 1), 0.0);
  }
}

TEST(BandSolve, WideBandsSolveLikeADenseSolver) {
  for (const Shape& s : kShapes) {
    BandMatrix M = RandomBand(s.R, s.B, s.n, s.bw, 0.5 * s.bw, 8);
    const Dense A = Full(M, s.n);
    Poison(M, s.n, s.bw);
    std::vector<double> f(s.n + 4, 7.0); // entries beyond n stay as they are
    for (int i = 0; i < s.n; ++i)
      f[i] = std::sin(i + 1.0);
    const std::vector<double> expected =
        DenseSolve(A, std::vector<double>(f.begin(), f.begin() + s.n));
    Band_Factor(M, s.n, s.bw);
    Band_Solve(M, f, f, s.n, s.bw);
    for (int i = 0; i < s.n; ++i)
      ASSERT_NEAR(f[i], expected[i], 1e-9 * test::MaxAbs(expected)) << s.n << " x " << s.bw;
    for (int i = s.n; i < s.n + 4; ++i)
      ASSERT_EQ(f[i], 7.0);
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
      BandMatrix M = RandomBand(s.R, s.B, s.n, s.bw, shift, 11);
      BandMatrix reference = M;
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
      if (definite) EXPECT_LT(worst, 1e-13) << s.n << " x " << s.bw;
      else EXPECT_LT(worst, 1e-10 * largest) << s.n << " x " << s.bw;
    }
}

TEST(BandFactor, FaultsOfALaterBlockAreFound) {
  // Rows 1..40 random and positive definite, uncoupled from the rows after
  // them; rows 41 and 42 hold [[1, 1], [1, 1]], so that pivot 42 is exactly
  // 0, with `beside` next to it; the rows after are the identity.
  const int n = 90, bw = 36;
  auto matrix = [&](double beside) {
    BandMatrix M = RandomBand(n, bw, n, bw, 3.0 * bw, 4);
    for (int r = 1; r <= n; ++r)
      for (int b = 1; b <= bw; ++b)
        if (r + b - 1 > 40 && (r > 40 || b > 1)) M(r, b) = 0;
    for (int r = 41; r <= n; ++r)
      M(r, 1) = 1;
    M(41, 2) = 1;
    M(42, 2) = beside;
    return M;
  };
  BandMatrix ones = matrix(1.0);
  EXPECT_EQ(FaultOf([&] { Band_Factor(ones, n, bw); }), errDivByZero);
  BandMatrix zeros = matrix(0.0);
  EXPECT_EQ(FaultOf([&] { Band_Factor(zeros, n, bw); }), errOverflow);
  // A tiny first pivot and a huge entry reaching row 40: the block update
  // overflows there.
  BandMatrix wide = RandomBand(n, bw, n, bw, 3.0 * bw, 5);
  wide(1, 1) = 1e-300;
  wide(1, bw) = 1e200;
  EXPECT_EQ(FaultOf([&] { Band_Factor(wide, n, bw); }), errOverflow);
}

TEST(BandFactor, ZeroPivotIsADivisionByZeroAndZeroOverZeroAnOverflow) {
  // [[1, 1, 0], [1, 1, 1], [0, 1, 2]]: the second pivot is 0, with 1 beside it.
  BandMatrix M(3, 2);
  M(1, 1) = 1, M(1, 2) = 1, M(2, 1) = 1, M(2, 2) = 1, M(3, 1) = 2;
  EXPECT_EQ(FaultOf([&] { Band_Factor(M, 3, 2); }), errDivByZero);
  // The same with nothing beside the zero pivot: 0 / 0.
  BandMatrix Z(3, 2);
  Z(1, 1) = 1, Z(1, 2) = 1, Z(2, 1) = 1, Z(2, 2) = 0, Z(3, 1) = 2;
  EXPECT_EQ(FaultOf([&] { Band_Factor(Z, 3, 2); }), errOverflow);

  // A zero last pivot only shows in the solve.
  BandMatrix S(2, 2);
  S(1, 1) = 1, S(1, 2) = 1, S(2, 1) = 1;
  Band_Factor(S, 2, 2);
  EXPECT_EQ(S(2, 1), 0.0);
  std::vector<double> f{1, 3}, x(2);
  EXPECT_EQ(FaultOf([&] { Band_Solve(S, x, f, 2, 2); }), errDivByZero);
  std::vector<double> g{1, 1}; // consistent: 0 / 0 in the last row
  EXPECT_EQ(FaultOf([&] { Band_Solve(S, x, g, 2, 2); }), errOverflow);
}

TEST(BandFactor, FloatingOverflowIsAnOverflow) {
  BandMatrix M(3, 2);
  M(1, 1) = 1e-300, M(1, 2) = 1e200, M(2, 1) = 1, M(2, 2) = 1, M(3, 1) = 1;
  EXPECT_EQ(FaultOf([&] { Band_Factor(M, 3, 2); }), errOverflow);
  EXPECT_EQ(FaultOf([&] { Band_Factor(M, 3, 3); }), errSubscript); // bw beyond B
}

TEST(BandMultiply, IsMinusTheSymmetricProduct) {
  for (const Shape& s : kShapes) {
    BandMatrix Kg = RandomBand(s.R, s.B, s.n, s.bw, 1.0, 5);
    const Dense A = Full(Kg, s.n);
    Poison(Kg, s.n, s.bw);
    std::vector<double> x(s.n);
    for (int i = 0; i < s.n; ++i)
      x[i] = std::cos(0.3 * i);
    std::vector<double> y(s.n + 4, 99.0);
    Band_Multiply(Kg, x, y, s.n, s.bw);
    for (int i = s.n; i < s.n + 4; ++i)
      ASSERT_EQ(y[i], 99.0);
    const std::vector<double> expected = test::Multiply(A, x);
    for (int i = 0; i < s.n; ++i)
      EXPECT_NEAR(y[i], -expected[i], 1e-12 * s.bw) << s.n << " x " << s.bw << ": " << i;
  }
  // An overflowing product is an overflow.
  BandMatrix big = RandomBand(10, 3, 10, 3, 1.0, 6);
  big(4, 2) = 1e308;
  std::vector<double> x(10, 1e10), y(10);
  EXPECT_EQ(FaultOf([&] { Band_Multiply(big, x, y, 10, 3); }), errOverflow);
}

} // namespace
} // namespace velk
