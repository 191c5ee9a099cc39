// What makes a node, a plate and a stiffener carry a property, the derived
// values over the collections, and the collections themselves.
#include "common/Fault.h"
#include "model/Nodes.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"

#include <gtest/gtest.h>

#include "FaultOf.h"

#include <functional>
#include <memory>

namespace velk {
namespace {

using test::FaultOf;

TEST(Property, NodeFlagsFollowTheFields) {
  struct Case {
    const char* name;
    std::function<void(Nodeb&)> set;
    bool property, boundary, brace, load;
  };
  const Case cases[] = {
      {"nothing", [](Nodeb&) {}, false, false, false, false},
      {"only XT", [](Nodeb& n) { n.SetXTDir(5); }, true, true, false, false},
      {"only YR", [](Nodeb& n) { n.SetYRDir(-1); }, true, true, false, false},
      {"springs cancel", [](Nodeb& n) { n.xtstiff = 5, n.YTStiff = -5; }, false, false, false,
       false},
      {"spring above tolerance", [](Nodeb& n) { n.ZTStiff = 0.00002f; }, true, false, true, false},
      {"spring at tolerance", [](Nodeb& n) { n.YRStiff = 0.00001f; }, false, false, false, false},
      {"negative spring sum", [](Nodeb& n) { n.XRStiff = -3; }, false, false, false, false},
      {"load at tolerance", [](Nodeb& n) { n.XLoad = 0.00001f; }, false, false, false, false},
      {"negative load", [](Nodeb& n) { n.XLoad = -3; }, true, false, false, true},
      {"loads of opposite signs add", [](Nodeb& n) { n.XLoad = 0.000006f, n.YLoad = -0.000006f; },
       true, false, false, true},
      {"everything", [](Nodeb& n) { n.SetZTDir(-7), n.xtstiff = 2, n.YLoad = 1; }, true, true, true,
       true}};
  for (const auto& c : cases) {
    Nodeb n;
    c.set(n);
    n.UpdatePropertyDefined();
    EXPECT_EQ(IsTrue(n.PropertyDefined()), c.property) << c.name;
    EXPECT_EQ(IsTrue(n.BoundaryDefined()), c.boundary) << c.name;
    EXPECT_EQ(IsTrue(n.BraceDefined()), c.brace) << c.name;
    EXPECT_EQ(IsTrue(n.LoadDefined()), c.load) << c.name;
  }

  // The flags keep no memory of an earlier state.
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
  EXPECT_FALSE(IsTrue(n.PropertyDefined()) || IsTrue(n.BoundaryDefined()) ||
               IsTrue(n.BraceDefined()) || IsTrue(n.LoadDefined()));
}

TEST(Property, PlateNeedsAThicknessAndStiffenerAThicknessAndAWidth) {
  for (auto [t, defined] :
       {std::pair{0.00001f, false}, {0.0001f, true}, {0.0f, false}, {-1.0f, false}, {0.5f, true}}) {
    fourNode p;
    p.PropertyDefined = defined ? vbFalse : vbTrue; // the opposite, to see it change
    p.Thickness = t;
    p.UpdatePropertyDefined();
    EXPECT_EQ(IsTrue(p.PropertyDefined), defined) << t;
  }
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

TEST(Property, MaxThicknessCountsUndefinedPlatesAndStartsFromZero) {
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
  for (const auto& p : plates)
    p->Thickness = 0;
  plates.Item(3)->Thickness = -2;
  plates.UpdateMaxThickness();
  EXPECT_EQ(plates.MaxThickness(), 0.0f);
}

TEST(Property, CentrePointsAreStoredUntilTheNextRun) {
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
  c->xcoord = 3;
  EXPECT_EQ(p->CPX, 0.5f);
  plates.GenerateCP();
  stiffeners.GenerateCP();
  EXPECT_EQ(p->CPX, 1.0f);
  EXPECT_EQ(s->CPX, 2.0f);
}

TEST(Property, StressRangeOverConnectedEntriesOnly) {
  Nodes nodes;
  auto Node = [&](Long vID, Single sx, Single sy, Single sxy, Single mises) {
    auto n = nodes.Add(0, 0, nodes.Count() + 1, "");
    n->vID = vID, n->Sx = sx, n->Sy = sy, n->SXY = sxy, n->Mises = mises;
    return n;
  };
  auto a = Node(1, 5, -1, 2, 9);
  Node(0, 100, -100, 50, 99); // not connected: its huge values do not count
  Node(2, -3, 4, 2, 1);
  const Single expected[4][2] = {{5, -3}, {4, -1}, {2, 2}, {9, 1}};
  Single mx = 0, mn = 0;
  for (Integer opt = 0; opt < 4; ++opt) {
    nodes.Calculate_MaxMinStress(mx, mn, opt);
    EXPECT_EQ(mx, expected[opt][0]) << opt;
    EXPECT_EQ(mn, expected[opt][1]) << opt;
  }
  for (Integer opt : {4, -1}) {
    nodes.Calculate_MaxMinStress(mx, mn, opt);
    EXPECT_EQ(mx, -1E+37f);
    EXPECT_EQ(mn, 1E+37f);
  }
  nodes.Item(3)->vID = 0; // one connected node is both ends
  nodes.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_EQ(mx, 5.0f);
  EXPECT_EQ(mn, 5.0f);
  a->vID = 0;
  nodes.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_EQ(mx, -1E+37f);
  EXPECT_EQ(mn, 1E+37f);

  // Stiffeners have only the axial stress.
  auto n = std::make_shared<Nodeb>();
  twoNodes stiffeners;
  const float stress[] = {3, -8, 50, 1};
  const Long vid[] = {1, 2, 0, 3};
  for (int i = 0; i < 4; ++i) {
    auto s = stiffeners.Add(n, n, i + 1, "");
    s->Stress = stress[i];
    s->vID = vid[i];
  }
  stiffeners.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_EQ(mx, 3.0f);
  EXPECT_EQ(mn, -8.0f);
  stiffeners.Calculate_MaxMinStress(mx, mn, 1);
  EXPECT_EQ(mx, -1E+37f);
  EXPECT_EQ(mn, 1E+37f);
}

TEST(Property, CollectionsHaveOneBasedPositionsKeysAndFaults) {
  Nodes nodes;
  auto a = nodes.Add(1, 2, 1, "1");
  auto b = nodes.Add(3, 4, 2, "2");
  auto keyless = nodes.Add(5, 6, 3, "");
  EXPECT_EQ(nodes.Count(), 3);
  EXPECT_EQ(nodes.Item(1), a);
  EXPECT_EQ(nodes.Item(3), keyless);
  EXPECT_EQ(nodes.Item("2"), b);
  EXPECT_EQ(b->xcoord, 3.0f);
  EXPECT_EQ(b->ycoord, 4.0f);
  EXPECT_EQ(b->ID, 2);
  for (long bad : {0, 4, -1})
    EXPECT_EQ(FaultOf([&] { nodes.Item(bad); }), errSubscript) << bad;
  EXPECT_EQ(FaultOf([&] { nodes.Item("3"); }), errInvalidCall); // added without a key
  EXPECT_EQ(FaultOf([&] { nodes.Item(""); }), errInvalidCall);
  EXPECT_EQ(FaultOf([&] { nodes.Add(0, 0, 4, "1"); }), errDuplicateKey);
  EXPECT_EQ(nodes.Count(), 3); // the refused node is not there
  long position = 0;
  for (const auto& n : nodes)
    EXPECT_EQ(n->ID, ++position);

  // Remove drops the entry and its key.
  auto n = std::make_shared<Nodeb>();
  fourNodes plates;
  plates.Add(n, n, n, n, 1, "1");
  auto p2 = plates.Add(n, n, n, n, 2, "2");
  plates.Remove(1);
  EXPECT_EQ(plates.Count(), 1);
  EXPECT_EQ(plates.Item(1), p2);
  EXPECT_EQ(FaultOf([&] { plates.Item("1"); }), errInvalidCall);
  EXPECT_EQ(FaultOf([&] { plates.Remove(5); }), errSubscript);
}

} // namespace
} // namespace velk
