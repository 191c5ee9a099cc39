// How a run ends when it cannot finish: arithmetic failures, band overflow,
// cancel; and the pipeline's reading of hand-made run records and of a spring
// on a prescribed freedom.
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
    Bar_Line(1, 0, 10);
    Mesh& m = gMesh();
    for (int i = 3; i <= 4; ++i)
      m.Nodes().Add(5, 5, i, std::to_string(i)); // four nodes, two loose
    m.GeneratevID();
    Nodeb &a = *m.Nodes().Item(1), &b = *m.Nodes().Item(2);
    a.SetXTDir(1), b.SetXTDir(1), b.YLoad = 1;
    b.InPDispX = 7; // an earlier result stays
    Run();
    EXPECT_EQ(host.Texts(), Texts{"Error: Divide by Zero!"});
    EXPECT_EQ(host.progress.back(), "Error: Divide by Zero!");
    EXPECT_EQ(LastRunOutcome(), RunOutcome::Failed);
    EXPECT_EQ(b.InPDispX, 7.0f);
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
  nodes.Item(1)->SetXTDir(1), nodes.Item(1)->SetYTDir(1), nodes.Item(4)->SetXTDir(1);
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
    EXPECT_EQ(LastRunOutcome(), RunOutcome::Cancelled);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(gAnalysis().EigenValue, eigen);
    EXPECT_EQ(GridNode(2, 2).zcoord, w);
    EXPECT_FLOAT_EQ(GridNode(4, 2).InPDispX, inIteration ? 2 * u : u);
    const auto l = Listing();
    EXPECT_FALSE(Has(l, "[Output Ends]") || Has(l, "[Output Normalized Mode Shape]"))
        << inIteration;
  }
}

TEST_F(RunEndTest, CancelReachesIntoALongFactoring) {
  // A web 250 elements deep has a stage-one band of about 500: its factoring
  // is long enough to pause between slices, and a Cancel clicked during it
  // ends the run there, before the factoring is done.
  Generate_Web(2, 250, 10, 250, 0.1f);
  bool factoring = false;
  int pausesInside = 0;
  std::vector<RunStep> steps;
  analysisHooks().StageOneMatrix = [&](const BandMatrix&, int, int) { factoring = true; };
  analysisHooks().Timing = [&](RunStep step, int, int, double) { steps.push_back(step); };
  host.onYield = [&] {
    if (!factoring) return;
    if (++pausesInside == 2) AnalysisCancel = -1;
  };
  Run();
  host.onYield = nullptr;
  analysisHooks().StageOneMatrix = nullptr;
  analysisHooks().Timing = nullptr;
  EXPECT_EQ(pausesInside, 2);
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Cancelled);
  EXPECT_EQ(steps, std::vector<RunStep>{RunStep::StageOneAssembly});
  EXPECT_EQ(Band_SetPause(nullptr), nullptr); // the run leaves no pause behind
}

TEST_F(RunEndTest, HandMadeRunRecordsGiveTheSameStructure) {
  Simply_Supported_Plate(4);
  Run();
  const Single written = gAnalysis().EigenValue, u = GridNode(4, 2).InPDispX;
  const auto listed = Listing();
  gAnalysis().EigenValue = 0;

  // The same grid, plates, loads and supports as runs of points and elements,
  // with records that have no effect and records whose last and step need
  // repair. Points: rows of the grid, the last one short, then point 25 alone
  // (X2, Y2 unused). Plates: rows of the grid, element 16 alone, and all 16
  // thicknesses walking down.
  ASSERT_EQ(Write_Deck(), 1);
  const auto lines = Lines(ReadFile(session().gTempInFile));
  WriteFile(session().gTempInFile,
            lines[0] + "\r\n" + lines[1] + "\r\n16,0,25,5,2,0,16,0\r\n" + lines[3] + "\r\n" +
                "1,21,5,0,0,10,0\r\n2,22,5,0,2.5,10,2.5\r\n3,23,5,0,5,10,5\r\n"
                "4,24,5,0,7.5,10,7.5\r\n5,20,5,0,10,7.5,10\r\n25,-3,-1,10,10,99,99\r\n"
                "1,13,5,4,1,6,7,2\r\n2,14,5,4,2,7,8,3\r\n3,15,5,4,3,8,9,4\r\n4,12,5,4,4,9,10,5\r\n"
                "16,0,0,0,19,24,25,20\r\n16,1,-1,.1\r\n"
                "22,24,1,-2.5,0\r\n7,7,1,0,0\r\n21,25,4,-1.25,0\r\n1,5,1,-1,0,0,0\r\n"
                "3,3,1,0,0,0,0\r\n1,0,0,0,-1,0,0\r\n1,4,1,-1,0,0\r\n9,9,1,0,0,0\r\n"
                "5,2,-1,-1,0,0\r\n21,25,1,-1,0,0\r\n6,16,5,-1,0,0\r\n10,20,5,-1,0,0\r\n");
  Run_Analysis();
  EXPECT_EQ(gAnalysis().EigenValue, written);
  EXPECT_EQ(GridNode(4, 2).InPDispX, u);
  // The same points and plates; a row per nodal record, but the out-of-plane
  // restraints leave out the record without effect.
  const auto l = Listing();
  for (const char* title : {"[Nodal Info]", "[Plate Element Info]"})
    EXPECT_EQ(Section(l, title), Section(listed, title)) << title;
  EXPECT_EQ(Section(l, "[Loads]").size(), 1u + 3);
  EXPECT_EQ(Section(l, "[Boundary Conditions: In-plane]").size(), 1u + 3);
  EXPECT_EQ(Section(l, "[Boundary conditions: Out-of-Plane]").size(), 1u + 5);
}

TEST_F(RunEndTest, SpringOnAPrescribedFreedomDividesTheValue) {
  Simply_Supported_Plate(4);
  Nodeb& corner = GridNode(4, 0);
  corner.SetXTDir(1), corner.XTDirValue = -0.5f;
  corner.xtstiff = 1; // v / (1 + k)
  corner.ZTStiff = 2; // and one out of plane: both blocks are listed
  corner.UpdatePropertyDefined();
  Run();
  EXPECT_EQ(corner.InPDispX, -0.25f);
  const auto l = Listing();
  EXPECT_TRUE(Has(l, "[Elastic Springs: In-Plane]") && Has(l, "[Elastic Springs: Out-of-Plane]"));
  EXPECT_EQ(l.back(), "[Output Ends]");
}

} // namespace
} // namespace velk::test
