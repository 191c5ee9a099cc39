// The deck: what the writer puts out for a model, byte for byte, and how the
// reader generates points and elements from run records.
#include <gtest/gtest.h>

#include "RunModels.h"
#include "SymmetricEigen.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "session/AnalysisRun.h"

namespace velk::test {
namespace {

class DeckTest : public SessionTest {
protected:
  std::shared_ptr<Nodeb> Node(int i) { return gMesh().Nodes().Item(i); }
  void Renumber() { gMesh().GeneratevID(); }
  std::vector<std::string> DeckLines() {
    EXPECT_EQ(Write_Deck(), 1);
    return Lines(ReadFile(session().gTempInFile));
  }
};

TEST_F(DeckTest, OnePlateDeckIsWrittenRecordForRecord) {
  One_Plate(2, 2);
  Node(2)->XLoad = -5;
  Node(1)->SetXTDir(1);
  Node(1)->SetYTDir(1);
  Node(4)->SetXTDir(1);
  for (int i = 1; i <= 4; ++i)
    Node(i)->SetZTDir(1);

  ASSERT_EQ(Write_Deck(), 1);
  EXPECT_EQ(session().gTempInFile, Scratch("velktempin.vlk"));
  EXPECT_EQ(session().gTempOutFile, Scratch("velktempout.vlk"));
  const std::string expected = "\"No Title\"\r\n"
                               "\"No Discription\",\"0\"\r\n"
                               "1,0,4,1,2,0,4,0\r\n"
                               "29000,.3\r\n"
                               "1,1,1,0,0,0,0\r\n"
                               "2,2,1,10,0,10,0\r\n"
                               "3,3,1,10,10,10,10\r\n"
                               "4,4,1,0,10,0,10\r\n"
                               "1,1,1,1,1,2,3,4\r\n"
                               "1,1,1,.5\r\n"
                               "2,2,1,-5,0\r\n"
                               "1,1,1,-1,-1,0,0\r\n"
                               "4,4,1,-1,0,0,0\r\n"
                               "1,1,1,-1,0,0\r\n"
                               "2,2,1,-1,0,0\r\n"
                               "3,3,1,-1,0,0\r\n"
                               "4,4,1,-1,0,0\r\n";
  EXPECT_EQ(ReadFile(session().gTempInFile), expected);
  SetTemporaryFolder(Scratch("no/such/folder")); // unwritable: 0
  EXPECT_EQ(Write_Deck(), 0);
  SetTemporaryFolder("");
}

TEST_F(DeckTest, NodalBlocksTakeValuesAboveTheToleranceOnly) {
  One_Plate(2, 2);
  Node(1)->XLoad = 0.000005f; // under the tolerance, alone: no record
  Node(2)->XLoad = 0.000005f; // under, but the other value puts the node in
  Node(2)->YLoad = 2;
  Node(3)->xtstiff = 0.00001f; // exactly the tolerance: not above it
  Node(4)->YRStiff = 3;
  Node(4)->XTDirValue = 7; // a value without its flag is no restraint
  auto lines = DeckLines();
  ASSERT_EQ(lines.size(), 12u);
  EXPECT_EQ(lines[2], "1,0,4,1,0,0,0,1");
  EXPECT_EQ(lines[10], "2,2,1,5E-06,2");
  EXPECT_EQ(lines[11], "4,4,1,0,0,3");
}

TEST_F(DeckTest, ObjectsOutsideTheStructureHaveNoRecord) {
  One_Plate(2, 2);
  // A fifth node, loaded and held but on no element, and an undefined plate
  // and stiffener between it and the others.
  Mesh& m = gMesh();
  auto loose = m.Nodes().Add(20, 0, 5, "5");
  loose->XLoad = 3;
  loose->SetZTDir(1);
  m.fourNodes().Add(Node(2), loose, Node(5), Node(3), 2, "2");
  auto bar = m.twoNodes().Add(Node(1), Node(2), 1, "1");
  bar->Thickness = 0.5f; // no width: not defined
  bar->UpdatePropertyDefined();
  Renumber();
  auto lines = DeckLines();
  EXPECT_EQ(lines[2], "1,0,4,0,0,0,0,0");
  EXPECT_EQ(lines.size(), 10u); // title to plate thickness, nothing nodal
  EXPECT_EQ(lines.back(), "1,1,1,.5");

  // The stiffener once defined: its blocks stand between the plate's.
  bar->width = 2;
  bar->UpdatePropertyDefined();
  Renumber();
  lines = DeckLines();
  ASSERT_EQ(lines.size(), 12u);
  EXPECT_EQ(lines[2], "1,1,4,0,0,0,0,0");
  EXPECT_EQ(lines[9], "1,1,1,1,1,2");
  EXPECT_EQ(lines[10], "1,1,1,.5");
  EXPECT_EQ(lines[11], "1,1,1,.5,2");
}

TEST_F(DeckTest, SpringsOnNodesOutsideTheModelFailTheRun) {
  // The plate's own deck with one spring record added, in-plane or out of
  // plane. A node number below 1 once had the run write beside its stiffness
  // matrix; one beyond the rows was refused already. Either is the general
  // failure, and the eigenvalue of an earlier run stays; a spring on a node of
  // the model runs through.
  Simply_Supported_Plate(2);
  ASSERT_EQ(Write_Deck(), 1);
  const auto lines = Lines(ReadFile(session().gTempInFile));
  DeckReader head(lines[2]);
  const DeckCounts c = Read_Counts(head);
  ASSERT_EQ(c.points, 9); // 27 rows: node 14 is the first beyond them in-plane, 10 out of plane
  ASSERT_EQ(c.inPlaneSprings + c.outSprings, 0);
  const std::size_t inPlaneEnd =
      4 + c.points + 2 * (c.plates + c.stiffeners) + c.loads + c.inPlaneBoundary;
  const struct {
    bool inPlane;
    const char* record;
    bool fails;
  } cases[] = {
      {true, "5,5,1,7,7", false},   {true, "0,0,1,7,7", true},      {true, "-3,-3,1,7,0", true},
      {true, "-1,2,1,0,7", true},   {true, "14,14,1,7,7", true},    {false, "5,5,1,7,7,7", false},
      {false, "0,0,1,7,0,0", true}, {false, "-2,-2,1,0,0,7", true}, {false, "10,10,1,7,0,0", true},
  };
  for (const auto& k : cases) {
    std::string deck;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (i == 2) {
        for (int count :
             std::initializer_list<int>{c.plates, c.stiffeners, c.points, c.loads,
                                        c.inPlaneBoundary, k.inPlane ? 1 : 0, c.outBoundary})
          deck += std::to_string(count) + ",";
        deck += k.inPlane ? "0\r\n" : "1\r\n";
        continue;
      }
      deck += lines[i] + "\r\n";
      if (k.inPlane && i + 1 == inPlaneEnd) deck += std::string(k.record) + "\r\n";
    }
    if (!k.inPlane) deck += std::string(k.record) + "\r\n";
    WriteFile(session().gTempInFile, deck);
    gAnalysis().EigenValue = 0.5f;
    host.messages.clear();
    Run_Analysis();
    EXPECT_EQ(LastRunOutcome(), k.fails ? RunOutcome::Failed : RunOutcome::Completed) << k.record;
    if (!k.fails) continue;
    EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error!"}) << k.record;
    EXPECT_EQ(host.progress.back(), "Error!...");
    EXPECT_EQ(gAnalysis().EigenValue, 0.5f);
  }
}

RunArrays Sized(long rows, long plates, long stiffeners) {
  RunArrays a;
  a.Size(rows, plates, stiffeners);
  return a;
}

TEST(DeckReaderTest, RunRecordsGeneratePointsAndElements) {
  // Points: a run of three, then two runs of one whose last is repaired.
  // Plates: a run of three; stiffeners: two runs with repaired steps.
  DeckReader deck("5,9,2,0,0,10,20\r\n"
                  "1,0,0,1,1,-1,-1\r\n"
                  "2,-3,-1,4,4,8,8\r\n"
                  "1,3,2,1,1,2,5,4\r\n"
                  "2,0,0,0,3,4\r\n"
                  "1,1,1,1,1,2\r\n"
                  "3,1,-1,.25\r\n"
                  "1,0,0,.5,4\r\n"
                  "2,2,1,1E-01,2\r\n");
  RunArrays a = Sized(12, 3, 2);
  Read_Mesh(deck, a, 3, 2, 5);
  // Points 5, 7, 9 from 0,0 to 10,20; a run of one takes its first point (X1, not X2).
  const double xy[][3] = {{5, 0, 0}, {7, 5, 10}, {9, 10, 20}, {1, 1, 1}, {2, 4, 4}};
  for (const auto& p : xy) {
    const int i = static_cast<int>(p[0]);
    EXPECT_EQ(a.X[i], p[1]) << i;
    EXPECT_EQ(a.Y[i], p[2]) << i;
  }
  const int expected[3][4] = {{1, 2, 5, 4}, {3, 4, 7, 6}, {5, 6, 9, 8}};
  for (int e = 1; e <= 3; ++e)
    for (int k = 1; k <= 4; ++k)
      EXPECT_EQ(a.plateConn(k, e), expected[e - 1][k - 1]);
  EXPECT_EQ(a.stiffConn(1, 1), 1);
  EXPECT_EQ(a.stiffConn(1, 2), 3);
  EXPECT_EQ(a.stiffConn(2, 2), 4);
  for (int e = 1; e <= 3; ++e) // a negative step walks down: 3, 2, 1
    EXPECT_EQ(a.plateThick[e], 0.25);
  EXPECT_EQ(a.stiffThick[1], 0.5);
  EXPECT_EQ(a.stiffWidth[1], 4);
  EXPECT_DOUBLE_EQ(a.stiffThick[2], 0.1);
}

TEST(DeckReaderTest, BadDecksFailWithTheirKinds) {
  const struct {
    const char* deck;
    long rows, points;
    int fault;
  } cases[] = {
      {"1,40000,1,0,0,0,0\r\n", 3, 1, errOverflow},     // beyond 16 bits
      {"1,1,1,0,0,0,0\r\n", 6, 2, errInputPastEnd},     // short deck
      {"7,7,1,0,0,0,0\r\n", 6, 1, errSubscript},        // node beyond the arrays
      {"1,1,1,\"x\",0,0,0\r\n", 6, 1, errTypeMismatch}, // text for a number
  };
  for (const auto& c : cases)
    EXPECT_EQ(FaultOf([&] {
                DeckReader d(c.deck);
                RunArrays a = Sized(c.rows, 1, 1);
                Read_Mesh(d, a, 0, 0, static_cast<Integer>(c.points));
              }),
              c.fault)
        << c.deck;
  // The run counter steps past 32767 after its last point.
  EXPECT_EQ(FaultOf([] {
              For_Run(RunRecord{32766, 32767, 1}, [](Integer, Integer) {});
            }),
            errOverflow);
}

} // namespace
} // namespace velk::test
