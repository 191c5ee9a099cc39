#pragma once
// Several buckling modes at once: the eigenvalues of (K + lambda Kg) phi = 0 of
// smallest magnitude, each with its sign, and their shapes, by subspace
// iteration on the factored K with a Rayleigh-Ritz step on the subspace each
// cycle. K, restrained and with its springs, is positive definite; Kg is not,
// so the problem is posed as -Kg phi = mu K phi with mu = 1 / lambda, whose
// largest |mu| are the wanted modes. All matrices stay in band storage.
#include <string>
#include <vector>

#include "analysis/BandMatrix.h"

namespace velk {

struct BucklingModes {
  // Smallest magnitude first.
  std::vector<double> eigenvalues;
  // One per eigenvalue, n entries (freedom k at k - 1), scaled as the run's
  // mode: the first entry of largest magnitude is +1.
  std::vector<std::vector<double>> shapes;
  int iterations = 0;     // cycles made
  bool converged = false; // every eigenvalue sought settled within the tolerance
  std::string failure;    // why none were found, for the caller to show; else empty
};

struct SubspaceOptions {
  int modes = 1;
  // A cycle ends the iteration when no eigenvalue sought moved by more than
  // this fraction of itself.
  double tolerance = 1e-10;
  int maxIterations = 200;
};

// The vectors carried: a few more than the modes sought, which speeds the
// convergence of the last of them.
int Subspace_Size(int modes);

// Copies K (rows 1..n, band 1..bw) into `work`, factors it there and iterates.
// K and Kg are left as they are. A zero pivot (K singular), an overflow, or
// fewer freedoms touched by Kg than modes sought raises a fault. Running out
// of cycles is not a failure: the result says it did not converge.
BucklingModes Subspace_Iterate(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, int n,
                               int bw, const SubspaceOptions& options);

} // namespace velk
