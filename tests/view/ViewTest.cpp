// The camera without a window: limits, aspect correction, fit view, presets,
// centre zoom caps, and the mapping between window and model.
#include "view/View.h"
#include "TestSession.h"
#include "forms/frmBeamShape.h"
#include "session/VELKMain.h"

#include <cmath>

namespace velk::test {

class ViewTest : public SessionTest {
protected:
  void Girder(const char* length = "120") {
    frmBeamShape f;
    f.Form_Activate();
    f.txtBL = length;
    f.cmdGenerate_Click();
    ASSERT_TRUE(f.Unloaded);
  }
};

TEST_F(ViewTest, EmptyModelGivesTheUnitBox) {
  View& v = gView();
  v.ScaleWidth = v.ScaleHeight = 100; // a square window: no aspect correction
  v.Set_Limits(gMesh().Nodes());
  EXPECT_EQ(v.LimitMaxXY, 1.0f);
  EXPECT_DOUBLE_EQ(v.SLimitX0, -0.1);
  EXPECT_DOUBLE_EQ(v.SLimitX1, 1.1);
  EXPECT_DOUBLE_EQ(v.SLimitCX, 0.5);
  EXPECT_FLOAT_EQ(v.SLimitCY, 0.5f);
  EXPECT_FLOAT_EQ(v.SLimitZ1, -10.0f);
  EXPECT_DOUBLE_EQ(v.SLimitZ0, 10.0);
}

TEST_F(ViewTest, LongModelKeepsItsProportionInActualViewAndFillsInFitView) {
  Girder("1200");
  View& v = gView();
  v.ScaleWidth = 640;
  v.ScaleHeight = 480;
  v.Set_Limits(gMesh().Nodes());
  // One model unit spans as many pixels in x as in y.
  EXPECT_NEAR(v.SLimitMaxX / v.SLimitMaxY, 640.0 / 480.0, 1e-12);
  EXPECT_DOUBLE_EQ(v.SLimitMaxX, 1200 + 2 * 120.0);
  EXPECT_EQ(v.ScreenModeFactorX, 1.0f);
  v.ScreenModeChange(gMesh().Nodes());
  EXPECT_EQ(v.ScreenMode, 1);
  EXPECT_FLOAT_EQ(v.ScreenModeFactorX, static_cast<float>(v.SLimitMaxX / v.LimitMaxX));
  EXPECT_FLOAT_EQ(v.ScreenModeFactorY, static_cast<float>(v.SLimitMaxY / v.LimitMaxY));
  // At 100% the mesh spans 80% of the width and 70% of the height.
  v.Draw_ModelView();
  v.FrameModelView = v.ModelView;
  v.FrameProjection = v.Projection;
  v.FrameViewport = {0, 0, 640, 480};
  double x0, y0, x1, y1, z;
  ASSERT_TRUE(v.ModelToScreen(v.LimitX0, v.LimitY0, 0, x0, y0, z));
  ASSERT_TRUE(v.ModelToScreen(v.LimitX1, v.LimitY1, 0, x1, y1, z));
  EXPECT_NEAR((x1 - x0) / 640, 0.8, 1e-5);
  EXPECT_NEAR((y1 - y0) / 480, 0.7, 1e-5);
}

TEST_F(ViewTest, FitViewOfAFlatModelReportsTheDivision) {
  gMesh().Nodes().SetNumberNodesX(2);
  gMesh().Nodes().SetNumberNodesY(2);
  for (int i = 1; i <= 4; ++i)
    gMesh().Nodes().Add(static_cast<float>(i), 0, i, std::to_string(i));
  View& v = gView();
  host.messages.clear();
  v.ScreenMode = 1;
  v.Set_Limits(gMesh().Nodes());
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error..[Set Limits]"});
  EXPECT_EQ(v.ScreenModeFactorY, 1.0f);
}

TEST_F(ViewTest, PresetsAndZoomAll) {
  View& v = gView();
  v.LeftView();
  EXPECT_EQ(v.ViewRX, 89.9);
  EXPECT_EQ(v.ViewRY, 0.01);
  v.TopView();
  EXPECT_EQ(v.ViewRY, 89.9);
  v.ViewAngle();
  EXPECT_EQ(v.ViewRX, 25);
  EXPECT_EQ(v.ViewRZ, 0);
  v.ViewZoom = 3;
  v.ViewX = 4;
  v.Zoom_All();
  EXPECT_EQ(v.ViewRX, 0);
  EXPECT_EQ(v.ViewX, 0);
  EXPECT_EQ(v.ViewZoom, 1.0f);
}

TEST_F(ViewTest, CentreZoomIsCappedAndCentres) {
  Girder();
  View& v = gView();
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
  Girder();
  View& v = gView();
  v.ViewAngle();
  v.ViewZoom = 1.5f;
  v.ViewX = 3;
  v.Draw_ModelView();
  v.Draw_Projection();
  v.FrameModelView = v.ModelView;
  v.FrameProjection = v.Projection;
  v.FrameViewport = {0, 0, 639, 465};
  double wx, wy, wz;
  ASSERT_TRUE(v.ModelToScreen(60, 8, 0, wx, wy, wz));
  EXPECT_NEAR(wz, 0.5, 0.05); // the plane lies mid-depth
  // Mouse y runs down; the mapping turns it back.
  const double mouseY = 465 - wy + 1;
  double ox, oy, oz;
  ASSERT_TRUE(v.ScreenToModel(wx, mouseY, static_cast<float>(wz), ox, oy, oz));
  EXPECT_NEAR(ox, 60, 0.3);
  EXPECT_NEAR(oy, 8, 0.3);
  EXPECT_FALSE(v.ScreenToModel(wx, mouseY, 1.0f, ox, oy, oz)); // cleared background
  EXPECT_FALSE(v.ScreenToModel(wx, mouseY, 0.1f, ox, oy, oz));
}

TEST_F(ViewTest, InitializationResetsModesNotOptions) {
  View& v = gView();
  v.PropertyMode = 4;
  v.MeshMode = 1;
  v.ViewMode = 7;
  v.OptionShowNodeNumber = vbTrue;
  v.Initialization(gMesh().Nodes());
  EXPECT_EQ(v.PropertyMode, 1);
  EXPECT_EQ(v.MeshMode, 3);
  EXPECT_EQ(v.ViewMode, 0);
  EXPECT_EQ(v.OptionShowNodeNumber, vbTrue);
  EXPECT_FLOAT_EQ(v.HClipFrom, static_cast<float>(v.SLimitX0));
  EXPECT_FLOAT_EQ(v.VClipTo, static_cast<float>(v.SLimitY1));
}

} // namespace velk::test
