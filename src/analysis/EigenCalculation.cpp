#include "analysis/EigenCalculation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include "analysis/CheckedArithmetic.h"
#include "analysis/RunContext.h"
#include "analysis/StiffenerMembrane.h"
#include "common/Host.h"
#include "common/MemoryBudget.h"

namespace velk {

namespace {

RunOutcome gLastOutcome = RunOutcome::NotRun;
double gSmallestPivotRatio = std::numeric_limits<double>::infinity();
int gModesRequested = 0;
BucklingModes gLastModes;
bool gCheckRequested = true;
ResultCheck gLastCheck;

// The run's memory is its three band matrices, R x B each; everything else is
// a few vectors of R. Asked before they are allocated: the band is filled in
// whole by the factoring, so a run that cannot hold them would only page the
// machine to a halt or stop half way.
struct RunTooLarge {
  std::uint64_t needed = 0, available = 0;
};

void Refuse_Beyond_Memory(Integer R, Integer B) {
  const std::uint64_t band = static_cast<std::uint64_t>(R) * static_cast<std::uint64_t>(B) * 8;
  const std::uint64_t needed = 3 * band + 16 * static_cast<std::uint64_t>(R) * 8;
  const auto available = MemoryAvailable();
  if (available && needed > *available) throw RunTooLarge{needed, *available};
}

// Start of a run: arrays from the model's compact counts, options copied.
void Size_Arrays(RunContext& run) {
  Mesh& mesh = *run.mesh;
  const Integer P = Int16(mesh.Nodes().MaxvID);
  const Integer S = Int16(mesh.twoNodes().MaxvID);
  const Integer Q = Int16(mesh.fourNodes().MaxvID);
  run.R = Int16(3L * P);
  run.B = Int16(3L * (mesh.Nodes().NumberNodesY() + 2L));
  // No analysis node: nothing to size the arrays from.
  if (run.R < 1 || run.B < 1) Raise(errSubscript, "no analysis node");
  Refuse_Beyond_Memory(run.R, run.B);
  run.a.Size(run.R, Q, S);
  const long q = Q > 0 ? Q : 1, s = S > 0 ? S : 1;
  run.plateX.Resize(q);
  run.plateY.Resize(q);
  run.stiffX.Resize(s);
  run.stiffY.Resize(s);
  // Everything here starts zero, as the stages want it, and is allocated once
  // for the run: no array is cleared or allocated again.
  run.F.Resize(run.R);
  run.Iterate.Resize(run.R);
  run.Work = BandMatrix(run.R, run.B);
  run.K = BandMatrix(run.R, run.B);
  run.Kg = BandMatrix(run.R, run.B);
}

void Write_Head(RunContext& run) {
  Listing& l = *run.list;
  DeckReader& deck = *run.deck;
  const std::string title = deck.Text();
  const std::string discription = deck.Text();
  const std::string runId = deck.Text();
  l.Line("[Output Starts]");
  l.Line("Title:" + title);
  l.Line("Problem Discription:" + discription); // the listing's own spelling: keep it
  l.Line("Run ID:" + runId);
  run.counts = Read_Counts(deck);
  const DeckCounts& c = run.counts;
  const std::pair<const char*, Integer> lines[] = {
      {"Num. of Plate Elements", c.plates},
      {"Num. of Stiffener Elements", c.stiffeners},
      {"Num. of Points", c.points},
      {"Num. of Loaded Points  ", c.loads},
      {"Num. of In-plane Boundary Points", c.inPlaneBoundary},
      {"Num. of Elastic Springs(In-Plane)", c.inPlaneSprings},
      {"Num. of Out-of-plane Boundary Points", c.outBoundary},
      {"Num. of Elastic Springs(Out-of-plane)", c.outSprings}};
  for (const auto& [text, count] : lines)
    l.Begin().Text(text).Tab(50).ThenInt(count).End();
  if (run.TorsionStiffFlag != 0) l.Line("Option: Torsional Geometric Stiff Option is Used");
  if (run.ShearFlag != 0) l.Line("Option: Approximate Shear Distortion Option is Used");
}

void Write_Mesh_Tables(RunContext& run) {
  Listing& l = *run.list;
  RunArrays& a = run.a;
  const DeckCounts& c = run.counts;
  if (run.Detail()) {
    l.Line("[Nodal Info]");
    l.Begin().Text("Node").Text("X-Coord.").Text("Y-Coord.").End();
    for (Integer n = 1; n <= c.points; ++n)
      l.Begin().Int(n).Real(a.X[n]).Real(a.Y[n]).End();
  }
  if (c.plates > 0 && run.Detail()) {
    l.Line("[Plate Element Info]");
    l.Begin()
        .Text("Number")
        .Text("Node1")
        .Text("Node2")
        .Text(" Node3")
        .Text("Node4")
        .Text("Thickness")
        .End();
  }
  for (Integer e = 1; e <= c.plates; ++e) {
    if (run.Detail()) {
      auto row = l.Begin();
      row.Int(e);
      for (int k = 1; k <= 4; ++k)
        row.Int(a.plateConn(k, e));
      row.Real(a.plateThick[e]).End();
    }
    for (int k = 1; k <= 4; ++k) {
      run.plateX[e][k - 1] = a.X[a.plateConn(k, e)];
      run.plateY[e][k - 1] = a.Y[a.plateConn(k, e)];
    }
  }
  Checkpoint();
  if (c.stiffeners > 0 && run.Detail()) {
    l.Line("[Beam Element Info]");
    l.Begin().Text("Number").Text("Node1").Text("Node2").Text("Thickness").Text("Width").End();
  }
  for (Integer e = 1; e <= c.stiffeners; ++e) {
    if (run.Detail())
      l.Begin()
          .Int(e)
          .Int(a.stiffConn(1, e))
          .Int(a.stiffConn(2, e))
          .Real(a.stiffThick[e])
          .Real(a.stiffWidth[e])
          .End();
    for (int k = 1; k <= 2; ++k) {
      run.stiffX[e][k - 1] = a.X[a.stiffConn(k, e)];
      run.stiffY[e][k - 1] = a.Y[a.stiffConn(k, e)];
    }
  }
}

// The membrane stiffness of the plates and stiffeners, assembled into Work
// with two freedoms a point.
void Assemble_Membrane_Stiffness(RunContext& run) {
  const DeckCounts& c = run.counts;
  const RunArrays& a = run.a;
  std::array<std::int16_t, 8> dofs{};
  for (Integer e = 1; e <= c.plates; ++e) {
    Plate_Membrane(run.plateX[e], run.plateY[e], a.plateThick[e], run.ElasticModulus,
                   run.PoissonRatio, run.Ke);
    for (int k = 1; k <= 4; ++k)
      for (int d = 1; d <= 2; ++d)
        dofs[2 * (k - 1) + d - 1] = Dof_Number(a.plateConn(k, e), d, 2);
    Assemble(run, run.Ke, run.Work, dofs);
    Checkpoint();
  }
  for (Integer e = 1; e <= c.stiffeners; ++e) {
    Stiffener_Membrane(run.stiffX[e], run.stiffY[e], a.stiffThick[e], a.stiffWidth[e],
                       run.ElasticModulus, run.Ke);
    for (int k = 1; k <= 2; ++k)
      for (int d = 1; d <= 2; ++d)
        dofs[2 * (k - 1) + d - 1] = Dof_Number(a.stiffConn(k, e), d, 2);
    Assemble(run, run.Ke, run.Work, std::span<const std::int16_t>(dofs.data(), 4));
    Checkpoint();
  }
}

// The load block: listed as read, and added into F. Loads add up; the count
// runs over the points loaded, not the records.
void Apply_Loads(RunContext& run) {
  if (run.counts.loads <= 0) return;
  DeckReader& deck = *run.deck;
  Listing& l = *run.list;
  l.Line("[Loads]");
  l.Begin().Text("Node Number").Text("X Dir.").Text("Y Dir.").End();
  Integer loaded = 0;
  while (loaded < run.counts.loads) {
    Checkpoint();
    const RunRecord r = Read_Run(deck, RunRepair::Nodal);
    const double fx = deck.Real(), fy = deck.Real();
    l.Begin().Int(r.first).Real(fx).Real(fy).End();
    if (fx == 0.0 && fy == 0.0) continue;
    For_Run(r, [&](Integer p, Integer) {
      const Integer u = Dof_Number(p, 1, 2), v = Dof_Number(p, 2, 2);
      run.F[u] = Finite(run.F[u] + fx);
      run.F[v] = Finite(run.F[v] + fy);
      loaded = Int16(loaded + 1L);
    });
  }
}

// The in-plane boundary block: each flagged direction prescribed to its value
// on Work and F.
void Apply_In_Plane_Restraints(RunContext& run) {
  if (run.counts.inPlaneBoundary <= 0) return;
  DeckReader& deck = *run.deck;
  Listing& l = *run.list;
  std::span<double> F(run.F.Data());
  l.Line("[Boundary Conditions: In-plane]");
  l.Begin().Text("Node Number").Text("X Dir.").Text("Y Dir.").Text("X Value").Text("Y Value").End();
  Integer records = 0;
  while (records < run.counts.inPlaneBoundary) {
    Checkpoint();
    const RunRecord r = Read_Run(deck, RunRepair::Nodal);
    const Integer flag[2] = {deck.Int(), deck.Int()};
    const double value[2] = {deck.Real(), deck.Real()};
    l.Begin().Int(r.first).Int(flag[0]).Int(flag[1]).Real(value[0]).Real(value[1]).End();
    if (flag[0] == 0 && flag[1] == 0) continue;
    For_Run(r, [&](Integer p, Integer) {
      for (int d = 1; d <= 2; ++d)
        if (flag[d - 1] != 0)
          Band_Prescribe(run.Work, F, Dof_Number(p, d, 2), value[d - 1], run.bw, 2);
    });
    records = Int16(records + 1L);
  }
}

// The in-plane spring block: added to the diagonal after the restraints, so a
// spring on a prescribed freedom adds to its 1.
void Add_In_Plane_Springs(RunContext& run) {
  if (run.counts.inPlaneSprings <= 0) return;
  DeckReader& deck = *run.deck;
  Listing& l = *run.list;
  l.Line("[Elastic Springs: In-Plane]");
  l.Begin().Text("Node Number").Text("X Value").Text("Y Value").End();
  Integer generated = 0;
  while (generated < run.counts.inPlaneSprings) {
    Checkpoint();
    const RunRecord r = Read_Run(deck, RunRepair::Nodal);
    const double kx = deck.Real(), ky = deck.Real();
    l.Begin().Int(r.first).Real(kx).Real(ky).End();
    if (kx == 0.0 && ky == 0.0) continue;
    For_Run(r, [&](Integer p, Integer) {
      const Integer u = Dof_Number(p, 1, 2), v = Dof_Number(p, 2, 2);
      double& ku = Spring_Diagonal(run.Work, u);
      double& kv = Spring_Diagonal(run.Work, v);
      ku = Finite(ku + kx);
      kv = Finite(kv + ky);
      generated = Int16(generated + 1L);
    });
  }
}

// Factors Work and solves for the n in-plane freedoms; the displacements
// replace the loads in F.
void Solve_In_Plane(RunContext& run, Integer n) {
  std::span<double> F(run.F.Data());
  Report_Progress("Solving...");
  Checkpoint();
  if (analysisHooks().StageOneMatrix) analysisHooks().StageOneMatrix(run.Work, n, run.bw);
  StepTimer factor;
  Factor_Measured(run.Work, n, run.bw);
  factor.Done(RunStep::StageOneFactor, n, run.bw);
  StepTimer solve;
  Band_Solve(run.Work, F, F, n, run.bw);
  solve.Done(RunStep::StageOneSolve, n, run.bw);
  Checkpoint();
}

// The displacements into the model, by the backward numbering, and into the
// listing.
void Store_In_Plane_Displacements(RunContext& run) {
  Listing& l = *run.list;
  Nodes& nodes = run.mesh->Nodes();
  if (run.Detail()) {
    l.Line("[Displacement: In-Plane]");
    l.Begin().Text("Node Number").Text("X Disp.").Text("Y Disp.").End();
  }
  for (Integer p = 1; p <= run.counts.points; ++p) {
    const double u = run.F[2 * p - 1], v = run.F[2 * p];
    Nodeb& node = *nodes.Item(nodes.Item(p)->UvID);
    node.InPDispX = CSng(u);
    node.InPDispY = CSng(v);
    if (run.Detail()) l.Begin().Int(p).Formatted(u, "0.00E+00").Formatted(v, "0.00E+00").End();
  }
}

// Stage one: the plane-stress solution under the applied loads, two freedoms
// a point, in Work and F (both zero since Size_Arrays).
void Stage_One(RunContext& run) {
  const Integer n = Int16(2L * run.counts.points);
  run.bw = 0;
  StepTimer assembly;
  Report_Progress("Creating Stiffness Matrix...");
  Checkpoint();
  Assemble_Membrane_Stiffness(run);
  Report_Progress("Applying Boundary Conditions...");
  Apply_Loads(run);
  Apply_In_Plane_Restraints(run);
  Add_In_Plane_Springs(run);
  assembly.Done(RunStep::StageOneAssembly, n, run.bw);
  Solve_In_Plane(run, n);
  Store_In_Plane_Displacements(run);
}

void Close_Files(RunContext& run, bool quietly) {
  run.deck.reset();
  if (!run.list) return;
  if (quietly) {
    try {
      run.list->Close();
    } catch (const std::exception&) {
    }
  } else {
    run.list->Close();
  }
  run.list.reset();
}

void Fail(const char* message, const char* status) {
  MsgBox(message);
  Report_Progress(status);
}

} // namespace

AnalysisHooks& analysisHooks() {
  static AnalysisHooks h;
  return h;
}

RunOutcome LastRunOutcome() {
  return gLastOutcome;
}

double LastRunSmallestPivotRatio() {
  return gSmallestPivotRatio;
}

void Factor_Measured(BandMatrix& M, int n, int bw) {
  double ratio = std::numeric_limits<double>::infinity();
  try {
    Band_Factor_Measured(M, n, bw, ratio);
  } catch (...) {
    gSmallestPivotRatio = std::min(gSmallestPivotRatio, ratio);
    throw;
  }
  gSmallestPivotRatio = std::min(gSmallestPivotRatio, ratio);
}

void Request_Modes(int count) {
  gModesRequested = count;
}

int Modes_Requested() {
  return gModesRequested;
}

const BucklingModes& LastRunModes() {
  return gLastModes;
}

std::vector<std::vector<Single>> Node_Mode_Shapes(const BucklingModes& modes, const Nodes& nodes) {
  std::vector<std::vector<Single>> byNode;
  for (const std::vector<double>& shape : modes.shapes) {
    std::vector<Single> w(static_cast<std::size_t>(nodes.Count()), 0.0f);
    // Analysis node i holds freedoms 3i - 2 (w) to 3i; UvID leads back to the
    // model's node.
    const std::size_t points = shape.size() / 3;
    for (std::size_t i = 1; i <= points; ++i)
      w[static_cast<std::size_t>(nodes.Item(static_cast<long>(i))->UvID) - 1] =
          CSng(shape[3 * i - 3]);
    byNode.push_back(std::move(w));
  }
  return byNode;
}

void Store_Modes(BucklingModes modes) {
  gLastModes = std::move(modes);
}

void Request_Check(bool on) {
  gCheckRequested = on;
}

bool Check_Requested() {
  return gCheckRequested;
}

const ResultCheck& LastRunCheck() {
  return gLastCheck;
}

void Store_Check(const ResultCheck& check) {
  gLastCheck = check;
}

void Report_Progress(const std::string& text) {
  if (analysisHooks().ProgressSink) analysisHooks().ProgressSink(text);
  host().Progress(text);
}

void Checkpoint() {
  host().Yield();
  if (AnalysisCancel == -1) {
    Report_Progress("Ready...");
    throw RunCancelled{};
  }
}

void Assemble(RunContext& run, const ElementMatrix& Ke, BandMatrix& M,
              std::span<const std::int16_t> dofs) {
  const auto overflow = Band_Assemble(Ke, M, run.bw, dofs);
  if (!overflow) return;
  Listing& l = *run.list;
  l.Line("Dimension of Stiffness Matrix EXCEEDED");
  l.Begin().Text("Degree of Freedom Number  = ").ThenInt(overflow->dof).End();
  l.Begin().Text("Band Width                = ").ThenInt(overflow->band).End();
  // The message is spelt as the program has always shown it: keep it.
  MsgBox("Dimesnison of Stiffness Matrix Exceeded!:");
  DimensionExceeded = -1;
  throw RunBandOverflow{};
}

void Run_Analysis(Mesh& mesh, Analysis& analysis, const std::string& inFile,
                  const std::string& outFile) {
  gLastOutcome = RunOutcome::Failed;
  gSmallestPivotRatio = std::numeric_limits<double>::infinity();
  gLastModes = BucklingModes{};
  gLastCheck = ResultCheck{};
  auto run = std::make_unique<RunContext>();
  // Cancel reaches into a long factoring or solve too, not only between steps.
  struct PauseForRun {
    BandPause before = Band_SetPause(Checkpoint);
    ~PauseForRun() { Band_SetPause(before); }
  } pause;
  run->mesh = &mesh;
  run->analysis = &analysis;
  try {
    Size_Arrays(*run);
    AnalysisCancel = 0;
    DimensionExceeded = 0;
    const Analysis& options = analysis;
    run->PrintLevel = options.OutputOption;
    run->TorsionStiffFlag = options.IGSTF;
    run->ShearFlag = options.ISHEAR;

    Report_Progress("Creating Input File...");
    Checkpoint();
    run->deck.emplace(DeckReader::Open(inFile));
    run->list = std::make_unique<Listing>(outFile);
    Write_Head(*run);
    run->ElasticModulus = run->deck->Real();
    run->PoissonRatio = run->deck->Real();
    run->list->Begin().Text("Elastic Modulus").ThenReal(run->ElasticModulus).End();
    run->list->Begin().Text("Poisson Ratio").ThenReal(run->PoissonRatio).End();
    Checkpoint();
    Read_Mesh(*run->deck, run->a, run->counts.plates, run->counts.stiffeners, run->counts.points);
    Checkpoint();
    Write_Mesh_Tables(*run);

    Stage_One(*run);
    Buckling_Stage(*run);

    Close_Files(*run, false);
    gLastOutcome = AnalysisCancel == -1 ? RunOutcome::Cancelled : RunOutcome::Completed;
    Report_Progress(AnalysisCancel == -1 ? "Process Interrupted..."
                                         : "Buckling Analysis Completes...");
    return;
  } catch (const RunCancelled&) {
    Close_Files(*run, true);
    gLastOutcome = RunOutcome::Cancelled;
    Report_Progress("Process Interrupted...");
    return;
  } catch (const RunBandOverflow&) {
    Close_Files(*run, true);
    gLastOutcome = RunOutcome::BandOverflow;
    return;
  } catch (const RunTooLarge& large) {
    Close_Files(*run, true);
    const std::string text = "This mesh needs " + ByteSizeText(large.needed) +
                             " for its band matrices, more than the " +
                             ByteSizeText(large.available) +
                             " this computer can give: the band grows with the number of "
                             "element rows; use fewer rows.";
    return Fail(text.c_str(), "Error: Not enough memory!");
  } catch (const std::bad_alloc&) {
    Close_Files(*run, true);
    return Fail("Error: Not enough memory for this run!", "Error: Not enough memory!");
  } catch (const Fault& f) {
    Close_Files(*run, true);
    if (f.number() == errDivByZero) return Fail("Error: Divide by Zero!", "Error: Divide by Zero!");
    if (f.number() == errOverflow) return Fail("Error: Overflow!", "Error: Overflow!");
  } catch (const std::exception&) {
    Close_Files(*run, true);
  }
  Fail("Error!", "Error!...");
}

} // namespace velk
