#include "analysis/BandMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/CheckedArithmetic.h"

#if defined(__linux__)
#include <sys/mman.h>
#endif

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

// The factoring, the solve and the product are where nearly all the time of a
// large run goes. They are written once over a short vector type and built for
// three instruction sets; the widest the processor offers is chosen once
// (Band_Kernel).
//
// Addressing: rows are B long, so entry (i, k), k >= i, 0-based, lies at
// i * B + (k - i) = i * (B - 1) + k. Within the band the upper triangle is a
// dense array with leading dimension B - 1; that is what lets the elimination
// be written as a dense block update. Positions with k - i >= B alias the next
// row and are never touched.

#define VELK_INLINE [[gnu::always_inline]] inline
// The helpers below that take or return vectors are always inlined into the
// kernels of their own instruction set; no call ever passes a vector.
#if defined(__clang__)
#pragma clang diagnostic ignored "-Wunknown-warning-option"
#endif
#pragma GCC diagnostic ignored "-Wpsabi"

using V2 = double __attribute__((vector_size(16)));
using V4 = double __attribute__((vector_size(32)));
using V8 = double __attribute__((vector_size(64)));

// Vector type, and the tile of the block update: kRows rows by kVectors
// vectors, all held in registers (8, 12 and 24 of the 16, 16 and 32).
struct IsaBase {
  using V = V2;
  static constexpr int kLanes = 2, kRows = 4, kVectors = 2;
};
struct IsaAvx2 {
  using V = V4;
  static constexpr int kLanes = 4, kRows = 6, kVectors = 2;
};
struct IsaAvx512 {
  using V = V8;
  static constexpr int kLanes = 8, kRows = 8, kVectors = 3;
};

// Pivots eliminated together: the trailing rows are swept once per block
// rather than once per pivot.
constexpr int kBlock = 24;

template <class V> VELK_INLINE V Load(const double* p) {
  V v;
  std::memcpy(&v, p, sizeof v);
  return v;
}
template <class V> VELK_INLINE void Store(double* p, V v) {
  std::memcpy(p, &v, sizeof v);
}
template <class V> VELK_INLINE V Splat(double s) {
  V v;
  for (int i = 0; i < static_cast<int>(sizeof(V) / sizeof(double)); ++i)
    v[i] = s;
  return v;
}

// y[j] -= l * x[j], j < count.
template <class T> VELK_INLINE void SubScaled(double* y, const double* x, double l, int count) {
  using V = typename T::V;
  constexpr int L = T::kLanes;
  const V lv = Splat<V>(l);
  int j = 0;
  for (; j + 2 * L <= count; j += 2 * L) {
    Store(y + j, Load<V>(y + j) - lv * Load<V>(x + j));
    Store(y + j + L, Load<V>(y + j + L) - lv * Load<V>(x + j + L));
  }
  for (; j + L <= count; j += L)
    Store(y + j, Load<V>(y + j) - lv * Load<V>(x + j));
  for (; j < count; ++j)
    y[j] -= l * x[j];
}

// Sum of x[j] * y[j], j < count, in four running vector sums.
template <class T> VELK_INLINE double Dot(const double* x, const double* y, int count) {
  using V = typename T::V;
  constexpr int L = T::kLanes;
  V s0 = Splat<V>(0.0), s1 = s0, s2 = s0, s3 = s0;
  int j = 0;
  for (; j + 4 * L <= count; j += 4 * L) {
    s0 += Load<V>(x + j) * Load<V>(y + j);
    s1 += Load<V>(x + j + L) * Load<V>(y + j + L);
    s2 += Load<V>(x + j + 2 * L) * Load<V>(y + j + 2 * L);
    s3 += Load<V>(x + j + 3 * L) * Load<V>(y + j + 3 * L);
  }
  for (; j + L <= count; j += L)
    s0 += Load<V>(x + j) * Load<V>(y + j);
  const V v = (s0 + s1) + (s2 + s3);
  double s = 0.0;
  for (int i = 0; i < L; ++i)
    s += v[i];
  for (; j < count; ++j)
    s += x[j] * y[j];
  return s;
}

