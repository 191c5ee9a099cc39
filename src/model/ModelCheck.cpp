#include "model/ModelCheck.h"

#include "model/CompactNumbering.h"
#include "model/Material.h"
#include "model/Mesh.h"

#include <array>

namespace velk {

// Objects are named by their position: the ID of their record in the project
// file, and the number the geometry commands ask for. The view and the
// property tables show vID instead, which is 0 for an element that takes no
// part and is itself what may be wrong here.
//
// UvID needs no check: it is not stored, and every deck write rebuilds it
// from vID, which this check has found dense and rising by then.

namespace {

using Problem = std::optional<ModelProblem>;

std::string Text(Single v) {
  return SingleToText(v);
}

Problem Say(std::string text) {
  return ModelProblem{std::move(text), false};
}
Problem Stale(const std::string& what) {
  return ModelProblem{"the compact numbering stored with the model does not match its elements (" +
                          what + ")",
                      true};
}

Problem CheckMaterial(const Material& m) {
  if (!(m.MOE > 0))
    return Say("the modulus of elasticity is " + Text(m.MOE) + " but must be above 0");
  if (!(m.PR >= 0 && m.PR < 0.5f))
    return Say("Poisson's ratio is " + Text(m.PR) + " but must be at least 0 and below 0.5");
  return std::nullopt;
}

// A dimension below the tolerance's negative is refused as the plate dialog
// refuses it; the small negatives it lets through take no part.
bool Negative(Single v) {
  return v < -kTolerance;
}

Problem CheckSections(const fourNodes& plates, const twoNodes& stiffeners) {
  for (long i = 1; i <= plates.Count(); ++i)
    if (const Single t = plates.Item(i)->Thickness; Negative(t))
      return Say("plate " + std::to_string(i) + " has thickness " + Text(t));
  for (long i = 1; i <= stiffeners.Count(); ++i) {
    const twoNode& s = *stiffeners.Item(i);
    if (Negative(s.Thickness))
      return Say("stiffener " + std::to_string(i) + " has thickness " + Text(s.Thickness));
    if (Negative(s.width))
      return Say("stiffener " + std::to_string(i) + " has width " + Text(s.width));
  }
  return std::nullopt;
}

// What the flags should be, by the section rule; the first element whose
// stored flag says otherwise is a problem.
template <class C, class Describe>
Problem ExpectedFlags(const C& col, const char* kind, Describe describe, std::vector<bool>& rule) {
  for (long i = 1; i <= col.Count(); ++i) {
    const auto& e = *col.Item(i);
    rule.push_back(e.HasSection());
    if (rule.back() != IsTrue(e.PropertyDefined))
      return Say(std::string(kind) + ' ' + std::to_string(i) + " is marked as " +
                 (rule.back() ? "not defined" : "defined") + " although its " + describe(e));
  }
  return std::nullopt;
}

template <class C>
Problem CompareNumbers(const C& col, const CompactNumbers& expected, const char* kind,
                       const char* kinds) {
  for (long i = 1; i <= col.Count(); ++i) {
    const Long stored = col.Item(i)->vID, want = expected.vID[static_cast<std::size_t>(i - 1)];
    if (stored != want)
      return Stale(std::string(kind) + ' ' + std::to_string(i) + " has vID " +
                   std::to_string(stored) + ", expected " + std::to_string(want));
  }
  if (col.MaxvID != expected.MaxvID)
    return Stale(std::string("the ") + kinds + "' MaxvID is " + std::to_string(col.MaxvID) +
                 ", expected " + std::to_string(expected.MaxvID));
  return std::nullopt;
}

Problem CheckNumbering(const Mesh& mesh, std::vector<bool>& plateDefined) {
  const Nodes& nodes = mesh.Nodes();
  const twoNodes& stiffeners = mesh.twoNodes();
  const fourNodes& plates = mesh.fourNodes();
  std::vector<bool> stiffenerDefined;
  if (auto p = ExpectedFlags(
          plates, "plate", [](const fourNode& e) { return "thickness is " + Text(e.Thickness); },
          plateDefined))
    return p;
  if (auto p = ExpectedFlags(
          stiffeners, "stiffener",
          [](const twoNode& e) {
            return "thickness is " + Text(e.Thickness) + " and its width " + Text(e.width);
          },
          stiffenerDefined))
    return p;
  if (auto p = CompareNumbers(plates, Number_Compact(plateDefined), "plate", "plates")) return p;
  if (auto p = CompareNumbers(stiffeners, Number_Compact(stiffenerDefined), "stiffener",
                              "stiffeners"))
    return p;
  const std::vector<bool> touched =
      Touched_Nodes(nodes, stiffeners, plates, stiffenerDefined, plateDefined);
  for (long i = 1; i <= nodes.Count(); ++i)
    if (IsTrue(nodes.Item(i)->Connected) != touched[static_cast<std::size_t>(i - 1)])
      return Stale("node " + std::to_string(i) +
                   (touched[static_cast<std::size_t>(i - 1)]
                        ? " is not marked as connected, but a defined element touches it"
                        : " is marked as connected, but no defined element touches it"));
  return CompareNumbers(nodes, Number_Compact(touched), "node", "nodes");
}

// Every turn from one edge to the next is to the left, strictly: the corners
// then make a convex quadrilateral of positive area in counter-clockwise
// order, the order of the generator. A bow-tie turns both ways, a collapsed
// plate not at all.
Problem CheckShape(const Nodes& nodes, const fourNodes& plates,
                   const std::vector<bool>& plateDefined) {
  NodePositions position(nodes);
  for (long i = 1; i <= plates.Count(); ++i) {
    if (!plateDefined[static_cast<std::size_t>(i - 1)]) continue;
    const fourNode& p = *plates.Item(i);
    const std::array<const Nodeb*, 4> c = {p.Node1.get(), p.Node2.get(), p.Node3.get(),
                                           p.Node4.get()};
    bool convex = true;
    for (std::size_t k = 0; k < 4 && convex; ++k) {
      const Nodeb& a = *c[(k + 3) % 4];
      const Nodeb& b = *c[k];
      const Nodeb& d = *c[(k + 1) % 4];
      const double turn = (double(b.xcoord) - a.xcoord) * (double(d.ycoord) - b.ycoord) -
                          (double(b.ycoord) - a.ycoord) * (double(d.xcoord) - b.xcoord);
      convex = turn > 0;
    }
    if (convex) continue;
    // The corner at fault is not always the one that turns wrong: all four
    // are shown, so that the node out of place stands out.
    std::string corners;
    for (const Nodeb* n : c)
      corners += (corners.empty() ? "" : ", ") + std::to_string(position.Of(n)) + " (" +
                 Text(n->xcoord) + ", " + Text(n->ycoord) + ")";
    return Say("plate " + std::to_string(i) + " is not convex in its corner order: nodes " +
               corners);
  }
  return std::nullopt;
}

} // namespace

std::optional<ModelProblem> Check_Model(const Mesh& mesh, const Material& material) {
  if (auto p = CheckMaterial(material)) return p;
  if (auto p = CheckSections(mesh.fourNodes(), mesh.twoNodes())) return p;
  std::vector<bool> plateDefined;
  if (auto p = CheckNumbering(mesh, plateDefined)) return p;
  return CheckShape(mesh.Nodes(), mesh.fourNodes(), plateDefined);
}

} // namespace velk
