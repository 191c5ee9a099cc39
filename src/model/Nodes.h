#pragma once
#include "model/Collection.h"
#include "model/Nodeb.h"

namespace velk {

class twoNodes;
class fourNodes;

// All nodes of the mesh: a grid of NumberNodesX columns of NumberNodesY nodes,
// numbered up each column, column after column.
class Nodes {
public:
  Integer NumberNodesX() const { return static_cast<Integer>(NumberNodesX_); }
  Integer NumberNodesY() const { return static_cast<Integer>(NumberNodesY_); }
  void SetNumberNodesX(Integer n) { NumberNodesX_ = n; }
  void SetNumberNodesY(Integer n) { NumberNodesY_ = n; }
  Long MaxvID = 0;

  const std::shared_ptr<Nodeb>& Item(long index) const { return mCol.Item(index); }
  const std::shared_ptr<Nodeb>& Item(const std::string& key) const { return mCol.Item(key); }
  long Count() const { return mCol.Count(); }
  void Remove(long index) { mCol.Remove(index); }
  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

  std::shared_ptr<Nodeb> Add(Single pxcoord, Single pycoord, Long ID, const std::string& sKey);

  // Opt 0 Sx, 1 Sy, 2 SXY, 3 Mises, over connected nodes.
  void Calculate_MaxMinStress(Single& maxStress, Single& minStress, Integer opt) const;

  // Node grids between four corners: bottom and top of the first column, then
  // bottom and top of the last.
  void Generate(Single X1, Single Y1, Single X2, Single Y2, Single X3, Single Y3, Single X4,
                Single Y4, Long NX, Long NY);
  void GenerateProportional(Single X1, Single Y1, Single X2, Single Y2, Single X3, Single Y3,
                            Single X4, Single Y4, Long NX, Long NY);
  void AddGenerate(Single X1, Single Y1, Single X2, Single Y2, Single X3, Single Y3, Single X4,
                   Single Y4, Long NX, Long NY);
  void AddGenerateProportional() {}

  // Numbers the nodes that a defined plate or stiffener touches.
  void GeneratevID(const twoNodes& stiffeners, const fourNodes& plates);
  void GenerateUvID();

  void ReadData(FieldReader& in);
  void ReadData1_4(FieldReader& in);
  void StoreData1_4(FieldWriter& out) const;

private:
  Collection<Nodeb> mCol;
  Long NumberNodesX_ = 0;
  Long NumberNodesY_ = 0;
  void ReadNodes(FieldReader& in, bool version14);
};

} // namespace velk
