#pragma once
#include "model/Collection.h"
#include "model/Nodes.h"
#include "model/fourNode.h"

namespace velk {

class fourNodes {
public:
  Single MaxThickness() const { return MaxThickness_; }
  Long MaxvID = 0;

  const std::shared_ptr<fourNode>& Item(long index) const { return mCol.Item(index); }
  const std::shared_ptr<fourNode>& Item(const std::string& key) const { return mCol.Item(key); }
  long Count() const { return mCol.Count(); }
  void Remove(long index) { mCol.Remove(index); }
  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

  std::shared_ptr<fourNode> Add(std::shared_ptr<Nodeb> Node1, std::shared_ptr<Nodeb> Node2,
                                std::shared_ptr<Nodeb> Node3, std::shared_ptr<Nodeb> Node4, Long ID,
                                const std::string& sKey);
  void UpdateMaxThickness();
  void Generate(const Nodes& nodes); // every cell of the node grid
  void GenerateCP();
  void GeneratevID();
  void GenerateUvID();

  void ReadData(FieldReader& in, const Nodes& nodes);
  void ReadData1_4(FieldReader& in, const Nodes& nodes);
  void StoreData1_4(FieldWriter& out) const;

private:
  Collection<fourNode> mCol;
  Single MaxThickness_ = 0;
  void ReadPlates(FieldReader& in, const Nodes& nodes, bool version14);
};

} // namespace velk
