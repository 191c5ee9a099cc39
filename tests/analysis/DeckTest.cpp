// The deck: what the writer puts out for a model, byte for byte, which
// records a run refuses, and the limits of the reader's arrays and runs.
#include <gtest/gtest.h>

#include "FaultOf.h"
#include "RunModels.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "session/AnalysisRun.h"

namespace velk::test {
namespace {

class DeckTest : public SessionTest {
protected:
  std::shared_ptr<Nodeb> Node(int i) { return gMesh().Nodes().Item(i); }
  std::vector<std::string> DeckLines() {
    EXPECT_EQ(Write_Deck(), 1);
    return Lines(ReadFile(session().gTempInFile));
  }
};

// Values of nodal blocks count when above the tolerance of 1e-5: a node goes
// in when one of its values does, with all of them in full.
TEST_F(DeckTest, OnePlateDeckIsWrittenRecordForRecord) {
  One_Plate(2, 2);
  Node(1)->XLoad = 0.000005f; // under the tolerance, alone: no record
  Node(2)->XLoad = 0.000005f, Node(2)->YLoad = 2; // under, but the other value puts it in
  Node(1)->SetXTDir(1), Node(1)->SetYTDir(1), Node(4)->SetXTDir(1);
  Node(3)->XTDirValue = 7;     // a value without its flag is no restraint
  Node(3)->xtstiff = 0.00001f; // exactly the tolerance: not above it
  Node(4)->YRStiff = 3;
  for (int i = 1; i <= 4; ++i)
    Node(i)->SetZTDir(1);
  // A fifth node, loaded and held but on no element, an undefined plate on it
  // and a stiffener without width: none of them has a record.
  Mesh& m = gMesh();
  auto loose = m.Nodes().Add(20, 0, 5, "5");
  loose->XLoad = 3;
  loose->SetZTDir(1);
  m.fourNodes().Add(Node(2), loose, Node(5), Node(3), 2, "2");
  auto bar = m.twoNodes().Add(Node(1), Node(2), 1, "1");
  bar->Thickness = 0.5f;
  bar->UpdatePropertyDefined();
  m.GeneratevID();

  ASSERT_EQ(Write_Deck(), 1);
  EXPECT_EQ(session().gTempInFile, Scratch("velktempin.vlk"));
  EXPECT_EQ(session().gTempOutFile, Scratch("velktempout.vlk"));
  // A line each: head, counts and material; points; plate, its thickness,
  // loads, in-plane restraints; out-of-plane restraints and springs.
  EXPECT_EQ(ReadFile(session().gTempInFile),
            "\"No Title\"\r\n\"No Discription\",\"0\"\r\n1,0,4,1,2,0,4,1\r\n29000,.3\r\n"
            "1,1,1,0,0,0,0\r\n2,2,1,10,0,10,0\r\n3,3,1,10,10,10,10\r\n4,4,1,0,10,0,10\r\n"
            "1,1,1,1,1,2,3,4\r\n1,1,1,.5\r\n2,2,1,5E-06,2\r\n1,1,1,-1,-1,0,0\r\n4,4,1,-1,0,0,0\r\n"
            "1,1,1,-1,0,0\r\n2,2,1,-1,0,0\r\n3,3,1,-1,0,0\r\n4,4,1,-1,0,0\r\n4,4,1,0,0,3\r\n");
  SetTemporaryFolder(Scratch("no/such/folder")); // unwritable: 0
  EXPECT_EQ(Write_Deck(), 0);
  SetTemporaryFolder("");
}

TEST_F(DeckTest, SpringOnANodeOutsideTheModelIsTheGeneralFailure) {
  // The plate's own deck with one out-of-plane spring record added at its end.
  // A node number below 1 once had the run write beside its stiffness matrix;
  // one beyond the 27 rows is refused as well. Either is the general failure,
  // and the eigenvalue of an earlier run stays; a spring on a node of the
  // model runs through.
  Simply_Supported_Plate(2);
  auto lines = DeckLines();
  ASSERT_TRUE(lines[2].ends_with(",0")); // the count of out-of-plane springs
  lines[2].back() = '1';
  std::string deck;
  for (const auto& line : lines)
    deck += line + "\r\n";
  const std::pair<const char*, bool> cases[] = {{"5,5,1,7,7,7", false},
                                                {"0,0,1,7,0,0", true},
                                                {"-2,-2,1,0,0,7", true},
                                                {"10,10,1,7,0,0", true}};
  for (const auto& [record, fails] : cases) {
    WriteFile(session().gTempInFile, deck + record + "\r\n");
    gAnalysis().EigenValue = 0.5f;
    host.messages.clear();
    Run_Analysis();
    EXPECT_EQ(LastRunOutcome(), fails ? RunOutcome::Failed : RunOutcome::Completed) << record;
    if (!fails) continue;
    EXPECT_EQ(host.Texts(), std::vector<std::string>{"Error!"}) << record;
    EXPECT_EQ(host.progress.back(), "Error!...");
    EXPECT_EQ(gAnalysis().EigenValue, 0.5f);
  }
}

TEST(DeckReaderTest, NodeBeyondTheArraysAndRunPast32767Fail) {
  EXPECT_EQ(FaultOf([] {
              DeckReader d("7,7,1,0,0,0,0\r\n");
              RunArrays a;
              a.Size(6, 1, 1);
              Read_Mesh(d, a, 0, 0, 1);
            }),
            errSubscript);
  // The run counter steps past 32767 after its last point.
  EXPECT_EQ(FaultOf([] {
              For_Run(RunRecord{32766, 32767, 1}, [](Integer, Integer) {});
            }),
            errOverflow);
}

} // namespace
} // namespace velk::test
