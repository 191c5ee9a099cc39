// How a run ends when it cannot finish: arithmetic failures, band overflow,
// cancel; and the pipeline's reading of hand-made run records.
#include <gtest/gtest.h>

#include <algorithm>

#include "RunModels.h"
#include "TestSession.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "common/TextRules.h"

namespace velk::test {
namespace {

class RunEndTest : public SessionTest {
protected:
  void Run() {
    ASSERT_EQ(Write_Deck(), 1);
    Run_Analysis();
  }
  std::vector<std::string> Listing() { return Lines(ReadFile(session().gTempOutFile)); }
  // Replaces the nodal blocks and their counts in the deck just written.
  void Rewrite_Nodal_Blocks(const std::string& counts, const std::string& blocks) {
    auto lines = Lines(ReadFile(session().gTempInFile));
    const DeckCounts c = [&] {
      DeckReader d(lines[2]);
      return Read_Counts(d);
    }();
    const std::size_t kept = 4 + c.points + 2 * (c.plates + c.stiffeners);
    std::string deck;
    for (std::size_t i = 0; i < kept; ++i)
      deck += (i == 2 ? counts : lines[i]) + "\r\n";
    WriteFile(session().gTempInFile, deck + blocks);
  }
};

TEST_F(RunEndTest, StructureFreeAlongItsLoadIsAZeroPivot) {
  // One bar standing along Y, held across it but not along it, pulled along
  // it: the last pivot vanishes exactly.
  Mesh& m = gMesh();
  auto a = m.Nodes().Add(0, 0, 1, "1");
  auto b = m.Nodes().Add(0, 10, 2, "2");
  m.Nodes().SetNumberNodesX(1);
  m.Nodes().SetNumberNodesY(2);
  for (int i = 3; i <= 4; ++i)
    m.Nodes().Add(5, 5, i, std::to_string(i)); // four nodes, two loose
  auto bar = m.twoNodes().Add(a, b, 1, "1");
  bar->Thickness = 0.1f;
  bar->width = 1;
  bar->UpdatePropertyDefined();
  a->SetXTDir(1);
  b->SetXTDir(1);
  b->YLoad = 1;
  b->InPDispX = 7; // an earlier result stays
  m.twoNodes().GeneratevID();
  m.Nodes().GeneratevID();
  Run();
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error: Divide by Zero!"});
  EXPECT_EQ(host.progress.back(), "Error: Divide by Zero!");
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Failed);
  EXPECT_EQ(b->InPDispX, 7.0f);
  EXPECT_NE(Listing().back(), "[Output Ends]");
}

TEST_F(RunEndTest, UnloadedPlateIsZeroOverZero) {
  Simply_Supported_Plate(4);
  for (const auto& n : gMesh().Nodes())
    n->XLoad = 0;
  gAnalysis().EigenValue = 0.5f;
  Run();
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error: Overflow!"});
  EXPECT_EQ(host.progress.back(), "Error: Overflow!");
  EXPECT_EQ(gAnalysis().EigenValue, 0.5f);
  // Stage one finished: its zero displacements are in the model.
  EXPECT_EQ(GridNode(4, 2).InPDispX, 0.0f);
}

TEST_F(RunEndTest, MoreFreedomsThanSixteenBitsIsAnOverflow) {
  // 111 x 101 = 11211 points: three freedoms each pass 32767.
  Generate_Web(110, 100, "100", "100", "0.1");
  GridNode(0, 0).SetXTDir(1);
  GridNode(110, 0).XLoad = -1;
  GridNode(110, 0).UpdatePropertyDefined();
  Run();
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error: Overflow!"});
  EXPECT_EQ(host.progress, std::vector<std::string>{"Error: Overflow!"});
}

TEST_F(RunEndTest, ModelWithoutElementsFailsAtOnce) {
  Simply_Supported_Plate(4);
  for (const auto& p : gMesh().fourNodes()) {
    p->Thickness = 0;
    p->UpdatePropertyDefined();
  }
  gMesh().fourNodes().GeneratevID();
  gMesh().Nodes().GeneratevID();
  Run();
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error!"});
  EXPECT_EQ(host.progress, std::vector<std::string>{"Error!..."});
}

TEST_F(RunEndTest, BandOverflowIsListedAndEndsTheRun) {
  // One plate on four nodes declared as one node per grid column: the band
  // capacity of 9 columns holds the in-plane element but not the bending one.
  Mesh& m = gMesh();
  const float xy[4][2] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  for (int i = 0; i < 4; ++i)
    m.Nodes().Add(xy[i][0], xy[i][1], i + 1, std::to_string(i + 1));
  m.Nodes().SetNumberNodesX(4);
  m.Nodes().SetNumberNodesY(1);
  auto p = m.fourNodes().Add(m.Nodes().Item(1), m.Nodes().Item(2), m.Nodes().Item(3),
                             m.Nodes().Item(4), 1, "1");
  p->Thickness = 0.5f;
  p->UpdatePropertyDefined();
  m.Nodes().Item(1)->SetXTDir(1);
  m.Nodes().Item(1)->SetYTDir(1);
  m.Nodes().Item(4)->SetXTDir(1);
  m.Nodes().Item(2)->XLoad = -5;
  m.fourNodes().GeneratevID();
  m.Nodes().GeneratevID();
  Run();
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Dimesnison of Stiffness Matrix Exceeded!:"});
  EXPECT_EQ(DimensionExceeded, -1);
  EXPECT_EQ(LastRunOutcome(), RunOutcome::BandOverflow);
  EXPECT_EQ(host.progress.back(), "Creating Stiffness Matrix for Buckling Analysis...");
  const auto l = Listing();
  ASSERT_GE(l.size(), 3u);
  EXPECT_EQ(l[l.size() - 3], "Dimension of Stiffness Matrix EXCEEDED");
  EXPECT_EQ(l[l.size() - 2], "Degree of Freedom Number  =  1 ");
  EXPECT_EQ(l[l.size() - 1], "Band Width                =  10 ");
}

TEST_F(RunEndTest, CancelDuringAssemblyKeepsTheEarlierResults) {
  Simply_Supported_Plate(4);
  Run();
  const Single eigen = gAnalysis().EigenValue;
  const Single w = GridNode(2, 2).zcoord;
  const Single u = GridNode(4, 2).InPDispX;
  // A changed load, and Cancel pressed at the fifth yield: among the plates
  // of the in-plane stage.
  for (int i = 0; i <= 4; ++i)
    GridNode(4, i).XLoad *= 2;
  host.progress.clear();
  int yields = 0;
  host.onYield = [&] {
    if (++yields == 5) AnalysisCancel = -1;
  };
  Run();
  host.onYield = nullptr;
  const std::vector<std::string> tail(host.progress.end() - 2, host.progress.end());
  EXPECT_EQ(tail, (std::vector<std::string>{"Ready...", "Process Interrupted..."}));
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Cancelled);
  EXPECT_EQ(gAnalysis().EigenValue, eigen);
  EXPECT_EQ(GridNode(2, 2).zcoord, w);
  EXPECT_EQ(GridNode(4, 2).InPDispX, u);
  const auto l = Listing();
  EXPECT_EQ(std::find(l.begin(), l.end(), "[Output Ends]"), l.end());
}

