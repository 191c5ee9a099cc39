#pragma once
// The elastic buckling analysis of the model, in two stages on one flat mesh:
// an in-plane plane-stress solution under the applied loads, then the
// out-of-plane eigenproblem (K + lambda Kg) phi = 0 whose eigenvalue is the
// buckling load factor. Input comes only from the deck written by Write_Deck;
// results go back into fixed fields of the model.
#include <functional>
#include <string>

#include "common/TextRules.h"

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

// Runs the analysis on gTempInFile, writing the listing gTempOutFile. Tells
// what happened through progress texts, message boxes and the results; it
// never throws.
void Run_Analysis();

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
};
AnalysisHooks& analysisHooks();

} // namespace velk
