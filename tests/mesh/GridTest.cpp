// Node grids between four corners and the elements on them; and the girder
// mesh built from its parameters: where the corners go, the flanges on the
// outer rows of stiffeners, the stepped taper and the numbering.
#include "mesh/GirderBuilder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <tuple>
#include <vector>

namespace velk {
namespace {

using Ids = std::vector<Long>;

Ids Of(const fourNode& p) {
  return {p.Node1->ID, p.Node2->ID, p.Node3->ID, p.Node4->ID};
}
Ids Of(const twoNode& s) {
  return {s.Node1->ID, s.Node2->ID};
}

TEST(Grid, NodesBetweenFourCorners) {
  // Columns run straight between the edges of a trapezium.
  Nodes t;
  t.Generate(0, 0, 0, 10, 100, 0, 100, 20, 3, 3);
  const double trapezium[][2] = {{0, 0},   {0, 5},   {0, 10},   {50, 0},  {50, 7.5},
                                 {50, 15}, {100, 0}, {100, 10}, {100, 20}};
  for (long p = 1; p <= 9; ++p) {
    EXPECT_EQ(t.Item(p)->xcoord, trapezium[p - 1][0]) << p;
    EXPECT_EQ(t.Item(p)->ycoord, trapezium[p - 1][1]) << p;
    EXPECT_EQ(t.Item(std::to_string(p))->ID, p);
  }
}

TEST(Grid, ProportionalColumnsFollowTheDepth) {
  Nodes n;
  n.GenerateProportional(0, 0, 0, 10, 100, 0, 100, 20, 5, 3);
  ASSERT_EQ(n.Count(), 15);
  auto X = [&](long column) { return n.Item(column * 3 + 1)->xcoord; };
  // Lengths in geometric progression with ratio cbrt(2), summing to 100.
  const double r = std::cbrt(2.0), a = 100 * (1 - r) / (1 - r * r * r * r);
  for (int i = 0; i < 5; ++i) {
    EXPECT_NEAR(X(i), a * (1 - std::pow(r, i)) / (1 - r), 1e-4) << "column " << i + 1;
    for (int k = 1; k <= 2; ++k)
      EXPECT_EQ(n.Item(i * 3 + 1 + k)->xcoord, X(i));
    // The top stays on the straight edge from 10 to 20; the middle halves it.
    EXPECT_NEAR(n.Item(i * 3 + 3)->ycoord, 10 + X(i) / 10, 1e-4);
    EXPECT_NEAR(n.Item(i * 3 + 2)->ycoord, n.Item(i * 3 + 3)->ycoord / 2, 1e-4);
  }
  EXPECT_NEAR(X(1), 17.10, 0.005);
}

// The order in which the elements are created fixes their numbers.
TEST(Grid, ElementNumberingAndNodeOrder) {
  Nodes nodes;
  nodes.SetNumberNodesX(3);
  nodes.SetNumberNodesY(2);
  nodes.Generate(0, 0, 0, 1, 1, 0, 1, 1, 3, 2);
  fourNodes plates;
  twoNodes stiffeners;
  plates.Generate(nodes);
  stiffeners.Generate(nodes);
  // Plates go up each column of cells, anticlockwise from the lower left.
  ASSERT_EQ(plates.Count(), 2);
  EXPECT_EQ(Of(*plates.Item(1)), (Ids{1, 3, 4, 2}));
  EXPECT_EQ(Of(*plates.Item(2)), (Ids{3, 5, 6, 4}));
  // Stiffeners: the rows from the bottom, then the columns from End 1.
  const std::vector<Ids> expected = {{1, 3}, {3, 5}, {2, 4}, {4, 6}, {1, 2}, {3, 4}, {5, 6}};
  ASSERT_EQ(stiffeners.Count(), 7);
  for (long i = 1; i <= 7; ++i) {
    EXPECT_EQ(Of(*stiffeners.Item(i)), expected[i - 1]) << "stiffener " << i;
    EXPECT_EQ(stiffeners.Item(std::to_string(i))->ID, i);
  }
}

struct Girder {
  Mesh m;
  explicit Girder(const BeamShape& b = {}, Long nx = 14, Long ny = 3) {
    Build_Girder(b, nx, ny, m);
  }
  double X(long node) { return m.Nodes().Item(node)->xcoord; }
  double Y(long node) { return m.Nodes().Item(node)->ycoord; }
  twoNode& S(long i) { return *m.twoNodes().Item(i); }
};

TEST(GirderBuilder, DefaultGirder) {
  Girder g;
  Mesh& m = g.m;
  ASSERT_EQ(std::make_tuple(m.Nodes().NumberNodesX(), m.Nodes().NumberNodesY(), m.Nodes().Count(),
                            m.fourNodes().Count(), m.twoNodes().Count()),
            std::make_tuple(15, 4, 60, 42, 101));
  const double nodes[][3] = {{1, 0, 0},          {2, 0, 5.5},  {4, 0, 16.5},
                             {5, 120.0 / 14, 0}, {57, 120, 0}, {60, 120, 16.5}};
  for (const auto& n : nodes) {
    EXPECT_NEAR(g.X(long(n[0])), n[1], 2e-6) << n[0];
    EXPECT_EQ(g.Y(long(n[0])), n[2]) << n[0];
  }
  // Flanges are the bottom row (1 to 14) and the top row (43 to 56).
  for (long i = 1; i <= 101; ++i) {
    const bool flange = i <= 14 || (i >= 43 && i <= 56);
    EXPECT_EQ(std::make_tuple(g.S(i).width, g.S(i).Thickness, g.S(i).vID),
              std::make_tuple(flange ? 12.0f : 0.0f, flange ? 0.5f : 0.0f,
                              flange ? (i <= 14 ? i : i - 28) : 0))
        << i;
  }
  for (const auto& p : m.fourNodes())
    EXPECT_TRUE(p->Thickness == 0.5f && p->vID == p->ID) << p->ID;
  EXPECT_EQ(m.fourNodes().MaxThickness(), 0.5f);
  EXPECT_EQ(m.twoNodes().MaxvID, 28);
  EXPECT_EQ(m.Nodes().MaxvID, 60); // every node, in order
}

TEST(GirderBuilder, EndSectionsPlaceTheCorners) {
  const double dx = 120.0 / 14; // one column
  const struct {
    BeamShape b;
    std::vector<std::array<double, 3>> nodes; // number, x, y
  } cases[] = {// The offset lowers the whole far section; the depths stay equal, so a
               // proportional grid stays even.
               {{.Offset = 2}, {{57, 120, -2}, {60, 120, 14.5}}},
               {{.Offset = 2, .ProportionalMesh = 1},
                {{5, dx, -1.0 / 7}, {29, 60, -1}, {53, 120 - dx, -2 + 1.0 / 7}}},
               // A deeper far end grows downward from a straight top.
               {{.Web_HE = 32}, {{8, dx, 16.5}, {32, 60, 16.5}, {57, 120, -16}, {60, 120, 16.5}}},
               {{.Top_Flange_T = 0, .Top_Flange_W = 0}, {{4, 0, 16.25}, {60, 120, 16.5}}},
               {{.Bot_Flange_TE = 0.75f}, {{57, 120, -0.125}}},
               {{.Length = -60}, {{60, -60, 16.5}}}};
  for (std::size_t c = 0; c < std::size(cases); ++c) {
    Girder g(cases[c].b);
    for (const auto& [n, x, y] : cases[c].nodes) {
      EXPECT_NEAR(g.X(long(n)), x, 1e-5) << "case " << c << ", node " << n;
      EXPECT_NEAR(g.Y(long(n)), y, 1e-5) << "case " << c << ", node " << n;
    }
  }
}

TEST(GirderBuilder, SectionsTaperLinearlyTakenAtEachElementCentre) {
  Girder web({.Web_TE = 0.25f}, 4, 3);
  const float columns[] = {0.46875f, 0.40625f, 0.34375f, 0.28125f};
  for (long i = 1; i <= 12; ++i)
    EXPECT_EQ(web.m.fourNodes().Item(i)->Thickness, columns[(i - 1) / 3]) << i;
  EXPECT_EQ(web.m.fourNodes().MaxThickness(), 0.46875f);

  // A top flange that ends at End 2: the last element keeps a few
  // thousandths and stays defined.
  Girder ending({.Top_Flange_TE = 0, .Top_Flange_WE = 0});
  for (long i = 43; i <= 56; ++i) {
    const double f = (i - 43 + 0.5) / 14; // the element's centre along the girder
    EXPECT_NEAR(ending.S(i).width, 12 * (1 - f), 3e-6) << i;
    EXPECT_NEAR(ending.S(i).Thickness, 0.5 * (1 - f), 2e-7) << i;
  }
  EXPECT_EQ(ending.m.twoNodes().MaxvID, 28);
}

TEST(GirderBuilder, ProportionalGridGradesTheColumnsByTheDepth) {
  Girder g({.Web_HE = 32, .ProportionalMesh = 1}, 6, 3);
  ASSERT_EQ(g.m.Nodes().Count(), 7 * 4);
  // The last element is to the first as the depths at the two ends.
  EXPECT_NEAR((g.X(25) - g.X(21)) / (g.X(5) - g.X(1)), 32.5 / 16.5, 1e-4);
  EXPECT_EQ(g.X(25), 120);
}

} // namespace
} // namespace velk