// True when x[0..count) holds no infinity and no NaN: x * 0 is NaN exactly for
// those, and a NaN survives any sum.
template <class T> VELK_INLINE bool AllFinite(const double* x, int count) {
  using V = typename T::V;
  constexpr int L = T::kLanes;
  const V zero = Splat<V>(0.0);
  V s = zero;
  int j = 0;
  for (; j + L <= count; j += L)
    s += Load<V>(x + j) * zero;
  double t = 0.0;
  for (int i = 0; i < L; ++i)
    t += s[i];
  for (; j < count; ++j)
    t += x[j] * 0.0;
  return t == 0.0;
}

// The panel: pivots p0 .. p1 - 1 eliminated among the rows of their block,
// each row swept over its whole reach.
template <class T>
VELK_INLINE void EliminatePanel(double* a, std::ptrdiff_t ld, int n, int bw, int p0, int p1) {
  for (int p = p0; p < p1; ++p) {
    double* const rp = a + p * ld + p;
    if (p > 0 && !AllFinite<T>(rp, std::min(bw - 1, n - p))) Raise(errOverflow);
    if (p == n - 1) return;
    const double d = rp[0];
    if (d == 0.0) RaiseZeroDivisor(rp[1] * rp[1]);
    const int last = std::min(p + bw - 1, n - 1); // the last column row p reaches
    for (int i = p + 1; i <= std::min(p1 - 1, last); ++i)
      SubScaled<T>(a + i * ld + i, rp + (i - p), rp[i - p] / d, last - i + 1);
  }
}

// The block's rows over the `width` trailing columns p1 .. p1 + width - 1,
// for the update: row q of U (ldU long, zero beyond the row's reach and up to
// ldU, so that a tile may read past `width`), and W in strips of kRows
// columns, each strip holding its kRows values for pivot after pivot.
template <class T>
VELK_INLINE void PackBlock(const double* a, std::ptrdiff_t ld, int n, int bw, int p0, int p1,
                           int width, double* u, int ldU, double* w) {
  using V = typename T::V;
  constexpr int L = T::kLanes, MR = T::kRows;
  const int depth = p1 - p0, strips = (width + MR - 1) / MR;
  for (int q = 0; q < depth; ++q) {
    const int p = p0 + q;
    const double* const src = a + p * ld + p1;
    const int reach = std::max(std::min(p + bw - 1, n - 1) - p1 + 1, 0);
    double* const uq = u + static_cast<std::ptrdiff_t>(q) * ldU;
    int c = 0;
    for (; c + L <= reach; c += L)
      Store(uq + c, Load<V>(src + c));
    for (; c < reach; ++c)
      uq[c] = src[c];
    std::fill(uq + c, uq + ldU, 0.0);
    // W = U times the pivot's reciprocal: one division per row. A pivot whose
    // reciprocal is not a normal number (it overflows, or loses digits)
    // divides instead.
    const double d = a[p * ld + p], inverse = 1.0 / d;
    const bool scale = std::isnormal(inverse);
    const V iv = Splat<V>(inverse);
    for (int s = 0; s < strips; ++s) {
      double* const ws = w + (static_cast<std::ptrdiff_t>(s) * depth + q) * MR;
      const double* const us = uq + s * MR;
      if (scale && MR % L == 0) {
#pragma GCC unroll 4
        for (int r = 0; r < MR; r += L)
          Store(ws + r, Load<V>(us + r) * iv);
      } else {
        for (int r = 0; r < MR; ++r)
          ws[r] = scale ? us[r] * inverse : us[r] / d;
      }
    }
  }
}

