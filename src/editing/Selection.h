#pragma once
// The picked objects of one class and the property clipboard.
#include "model/Nodeb.h"
#include "model/fourNode.h"
#include "model/twoNode.h"

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace velk {

using MeshObject =
    std::variant<std::shared_ptr<Nodeb>, std::shared_ptr<twoNode>, std::shared_ptr<fourNode>>;

class Selection {
public:
  void ClearSelectedItem() { SelectedItems_.clear(); }
  void ClearCopiedItem() { CopiedItem.reset(); }
  Long SelectedCounter() const { return static_cast<Long>(SelectedItems_.size()); }
  const MeshObject& Item(Long index) const;
  void AddObject(MeshObject o) { SelectedItems_.push_back(std::move(o)); }

  std::optional<MeshObject> CopiedItem;

private:
  std::vector<MeshObject> SelectedItems_;
};

} // namespace velk
