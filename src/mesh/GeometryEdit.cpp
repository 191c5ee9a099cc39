#include "mesh/GeometryEdit.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "editing/Selection.h"
#include "model/Mesh.h"
#include "view/View.h"

#include <variant>
#include <vector>

namespace velk {

namespace {

// Cancel gives an empty text, which fails the conversion like a wrong answer.
std::string Ask(const std::string& prompt, const std::string& title = {},
                const std::string& defaultText = {}) {
  return host().InputBox(prompt, title, defaultText).value_or(std::string());
}

const std::shared_ptr<Nodeb>& SelectedNode(const Selection& sel, Long i) {
  const auto* n = std::get_if<std::shared_ptr<Nodeb>>(&sel.Item(i));
  if (!n) Raise(errTypeMismatch, "the selection holds no nodes");
  return *n;
}

void RecomputeCentres(Mesh& mesh) {
  mesh.fourNodes().GenerateCP();
  mesh.twoNodes().GenerateCP();
}

Single& Coordinate(Nodeb& n, EditAxis axis) {
  return axis == EditAxis::X ? n.xcoord : n.ycoord;
}

void ScaleNodes(Mesh& mesh, const Selection& sel, View& view, EditAxis axis, bool proportional) {
  const Long count = sel.SelectedCounter();
  if (count < 1) Raise(errSubscript, "nothing selected");
  if (view.MeshMode != MeshModes::Node) return;
  std::vector<Long> ids;
  ids.reserve(static_cast<std::size_t>(count));
  for (Long i = 1; i <= count; ++i)
    ids.push_back(CInt(SelectedNode(sel, i)->ID)); // node numbers are 16-bit here
  const Integer ref = TextToInteger(Ask("Input Ref. Node ID"));
  const Integer target = TextToInteger(Ask("Input Target Node ID"));
  Nodes& nodes = mesh.Nodes();
  if (ref > nodes.Count() || target > nodes.Count()) return;
  const Single distance =
      TextToSingle(Ask(axis == EditAxis::X ? "Move in X Direction by" : "Move in Y Direction by"));
  // Read once: moving the reference or the target below does not alter them.
  const Nodeb& r = *nodes.Item(ref);
  const Nodeb& t = *nodes.Item(target);
  const Single xr = r.xcoord, yr = r.ycoord, xt = t.xcoord, yt = t.ycoord;
  const Single same = proportional ? 1.0f : 0.0f;
  for (Long id : ids) {
    Nodeb& n = *nodes.Item(id);
    const Single fx = xr == xt ? same : (n.xcoord - xr) / (xt - xr);
    const Single fy = yr == yt ? same : (n.ycoord - yr) / (yt - yr);
    Coordinate(n, axis) += fx * fy * distance;
  }
  RecomputeCentres(mesh);
  // The Y forms show the new shape at once; the X forms leave it to the next frame.
  if (axis == EditAxis::Y) view.Refresh();
}

} // namespace

void Edit_Mesh_Move_Node(Mesh& mesh, const Selection& sel, View& view, EditAxis axis) {
  try {
    const Long mode = view.PropertyMode;
    const bool nodeMode = mode == PropertyModes::Boundary || mode == PropertyModes::Brace ||
                          mode == PropertyModes::Load;
    if (nodeMode && sel.SelectedCounter() > 0) {
      const Single by = TextToSingle(Ask(
          axis == EditAxis::X ? "Move in X Dir. by" : "Move in Y Dir. by", "Move Nodes", "0.00"));
      for (Long i = 1; i <= sel.SelectedCounter(); ++i)
        Coordinate(*SelectedNode(sel, i), axis) += by;
    }
    RecomputeCentres(mesh);
    view.Refresh();
  } catch (const std::exception&) {
    // silent end, with nothing moved
  }
}

void Edit_Mesh_Scale_Nodes(Mesh& mesh, const Selection& sel, View& view, EditAxis axis,
                           bool proportional) {
  try {
    ScaleNodes(mesh, sel, view, axis, proportional);
  } catch (const std::exception&) {
    MsgBox(std::string("Error..[") + (proportional ? "Proportional" : "Rotate") +
           (axis == EditAxis::X ? "/X]" : "/Y]"));
  }
}

} // namespace velk