// One register tile of the update: kRows rows from p1 + i0 and kVectors
// vectors of columns from p1 + k0 take the terms of the block's `depth`
// pivots. Entries left of the diagonal or right of `width` are not touched.
template <class T>
VELK_INLINE void UpdateTile(double* a, std::ptrdiff_t ld, int p1, int width, int depth,
                            const double* u, int ldU, const double* w, int i0, int k0) {
  using V = typename T::V;
  constexpr int L = T::kLanes, NV = T::kVectors, MR = T::kRows, NR = NV * L;
  V acc[MR][NV];
#pragma GCC unroll 8
  for (int r = 0; r < MR; ++r)
#pragma GCC unroll 4
    for (int v = 0; v < NV; ++v)
      acc[r][v] = Splat<V>(0.0);
  for (int q = 0; q < depth; ++q) {
    V uv[NV];
#pragma GCC unroll 4
    for (int v = 0; v < NV; ++v)
      uv[v] = Load<V>(u + static_cast<std::ptrdiff_t>(q) * ldU + k0 + v * L);
#pragma GCC unroll 8
    for (int r = 0; r < MR; ++r) {
      const V wv = Splat<V>(w[q * MR + r]);
#pragma GCC unroll 4
      for (int v = 0; v < NV; ++v)
        acc[r][v] += wv * uv[v];
    }
  }
  if (i0 + MR - 1 <= k0 && k0 + NR <= width) {
#pragma GCC unroll 8
    for (int r = 0; r < MR; ++r) {
      double* const c = a + (p1 + i0 + r) * ld + p1 + k0;
#pragma GCC unroll 4
      for (int v = 0; v < NV; ++v)
        Store(c + v * L, Load<V>(c + v * L) - acc[r][v]);
    }
    return;
  }
  // On the diagonal or at the right edge: whole vectors where they lie inside,
  // single entries where they straddle.
  for (int r = 0; r < MR && i0 + r < width; ++r) {
    const int i = i0 + r;
    double* const c = a + (p1 + i) * ld + p1;
    for (int v = 0; v < NV; ++v) {
      const int k = k0 + v * L;
      if (k >= i && k + L <= width) {
        Store(c + k, Load<V>(c + k) - acc[r][v]);
        continue;
      }
      for (int l = std::max(i - k, 0); l < L && k + l < width; ++l)
        c[k + l] -= acc[r][v][l];
    }
  }
}

// The elimination, blocked. Pivot p reduces each later row i it reaches by
//   A(i, k) -= W(p, i) * U(p, k),   W(p, i) = U(p, i) / d(p),
// for the columns k >= i its row covers; U(p, .) is row p once final and d(p)
// its diagonal. The same terms as the row-by-row elimination, taken pivot
// after pivot (right-looking) instead of row after row, so each sum is added
// in another order and only the last bits can differ.
//
// A block of kBlock pivots is eliminated among its own rows first (the panel),
// each pivot's row swept onto the later rows of the block. The rows after the
// block then take the whole block's terms at once: a dense update of the
// triangle they span, computed in register tiles from packed copies of U and
// W, so that each entry of the triangle is loaded and stored once per block
// instead of once per pivot. The steps are separate functions, all inlined
// into the kernel of each instruction set, so the split costs no call.
//
// Faults are checked once per row, in the order the row-by-row elimination
// meets them: row p's entries when it is final, then its pivot before the
// first division by it.
//
// Pivots `from` .. `to` - 1 only, `from` a multiple of kBlock: the blocks are
// the same whether the whole matrix is factored at once or slice by slice.
template <class T>
VELK_INLINE void FactorBand(double* a, std::ptrdiff_t ld, int n, int bw, int from, int to) {
  constexpr int MR = T::kRows, NR = T::kVectors * T::kLanes;
  const int ldU = bw - 1 + NR;
  std::vector<double> packedU(static_cast<std::size_t>(kBlock) * ldU);
  std::vector<double> packedW(static_cast<std::size_t>((bw - 1 + MR - 1) / MR) * kBlock * MR);
  for (int p0 = from; p0 < to; p0 += kBlock) {
    const int p1 = std::min(p0 + kBlock, n);
    EliminatePanel<T>(a, ld, n, bw, p0, p1);
    // The rows and columns p1 .. p1 + width - 1 that the block reaches.
    const int width = std::min(bw - 1, n - p1);
    if (width <= 0) continue;
    PackBlock<T>(a, ld, n, bw, p0, p1, width, packedU.data(), ldU, packedW.data());
    // Each strip of rows starts its tiles at its own first column: only its
    // first tile meets the diagonal.
    for (int i0 = 0; i0 < width; i0 += MR) {
      const double* const w =
          packedW.data() + static_cast<std::ptrdiff_t>(i0 / MR) * (p1 - p0) * MR;
      for (int k0 = i0; k0 < width; k0 += NR)
        UpdateTile<T>(a, ld, p1, width, p1 - p0, packedU.data(), ldU, w, i0, k0);
    }
  }
}

