#include "editing/Selection.h"

#include "common/Fault.h"

namespace velk {

const MeshObject& Selection::Item(Long index) const {
  if (index < 1 || index > SelectedCounter()) Raise(errSubscript, "subscript out of range");
  return SelectedItems_[static_cast<std::size_t>(index - 1)];
}

} // namespace velk
