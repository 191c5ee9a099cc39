#include "model/CompactNumbering.h"

#include "model/fourNodes.h"
#include "model/twoNodes.h"

namespace velk {

CompactNumbers Number_Compact(const std::vector<bool>& takesPart) {
  CompactNumbers n;
  n.vID.reserve(takesPart.size());
  for (bool part : takesPart)
    n.vID.push_back(part ? ++n.MaxvID : 0);
  return n;
}

long NodePositions::Of(const Nodeb* n) {
  if (n->ID >= 1 && n->ID <= nodes_.Count() && nodes_.Item(n->ID).get() == n) return n->ID;
  if (byAddress_.empty())
    for (long i = 1; i <= nodes_.Count(); ++i)
      byAddress_.emplace(nodes_.Item(i).get(), i);
  const auto it = byAddress_.find(n);
  return it == byAddress_.end() ? 0 : it->second;
}

namespace {

template <class C> std::vector<bool> Flags(const C& col) {
  std::vector<bool> defined;
  defined.reserve(static_cast<std::size_t>(col.Count()));
  for (const auto& e : col)
    defined.push_back(IsTrue(e->PropertyDefined));
  return defined;
}

} // namespace

std::vector<bool> Touched_Nodes(const Nodes& nodes, const twoNodes& stiffeners,
                                const fourNodes& plates, const std::vector<bool>& stiffenerDefined,
                                const std::vector<bool>& plateDefined) {
  std::vector<bool> touched(static_cast<std::size_t>(nodes.Count()), false);
  NodePositions position(nodes);
  auto touch = [&](const std::shared_ptr<Nodeb>& n) {
    if (const long p = n ? position.Of(n.get()) : 0) touched[static_cast<std::size_t>(p - 1)] = true;
  };
  for (long i = 1; i <= plates.Count(); ++i)
    if (plateDefined[static_cast<std::size_t>(i - 1)]) {
      const fourNode& p = *plates.Item(i);
      for (const auto* n : {&p.Node1, &p.Node2, &p.Node3, &p.Node4})
        touch(*n);
    }
  for (long i = 1; i <= stiffeners.Count(); ++i)
    if (stiffenerDefined[static_cast<std::size_t>(i - 1)]) {
      const twoNode& s = *stiffeners.Item(i);
      touch(s.Node1);
      touch(s.Node2);
    }
  return touched;
}

std::vector<bool> Defined_Flags(const twoNodes& stiffeners) {
  return Flags(stiffeners);
}
std::vector<bool> Defined_Flags(const fourNodes& plates) {
  return Flags(plates);
}

} // namespace velk
