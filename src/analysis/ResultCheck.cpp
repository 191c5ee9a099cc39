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

ResultCheck Check_Result(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, int n, int bw,
                         double lambda, std::span<const double> y, double smallestPivotRatio,
                         const BucklingModes* modes) {
  ResultCheck c;
  c.made = true;
  c.smallestPivotRatio = smallestPivotRatio;
  c.residual = Relative_Residual(K, Kg, n, bw, lambda, y);
  const bool withModes = modes && !modes->eigenvalues.empty();
  if (withModes)
    for (std::size_t m = 0; m < modes->eigenvalues.size(); ++m)
      c.modeResiduals.push_back(
          Relative_Residual(K, Kg, n, bw, modes->eigenvalues[m], modes->shapes[m]));
  // With K singular the inertia counts nothing of the load factors.
  if (c.Free()) return c;

  // Below a magnitude: the count in (0, s) and in (-s, 0).
  const auto count = [&](double magnitude, int& positive, int& negative) {
    const double s = (1.0 - kSturmMargin) * std::fabs(magnitude);
    Checkpoint();
    positive = Sturm_Count(K, Kg, work, n, bw, s);
    Checkpoint();
    negative = Sturm_Count(K, Kg, work, n, bw, -s);
  };
  count(lambda, c.belowPositive, c.belowNegative);
  const double s = (1.0 - kSturmMargin) * std::fabs(lambda);

  if (withModes) {
    const double first = modes->eigenvalues.front();
    // The counts only grow with the magnitude: none below lambda means none
    // below a mode 1 that is no larger.
    if (!c.Lowest() || std::fabs(first) > std::fabs(lambda)) {
      int positive = 0, negative = 0;
      count(first, positive, negative);
      c.belowFirstMode = positive + negative;
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