// Forward pass pivot after pivot, over pivots from .. to - 1: once f[p] is
// final it is divided by its pivot and swept down the rows it reaches along
// row p.
template <class T>
VELK_INLINE void ForwardBand(const double* a, std::ptrdiff_t ld, double* f, int n, int bw,
                             int from, int to) {
  if (bw < 2) return;
  for (int p = from; p < to; ++p) {
    if (p > 0 && !std::isfinite(f[p])) Raise(errOverflow);
    if (p == n - 1) break;
    const double* const rp = a + p * ld + p;
    if (rp[0] == 0.0) RaiseZeroDivisor(rp[1]);
    SubScaled<T>(f + p + 1, rp + 1, f[p] / rp[0], std::min(bw - 1, n - 1 - p));
  }
}

// Backward pass over rows to - 1 down to from, one dot product a row; rows
// beyond `to` are solved already.
template <class T>
VELK_INLINE void BackwardBand(const double* a, std::ptrdiff_t ld, double* x, const double* f,
                              int n, int bw, int from, int to) {
  for (int i = to - 1; i >= from; --i) {
    const double* const ri = a + i * ld + i;
    if (i == n - 1) {
      x[i] = Div(f[i], ri[0]);
      continue;
    }
    const double s = Dot<T>(ri + 1, x + i + 1, std::min(bw - 1, n - 1 - i));
    x[i] = Div(f[i] - s, ri[0]);
  }
}

// y = -A x reading each row once: its upper part as a dot product, its lower
// part (the column below the diagonal) swept into the later entries of y.
template <class T>
VELK_INLINE void MultiplyBand(const double* a, std::ptrdiff_t ld, const double* x, double* y, int n,
                              int bw) {
  std::fill(y, y + n, 0.0);
  for (int i = 0; i < n; ++i) {
    const double* const ri = a + i * ld + i;
    const int count = std::min(bw, n - i);
    y[i] -= Dot<T>(ri, x + i, count);
    if (count > 1) SubScaled<T>(y + i + 1, ri + 1, x[i], count - 1);
  }
  if (!AllFinite<T>(y, n)) Raise(errOverflow);
}

using FactorFn = void (*)(double*, std::ptrdiff_t, int, int, int, int);
using ForwardFn = void (*)(const double*, std::ptrdiff_t, double*, int, int, int, int);
using BackwardFn = void (*)(const double*, std::ptrdiff_t, double*, const double*, int, int, int,
                            int);
using MultiplyFn = void (*)(const double*, std::ptrdiff_t, const double*, double*, int, int);
struct Kernels {
  FactorFn factor;
  ForwardFn forward;
  BackwardFn backward;
  MultiplyFn multiply;
};

#define VELK_KERNELS(Isa, ...)                                                                     \
  __VA_ARGS__ void Factor##Isa(double* a, std::ptrdiff_t ld, int n, int bw, int from, int to) {    \
    FactorBand<Isa>(a, ld, n, bw, from, to);                                                       \
  }                                                                                                \
  __VA_ARGS__ void Forward##Isa(const double* a, std::ptrdiff_t ld, double* f, int n, int bw,      \
                                int from, int to) {                                                \
    ForwardBand<Isa>(a, ld, f, n, bw, from, to);                                                   \
  }                                                                                                \
  __VA_ARGS__ void Backward##Isa(const double* a, std::ptrdiff_t ld, double* x, const double* f,   \
                                 int n, int bw, int from, int to) {                                \
    BackwardBand<Isa>(a, ld, x, f, n, bw, from, to);                                               \
  }                                                                                                \
  __VA_ARGS__ void Multiply##Isa(const double* a, std::ptrdiff_t ld, const double* x, double* y,   \
                                 int n, int bw) {                                                  \
    MultiplyBand<Isa>(a, ld, x, y, n, bw);                                                         \
  }

