#pragma once
// Inverse vector iteration with shifts for the lowest buckling load factor of
// (K + lambda Kg) phi = 0, on the band storage. Only one eigenpair is sought;
// the shifted matrices need not be positive definite.
#include <span>

#include "analysis/BandMatrix.h"
#include "analysis/Listing.h"
#include "model/Analysis.h"
#include "model/Nodes.h"

namespace velk {

// The first vector: rotations 0; w = 1 everywhere for "Sym." (optionInitialB
// not 0), else w = 1 on the first third of the points and -0.5 on the rest.
void Initial_Mode(std::span<double> x, int points, int optionInitialB);

// Divides v[1..n] by its entry of largest magnitude (the first one wins a
// tie), which becomes +1, and returns that entry. An all-zero vector is 0/0.
double Normalise_Vector(std::span<double> v, int n);

// The options of one iteration, as the analysis record holds them.
struct IterationOptions {
  float EigenValueEstimation = 0.0f; // first shift; 0: none on the first pass
  int MaxShift = 3;
  int MaxCycle = 8;
  float ShiftFactor = 0.8f;
  int OptionInitialB = 0;
};

// Runs the iteration on K and Kg, which it leaves as they are. Each shift
// writes K + sigma Kg into `work` (rows 1..n, band columns 1..bw; n = 3 *
// points) and factors it there; whatever else work holds is never read. x is
// the iterate, y the work vector that ends as the normalised mode; both hold
// at least n entries. Writes its listing sections. Returns false when Cancel
// was found between cycles: then nothing is listed or stored and lambda is
// untouched. On return true, lambda is the eigenvalue and y the mode, also
// when the last shift ended without converging.
bool Eigen_Iterate(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work, std::span<double> x,
                   std::span<double> y, int bw, int points, const IterationOptions& options,
                   Listing& list, double& lambda);

// Eigen_Iterate with the options of `analysis`, then the result: the message
// box, its EigenValue, the status bar panel and zcoord of every analysis node.
bool Buckling_Iteration(const BandMatrix& K, const BandMatrix& Kg, BandMatrix& work,
                        std::span<double> x, std::span<double> y, int bw, int points, Listing& list,
                        Analysis& analysis, const Nodes& nodes, double& lambda);

} // namespace velk
