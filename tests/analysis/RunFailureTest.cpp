// How a run ends when it cannot finish: arithmetic failures, band overflow,
// cancel; and the pipeline's reading of hand-made run records.
#include <gtest/gtest.h>

#include "RunModels.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "session/AnalysisRun.h"

namespace velk::test {
namespace {

using Texts = std::vector<std::string>;

class RunEndTest : public RunFixture {};

TEST_F(RunEndTest, ArithmeticFailuresEndTheRunWithTheirMessage) {
  { // One bar standing along Y, held across it but not along it, pulled along
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
    m.Nodes().GeneratevID(m.twoNodes(), m.fourNodes());
    Run();
    EXPECT_EQ(host.Texts(), Texts{"Error: Divide by Zero!"});
    EXPECT_EQ(host.progress.back(), "Error: Divide by Zero!");
    EXPECT_EQ(LastRunOutcome(), RunOutcome::Failed);
    EXPECT_EQ(b->InPDispX, 7.0f);
    EXPECT_NE(Listing().back(), "[Output Ends]");
  }
  { // An unloaded plate: 0 / 0 in the iteration. Stage one finished, so its
    // zero displacements are in the model.
    Restart();
    Simply_Supported_Plate(4);
    for (const auto& n : gMesh().Nodes())
      n->XLoad = 0;
    GridNode(4, 2).InPDispX = 3;
    gAnalysis().EigenValue = 0.5f;
    Run();
    EXPECT_EQ(host.Texts(), Texts{"Error: Overflow!"});
    EXPECT_EQ(host.progress.back(), "Error: Overflow!");
    EXPECT_EQ(gAnalysis().EigenValue, 0.5f);
    EXPECT_EQ(GridNode(4, 2).InPDispX, 0.0f);
  }
  { // 111 x 101 = 11211 points: three freedoms each pass 32767.
    Restart();
    Generate_Web(110, 100, 100, 100, 0.1f);
    GridNode(0, 0).SetXTDir(1);
    GridNode(110, 0).XLoad = -1;
    GridNode(110, 0).UpdatePropertyDefined();
    Run();
    EXPECT_EQ(host.Texts(), Texts{"Error: Overflow!"});
    EXPECT_EQ(host.progress, Texts{"Error: Overflow!"});
  }
}

TEST_F(RunEndTest, BandOverflowIsListedAndEndsTheRun) {
  // One plate on four nodes declared as one node per grid column: the band
  // capacity of 9 columns holds the in-plane element but not the bending one.
  One_Plate(4, 1);
  Nodes& nodes = gMesh().Nodes();
  nodes.Item(1)->SetXTDir(1);
  nodes.Item(1)->SetYTDir(1);
  nodes.Item(4)->SetXTDir(1);
  nodes.Item(2)->XLoad = -5;
  Run();
  EXPECT_EQ(host.Texts(), Texts{"Dimesnison of Stiffness Matrix Exceeded!:"});
  EXPECT_EQ(DimensionExceeded, -1);
  EXPECT_EQ(LastRunOutcome(), RunOutcome::BandOverflow);
  EXPECT_EQ(host.progress.back(), "Creating Stiffness Matrix for Buckling Analysis...");
  const auto l = Listing();
  ASSERT_GE(l.size(), 3u);
  EXPECT_EQ(Texts(l.end() - 3, l.end()),
            (Texts{"Dimension of Stiffness Matrix EXCEEDED", "Degree of Freedom Number  =  1 ",
                   "Band Width                =  10 "}));
}

TEST_F(RunEndTest, CancelKeepsTheEarlierResults) {
  // Cancel at the fifth yield, among the plates of the in-plane stage, or at
  // the second cycle of the iteration, after the in-plane stage has put its new
  // displacements beside the old mode.
  for (bool inIteration : {false, true}) {
    Restart();
    Simply_Supported_Plate(4);
    Run();
    const Single eigen = gAnalysis().EigenValue, w = GridNode(2, 2).zcoord;
    const Single u = GridNode(4, 2).InPDispX;
    for (int i = 0; i <= 4; ++i)
      GridNode(4, i).XLoad *= 2;
    host.progress.clear();
    host.messages.clear();
    int yields = 0;
    if (inIteration) {
      analysisHooks().Cycle = [](int, int cycle, double, double, double) {
        if (cycle == 2) AnalysisCancel = -1;
      };
    } else {
      host.onYield = [&] {
        if (++yields == 5) AnalysisCancel = -1;
      };
    }
    Run();
    host.onYield = nullptr;
    analysisHooks().Cycle = nullptr;
    EXPECT_EQ(host.progress.back(), "Process Interrupted...") << inIteration;
    if (!inIteration) {
      EXPECT_EQ(host.progress.end()[-2], "Ready...");
    }
    EXPECT_EQ(LastRunOutcome(), RunOutcome::Cancelled);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(gAnalysis().EigenValue, eigen);
    EXPECT_EQ(GridNode(2, 2).zcoord, w);
    EXPECT_FLOAT_EQ(GridNode(4, 2).InPDispX, inIteration ? 2 * u : u);
    const auto l = Listing();
    EXPECT_FALSE(Has(l, "[Output Ends]"));
    EXPECT_FALSE(Has(l, "[Output Normalized Mode Shape]")) << inIteration;
  }
}

TEST_F(RunEndTest, HandMadeRunRecordsGiveTheSameStructure) {
  Simply_Supported_Plate(4);
  Run();
  const Single written = gAnalysis().EigenValue, u = GridNode(4, 2).InPDispX;
  gAnalysis().EigenValue = 0;

  // The same loads and supports as runs, with records that have no effect and
  // records whose last and step need repair, in place of the nodal blocks.
  ASSERT_EQ(Write_Deck(), 1);
  auto lines = Lines(ReadFile(session().gTempInFile));
  DeckReader counts(lines[2]);
  const DeckCounts c = Read_Counts(counts);
  std::string deck;
  const std::size_t kept = 4 + c.points + 2 * (c.plates + c.stiffeners);
  for (std::size_t i = 0; i < kept; ++i)
    deck += (i == 2 ? "16,0,25,5,2,0,16,0" : lines[i]) + "\r\n";
  WriteFile(session().gTempInFile, deck + "22,24,1,-2.5,0\r\n"
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
  // A row per record; the out-of-plane restraints leave out the record
  // without effect, the other blocks list it.
  const auto l = Listing();
  EXPECT_EQ(Section(l, "[Loads]").size(), 1u + 3);
  EXPECT_EQ(Section(l, "[Boundary Conditions: In-plane]").size(), 1u + 3);
  EXPECT_EQ(Section(l, "[Boundary conditions: Out-of-Plane]").size(), 1u + 5);
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
  EXPECT_TRUE(Has(l, "[Elastic Springs: In-Plane]"));
  EXPECT_TRUE(Has(l, "[Elastic Springs: Out-of-Plane]"));
  EXPECT_EQ(l.back(), "[Output Ends]");
}

} // namespace
} // namespace velk::test
