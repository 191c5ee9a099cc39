// The eigenvalue iteration: the normalisation, and cycle by cycle on the
// simply supported plate of 6 x 6 elements both starting shapes, a new shift,
// a given estimate, and the bounds on shifts and cycles.
#include <gtest/gtest.h>

#include "RunModels.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "analysis/EigenIteration.h"
#include "session/AnalysisRun.h"

namespace velk::test {
namespace {

// The first of the largest entries, with its sign, out of the first n; a mode
// of mirrored entries must not change sign with the order of the points.
TEST(IterationParts, NormaliseKeepsTheFirstLargestWithItsSign) {
  std::vector<double> v{1.0, -4.0, 4.0, 2.0, 100.0};
  EXPECT_EQ(Normalise_Vector(v, 4), -4.0);
  EXPECT_EQ(v, (std::vector<double>{-0.25, 1.0, -1.0, -0.5, 100.0}));
}

struct Cycle {
  int shift, cycle;
  double sigma, lambda;
};

class TraceTest : public SessionTest {
protected:
  // Runs the plate, its options set as given, and records every cycle.
  std::vector<Cycle> Trace(int initialB, Single estimate = 0, int shifts = 3, int cycles = 8) {
    Clear_Session();
    Simply_Supported_Plate(6);
    Analysis& a = gAnalysis();
    a.OptionInitialB = static_cast<Integer>(initialB);
    a.EigenValueEstimation = estimate;
    a.MaxShift = static_cast<Integer>(shifts);
    a.MaxCycle = static_cast<Integer>(cycles);
    std::vector<Cycle> trace;
    analysisHooks().Cycle = [&](int s, int c, double sigma, double lambda, double) {
      trace.push_back({s, c, sigma, lambda});
    };
    EXPECT_EQ(Write_Deck(), 1);
    Run_Analysis();
    analysisHooks().Cycle = nullptr;
    return trace;
  }
};

TEST_F(TraceTest, UnsymmetricStartNeedsASecondShift) {
  // The first third of the points up, the rest down by half: the first
  // estimate is negative, and the first shift runs out of cycles.
  const auto t = Trace(0);
  const double first[] = {-0.0639, 0.0428, 0.0431, 0.0415, 0.0387, 0.0375, 0.03750, 0.03749};
  ASSERT_GE(t.size(), 9u);
  for (int i = 0; i < 8; ++i) {
    EXPECT_TRUE(t[i].shift == 1 && t[i].sigma == 0.0) << "cycle " << i + 1;
    EXPECT_NEAR(t[i].lambda, first[i], i < 6 ? 0.00005 : 0.000005) << "cycle " << i + 1;
  }
  // The new shift is the factor, as a Single, times the last estimate, and the
  // iterate carries over: the second shift holds 0.03748 from its first cycle
  // and stops on the change of the vector after a few more.
  EXPECT_EQ(t[8].sigma, t[7].lambda * static_cast<double>(0.8f));
  for (std::size_t i = 8; i < t.size(); ++i) {
    EXPECT_EQ(t[i].shift, 2);
    EXPECT_NEAR(t[i].lambda, 0.03748, 0.000005);
  }
  EXPECT_TRUE(t.back().cycle == 4 || t.back().cycle == 5) << t.back().cycle;
  EXPECT_EQ(gAnalysis().EigenValue, static_cast<Single>(t.back().lambda));
}

TEST_F(TraceTest, SymmetricStartConvergesOnTheFirstShift) {
  const auto t = Trace(1);
  ASSERT_EQ(t.size(), 8u);
  const double first[] = {0.0263, 0.0354, 0.0369};
  for (int i = 0; i < 3; ++i)
    EXPECT_NEAR(t[i].lambda, first[i], 0.00005) << "cycle " << i + 1;
  for (std::size_t i = 1; i < t.size(); ++i)
    EXPECT_GT(t[i].lambda, t[i - 1].lambda);
  EXPECT_EQ(t.back().shift, 1);
  EXPECT_NEAR(t.back().lambda, 0.03748, 0.000005);
}

TEST_F(TraceTest, EstimateShiftsTheFirstPassAndLimitsBound) {
  // One shift of many cycles at a good estimate: plain shifted inverse
  // iteration, which converges on that one shift.
  auto t = Trace(0, 0.035f, 1, 50);
  ASSERT_FALSE(t.empty());
  EXPECT_EQ(t.front().sigma, static_cast<double>(0.035f));
  EXPECT_LT(t.size(), 50u);
  EXPECT_NEAR(t.back().lambda, 0.03748, 0.000005);
  // One cycle per shift, never converging: the next shift is the factor times
  // the estimate, which holds the shift before; the last estimate is reported.
  t = Trace(0, 0.035f, 2, 1);
  ASSERT_EQ(t.size(), 2u);
  EXPECT_EQ(t[1].sigma, t[0].lambda * static_cast<double>(0.8f));
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Completed);
  EXPECT_EQ(gAnalysis().EigenValue, static_cast<Single>(t[1].lambda));
}

} // namespace
} // namespace velk::test
