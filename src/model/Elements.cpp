// Plate and stiffener records: centre points and file forms.
#include "common/TextFile.h"
#include "model/Nodes.h"
#include "model/fourNode.h"
#include "model/twoNode.h"

namespace velk {

namespace {
std::shared_ptr<Nodeb> NodeByID(const Nodes& nodes, Long id) {
  return nodes.Item(static_cast<long>(id));
}
} // namespace

void fourNode::GenerateCP() {
  CPX = (Node1->xcoord + Node2->xcoord + Node3->xcoord + Node4->xcoord) * 0.25f;
  CPY = (Node1->ycoord + Node2->ycoord + Node3->ycoord + Node4->ycoord) * 0.25f;
}

void fourNode::ReadCommon(FieldReader& in, const Nodes& nodes) {
  Long n1 = in.Long(), n2 = in.Long(), n3 = in.Long(), n4 = in.Long();
  Node1 = NodeByID(nodes, n1);
  Node2 = NodeByID(nodes, n2);
  Node3 = NodeByID(nodes, n3);
  Node4 = NodeByID(nodes, n4);
  CPX = in.Single();
  CPY = in.Single();
  Thickness = in.Single();
  PropertyDefined = in.Boolean();
  ID = in.Long();
  vID = in.Long();
}

void fourNode::ReadData(FieldReader& in, const Nodes& nodes) {
  ReadCommon(in, nodes);
  // The older form carries nine further values that nothing uses.
  for (int i = 0; i < 9; ++i)
    in.Single();
}

void fourNode::ReadData1_4(FieldReader& in, const Nodes& nodes) {
  ReadCommon(in, nodes);
}

void fourNode::StoreData1_4(FieldWriter& out) const {
  out.Integer(Node1->ID);
  out.Integer(Node2->ID);
  out.Integer(Node3->ID);
  out.Integer(Node4->ID);
  out.EndLine();
  out.Single(CPX);
  out.Single(CPY);
  out.EndLine();
  out.Single(Thickness);
  out.EndLine();
  out.Boolean(PropertyDefined);
  out.EndLine();
  out.Integer(ID);
  out.Integer(vID);
  out.EndLine();
}

void twoNode::GenerateCP() {
  CPX = (Node1->xcoord + Node2->xcoord) * 0.5f;
  CPY = (Node1->ycoord + Node2->ycoord) * 0.5f;
}

void twoNode::ReadData1_4(FieldReader& in, const Nodes& nodes) {
  Long n1 = in.Long(), n2 = in.Long();
  Node1 = NodeByID(nodes, n1);
  Node2 = NodeByID(nodes, n2);
  CPX = in.Single();
  CPY = in.Single();
  Thickness = in.Single();
  width = in.Single();
  PropertyDefined = in.Boolean();
  vID = in.Long();
  Stress = in.Single();
  ID = in.Long();
}

void twoNode::StoreData1_4(FieldWriter& out) const {
  out.Integer(Node1->ID);
  out.Integer(Node2->ID);
  out.EndLine();
  out.Single(CPX);
  out.Single(CPY);
  out.EndLine();
  out.Single(Thickness);
  out.Single(width);
  out.EndLine();
  out.Boolean(PropertyDefined);
  out.EndLine();
  out.Integer(vID);
  out.Single(Stress);
  out.EndLine();
  out.Integer(ID);
  out.EndLine();
}

} // namespace velk
