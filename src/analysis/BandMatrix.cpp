#include "analysis/BandMatrix.h"

#include <algorithm>
#include <cstring>

#include "analysis/CheckedArithmetic.h"

namespace velk {

namespace {

// An index beyond the arrays is a subscript fault, as any other bad index of a
// run: the operations below never read or write outside the storage.
void CheckShape(const BandMatrix& M, int n, int bw) {
  if (n < 0 || n > M.Rows() || bw < 0 || bw > M.Columns()) Raise(errSubscript);
}

void CheckVector(std::size_t size, int n) {
  if (size < static_cast<std::size_t>(n)) Raise(errSubscript);
}

// s[j] += a * src[j] / d for j < count: the inner loop of the factoring, where
// nearly all its time goes. The division cannot become a multiplication by 1/d
// without changing the rounding, so the loop is written in pairs that the
// compiler maps onto packed divisions; each lane does exactly the scalar
// operations.
#if defined(__GNUC__)
using Pair = double __attribute__((vector_size(16)));

inline void SweepRow(double* s, const double* src, double a, double d, int count) {
  const Pair av = {a, a};
  const Pair dv = {d, d};
  int j = 0;
  for (; j + 4 <= count; j += 4) {
    Pair s0, s1, x0, x1;
    std::memcpy(&s0, s + j, sizeof s0);
    std::memcpy(&s1, s + j + 2, sizeof s1);
    std::memcpy(&x0, src + j, sizeof x0);
    std::memcpy(&x1, src + j + 2, sizeof x1);
    s0 += av * x0 / dv;
    s1 += av * x1 / dv;
    std::memcpy(s + j, &s0, sizeof s0);
    std::memcpy(s + j + 2, &s1, sizeof s1);
  }
  for (; j < count; ++j)
    s[j] += a * src[j] / d;
}
#else
inline void SweepRow(double* s, const double* src, double a, double d, int count) {
  for (int j = 0; j < count; ++j)
    s[j] += a * src[j] / d;
}
#endif

} // namespace

BandMatrix::BandMatrix(int rows, int columns) : rows_(rows), columns_(columns) {
  if (rows < 0 || columns < 0) Raise(errSubscript);
  data_.assign(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns), 0.0);
}

void BandMatrix::ClearRows(int rows) {
  if (rows < 0 || rows > rows_) Raise(errSubscript);
  std::fill(data_.begin(), data_.begin() + static_cast<std::ptrdiff_t>(rows) * columns_, 0.0);
}

void BandMatrix::CopyFrom(const BandMatrix& other, int rows, int columns) {
  if (other.columns_ != columns_ || rows < 0 || rows > rows_ || rows > other.rows_ || columns < 0 ||
      columns > columns_)
    Raise(errSubscript);
  for (int r = 1; r <= rows; ++r)
    std::copy_n(other.Row(r), columns, Row(r));
}

std::optional<BandOverflow> Band_Assemble(const ElementMatrix& Ke, BandMatrix& M, int& bw,
                                          std::span<const std::int16_t> dofs) {
  const int count = static_cast<int>(dofs.size());
  if (count > ElementMatrix::kSize) Raise(errSubscript);
  const int R = M.Rows();
  const int B = M.Columns();
  int b = 0;
  for (int i = 1; i <= count; ++i) {
    const int r = dofs[i - 1];
    if (r > R) return BandOverflow{r, b};
    if (r < 1) Raise(errSubscript);
    for (int j = 1; j <= count; ++j) {
      b = dofs[j - 1] - r + 1;
      if (b > bw) bw = b;
      if (b < 1) continue; // the lower triangle is not stored
      if (b > B) return BandOverflow{r, b};
      M(r, b) = M(r, b) + Ke(i, j);
    }
  }
  return std::nullopt;
}

void Band_Prescribe(BandMatrix& M, std::span<double> F, int dof, double value, int bw,
                    int diagonalMode) {
  const int R = M.Rows();
  if (dof < 1 || dof > R || bw > M.Columns()) Raise(errSubscript);
  CheckVector(F.size(), R);

  M(dof, 1) = diagonalMode == 1 ? 0.0 : 1.0;
  F[dof - 1] = value;
  for (int l = 2; l <= bw; ++l) {
    const int r = dof - l + 1;
    if (r >= 1) {
      F[r - 1] = Finite(F[r - 1] - M(r, l) * value);
      M(r, l) = 0.0;
    }
    // Rows beyond the equations hold zeros, so the row part may run to R.
    const int c = dof + l - 1;
    if (c <= R) {
      F[c - 1] = Finite(F[c - 1] - M(dof, l) * value);
      M(dof, l) = 0.0;
    }
  }
}

