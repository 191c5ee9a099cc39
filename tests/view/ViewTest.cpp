// The camera without a window: limits and aspect correction, the two matrices
// checked against plain geometry, presets, centre zoom caps, and the mapping
// between window and model.
#include "view/View.h"
#include "TestSession.h"
#include "model/Nodes.h"

#include <array>
#include <cmath>
#include <numbers>

namespace velk::test {
namespace {

using Point = std::array<double, 3>;
using ViewTest = SessionTest;

Nodes Corners(std::initializer_list<std::pair<Single, Single>> xy) {
  Nodes n;
  for (auto [x, y] : xy)
    n.Add(x, y, n.Count() + 1, std::to_string(n.Count() + 1));
  return n;
}

// A column-major matrix applied to a point.
Point Apply(const Matrix4& m, const Point& p) {
  Point q;
  for (int r = 0; r < 3; ++r)
    q[r] = m[r] * p[0] + m[4 + r] * p[1] + m[8 + r] * p[2] + m[12 + r];
  return q;
}

// The right-handed turn of p by `deg` degrees about the axis 0 (x), 1 (y) or 2 (z).
Point Turn(Point p, int axis, double deg) {
  const double a = deg * std::numbers::pi / 180, c = std::cos(a), s = std::sin(a);
  const int i = (axis + 1) % 3, j = (axis + 2) % 3;
  const double u = p[i], v = p[j];
  p[i] = u * c - v * s;
  p[j] = u * s + v * c;
  return p;
}

TEST_F(ViewTest, LimitsComeFromAllNodesFromTheFourthOn) {
  View v;
  v.ScaleWidth = v.ScaleHeight = 100; // a square window: no aspect correction
  v.Set_Limits(Corners({{5, 2}, {0, 1}, {3, -1}}));
  EXPECT_EQ(v.LimitMaxXY, 1.0f); // the unit box
  EXPECT_DOUBLE_EQ(v.SLimitX0, -0.1);
  EXPECT_DOUBLE_EQ(v.SLimitX1, 1.1);
  EXPECT_FLOAT_EQ(v.SLimitCY, 0.5f);
  v.Set_Limits(Corners({{5, 2}, {0, 1}, {3, -1}, {10, 4}}));
  EXPECT_EQ(std::make_tuple(v.LimitX0, v.LimitX1, v.LimitY0, v.LimitY1, v.LimitMaxXY),
            std::make_tuple(0.0, 10.0, -1.0, 4.0f, 10.0f));
  // The margin of 1, then square about the centre; the depth is 10 times the size.
  EXPECT_EQ(std::make_tuple(v.SLimitX0, v.SLimitX1, v.SLimitY0, v.SLimitY1, v.SLimitCX, v.SLimitCY),
            std::make_tuple(-1.0, 11.0, -4.5, 7.5, 5.0, 1.5f));
  EXPECT_EQ(std::make_tuple(v.SLimitZ0, v.SLimitZ1), std::make_tuple(100.0, -100.0f));

  // Fit view of a flat model divides by its zero height.
  host.messages.clear();
  v.ScreenMode = 1;
  v.Set_Limits(Corners({{1, 0}, {2, 0}, {3, 0}, {4, 0}}));
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error..[Set Limits]"});
  EXPECT_EQ(v.ScreenModeFactorY, 1.0f);
}

TEST_F(ViewTest, MatricesPlaceTheModelAsTheCallsDescribe) {
  View v;
  v.ScaleWidth = 640, v.ScaleHeight = 480;
  const Nodes nodes = Corners({{0, 0}, {0, 10}, {1200, -10}, {1200, 20}});
  v.Set_Limits(nodes);
  // One model unit spans as many pixels in x as in y.
  EXPECT_NEAR(v.SLimitMaxX / v.SLimitMaxY, 640.0 / 480.0, 1e-12);
  EXPECT_DOUBLE_EQ(v.SLimitMaxX, 1200 + 2 * 120.0);
  // The orthographic box maps onto the unit cube; z = 0 is mid-depth.
  v.Draw_Projection();
  const Point lo = Apply(v.Projection, {v.SLimitX0, v.SLimitY0, v.SLimitZ0});
  const Point hi = Apply(v.Projection, {v.SLimitX1, v.SLimitY1, v.SLimitZ1});
  for (int k = 0; k < 3; ++k)
    EXPECT_TRUE(std::fabs(lo[k] + 1) < 1e-12 && std::fabs(hi[k] - 1) < 1e-12) << k;
  EXPECT_NEAR(Apply(v.Projection, {v.SLimitCX, v.SLimitCY, 0})[2], 0, 1e-12);

  // Pan in model units, zoom and the three turns, all about the pivot.
  const struct {
    long screenMode;
    double rx, ry, rz, x, y;
    Single zoom;
  } cases[] = {{0, 0, 0, 0, 0, 0, 1},          {0, 25, 25, 0, 3, -2, 1.5f},
               {0, 89.9, 0.01, 0.01, 0, 0, 2}, {0, -40, 10, 75, 100, 5, 0.5f},
               {1, 30, -20, 10, 7, 1, 3},      {1, 0, 0, 0, 0, 0, 1}};
  for (const auto& c : cases) {
    v.ScreenMode = c.screenMode;
    v.Set_Limits(nodes);
    v.ViewRX = c.rx, v.ViewRY = c.ry, v.ViewRZ = c.rz, v.ViewX = c.x, v.ViewY = c.y,
    v.ViewZoom = c.zoom;
    v.Draw_ModelView();
    const Point pivot = {v.SLimitCX, v.SLimitCY, 0};
    const double sx = c.screenMode ? 0.8 * v.ScreenModeFactorX : 1;
    const double sy = c.screenMode ? 0.7 * v.ScreenModeFactorY : 1;
    for (const Point& p : {Point{0, 0, 0}, Point{1200, 20, 0}, Point{300, -5, 40}}) {
      Point q = {(p[0] + c.x - pivot[0]) * c.zoom * sx, (p[1] + c.y - pivot[1]) * c.zoom * sy,
                 p[2] * c.zoom};
      q = Turn(Turn(Turn(q, 2, c.rz), 0, c.ry), 1, c.rx);
      const Point got = Apply(v.ModelView, p);
      for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(got[k], q[k] + pivot[k], 2e-3) << c.rx << " " << c.screenMode << " " << k;
    }
  }
  // In fit view at 100% (the last case) the mesh spans 80% of the width and
  // 70% of the height.
  const Point a = Apply(v.Projection, Apply(v.ModelView, {0, -10, 0}));
  const Point b = Apply(v.Projection, Apply(v.ModelView, {1200, 20, 0}));
  EXPECT_NEAR((b[0] - a[0]) / 2, 0.8, 1e-6);
  EXPECT_NEAR((b[1] - a[1]) / 2, 0.7, 1e-6);
}

TEST_F(ViewTest, CentreZoomIsCappedAndCentres) {
  View v;
  for (int i = 0; i < 10; ++i)
    v.ZoomInOutCenter(10, 5, 0);
  EXPECT_EQ(v.ViewZoom, 100.0f);
  EXPECT_DOUBLE_EQ(v.ViewX, v.SLimitCX - 10);
  EXPECT_DOUBLE_EQ(v.ViewY, double(v.SLimitCY) - 5);
  for (int i = 0; i < 20; ++i)
    v.ZoomInOutCenter(0, 0, 1);
  EXPECT_EQ(v.ViewZoom, 0.01f);
  v.ZoomInOutCenter(50, 50, 2); // any other value does nothing
  EXPECT_EQ(v.ViewX, v.SLimitCX);
}

TEST_F(ViewTest, MappingRoundTripsAndRefusesTheBackground) {
  View v;
  v.Set_Limits(Corners({{0, 0}, {0, 16.5f}, {120, 0}, {120, 16.5f}}));
  v.ViewAngle(), v.ViewZoom = 1.5f, v.ViewX = 3;
  v.Draw_ModelView(), v.Draw_Projection();
  v.FrameModelView = v.ModelView, v.FrameProjection = v.Projection;
  double wx, wy, wz;
  ASSERT_TRUE(v.ModelToScreen(60, 8, 0, wx, wy, wz));
  EXPECT_NEAR(wz, 0.5, 0.05); // the plane lies mid-depth
  // Mouse y runs down; the mapping turns it back.
  const double mouseY = 465 - wy + 1;
  double ox, oy, oz;
  ASSERT_TRUE(v.ScreenToModel(wx, mouseY, static_cast<float>(wz), ox, oy, oz));
  EXPECT_TRUE(std::fabs(ox - 60) < 0.3 && std::fabs(oy - 8) < 0.3) << ox << ", " << oy;
  EXPECT_FALSE(v.ScreenToModel(wx, mouseY, 0.9f, ox, oy, oz)); // cleared background
  EXPECT_FALSE(v.ScreenToModel(wx, mouseY, 0.1f, ox, oy, oz));
}

// A drag across the whole window pans by the orthographic width (the tilt
// stretches it by 1 / cos), turns by 90 degrees, or adds 100% to the zoom.
TEST_F(ViewTest, DragToolsMoveByTheirWindowAmounts) {
  View v;
  v.Set_Limits(Corners({{0, 0}, {0, 16.5f}, {120, 0}, {120, 16.5f}}));
  const double w = v.SLimitX1 - v.SLimitX0, h = v.SLimitY1 - v.SLimitY0;
  const Single W = static_cast<Single>(v.ScaleWidth), H = static_cast<Single>(v.ScaleHeight);
  v.ViewX = v.ViewY = 0;
  v.Translate_Drag(0, 0, W / 2, H / 4);
  EXPECT_NEAR(v.ViewX, w / 2, 1e-9 * w);
  EXPECT_NEAR(v.ViewY, -h / 4, 1e-9 * h);
  v.ViewX = 0, v.ViewRX = 60; // cos 60 = 1/2 with the drag's pi
  v.Translate_Drag(0, 0, W, 0);
  EXPECT_NEAR(v.ViewX, 2 * w, 1e-4 * w);

  v.ViewRX = 350, v.ViewRY = 10;
  v.Rotate_Drag(0, 0, W / 9, H / 3); // +10 about one axis, -30 about the other
  EXPECT_NEAR(v.ViewRX, 360, 1e-9); // 360 itself stays
  EXPECT_NEAR(v.ViewRY, 340, 1e-9);
  v.Rotate_Drag(0, 0, W / 9, 0);
  EXPECT_NEAR(v.ViewRX, 10, 1e-9);

  v.ViewZoom = 1;
  v.Zoom_Drag(W, 0); // full width to the left: zero
  EXPECT_NEAR(v.ViewZoom, 0, 1e-6);
  v.Zoom_Drag(W / 2, 0); // below 5% only growing is taken
  EXPECT_NEAR(v.ViewZoom, 0, 1e-6);
  v.Zoom_Drag(0, W / 4);
  EXPECT_NEAR(v.ViewZoom, 0.25, 1e-6);
}

} // namespace
} // namespace velk::test
