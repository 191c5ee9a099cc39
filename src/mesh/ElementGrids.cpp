// Every plate cell and every stiffener segment the node grid can hold. The
// order of creation fixes all element numbers.
#include "model/fourNodes.h"
#include "model/twoNodes.h"

#include <string>

namespace velk {

void fourNodes::Generate(const Nodes& nodes) {
  const long NX = nodes.NumberNodesX(), NY = nodes.NumberNodesY();
  mCol.Reserve(static_cast<std::size_t>(std::max(NX - 1, 0L) * std::max(NY - 1, 0L)));
  Long counter = 0;
  for (long i = 1; i <= NX - 1; ++i)
    for (long j = 1; j <= NY - 1; ++j) {
      ++counter;
      long k = NY * (i - 1) + j;
      Add(nodes.Item(k), nodes.Item(k + NY), nodes.Item(k + NY + 1), nodes.Item(k + 1), counter,
          std::to_string(counter));
    }
}

void twoNodes::Generate(const Nodes& nodes) {
  const long NX = nodes.NumberNodesX(), NY = nodes.NumberNodesY();
  Long counter = 0;
  // Longitudinal segments along each grid row, the bottom row first.
  for (long j = 1; j <= NY; ++j)
    for (long i = 1; i <= NX - 1; ++i) {
      ++counter;
      long k = NY * (i - 1) + j;
      Add(nodes.Item(k), nodes.Item(k + NY), counter, std::to_string(counter));
    }
  // Transverse segments up each grid column.
  for (long i = 1; i <= NX; ++i)
    for (long j = 1; j <= NY - 1; ++j) {
      ++counter;
      long k = NY * (i - 1) + j;
      Add(nodes.Item(k), nodes.Item(k + 1), counter, std::to_string(counter));
    }
}

} // namespace velk
