// What makes a node, a plate and a stiffener carry a property, and the derived
// values over the collections: thickness maximum, centre points, stress range.
#include "common/Fault.h"
#include "model/Nodes.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace velk {
namespace {

struct NodeCase {
  const char* name;
  std::function<void(Nodeb&)> set;
  bool property, boundary, brace, load;
};

class NodePropertyTest : public ::testing::TestWithParam<NodeCase> {};

TEST_P(NodePropertyTest, FlagsFollowTheFields) {
  Nodeb n;
  GetParam().set(n);
  n.UpdatePropertyDefined();
  EXPECT_EQ(IsTrue(n.PropertyDefined()), GetParam().property);
  EXPECT_EQ(IsTrue(n.BoundaryDefined()), GetParam().boundary);
  EXPECT_EQ(IsTrue(n.BraceDefined()), GetParam().brace);
  EXPECT_EQ(IsTrue(n.LoadDefined()), GetParam().load);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, NodePropertyTest,
    ::testing::Values(
        NodeCase{"Nothing", [](Nodeb&) {}, false, false, false, false},
        NodeCase{"OnlyXT", [](Nodeb& n) { n.SetXTDir(1); }, true, true, false, false},
        NodeCase{"OnlyYR", [](Nodeb& n) { n.SetYRDir(-1); }, true, true, false, false},
        NodeCase{"SpringsCancel",
                 [](Nodeb& n) {
                   n.xtstiff = 5;
                   n.YTStiff = -5;
                 },
                 false, false, false, false},
        NodeCase{"SpringJustAboveTolerance", [](Nodeb& n) { n.ZTStiff = 0.00002f; }, true, false,
                 true, false},
        NodeCase{"SpringAtTolerance", [](Nodeb& n) { n.YRStiff = 0.00001f; }, false, false,
                 false, false},
        NodeCase{"NegativeSpringSum", [](Nodeb& n) { n.XRStiff = -3; }, false, false, false,
                 false},
        NodeCase{"LoadAtTolerance", [](Nodeb& n) { n.XLoad = 0.00001f; }, false, false, false,
                 false},
        NodeCase{"NegativeLoad", [](Nodeb& n) { n.XLoad = -3; }, true, false, false, true},
        NodeCase{"LoadsOfOppositeSignsAdd",
                 [](Nodeb& n) {
                   n.XLoad = 0.000006f;
                   n.YLoad = -0.000006f;
                 },
                 true, false, false, true},
        NodeCase{"Everything",
                 [](Nodeb& n) {
                   n.SetZTDir(1);
                   n.xtstiff = 2;
                   n.YLoad = 1;
                 },
                 true, true, true, true}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(NodeProperty, RestraintFlagsStoreMinusOneForAnyNonZero) {
  Nodeb n;
  n.SetXTDir(5);
  n.SetYTDir(1);
  n.SetZTDir(-7);
  EXPECT_EQ(n.XTDir(), vbTrue);
  EXPECT_EQ(n.YTDir(), vbTrue);
  EXPECT_EQ(n.ZTDir(), vbTrue);
  n.SetXTDir(0);
  EXPECT_EQ(n.XTDir(), vbFalse);
}

TEST(NodeProperty, FlagsKeepNoMemoryOfEarlierState) {
  Nodeb n;
  n.SetXTDir(1);
  n.xtstiff = 4;
  n.XLoad = 2;
  n.UpdatePropertyDefined();
  ASSERT_TRUE(IsTrue(n.PropertyDefined()));
  n.SetXTDir(0);
  n.xtstiff = 0;
  n.XLoad = 0;
  n.UpdatePropertyDefined();
  EXPECT_FALSE(IsTrue(n.PropertyDefined()));
  EXPECT_FALSE(IsTrue(n.BoundaryDefined()));
  EXPECT_FALSE(IsTrue(n.BraceDefined()));
  EXPECT_FALSE(IsTrue(n.LoadDefined()));
}

TEST(ElementProperty, PlateNeedsAThicknessAboveTheTolerance) {
  const std::pair<float, bool> cases[] = {
      {0.00001f, false}, {0.0001f, true}, {0.0f, false}, {-1.0f, false}, {0.5f, true}};
  for (auto [t, defined] : cases) {
    fourNode p;
    p.PropertyDefined = defined ? vbFalse : vbTrue; // the opposite, to see it change
    p.Thickness = t;
    p.UpdatePropertyDefined();
    EXPECT_EQ(IsTrue(p.PropertyDefined), defined) << t;
  }
}

TEST(ElementProperty, StiffenerNeedsBothThicknessAndWidth) {
  struct Case {
    float thickness, width;
    bool defined;
  };
  const Case cases[] = {{1, 0, false},        {-1, 1, false},       {1, -1, false},
                        {0.00001f, 1, false}, {1, 0.00001f, false}, {0.0001f, 0.0001f, true},
                        {0.5f, 12, true}};
  for (const auto& c : cases) {
    twoNode s;
    s.PropertyDefined = c.defined ? vbFalse : vbTrue;
    s.Thickness = c.thickness;
    s.width = c.width;
    s.UpdatePropertyDefined();
    EXPECT_EQ(IsTrue(s.PropertyDefined), c.defined) << c.thickness << " x " << c.width;
  }
}

TEST(ElementProperty, MaxThicknessCountsUndefinedPlatesToo) {
  fourNodes plates;
  auto n = std::make_shared<Nodeb>();
  for (float t : {0.25f, 0.75f, 0.5f}) {
    auto p = plates.Add(n, n, n, n, plates.Count() + 1, "");
    p->Thickness = t;
    p->UpdatePropertyDefined();
  }
  plates.Item(2)->PropertyDefined = vbFalse;
  plates.UpdateMaxThickness();
  EXPECT_EQ(plates.MaxThickness(), 0.75f);

  // Thinner plates later: the maximum starts afresh from 0.
  for (const auto& p : plates) p->Thickness = 0;
  plates.UpdateMaxThickness();
  EXPECT_EQ(plates.MaxThickness(), 0.0f);
  plates.Item(3)->Thickness = -2;
  plates.UpdateMaxThickness();
  EXPECT_EQ(plates.MaxThickness(), 0.0f);
}

TEST(ElementProperty, CentrePointsOfPlateAndStiffener) {
  Nodes nodes;
  auto a = nodes.Add(0, 0, 1, "1");
  auto b = nodes.Add(1, 0, 2, "2");
  auto c = nodes.Add(1, 1, 3, "3");
  auto d = nodes.Add(0, 1, 4, "4");
  fourNodes plates;
  twoNodes stiffeners;
  auto p = plates.Add(a, b, c, d, 1, "1");
  auto s = stiffeners.Add(b, c, 1, "1");
  plates.GenerateCP();
  stiffeners.GenerateCP();
  EXPECT_EQ(p->CPX, 0.5f);
  EXPECT_EQ(p->CPY, 0.5f);
  EXPECT_EQ(s->CPX, 1.0f);
  EXPECT_EQ(s->CPY, 0.5f);

  // Centre points are stored: moving a node does not move them until the next run.
  c->xcoord = 3;
  EXPECT_EQ(p->CPX, 0.5f);
  plates.GenerateCP();
  stiffeners.GenerateCP();
  EXPECT_EQ(p->CPX, 1.0f);
  EXPECT_EQ(s->CPX, 2.0f);
}

TEST(ElementProperty, AddStartsWithNoSection) {
  auto n = std::make_shared<Nodeb>();
  twoNodes stiffeners;
  auto s = stiffeners.Add(n, n, 7, "7");
  EXPECT_EQ(s->ID, 7);
  EXPECT_EQ(s->Thickness, 0.0f);
  EXPECT_EQ(s->width, 0.0f);
  EXPECT_EQ(s->Node1, n);
  EXPECT_EQ(stiffeners.Item("7"), s);
}

TEST(StressRange, NodesOverConnectedNodesOnly) {
  Nodes nodes;
  auto a = nodes.Add(0, 0, 1, "1");
  auto b = nodes.Add(0, 0, 2, "2");
  auto c = nodes.Add(0, 0, 3, "3");
  a->vID = 1;
  a->Sx = 5;
  a->Sy = -1;
  a->SXY = 2;
  a->Mises = 9;
  b->vID = 0; // not connected: its huge values do not count
  b->Sx = 100;
  b->Sy = -100;
  c->vID = 2;
  c->Sx = -3;
  c->Sy = 4;
  c->SXY = 2;
  c->Mises = 1;

  Single mx = 0, mn = 0;
  nodes.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_EQ(mx, 5.0f);
  EXPECT_EQ(mn, -3.0f);
  nodes.Calculate_MaxMinStress(mx, mn, 1);
  EXPECT_EQ(mx, 4.0f);
  EXPECT_EQ(mn, -1.0f);
  nodes.Calculate_MaxMinStress(mx, mn, 2);
  EXPECT_EQ(mx, 2.0f);
  EXPECT_EQ(mn, 2.0f);
  nodes.Calculate_MaxMinStress(mx, mn, 3);
  EXPECT_EQ(mx, 9.0f);
  EXPECT_EQ(mn, 1.0f);
  for (Integer opt : {4, -1}) {
    nodes.Calculate_MaxMinStress(mx, mn, opt);
    EXPECT_EQ(mx, -1E+37f);
    EXPECT_EQ(mn, 1E+37f);
  }
}

TEST(StressRange, OneConnectedNodeIsBothEnds) {
  Nodes nodes;
  auto a = nodes.Add(0, 0, 1, "1");
  a->vID = 1;
  a->Sx = 5;
  Single mx = 0, mn = 0;
  nodes.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_EQ(mx, 5.0f);
  EXPECT_EQ(mn, 5.0f);
  a->vID = 0;
  nodes.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_EQ(mx, -1E+37f);
  EXPECT_EQ(mn, 1E+37f);
}

TEST(StressRange, StiffenersHaveOnlyTheAxialStress) {
  auto n = std::make_shared<Nodeb>();
  twoNodes stiffeners;
  const float stress[] = {3, -8, 50, 1};
  const Long vid[] = {1, 2, 0, 3};
  for (int i = 0; i < 4; ++i) {
    auto s = stiffeners.Add(n, n, i + 1, "");
    s->Stress = stress[i];
    s->vID = vid[i];
  }
  Single mx = 0, mn = 0;
  stiffeners.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_EQ(mx, 3.0f);
  EXPECT_EQ(mn, -8.0f);
  stiffeners.Calculate_MaxMinStress(mx, mn, 1);
  EXPECT_EQ(mx, -1E+37f);
  EXPECT_EQ(mn, 1E+37f);
}

// ---- the collections ----

template <class Fn> int FaultOf(Fn&& fn) {
  try {
    fn();
  } catch (const Fault& f) {
    return f.number();
  }
  return 0;
}

TEST(Collections, OneBasedPositionsAndKeys) {
  Nodes nodes;
  auto a = nodes.Add(1, 2, 1, "1");
  auto b = nodes.Add(3, 4, 2, "2");
  auto keyless = nodes.Add(5, 6, 3, "");
  EXPECT_EQ(nodes.Count(), 3);
  EXPECT_EQ(nodes.Item(1), a);
  EXPECT_EQ(nodes.Item(2), b);
  EXPECT_EQ(nodes.Item(3), keyless);
  EXPECT_EQ(nodes.Item("2"), b);
  EXPECT_EQ(a->xcoord, 1.0f);
  EXPECT_EQ(a->ycoord, 2.0f);
  EXPECT_EQ(b->ID, 2);

  EXPECT_EQ(FaultOf([&] { nodes.Item(0); }), errSubscript);
  EXPECT_EQ(FaultOf([&] { nodes.Item(4); }), errSubscript);
  EXPECT_EQ(FaultOf([&] { nodes.Item(-1); }), errSubscript);
  EXPECT_EQ(FaultOf([&] { nodes.Item("3"); }), errInvalidCall); // added without a key
  EXPECT_EQ(FaultOf([&] { nodes.Item(""); }), errInvalidCall);
  EXPECT_EQ(FaultOf([&] { nodes.Add(0, 0, 4, "1"); }), errDuplicateKey);
  EXPECT_EQ(nodes.Count(), 3); // the refused node is not there

  long position = 0;
  for (const auto& n : nodes) EXPECT_EQ(n->ID, ++position);
}

TEST(Collections, RemoveDropsTheEntryAndItsKey) {
  auto n = std::make_shared<Nodeb>();
  fourNodes plates;
  auto p1 = plates.Add(n, n, n, n, 1, "1");
  auto p2 = plates.Add(n, n, n, n, 2, "2");
  plates.Remove(1);
  EXPECT_EQ(plates.Count(), 1);
  EXPECT_EQ(plates.Item(1), p2);
  EXPECT_EQ(FaultOf([&] { plates.Item("1"); }), errInvalidCall);
  EXPECT_EQ(FaultOf([&] { plates.Remove(5); }), errSubscript);
}

} // namespace
} // namespace velk
