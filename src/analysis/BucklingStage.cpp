// Stage two of the run: bending and geometric stiffness from the in-plane
// stresses, out-of-plane restraints and springs, then the eigenvalue
// iteration. The plate and stiffener stresses are recovered on the way and
// handed to the model.
#include <array>
#include <cmath>
#include <utility>

#include "analysis/CheckedArithmetic.h"
#include "analysis/EigenCalculation.h"
#include "analysis/EigenIteration.h"
#include "analysis/PlateBending.h"
#include "analysis/PlateGeometric.h"
#include "analysis/RunContext.h"
#include "analysis/StiffenerBending.h"

namespace velk {

namespace {

Nodeb& ModelNode(const Nodes& nodes, Integer analysisNode) {
  return *nodes.Item(nodes.Item(analysisNode)->UvID);
}

// The sums are held in the Single fields, as the model keeps them.
void Add(Single& field, double value) {
  field = CSng(static_cast<double>(field) + value);
}

// Plain average over the plate corners that meet at each node, then von Mises
// from the averaged components.
void Node_Averages(const Nodes& nodes) {
  for (const auto& n : nodes) {
    if (n->NCP == 0) continue;
    n->Sx = CSng(static_cast<double>(n->Sx) / n->NCP);
    n->Sy = CSng(static_cast<double>(n->Sy) / n->NCP);
    n->SXY = CSng(static_cast<double>(n->SXY) / n->NCP);
  }
  for (const auto& n : nodes) {
    if (n->NCP == 0) continue;
    const double sx = n->Sx, sy = n->Sy, sxy = n->SXY;
    n->Mises = CSng(Sqrt(sx * sx + sy * sy - sx * sy + 3.0 * sxy * sxy));
  }
}

void Plates(RunContext& run) {
  const RunArrays& a = run.a;
  Listing& l = *run.list;
  for (const auto& n : run.mesh->Nodes()) {
    n->Sx = n->Sy = n->SXY = 0;
    n->NCP = 0;
  }
  Report_Progress("Creating Stiffness Matrix for Buckling Analysis...");
  Checkpoint();
  if (run.Detail()) {
    l.Line("[Stress: Plate Element]");
    l.Begin().Text("Number").Text("Location").Text("Node").Text("SX").Text("SY").Text("SXY").End();
  }
  std::array<std::int16_t, 12> dofs{};
  for (Integer e = 1; e <= run.counts.plates; ++e) {
    Plate_Bending(run.ElasticModulus, run.PoissonRatio, a.plateThick[e], run.plateX[e],
                  run.plateY[e], run.Ke);
    Corners4 u{}, v{};
    for (int k = 1; k <= 4; ++k) {
      const Integer p = a.plateConn(k, e);
      u[k - 1] = run.F[Dof_Number(p, 1, 2)];
      v[k - 1] = run.F[Dof_Number(p, 2, 2)];
    }
    const PlateStress s = Plate_Geometric(run.plateX[e], run.plateY[e], a.plateThick[e],
                                          run.ElasticModulus, run.PoissonRatio, u, v, run.KgE);
    for (int k = 1; k <= 4; ++k) {
      const Integer p = a.plateConn(k, e);
      if (run.Detail())
        l.Begin()
            .Int(e)
            .Int(k)
            .Int(p)
            .Formatted(s.Sx[k - 1], "0.00E+00")
            .Formatted(s.Sy[k - 1], "0.00E+00")
            .Formatted(s.Sxy, "0.00E+00")
            .End();
      Nodeb& node = ModelNode(run.mesh->Nodes(), p);
      Add(node.Sx, s.Sx[k - 1]);
      Add(node.Sy, s.Sy[k - 1]);
      Add(node.SXY, s.Sxy);
      node.NCP = Int16(node.NCP + 1L);
      for (int d = 1; d <= 3; ++d)
        dofs[3 * (k - 1) + d - 1] = Dof_Number(p, d, 3);
    }
    Assemble(run, run.KgE, run.Kg, dofs);
    Assemble(run, run.Ke, run.K, dofs);
    Checkpoint();
  }
  Node_Averages(run.mesh->Nodes());
}

void Stiffeners(RunContext& run) {
  const RunArrays& a = run.a;
  Listing& l = *run.list;
  twoNodes& model = run.mesh->twoNodes();
  if (run.Detail()) {
    l.Line("[Stress: Beam Element]");
    l.Begin().Text("Number").Text("Sx").End();
  }
  std::array<std::int16_t, 6> dofs{};
  for (Integer e = 1; e <= run.counts.stiffeners; ++e) {
    Stiffener_Bending(run.stiffX[e], run.stiffY[e], a.stiffThick[e], a.stiffWidth[e],
                      run.ElasticModulus, run.PoissonRatio, run.ShearFlag, run.Ke);
    Ends2 u{}, v{};
    for (int k = 1; k <= 2; ++k) {
      const Integer p = a.stiffConn(k, e);
      u[k - 1] = run.F[Dof_Number(p, 1, 2)];
      v[k - 1] = run.F[Dof_Number(p, 2, 2)];
      for (int d = 1; d <= 3; ++d)
        dofs[3 * (k - 1) + d - 1] = Dof_Number(p, d, 3);
    }
    const double stress =
        Stiffener_Geometric(run.stiffX[e], run.stiffY[e], a.stiffThick[e], a.stiffWidth[e],
                            run.ElasticModulus, run.TorsionStiffFlag, u, v, run.KgE);
    if (run.Detail()) l.Begin().Int(e).Formatted(stress, "0.00E+00").End();
    model.Item(model.Item(e)->UvID)->Stress = CSng(stress);
    Assemble(run, run.KgE, run.Kg, dofs);
    Assemble(run, run.Ke, run.K, dofs);
  }
}

void Out_Of_Plane_Conditions(RunContext& run) {
  const DeckCounts& c = run.counts;
  DeckReader& deck = *run.deck;
  Listing& l = *run.list;
  std::span<double> rhs(run.Iterate.Data());
  if (c.outBoundary > 0) {
    l.Line("[Boundary conditions: Out-of-Plane]");
    l.Begin().Text("Node Number").Text("Z Dir.").Text("Rot. X").Text("Rot. Y").End();
    Integer generated = 0;
    while (generated < c.outBoundary) {
      const RunRecord r = Read_Run(deck, RunRepair::Nodal);
      const Integer flag[3] = {deck.Int(), deck.Int(), deck.Int()};
      if (flag[0] == 0 && flag[1] == 0 && flag[2] == 0) continue;
      l.Begin().Int(r.first).Int(flag[0]).Int(flag[1]).Int(flag[2]).End();
      For_Run(r, [&](Integer p, Integer) {
        for (int d = 1; d <= 3; ++d) {
          if (flag[d - 1] == 0) continue;
          const Integer dof = Dof_Number(p, d, 3);
          Band_Prescribe(run.K, rhs, dof, 0.0, run.bw, 2);
          Band_Prescribe(run.Kg, rhs, dof, 0.0, run.bw, 1);
        }
        generated = Int16(generated + 1L);
      });
    }
  }
  if (c.outSprings > 0) {
    l.Line("[Elastic Springs: Out-of-Plane]");
    l.Begin().Text("Node Number").Text("Z Dir.").Text("Rot. X").Text("Rot. Y").End();
    Integer generated = 0;
    while (generated < c.outSprings) {
      Checkpoint();
      const RunRecord r = Read_Run(deck, RunRepair::Nodal);
      const double k[3] = {deck.Real(), deck.Real(), deck.Real()};
      if (k[0] == 0.0 && k[1] == 0.0 && k[2] == 0.0) continue;
      l.Begin().Int(r.first).Real(k[0]).Real(k[1]).Real(k[2]).End();
      For_Run(r, [&](Integer p, Integer) {
        for (int d = 1; d <= 3; ++d) {
          double& diagonal = Spring_Diagonal(run.K, Dof_Number(p, d, 3));
          diagonal = Finite(diagonal + k[d - 1]);
        }
        generated = Int16(generated + 1L);
      });
    }
  }
}

// The further modes after the run's own eigenvalue, on K alone so that they
// are those of smallest magnitude whatever shift the iteration ended on. Work
// is free again by now. A failure here is theirs: the run has its result.
void Further_Modes(RunContext& run, int n) {
  SubspaceOptions options;
  options.modes = Modes_Requested();
  BucklingModes modes;
  try {
    modes = Subspace_Iterate(run.K, run.Kg, run.Work, n, run.bw, options);
  } catch (const Fault& f) {
    modes = BucklingModes{};
    if (f.number() == errDivByZero)
      modes.failure = "Divide by Zero";
    else if (f.number() == errOverflow)
      modes.failure = "Overflow";
    else
      modes.failure = f.what();
  }
  Store_Modes(std::move(modes));
}

// After the further modes, which it checks too, and whose first value, when
// they settled, is the smallest load factor it would otherwise seek itself.
void Check_Eigenvalue(RunContext& run, int n, double lambda) {
  StepTimer timer;
  Store_Check(Check_Result(run.K, run.Kg, run.Work, n, run.bw, lambda, run.F.Data(),
                           LastRunSmallestPivotRatio(), &LastRunModes()));
  timer.Done(RunStep::ResultCheck, n, run.bw);
}

} // namespace

void Buckling_Stage(RunContext& run) {
  const Integer points = run.counts.points;
  const Integer n = Int16(3L * points);
  // K, Kg and Iterate are zero since Size_Arrays: stage one worked in Work
  // and F, and F holds its displacements still.
  run.Ke.Clear();
  run.bw = 0;
  StepTimer assembly;

  if (run.counts.plates > 0) Plates(run);
  if (run.counts.stiffeners > 0) Stiffeners(run);

  Report_Progress("Boundary Conditions for Out-of-plane Analysis...");
  Out_Of_Plane_Conditions(run);
  assembly.Done(RunStep::StageTwoAssembly, n, run.bw);

  Report_Progress("Calculating Eigenvalue...");
  Checkpoint();
  if (analysisHooks().StageTwoMatrices) analysisHooks().StageTwoMatrices(run.K, run.Kg, n, run.bw);
  double lambda = 0.0;
  const bool found =
      Buckling_Iteration(run.K, run.Kg, run.Work, run.Iterate.Data(), run.F.Data(), run.bw,
                         points, *run.list, *run.analysis, run.mesh->Nodes(), lambda);
  if (found && Modes_Requested() > 0) Further_Modes(run, n);
  if (found && Check_Requested()) Check_Eigenvalue(run, n, lambda);
  Checkpoint();
  run.list->Line("[Output Ends]");
}

} // namespace velk
