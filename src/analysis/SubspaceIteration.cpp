#include "analysis/SubspaceIteration.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "analysis/CheckedArithmetic.h"
#include "analysis/EigenIteration.h"

namespace velk {

namespace {

// Ritz values this close, relatively, are taken as equal in magnitude.
constexpr double kSameMagnitude = 1e-6;

// A q x q matrix of the subspace, row by row.
struct Small {
  explicit Small(int size) : q(size), a(static_cast<std::size_t>(size) * size, 0.0) {}
  double& operator()(int i, int j) { return a[static_cast<std::size_t>(i) * q + j]; }
  double operator()(int i, int j) const { return a[static_cast<std::size_t>(i) * q + j]; }
  int q;
  std::vector<double> a;
};

// n vectors side by side; column j is one contiguous span.
struct Block {
  Block(int rows, int columns) : n(rows), v(static_cast<std::size_t>(rows) * columns, 0.0) {}
  std::span<double> Column(int j) {
    return {v.data() + static_cast<std::size_t>(j) * n, static_cast<std::size_t>(n)};
  }
  std::span<const double> Column(int j) const {
    return {v.data() + static_cast<std::size_t>(j) * n, static_cast<std::size_t>(n)};
  }
  int n;
  std::vector<double> v;
};

double DotOf(std::span<const double> x, std::span<const double> y) {
  return Finite(std::inner_product(x.begin(), x.end(), y.begin(), 0.0));
}

// A^T B, symmetrised: both products are of symmetric matrices in exact
// arithmetic, and the small solver wants them so.
Small Projected(const Block& A, const Block& B, int q) {
  Small s(q);
  for (int i = 0; i < q; ++i)
    for (int j = i; j < q; ++j)
      s(i, j) = s(j, i) = 0.5 * (DotOf(A.Column(i), B.Column(j)) + DotOf(A.Column(j), B.Column(i)));
  return s;
}

// Cyclic Jacobi rotations on the symmetric `a`: its diagonal ends as the
// eigenvalues, and the columns of the returned matrix as the eigenvectors.
Small Jacobi(Small& a) {
  const int q = a.q;
  Small v(q);
  for (int i = 0; i < q; ++i)
    v(i, i) = 1.0;
  for (int sweep = 0; sweep < 100; ++sweep) {
    double off = 0.0, scale = 0.0;
    for (int i = 0; i < q; ++i)
      for (int j = 0; j < q; ++j)
        (i == j ? scale : off) += a(i, j) * a(i, j);
    if (off <= 1e-30 * scale || off == 0.0) break;
    for (int p = 0; p < q - 1; ++p)
      for (int r = p + 1; r < q; ++r) {
        if (a(p, r) == 0.0) continue;
        const double theta = (a(r, r) - a(p, p)) / (2.0 * a(p, r));
        const double t = (theta >= 0 ? 1.0 : -1.0) / (std::fabs(theta) + std::hypot(theta, 1.0));
        const double c = 1.0 / std::hypot(t, 1.0), s = t * c;
        for (int k = 0; k < q; ++k) {
          const double akp = a(k, p), akr = a(k, r);
          a(k, p) = c * akp - s * akr;
          a(k, r) = s * akp + c * akr;
        }
        for (int k = 0; k < q; ++k) {
          const double apk = a(p, k), ark = a(r, k);
          a(p, k) = c * apk - s * ark;
          a(r, k) = s * apk + c * ark;
        }
        for (int k = 0; k < q; ++k) {
          const double vkp = v(k, p), vkr = v(k, r);
          v(k, p) = c * vkp - s * vkr;
          v(k, r) = s * vkp + c * vkr;
        }
      }
  }
  return v;
}

// The Ritz pairs of g x = mu k x with k positive definite: k = L L^T, the
// standard problem of L^-1 g L^-T by Jacobi, and x = L^-T v, so that the
// vectors come out k-orthonormal. The columns of the result, and mu, are in
// order of decreasing |mu|.
Small Ritz(const Small& k, const Small& g, std::vector<double>& mu) {
  const int q = k.q;
  Small L(q);
  double largest = 0.0;
  for (int i = 0; i < q; ++i)
    largest = std::fmax(largest, k(i, i));
  for (int j = 0; j < q; ++j) {
    double d = k(j, j);
    for (int c = 0; c < j; ++c)
      d -= L(j, c) * L(j, c);
    // Trial vectors that have fallen into each other leave nothing to divide by.
    if (!(d > 1e-14 * largest)) Raise(errInvalidCall, "the trial vectors became dependent");
    L(j, j) = std::sqrt(d);
    for (int i = j + 1; i < q; ++i) {
      double s = k(i, j);
      for (int c = 0; c < j; ++c)
        s -= L(i, c) * L(j, c);
      L(i, j) = Div(s, L(j, j));
    }
  }
  // W = L^-1 g, then C = W L^-T = L^-1 (L^-1 g)^T, g being symmetric.
  const auto forward = [&](const Small& b) {
    Small x(q);
    for (int col = 0; col < q; ++col)
      for (int i = 0; i < q; ++i) {
        double s = b(i, col);
        for (int c = 0; c < i; ++c)
          s -= L(i, c) * x(c, col);
        x(i, col) = s / L(i, i);
      }
    return x;
  };
  const Small W = forward(g);
  Small Wt(q);
  for (int i = 0; i < q; ++i)
    for (int j = 0; j < q; ++j)
      Wt(i, j) = W(j, i);
  Small C = forward(Wt);
  for (int i = 0; i < q; ++i)
    for (int j = i + 1; j < q; ++j)
      C(i, j) = C(j, i) = 0.5 * (C(i, j) + C(j, i));
  const Small V = Jacobi(C);

  std::vector<int> order(static_cast<std::size_t>(q));
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&](int a, int b) { return std::fabs(C(a, a)) > std::fabs(C(b, b)); });
  // A symmetric structure buckles as readily under the loads reversed: such a
  // pair is equal in magnitude up to rounding, and the load as applied, the
  // positive one, comes first, as the run finds it.
  for (int i = 0; i + 1 < q; ++i) {
    const double a = C(order[i], order[i]), b = C(order[i + 1], order[i + 1]);
    if (a < 0.0 && b > 0.0 && std::fabs(a) - b <= kSameMagnitude * b)
      std::swap(order[i], order[i + 1]);
  }
  // Q = L^-T V, column by column in the new order.
  Small Q(q);
  mu.assign(static_cast<std::size_t>(q), 0.0);
  for (int col = 0; col < q; ++col) {
    const int from = order[static_cast<std::size_t>(col)];
    mu[static_cast<std::size_t>(col)] = Finite(C(from, from));
    for (int i = q - 1; i >= 0; --i) {
      double s = V(i, from);
      for (int c = i + 1; c < q; ++c)
        s -= L(c, i) * Q(c, col);
      Q(i, col) = Finite(s / L(i, i));
    }
  }
  return Q;
}

