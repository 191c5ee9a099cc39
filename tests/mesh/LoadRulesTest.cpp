// Supports and loads by rule: the nodes each rule touches, and the resultants
// of its forces against the stress they stand for; refusals touch nothing.
#include "mesh/LoadRules.h"
#include "mesh/GirderBuilder.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace velk {
namespace {

// A 10 x 10 plate without flanges, thickness t at End 1 and tEnd2 at End 2.
BeamShape Plate(Single t = 0.1f, Single tEnd2 = 0.1f) {
  return BeamShape{0, 0, 10, 0, 0, 10, t, 0, 0, 0, 0, 10, tEnd2};
}

struct Model {
  BeamShape b;
  Mesh m;
  Model(const BeamShape& shape, Long ex, Long ey) : b(shape) { Build_Girder(b, ex, ey, m); }
  Nodeb& N(long id) { return *m.Nodes().Item(id); }
  std::string Held() { // "id:XYZ " of every restrained node
    std::string s;
    for (const auto& n : m.Nodes())
      if (n->BoundaryDefined() && !n->XRDir() && !n->YRDir())
        s += std::to_string(n->ID) + ":" + (n->XTDir() ? "X" : "") + (n->YTDir() ? "Y" : "") +
             (n->ZTDir() ? "Z " : " ");
    return s;
  }
  // Over the nodes with x in [x0, x1]: sum Fx, sum Fy, sum Fx y, sum x Fy - y Fx.
  std::array<double, 4> Sums(double x0 = -1e9, double x1 = 1e9) {
    std::array<double, 4> s{};
    for (const auto& n : m.Nodes()) {
      EXPECT_EQ(IsTrue(n->LoadDefined()), n->XLoad != 0 || n->YLoad != 0) << n->ID;
      if (n->xcoord >= x0 && n->xcoord <= x1)
        s = {s[0] + n->XLoad, s[1] + n->YLoad, s[2] + double(n->XLoad) * n->ycoord,
             s[3] + double(n->xcoord) * n->YLoad - double(n->ycoord) * n->XLoad};
    }
    return s;
  }
};

TEST(LoadRules, SupportsHoldTheirNodesAndNoRotation) {
  Model g({}, 14, 3), p(Plate(), 2, 2);
  Apply_Fork_Supports(g.m, g.b);
  EXPECT_EQ(g.Held(), "1:XYZ 2:Z 3:Z 4:Z 57:YZ 58:Z 59:Z 60:Z ");
  Apply_Simple_Supports(p.m, p.b);
  EXPECT_EQ(p.Held(), "1:XYZ 2:Z 3:Z 4:Z 6:Z 7:YZ 8:Z 9:Z ");
}

// Default section: flanges of 6 at y = 0 and 16.5, web 0.5; by beam theory
// I = 2 x 6 x 8.25^2 + 0.5 x 16.5^3 / 12. The top node takes the flange
// stress on 6 and the work-equivalent share of the web strip below it.
TEST(LoadRules, EndMomentAndAxialLoadAreTheSectionsStresses) {
  const double M = 1000, I = 2 * 6 * 8.25 * 8.25 + 0.5 * 16.5 * 16.5 * 16.5 / 12;
  const double top = M * 8.25 / I, share = 6 * top + 0.5 * 5.5 * (2 * top + M * 2.75 / I) / 6;
  Model g({}, 14, 3);
  Apply_End_Moment(g.m, g.b, M);
  EXPECT_NEAR(g.N(4).XLoad, share, 1e-4); // End 1's top pushes in: compression
  EXPECT_NEAR(g.N(60).XLoad, -share, 1e-4);
  EXPECT_NEAR(g.N(1).XLoad, -share, 1e-4);
  // Tapered, dropped, unequal flanges, graded: each end its own section, its
  // forces summing to 0 and turning by M; the axial load summing to P.
  BeamShape b;
  b.Top_Flange_W = 8, b.Bot_Flange_TE = 1, b.Web_HE = 24, b.Web_TE = 0.3f, b.Offset = 2;
  b.ProportionalMesh = 1;
  Model t(b, 10, 4), a(b, 10, 4);
  Apply_End_Moment(t.m, b, 500);
  Apply_Axial_Load(a.m, b, 80);
  for (double sign : {1, -1}) {
    const double x0 = sign > 0 ? 0 : 120, x1 = sign > 0 ? 0 : 120;
    EXPECT_NEAR(t.Sums(x0, x1)[0], 0, 1e-4);
    EXPECT_NEAR(t.Sums(x0, x1)[2], sign * 500, 2e-3);
    EXPECT_NEAR(a.Sums(x0, x1)[0], sign * 80, 1e-4);
  }
}

TEST(LoadRules, PointLineAndEdgeLoadResultants) {
  Model g({}, 14, 3);
  Apply_Point_Load(g.m, g.b, 20);
  EXPECT_EQ(g.N(32).YLoad, -20); // column 7, top
  Apply_Line_Load(g.m, g.b, 0.5);
  EXPECT_NEAR(g.Sums()[1], -20 - 0.5 * 120, 1e-4);
  EXPECT_NEAR(g.Sums()[3], (-20 - 0.5 * 120) * 60, 1e-2);
  EXPECT_NEAR(g.N(4).YLoad, -0.5 * 120 / 14 / 2, 1e-5);
  // Stress x thickness x edge length 10: sigma_x inward on both ends, each at
  // its cells' thickness (0.19 and 0.11 on a plate thinning from 0.2 to 0.1);
  // shear along all four edges with no net force or moment.
  Model p(Plate(0.2f, 0.1f), 5, 2), q(Plate(), 5, 2);
  Apply_Edge_Compression(p.m, p.b, 1);
  EXPECT_NEAR(p.Sums(0, 0)[0], 0.19 * 10, 1e-5);
  EXPECT_NEAR(p.Sums(10, 10)[0], -0.11 * 10, 1e-5);
  Apply_Edge_Shear(q.m, q.b, 3);
  EXPECT_NEAR(q.Sums(10, 10)[1], 3 * 0.1 * 10, 1e-5);
  EXPECT_NEAR(q.Sums(0, 0)[1], -3 * 0.1 * 10, 1e-5);
  EXPECT_NEAR(q.Sums()[0], 0, 1e-5);
  EXPECT_NEAR(q.Sums()[3], 0, 1e-4); // the ends' couple met by the top and bottom
}

// The new placements: a linear edge stress carries its own resultant and
// moment (t h (S1 + S2) / 2 and, about the bottom edge, t h^2 (S1 / 6 + S2 / 3)),
// a patch carries F with its centre at x, and a point load goes to the flange
// asked for, all given by name as the batch tool and the dialog give them.
TEST(LoadRules, LinearEdgeStressPatchAndPlacedPointLoad) {
  Model p(Plate(), 4, 6);
  Apply_Rule(p.m, p.b, "--edge-sx", "3:-1");
  const auto end2 = p.Sums(10, 10);
  EXPECT_NEAR(end2[0], -0.1 * 10 * (3 - 1) / 2.0, 1e-5);
  EXPECT_NEAR(end2[2], -0.1 * 100 * (3 / 6.0 - 1 / 3.0), 1e-4);
  EXPECT_NEAR(p.Sums(0, 0)[0], -end2[0], 1e-5);

  Model g({}, 12, 3); // 10 long elements
  Apply_Rule(g.m, g.b, "--patch", "6:15:35");
  const auto all = g.Sums();
  EXPECT_NEAR(all[1], -6, 1e-5);
  EXPECT_NEAR(all[3], -6 * 35, 1e-3);
  // 27.5 to 42.5: the node at 20 takes q 2.5^2 / 2 / 10 of the 2.5 beside it
  const double outer = 6 / 15.0 * 2.5 * 2.5 / 20;
  EXPECT_NEAR(g.Sums(15, 25)[1], -outer, 1e-6);
  EXPECT_NEAR(g.Sums(30, 40)[1], -(6 - 2 * outer), 1e-5);
  EXPECT_EQ(g.Sums(0, 10)[1], 0);
  Apply_Rule(g.m, g.b, "--point", "2:50:bottom");
  EXPECT_EQ(Grid_Node(g.m.Nodes(), 5, 0)->YLoad, -2);
  try {
    Apply_Rule(g.m, g.b, "--point", "1:55");
    ADD_FAILURE();
  } catch (const RuleRefused& e) {
    EXPECT_STREQ(e.what(), "a point load at x = 55 needs a node there; the nearest are at 50 and 60");
  }
  EXPECT_THROW(Apply_Rule(g.m, g.b, "--patch", "1:40:110"), RuleRefused); // reaches past 120
  for (const char* bad : {"--point=1:2:side", "--point=1::", "--edge-sx=1:2:3", "--patch=1",
                          "--patch=1:a", "--moment=1:2", "--supports=pinned"}) {
    const std::string rule = bad, option = rule.substr(0, rule.find('='));
    EXPECT_FALSE(Rule_Value_Problem(option, rule.substr(rule.find('=') + 1)).empty()) << bad;
  }
  for (const char* good : {"--point=1", "--point=1:20", "--point=1::bottom", "--edge-sx=-2:2",
                           "--patch=1:2", "--supports=simple"}) {
    const std::string rule = good, option = rule.substr(0, rule.find('='));
    EXPECT_EQ(Rule_Value_Problem(option, rule.substr(rule.find('=') + 1)), "") << good;
  }
}

TEST(LoadRules, RefusalsTouchNothing) {
  Model g({}, 13, 3);
  EXPECT_THROW(Apply_Simple_Supports(g.m, g.b), RuleRefused);
  EXPECT_THROW(Apply_Edge_Shear(g.m, g.b, 1), RuleRefused);
  EXPECT_THROW(Apply_Point_Load(g.m, g.b, 1), RuleRefused); // no middle node
  for (long i : {13L, 52L})                                 // End 2 without flanges or web
    g.m.twoNodes().Item(i)->width = 0, g.m.twoNodes().Item(i)->UpdatePropertyDefined();
  for (long i = 37; i <= 39; ++i)
    g.m.fourNodes().Item(i)->Thickness = 0, g.m.fourNodes().Item(i)->UpdatePropertyDefined();
  EXPECT_THROW(Apply_End_Moment(g.m, g.b, 1), RuleRefused);
  EXPECT_EQ(g.Held() + std::to_string(g.Sums()[0] + g.Sums()[1]), "0.000000");
  Mesh empty;
  EXPECT_THROW(Apply_Fork_Supports(empty, g.b), RuleRefused);
}

} // namespace
} // namespace velk