VELK_KERNELS(IsaBase)
#if defined(__x86_64__)
VELK_KERNELS(IsaAvx2, __attribute__((target("avx2,fma"))))
VELK_KERNELS(IsaAvx512, __attribute__((target("avx512f,avx512vl,avx512dq,avx2,fma"))))
#endif

// An unknown name, or a kernel this processor lacks, leaves the choice to the
// processor: the program never stops over a test knob.
BandKernel Choose() {
  constexpr BandKernel widestFirst[] = {BandKernel::Avx512, BandKernel::Avx2, BandKernel::Plain};
  if (const char* asked = std::getenv("VELK_BAND_KERNEL"))
    for (BandKernel k : widestFirst)
      if (asked == std::string_view(Band_KernelName(k)) && Band_KernelRuns(k)) return k;
  for (BandKernel k : widestFirst)
    if (Band_KernelRuns(k)) return k;
  return BandKernel::Plain;
}

const Kernels& Chosen() {
  static const Kernels k = [] {
    switch (Band_Kernel()) {
#if defined(__x86_64__)
    case BandKernel::Avx512:
      return Kernels{FactorIsaAvx512, ForwardIsaAvx512, BackwardIsaAvx512, MultiplyIsaAvx512};
    case BandKernel::Avx2:
      return Kernels{FactorIsaAvx2, ForwardIsaAvx2, BackwardIsaAvx2, MultiplyIsaAvx2};
#endif
    default:
      return Kernels{FactorIsaBase, ForwardIsaBase, BackwardIsaBase, MultiplyIsaBase};
    }
  }();
  return k;
}

// Entry (1, 1) of M; with the rows B long, entry (i, k) 0-based is at i * (B - 1) + k.
double* Origin(BandMatrix& M) {
  return M.Rows() > 0 ? M.Row(1) : nullptr;
}
const double* Origin(const BandMatrix& M) {
  return M.Rows() > 0 ? M.Row(1) : nullptr;
}

// Where the system offers it, the storage is backed by 2 MB pages: the first
// touch of each page is a fault, and with 4 kB pages the faults of a large run
// cost more than its assembly. Only the whole 2 MB spans inside the block
// are marked; it is a hint, and nothing changes where it is not taken.
void AskForLargePages([[maybe_unused]] void* p, [[maybe_unused]] std::size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  constexpr std::uintptr_t kLarge = std::uintptr_t{1} << 21;
  const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(p) + kLarge - 1) & ~(kLarge - 1);
  const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(p) + bytes) & ~(kLarge - 1);
  if (end > begin) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#endif
}

} // namespace

static_assert(std::numeric_limits<double>::is_iec559, "calloc's zero bytes must be 0.0");

// The storage comes from calloc, not from a value-initialised vector: a large
// block is mapped fresh from the system, whose pages are zero already, so the
// array is cleared once, page by page as it is first written, and never by a
// sweep of its own. A run's band arrays are tens of megabytes.
BandMatrix::BandMatrix(int rows, int columns) : rows_(rows), columns_(columns) {
  if (rows < 0 || columns < 0) Raise(errSubscript);
  if (Size() == 0) return;
  data_.reset(static_cast<double*>(std::calloc(Size(), sizeof(double))));
  if (!data_) throw std::bad_alloc();
  AskForLargePages(data_.get(), Size() * sizeof(double));
}

BandMatrix::BandMatrix(const BandMatrix& other) : rows_(other.rows_), columns_(other.columns_) {
  if (Size() == 0) return;
  data_.reset(static_cast<double*>(std::malloc(Size() * sizeof(double))));
  if (!data_) throw std::bad_alloc();
  std::memcpy(data_.get(), other.data_.get(), Size() * sizeof(double));
}

