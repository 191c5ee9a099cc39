#pragma once
// The check of a buckling load factor after the iteration has reported it.
// The inverse iteration reports its last value also when it did not converge,
// and it converges to the eigenvalue nearest its shift, not to the smallest:
// a value that is too high and looks right. Three tests tell the user:
//  - converged: the residual of (K + lambda Kg) y bounds lambda's error to
//    0.1 %;
//  - lowest: by the inertia of K + s Kg, no load factor of smaller magnitude
//    exists, on either side of zero;
//  - restrained: no pivot of the run fell to round-off (a free structure or a
//    mechanism makes every eigenvalue meaningless).
// The front ends only word the report; the arithmetic is all here.
#include <optional>
#include <span>
#include <vector>

#include "analysis/BandMatrix.h"
#include "analysis/SubspaceIteration.h"

namespace velk {

// Above this the eigenvalue has not converged. The figure compared is a
// bound on the distance from lambda to the nearest load factor, relative to
// lambda (see `residual` below): 0.1 %, the fourth of the five digits the
// program prints. Runs that settled show 1e-7 to 1e-4 (the examples, the
// validation report, with the default cycles or more); a run stopped on its
// last shift 0.09 % or 2 % off shows 1 (no bound at all).
inline constexpr double kResidualLimit = 1e-3;

// The Sturm counts are taken at s = +/-(1 - kSturmMargin) |lambda|, just
// inside the reported value, so that neither lambda's own eigenvalue nor its
// twin of opposite sign (a symmetric structure buckles alike under the loads
// reversed) is counted while lambda still carries the error the residual
// allows. A load factor less than 0.1 % below lambda is the same buckling
// load to an engineer.
inline constexpr double kSturmMargin = kResidualLimit;

struct ResultCheck {
  bool made = false; // false: no check was asked for, or the run ended first
  // The residual r = (K + lambda Kg) y, measured in the energy of the shifted
  // stiffness K + s Kg factored for the count on lambda's side: a bound on
  // |lambda - lambda_j| / |lambda| for the nearest load factor lambda_j,
  // rigorous when that count is 0; 1 when it bounds nothing. Of a free
  // structure, the plain ||r|| / ||K y||.
  double residual = 0.0;
  // Load factors of smaller magnitude than lambda: in (0, s+) and (s-, 0).
  int belowPositive = 0;
  int belowNegative = 0;
  // The smallest pivot ratio of the run's factorings.
  double smallestPivotRatio = 0.0;
  // When a smaller load factor exists, the smallest in magnitude, when the
  // subspace iteration could find it.
  std::optional<double> smaller;
  // The further modes, when they were asked for: each one's plain residual
  // ||r|| / ||K y|| (their vectors are Ritz vectors of a settled subspace, so
  // this stays below 1e-4 when they settled), and the load factors of smaller
  // magnitude than mode 1.
  std::vector<double> modeResiduals;
  int belowFirstMode = 0;

  bool Free() const;
  bool Converged() const { return residual <= kResidualLimit; }
  bool Lowest() const { return belowPositive == 0 && belowNegative == 0; }
  bool Ok() const { return !made || (!Free() && Converged() && Lowest()); }
  int Below() const { return belowPositive + belowNegative; }
  bool ModesOk() const;
};

// The number of negative pivots of K + s Kg, factored in `work` without row
// exchange: with K positive definite, the number of load factors between 0
// and s. Should s fall exactly on one (a zero pivot), it is moved inward by a
// hair and tried again.
int Sturm_Count(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, int n, int bw,
                double s);

// The plain relative residual ||(K + lambda Kg) y|| / ||K y||, 2-norms over
// the n entries of y.
double Relative_Residual(const BandMatrix& K, const BandMatrix& Kg, int n, int bw, double lambda,
                         std::span<const double> y);

// The check of the eigenpair (lambda, y) of the restrained K and Kg, with the
// smallest pivot ratio the run met. `work` is free scratch of K's size.
// `modes`, when given, are the further modes the run found: they are checked
// too, and their first value, when they settled, names the smaller load
// factor, which is otherwise sought by subspace iteration only when the count
// says one exists. Faults of the factoring propagate.
ResultCheck Check_Result(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, int n, int bw,
                         double lambda, std::span<const double> y, double smallestPivotRatio,
                         const BucklingModes* modes = nullptr);

} // namespace velk
