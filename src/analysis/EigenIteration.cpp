#include "analysis/EigenIteration.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/CheckedArithmetic.h"
#include "analysis/EigenCalculation.h"
#include "analysis/RunContext.h"
#include "common/Host.h"

namespace velk {

namespace {

constexpr double kConverged = 0.0001;

void Mode_Table(Listing& l, std::span<const double> v, int points, const char* wPicture) {
  l.Begin().Text("Node Number").Text("Z Dir").Text("Rot. X").Text("Rot. Y").End();
  for (int i = 1; i <= points; ++i)
    l.Begin()
        .Int(i)
        .Formatted(v[3 * i - 3], wPicture)
        .Formatted(v[3 * i - 2], "0.00E+00")
        .Formatted(v[3 * i - 1], "0.00E+00")
        .End();
}

// work = K + sigma Kg over the equations and the band in use, which is all
// that the factoring and the solves read of work: nothing else of it needs
// clearing. With sigma 0, K itself.
void Shifted(BandMatrix& work, const BandMatrix& K, const BandMatrix& Kg, double sigma, int n,
             int bw) {
  for (int i = 1; i <= n; ++i) {
    const double* k = K.Row(i);
    const double* g = Kg.Row(i);
    double* w = work.Row(i);
    if (sigma == 0.0) {
      std::copy_n(k, bw, w);
      continue;
    }
    bool finite = true;
    for (int j = 0; j < bw; ++j) {
      w[j] = k[j] + sigma * g[j];
      finite &= std::fabs(w[j]) <= std::numeric_limits<double>::max();
    }
    if (!finite) Raise(errOverflow);
  }
}

} // namespace

void Initial_Mode(std::span<double> x, int points, int optionInitialB) {
  if (x.size() < static_cast<std::size_t>(3) * points) Raise(errSubscript);
  const int m = points / 3;
  for (int i = 1; i <= points; ++i) {
    x[3 * i - 3] = optionInitialB != 0 || i <= m ? 1.0 : -0.5;
    x[3 * i - 2] = 0.0;
    x[3 * i - 1] = 0.0;
  }
}

double Normalise_Vector(std::span<double> v, int n) {
  if (n < 1 || v.size() < static_cast<std::size_t>(n)) Raise(errSubscript);
  double largest = v[0];
  for (int i = 2; i <= n; ++i)
    if (std::fabs(v[i - 1]) > std::fabs(largest)) largest = v[i - 1];
  for (int i = 1; i <= n; ++i)
    v[i - 1] = Div(v[i - 1], largest);
  return largest;
}

namespace {

// The first vector into x, and the listing of it and of the options.
void Start_Iteration(Listing& list, std::span<double> x, int points,
                     const IterationOptions& options) {
  list.Line("[Input Mode Shape]");
  Initial_Mode(x, points, options.OptionInitialB);
  Mode_Table(list, x, points, "0.00E+00");

  list.Line("[Input Analysis Option]");
  list.Begin()
      .Text("Maximum Shift")
      .Text("Maximum Cycle")
      .Text("Shift Factor")
      .Text("Estimation")
      .End();
  list.Begin()
      .Int(options.MaxShift)
      .Int(options.MaxCycle)
      .Formatted(options.ShiftFactor, "0.00E+00")
      .Formatted(options.EigenValueEstimation, "0.00E+00")
      .End();
}

enum class ShiftEnd { Converged, CyclesUsedUp, Cancelled };

// The cycles of one shift on the factored matrix: y = -Kg x, solved and
// normalised, until the iterate stops changing or the cycles are used up. mu
// and lambda hold the last cycle's values; x carries over to the next shift.
ShiftEnd Shift_Cycles(const BandMatrix& Kg, const BandMatrix& factored, std::span<double> x,
                      std::span<double> y, int n, int bw, int shift, int maxCycle, double sigma,
                      double& mu, double& lambda) {
  for (int cycle = 1; cycle <= maxCycle; ++cycle) {
    Band_Multiply(Kg, x, y, n, bw);
    Band_Solve(factored, y, y, n, bw);
    mu = Normalise_Vector(y, n);
    lambda = Finite(Div(1.0, mu) + sigma);
    double change = 0.0;
    for (int i = 0; i < n; ++i)
      change = std::fmax(change, std::fabs(Finite(x[i] - y[i])));
    if (analysisHooks().Cycle) analysisHooks().Cycle(shift, cycle, sigma, lambda, change);
    if (change < kConverged) return ShiftEnd::Converged;
    for (int i = 0; i < n; ++i)
      x[i] = y[i];
    host().Yield();
    if (AnalysisCancel == -1) return ShiftEnd::Cancelled;
  }
  return ShiftEnd::CyclesUsedUp;
}

} // namespace

bool Eigen_Iterate(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, std::span<double> x,
                   std::span<double> y, int bw, int points, const IterationOptions& options,
                   Listing& list, double& lambda) {
  const int n = Int16(3L * points);
  const auto fits = [&](const BandMatrix& M) {
    return n <= M.Rows() && bw >= 0 && bw <= M.Columns();
  };
  if (x.size() < static_cast<std::size_t>(n) || y.size() < static_cast<std::size_t>(n) ||
      !fits(K) || !fits(Kg) || !fits(work))
    Raise(errSubscript);
  Start_Iteration(list, x, points, options);

  // The single-precision options enter the arithmetic as they are: the
  // default factor is 0.800000011920929.
  double sigma = options.EigenValueEstimation;
  const double factor = options.ShiftFactor;
  double mu = 0.0;
  for (int shift = 1; shift <= options.MaxShift; ++shift) {
    Shifted(work, K, Kg, sigma, n, bw);
    StepTimer factoring;
    Factor_Measured(work, n, bw);
    factoring.Done(RunStep::ShiftFactor, n, bw);
    StepTimer cycles;
    const ShiftEnd end =
        Shift_Cycles(Kg, work, x, y, n, bw, shift, options.MaxCycle, sigma, mu, lambda);
    if (end == ShiftEnd::Cancelled) return false;
    cycles.Done(RunStep::ShiftCycles, n, bw);
    if (end == ShiftEnd::Converged) break;
    // The cycles of this shift are used up (with none at all, 1 / mu is the
    // division by zero of an empty shift).
    sigma = Finite((Div(1.0, mu) + sigma) * factor);
  }
  // Without a single shift there is no mode to report.
  if (options.MaxShift < 1) Raise(errInvalidCall, "no shift allowed");

  list.Line("[Output Normalized Mode Shape]");
  Mode_Table(list, y, points, "0.0000E+00");
  list.Line("[EigenValue:" + Format(lambda, "0.0000E+00") + "]");
  return true;
}

bool Buckling_Iteration(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work,
                        std::span<double> x, std::span<double> y, int bw, int points, Listing& list,
                        Analysis& analysis, const Nodes& nodes, double& lambda) {
  const Analysis& a = analysis;
  IterationOptions options;
  options.EigenValueEstimation = a.EigenValueEstimation;
  options.MaxShift = a.MaxShift;
  options.MaxCycle = a.MaxCycle;
  options.ShiftFactor = a.ShiftFactor;
  options.OptionInitialB = a.OptionInitialB;
  double result = 0.0;
  if (!Eigen_Iterate(K, Kg, work, x, y, bw, points, options, list, result)) return false;

  // Check every value before anything is stored, so that a result beyond a
  // Single leaves the model as it was.
  const Single stored = CSng(result);
  std::vector<Single> w(static_cast<std::size_t>(points));
  std::vector<std::shared_ptr<Nodeb>> node(static_cast<std::size_t>(points));
  for (int i = 1; i <= points; ++i) {
    w[i - 1] = CSng(y[3 * i - 3]);
    node[i - 1] = nodes.Item(nodes.Item(i)->UvID);
  }

  const std::string text = Format(result, "0.0000E+00");
  MsgBox("Eigenvalue of " + text);
  analysis.EigenValue = stored;
  if (analysisHooks().EigenvaluePanel) analysisHooks().EigenvaluePanel("Eigenvalue : " + text);
  for (int i = 1; i <= points; ++i)
    node[i - 1]->zcoord = w[i - 1];
  lambda = result;
  return true;
}

} // namespace velk