BandMatrix& BandMatrix::operator=(const BandMatrix& other) {
  if (this != &other) *this = BandMatrix(other);
  return *this;
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

const char* Band_KernelName(BandKernel kernel) {
  switch (kernel) {
  case BandKernel::Avx2:
    return "avx2";
  case BandKernel::Avx512:
    return "avx512";
  default:
    return "plain";
  }
}

bool Band_KernelRuns(BandKernel kernel) {
  switch (kernel) {
#if defined(__x86_64__)
  case BandKernel::Avx2:
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  case BandKernel::Avx512:
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512dq");
#endif
  case BandKernel::Plain:
    return true;
  default:
    return false;
  }
}

BandKernel Band_Kernel() {
  static const BandKernel k = Choose();
  return k;
}

namespace {

thread_local BandPause gPause = nullptr;

// About this many multiply-adds between two pauses: some tens of
// milliseconds, so Cancel answers at once while the pauses cost nothing.
constexpr double kSliceWork = 3.2e7;

// Rows a slice may hold when each costs `perRow`, a multiple of `unit`.
int SliceRows(double perRow, int unit) {
  const double rows = kSliceWork / std::max(perRow, 1.0);
  if (rows >= 1e9) return std::numeric_limits<int>::max() / 2 / unit * unit;
  return std::max(unit, static_cast<int>(rows) / unit * unit);
}

// Runs `step(from, to)` over 0 .. n - 1 (or backwards) in slices, pausing
// between them.
template <class Step> void Sliced(int n, int slice, bool backwards, Step step) {
  for (int done = 0; done < n;) {
    if (done > 0 && gPause) gPause();
    const int count = std::min(slice, n - done);
    if (backwards)
      step(n - done - count, n - done);
    else
      step(done, done + count);
    done += count;
  }
}

} // namespace

BandPause Band_SetPause(BandPause pause) {
  return std::exchange(gPause, pause);
}

void Band_Factor(BandMatrix& M, int n, int bw) {
  CheckShape(M, n, bw);
  if (bw < 2 || n < 2) return;
  double* const a = Origin(M);
  const std::ptrdiff_t ld = M.Columns() - 1;
  const double perRow = 0.5 * static_cast<double>(bw) * static_cast<double>(bw);
  Sliced(n, SliceRows(perRow, kBlock), false,
         [&](int from, int to) { Chosen().factor(a, ld, n, bw, from, to); });
}

void Band_Factor_Measured(BandMatrix& M, int n, int bw, double& ratio) {
  CheckShape(M, n, bw);
  std::vector<double> diagonal(static_cast<std::size_t>(n));
  for (int i = 1; i <= n; ++i)
    diagonal[static_cast<std::size_t>(i - 1)] = M(i, 1);
  const auto smallest = [&] {
    double r = std::numeric_limits<double>::infinity();
    for (int i = 1; i <= n; ++i) {
      const double a = std::fabs(diagonal[static_cast<std::size_t>(i - 1)]), d = std::fabs(M(i, 1));
      if (a > 0.0)
        r = std::min(r, d / a);
      else if (d == 0.0)
        r = 0.0;
    }
    return r;
  };
  try {
    Band_Factor(M, n, bw);
  } catch (const Fault&) {
    // The rows beyond the failing pivot are half eliminated and say nothing;
    // a zero pivot stopped it if a diagonal is zero.
    ratio = std::numeric_limits<double>::infinity();
    for (int i = 1; i <= n; ++i)
      if (M(i, 1) == 0.0) ratio = 0.0;
    throw;
  }
  ratio = smallest();
}

void Band_Solve(const BandMatrix& M, std::span<double> x, std::span<double> f, int n, int bw) {
  CheckShape(M, n, bw);
  CheckVector(x.size(), n);
  CheckVector(f.size(), n);
  if (n < 1) return;
  const double* const a = Origin(M);
  const std::ptrdiff_t ld = std::max(M.Columns() - 1, 0);
  const int slice = SliceRows(static_cast<double>(bw), 1);
  Sliced(n, slice, false, [&](int from, int to) { Chosen().forward(a, ld, f.data(), n, bw, from, to); });
  Sliced(n, slice, true,
         [&](int from, int to) { Chosen().backward(a, ld, x.data(), f.data(), n, bw, from, to); });
}

void Band_Multiply(const BandMatrix& Kg, std::span<const double> x, std::span<double> y, int n,
                   int bw) {
  CheckShape(Kg, n, bw);
  CheckVector(x.size(), n);
  CheckVector(y.size(), n);
  if (n < 1) return;
  Chosen().multiply(Origin(Kg), std::max(Kg.Columns() - 1, 0), x.data(), y.data(), n, bw);
}

} // namespace velk
