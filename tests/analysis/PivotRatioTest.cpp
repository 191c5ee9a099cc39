// The pivot ratio of a factoring, the smallest pivot against its row's own
// diagonal: a zero pivot, and whole runs of supported and free models.
#include <gtest/gtest.h>

#include "FaultOf.h"
#include "RunModels.h"
#include "analysis/BandMatrix.h"
#include "analysis/EigenCalculation.h"

namespace velk::test {
namespace {

// Row 2 loses its diagonal to row 1 exactly: the division by zero of old,
// and a ratio of 0.
TEST(PivotRatio, AZeroPivotFaultsAsBeforeAndCountsAsZero) {
  BandMatrix Z(3, 2);
  Z(1, 1) = Z(1, 2) = Z(2, 1) = Z(2, 2) = Z(3, 1) = 1;
  double ratio = -1;
  EXPECT_EQ(FaultOf([&] { Band_Factor_Measured(Z, 3, 2, ratio); }), errDivByZero);
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
