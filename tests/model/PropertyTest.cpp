// What makes a node, a plate and a stiffener carry a property, the values
// derived over the collections, the collections themselves, and the compact
// numbering of what exists with its backward map.
#include "common/Fault.h"
#include "model/Mesh.h"

#include <gtest/gtest.h>

#include "FaultOf.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velk {
namespace {

using test::FaultOf;

TEST(Property, NodeFlagsFollowTheFields) {
  // Property, boundary, brace and load flags; springs add with their signs,
  // loads without, and the sum must pass the tolerance.
  const std::pair<std::function<void(Nodeb&)>, const char*> cases[] = {
      {[](Nodeb&) {}, "0000"},
      {[](Nodeb& n) { n.SetXTDir(5); }, "1100"},
      {[](Nodeb& n) { n.SetYRDir(-1); }, "1100"},
      {[](Nodeb& n) { n.xtstiff = 5, n.YTStiff = -5; }, "0000"},
      {[](Nodeb& n) { n.ZTStiff = 0.00002f; }, "1010"},
      {[](Nodeb& n) { n.YRStiff = 0.00001f; }, "0000"},
      {[](Nodeb& n) { n.XRStiff = -3; }, "0000"},
      {[](Nodeb& n) { n.XLoad = 0.00001f; }, "0000"},
      {[](Nodeb& n) { n.XLoad = -3; }, "1001"},
      {[](Nodeb& n) { n.XLoad = 0.000006f, n.YLoad = -0.000006f; }, "1001"},
      {[](Nodeb& n) { n.SetZTDir(-7), n.xtstiff = 2, n.YLoad = 1; }, "1111"}};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    // From a node that had every flag: nothing of the earlier state remains.
    Nodeb n;
    n.SetXTDir(1), n.xtstiff = 4, n.XLoad = 2;
    n.UpdatePropertyDefined();
    n.SetXTDir(0), n.xtstiff = 0, n.XLoad = 0;
    cases[i].first(n);
    n.UpdatePropertyDefined();
    const std::string flags = {
        char('0' + IsTrue(n.PropertyDefined())), char('0' + IsTrue(n.BoundaryDefined())),
        char('0' + IsTrue(n.BraceDefined())), char('0' + IsTrue(n.LoadDefined()))};
    EXPECT_EQ(flags, cases[i].second) << "case " << i;
  }
}

TEST(Property, PlateNeedsAThicknessAndStiffenerAThicknessAndAWidth) {
  const struct {
    float thickness, width;
    bool plate, stiffener;
  } cases[] = {{0.00001f, 1, false, false}, {0.0001f, 0.0001f, true, true}, {0, 1, false, false},
               {-1, 1, false, false},       {0.5f, 12, true, true},         {1, 0, true, false},
               {1, -1, true, false},        {1, 0.00001f, true, false}};
  for (const auto& c : cases) {
    fourNode p;
    twoNode s;
    p.PropertyDefined = s.PropertyDefined = c.plate ? vbFalse : vbTrue; // to see them change
    p.Thickness = s.Thickness = c.thickness, s.width = c.width;
    p.UpdatePropertyDefined(), s.UpdatePropertyDefined();
    EXPECT_EQ(std::pair(IsTrue(p.PropertyDefined), IsTrue(s.PropertyDefined)),
              std::pair(c.plate, c.stiffener))
        << c.thickness << " x " << c.width;
  }
}

TEST(Property, MaxThicknessCountsUndefinedPlatesAndStartsFromZero) {
  fourNodes plates;
  auto n = std::make_shared<Nodeb>();
  for (float t : {0.25f, 0.75f, 0.5f})
    plates.Add(n, n, n, n, plates.Count() + 1, "")->Thickness = t;
  plates.UpdateMaxThickness(); // plate 2 is not defined: it counts all the same
  EXPECT_EQ(plates.MaxThickness(), 0.75f);
  for (const auto& p : plates)
    p->Thickness = -2;
  plates.UpdateMaxThickness();
  EXPECT_EQ(plates.MaxThickness(), 0.0f);
}

TEST(Property, StressRangeOverConnectedEntriesOnly) {
  Nodes nodes;
  const Single values[3][5] = {{1, 5, -1, 2, 9}, {0, 100, -100, 50, 99}, {2, -3, 4, 2, 1}};
  for (const auto& v : values) { // vID, Sx, Sy, SXY, Mises; the second is not connected
    auto n = nodes.Add(0, 0, nodes.Count() + 1, "");
    n->vID = Long(v[0]), n->Sx = v[1], n->Sy = v[2], n->SXY = v[3], n->Mises = v[4];
  }
  const Single expected[6][2] = {{5, -3}, {4, -1},           {2, 2},
                                 {9, 1},  {-1E+37f, 1E+37f}, {-1E+37f, 1E+37f}};
  const Integer options[6] = {0, 1, 2, 3, 4, -1};
  Single mx = 0, mn = 0;
  for (int i = 0; i < 6; ++i) {
    nodes.Calculate_MaxMinStress(mx, mn, options[i]);
    EXPECT_TRUE(mx == expected[i][0] && mn == expected[i][1]) << options[i];
  }
  // Stiffeners have only the axial stress.
  twoNodes stiffeners;
  for (Single stress : {3.0f, -8.0f, 50.0f}) {
    auto s = stiffeners.Add(nodes.Item(1), nodes.Item(1), stiffeners.Count() + 1, "");
    s->Stress = stress, s->vID = stress == 50 ? 0 : s->ID;
  }
  stiffeners.Calculate_MaxMinStress(mx, mn, 0);
  EXPECT_TRUE(mx == 3 && mn == -8);
  stiffeners.Calculate_MaxMinStress(mx, mn, 1);
  EXPECT_TRUE(mx == -1E+37f && mn == 1E+37f);
}

