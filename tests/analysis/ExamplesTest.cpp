// The example projects under examples/ are made by this code. Each example
// must still open and give the same deck as the model built here, so that the
// files and their recipes cannot drift apart. To write them anew:
//   VELK_WRITE_EXAMPLES=1 velk_core_tests --gtest_filter='ExamplesTest.*'
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include "RunModels.h"
#include "TestSession.h"
#include "analysis/Deck.h"
#include "forms/frmEigen.h"
#include "session/AnalysisRun.h"
#include "session/ProjectFile.h"

namespace velk::test {
namespace {

struct Example {
  const char* file;
  const char* title;
  const char* discription;
  std::function<void()> build;
};

const Example kExamples[] = {
    {"simply-supported-plate.inp", "Simply supported square plate",
     "Side 10, t 0.1, E 1000, nu 0.3, 6 x 6 elements; unit compression per length along X. "
     "Eigenvalue 0.03748 (buckling coefficient 4.147; 4 in the limit).",
     [] { Simply_Supported_Plate(6); }},
    {"stiffened-plate.inp", "Square plate with a stiffener line",
     "The simply supported plate with flat bars 0.1 x 1 along y = 5. Eigenvalue 0.1695; "
     "0.1683 with the shear option.",
     [] { Stiffened_Plate(6); }},
    {"girder-in-bending.inp", "Girder under end moments",
     "Default girder (flanges 12 x 0.5, web 16 x 0.5, length 120, E 29000), 14 x 3 "
     "elements; bottom corners held in-plane, ends braced; unit end moments compress the "
     "top flange. Critical moment 24660 (classical LTB 24717); estimate 20000 avoids "
     "-24660.",
     [] {
       Girder_In_Bending();
       gAnalysis().EigenValueEstimation = 20000;
     }},
};

class ExamplesTest : public SessionTest {
protected:
  std::string DeckOfSession() {
    EXPECT_EQ(Write_Deck(), 1);
    return ReadFile(session().gTempInFile);
  }
};

TEST_F(ExamplesTest, EachExampleOpensToTheModelOfItsRecipe) {
  const bool write = std::getenv("VELK_WRITE_EXAMPLES") != nullptr;
  for (const Example& e : kExamples) {
    Clear_Session();
    e.build();
    gAnalysis().Title = e.title;
    gAnalysis().Discription = e.discription;
    const std::string path = std::string(VELK_EXAMPLES_DIR) + "/" + e.file;
    if (write) {
      ASSERT_TRUE(Save_Project_Path(path)) << path;
    }
    const std::string built = DeckOfSession();

    Clear_Session();
    ASSERT_TRUE(Open_Project_Path(path)) << path;
    EXPECT_EQ(DeckOfSession(), built) << e.file << ": rewrite with VELK_WRITE_EXAMPLES=1";
    // A run and a save would cut what the run dialog does not take.
    EXPECT_LE(gAnalysis().Title.size(), frmEigen::kTitleLimit) << e.file;
    EXPECT_LE(gAnalysis().Discription.size(), frmEigen::kDiscriptionLimit) << e.file;
  }
}

} // namespace
} // namespace velk::test
