#pragma once
#include "model/Nodes.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"

#include <memory>

namespace velk {

// The model root: nodes, stiffeners and plates. A missing collection is created
// empty on first read.
class Mesh {
public:
  ~Mesh();
  velk::Nodes& Nodes();
  velk::twoNodes& twoNodes();
  velk::fourNodes& fourNodes();
  // For readers: a missing collection reads as an empty one and is not created.
  const velk::Nodes& Nodes() const;
  const velk::twoNodes& twoNodes() const;
  const velk::fourNodes& fourNodes() const;
  void SetNodes(std::shared_ptr<velk::Nodes> n) { nodes_ = std::move(n); }
  void SettwoNodes(std::shared_ptr<velk::twoNodes> t) { two_ = std::move(t); }
  void SetfourNodes(std::shared_ptr<velk::fourNodes> f) { four_ = std::move(f); }

  // The compact numbers of stiffeners, plates and nodes, in that order: a
  // node counts when a defined element touches it.
  void GeneratevID();

  void ReadData(FieldReader& in);
  void ReadData1_4(FieldReader& in);
  void StoreData1_4(FieldWriter& out);

private:
  std::shared_ptr<velk::Nodes> nodes_;
  std::shared_ptr<velk::twoNodes> two_;
  std::shared_ptr<velk::fourNodes> four_;
};

} // namespace velk
