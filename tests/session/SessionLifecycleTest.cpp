// The session objects: creation on first use, File New, end of session.
#include "TestSession.h"
#include "editing/Selection.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <filesystem>

namespace velk::test {
namespace {

using Session = SessionTest;

TEST_F(Session, NewModelEmptiesTheModelAndKeepsOptionsGirderAndCamera) {
  EXPECT_EQ(session().Mesh, nullptr); // made on first use
  EXPECT_EQ(session().Caption, "VELK V1.4.0: No Title");
  Nodes& nodes = gMesh().Nodes();
  nodes.SetNumberNodesX(2);
  nodes.SetNumberNodesY(2);
  nodes.Generate(0, 0, 0, 1, 1, 0, 1, 1, 2, 2);
  gMesh().twoNodes().Generate(gMesh().Nodes());
  gMesh().fourNodes().Generate(gMesh().Nodes());
  gMaterial().MOE = 200000;
  gMaterial().PR = 0.25f;
  Analysis& a = gAnalysis();
  a.Title = "Old";
  a.EigenValue = 3;
  a.MaxShift = 5;
  a.MaxCycle = 20;
  a.ShiftFactor = 0.5f;
  a.IGSTF = vbTrue;
  a.ISHEAR = vbTrue;
  a.OptionInitialB = 1;
  a.OutputOption = 3;
  gBeamShape().Length = 240;
  gBeamShape().Web_HE = 32;
  gBeamShape().ProportionalMesh = 1;
  gView().ViewZoom = 4;
  gView().OptionShowNodeNumber = vbTrue;
  gView().OptionInpMagFactor = 7;
  gSelection().AddObject(nodes.Item(1));
  const View* viewBefore = &gView();
  session().Caption = "VELK V1.4.0:girder.inp";
  std::weak_ptr<Nodeb> node = nodes.Item(1);
  std::weak_ptr<Mesh> mesh = session().Mesh;
  int paints = 0;
  hooks().Paint = [&] { ++paints; };

  New_Model();

  EXPECT_TRUE(host.messages.empty()) << host.messages.front().text;
  EXPECT_TRUE(node.expired() && mesh.expired()); // the old graph is released
  EXPECT_GE(paints, 1);
  EXPECT_EQ(gMesh().Nodes().Count() + gMesh().twoNodes().Count() + gMesh().fourNodes().Count(), 0);
  EXPECT_EQ(gSelection().SelectedCounter(), 0);
  EXPECT_EQ(gMaterial().MOE, 29000.0f);
  EXPECT_EQ(gMaterial().PR, 0.3f);
  const Analysis& b = gAnalysis();
  EXPECT_EQ(b.Title, "No Title");
  EXPECT_EQ(b.EigenValue, 0.0f);
  EXPECT_EQ(b.MaxShift, 5);
  EXPECT_EQ(b.MaxCycle, 20);
  EXPECT_EQ(b.ShiftFactor, 0.5f);
  EXPECT_EQ(b.IGSTF, vbTrue);
  EXPECT_EQ(b.ISHEAR, vbTrue);
  EXPECT_EQ(b.OptionInitialB, 1);
  EXPECT_EQ(b.OutputOption, 1);
  EXPECT_EQ(gBeamShape().Length, 240.0f);
  EXPECT_EQ(gBeamShape().Web_HE, 32.0f);
  EXPECT_EQ(gBeamShape().ProportionalMesh, 1);
  EXPECT_EQ(&gView(), viewBefore);
  EXPECT_EQ(gView().ViewZoom, 4.0f);
  EXPECT_EQ(gView().OptionShowNodeNumber, vbTrue);
  EXPECT_EQ(gView().OptionInpMagFactor, 7.0f);
  EXPECT_EQ(session().Caption, "VELK V1.4.0:girder.inp");
  // The options went out to the settings file on the way.
  EXPECT_TRUE(std::filesystem::exists(SettingsPath()));
}

TEST_F(Session, ResetSessionSavesOptionsAndReleasesEverything) {
  gAnalysis().MaxCycle = 11;
  gBeamShape().Length = 3;
  Reset_Session();
  EXPECT_EQ(session().BeamShape, nullptr);
  EXPECT_EQ(session().Mesh, nullptr);
  EXPECT_EQ(session().Analysis, nullptr);
  EXPECT_EQ(session().View, nullptr);
  auto lines = Lines(ReadFile(SettingsPath()));
  ASSERT_EQ(lines.size(), 9u);
  EXPECT_EQ(lines[0], "3,11,.8,#FALSE#,#FALSE#,0");
  EXPECT_EQ(gBeamShape().Length, 120.0f); // a new one, on first use
}

} // namespace
} // namespace velk::test
