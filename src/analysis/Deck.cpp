#include "analysis/Deck.h"

#include <cmath>

#include "common/ProgramFolder.h"

namespace velk {

namespace {

std::string& FolderSetting() {
  static std::string folder;
  return folder;
}

bool Above(Single v) {
  return std::fabs(v) > kTolerance;
}

// What puts a node into each of the five nodal blocks.
bool IsLoaded(const Nodeb& n) {
  return Above(n.XLoad) || Above(n.YLoad);
}
bool IsInPlaneBoundary(const Nodeb& n) {
  return IsTrue(n.XTDir()) || IsTrue(n.YTDir());
}
bool IsInPlaneSpring(const Nodeb& n) {
  return Above(n.xtstiff) || Above(n.YTStiff);
}
bool IsOutBoundary(const Nodeb& n) {
  return IsTrue(n.ZTDir()) || IsTrue(n.XRDir()) || IsTrue(n.YRDir());
}
bool IsOutSpring(const Nodeb& n) {
  return Above(n.ZTStiff) || Above(n.XRStiff) || Above(n.YRStiff);
}

template <class Test> long CountNodes(const Nodes& nodes, Test test) {
  long c = 0;
  for (const auto& n : nodes)
    if (n->vID != 0 && test(*n)) ++c;
  return c;
}

// A run of one: the writer never generates.
void WriteRunOfOne(FieldWriter& out, long number) {
  out.Integer(number);
  out.Integer(number);
  out.Integer(1);
}

template <class Test, class Values>
void WriteNodalBlock(FieldWriter& out, const Nodes& nodes, Test test, Values values) {
  for (const auto& n : nodes) {
    if (n->vID == 0 || !test(*n)) continue;
    WriteRunOfOne(out, n->vID);
    values(*n);
    out.EndLine();
  }
}

} // namespace

void SetTemporaryFolder(const std::string& folder) {
  FolderSetting() = folder;
}

std::string TemporaryFolder() {
  return FolderSetting().empty() ? WritableFolder() : FolderSetting();
}

namespace {

// Blocks 1 to 4: title, description and run identity, the counts, E and nu.
void Write_Head_Blocks(FieldWriter& out, Mesh& mesh, const Material& material, const Analysis& a) {
  const Nodes& nodes = mesh.Nodes();
  long nPlates = 0, nStiff = 0;
  for (const auto& p : mesh.fourNodes())
    nPlates += p->vID != 0;
  for (const auto& e : mesh.twoNodes())
    nStiff += e->vID != 0;

  out.Text(a.Title);
  out.EndLine();
  out.Text(a.Discription);
  out.Text(a.RunID);
  out.EndLine();
  for (long c : {nPlates, nStiff, static_cast<long>(nodes.MaxvID), CountNodes(nodes, IsLoaded),
                 CountNodes(nodes, IsInPlaneBoundary), CountNodes(nodes, IsInPlaneSpring),
                 CountNodes(nodes, IsOutBoundary), CountNodes(nodes, IsOutSpring)})
    out.Integer(c);
  out.EndLine();
  out.Single(material.MOE);
  out.Single(material.PR);
  out.EndLine();
}

// The points, then the connectivity of plates and stiffeners, then their
// sections: the geometry the run reads back with Read_Mesh.
void Write_Mesh_Blocks(FieldWriter& out, Mesh& mesh) {
  // Points: only x and y; the plate lies in the analysis's X-Y plane.
  long running = 0;
  for (const auto& n : mesh.Nodes()) {
    if (n->vID == 0) continue;
    WriteRunOfOne(out, ++running);
    out.Single(n->xcoord);
    out.Single(n->ycoord);
    out.Single(n->xcoord);
    out.Single(n->ycoord);
    out.EndLine();
  }
  running = 0;
  for (const auto& p : mesh.fourNodes()) {
    if (p->vID == 0) continue;
    WriteRunOfOne(out, ++running);
    out.Integer(1);
    for (const auto* corner : {&p->Node1, &p->Node2, &p->Node3, &p->Node4})
      out.Integer((*corner)->vID);
    out.EndLine();
  }
  running = 0;
  for (const auto& e : mesh.twoNodes()) {
    if (e->vID == 0) continue;
    WriteRunOfOne(out, ++running);
    out.Integer(1);
    out.Integer(e->Node1->vID);
    out.Integer(e->Node2->vID);
    out.EndLine();
  }
  for (const auto& p : mesh.fourNodes()) {
    if (p->vID == 0) continue;
    WriteRunOfOne(out, p->vID);
    out.Single(p->Thickness);
    out.EndLine();
  }
  for (const auto& e : mesh.twoNodes()) {
    if (e->vID == 0) continue;
    WriteRunOfOne(out, e->vID);
    out.Single(e->Thickness);
    out.Single(e->width);
    out.EndLine();
  }
}

// The five nodal blocks: loads, in-plane restraints and springs, out-of-plane
// restraints and springs. Values under the threshold are written as they
// stand once the other value of the node has put it into the block.
void Write_Nodal_Blocks(FieldWriter& out, const Nodes& nodes) {
  WriteNodalBlock(out, nodes, IsLoaded, [&](const Nodeb& n) {
    out.Single(n.XLoad);
    out.Single(n.YLoad);
  });
  WriteNodalBlock(out, nodes, IsInPlaneBoundary, [&](const Nodeb& n) {
    out.Integer(n.XTDir());
    out.Integer(n.YTDir());
    out.Single(n.XTDirValue);
    out.Single(n.YTDirValue);
  });
  WriteNodalBlock(out, nodes, IsInPlaneSpring, [&](const Nodeb& n) {
    out.Single(n.xtstiff);
    out.Single(n.YTStiff);
  });
  WriteNodalBlock(out, nodes, IsOutBoundary, [&](const Nodeb& n) {
    out.Integer(n.ZTDir());
    out.Integer(n.XRDir());
    out.Integer(n.YRDir());
  });
  WriteNodalBlock(out, nodes, IsOutSpring, [&](const Nodeb& n) {
    out.Single(n.ZTStiff);
    out.Single(n.XRStiff);
    out.Single(n.YRStiff);
  });
}

} // namespace

Integer Write_Deck(Mesh& mesh, const Material& material, const Analysis& analysis,
                   std::string& inFile, std::string& outFile) {
  try {
    const std::string folder = TemporaryFolder();
    inFile = JoinPath(folder, kDeckFileName);
    outFile = JoinPath(folder, kListingFileName);

    OutFile file(inFile);
    FieldWriter out(file);
    mesh.Nodes().GenerateUvID();
    mesh.twoNodes().GenerateUvID();
    mesh.fourNodes().GenerateUvID();
    Write_Head_Blocks(out, mesh, material, analysis);
    Write_Mesh_Blocks(out, mesh);
    Write_Nodal_Blocks(out, mesh.Nodes());
    file.Close();
    return 1;
  } catch (const std::exception&) {
    return 0;
  }
}

DeckCounts Read_Counts(DeckReader& deck) {
  DeckCounts c;
  for (Integer* f : {&c.plates, &c.stiffeners, &c.points, &c.loads, &c.inPlaneBoundary,
                     &c.inPlaneSprings, &c.outBoundary, &c.outSprings})
    *f = deck.Int();
  return c;
}

RunRecord Read_Run(DeckReader& deck, RunRepair repair) {
  RunRecord r;
  r.first = deck.Int();
  r.last = deck.Int();
  r.step = deck.Int();
  switch (repair) {
  case RunRepair::Points:
    if (r.last <= 0) r.last = r.first;
    if (r.step <= 0) r.step = 1;
    break;
  case RunRepair::Sections:
    if (r.last == 0) r.last = r.first;
    if (r.step == 0) r.step = 1;
    break;
  case RunRepair::Nodal:
    if (r.last < r.first) r.last = r.first;
    if (r.step <= 0) r.step = 1;
    break;
  }
  return r;
}

namespace {

// Blocks 6 and 7: first, last, node step, element step, then the nodes of the
// first element; the nodes of element k along the run move by k node steps.
template <int Corners>
void ReadConnectivity(DeckReader& deck, Array2<Integer>& conn, Integer count) {
  Integer generated = 0;
  while (generated < count) {
    RunRecord run;
    run.first = deck.Int();
    run.last = deck.Int();
    Integer nodeStep = deck.Int();
    run.step = deck.Int();
    Integer node[Corners];
    for (auto& n : node)
      n = deck.Int();
    if (run.last == 0) run.last = run.first;
    if (nodeStep <= 0) nodeStep = 1;
    if (run.step <= 0) run.step = 1;
    For_Run(run, [&](Integer e, Integer k) {
      const Integer offset = Int16(static_cast<long>(nodeStep) * k);
      for (int j = 0; j < Corners; ++j)
        conn(j + 1, e) = Int16(static_cast<long>(node[j]) + offset);
      generated = Int16(static_cast<long>(generated) + 1);
    });
  }
}

} // namespace

void Read_Mesh(DeckReader& deck, RunArrays& a, Integer nPlates, Integer nStiff, Integer nPoints) {
  Integer generated = 0;
  while (generated < nPoints) {
    const RunRecord run = Read_Run(deck, RunRepair::Points);
    const double X1 = deck.Real(), Y1 = deck.Real(), X2 = deck.Real(), Y2 = deck.Real();
    double dX = 0.0, dY = 0.0;
    if (run.last != run.first) {
      const double span = Int16(static_cast<long>(run.last) - run.first);
      dX = Finite((X2 - X1) * run.step / span);
      dY = Finite((Y2 - Y1) * run.step / span);
    }
    For_Run(run, [&](Integer n, Integer k) {
      a.X[n] = Finite(dX * k + X1);
      a.Y[n] = Finite(dY * k + Y1);
      generated = Int16(static_cast<long>(generated) + 1);
    });
  }

  ReadConnectivity<4>(deck, a.plateConn, nPlates);
  ReadConnectivity<2>(deck, a.stiffConn, nStiff);

  generated = 0;
  while (generated < nPlates) {
    const RunRecord run = Read_Run(deck, RunRepair::Sections);
    const double t = deck.Real();
    For_Run(run, [&](Integer e, Integer) {
      a.plateThick[e] = t;
      generated = Int16(static_cast<long>(generated) + 1);
    });
  }
  generated = 0;
  while (generated < nStiff) {
    const RunRecord run = Read_Run(deck, RunRepair::Sections);
    const double t = deck.Real(), w = deck.Real();
    For_Run(run, [&](Integer e, Integer) {
      a.stiffThick[e] = t;
      a.stiffWidth[e] = w;
      generated = Int16(static_cast<long>(generated) + 1);
    });
  }
}

} // namespace velk
