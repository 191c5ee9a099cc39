// The plate and stiffener collections: numbering, centre points, file blocks.
#include "common/TextFile.h"
#include "model/CompactNumbering.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"

namespace velk {

namespace {

// Compact numbering of the defined elements, in position order.
template <class C> void NumberDefined(C& col, Long& maxvID) {
  const CompactNumbers numbers = Number_Compact(Defined_Flags(col));
  for (long i = 1; i <= col.Count(); ++i)
    col.Item(i)->vID = numbers.vID[static_cast<std::size_t>(i - 1)];
  maxvID = numbers.MaxvID;
}

template <class C> void BackwardMap(C& col) {
  for (const auto& e : col)
    e->UvID = 0;
  for (long i = 1; i <= col.Count(); ++i) {
    Long v = col.Item(i)->vID;
    if (v != 0) col.Item(v)->UvID = static_cast<Long>(i);
  }
}

} // namespace

std::shared_ptr<fourNode> fourNodes::Add(std::shared_ptr<Nodeb> Node1, std::shared_ptr<Nodeb> Node2,
                                         std::shared_ptr<Nodeb> Node3, std::shared_ptr<Nodeb> Node4,
                                         Long ID, const std::string& sKey) {
  auto e = std::make_shared<fourNode>();
  e->Node1 = std::move(Node1);
  e->Node2 = std::move(Node2);
  e->Node3 = std::move(Node3);
  e->Node4 = std::move(Node4);
  e->Thickness = 0;
  e->ID = ID;
  mCol.Add(e, sKey);
  return e;
}

void fourNodes::UpdateMaxThickness() {
  MaxThickness_ = 0;
  for (const auto& e : mCol)
    if (e->Thickness > MaxThickness_) MaxThickness_ = e->Thickness;
}

void fourNodes::GenerateCP() {
  for (const auto& e : mCol)
    e->GenerateCP();
}
void fourNodes::GeneratevID() {
  NumberDefined(*this, MaxvID);
}
void fourNodes::GenerateUvID() {
  BackwardMap(*this);
}

void fourNodes::ReadPlates(FieldReader& in, const Nodes& nodes, bool version14) {
  MaxThickness_ = in.Single();
  long count = in.Long();
  MaxvID = in.Long();
  // A record that breaks off is not kept, so no plate in the model lacks its nodes.
  for (long i = 1; i <= count; ++i) {
    auto e = std::make_shared<fourNode>();
    if (version14)
      e->ReadData1_4(in, nodes);
    else
      e->ReadData(in, nodes);
    mCol.Add(e, std::to_string(i));
  }
}

void fourNodes::ReadData(FieldReader& in, const Nodes& nodes) {
  ReadPlates(in, nodes, false);
}
void fourNodes::ReadData1_4(FieldReader& in, const Nodes& nodes) {
  ReadPlates(in, nodes, true);
}

void fourNodes::StoreData1_4(FieldWriter& out) const {
  out.Single(MaxThickness_);
  out.EndLine();
  out.Integer(Count());
  out.Integer(MaxvID);
  out.EndLine();
  for (const auto& e : mCol)
    e->StoreData1_4(out);
}

std::shared_ptr<twoNode> twoNodes::Add(std::shared_ptr<Nodeb> vNode1, std::shared_ptr<Nodeb> vNode2,
                                       Long ID, const std::string& sKey) {
  auto e = std::make_shared<twoNode>();
  e->Node1 = std::move(vNode1);
  e->Node2 = std::move(vNode2);
  e->Thickness = 0;
  e->width = 0;
  e->ID = ID;
  mCol.Add(e, sKey);
  return e;
}

void twoNodes::Calculate_MaxMinStress(Single& maxStress, Single& minStress, Integer opt) const {
  maxStress = -1E+37f;
  minStress = 1E+37f;
  if (opt != 0) return;
  for (const auto& e : mCol) {
    if (e->vID == 0) continue;
    if (e->Stress > maxStress) maxStress = e->Stress;
    if (e->Stress < minStress) minStress = e->Stress;
  }
}

void twoNodes::GenerateCP() {
  for (const auto& e : mCol)
    e->GenerateCP();
}
void twoNodes::GeneratevID() {
  NumberDefined(*this, MaxvID);
}
void twoNodes::GenerateUvID() {
  BackwardMap(*this);
}

void twoNodes::ReadData1_4(FieldReader& in, const Nodes& nodes) {
  long count = in.Long();
  MaxvID = in.Long();
  // A record that breaks off is not kept, so no stiffener lacks its nodes.
  for (long i = 1; i <= count; ++i) {
    auto e = std::make_shared<twoNode>();
    e->ReadData1_4(in, nodes);
    mCol.Add(e, std::to_string(i));
  }
}

void twoNodes::StoreData1_4(FieldWriter& out) const {
  out.Integer(Count());
  out.Integer(MaxvID);
  out.EndLine();
  for (const auto& e : mCol)
    e->StoreData1_4(out);
}

} // namespace velk
