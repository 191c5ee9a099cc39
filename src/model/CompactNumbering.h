#pragma once
// The compact numbering, worked out without touching the model: which
// elements take part, which nodes they touch, and the numbers that follow.
// GeneratevID stores what this computes; the model check compares with it.
#include "common/TextRules.h"

#include <unordered_map>
#include <vector>

namespace velk {

class Nodes;
class twoNodes;
class fourNodes;
class Nodeb;

// A node's position in its collection. Its ID is the position in every model
// the program makes, but a file's ID is taken as it stands: when it does not
// lead back to the node, the node is looked up.
class NodePositions {
public:
  explicit NodePositions(const Nodes& nodes) : nodes_(nodes) {}
  long Of(const Nodeb* n); // 0 for a node outside the collection

private:
  const Nodes& nodes_;
  std::unordered_map<const Nodeb*, long> byAddress_;
};

// One collection's numbers, entry i for position i + 1.
struct CompactNumbers {
  std::vector<Long> vID; // 0 for a position that takes no part
  Long MaxvID = 0;
};

// Numbers rise with position, without gaps, over the positions taking part.
CompactNumbers Number_Compact(const std::vector<bool>& takesPart);

// By node position: the nodes that a taking-part plate or stiffener touches.
// `stiffenerDefined` and `plateDefined` are by element position.
std::vector<bool> Touched_Nodes(const Nodes& nodes, const twoNodes& stiffeners,
                                const fourNodes& plates, const std::vector<bool>& stiffenerDefined,
                                const std::vector<bool>& plateDefined);

// The stored PropertyDefined flags, by position.
std::vector<bool> Defined_Flags(const twoNodes& stiffeners);
std::vector<bool> Defined_Flags(const fourNodes& plates);

} // namespace velk