// out = in Q, column by column.
void Rotate(const Block& in, const Small& Q, Block& out) {
  const int n = in.n, q = Q.q;
  std::fill(out.v.begin(), out.v.end(), 0.0);
  for (int j = 0; j < q; ++j) {
    std::span<double> o = out.Column(j);
    for (int c = 0; c < q; ++c) {
      const double f = Q(c, j);
      if (f == 0.0) continue;
      std::span<const double> x = in.Column(c);
      for (int i = 0; i < n; ++i)
        o[static_cast<std::size_t>(i)] += f * x[static_cast<std::size_t>(i)];
    }
  }
}

// The freedoms that Kg couples to anything: -Kg has no larger rank than their
// count, so no more modes of finite eigenvalue exist.
std::vector<char> Touched(const BandMatrix& Kg, int n, int bw) {
  std::vector<char> on(static_cast<std::size_t>(n), 0);
  for (int i = 1; i <= n; ++i)
    for (int b = 1; b <= bw && i + b - 1 <= n; ++b)
      if (Kg(i, b) != 0.0)
        on[static_cast<std::size_t>(i - 1)] = on[static_cast<std::size_t>(i + b - 2)] = 1;
  return on;
}

} // namespace

int Subspace_Size(int modes) {
  // Four more than the classical min(2N, N + 8): buckling modes come in pairs
  // of either sign and nearly equal size (shear panels, symmetric girders),
  // and with two vectors for one mode its pair's twin alone slows it past
  // any cycle limit.
  return std::min(2 * modes + 4, modes + 12);
}

