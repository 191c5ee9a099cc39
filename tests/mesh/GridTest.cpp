// Node grids between four corners and the elements on them: positions,
// grading and the numbering that the creation order fixes.
#include "TestSession.h"
#include "model/VELKMain.h"

#include <cmath>
#include <vector>

namespace velk::test {
namespace {

class NodeGrid : public SessionTest {
protected:
  Nodes& nodes() { return gMesh().Nodes(); } // the session is fresh from SetUp on
  double X(long position) { return nodes().Item(position)->xcoord; }
  double Y(long position) { return nodes().Item(position)->ycoord; }
};

TEST_F(NodeGrid, EvenGridOfTheDefaultGirder) {
  nodes().Generate(0, 0, 0, 16.5f, 120, 0, 120, 16.5f, 15, 4);
  ASSERT_EQ(nodes().Count(), 60);
  EXPECT_EQ(X(1), 0);
  EXPECT_EQ(Y(1), 0);
  EXPECT_EQ(X(2), 0);
  EXPECT_EQ(Y(2), 5.5);
  EXPECT_EQ(Y(3), 11);
  EXPECT_EQ(Y(4), 16.5);
  EXPECT_FLOAT_EQ(nodes().Item(5)->xcoord, 120.0f / 14.0f);
  EXPECT_EQ(Y(5), 0);
  EXPECT_EQ(X(60), 120);
  EXPECT_EQ(Y(60), 16.5);
  for (long p = 1; p <= 60; ++p) {
    EXPECT_EQ(nodes().Item(p)->ID, p);
    EXPECT_EQ(nodes().Item(std::to_string(p)), nodes().Item(p));
    EXPECT_EQ(nodes().Item(p)->zcoord, 0.0f);
    EXPECT_FALSE(IsTrue(nodes().Item(p)->PropertyDefined()));
  }
}

TEST_F(NodeGrid, ColumnsRunStraightBetweenTheEdgesOfATrapezium) {
  nodes().Generate(0, 0, 0, 10, 100, 0, 100, 20, 3, 3);
  ASSERT_EQ(nodes().Count(), 9);
  EXPECT_EQ(X(4), 50);
  EXPECT_EQ(Y(4), 0);
  EXPECT_EQ(X(5), 50);
  EXPECT_EQ(Y(5), 7.5);
  EXPECT_EQ(X(6), 50);
  EXPECT_EQ(Y(6), 15);
  EXPECT_EQ(Y(9), 20);
}

TEST_F(NodeGrid, SlopedEdgesMoveTheColumnEnds) {
  // The bottom edge falls to -2 and the top edge to 14.5 at the far end.
  nodes().Generate(0, 0, 0, 16.5f, 120, -2, 120, 14.5f, 3, 2);
  EXPECT_EQ(X(3), 60);
  EXPECT_EQ(Y(3), -1);
  EXPECT_EQ(Y(4), 15.5);
  EXPECT_EQ(Y(5), -2);
  EXPECT_EQ(Y(6), 14.5);
}

TEST_F(NodeGrid, ProportionalColumnsFollowTheDepth) {
  nodes().GenerateProportional(0, 0, 0, 10, 100, 0, 100, 20, 5, 3);
  ASSERT_EQ(nodes().Count(), 15);
  const double expected[] = {0, 17.10, 38.65, 65.80, 100};
  for (int i = 0; i < 5; ++i) {
    EXPECT_NEAR(X(i * 3 + 1), expected[i], 0.005) << "column " << i + 1;
    // Every node of a column stands at the column's x.
    EXPECT_EQ(X(i * 3 + 2), X(i * 3 + 1));
    EXPECT_EQ(X(i * 3 + 3), X(i * 3 + 1));
    // The top stays on the straight edge from 10 to 20.
    EXPECT_NEAR(Y(i * 3 + 3), 10 + X(i * 3 + 1) / 10, 1e-4);
    EXPECT_NEAR(Y(i * 3 + 2), Y(i * 3 + 3) / 2, 1e-4);
  }
  // Successive elements grow by the cube root of 2; the last is twice the first.
  const double r = std::cbrt(2.0);
  for (int i = 1; i < 4; ++i) {
    double before = X(i * 3 + 1) - X((i - 1) * 3 + 1);
    double next = X((i + 1) * 3 + 1) - X(i * 3 + 1);
    EXPECT_NEAR(next / before, r, 1e-5);
  }
  EXPECT_NEAR((X(13) - X(10)) / (X(4) - X(1)), 2.0, 1e-5);
}

TEST_F(NodeGrid, ProportionalColumnsShrinkTowardsAShallowerEnd) {
  nodes().GenerateProportional(0, 0, 0, 20, 100, 0, 100, 10, 5, 2);
  ASSERT_EQ(nodes().Count(), 10);
  EXPECT_EQ(X(1), 0);
  EXPECT_EQ(X(9), 100);
  double previous = 1e9;
  for (int i = 1; i < 5; ++i) {
    double length = X(i * 2 + 1) - X((i - 1) * 2 + 1);
    EXPECT_GT(length, 0);
    EXPECT_LT(length, previous);
    previous = length;
  }
  EXPECT_NEAR((X(9) - X(7)) / (X(3) - X(1)), 0.5, 1e-5);
}

TEST_F(NodeGrid, ProportionalWithOneElementIsTheTwoEndColumns) {
  nodes().GenerateProportional(0, 0, 0, 10, 100, 0, 100, 20, 2, 3);
  ASSERT_EQ(nodes().Count(), 6);
  EXPECT_EQ(X(1), 0);
  EXPECT_EQ(Y(3), 10);
  EXPECT_EQ(X(4), 100);
  EXPECT_EQ(Y(5), 10);
  EXPECT_EQ(Y(6), 20);
}

TEST_F(NodeGrid, AddGenerateLeavesOutTheFirstColumnAndNumbersFromOne) {
  nodes().AddGenerate(0, 0, 0, 10, 100, 0, 100, 10, 3, 2);
  ASSERT_EQ(nodes().Count(), 4);
  EXPECT_EQ(nodes().Item(1)->ID, 1);
  EXPECT_EQ(X(1), 50);
  EXPECT_EQ(Y(2), 10);
  EXPECT_EQ(X(4), 100);
}

TEST_F(NodeGrid, SecondGenerateCollidesOnTheKeys) {
  nodes().Generate(0, 0, 0, 1, 1, 0, 1, 1, 2, 2);
  try {
    nodes().Generate(0, 0, 0, 1, 1, 0, 1, 1, 2, 2);
    FAIL() << "no fault";
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), errDuplicateKey);
  }
}

