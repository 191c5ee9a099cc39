// Whole runs, from the model through the deck, both stages and the iteration
// back into the model and the listing: the buckling loads of the plate, the
// column and the girder against their closed forms, the figures of the
// example models as the program prints them, and the listing's text.
#include <gtest/gtest.h>

#include <cmath>

#include "RunModels.h"
#include "analysis/EigenCalculation.h"
#include "common/TextRules.h"
#include "mesh/LoadRules.h"

namespace velk::test {
namespace {

using Texts = std::vector<std::string>;

class RunTest : public RunFixture {
protected:
  // Runs and returns the eigenvalue as the message shows it.
  std::string Printed() {
    host.messages.clear();
    Run();
    return host.messages.size() == 1 ? host.messages[0].text : "no single message";
  }
};

// N = k pi^2 D / b^2 with k = 4 for the square plate simply supported on all
// four sides, D = E t^3 / (12 (1 - nu^2)); the load is 1 per length, so N is
// the load factor. The bending element is conforming and holds every quadratic
// w exactly (the normal slope is linear along its sides), so its curvatures
// err by O(h) and the energy, and with it the eigenvalue, by O(h^2): errors
// of 8.0, 2.1 and 0.51 % seen on 4, 8 and 16 elements a side, orders 1.96 and
// 2.01.
TEST_F(RunTest, SimplySupportedPlateConvergesToTheClassicalLoadAtSecondOrder) {
  const double D = 1000 * 0.1 * 0.1 * 0.1 / (12 * (1 - 0.3 * 0.3));
  const double exact = 4 * M_PI * M_PI * D / (10 * 10);
  double error[3];
  for (int i = 0; i < 3; ++i) {
    Restart();
    Simply_Supported_Plate(4 << i);
    error[i] = (Run() - exact) / exact;
    EXPECT_EQ(LastRunOutcome(), RunOutcome::Completed);
  }
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(0 < error[i + 1] && error[i + 1] < error[i]) << "falling from above";
    const double order = std::log2(error[i] / error[i + 1]);
    EXPECT_GT(order, 1.8) << (4 << i) << " to " << (8 << i) << " elements";
    EXPECT_LT(order, 2.2) << (4 << i) << " to " << (8 << i) << " elements";
  }
  EXPECT_LT(error[2], 0.006);
}

// The same plate in pure in-plane bending, by the edge-stress rule with S at
// the bottom edge and -S at the top: k = 25.6 for a square plate (the
// classical table of plates in bending). Extrapolated from 8 and 16 elements
// a side at second order, as above.
TEST_F(RunTest, PlateInBendingBucklesAtTheClassicalK) {
  const double D = 1000 * 0.1 * 0.1 * 0.1 / (12 * (1 - 0.3 * 0.3));
  const double unit = M_PI * M_PI * D / (0.1 * 10 * 10); // stress for k = 1
  const BeamShape web{0, 0, 10, 0, 0, 10, 0.1f, 0, 0, 0, 0, 10, 0.1f};
  double lambda[2];
  for (int i = 0; i < 2; ++i) {
    Restart();
    Simply_Supported_Plate(8 << i);
    for (const auto& n : gMesh().Nodes()) // the rule's loads only
      n->XLoad = 0, n->UpdatePropertyDefined();
    Apply_Rule(gMesh(), web, "--edge-sx", "1:-1");
    gAnalysis().MaxCycle = 40;
    lambda[i] = std::abs(Run());
    EXPECT_TRUE(LastRunCheck().Ok()) << (8 << i);
  }
  const double k = (lambda[1] + (lambda[1] - lambda[0]) / 3) / unit;
  EXPECT_NEAR(k, 25.6, 0.25);
  EXPECT_GT(lambda[1], k * unit); // from above, as in compression
}

TEST_F(RunTest, ExampleModelsGiveTheirFiguresAsPrinted) {
  Simply_Supported_Plate(6);
  EXPECT_EQ(Printed(), "Eigenvalue of 3.7480E-02");
  Restart();
  Stiffened_Plate(6);
  EXPECT_EQ(Printed(), "Eigenvalue of 1.6951E-01");
  for (const auto& bar : gMesh().twoNodes()) // the line carries the plate's compression
    EXPECT_TRUE(bar->vID == 0 || bar->Stress < -0.5f) << bar->Stress;
  gAnalysis().ISHEAR = vbTrue;
  EXPECT_EQ(Printed(), "Eigenvalue of 1.6825E-01");
  gAnalysis().IGSTF = vbTrue; // the mode does not twist the line
  EXPECT_EQ(Printed(), "Eigenvalue of 1.6825E-01");
  const auto l = Listing();
  ASSERT_GT(l.size(), 14u);
  EXPECT_EQ(Texts(l.begin() + 12, l.begin() + 14),
            (Texts{"Option: Torsional Geometric Stiff Option is Used",
                   "Option: Approximate Shear Distortion Option is Used"}));
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
  EXPECT_EQ(std::make_tuple(GridNode(0, 0).NCP, GridNode(2, 0).NCP, GridNode(2, 2).NCP),
            std::make_tuple(1, 2, 4));
  // The mode: one half-wave each way, w largest at the centre, edges still.
  EXPECT_EQ(GridNode(0, 2).zcoord, 0.0f);
  float largest = 0;
  for (const auto& node : gMesh().Nodes())
    largest = std::max(largest, std::fabs(node->zcoord));
  EXPECT_EQ(std::fabs(GridNode(2, 2).zcoord), largest);
  EXPECT_GT(largest, 0.5f);
  EXPECT_EQ(host.progress.back(), "Buckling Analysis Completes...");

  const auto l = Listing();
  Texts titles;
  for (const auto& line : l)
    if (line.starts_with("[")) titles.push_back(line);
  EXPECT_EQ(titles, (Texts{"[Output Starts]", "[Nodal Info]", "[Plate Element Info]", "[Loads]",
                           "[Boundary Conditions: In-plane]", "[Displacement: In-Plane]",
                           "[Stress: Plate Element]", "[Boundary conditions: Out-of-Plane]",
                           "[Input Mode Shape]", "[Input Analysis Option]",
                           "[Output Normalized Mode Shape]",
                           "[EigenValue:" + Format(lambda, "0.0000E+00") + "]", "[Output Ends]"}));
  // The head: counts at column 50.
  Texts head{"Title:Plate", "Problem Discription:No Discription", "Run ID:0"};
  // clang-format off
  const std::string what[] = {"Plate Elements", "Stiffener Elements", "Points", "Loaded Points  ",
      "In-plane Boundary Points", "Elastic Springs(In-Plane)", "Out-of-plane Boundary Points",
      "Elastic Springs(Out-of-plane)"};
  // clang-format on
  const int count[] = {16, 0, 25, 5, 5, 0, 16, 0};
  for (int i = 0; i < 8; ++i)
    head.push_back("Num. of " + what[i] + std::string(42 - what[i].size(), ' ') +
                   std::to_string(count[i]) + " ");
  head.insert(head.end(), {"Elastic Modulus 1000 ", "Poisson Ratio .3 "});
  EXPECT_EQ(Section(l, "[Output Starts]"), head);
  // The headings of the tables, and some of their first rows.
  const std::pair<const char*, Texts> tables[] = {
      {"[Nodal Info]",
       {"Node          X-Coord.      Y-Coord.", " 1             0             0 ",
        " 2             0             2.5 "}},
      {"[Plate Element Info]",
       {"Number        Node1         Node2          Node3        Node4         Thickness",
        " 1             1             6             7             2             .1 "}},
      {"[Loads]", {"Node Number   X Dir.        Y Dir.", " 21           -1.25          0 "}},
      {"[Boundary Conditions: In-plane]",
       {"Node Number   X Dir.        Y Dir.        X Value       Y Value",
        " 1            -1            -1             0             0 "}},
      {"[Displacement: In-Plane]",
       {"Node Number   X Disp.       Y Disp.", " 1            0.00E+00      0.00E+00"}},
      {"[Stress: Plate Element]",
       {"Number        Location      Node          SX            SY            SXY"}},
      {"[Boundary conditions: Out-of-Plane]",
       {"Node Number   Z Dir.        Rot. X        Rot. Y",
        " 1            -1             0             0 "}},
      {"[Input Mode Shape]",
       {"Node Number   Z Dir         Rot. X        Rot. Y",
        " 1            1.00E+00      0.00E+00      0.00E+00"}},
      {"[Input Analysis Option]",
       {"Maximum Shift Maximum Cycle Shift Factor  Estimation",
        " 3             8            8.00E-01      0.00E+00"}},
      {"[Output Normalized Mode Shape]", {"Node Number   Z Dir         Rot. X        Rot. Y"}}};
  for (const auto& [title, rows] : tables) {
    const Texts s = Section(l, title);
    EXPECT_EQ(Texts(s.begin(), s.begin() + std::min(s.size(), rows.size())), rows) << title;
  }
  // clang-format off
  const std::pair<const char*, std::size_t> sizes[] = {{"[Nodal Info]", 26},
      {"[Plate Element Info]", 17}, {"[Loads]", 6}, {"[Stress: Plate Element]", 1 + 16 * 4},
      {"[Output Normalized Mode Shape]", 26}};
  // clang-format on
  for (const auto& [title, size] : sizes)
    EXPECT_EQ(Section(l, title).size(), size) << title;
  // A corner: w held, the rotations free; w in the finer picture.
  EXPECT_TRUE(Section(l, "[Output Normalized Mode Shape]")
                  .at(1)
                  .starts_with(" 1            0.0000E+00    "));
}

TEST_F(RunTest, ColumnOfStiffenersBucklesLikeEulerAndListsNoPlates) {
  // A straight line of 16 flat bars along X, 10 long, held as a pin-ended
  // column under an end load of -1 along X.
  const int n = 16;
  Bar_Line(n, 10.0f / n, 0);
  Nodes& nodes = gMesh().Nodes();
  for (const auto& node : nodes)
    node->SetYTDir(1);
  nodes.Item(1)->SetXTDir(1), nodes.Item(1)->SetXRDir(1), nodes.Item(1)->SetZTDir(1);
  nodes.Item(n + 1)->SetZTDir(1), nodes.Item(n + 1)->XLoad = -1;
  const double lambda = Run();
  const double EI = 1.0 * 1.0 * 1.0 * 29000 * 0.1 / 12; // width^3 E t / 12
  EXPECT_NEAR(lambda / (M_PI * M_PI * EI / 100), 1.0, 0.01);
  EXPECT_EQ(gMesh().twoNodes().Item(3)->Stress, -10.0f); // 1 / (0.1 x 1)
  const auto l = Listing();
  EXPECT_FALSE(Has(l, "[Plate Element Info]") || Has(l, "[Stress: Plate Element]"));
  EXPECT_TRUE(Has(l, "[Beam Element Info]"));
  EXPECT_EQ(Section(l, "[Stress: Beam Element]").size(), 17u);
  EXPECT_EQ(l.back(), "[Output Ends]");
}

TEST_F(RunTest, GirderInBendingBucklesLaterallyAtTheClassicalMoment) {
  Girder_In_Bending();
  gAnalysis().EigenValueEstimation = 20000; // -24660, the reversed moment, is as near to 0
  EXPECT_EQ(Printed(), "Eigenvalue of 2.4660E+04");
  // Uniform moment on a span held against twist at its ends and free to warp:
  // M = pi / L sqrt(E Iy (G J + (pi / L)^2 E Cw)), flanges 12 x 0.5 at 16.5
  // apart, web 16 x 0.5.
  const double E = 29000, G = E / 2.6, L = 120, h = 16.5, flange = 0.5 * 12 * 12 * 12 / 12;
  const double Iy = 2 * flange + 16 * 0.125 / 12, J = (2 * 12 + 16) * 0.125 / 3;
  const double Cw = flange * h * h / 2;
  const double classical = M_PI / L * std::sqrt(E * Iy * (G * J + M_PI * M_PI / (L * L) * E * Cw));
  EXPECT_NEAR(gAnalysis().EigenValue / classical, 1.0, 0.005);
}

} // namespace
} // namespace velk::test
