#pragma once
// The elastic buckling analysis of the model, in two stages on one flat mesh:
// an in-plane plane-stress solution under the applied loads, then the
// out-of-plane eigenproblem (K + lambda Kg) phi = 0 whose eigenvalue is the
// buckling load factor. The model comes in through the deck written by
// Write_Deck, the run options from the Analysis it is given; the results go
// back into fixed fields of the given mesh, by its backward numbering.
#include <chrono>
#include <functional>
#include <string>

#include "analysis/ResultCheck.h"
#include "analysis/SubspaceIteration.h"
#include "common/TextRules.h"
#include "model/Analysis.h"
#include "model/Mesh.h"

namespace velk {

// State shared by the run and the run dialog. Cancel of the run dialog sets
// AnalysisCancel to -1 during a yield; the run looks at it at its checkpoints.
inline Integer AnalysisCancel = 0;
inline Integer DimensionExceeded = 0;

// How the last run ended, for callers that need more than the texts shown
// (the batch tool's exit status).
enum class RunOutcome {
  NotRun,
  Completed,   // an eigenvalue was found and stored
  Cancelled,   // stopped at a checkpoint by Cancel
  Failed,      // arithmetic, deck or file failure: a message was shown
  BandOverflow // the band storage was too narrow: the listing says where
};
RunOutcome LastRunOutcome();

// The smallest ratio of a pivot to its row's diagonal (Band_Factor_Measured)
// over every factoring of the last run, stage one's and each shift's; infinity
// when none was made. The run itself never looks at it: the program has
// always gone on through tiny pivots, and the batch tool alone turns one into
// a refusal.
double LastRunSmallestPivotRatio();

// A pivot below this fraction of its diagonal is round-off: the row is a
// combination of the rows before it, so the structure can move without
// deforming (a missing support or a mechanism). In double precision a singular
// stiffness leaves pivots of about 1e-13 of their diagonal or less, while the
// supported examples keep 0.02 to 0.16 of it: the bound stands well clear of
// both. Each pivot is measured against its own row rather than the largest
// diagonal, since a stiff brace spring raises only its own row's diagonal.
inline constexpr double kTinyPivotRatio = 1e-10;

// Further modes for the batch tool: when asked for, a run that found its
// eigenvalue goes on to the `count` eigenvalues of smallest magnitude and
// their shapes, by subspace iteration. It writes nothing for them, to the
// listing or the model, and shows nothing: a run with none asked for (0, as
// the desktop program always has it) is the run as it ever was.
void Request_Modes(int count);
// What the last run found of them: empty when none were asked for or the run
// ended before them; `failure` says why when they were asked for and none
// came.
const BucklingModes& LastRunModes();
// The out-of-plane part of each of those shapes by node position (entry p - 1
// for the node at position p), as the run stores its own mode in zcoord;
// nodes outside the structure get 0.
std::vector<std::vector<Single>> Node_Mode_Shapes(const BucklingModes& modes, const Nodes& nodes);

// The check of the run's eigenvalue: on unless switched off (the batch tool's
// --no-check). It runs after the result is stored and shown and changes
// nothing of it; the front ends word what it found.
void Request_Check(bool on);
// What the check found for the last run; `made` false when it was off or the
// run ended before it.
const ResultCheck& LastRunCheck();


// The heavy steps of a run, as the Timing hook names them.
enum class RunStep {
  StageOneAssembly, // element matrices into K, loads, restraints and springs
  StageOneFactor,
  StageOneSolve,
  StageTwoAssembly, // bending and geometric element matrices, restraints, springs
  ShiftFactor,      // the factoring of one shift of the iteration
  ShiftCycles,      // the cycles of that shift: product, solve, normalising
  ResultCheck       // the check of the eigenvalue: residual, Sturm counts
};

// Runs the analysis on the deck `inFile`, writing the listing `outFile`, and
// puts the results into the nodes and stiffeners of `mesh` and the
// eigenvalue into `analysis`, whose run options it follows. Tells what
// happened through progress texts, message boxes and the results; it never
// throws.
void Run_Analysis(Mesh& mesh, Analysis& analysis, const std::string& inFile,
                  const std::string& outFile);

// A progress text: to the run dialog's status line (the sink it installs) and
// to the host.
void Report_Progress(const std::string& text);

// Hooks the shell and the run dialog install; empty by default.
struct AnalysisHooks {
  // The run dialog's status line; frmEigen installs it for the length of a run.
  std::function<void(const std::string&)> ProgressSink;
  // The panel "eigenvalue" of the main window's status bar.
  std::function<void(const std::string&)> EigenvaluePanel;
  // Each cycle of the eigenvalue iteration: shift and cycle numbers (from 1),
  // the shift in use, the new estimate and the change of the iterate. For
  // tests and for a shell that wants to show the convergence.
  std::function<void(int shift, int cycle, double sigma, double lambda, double change)> Cycle;
  // Wall time of each heavy step, with the equations and the bandwidth it
  // worked on; for the benchmark. The clock is read only while it is set.
  std::function<void(RunStep step, int n, int bw, double seconds)> Timing;
  // The stage-one matrix as it goes into the factoring, restraints and springs
  // applied; for the benchmark, which factors a copy of it by other means.
  std::function<void(const BandMatrix& K, int n, int bw)> StageOneMatrix;
  // Stage two's K and Kg as they go into the iteration, restraints and springs
  // applied; for tests that solve the eigenproblem by other means.
  std::function<void(const BandMatrix& K, const BandMatrix& Kg, int n, int bw)> StageTwoMatrices;
};
AnalysisHooks& analysisHooks();

// Measures one step for the Timing hook: started on construction, reported by
// Done. Costs nothing but a test when no hook is installed.
class StepTimer {
public:
  StepTimer() : on_(static_cast<bool>(analysisHooks().Timing)) {
    if (on_) start_ = std::chrono::steady_clock::now();
  }
  void Done(RunStep step, int n, int bw) {
    if (!on_) return;
    const std::chrono::duration<double> s = std::chrono::steady_clock::now() - start_;
    analysisHooks().Timing(step, n, bw, s.count());
  }

private:
  bool on_;
  std::chrono::steady_clock::time_point start_;
};

} // namespace velk
