// Supports and loads by rule: which nodes each rule touches, and the
// resultants of its forces against the stress they stand for (force sums,
// moments, stress x thickness x edge length); refusals leave the model as it
// was.
#include "mesh/LoadRules.h"
#include "mesh/GirderBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>
#include <tuple>

namespace velk {
namespace {

BeamShape Plate(Single length, Single depth, Single t) {
  BeamShape b;
  b.Top_Flange_W = b.Top_Flange_T = b.Bot_Flange_W = b.Bot_Flange_T = 0;
  b.Top_Flange_WE = b.Top_Flange_TE = b.Bot_Flange_WE = b.Bot_Flange_TE = 0;
  b.Length = length;
  b.Web_H = b.Web_HE = depth;
  b.Web_T = b.Web_TE = t;
  return b;
}

struct Model {
  BeamShape b;
  Mesh m;
  long NX, NY;
  Model(const BeamShape& shape, Long ex, Long ey) : b(shape), NX(ex + 1), NY(ey + 1) {
    Build_Girder(b, ex, ey, m);
  }
  Nodeb& N(long ix, long iy) { return *Grid_Node(m.Nodes(), ix, iy); }

  // (ix, iy, "XYZ" held) of every node with a restraint.
  std::set<std::tuple<long, long, std::string>> Held() {
    std::set<std::tuple<long, long, std::string>> held;
    for (long i = 0; i < NX; ++i)
      for (long j = 0; j < NY; ++j) {
        const Nodeb& n = N(i, j);
        std::string f = std::string(n.XTDir() ? "X" : "") + (n.YTDir() ? "Y" : "") +
                        (n.ZTDir() ? "Z" : "") + (n.XRDir() || n.YRDir() ? "R" : "");
        EXPECT_EQ(IsTrue(n.BoundaryDefined()), !f.empty()) << i << ", " << j;
        if (!f.empty()) held.insert({i, j, f});
      }
    return held;
  }
  // Sums over the nodes of column ix (or all columns for -1): Fx, Fy, and
  // the moments sum Fx y and sum (x Fy - y Fx).
  struct Sums {
    double fx = 0, fy = 0, fxy = 0, turn = 0;
  };
  Sums Loads(long column = -1) {
    Sums s;
    for (long i = 0; i < NX; ++i)
      for (long j = 0; j < NY; ++j) {
        const Nodeb& n = N(i, j);
        EXPECT_EQ(IsTrue(n.LoadDefined()), std::fabs(n.XLoad) + std::fabs(n.YLoad) > 1e-5f);
        if (column >= 0 && i != column) continue;
        s.fx += n.XLoad;
        s.fy += n.YLoad;
        s.fxy += double(n.XLoad) * n.ycoord;
        s.turn += double(n.xcoord) * n.YLoad - double(n.ycoord) * n.XLoad;
      }
    return s;
  }
  bool Untouched() {
    for (const auto& n : m.Nodes())
      if (n->PropertyDefined() || n->XLoad != 0 || n->YLoad != 0) return false;
    return true;
  }
};

TEST(LoadRules, ForkHoldsBothEndColumnsOutOfPlaneAndTheBottomInPlane) {
  Model g(BeamShape{}, 14, 3);
  Apply_Fork_Supports(g.m, g.b);
  EXPECT_EQ(g.Held(), (std::set<std::tuple<long, long, std::string>>{
                          {0, 0, "XYZ"}, {0, 1, "Z"}, {0, 2, "Z"}, {0, 3, "Z"},
                          {14, 0, "YZ"}, {14, 1, "Z"}, {14, 2, "Z"}, {14, 3, "Z"}}));
  EXPECT_TRUE(g.Loads().fx == 0 && g.Loads().fy == 0);
}

TEST(LoadRules, SimpleSupportsHoldTheEdgesAndOnlyTheRigidBodyInPlane) {
  Model p(Plate(10, 10, 0.1f), 6, 6);
  Apply_Simple_Supports(p.m, p.b);
  const auto held = p.Held();
  EXPECT_EQ(held.size(), 24u);
  int x = 0, y = 0;
  for (const auto& [i, j, f] : held) {
    EXPECT_TRUE(i == 0 || j == 0 || i == 6 || j == 6) << i << ", " << j;
    EXPECT_NE(f.find('Z'), std::string::npos);
    EXPECT_EQ(f.find('R'), std::string::npos);
    x += f.find('X') != std::string::npos;
    y += f.find('Y') != std::string::npos;
  }
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_TRUE(held.count({0, 0, "XYZ"}) && held.count({6, 0, "YZ"}));
}

// The default section: flanges of 6 at y = 0 and 16.5, web 0.5 thick between
// them; by beam theory I = 2 x 6 x 8.25^2 + 0.5 x 16.5^3 / 12 about the
// mid-depth. The moment's forces at each end sum to zero and turn by M; the
// top flange pushes into the girder.
TEST(LoadRules, EndMomentCarriesTheLinearStressOfEachEndSection) {
  const double M = 1000, I = 2 * 6 * 8.25 * 8.25 + 0.5 * 16.5 * 16.5 * 16.5 / 12;
  Model g(BeamShape{}, 14, 3);
  Apply_End_Moment(g.m, g.b, M);
  for (long end : {0L, 14L}) {
    const auto s = g.Loads(end);
    EXPECT_NEAR(s.fx, 0, 1e-4);
    EXPECT_NEAR(s.fxy, end == 0 ? M : -M, 1e-3);
    EXPECT_EQ(s.fy, 0);
  }
  // Top node: the flange's 6 at the flange stress plus the work-equivalent
  // share of the web strip below it (stress falling linearly to y = 11).
  const double top = M * 8.25 / I, below = M * 2.75 / I;
  const double share = 6 * top + 0.5 * 5.5 * (2 * top + below) / 6;
  EXPECT_NEAR(g.N(0, 3).XLoad, share, 1e-4);
  EXPECT_NEAR(g.N(14, 3).XLoad, -share, 1e-4);
  EXPECT_NEAR(g.N(0, 0).XLoad, -share, 1e-4);
  EXPECT_EQ(g.Loads(7).fx, 0); // nothing between the ends
}

// A girder that tapers and drops, with unequal flanges: each end has its own
// section and centroid, and still its forces sum to zero and turn by M (about
// any point, since they sum to zero); the axial load sums to P at each end.
TEST(LoadRules, MomentAndAxialLoadOnUnequalTaperedEnds) {
  BeamShape b;
  b.Top_Flange_W = 8;
  b.Bot_Flange_TE = 1;
  b.Web_HE = 24;
  b.Web_TE = 0.3f;
  b.Offset = 2;
  for (Integer graded : {0, 1}) {
    b.ProportionalMesh = graded;
    Model g(b, 10, 4);
    Apply_End_Moment(g.m, g.b, 500);
    Model a(b, 10, 4);
    Apply_Axial_Load(a.m, a.b, 80);
    for (long end : {0L, 10L}) {
      const double sign = end == 0 ? 1 : -1;
      EXPECT_NEAR(g.Loads(end).fx, 0, 1e-4) << end;
      EXPECT_NEAR(g.Loads(end).fxy, sign * 500, 2e-3) << end;
      EXPECT_NEAR(a.Loads(end).fx, sign * 80, 1e-4) << end;
    }
  }
  // Uniform compression: the bottom flange node of End 1 takes P / A over the
  // flange (6) and half the web strip above it (0.5 x 4.125 / 2).
  Model u(BeamShape{}, 4, 4);
  Apply_Axial_Load(u.m, u.b, 100);
  const double A = 6 + 6 + 0.5 * 16.5;
  EXPECT_NEAR(u.N(0, 0).XLoad, 100 / A * (6 + 0.5 * 4.125 / 2), 1e-4);
  EXPECT_NEAR(u.N(0, 2).XLoad, 100 / A * 0.5 * 4.125, 1e-4);
}

TEST(LoadRules, PointAndLineLoadsOnTheTopRow) {
  Model g(BeamShape{}, 14, 3);
  Apply_Point_Load(g.m, g.b, 20);
  EXPECT_EQ(g.N(7, 3).YLoad, -20);
  EXPECT_EQ(g.Loads().fy, -20);
  Apply_Line_Load(g.m, g.b, 0.5);
  const auto s = g.Loads();
  EXPECT_NEAR(s.fy, -20 - 0.5 * 120, 1e-4);
  EXPECT_NEAR(s.turn, -20 * 60 - 0.5 * 120 * 60, 1e-2); // both centred at mid-length
  EXPECT_NEAR(g.N(0, 3).YLoad, -0.5 * 120 / 14 / 2, 1e-5);
  EXPECT_NEAR(g.N(3, 3).YLoad, -0.5 * 120 / 14, 1e-5);
  EXPECT_EQ(g.N(3, 2).YLoad, 0);
}

// Uniform sigma_x on the 10 x 10 plate: S t H at each loaded edge, inward;
// uniform shear: T t along every edge, the four summing to no force and no
// moment.
TEST(LoadRules, EdgeStressAndShearResultants) {
  const double t = 0.1, S = 2, T = 3;
  Model p(Plate(10, 10, 0.1f), 6, 6);
  Apply_Edge_Compression(p.m, p.b, S);
  EXPECT_NEAR(p.Loads(0).fx, S * t * 10, 1e-5);
  EXPECT_NEAR(p.Loads(6).fx, -S * t * 10, 1e-5);
  EXPECT_NEAR(p.Loads(3).fx, 0, 1e-6);
  EXPECT_NEAR(p.Loads().fy, 0, 1e-6);
  EXPECT_NEAR(p.N(6, 0).XLoad, -S * t * 10 / 6 / 2, 1e-6);

  Model q(Plate(10, 10, 0.1f), 6, 6);
  Apply_Edge_Shear(q.m, q.b, T);
  EXPECT_NEAR(q.Loads(6).fy, T * t * 10, 1e-5);
  EXPECT_NEAR(q.Loads(0).fy, -T * t * 10, 1e-5);
  double top = 0;
  for (long i = 0; i < 7; ++i)
    top += q.N(i, 6).XLoad;
  EXPECT_NEAR(top, T * t * 10, 1e-5);
  EXPECT_NEAR(q.Loads().fx, 0, 1e-5);
  EXPECT_NEAR(q.Loads().turn, 0, 1e-4);
  // A corner takes the half shares of both its edges.
  EXPECT_NEAR(q.N(0, 0).XLoad, -T * t * 10 / 6 / 2, 1e-6);
  EXPECT_NEAR(q.N(0, 0).YLoad, -T * t * 10 / 6 / 2, 1e-6);

  // A plate thinning along its length: each end edge at its own thickness.
  BeamShape b = Plate(10, 10, 0.2f);
  b.Web_TE = 0.1f;
  Model r(b, 5, 2);
  Apply_Edge_Compression(r.m, r.b, 1);
  EXPECT_NEAR(r.Loads(0).fx, 0.19 * 10, 1e-5); // thickness at the first cells' centre
  EXPECT_NEAR(r.Loads(5).fx, -0.11 * 10, 1e-5);
}

TEST(LoadRules, RefusalsLeaveTheModelUntouched) {
  Model g(BeamShape{}, 13, 3);
  EXPECT_THROW(Apply_Simple_Supports(g.m, g.b), RuleRefused);
  EXPECT_THROW(Apply_Edge_Compression(g.m, g.b, 1), RuleRefused);
  EXPECT_THROW(Apply_Edge_Shear(g.m, g.b, 1), RuleRefused);
  EXPECT_THROW(Apply_Point_Load(g.m, g.b, 1), RuleRefused); // 13 elements: no middle node
  EXPECT_TRUE(g.Untouched());

  // End 2's section taken away: the moment has nothing to act on.
  for (long j = 1; j <= 3; ++j) {
    fourNode& plate = *g.m.fourNodes().Item(12 * 3 + j);
    plate.Thickness = 0;
    plate.UpdatePropertyDefined();
  }
  for (long s : {13L, 13L * 4}) {
    g.m.twoNodes().Item(s)->width = 0;
    g.m.twoNodes().Item(s)->UpdatePropertyDefined();
  }
  EXPECT_THROW(Apply_End_Moment(g.m, g.b, 1), RuleRefused);
  EXPECT_THROW(Apply_Axial_Load(g.m, g.b, 1), RuleRefused);
  EXPECT_TRUE(g.Untouched());

  Mesh empty;
  BeamShape b;
  EXPECT_THROW(Apply_Fork_Supports(empty, b), RuleRefused);
  EXPECT_THROW(Apply_Line_Load(empty, b, 1), RuleRefused);
}

} // namespace
} // namespace velk