class ElementGrid : public SessionTest {
protected:
  void Grid(Integer nx, Integer ny) {
    Nodes& nodes = gMesh().Nodes();
    nodes.SetNumberNodesX(nx);
    nodes.SetNumberNodesY(ny);
    nodes.Generate(0, 0, 0, 1, 1, 0, 1, 1, nx, ny);
    gMesh().twoNodes().Generate();
    gMesh().fourNodes().Generate();
  }
  static std::vector<Long> Ids(const fourNode& p) {
    return {p.Node1->ID, p.Node2->ID, p.Node3->ID, p.Node4->ID};
  }
  static std::vector<Long> Ids(const twoNode& s) { return {s.Node1->ID, s.Node2->ID}; }
};

TEST_F(ElementGrid, ThreeByTwoNodes) {
  Grid(3, 2);
  const fourNodes& plates = gMesh().fourNodes();
  const twoNodes& stiffeners = gMesh().twoNodes();
  ASSERT_EQ(plates.Count(), 2);
  EXPECT_EQ(Ids(*plates.Item(1)), (std::vector<Long>{1, 3, 4, 2}));
  EXPECT_EQ(Ids(*plates.Item(2)), (std::vector<Long>{3, 5, 6, 4}));
  const std::vector<std::vector<Long>> expected = {{1, 3}, {3, 5}, {2, 4}, {4, 6},
                                                   {1, 2}, {3, 4}, {5, 6}};
  ASSERT_EQ(stiffeners.Count(), 7);
  for (long i = 1; i <= 7; ++i) {
    EXPECT_EQ(Ids(*stiffeners.Item(i)), expected[i - 1]) << "stiffener " << i;
    EXPECT_EQ(stiffeners.Item(i)->ID, i);
    EXPECT_EQ(stiffeners.Item(std::to_string(i)), stiffeners.Item(i));
    EXPECT_EQ(stiffeners.Item(i)->Thickness, 0.0f);
    EXPECT_EQ(stiffeners.Item(i)->CPX, 0.0f); // centre points come later
  }
  EXPECT_EQ(plates.Item("2"), plates.Item(2));
}

TEST_F(ElementGrid, NumberingOfTheDefaultGirderGrid) {
  Grid(15, 4);
  const twoNodes& stiffeners = gMesh().twoNodes();
  ASSERT_EQ(stiffeners.Count(), 101);
  ASSERT_EQ(gMesh().fourNodes().Count(), 42);
  // The top row: stiffeners 43 to 56, from node 4 along row 4.
  EXPECT_EQ(Ids(*stiffeners.Item(43)), (std::vector<Long>{4, 8}));
  EXPECT_EQ(Ids(*stiffeners.Item(56)), (std::vector<Long>{56, 60}));
  // The first transverse one is 57, at the bottom of the first column.
  EXPECT_EQ(Ids(*stiffeners.Item(57)), (std::vector<Long>{1, 2}));
  EXPECT_EQ(Ids(*stiffeners.Item(101)), (std::vector<Long>{59, 60}));
  // Plates go up each column of cells.
  EXPECT_EQ(Ids(*gMesh().fourNodes().Item(4)), (std::vector<Long>{5, 9, 10, 6}));
}

TEST_F(ElementGrid, InnerNodeIsSharedByFourPlatesAndFourStiffeners) {
  Grid(3, 3);
  auto centre = gMesh().Nodes().Item(5);
  int plates = 0, stiffeners = 0;
  for (const auto& p : gMesh().fourNodes())
    for (const auto& n : {p->Node1, p->Node2, p->Node3, p->Node4}) plates += n == centre;
  for (const auto& s : gMesh().twoNodes())
    for (const auto& n : {s->Node1, s->Node2}) stiffeners += n == centre;
  EXPECT_EQ(plates, 4);
  EXPECT_EQ(stiffeners, 4);
  centre->xcoord = 0.75f;
  gMesh().fourNodes().GenerateCP();
  EXPECT_FLOAT_EQ(gMesh().fourNodes().Item(1)->CPX, (0 + 0.5f + 0.75f + 0) * 0.25f);
}

TEST_F(ElementGrid, PlatesRunAnticlockwise) {
  Grid(4, 3);
  for (const auto& p : gMesh().fourNodes()) {
    const Nodeb* c[4] = {p->Node1.get(), p->Node2.get(), p->Node3.get(), p->Node4.get()};
    double area2 = 0;
    for (int k = 0; k < 4; ++k) {
      const Nodeb* a = c[k];
      const Nodeb* b = c[(k + 1) % 4];
      area2 += double(a->xcoord) * b->ycoord - double(b->xcoord) * a->ycoord;
    }
    EXPECT_GT(area2, 0) << "plate " << p->ID;
  }
}

} // namespace
} // namespace velk::test
