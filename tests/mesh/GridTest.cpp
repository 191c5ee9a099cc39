// Node grids between four corners and the elements on them: positions,
// grading and the numbering that the creation order fixes.
#include "TestSession.h"
#include "session/VELKMain.h"

#include <cmath>
#include <vector>

namespace velk::test {
namespace {

using Ids = std::vector<Long>;

class Grid : public SessionTest {
protected:
  Nodes& nodes() { return gMesh().Nodes(); }
  double X(long position) { return nodes().Item(position)->xcoord; }
  double Y(long position) { return nodes().Item(position)->ycoord; }
  // Nodes with elements on an nx x ny grid over the unit square.
  void Elements(Integer nx, Integer ny) {
    nodes().SetNumberNodesX(nx);
    nodes().SetNumberNodesY(ny);
    nodes().Generate(0, 0, 0, 1, 1, 0, 1, 1, nx, ny);
    gMesh().twoNodes().Generate(gMesh().Nodes());
    gMesh().fourNodes().Generate(gMesh().Nodes());
  }
  void Fresh() {
    Clear_Session();
    InstallHost(&host);
  }
  static Ids Of(const fourNode& p) { return {p.Node1->ID, p.Node2->ID, p.Node3->ID, p.Node4->ID}; }
  static Ids Of(const twoNode& s) { return {s.Node1->ID, s.Node2->ID}; }
};

// The default girder's grid is checked with the generator; here the shapes.
TEST_F(Grid, NodesBetweenFourCorners) {
  nodes().Generate(0, 0, 0, 16.5f, 120, 0, 120, 16.5f, 15, 4);
  ASSERT_EQ(nodes().Count(), 60);
  for (long p = 1; p <= 60; ++p) {
    EXPECT_EQ(nodes().Item(p)->ID, p);
    EXPECT_EQ(nodes().Item(std::to_string(p)), nodes().Item(p));
  }
  // A second grid collides on the keys.
  try {
    nodes().Generate(0, 0, 0, 1, 1, 0, 1, 1, 2, 2);
    ADD_FAILURE() << "no fault";
  } catch (const Fault& f) {
    EXPECT_EQ(f.number(), errDuplicateKey);
  }

  // The bottom edge falls to -2 and the top edge to 14.5 at the far end.
  Fresh();
  nodes().Generate(0, 0, 0, 16.5f, 120, -2, 120, 14.5f, 3, 2);
  const double sloped[][2] = {{0, 0}, {0, 16.5}, {60, -1}, {60, 15.5}, {120, -2}, {120, 14.5}};
  for (long p = 1; p <= 6; ++p) {
    EXPECT_EQ(X(p), sloped[p - 1][0]) << p;
    EXPECT_EQ(Y(p), sloped[p - 1][1]) << p;
  }
  // Columns run straight between the edges of a trapezium.
  Fresh();
  nodes().Generate(0, 0, 0, 10, 100, 0, 100, 20, 3, 3);
  EXPECT_EQ(X(5), 50);
  EXPECT_EQ(Y(5), 7.5);
  EXPECT_EQ(Y(6), 15);
  // AddGenerate leaves out the first column and numbers from one.
  Fresh();
  nodes().AddGenerate(0, 0, 0, 10, 100, 0, 100, 10, 3, 2);
  ASSERT_EQ(nodes().Count(), 4);
  EXPECT_EQ(nodes().Item(1)->ID, 1);
  EXPECT_EQ(X(1), 50);
  EXPECT_EQ(Y(2), 10);
  EXPECT_EQ(X(4), 100);
}

TEST_F(Grid, ProportionalColumnsFollowTheDepth) {
  nodes().GenerateProportional(0, 0, 0, 10, 100, 0, 100, 20, 5, 3);
  ASSERT_EQ(nodes().Count(), 15);
  const double expected[] = {0, 17.10, 38.65, 65.80, 100};
  for (int i = 0; i < 5; ++i) {
    EXPECT_NEAR(X(i * 3 + 1), expected[i], 0.005) << "column " << i + 1;
    EXPECT_EQ(X(i * 3 + 2), X(i * 3 + 1));
    EXPECT_EQ(X(i * 3 + 3), X(i * 3 + 1));
    // The top stays on the straight edge from 10 to 20.
    EXPECT_NEAR(Y(i * 3 + 3), 10 + X(i * 3 + 1) / 10, 1e-4);
    EXPECT_NEAR(Y(i * 3 + 2), Y(i * 3 + 3) / 2, 1e-4);
  }
  // Successive elements grow by the cube root of 2.
  for (int i = 1; i < 4; ++i)
    EXPECT_NEAR((X(i * 3 + 4) - X(i * 3 + 1)) / (X(i * 3 + 1) - X(i * 3 - 2)), std::cbrt(2.0),
                1e-5);

  // Towards a shallower end they shrink, the last to half the first.
  Fresh();
  nodes().GenerateProportional(0, 0, 0, 20, 100, 0, 100, 10, 5, 2);
  EXPECT_EQ(X(1), 0);
  EXPECT_EQ(X(9), 100);
  EXPECT_NEAR((X(9) - X(7)) / (X(3) - X(1)), 0.5, 1e-5);
  // One element is the two end columns.
  Fresh();
  nodes().GenerateProportional(0, 0, 0, 10, 100, 0, 100, 20, 2, 3);
  ASSERT_EQ(nodes().Count(), 6);
  EXPECT_EQ(X(4), 100);
  EXPECT_EQ(Y(3), 10);
  EXPECT_EQ(Y(5), 10);
  EXPECT_EQ(Y(6), 20);
}

TEST_F(Grid, ElementsOfThreeByTwoNodes) {
  Elements(3, 2);
  const fourNodes& plates = gMesh().fourNodes();
  const twoNodes& stiffeners = gMesh().twoNodes();
  ASSERT_EQ(plates.Count(), 2);
  EXPECT_EQ(Of(*plates.Item(1)), (Ids{1, 3, 4, 2}));
  EXPECT_EQ(Of(*plates.Item(2)), (Ids{3, 5, 6, 4}));
  EXPECT_EQ(plates.Item("2"), plates.Item(2));
  const std::vector<Ids> expected = {{1, 3}, {3, 5}, {2, 4}, {4, 6}, {1, 2}, {3, 4}, {5, 6}};
  ASSERT_EQ(stiffeners.Count(), 7);
  for (long i = 1; i <= 7; ++i) {
    EXPECT_EQ(Of(*stiffeners.Item(i)), expected[i - 1]) << "stiffener " << i;
    EXPECT_EQ(stiffeners.Item(i)->ID, i);
    EXPECT_EQ(stiffeners.Item(std::to_string(i)), stiffeners.Item(i));
  }
}

TEST_F(Grid, ElementsOfTheDefaultGirder) {
  Elements(15, 4);
  const twoNodes& stiffeners = gMesh().twoNodes();
  ASSERT_EQ(stiffeners.Count(), 101);
  ASSERT_EQ(gMesh().fourNodes().Count(), 42);
  // The top row: stiffeners 43 to 56, from node 4 along row 4.
  EXPECT_EQ(Of(*stiffeners.Item(43)), (Ids{4, 8}));
  EXPECT_EQ(Of(*stiffeners.Item(56)), (Ids{56, 60}));
  // The first transverse one is 57, at the bottom of the first column.
  EXPECT_EQ(Of(*stiffeners.Item(57)), (Ids{1, 2}));
  EXPECT_EQ(Of(*stiffeners.Item(101)), (Ids{59, 60}));
  // Plates go up each column of cells, anticlockwise.
  EXPECT_EQ(Of(*gMesh().fourNodes().Item(4)), (Ids{5, 9, 10, 6}));
  for (const auto& p : gMesh().fourNodes()) {
    const Nodeb* c[4] = {p->Node1.get(), p->Node2.get(), p->Node3.get(), p->Node4.get()};
    double area2 = 0;
    for (int k = 0; k < 4; ++k)
      area2 += double(c[k]->xcoord) * c[(k + 1) % 4]->ycoord -
               double(c[(k + 1) % 4]->xcoord) * c[k]->ycoord;
    EXPECT_GT(area2, 0) << "plate " << p->ID;
  }
}

TEST_F(Grid, InnerNodeIsSharedByFourPlatesAndFourStiffeners) {
  Elements(3, 3);
  auto centre = gMesh().Nodes().Item(5);
  int plates = 0, stiffeners = 0;
  for (const auto& p : gMesh().fourNodes())
    for (const auto& n : {p->Node1, p->Node2, p->Node3, p->Node4})
      plates += n == centre;
  for (const auto& s : gMesh().twoNodes())
    for (const auto& n : {s->Node1, s->Node2})
      stiffeners += n == centre;
  EXPECT_EQ(plates, 4);
  EXPECT_EQ(stiffeners, 4);
  centre->xcoord = 0.75f;
  gMesh().fourNodes().GenerateCP();
  EXPECT_FLOAT_EQ(gMesh().fourNodes().Item(1)->CPX, (0 + 0.5f + 0.75f + 0) * 0.25f);
}

} // namespace
} // namespace velk::test
