// Further buckling modes by subspace iteration, against the full dense
// eigenproblem of the same assembled K and Kg, on the plate, the stiffened
// plate and the girder; their K-orthogonality; and the run left as it was.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "RunModels.h"
#include "DenseBuckling.h"
#include "analysis/BandMatrix.h"
#include "analysis/EigenCalculation.h"
#include "common/TextRules.h"
#include "mesh/LoadRules.h"

namespace velk::test {
namespace {

double Dot(const Vector& x, const Vector& y) {
  return std::inner_product(x.begin(), x.end(), y.begin(), 0.0);
}

class ModesTest : public RunFixture {
protected:
  void TearDown() override {
    Request_Modes(0);
    analysisHooks().StageTwoMatrices = nullptr;
    RunFixture::TearDown();
  }
  // Builds the model, runs it with `modes` asked for, and keeps K and -Kg as
  // the iteration got them.
  void RunModes(const std::function<void()>& model, int modes) {
    Restart();
    model();
    analysisHooks().StageTwoMatrices = [&](const BandMatrix& K, const BandMatrix& Kg, int n,
                                           int bw) {
      k = Full(K, n, bw, 1.0);
      g = Full(Kg, n, bw, -1.0);
    };
    Request_Modes(modes);
    eigenvalue = Run();
    ASSERT_EQ(LastRunOutcome(), RunOutcome::Completed);
  }

  // Every mode against the dense solution, their K-orthogonality, and each
  // shape's residual (K + lambda Kg) phi against the largest entry of K
  // (the shape's own largest entry is 1).
  void Check(int modes) {
    const BucklingModes& found = LastRunModes();
    ASSERT_TRUE(found.converged) << found.failure;
    ASSERT_EQ(found.eigenvalues.size(), static_cast<std::size_t>(modes));
    ASSERT_EQ(found.shapes.size(), static_cast<std::size_t>(modes));
    const Vector dense = DenseBuckling(k, g);
    ASSERT_GE(dense.size(), static_cast<std::size_t>(modes));
    for (int i = 0; i < modes; ++i)
      EXPECT_NEAR(found.eigenvalues[i], dense[i], 1e-7 * std::abs(dense[i])) << "mode " << i + 1;
    // A pair of either sign may come first in the run; its size may not.
    EXPECT_EQ(Format(std::abs(found.eigenvalues[0]), "0.0000E+00"),
              Format(std::abs(eigenvalue), "0.0000E+00"));

    std::vector<Vector> kphi;
    for (const Vector& phi : found.shapes)
      kphi.push_back(Multiply(k, phi));
    for (int i = 0; i < modes; ++i) {
      const Vector gphi = Multiply(g, found.shapes[i]);
      Vector r = kphi[i];
      for (std::size_t e = 0; e < r.size(); ++e)
        r[e] -= found.eigenvalues[i] * gphi[e];
      EXPECT_LT(MaxAbs(r), 1e-5 * MaxAbs(k)) << "residual of mode " << i + 1;
      EXPECT_DOUBLE_EQ(MaxAbs(found.shapes[i]), 1.0);
      for (int j = 0; j < i; ++j) {
        const double kij = Dot(found.shapes[i], kphi[j]);
        const double scale =
            std::sqrt(Dot(found.shapes[i], kphi[i]) * Dot(found.shapes[j], kphi[j]));
        EXPECT_LT(std::abs(kij), 1e-8 * scale) << "modes " << j + 1 << " and " << i + 1;
      }
    }
  }