using Ids = std::vector<Long>;

// A 3 x 3 node grid of unit cells with every element, all undefined: plates
// 1-4-5-2, 2-5-6-3, 4-7-8-5, 5-8-9-6.
class Numbering : public ::testing::Test {
protected:
  Mesh m;
  void SetUp() override {
    m.Nodes().SetNumberNodesX(3);
    m.Nodes().SetNumberNodesY(3);
    m.Nodes().Generate(0, 0, 0, 2, 2, 0, 2, 2, 3, 3);
    m.twoNodes().Generate(m.Nodes());
    m.fourNodes().Generate(m.Nodes());
  }
  void Plate(long i, Single t) {
    m.fourNodes().Item(i)->Thickness = t;
    m.fourNodes().Item(i)->UpdatePropertyDefined();
  }
  Ids NodeVIDs() {
    Ids v;
    for (const auto& n : m.Nodes())
      v.push_back(n->vID);
    return v;
  }
};

TEST_F(Numbering, NumbersFollowThePropertiesAndResultsStayWithTheirNodes) {
  m.GeneratevID(); // nothing defined: nothing numbered
  EXPECT_EQ(NodeVIDs(), Ids(9, 0));
  EXPECT_EQ(m.fourNodes().MaxvID + m.twoNodes().MaxvID + m.Nodes().MaxvID, 0);

  Plate(1, 1);
  // A load alone does not make a node take part.
  auto& loaded = *m.Nodes().Item(6);
  loaded.XLoad = 10;
  loaded.UpdatePropertyDefined();
  m.GeneratevID();
  EXPECT_EQ(Ids({m.fourNodes().Item(1)->vID, m.fourNodes().Item(2)->vID, m.fourNodes().MaxvID}),
            Ids({1, 0, 1}));
  EXPECT_EQ(NodeVIDs(), (Ids{1, 2, 0, 3, 4, 0, 0, 0, 0}));
  EXPECT_EQ(m.Nodes().MaxvID, 4);
  EXPECT_FALSE(IsTrue(loaded.Connected));
  EXPECT_TRUE(IsTrue(m.Nodes().Item(5)->Connected));

  m.Nodes().GenerateUvID();
  m.fourNodes().GenerateUvID();
  Ids uvid;
  for (const auto& n : m.Nodes())
    uvid.push_back(n->UvID);
  EXPECT_EQ(uvid, (Ids{1, 2, 4, 5, 0, 0, 0, 0, 0}));
  EXPECT_EQ(m.fourNodes().Item(1)->UvID, 1);
  EXPECT_EQ(m.fourNodes().Item(2)->UvID, 0);
  loaded.XLoad = 0, Plate(1, 0);

  Plate(4, 1); // the upper right cell
  // The node pass looks at the properties, not at the element numbers.
  m.Nodes().GeneratevID(m.twoNodes(), m.fourNodes());
  EXPECT_EQ(m.fourNodes().Item(4)->vID, 0);
  EXPECT_EQ(NodeVIDs(), (Ids{0, 0, 0, 0, 1, 2, 0, 3, 4}));
  m.Nodes().Item(5)->Sx = 42;

  Plate(1, 1); // the lower left cell comes in before it
  m.GeneratevID();
  EXPECT_EQ(NodeVIDs(), (Ids{1, 2, 0, 3, 4, 5, 0, 6, 7}));
  EXPECT_EQ(m.fourNodes().Item(4)->vID, 2);
  EXPECT_EQ(m.Nodes().Item(5)->Sx, 42.0f);

  Plate(1, 0); // and goes again
  m.GeneratevID();
  EXPECT_FALSE(IsTrue(m.Nodes().Item(1)->Connected));
  EXPECT_EQ(NodeVIDs(), (Ids{0, 0, 0, 0, 1, 2, 0, 3, 4}));
  EXPECT_EQ(m.fourNodes().Item(4)->vID, 1);

  // A stiffener alone connects its ends: number 10 runs from node 5 to node 6.
  auto& s = *m.twoNodes().Item(10);
  s.Thickness = s.width = 1;
  s.UpdatePropertyDefined();
  Plate(4, 0);
  m.GeneratevID();
  EXPECT_EQ(s.vID, 1);
  EXPECT_EQ(m.twoNodes().MaxvID, 1);
  EXPECT_EQ(NodeVIDs(), (Ids{0, 0, 0, 0, 1, 2, 0, 0, 0}));

  m.twoNodes().GenerateUvID();
  EXPECT_EQ(m.twoNodes().Item(1)->UvID, 10);
}

} // namespace
} // namespace velk
