#include "editing/Selection.h"

#include "common/Fault.h"
#include "model/Mesh.h"
#include "view/View.h"

#include <cmath>
#include <utility>

namespace velk {

namespace {

// An object's picking point: its model position rounded to whole units, ties
// to even; a coordinate beyond 16 bits is an overflow.
Integer Round16(Single v) {
  return CInt(static_cast<double>(v));
}

template <class F> void ForEachCandidate(Mesh& mesh, Long meshMode, F&& f) {
  switch (meshMode) {
  case MeshModes::Node:
    for (const auto& n : mesh.Nodes())
      f(MeshObject(n), n->xcoord, n->ycoord);
    break;
  case MeshModes::Stiffener:
    for (const auto& s : mesh.twoNodes())
      f(MeshObject(s), s->CPX, s->CPY);
    break;
  case MeshModes::Plate:
    for (const auto& p : mesh.fourNodes())
      f(MeshObject(p), p->CPX, p->CPY);
    break;
  default:
    break;
  }
}

void PickNearest(Selection& sel, Mesh& mesh, const View& view, Single X, Single& Y) {
  if (mesh.Nodes().Count() < 1 || mesh.fourNodes().Count() < 1 || mesh.twoNodes().Count() < 1)
    return;
  Y = static_cast<Single>(view.FrameViewport[3] - Y + 1);
  Single best = 10000000.0f;
  std::optional<MeshObject> nearest;
  ForEachCandidate(mesh, view.MeshMode, [&](const MeshObject& o, Single x, Single y) {
    Single sx = 0, sy = 0;
    Project_Point(view, Round16(x), Round16(y), sx, sy);
    const Single d = (sx - X) * (sx - X) + (sy - Y) * (sy - Y);
    if (!nearest) nearest = o; // nothing within reach: the first object
    if (best > d) {
      best = d;
      nearest = o;
    }
  });
  if (nearest) sel.AddObject(*nearest);
}

void PickInBox(Selection& sel, Mesh& mesh, const View& view, Single& X1, Single& Y1, Single& X2,
               Single& Y2) {
  const double h = view.FrameViewport[3];
  Y1 = static_cast<Single>(h - Y1 + 1);
  Y2 = static_cast<Single>(h - Y2 + 1);
  if (X1 > X2) std::swap(X1, X2);
  if (Y1 > Y2) std::swap(Y1, Y2);
  ForEachCandidate(mesh, view.MeshMode, [&](const MeshObject& o, Single x, Single y) {
    Single sx = 0, sy = 0;
    Project_Point(view, Round16(x), Round16(y), sx, sy);
    if (In_Box(X1, Y1, X2, Y2, sx, sy)) sel.AddObject(o);
  });
}

template <class T> std::shared_ptr<T> As(const MeshObject& o) {
  const auto* p = std::get_if<std::shared_ptr<T>>(&o);
  return p ? *p : nullptr;
}

// The fields of a node's property of one kind; the prescribed values of a
// restraint belong to no kind and stay.
void CopyNodeProperty(Nodeb& to, const Nodeb& from, Long propertyMode) {
  switch (propertyMode) {
  case PropertyModes::Boundary:
    to.SetXTDir(from.XTDir());
    to.SetYTDir(from.YTDir());
    to.SetZTDir(from.ZTDir());
    to.SetXRDir(from.XRDir());
    to.SetYRDir(from.YRDir());
    break;
  case PropertyModes::Brace:
    to.xtstiff = from.xtstiff;
    to.YTStiff = from.YTStiff;
    to.ZTStiff = from.ZTStiff;
    to.XRStiff = from.XRStiff;
    to.YRStiff = from.YRStiff;
    break;
  case PropertyModes::Load:
    to.XLoad = from.XLoad;
    to.YLoad = from.YLoad;
    break;
  default:
    return;
  }
  to.UpdatePropertyDefined();
}

// Zeroing a property is copying that of a blank node.
void ClearNodeProperty(Nodeb& n, Long propertyMode) {
  CopyNodeProperty(n, Nodeb{}, propertyMode);
}

void RenumberStiffeners(Mesh& mesh) {
  mesh.twoNodes().GeneratevID();
  mesh.Nodes().GeneratevID(mesh.twoNodes(), mesh.fourNodes());
}
void RenumberPlates(Mesh& mesh) {
  mesh.fourNodes().GeneratevID();
  mesh.Nodes().GeneratevID(mesh.twoNodes(), mesh.fourNodes());
}

} // namespace

void Project_Point(const View& view, Integer px, Integer py, Single& sx, Single& sy) {
  const Matrix4& m = view.FrameModelView;
  const Matrix4& p = view.FrameProjection;
  const double in[4] = {double(px), double(py), 0, 1};
  double eye[4], clip[4];
  for (int r = 0; r < 4; ++r)
    eye[r] = in[0] * m[r] + in[1] * m[4 + r] + in[2] * m[8 + r] + in[3] * m[12 + r];
  for (int r = 0; r < 4; ++r)
    clip[r] = eye[0] * p[r] + eye[1] * p[4 + r] + eye[2] * p[8 + r] + eye[3] * p[12 + r];
  if (clip[3] == 0) Raise(errDivByZero, "projection of a point at infinity");
  const double x = clip[0] / clip[3] * 0.5 + 0.5;
  const double y = clip[1] / clip[3] * 0.5 + 0.5;
  sx = static_cast<Single>(x * view.FrameViewport[2] + view.FrameViewport[0]);
  sy = static_cast<Single>(y * view.FrameViewport[3] + view.FrameViewport[1]);
}

const MeshObject& Selection::Item(Long index) const {
  if (index < 1 || index > SelectedCounter()) Raise(errSubscript, "subscript out of range");
  return SelectedItems_[static_cast<std::size_t>(index - 1)];
}

void Selection::SelectItemOne(Mesh& mesh, const View& view, Single& X, Single& Y) {
  ClearSelectedItem();
  PickNearest(*this, mesh, view, X, Y);
}
void Selection::AddItemOne(Mesh& mesh, const View& view, Single& X, Single& Y) {
  PickNearest(*this, mesh, view, X, Y);
}
void Selection::SelectItemBox(Mesh& mesh, const View& view, Single& X1, Single& Y1, Single& X2,
                              Single& Y2) {
  ClearSelectedItem();
  PickInBox(*this, mesh, view, X1, Y1, X2, Y2);
}
void Selection::AddItemBox(Mesh& mesh, const View& view, Single& X1, Single& Y1, Single& X2,
                           Single& Y2) {
  PickInBox(*this, mesh, view, X1, Y1, X2, Y2);
}

void Selection::Copy() {
  CopiedItem.reset();
  if (SelectedCounter() != 0) CopiedItem = Item(1);
}

void Selection::Paste(Mesh& mesh, Long propertyMode) {
  if (!CopiedItem || SelectedCounter() == 0) return;
  const MeshObject& first = Item(1);
  if (CopiedItem->index() != first.index()) return; // a different class: nothing
  if (const auto from = As<Nodeb>(*CopiedItem)) {
    for (const MeshObject& o : SelectedItems_)
      CopyNodeProperty(*As<Nodeb>(o), *from, propertyMode);
  } else if (const auto from = As<twoNode>(*CopiedItem)) {
    for (const MeshObject& o : SelectedItems_) {
      const auto to = As<twoNode>(o);
      to->width = from->width;
      to->Thickness = from->Thickness;
      to->UpdatePropertyDefined();
    }
    RenumberStiffeners(mesh);
  } else if (const auto from = As<fourNode>(*CopiedItem)) {
    for (const MeshObject& o : SelectedItems_) {
      const auto to = As<fourNode>(o);
      to->Thickness = from->Thickness;
      to->UpdatePropertyDefined();
    }
    RenumberPlates(mesh); // the largest thickness stays until a dialog or a delete
  }
}

void Selection::Delete(Mesh& mesh, Long propertyMode) {
  if (SelectedCounter() == 0) return;
  const MeshObject& first = Item(1);
  if (As<Nodeb>(first)) {
    for (const MeshObject& o : SelectedItems_)
      ClearNodeProperty(*As<Nodeb>(o), propertyMode);
  } else if (As<twoNode>(first)) {
    for (const MeshObject& o : SelectedItems_) {
      const auto s = As<twoNode>(o);
      s->width = 0;
      s->Thickness = 0;
      s->UpdatePropertyDefined();
    }
    RenumberStiffeners(mesh);
  } else {
    for (const MeshObject& o : SelectedItems_) {
      const auto p = As<fourNode>(o);
      p->Thickness = 0;
      p->UpdatePropertyDefined();
    }
    mesh.fourNodes().UpdateMaxThickness();
    RenumberPlates(mesh);
  }
  ClearSelectedItem();
}

} // namespace velk
