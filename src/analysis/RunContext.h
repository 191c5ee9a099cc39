#pragma once
// What one run of the analysis holds from its start to its end: the open deck
// and listing, the options copied at the start, the arrays sized from the
// model, and the band matrices of the two stages. Internal to the
// analysis; the public face is EigenCalculation.h.
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "analysis/BandMatrix.h"
#include "analysis/Deck.h"
#include "analysis/ElementMatrix.h"
#include "analysis/Listing.h"
#include "analysis/PlateMembrane.h"
#include "analysis/RunArrays.h"
#include "analysis/StiffenerMembrane.h"
#include "analysis/SubspaceIteration.h"
#include "model/Analysis.h"
#include "model/Mesh.h"

namespace velk {

struct RunContext {
  Mesh* mesh = nullptr;         // the model the results go back to
  Analysis* analysis = nullptr; // options in, eigenvalue out
  std::optional<DeckReader> deck;
  std::unique_ptr<Listing> list;
  DeckCounts counts;

  double ElasticModulus = 0.0;
  double PoissonRatio = 0.0;
  Integer PrintLevel = 1;
  Integer TorsionStiffFlag = 0;
  Integer ShearFlag = 0;

  Integer R = 0; // rows: 3 x the analysis points of the model
  Integer B = 0; // band columns: 3 x (nodes per grid column + 2)
  RunArrays a;
  Array1<Corners4> plateX, plateY; // corner coordinates of each plate
  Array1<Ends2> stiffX, stiffY;    // end coordinates of each stiffener
  Array1<double> F, Iterate;
  // Stage two's stiffness and geometric stiffness. Zero from their allocation,
  // and first written by stage two's assembly, so they are never cleared.
  BandMatrix K, Kg;
  // The matrix that is factored: stage one's stiffness, assembled, restrained
  // and factored in place; then for each shift of the iteration K + sigma Kg,
  // written anew over the equations and the band in use and factored. K stays
  // as assembled, so no copy of it is kept to come back to between shifts.
  BandMatrix Work;
  ElementMatrix Ke, KgE;
  int bw = 0;

  // The sections marked as detail, written while PrintLevel is below 2.
  bool Detail() const { return PrintLevel < 2; }
};

// A checkpoint found the cancel flag: the run goes to its end step.
struct RunCancelled {};
// The band storage overflowed: lines and message are out, the run ends at once.
struct RunBandOverflow {};

// The diagonal entry of freedom `dof`, where a spring adds its stiffness. The
// node of a spring record is any number the deck holds: one outside the rows
// is a subscript fault, never a write beside the matrix.
inline double& Spring_Diagonal(BandMatrix& M, int dof) {
  if (dof < 1 || dof > M.Rows()) Raise(errSubscript);
  return M(dof, 1);
}

// Band_Factor, with its pivot ratio kept for LastRunSmallestPivotRatio.
void Factor_Measured(BandMatrix& M, int n, int bw);

// Yields to the host; on cancel reports "Ready..." and throws RunCancelled.
void Checkpoint();

// Adds an element matrix at the given freedoms. On a band overflow it writes
// the three lines to the listing, shows the message, sets DimensionExceeded
// and throws RunBandOverflow.
void Assemble(RunContext& run, const ElementMatrix& Ke, BandMatrix& M,
              std::span<const std::int16_t> dofs);

// The count of further modes asked for by Request_Modes, and where the run
// leaves what it found of them for LastRunModes.
int Modes_Requested();
void Store_Modes(BucklingModes modes);
// Whether the eigenvalue is to be checked, and where the check is kept for
// LastRunCheck.
bool Check_Requested();
void Store_Check(const ResultCheck& check);

// Stage two, up to and including the eigenvalue iteration and the end mark of
// the listing. Returns normally also when the iteration was cancelled.
void Buckling_Stage(RunContext& run);

} // namespace velk
