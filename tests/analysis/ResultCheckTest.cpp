// The check of a run's eigenvalue: the Sturm count against the dense
// eigenvalues of the same K and Kg at many shifts, the residual against a
// dense product and its bound against the dense load factors, and the verdicts of runs that settled, stopped short, went
// past the lowest mode or had no restraint.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "DenseBuckling.h"
#include "RunModels.h"
#include "analysis/EigenCalculation.h"
#include "analysis/ResultCheck.h"

namespace velk::test {
namespace {

class CheckTest : public RunFixture {
protected:
  void TearDown() override {
    analysisHooks().StageTwoMatrices = nullptr;
    RunFixture::TearDown();
  }
  // Builds and runs the model, keeping K and Kg as the iteration got them.
  double RunKeeping(const std::function<void()>& model) {
    Restart();
    model();
    analysisHooks().StageTwoMatrices = [&](const BandMatrix& K, const BandMatrix& Kg, int size,
                                           int band) {
      k.emplace(K);
      g.emplace(Kg);
      n = size;
      bw = band;
    };
    return Run();
  }
  // The dense solution's load factors of magnitude below |s|, on s's side.
  int DenseCount(const Vector& dense, double s) {
    return static_cast<int>(std::count_if(dense.begin(), dense.end(), [&](double l) {
      return (s > 0 ? l > 0 : l < 0) && std::abs(l) < std::abs(s);
    }));
  }

  std::optional<BandMatrix> k, g;
  int n = 0, bw = 0;
};

// Shifts below, between and above the first load factors (up to a dozen) of either
// sign: the band count equals the dense count at each.
TEST_F(CheckTest, SturmCountEqualsTheDenseCount) {
  for (const auto& model : {std::function<void()>([] { Simply_Supported_Plate(4); }),
                            std::function<void()>([] { Stiffened_Plate(4); }),
                            std::function<void()>(Girder_In_Bending)}) {
    RunKeeping(model);
    const Vector dense = DenseBuckling(Full(*k, n, bw, 1.0), Full(*g, n, bw, -1.0));
    ASSERT_GE(dense.size(), 9u);
    BandMatrix work(k->Rows(), k->Columns());
    std::vector<double> shifts;
    for (std::size_t i = 0; i < std::min<std::size_t>(12, dense.size()); ++i)
      for (double f : {0.5, 0.999, 1.001})
        shifts.push_back(f * std::abs(dense[i]));
    for (double s : shifts)
      for (double sign : {1.0, -1.0})
        EXPECT_EQ(Sturm_Count(*k, *g, work, n, bw, sign * s), DenseCount(dense, sign * s))
            << "s = " << sign * s;
  }
}

TEST_F(CheckTest, ResidualAgreesWithTheDenseProduct) {
  const double lambda = RunKeeping([] { Simply_Supported_Plate(4); });
  const Dense K = Full(*k, n, bw, 1.0), G = Full(*g, n, bw, 1.0);
  Vector y(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i)
    y[i] = std::sin(0.37 * i) + 0.1 * i;
  for (double l : {lambda, -3.0 * lambda}) {
    const Vector ky = Multiply(K, y), gy = Multiply(G, y);
    double r = 0.0, norm = 0.0;
    for (int i = 0; i < n; ++i) {
      r += std::pow(ky[i] + l * gy[i], 2);
      norm += ky[i] * ky[i];
    }
    EXPECT_NEAR(Relative_Residual(*k, *g, n, bw, l, y), std::sqrt(r / norm),
                1e-12 * std::sqrt(r / norm));
  }
}

// The verdicts of whole runs, against the dense solution's lowest value.
TEST_F(CheckTest, VerdictsOfRuns) {
  RunKeeping([] { Simply_Supported_Plate(6); });
  const Vector dense = DenseBuckling(Full(*k, n, bw, 1.0), Full(*g, n, bw, -1.0));
  ResultCheck c = LastRunCheck();
  EXPECT_TRUE(c.made && c.Ok()) << c.residual;
  EXPECT_LT(c.residual, kResidualLimit / 10);

  // One cycle of one shift: the value is the first estimate, far from settled;
  // with a few more, nearer. Each time the residual bounds the distance to
  // the nearest dense load factor, as it must while the count is 0.
  int bounded = 0;
  for (int cycles : {1, 6, 8, 12}) {
    const double early = RunKeeping([&] {
      Simply_Supported_Plate(6);
      gAnalysis().MaxShift = 1;
      gAnalysis().MaxCycle = cycles;
    });
    c = LastRunCheck();
    if (cycles == 1) {
      EXPECT_FALSE(c.Converged()) << c.residual;
    }
    double nearest = 1e300;
    for (double l : dense)
      nearest = std::min(nearest, std::abs(l - early) / std::abs(early));
    if (c.Lowest() && c.residual < 1.0) {
      EXPECT_LE(nearest, c.residual) << cycles << " cycles";
      ++bounded;
    }
  }
  EXPECT_GE(bounded, 2);

  // Shifted to 10, the iteration settles on a higher mode: the counts are
  // those of the dense solution and the smaller one named is its lowest.
  const double high = RunKeeping([] {
    Simply_Supported_Plate(6);
    gAnalysis().EigenValueEstimation = 10;
  });
  c = LastRunCheck();
  EXPECT_TRUE(c.Converged());
  const double s = (1 - kSturmMargin) * std::abs(high);
  EXPECT_EQ(c.belowPositive, DenseCount(dense, s));
  EXPECT_EQ(c.belowNegative, DenseCount(dense, -s));
  EXPECT_GT(c.Below(), 0);
  ASSERT_TRUE(c.smaller.has_value());
  EXPECT_NEAR(*c.smaller, dense[0], 1e-6 * dense[0]);

  // Off: nothing is made, and nothing is doubted.
  Request_Check(false);
  RunKeeping([] { Simply_Supported_Plate(6); });
  Request_Check(true);
  EXPECT_FALSE(LastRunCheck().made);
  EXPECT_TRUE(LastRunCheck().Ok());
}

// A plate with every restraint taken off moves freely: the run may still end
// in a number, which the check calls meaningless.
TEST_F(CheckTest, AFreePlateIsNoResult) {
  Restart();
  Simply_Supported_Plate(4);
  for (const auto& node : gMesh().Nodes()) {
    node->SetXTDir(0);
    node->SetYTDir(0);
    node->SetZTDir(0);
    node->SetXRDir(0);
    node->SetYRDir(0);
  }
  Run();
  ASSERT_EQ(LastRunOutcome(), RunOutcome::Completed);
  EXPECT_TRUE(LastRunCheck().Free());
  EXPECT_FALSE(LastRunCheck().Ok());
}

} // namespace
} // namespace velk::test