TEST_F(RunEndTest, CancelDuringTheIterationKeepsTheOldMode) {
  Simply_Supported_Plate(4);
  Run();
  const Single eigen = gAnalysis().EigenValue;
  const Single w = GridNode(2, 2).zcoord;
  const Single u = GridNode(4, 2).InPDispX;
  for (int i = 0; i <= 4; ++i)
    GridNode(4, i).XLoad *= 2;
  analysisHooks().Cycle = [](int, int cycle, double, double, double) {
    if (cycle == 2) AnalysisCancel = -1;
  };
  host.messages.clear();
  Run();
  analysisHooks().Cycle = nullptr;
  EXPECT_EQ(host.progress.back(), "Process Interrupted...");
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gAnalysis().EigenValue, eigen);
  EXPECT_EQ(GridNode(2, 2).zcoord, w);
  // The in-plane stage had finished: its new displacements stand beside the
  // old mode.
  EXPECT_FLOAT_EQ(GridNode(4, 2).InPDispX, 2 * u);
  const auto l = Listing();
  EXPECT_EQ(std::find(l.begin(), l.end(), "[Output Ends]"), l.end());
  EXPECT_EQ(std::find(l.begin(), l.end(), "[Output Normalized Mode Shape]"), l.end());
}

TEST_F(RunEndTest, HandMadeRunRecordsGiveTheSameStructure) {
  Simply_Supported_Plate(4);
  Run();
  const Single written = gAnalysis().EigenValue;
  const Single u = GridNode(4, 2).InPDispX;
  gAnalysis().EigenValue = 0;

  // The same loads and supports as runs, with records that have no effect
  // and records whose last and step need repair.
  ASSERT_EQ(Write_Deck(), 1);
  Rewrite_Nodal_Blocks("16,0,25,5,2,0,16,0", "22,24,1,-2.5,0\r\n"
                                             "7,7,1,0,0\r\n"
                                             "21,25,4,-1.25,0\r\n"
                                             "1,5,1,-1,0,0,0\r\n"
                                             "3,3,1,0,0,0,0\r\n"
                                             "1,0,0,0,-1,0,0\r\n"
                                             "1,4,1,-1,0,0\r\n"
                                             "9,9,1,0,0,0\r\n"
                                             "5,2,-1,-1,0,0\r\n"
                                             "21,25,1,-1,0,0\r\n"
                                             "6,16,5,-1,0,0\r\n"
                                             "10,20,5,-1,0,0\r\n");
  Run_Analysis();
  EXPECT_EQ(gAnalysis().EigenValue, written);
  EXPECT_EQ(GridNode(4, 2).InPDispX, u);
  const auto l = Listing();
  auto rows = [&](const std::string& title) {
    auto at = std::find(l.begin(), l.end(), title);
    std::size_t n = 0;
    if (at != l.end())
      for (++at; at != l.end() && !at->starts_with("["); ++at)
        ++n;
    return n;
  };
  // A row per record; the out-of-plane restraints leave out the record
  // without effect, the other blocks list it.
  EXPECT_EQ(rows("[Loads]"), 1u + 3);
  EXPECT_EQ(rows("[Boundary Conditions: In-plane]"), 1u + 3);
  EXPECT_EQ(rows("[Boundary conditions: Out-of-Plane]"), 1u + 5);
}

TEST_F(RunEndTest, SpringOnAPrescribedFreedomDividesTheValue) {
  Simply_Supported_Plate(4);
  Nodeb& corner = GridNode(4, 0);
  corner.SetXTDir(1);
  corner.XTDirValue = -0.5f;
  corner.xtstiff = 1;
  corner.ZTStiff = 2; // an out-of-plane spring on a held freedom changes nothing
  corner.UpdatePropertyDefined();
  Run();
  EXPECT_EQ(corner.InPDispX, -0.25f);
  const auto l = Listing();
  EXPECT_NE(std::find(l.begin(), l.end(), "[Elastic Springs: In-Plane]"), l.end());
  EXPECT_NE(std::find(l.begin(), l.end(), "[Elastic Springs: Out-of-Plane]"), l.end());
  EXPECT_EQ(l.back(), "[Output Ends]");
}

} // namespace
} // namespace velk::test
