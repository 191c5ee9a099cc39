#include "analysis/ResultCheck.h"

#include <algorithm>
#include <cmath>

#include "analysis/CheckedArithmetic.h"
#include "analysis/EigenCalculation.h"
#include "analysis/RunContext.h"

namespace velk {

bool ResultCheck::Free() const {
  return smallestPivotRatio < kTinyPivotRatio;
}

bool ResultCheck::ModesOk() const {
  return !made || (belowFirstMode == 0 &&
                   std::all_of(modeResiduals.begin(), modeResiduals.end(),
                               [](double r) { return r <= kResidualLimit; }));
}

int Sturm_Count(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, int n, int bw,
                double s) {
  if (n < 1 || bw < 1 || n > K.Rows() || n > Kg.Rows() || n > work.Rows() || bw > K.Columns() ||
      bw > Kg.Columns() || bw > work.Columns())
    Raise(errSubscript);
  for (int attempt = 0;; ++attempt) {
    for (int i = 1; i <= n; ++i) {
      const double* k = K.Row(i);
      const double* g = Kg.Row(i);
      double* w = work.Row(i);
      for (int j = 0; j < bw; ++j)
        w[j] = Finite(k[j] + s * g[j]);
    }
    try {
      Band_Factor(work, n, bw);
    } catch (const Fault& f) {
      // A zero pivot: s is an eigenvalue to the last bit. Any s a little
      // nearer zero counts the same values below it.
      if (f.number() != errDivByZero || attempt == 2) throw;
      s *= 1.0 - 1e-9;
      continue;
    }
    int negative = 0;
    for (int i = 1; i <= n; ++i)
      negative += work(i, 1) < 0.0;
    return negative;
  }
}

double Relative_Residual(const BandMatrix& K, const BandMatrix& Kg, int n, int bw, double lambda,
                         std::span<const double> y) {
  std::vector<double> ky(static_cast<std::size_t>(n)), gy(static_cast<std::size_t>(n));
  // Both products come negated; the norms do not mind.
  Band_Multiply(K, y.first(static_cast<std::size_t>(n)), ky, n, bw);
  Band_Multiply(Kg, y.first(static_cast<std::size_t>(n)), gy, n, bw);
  double r = 0.0, k = 0.0;
  for (std::size_t i = 0; i < ky.size(); ++i) {
    const double ri = ky[i] + lambda * gy[i];
    r += ri * ri;
    k += ky[i] * ky[i];
  }
  return Finite(Div(std::sqrt(r), std::sqrt(k)));
}

namespace {

// How far lambda may lie from the nearest load factor, relative to lambda,
// from the residual r = (K + lambda Kg) y measured in the energy of the
// shifted stiffness M = K + s Kg, factored in `work`. M is positive definite
// when no load factor lies between 0 and s, and the pencil (-Kg, M) then has
// the eigenvalues 1 / (lambda_j - s), which turns the classical residual
// bound of a definite pencil into: some lambda_j lies within
// eta |lambda - s| / (1 - eta) of lambda, eta = ||r||_M^-1 / ||y||_M.
// Close modes mixed into y, which leave lambda as good as settled, weigh
// little here, while in the plain norm of K y they dominate.
double Error_Bound(const BandMatrix& K, const BandMatrix& Kg, const BandMatrix& work, int n,
                   int bw, double lambda, double s, std::span<const double> y) {
  const std::size_t size = static_cast<std::size_t>(n);
  std::vector<double> ky(size), gy(size), r(size), z(size);
  Band_Multiply(K, y.first(size), ky, n, bw); // -K y
  Band_Multiply(Kg, y.first(size), gy, n, bw); // -Kg y
  double yMy = 0.0;
  for (std::size_t i = 0; i < size; ++i) {
    r[i] = ky[i] + lambda * gy[i];
    yMy -= y[i] * (ky[i] + s * gy[i]);
  }
  std::vector<double> f = r;
  Band_Solve(work, z, f, n, bw);
  double rz = 0.0;
  for (std::size_t i = 0; i < size; ++i)
    rz += r[i] * z[i];
  // With M indefinite (a smaller load factor on lambda's side) the bound does
  // not hold, and the same figure only indicates.
  const double eta = std::sqrt(Div(std::fabs(rz), std::fabs(yMy)));
  if (eta >= 1.0) return 1.0;
  return Finite(eta * Div(std::fabs(lambda - s), std::fabs(lambda)) / (1.0 - eta));
}

} // namespace

ResultCheck Check_Result(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, int n, int bw,
                         double lambda, std::span<const double> y, double smallestPivotRatio,
                         const BucklingModes* modes) {
  ResultCheck c;
  c.made = true;
  c.smallestPivotRatio = smallestPivotRatio;
  const bool withModes = modes && !modes->eigenvalues.empty();
  if (withModes)
    for (std::size_t m = 0; m < modes->eigenvalues.size(); ++m)
      c.modeResiduals.push_back(
          Relative_Residual(K, Kg, n, bw, modes->eigenvalues[m], modes->shapes[m]));
  // With K singular the inertia counts nothing of the load factors.
  if (c.Free()) {
    c.residual = Relative_Residual(K, Kg, n, bw, lambda, y);
    return c;
  }

  // Lambda's own side last, so that its shifted matrix stays factored for
  // the error bound.
  const double s = (1.0 - kSturmMargin) * std::fabs(lambda);
  const double side = lambda < 0.0 ? -1.0 : 1.0;
  int& own = side > 0.0 ? c.belowPositive : c.belowNegative;
  int& other = side > 0.0 ? c.belowNegative : c.belowPositive;
  Checkpoint();
  other = Sturm_Count(K, Kg, work, n, bw, -side * s);
  Checkpoint();
  own = Sturm_Count(K, Kg, work, n, bw, side * s);
  c.residual = Error_Bound(K, Kg, work, n, bw, lambda, side * s, y);

  if (withModes) {
    const double first = modes->eigenvalues.front();
    // The counts only grow with the magnitude: none below lambda means none
    // below a mode 1 that is no larger.
    if (!c.Lowest() || std::fabs(first) > std::fabs(lambda)) {
      const double s1 = (1.0 - kSturmMargin) * std::fabs(first);
      Checkpoint();
      c.belowFirstMode = Sturm_Count(K, Kg, work, n, bw, s1);
      Checkpoint();
      c.belowFirstMode += Sturm_Count(K, Kg, work, n, bw, -s1);
    }
    if (!c.Lowest() && modes->converged && std::fabs(first) < s) {
      c.smaller = first;
      return c;
    }
  }
  if (c.Lowest()) return c;
  Checkpoint();
  try {
    SubspaceOptions options;
    options.modes = 1;
    const BucklingModes lowest = Subspace_Iterate(K, Kg, work, n, bw, options);
    if (lowest.converged && std::fabs(lowest.eigenvalues.front()) < s)
      c.smaller = lowest.eigenvalues.front();
  } catch (const Fault&) {
    // The count stands; only the value goes unnamed.
  }
  return c;
}

} // namespace velk
