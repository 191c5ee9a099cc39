// The whole run, from the model through the deck, both stages and the
// iteration back into the model and the listing, on models with known
// buckling loads.
#include <gtest/gtest.h>

#include <cmath>

#include "RunModels.h"
#include "analysis/EigenCalculation.h"
#include "common/TextRules.h"

namespace velk::test {
namespace {

class RunTest : public RunFixture {
protected:
  // A straight line of n flat bars along X, 10 long, held as a pin-ended column
  // under an end load of -1 along X.
  void Column(int n) {
    Mesh& m = gMesh();
    for (int i = 0; i <= n; ++i)
      m.Nodes().Add(static_cast<Single>(10.0 * i / n), 0, i + 1, std::to_string(i + 1));
    m.Nodes().SetNumberNodesX(static_cast<Integer>(n + 1));
    m.Nodes().SetNumberNodesY(1);
    for (int i = 1; i <= n; ++i) {
      auto bar = m.twoNodes().Add(m.Nodes().Item(i), m.Nodes().Item(i + 1), i, std::to_string(i));
      bar->Thickness = 0.1f;
      bar->width = 1;
      bar->UpdatePropertyDefined();
    }
    for (const auto& node : m.Nodes())
      node->SetYTDir(1);
    m.Nodes().Item(1)->SetXTDir(1);
    m.Nodes().Item(1)->SetXRDir(1);
    m.Nodes().Item(1)->SetZTDir(1);
    m.Nodes().Item(n + 1)->SetZTDir(1);
    m.Nodes().Item(n + 1)->XLoad = -1;
    m.GeneratevID();
  }
};

TEST_F(RunTest, SimplySupportedPlateConvergesTowardsTheClassicCoefficient) {
  const std::pair<int, double> meshes[] = {{4, 0.03905}, {6, 0.03748}, {8, 0.03690}, {10, 0.03663}};
  for (const auto& [n, expected] : meshes) {
    Restart();
    Simply_Supported_Plate(n);
    const double lambda = Run();
    EXPECT_NEAR(lambda, expected, 0.000005) << n << " elements";
    EXPECT_EQ(LastRunOutcome(), RunOutcome::Completed);
    ASSERT_FALSE(host.messages.empty());
    EXPECT_EQ(host.messages.back().text, "Eigenvalue of " + Format(lambda, "0.0000E+00"));
  }
}

TEST_F(RunTest, StiffenerLineRaisesThePlateAndTheOptionsActWhereExpected) {
  Stiffened_Plate(6);
  EXPECT_NEAR(Run(), 0.1695, 0.00005);
  gAnalysis().ISHEAR = vbTrue;
  EXPECT_NEAR(Run(), 0.1683, 0.00005);
  gAnalysis().IGSTF = vbTrue; // the mode does not twist the line
  EXPECT_NEAR(Run(), 0.1683, 0.00005);
  const auto listing = Listing();
  EXPECT_TRUE(Has(listing, "Option: Torsional Geometric Stiff Option is Used"));
  EXPECT_TRUE(Has(listing, "Option: Approximate Shear Distortion Option is Used"));
  for (const auto& bar : gMesh().twoNodes()) { // the line carries the plate's compression
    if (bar->vID != 0) {
      EXPECT_LT(bar->Stress, -0.5f);
    }
  }
}

TEST_F(RunTest, PlateResultsGoIntoTheModelAndTheListing) {
  Simply_Supported_Plate(4);
  gAnalysis().Title = "Plate";
  const double lambda = Run();
  // The loaded side moves in -X, the held side stays; the node stresses are
  // the plate's uniform compression of 1 / t = 10.
  EXPECT_EQ(GridNode(0, 2).InPDispX, 0.0f);
  EXPECT_LT(GridNode(4, 2).InPDispX, 0.0f);
  for (const auto& node : gMesh().Nodes()) {
    EXPECT_NEAR(node->Sx, -10.0, 1e-3);
    EXPECT_NEAR(node->Sy, 0.0, 1e-3);
    EXPECT_NEAR(node->Mises, 10.0, 1e-3);
  }
  EXPECT_EQ(GridNode(0, 0).NCP, 1);
  EXPECT_EQ(GridNode(2, 2).NCP, 4);
  EXPECT_EQ(GridNode(2, 0).NCP, 2);
  // The mode: one half-wave each way, w largest at the centre, edges still.
  EXPECT_EQ(GridNode(0, 2).zcoord, 0.0f);
  float largest = 0;
  for (const auto& node : gMesh().Nodes())
    largest = std::max(largest, std::fabs(node->zcoord));
  EXPECT_EQ(std::fabs(GridNode(2, 2).zcoord), largest);
  EXPECT_GT(largest, 0.5f);
  EXPECT_EQ(host.progress.back(), "Buckling Analysis Completes...");

  const auto l = Listing();
  ASSERT_GT(l.size(), 20u);
  const std::string head[] = {"[Output Starts]", "Title:Plate",
                              "Problem Discription:No Discription", "Run ID:0",
                              "Num. of Plate Elements" + std::string(27, ' ') + " 16 "};
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(l[i], head[i]);
  EXPECT_EQ(l[7], "Num. of Loaded Points  " + std::string(26, ' ') + " 5 ");
  EXPECT_EQ(l[11], "Num. of Elastic Springs(Out-of-plane)" + std::string(12, ' ') + " 0 ");
  EXPECT_EQ(l[12], "Elastic Modulus 1000 ");
  EXPECT_EQ(l[13], "Poisson Ratio .3 ");
  EXPECT_EQ(l[14], "[Nodal Info]");
  EXPECT_EQ(l[15], "Node          X-Coord.      Y-Coord.");
  EXPECT_EQ(l[16], " 1             0             0 ");
  EXPECT_EQ(l[17], " 2             0             2.5 ");
  const auto plates = Section(l, "[Plate Element Info]");
  ASSERT_GE(plates.size(), 2u);
  EXPECT_EQ(plates[0],
            "Number        Node1         Node2          Node3        Node4         Thickness");
  EXPECT_EQ(plates[1],
            " 1             1             6             7             2             .1 ");
  const auto loads = Section(l, "[Loads]");
  ASSERT_EQ(loads.size(), 6u);
  EXPECT_EQ(loads[1], " 21           -1.25          0 ");
  EXPECT_EQ(Section(l, "[Displacement: In-Plane]").at(1), " 1            0.00E+00      0.00E+00");
  const auto options = Section(l, "[Input Analysis Option]");
  ASSERT_EQ(options.size(), 2u);
  EXPECT_EQ(options[0], "Maximum Shift Maximum Cycle Shift Factor  Estimation");
  EXPECT_EQ(options[1], " 3             8            8.00E-01      0.00E+00");
  const auto mode = Section(l, "[Output Normalized Mode Shape]");
  ASSERT_EQ(mode.size(), 26u);
  // A corner: w held, the rotations free; w in the finer picture.
  EXPECT_TRUE(mode[1].starts_with(" 1            0.0000E+00    ")) << mode[1];
  EXPECT_EQ(l[l.size() - 2], "[EigenValue:" + Format(lambda, "0.0000E+00") + "]");
  EXPECT_EQ(l.back(), "[Output Ends]");
  // Plates only: four stress rows per plate, no stiffener sections.
  EXPECT_EQ(Section(l, "[Stress: Plate Element]").size(), 1u + 16 * 4);
  EXPECT_FALSE(Has(l, "[Beam Element Info]"));
  EXPECT_FALSE(Has(l, "[Stress: Beam Element]"));
}

TEST_F(RunTest, ColumnOfStiffenersBucklesLikeEulerAndListsNoPlates) {
  Column(16);
  const double lambda = Run();
  const double EI = 1.0 * 1.0 * 1.0 * 29000 * 0.1 / 12; // width^3 E t / 12
  EXPECT_NEAR(lambda / (M_PI * M_PI * EI / 100), 1.0, 0.01);
  const auto listing = Listing();
  EXPECT_FALSE(Has(listing, "[Plate Element Info]"));
  EXPECT_FALSE(Has(listing, "[Stress: Plate Element]"));
  EXPECT_TRUE(Has(listing, "[Beam Element Info]"));
  EXPECT_EQ(Section(listing, "[Stress: Beam Element]").size(), 17u);
  EXPECT_EQ(gMesh().twoNodes().Item(3)->Stress, -10.0f); // 1 / (0.1 x 1)
  EXPECT_EQ(listing.back(), "[Output Ends]");
}

TEST_F(RunTest, GirderInBendingBucklesLaterallyAtTheClassicalMoment) {
  Girder_In_Bending();
  gAnalysis().EigenValueEstimation = 20000; // -24660, the reversed moment, is as near to 0
  const double lambda = Run();
  EXPECT_NEAR(lambda, 24660, 5);
  // Uniform moment on a span held against twist at its ends and free to warp:
  // M = pi / L sqrt(E Iy (G J + (pi / L)^2 E Cw)), flanges 12 x 0.5 at 16.5
  // apart, web 16 x 0.5.
  const double E = 29000, G = E / 2.6, L = 120, h = 16.5, flange = 0.5 * 12 * 12 * 12 / 12;
  const double Iy = 2 * flange + 16 * 0.125 / 12, J = (2 * 12 + 16) * 0.125 / 3;
  const double Cw = flange * h * h / 2;
  const double classical = M_PI / L * std::sqrt(E * Iy * (G * J + M_PI * M_PI / (L * L) * E * Cw));
  EXPECT_NEAR(lambda / classical, 1.0, 0.005);
}

} // namespace
} // namespace velk::test