  Dense k, g;
  double eigenvalue = 0.0;
};

TEST_F(ModesTest, PlateModesMatchTheDenseSolution) {
  RunModes([] { Simply_Supported_Plate(6); }, 8);
  Check(8);
}

TEST_F(ModesTest, StiffenedPlateModesMatchTheDenseSolution) {
  RunModes([] { Stiffened_Plate(6); }, 5);
  Check(5);
}

// Symmetric in its section and its moments: every mode comes with its twin
// under the moments reversed, the positive one first.
TEST_F(ModesTest, GirderModesComeInPairsOfEitherSign) {
  RunModes(Girder_In_Bending, 6);
  Check(6);
  const Vector& l = LastRunModes().eigenvalues;
  for (int i = 0; i < 6; i += 2) {
    EXPECT_GT(l[i], 0.0);
    EXPECT_NEAR(l[i + 1], -l[i], 1e-6 * l[i]);
  }
  // By node, mode 1 is the shape the run stored and its twin is mode 1
  // mirrored about the web's mid-height.
  const auto shapes = Node_Mode_Shapes(LastRunModes(), gMesh().Nodes());
  ASSERT_EQ(shapes.size(), 6u);
  const auto at = [&](int k, int ix, int iy) { return shapes[k][GridNode(ix, iy).ID - 1]; };
  const Nodeb& peak = *std::max_element(gMesh().Nodes().begin(), gMesh().Nodes().end(),
                                        [](const auto& a, const auto& b) {
                                          return std::abs(a->zcoord) < std::abs(b->zcoord);
                                        })
                           ->get();
  double twin = 0.0;
  for (int ix = 0; ix <= 14; ++ix)
    for (int iy = 0; iy <= 3; ++iy)
      if (&GridNode(ix, iy) == &peak) twin = at(1, ix, 3 - iy) / at(0, ix, iy);
  for (int ix = 0; ix <= 14; ++ix)
    for (int iy = 0; iy <= 3; ++iy) {
      EXPECT_NEAR(at(0, ix, iy), GridNode(ix, iy).zcoord, 1e-5) << ix << ',' << iy;
      EXPECT_NEAR(at(1, ix, 3 - iy), twin * at(0, ix, iy), 1e-5) << ix << ',' << iy;
    }
  EXPECT_NEAR(std::abs(twin), 1.0, 1e-5);
}

// A long panel in shear buckles in pairs of either sign with more pairs just
// above: one mode sought still settles, on the dense solution's value.
TEST_F(ModesTest, OneModeOfAShearPanelSettles) {
  RunModes(
      [] {
        Generate_Web(12, 4, 30, 10, 0.1f);
        BeamShape web;
        web.Length = 30;
        web.Web_H = web.Web_HE = 10;
        web.Web_T = web.Web_TE = 0.1f;
        web.Top_Flange_W = web.Top_Flange_T = web.Bot_Flange_W = web.Bot_Flange_T = 0;
        web.Top_Flange_WE = web.Top_Flange_TE = web.Bot_Flange_WE = web.Bot_Flange_TE = 0;
        Apply_Simple_Supports(gMesh(), web);
        Apply_Edge_Shear(gMesh(), web, 1.0);
        // The run's own iteration needs more than its default cycles here.
        gAnalysis().MaxShift = 10;
        gAnalysis().MaxCycle = 30;
      },
      1);
  Check(1);
}

// The run with modes asked for lists, stores and shows exactly what it does
// without them; a request the geometric stiffness cannot meet fails alone.
TEST_F(ModesTest, TheRunItselfStaysAsItWas) {
  const auto plain = [&](int modes) {
    Restart();
    Simply_Supported_Plate(4);
    Request_Modes(modes);
    Run();
    std::vector<std::string> shown;
    for (const auto& m : host.messages)
      shown.push_back(m.text);
    std::vector<Single> z;
    for (const auto& n : gMesh().Nodes())
      z.push_back(n->zcoord);
    return std::make_tuple(Listing(), shown, gAnalysis().EigenValue, z);
  };
  const auto without = plain(0);
  EXPECT_TRUE(LastRunModes().eigenvalues.empty());
  EXPECT_EQ(plain(3), without);
  EXPECT_EQ(LastRunModes().eigenvalues.size(), 3u);

  EXPECT_EQ(plain(20), without); // 9 free interior w on 4 x 4 elements, and their rotations
  EXPECT_EQ(LastRunOutcome(), RunOutcome::Completed);
  EXPECT_TRUE(LastRunModes().eigenvalues.empty());
  EXPECT_NE(LastRunModes().failure.find("allows only"), std::string::npos)
      << LastRunModes().failure;
}

} // namespace
} // namespace velk::test
