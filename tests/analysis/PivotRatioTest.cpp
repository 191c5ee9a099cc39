// The pivot ratio of a factoring: the smallest pivot against its row's own
// diagonal, on matrices whose pivots are known in closed form, on singular
// ones, and over whole runs of supported and free models.
#include <gtest/gtest.h>

#include <cstring>

#include "FaultOf.h"
#include "RunModels.h"
#include "analysis/BandMatrix.h"
#include "analysis/EigenCalculation.h"

namespace velk::test {
namespace {

// A bar of n equal segments, spring k at both ends: tridiagonal 2 -1 with
// 1 + k at the corners, all scaled by `scale`.
BandMatrix Bar(int n, double k, double scale) {
  BandMatrix M(n, 2);
  for (int i = 1; i <= n; ++i) {
    M(i, 1) = scale * (i == 1 || i == n ? 1 + k : 2);
    if (i < n) M(i, 2) = -scale;
  }
  return M;
}

TEST(PivotRatio, ClosedFormPivotsAndTheSameFactorAsBandFactor) {
  // With k = 1 the matrix is tridiag(-1, 2, -1), whose pivots are (i + 1) / i:
  // the smallest against its diagonal 2 is the last, (n + 1) / (2 n).
  for (int n : {2, 5, 40}) {
    BandMatrix M = Bar(n, 1, 3.0), plain = M;
    double ratio = -1;
    Band_Factor_Measured(M, n, 2, ratio);
    EXPECT_NEAR(ratio, (n + 1.0) / (2.0 * n), 1e-14) << n;
    Band_Factor(plain, n, 2);
    for (int i = 1; i <= n; ++i)
      EXPECT_EQ(std::memcmp(&M(i, 1), &plain(i, 1), 2 * sizeof(double)), 0) << i;
  }
  // The free bar (k = 0) is singular: its last pivot is round-off, or 0.
  for (double scale : {1.0, 0.1, 2900.7}) {
    BandMatrix M = Bar(30, 0, scale);
    double ratio = -1;
    Band_Factor_Measured(M, 30, 2, ratio);
    EXPECT_LT(ratio, 1e-13) << scale;
  }
}

TEST(PivotRatio, AZeroPivotFaultsAsBeforeAndCountsAsZero) {
  // Row 2 loses its diagonal to row 1 exactly: the division by zero of old.
  BandMatrix M(3, 2);
  M(1, 1) = 1, M(1, 2) = 1, M(2, 1) = 1, M(2, 2) = 1, M(3, 1) = 1;
  double ratio = -1;
  EXPECT_EQ(FaultOf([&] { Band_Factor_Measured(M, 3, 2, ratio); }), errDivByZero);
  EXPECT_EQ(ratio, 0);
}

// Smallest ratios seen: 0.16 for the plate, 0.05 stiffened, 0.019 for the
// girder; 2e-15 for the plate free in its plane, 1.5e-13 free out of it. The
// run goes on as it always did: the free plate still shows an eigenvalue.
TEST_F(RunFixture, SupportedModelsKeepTheirDigitsFreeOnesLoseThem) {
  for (void (*build)() : {+[] { Simply_Supported_Plate(6); }, +[] { Stiffened_Plate(6); },
                          +[] { Girder_In_Bending(); }}) {
    Restart();
    build();
    Run();
    EXPECT_GT(LastRunSmallestPivotRatio(), 1e-3);
  }
  for (bool inPlane : {true, false}) {
    Restart();
    Simply_Supported_Plate(6);
    for (const auto& n : gMesh().Nodes())
      inPlane ? (n->SetXTDir(0), n->SetYTDir(0)) : n->SetZTDir(0);
    Run();
    EXPECT_LT(LastRunSmallestPivotRatio(), 1e-12) << inPlane;
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_TRUE(host.messages[0].text.starts_with("Eigenvalue of ")) << host.messages[0].text;
  }
}

} // namespace
} // namespace velk::test
