// The results without a window: the buckled shape's corners and its averaged
// normals worked out by hand on a small mesh, the stress colour map and its
// inverse on 8-bit colours, and the stress scale of each component.
#include "TestSession.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"
#include "view/View.h"

#include <cmath>

namespace velk::test {
namespace {

using ResultTest = SessionTest;

// Strips of unit height along x, at x = 0, 1, 3, 4: a plate of width 1, one
// of width 2 and a last one without thickness. Node IDs run up each column.
struct Strip {
  Nodes nodes;
  fourNodes plates;
  Strip() {
    const Single xs[] = {0, 1, 3, 4};
    for (int i = 0; i < 4; ++i)
      for (int j = 0; j < 2; ++j)
        nodes.Add(xs[i], static_cast<Single>(j), 2 * i + j + 1, std::to_string(2 * i + j + 1));
    for (int i = 0; i < 3; ++i) {
      auto at = [&](int col, int row) { return nodes.Item(2 * col + row + 1); };
      auto p =
          plates.Add(at(i, 0), at(i + 1, 0), at(i + 1, 1), at(i, 1), i + 1, std::to_string(i + 1));
      p->Thickness = i < 2 ? 0.5f : 0;
    }
  }
  Nodeb& at(int col, int row) { return *nodes.Item(2 * col + row + 1); }
};

bool Near(const Vec3f& a, const Vec3f& b) {
  return std::fabs(a.x - b.x) < 1e-5f && std::fabs(a.y - b.y) < 1e-5f &&
         std::fabs(a.z - b.z) < 1e-5f;
}

TEST_F(ResultTest, DeformedCornersAndAveragedNormalsByHand) {
  Strip s;
  View v;
  v.OptionInpMagFactor = 2;
  v.OptionOutpMagFactor = 3;
  // A ridge along x = 1: 0.1 there, 0 at x = 0 and x = 3, times 3 out of the plane.
  s.at(1, 0).zcoord = s.at(1, 1).zcoord = 0.1f;
  s.at(3, 1).InPDispX = 0.05f, s.at(3, 1).InPDispY = -0.02f, s.at(3, 1).zcoord = 0.5f;
  EXPECT_TRUE(Near(v.DeformedPosition(s.at(3, 1)), {4.1f, 0.96f, 1.5f}));

  // The first plate rises 0.3 over 1 along x; its corners go Node1, Node4, Node3, Node2.
  Vec3f P[4], n;
  v.DeformedPlate(*s.plates.Item(1), P, n);
  EXPECT_TRUE(Near(P[0], {0, 0, 0}) && Near(P[1], {0, 1, 0}) && Near(P[2], {1, 1, 0.3f}) &&
              Near(P[3], {1, 0, 0.3f}));
  // A plane z = a x has the normal (-a, 0, 1) times its area.
  EXPECT_TRUE(Near(n, {-0.3f, 0, 1}));

  // The second falls 0.3 over 2: (0.15, 0, 1) x 2. The shared edge takes the
  // plain mean of the two unnormalised normals, so the wider plate weighs more;
  // the far nodes of the plate without thickness keep the zero normal.
  const std::vector<Vec3f> N = v.AveragedNormals(s.nodes, s.plates);
  ASSERT_EQ(N.size(), 9u);
  const Vec3f expected[9] = {{},           {-0.3f, 0, 1}, {-0.3f, 0, 1}, {0, 0, 1.5f}, {0, 0, 1.5f},
                             {0.3f, 0, 2}, {0.3f, 0, 2},  {0, 0, 0},     {0, 0, 0}};
  for (int id = 1; id <= 8; ++id)
    EXPECT_TRUE(Near(N[id], expected[id]))
        << "node " << id << ": " << N[id].x << ", " << N[id].y << ", " << N[id].z;

  // A node numbered beyond the count is a fault, not a write past the arrays.
  s.at(0, 0).ID = 9;
  EXPECT_THROW(v.AveragedNormals(s.nodes, s.plates), std::exception);
}

// An 8-bit colour buffer keeps 1/255 of each channel: the value read back from
// a stored colour lies within one such step of the scale.
TEST_F(ResultTest, ColourMapAndItsInverseWithinOneColourStep) {
  const Single r = 250;
  EXPECT_EQ(StressColourOf(r, r), (StressColour{1, 0, 0, 1}));
  EXPECT_EQ(StressColourOf(-r, r), (StressColour{0, 0, 1, 1}));
  EXPECT_EQ(StressColourOf(0, r), (StressColour{1, 1, 1, 1}));
  View v;
  v.maxStress = r;
  auto stored = [](float c) { return std::round(c * 255) / 255; };
  for (Single s = -r; s <= r; s += 0.37f) {
    const StressColour c = StressColourOf(s, r);
    EXPECT_NEAR(c[1], s >= 0 ? c[2] : c[0], 1e-6f); // green follows the fading channel
    Single back = 0;
    if (!v.StressValueOf(stored(c[2]), stored(c[0]), back)) {
      EXPECT_LT(std::fabs(s), r / 255 / 2 + 1e-3f) << s; // only near zero does it round to white
      continue;
    }
    EXPECT_NEAR(back, s, r / 255 + 1e-3f) << s;
  }
  // Grey and black tell nothing, and the window keeps its last value.
  Single shown = 7;
  v.ShowStress = [&](Single x) { shown = x; };
  v.ShowStressValue(0.5f, 0.5f);
  v.ShowStressValue(0, 0);
  EXPECT_EQ(shown, 7);
  v.ShowStressValue(1, 0.2f); // blue side: -(1 - 0.2) r
  EXPECT_FLOAT_EQ(shown, -200);
}

// Sx takes the stiffeners in, the others not; nodes outside the numbering are
// left out; all zero gives the tiny scale that keeps every plate white.
TEST_F(ResultTest, StressScaleByComponent) {
  Strip s;
  twoNodes stiffeners;
  stiffeners.Add(s.nodes.Item(1), s.nodes.Item(3), 1, "1")->vID = 1;
  stiffeners.Item(1)->Stress = -8;
  for (const auto& n : s.nodes)
    n->vID = n->ID <= 6 ? n->ID : 0;
  s.at(0, 0).Sx = -3, s.at(1, 1).Sx = 5, s.at(3, 0).Sx = -100, s.at(2, 1).Sy = 2;
  View v;
  Single maxS = 0, minS = 0;
  for (auto [plot, r, hi, lo] : {std::make_tuple(StressPlots::Sx, 8.0f, 5.0f, -8.0f),
                                 std::make_tuple(StressPlots::Sy, 2.0f, 2.0f, 0.0f),
                                 std::make_tuple(StressPlots::Mises, 1E-16f, 0.0f, 0.0f)}) {
    v.OptionShowStress = plot;
    EXPECT_EQ(v.StressScale(s.nodes, stiffeners, maxS, minS), r) << plot;
    EXPECT_EQ(std::make_pair(maxS, minS), std::make_pair(hi, lo)) << plot;
  }
}

} // namespace
} // namespace velk::test
