// The compact numbering of what exists and its backward map.
#include "TestSession.h"
#include "session/VELKMain.h"

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
    gMesh().twoNodes().Generate(gMesh().Nodes());
    gMesh().fourNodes().Generate(gMesh().Nodes());
  }
  void Plate(long i, Single t) {
    auto& p = *gMesh().fourNodes().Item(i);
    p.Thickness = t;
    p.UpdatePropertyDefined();
  }
  void NumberAll() { gMesh().GeneratevID(); }
  std::vector<Long> NodeVIDs() {
    std::vector<Long> v;
    for (const auto& n : gMesh().Nodes())
      v.push_back(n->vID);
    return v;
  }
};

TEST_F(Numbering, OnePlateInAThreeByThreeGridAndItsBackwardMap) {
  Grid(3, 3);
  NumberAll(); // nothing defined: nothing numbered
  EXPECT_EQ(NodeVIDs(), std::vector<Long>(9, 0));
  EXPECT_EQ(gMesh().fourNodes().MaxvID + gMesh().twoNodes().MaxvID + gMesh().Nodes().MaxvID, 0);

  auto& plate = *gMesh().fourNodes().Item(1);
  ASSERT_EQ(plate.Node2->ID, 4);
  Plate(1, 1);
  // A load alone does not make a node take part.
  auto& loaded = *gMesh().Nodes().Item(6);
  loaded.XLoad = 10;
  loaded.UpdatePropertyDefined();
  NumberAll();
  EXPECT_EQ(plate.vID, 1);
  EXPECT_EQ(gMesh().fourNodes().Item(2)->vID, 0);
  EXPECT_EQ(gMesh().fourNodes().MaxvID, 1);
  EXPECT_EQ(NodeVIDs(), (std::vector<Long>{1, 2, 0, 3, 4, 0, 0, 0, 0}));
  EXPECT_EQ(gMesh().Nodes().MaxvID, 4);
  EXPECT_FALSE(IsTrue(loaded.Connected));
  EXPECT_TRUE(IsTrue(gMesh().Nodes().Item(5)->Connected));

  gMesh().Nodes().GenerateUvID();
  gMesh().fourNodes().GenerateUvID();
  std::vector<Long> uvid;
  for (const auto& n : gMesh().Nodes())
    uvid.push_back(n->UvID);
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
  for (const auto& n : gMesh().Nodes())
    EXPECT_EQ(n->vID, n->ID);
  for (const auto& p : gMesh().fourNodes())
    EXPECT_EQ(p->vID, p->ID);
  for (const auto& s : gMesh().twoNodes())
    EXPECT_EQ(s->vID, s->ID);
  EXPECT_EQ(gMesh().Nodes().MaxvID, 12);
  EXPECT_EQ(gMesh().twoNodes().MaxvID, gMesh().twoNodes().Count());
}

TEST_F(Numbering, NumbersFollowThePropertiesAndResultsStayWithTheirNodes) {
  Grid(3, 3);
  Plate(4, 1); // the upper right cell
  gMesh().Nodes().GeneratevID(
      gMesh().twoNodes(),
      gMesh().fourNodes()); // the node pass looks at properties, not element numbers
  EXPECT_EQ(gMesh().fourNodes().Item(4)->vID, 0);
  EXPECT_EQ(NodeVIDs(), (std::vector<Long>{0, 0, 0, 0, 1, 2, 0, 3, 4}));
  auto centre = gMesh().Nodes().Item(5);
  centre->Sx = 42;

  Plate(1, 1); // the lower left cell comes in before it
  NumberAll();
  EXPECT_EQ(NodeVIDs(), (std::vector<Long>{1, 2, 0, 3, 4, 5, 0, 6, 7}));
  EXPECT_EQ(centre->Sx, 42.0f);

  Plate(1, 0); // and goes again
  gMesh().fourNodes().GeneratevID();
  gMesh().Nodes().GeneratevID(gMesh().twoNodes(), gMesh().fourNodes());
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
  EXPECT_EQ(gMesh().Nodes().MaxvID, 2);
  EXPECT_EQ(s.Node1->vID, 1);
  EXPECT_EQ(s.Node2->vID, 2);
  EXPECT_TRUE(IsTrue(s.Node1->Connected) && IsTrue(s.Node2->Connected));
}

} // namespace
} // namespace velk::test
