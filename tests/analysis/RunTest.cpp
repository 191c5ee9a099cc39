// The whole run, from the model through the deck, both stages and the
// iteration back into the model, on models with known buckling loads.
#include <gtest/gtest.h>

#include "RunModels.h"
#include "TestSession.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "common/TextRules.h"

namespace velk::test {
namespace {

class RunTest : public SessionTest {
protected:
  // Writes the deck and runs; returns the eigenvalue stored in the model.
  double Run() {
    EXPECT_EQ(Write_Deck(), 1);
    Run_Analysis();
    return gAnalysis().EigenValue;
  }
};

TEST_F(RunTest, SimplySupportedPlateConvergesTowardsTheClassicCoefficient) {
  const std::pair<int, double> meshes[] = {{4, 0.03905}, {6, 0.03748}, {8, 0.03690}, {10, 0.03663}};
  for (const auto& [n, expected] : meshes) {
    Clear_Session();
    host.messages.clear();
    Simply_Supported_Plate(n);
    const double lambda = Run();
    EXPECT_NEAR(lambda, expected, 0.000005) << n << " elements";
    EXPECT_EQ(LastRunOutcome(), RunOutcome::Completed);
    ASSERT_FALSE(host.messages.empty());
    EXPECT_EQ(host.messages.back().text, "Eigenvalue of " + Format(lambda, "0.0000E+00"));
  }
}

} // namespace
} // namespace velk::test
