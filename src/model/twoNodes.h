#pragma once
#include "model/Collection.h"
#include "model/Nodes.h"
#include "model/twoNode.h"

namespace velk {

class twoNodes {
public:
  Long MaxvID = 0;

  const std::shared_ptr<twoNode>& Item(long index) const { return mCol.Item(index); }
  const std::shared_ptr<twoNode>& Item(const std::string& key) const { return mCol.Item(key); }
  long Count() const { return mCol.Count(); }
  void Remove(long index) { mCol.Remove(index); }
  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

  std::shared_ptr<twoNode> Add(std::shared_ptr<Nodeb> vNode1, std::shared_ptr<Nodeb> vNode2,
                               Long ID, const std::string& sKey);
  // Opt 0 is the axial stress; any other leaves the start values.
  void Calculate_MaxMinStress(Single& maxStress, Single& minStress, Integer opt) const;
  // Every segment of the node grid: longitudinal rows first, then the transverse columns.
  void Generate(const Nodes& nodes);
  void GenerateCP();
  void GeneratevID();
  void GenerateUvID();

  void ReadData(FieldReader& in, const Nodes& nodes) { ReadData1_4(in, nodes); }
  void ReadData1_4(FieldReader& in, const Nodes& nodes);
  void StoreData1_4(FieldWriter& out) const;

private:
  Collection<twoNode> mCol;
};

} // namespace velk
