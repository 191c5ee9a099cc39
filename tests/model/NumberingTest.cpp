// The compact numbering of what exists and its backward map.
#include "TestSession.h"
#include "model/VELKMain.h"

#include <vector>

namespace velk::test {
namespace {

class Numbering : public SessionTest {
protected:
  // An NX x NY grid of unit cells with every element, all undefined.
  void Grid(Long nx, Long ny) {
    Nodes& nodes = gMesh().Nodes();
    nodes.SetNumberNodesX(static_cast<Integer>(nx));
    nodes.SetNumberNodesY(static_cast<Integer>(ny));
    nodes.Generate(0, 0, 0, Single(ny - 1), Single(nx - 1), 0, Single(nx - 1), Single(ny - 1), nx,
                   ny);
    gMesh().twoNodes().Generate();
    gMesh().fourNodes().Generate();
  }
  void NumberAll() {
    gMesh().twoNodes().GeneratevID();
    gMesh().fourNodes().GeneratevID();
    gMesh().Nodes().GeneratevID();
  }
  std::vector<Long> NodeVIDs() {
    std::vector<Long> v;
    for (const auto& n : gMesh().Nodes()) v.push_back(n->vID);
    return v;
  }
};

TEST_F(Numbering, FreshGridHasNothingNumbered) {
  Grid(3, 3);
  NumberAll();
  for (const auto& n : gMesh().Nodes()) {
    EXPECT_EQ(n->vID, 0);
    EXPECT_FALSE(IsTrue(n->Connected));
  }
  for (const auto& p : gMesh().fourNodes()) EXPECT_EQ(p->vID, 0);
  for (const auto& s : gMesh().twoNodes()) EXPECT_EQ(s->vID, 0);
  EXPECT_EQ(gMesh().Nodes().MaxvID, 0);
  EXPECT_EQ(gMesh().fourNodes().MaxvID, 0);
  EXPECT_EQ(gMesh().twoNodes().MaxvID, 0);
}

TEST_F(Numbering, OnePlateInAThreeByThreeGrid) {
  Grid(3, 3);
  auto& plate = *gMesh().fourNodes().Item(1);
  ASSERT_EQ(plate.Node1->ID, 1);
  ASSERT_EQ(plate.Node2->ID, 4);
  ASSERT_EQ(plate.Node3->ID, 5);
  ASSERT_EQ(plate.Node4->ID, 2);
  plate.Thickness = 1;
  plate.UpdatePropertyDefined();
  NumberAll();

  EXPECT_EQ(plate.vID, 1);
  EXPECT_EQ(gMesh().fourNodes().MaxvID, 1);
  EXPECT_EQ(NodeVIDs(), (std::vector<Long>{1, 2, 0, 3, 4, 0, 0, 0, 0}));
  EXPECT_EQ(gMesh().Nodes().MaxvID, 4);

  gMesh().Nodes().GenerateUvID();
  gMesh().fourNodes().GenerateUvID();
  std::vector<Long> uvid;
  for (const auto& n : gMesh().Nodes()) uvid.push_back(n->UvID);
  EXPECT_EQ(uvid, (std::vector<Long>{1, 2, 4, 5, 0, 0, 0, 0, 0}));
  EXPECT_EQ(gMesh().fourNodes().Item(1)->UvID, 1);
  EXPECT_EQ(gMesh().fourNodes().Item(2)->UvID, 0);
}

TEST_F(Numbering, FullGridNumbersEqualPositions) {
  Grid(4, 3);
  for (const auto& p : gMesh().fourNodes()) {
    p->Thickness = 0.5f;
    p->UpdatePropertyDefined();
  }
  for (const auto& s : gMesh().twoNodes()) {
    s->Thickness = 1;
    s->width = 2;
    s->UpdatePropertyDefined();
  }
  NumberAll();
  for (const auto& n : gMesh().Nodes()) EXPECT_EQ(n->vID, n->ID);
  for (const auto& p : gMesh().fourNodes()) EXPECT_EQ(p->vID, p->ID);
  for (const auto& s : gMesh().twoNodes()) EXPECT_EQ(s->vID, s->ID);
  EXPECT_EQ(gMesh().Nodes().MaxvID, 12);
  EXPECT_EQ(gMesh().twoNodes().MaxvID, gMesh().twoNodes().Count());
}

TEST_F(Numbering, LoadAloneDoesNotMakeANodeTakePart) {
  Grid(3, 3);
  auto& n = *gMesh().Nodes().Item(5);
  n.XLoad = 10;
  n.UpdatePropertyDefined();
  NumberAll();
  EXPECT_EQ(n.vID, 0);
  EXPECT_FALSE(IsTrue(n.Connected));
  EXPECT_EQ(n.XLoad, 10.0f);
  EXPECT_TRUE(IsTrue(n.LoadDefined()));
}

TEST_F(Numbering, DeletingTheOnlyPlateAtANodeShiftsLaterNumbers) {
  Grid(3, 3);
  for (long i : {1, 4}) { // the lower left and the upper right cell
    auto& p = *gMesh().fourNodes().Item(i);
    p.Thickness = 1;
    p.UpdatePropertyDefined();
  }
  NumberAll();
  EXPECT_EQ(NodeVIDs(), (std::vector<Long>{1, 2, 0, 3, 4, 5, 0, 6, 7}));

  auto& first = *gMesh().fourNodes().Item(1);
  first.Thickness = 0;
  first.UpdatePropertyDefined();
  gMesh().fourNodes().GeneratevID();
  gMesh().Nodes().GeneratevID();
  EXPECT_FALSE(IsTrue(gMesh().Nodes().Item(1)->Connected));
  EXPECT_EQ(NodeVIDs(), (std::vector<Long>{0, 0, 0, 0, 1, 2, 0, 3, 4}));
  EXPECT_EQ(gMesh().fourNodes().Item(4)->vID, 1);
}

TEST_F(Numbering, StiffenerAloneConnectsItsEnds) {
  Grid(3, 3);
  // Stiffener 10 runs up the second column from node 5 to node 6.
  auto& s = *gMesh().twoNodes().Item(10);
  s.Thickness = 1;
  s.width = 1;
  s.UpdatePropertyDefined();
  NumberAll();
  EXPECT_EQ(s.vID, 1);
  EXPECT_TRUE(IsTrue(s.Node1->Connected));
  EXPECT_TRUE(IsTrue(s.Node2->Connected));
  EXPECT_EQ(gMesh().Nodes().MaxvID, 2);
  EXPECT_EQ(s.Node1->vID, 1);
  EXPECT_EQ(s.Node2->vID, 2);
}

TEST_F(Numbering, NodePassLooksAtPropertiesNotAtElementNumbers) {
  Grid(3, 3);
  auto& p = *gMesh().fourNodes().Item(4);
  p.Thickness = 1;
  p.UpdatePropertyDefined();
  gMesh().Nodes().GeneratevID(); // before the element passes
  EXPECT_EQ(p.vID, 0);
  EXPECT_EQ(NodeVIDs(), (std::vector<Long>{0, 0, 0, 0, 1, 2, 0, 3, 4}));
}

TEST_F(Numbering, ResultsStayWhereTheyAreWhenNumbersChange) {
  Grid(3, 3);
  auto& p = *gMesh().fourNodes().Item(4);
  p.Thickness = 1;
  p.UpdatePropertyDefined();
  NumberAll();
  auto node = gMesh().Nodes().Item(5);
  node->Sx = 42;
  ASSERT_EQ(node->vID, 1);
  auto& first = *gMesh().fourNodes().Item(1);
  first.Thickness = 1;
  first.UpdatePropertyDefined();
  NumberAll();
  EXPECT_EQ(node->vID, 4);
  EXPECT_EQ(node->Sx, 42.0f);
}

} // namespace
} // namespace velk::test
