#include "model/Mesh.h"

#include "common/TextFile.h"

namespace velk {

Mesh::~Mesh() {
  // Released in this order: nodes, stiffeners, plates.
  nodes_.reset();
  two_.reset();
  four_.reset();
}

velk::Nodes& Mesh::Nodes() {
  if (!nodes_) nodes_ = std::make_shared<velk::Nodes>();
  return *nodes_;
}
velk::twoNodes& Mesh::twoNodes() {
  if (!two_) two_ = std::make_shared<velk::twoNodes>();
  return *two_;
}
velk::fourNodes& Mesh::fourNodes() {
  if (!four_) four_ = std::make_shared<velk::fourNodes>();
  return *four_;
}

namespace {
template <class C> const C& OrEmpty(const std::shared_ptr<C>& p) {
  static const C empty;
  return p ? *p : empty;
}
} // namespace

const velk::Nodes& Mesh::Nodes() const {
  return OrEmpty(nodes_);
}
const velk::twoNodes& Mesh::twoNodes() const {
  return OrEmpty(two_);
}
const velk::fourNodes& Mesh::fourNodes() const {
  return OrEmpty(four_);
}

void Mesh::GeneratevID() {
  twoNodes().GeneratevID();
  fourNodes().GeneratevID();
  Nodes().GeneratevID(twoNodes(), fourNodes());
}

void Mesh::ReadData(FieldReader& in) {
  Nodes().ReadData(in);
  twoNodes().ReadData(in, Nodes());
  fourNodes().ReadData(in, Nodes());
}

void Mesh::ReadData1_4(FieldReader& in) {
  Nodes().ReadData1_4(in);
  twoNodes().ReadData1_4(in, Nodes());
  fourNodes().ReadData1_4(in, Nodes());
}

void Mesh::StoreData1_4(FieldWriter& out) {
  Nodes().StoreData1_4(out);
  twoNodes().StoreData1_4(out);
  fourNodes().StoreData1_4(out);
}

} // namespace velk