BucklingModes Subspace_Iterate(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, int n,
                               int bw, const SubspaceOptions& options) {
  const auto fits = [&](const BandMatrix& M) {
    return n >= 1 && n <= M.Rows() && bw >= 1 && bw <= M.Columns();
  };
  if (!fits(K) || !fits(Kg) || !fits(work) || options.modes < 1) Raise(errSubscript);
  const std::vector<char> touched = Touched(Kg, n, bw);
  const int active = static_cast<int>(std::count(touched.begin(), touched.end(), 1));
  if (active < options.modes)
    Raise(errInvalidCall,
          "the geometric stiffness allows only " + std::to_string(active) + " modes");
  const int q = std::min(Subspace_Size(options.modes), active);

  for (int i = 1; i <= n; ++i)
    std::copy_n(K.Row(i), bw, work.Row(i));
  Band_Factor(work, n, bw);

  // Start from a fixed pseudo-random block on the touched freedoms (the rest
  // is lost in the first product anyway), the same on every machine.
  Block X(n, q), Y(n, q), Xbar(n, q), Ybar(n, q);
  std::uint32_t seed = 12345u;
  for (int j = 0; j < q; ++j) {
    std::span<double> x = X.Column(j);
    for (int i = 0; i < n; ++i) {
      seed = seed * 1664525u + 1013904223u;
      if (touched[static_cast<std::size_t>(i)])
        x[static_cast<std::size_t>(i)] = static_cast<double>(seed >> 8) / 8388608.0 - 1.0;
    }
    Band_Multiply(Kg, X.Column(j), Y.Column(j), n, bw);
  }

  BucklingModes result;
  std::vector<double> mu, lambda(static_cast<std::size_t>(options.modes), 0.0);
  for (int cycle = 1; cycle <= options.maxIterations; ++cycle) {
    // Xbar = K^-1 (-Kg) X, and the two projections: Xbar^T K Xbar = Xbar^T Y.
    for (int j = 0; j < q; ++j) {
      std::span<double> xb = Xbar.Column(j);
      std::span<const double> y = Y.Column(j);
      std::copy(y.begin(), y.end(), xb.begin());
      Band_Solve(work, xb, xb, n, bw);
      Band_Multiply(Kg, Xbar.Column(j), Ybar.Column(j), n, bw);
    }
    const Small Kr = Projected(Xbar, Y, q);
    const Small Gr = Projected(Xbar, Ybar, q);
    const Small Q = Ritz(Kr, Gr, mu);
    Rotate(Xbar, Q, X);
    Rotate(Ybar, Q, Y);

    bool settled = cycle > 1;
    for (int i = 0; i < options.modes; ++i) {
      const double now = Div(1.0, mu[static_cast<std::size_t>(i)]);
      double& before = lambda[static_cast<std::size_t>(i)];
      settled = settled && std::fabs(now - before) <= options.tolerance * std::fabs(now);
      before = now;
    }
    result.iterations = cycle;
    if (settled) {
      result.converged = true;
      break;
    }
  }

  result.eigenvalues = lambda;
  for (int i = 0; i < options.modes; ++i) {
    std::span<const double> x = X.Column(i);
    std::vector<double> shape(x.begin(), x.end());
    Normalise_Vector(shape, n);
    result.shapes.push_back(std::move(shape));
  }
  return result;
}

} // namespace velk
