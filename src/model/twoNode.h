#pragma once
#include "model/Nodeb.h"

#include <memory>

namespace velk {

class Nodes;

// A stiffener segment between two neighbouring grid nodes; it exists in the
// structure when it has both a thickness and a width. Flanges are stiffeners.
class twoNode {
public:
  std::shared_ptr<Nodeb> Node1, Node2;
  Single CPX = 0;
  Single CPY = 0;
  Single Thickness = 0;
  Single width = 0;
  Boolean PropertyDefined = vbFalse;
  Single Stress = 0;
  Long vID = 0;
  Long ID = 0;
  Long UvID = 0;

  // What PropertyDefined should say: both dimensions above the tolerance.
  bool HasSection() const { return width > kTolerance && Thickness > kTolerance; }
  void UpdatePropertyDefined() { PropertyDefined = ToBoolean(HasSection()); }
  void GenerateCP();

  // The record is the same in both file versions.
  void ReadData(FieldReader& in, const Nodes& nodes) { ReadData1_4(in, nodes); }
  void ReadData1_4(FieldReader& in, const Nodes& nodes);
  void StoreData1_4(FieldWriter& out) const;
};

} // namespace velk
