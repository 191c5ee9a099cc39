#pragma once
#include "model/Nodeb.h"

#include <memory>

namespace velk {

class Nodes;

// A quadrilateral plate cell between four grid nodes; it exists in the
// structure when it has a thickness.
class fourNode {
public:
  Long ID = 0;
  Long vID = 0;
  Long UvID = 0;
  std::shared_ptr<Nodeb> Node1, Node2, Node3, Node4;
  Single CPX = 0;
  Single CPY = 0;
  Single Thickness = 0;
  Boolean PropertyDefined = vbFalse;

  // What PropertyDefined should say: a thickness above the tolerance.
  bool HasSection() const { return Thickness > kTolerance; }
  void UpdatePropertyDefined() { PropertyDefined = ToBoolean(HasSection()); }
  void GenerateCP();

  // The corners are looked up by their grid number in `nodes`.
  void ReadData(FieldReader& in, const Nodes& nodes);
  void ReadData1_4(FieldReader& in, const Nodes& nodes);
  void StoreData1_4(FieldWriter& out) const;

private:
  void ReadCommon(FieldReader& in, const Nodes& nodes);
};

} // namespace velk
