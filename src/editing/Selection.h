#pragma once
// The picked objects of one class and the property clipboard. A click or a
// rubber box on the view becomes a set of nodes, stiffeners or plates, as the
// view's mesh mode says; the projection is that of the last frame on the screen.
#include "model/Nodeb.h"
#include "model/fourNode.h"
#include "model/twoNode.h"

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace velk {

class Mesh;
class View;

using MeshObject =
    std::variant<std::shared_ptr<Nodeb>, std::shared_ptr<twoNode>, std::shared_ptr<fourNode>>;

class Selection {
public:
  // Keeps the clipboard.
  void ClearSelectedItem() { SelectedItems_.clear(); }
  void ClearCopiedItem() { CopiedItem.reset(); }
  Long SelectedCounter() const { return static_cast<Long>(SelectedItems_.size()); }
  const MeshObject& Item(Long index) const;
  void AddObject(MeshObject o) { SelectedItems_.push_back(std::move(o)); }

  // The clipboard holds a live object: a paste reads its fields as they are
  // then. A node's property is the kind the edit mode names.
  void Copy();
  void Paste(Mesh& mesh, Long propertyMode);
  void Delete(Mesh& mesh, Long propertyMode);

  // Window coordinates as the mouse gives them (y down). The Y arguments come
  // back counted from the bottom, and a box's corners in order.
  void SelectItemOne(Mesh& mesh, const View& view, Single& X, Single& Y);
  void AddItemOne(Mesh& mesh, const View& view, Single& X, Single& Y);
  void SelectItemBox(Mesh& mesh, const View& view, Single& X1, Single& Y1, Single& X2, Single& Y2);
  void AddItemBox(Mesh& mesh, const View& view, Single& X1, Single& Y1, Single& X2, Single& Y2);

  std::optional<MeshObject> CopiedItem;

private:
  std::vector<MeshObject> SelectedItems_;
};

// The window point of a model point on the last frame, in the order of
// operations gluProject uses, so that ties fall as GL would make them.
void Project_Point(const View& view, Integer px, Integer py, Single& sx, Single& sy);
// Strictly inside: a point on an edge is out.
inline bool In_Box(Single X1, Single Y1, Single X2, Single Y2, Single sx, Single sy) {
  return X1 < sx && sx < X2 && Y1 < sy && sy < Y2;
}

} // namespace velk
