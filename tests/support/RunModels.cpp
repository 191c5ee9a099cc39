#include "RunModels.h"

#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "mesh/GirderBuilder.h"
#include "session/AnalysisRun.h"

namespace velk::test {

void Generate_Web(int nx, int ny, Single length, Single depth, Single thickness) {
  BeamShape web;
  web.Length = length;
  web.Web_H = web.Web_HE = depth;
  web.Web_T = web.Web_TE = thickness;
  web.Top_Flange_W = web.Top_Flange_T = web.Bot_Flange_W = web.Bot_Flange_T = 0;
  web.Top_Flange_WE = web.Top_Flange_TE = web.Bot_Flange_WE = web.Bot_Flange_TE = 0;
  gMaterial().MOE = 1000;
  gMaterial().PR = 0.3f;
  Build_Girder(web, nx, ny, gMesh());
}

Nodeb& GridNode(int ix, int iy) {
  return *Grid_Node(gMesh().Nodes(), ix, iy);
}

void Simply_Supported_Plate(int n) {
  Generate_Web(n, n, 10, 10, 0.1f);
  for (int i = 0; i <= n; ++i) {
    GridNode(0, i).SetXTDir(1);
    for (Nodeb* edge : {&GridNode(0, i), &GridNode(n, i), &GridNode(i, 0), &GridNode(i, n)})
      edge->SetZTDir(1);
    GridNode(n, i).XLoad = static_cast<Single>(-10.0 / n * (i == 0 || i == n ? 0.5 : 1.0));
  }
  GridNode(0, 0).SetYTDir(1);
  for (const auto& node : gMesh().Nodes())
    node->UpdatePropertyDefined();
}

void Stiffened_Plate(int n) {
  Simply_Supported_Plate(n);
  twoNodes& bars = gMesh().twoNodes();
  for (const auto& bar : bars) {
    if (bar->Node1->ycoord != 5.0f || bar->Node2->ycoord != 5.0f) continue;
    bar->Thickness = 0.1f;
    bar->width = 1.0f;
    bar->UpdatePropertyDefined();
  }
  gMesh().GeneratevID();
}

void Girder_In_Bending() {
  Build_Girder(BeamShape{}, 14, 3, gMesh()); // 120 long, flanges 12 x 0.5, web 16 x 0.5
  const int nx = 14, ny = 3;
  GridNode(0, 0).SetXTDir(1);
  GridNode(0, 0).SetYTDir(1);
  GridNode(nx, 0).SetYTDir(1);
  for (int i = 0; i <= ny; ++i) {
    GridNode(0, i).SetZTDir(1);
    GridNode(nx, i).SetZTDir(1);
  }
  // A unit moment at each end: flange forces of 1 / depth.
  const Single force = 1.0f / 16.5f;
  GridNode(0, ny).XLoad = force;
  GridNode(0, 0).XLoad = -force;
  GridNode(nx, ny).XLoad = -force;
  GridNode(nx, 0).XLoad = force;
  for (const auto& node : gMesh().Nodes())
    node->UpdatePropertyDefined();
}

void One_Plate(int nodesX, int nodesY) {
  Mesh& m = gMesh();
  const float xy[4][2] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  for (int i = 0; i < 4; ++i)
    m.Nodes().Add(xy[i][0], xy[i][1], i + 1, std::to_string(i + 1));
  m.Nodes().SetNumberNodesX(static_cast<Integer>(nodesX));
  m.Nodes().SetNumberNodesY(static_cast<Integer>(nodesY));
  auto n = [&](int i) { return m.Nodes().Item(i); };
  auto plate = m.fourNodes().Add(n(1), n(2), n(3), n(4), 1, "1");
  plate->Thickness = 0.5f;
  plate->UpdatePropertyDefined();
  m.GeneratevID();
}

void Bar_Line(int n, Single dx, Single dy) {
  Mesh& m = gMesh();
  for (int i = 0; i <= n; ++i)
    m.Nodes().Add(dx * static_cast<Single>(i), dy * static_cast<Single>(i), i + 1,
                  std::to_string(i + 1));
  m.Nodes().SetNumberNodesX(static_cast<Integer>(dx != 0 ? n + 1 : 1));
  m.Nodes().SetNumberNodesY(static_cast<Integer>(dx != 0 ? 1 : n + 1));
  for (int i = 1; i <= n; ++i) {
    auto bar = m.twoNodes().Add(m.Nodes().Item(i), m.Nodes().Item(i + 1), i, std::to_string(i));
    bar->Thickness = 0.1f;
    bar->width = 1;
    bar->UpdatePropertyDefined();
  }
  m.GeneratevID();
}

double RunFixture::Run() {
  EXPECT_EQ(Write_Deck(), 1);
  Run_Analysis();
  return gAnalysis().EigenValue;
}

std::vector<std::string> RunFixture::Listing() {
  return Lines(ReadFile(session().gTempOutFile));
}

std::vector<std::string> RunFixture::Section(const std::vector<std::string>& lines,
                                             const std::string& title) {
  auto at = std::find(lines.begin(), lines.end(), title);
  std::vector<std::string> rows;
  if (at != lines.end())
    for (++at; at != lines.end() && !at->starts_with("["); ++at)
      rows.push_back(*at);
  return rows;
}

} // namespace velk::test