void Band_Factor(BandMatrix& M, int n, int bw) {
  CheckShape(M, n, bw);
  if (bw < 2 || n < 2) return;

  // Row i is reduced by every earlier row p = i - c that reaches it. Taking the
  // earlier rows one by one, each swept along its contiguous band, adds the
  // same terms in the same order to each entry as the entry-by-entry sum:
  //   M(i, j) -= sum over c = 1.. of M(p, c + 1) * M(p, j + c) / M(p, 1).
  const int B = M.Columns();
  double* const base = M.Row(1);
  std::vector<double> sums(static_cast<std::size_t>(bw));
  double* const s = sums.data();

  for (int i = 2; i <= n; ++i) {
    const int m = std::min(bw - 1, n - i + 1);
    // Row i - 1 is final now and its pivot is about to be divided by for the
    // first time, by M(i-1, 2) * M(i-1, 2).
    const double* const previous = base + static_cast<std::ptrdiff_t>(i - 2) * B;
    if (previous[0] == 0.0) RaiseZeroDivisor(previous[1] * previous[1]);

    std::fill(s, s + m, 0.0);
    const int cmax = std::min(i - 1, bw - 1);
    for (int c = 1; c <= cmax; ++c) {
      const double* const rp = base + static_cast<std::ptrdiff_t>(i - c - 1) * B;
      const double a = rp[c];
      const double d = rp[0];
      const double* const src = rp + c;
      const int jmax = std::min(m, bw - c);
      SweepRow(s, src, a, d, jmax);
    }
    double* const ri = base + static_cast<std::ptrdiff_t>(i - 1) * B;
    bool finite = true;
    for (int j = 0; j < m; ++j) {
      ri[j] -= s[j];
      finite &= std::isfinite(ri[j]);
    }
    if (!finite) Raise(errOverflow);
  }
}

void Band_Solve(const BandMatrix& M, std::span<double> x, std::span<double> f, int n, int bw) {
  CheckShape(M, n, bw);
  CheckVector(x.size(), n);
  CheckVector(f.size(), n);
  if (n < 1) return;

  for (int i = 2; i <= n; ++i) {
    const int cmax = std::min(bw - 1, i - 1);
    if (cmax < 1) continue;
    if (M(i - 1, 1) == 0.0) RaiseZeroDivisor(M(i - 1, 2));
    double s = 0.0;
    for (int c = 1; c <= cmax; ++c) {
      const int p = i - c;
      s += M(p, c + 1) / M(p, 1) * f[p - 1];
    }
    f[i - 1] = Finite(f[i - 1] - s);
  }

  x[n - 1] = Div(f[n - 1], M(n, 1));
  for (int i = n - 1; i >= 1; --i) {
    const double* const row = M.Row(i);
    const int lmax = std::min(n, i + bw - 1);
    double s = 0.0;
    for (int l = i + 1; l <= lmax; ++l)
      s += x[l - 1] * row[l - i];
    x[i - 1] = Div(f[i - 1] - s, row[0]);
  }
}

void Band_Multiply(const BandMatrix& Kg, std::span<const double> x, std::span<double> y, int n,
                   int bw) {
  CheckShape(Kg, n, bw);
  CheckVector(x.size(), n);
  CheckVector(y.size(), n);

  for (int i = 1; i <= n; ++i) {
    double s = 0.0;
    const double* const row = Kg.Row(i);
    for (int j = 1; j <= bw; ++j) {
      const int c = i + j - 1;
      if (c > n) break;
      s -= row[j - 1] * x[c - 1];
    }
    for (int l = 2; l <= bw; ++l) {
      const int r = i - l + 1;
      if (r < 1) break;
      s -= Kg(r, l) * x[r - 1];
    }
    y[i - 1] = Finite(s);
  }
}

} // namespace velk
