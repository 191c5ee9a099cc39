// The VTK grid of a small plate with a line of stiffeners, read back array by
// array and held against the grid that built it.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "FaultOf.h"
#include "RunModels.h"
#include "common/Fault.h"
#include "common/TextFile.h"
#include "reports/VtuFile.h"

namespace velk::test {
namespace {

class VtuFile : public RunFixture {
protected:
  std::string Written(const std::vector<ModeShape>& extra = {}) {
    std::string text;
    OutFile out(&text);
    Write_Vtu_To(out, gMesh(), extra);
    return text;
  }
  // The numbers of the data array named `name` ("" for the points).
  static std::vector<double> Array(const std::string& text, const std::string& name) {
    const std::size_t at = name.empty() ? text.find("<DataArray", text.find("<Points>"))
                                        : text.find(" Name=\"" + name + "\"");
    if (at == std::string::npos) return {};
    const std::size_t from = text.find('>', at) + 1;
    std::istringstream in(text.substr(from, text.find("</DataArray>", from) - from));
    std::vector<double> v;
    for (double x; in >> x;)
      v.push_back(x);
    return v;
  }
  static std::vector<double> Tuple(const std::vector<double>& a, long i, int n) {
    return {a.begin() + i * n, a.begin() + (i + 1) * n};
  }
};

// n = 4: 25 points, 16 plates, and the 4 stiffener segments along y = 5 after
// the plates; a cell's offset ends its connectivity.
TEST_F(VtuFile, CountsCellsAndOffsetsFollowTheGrid) {
  Stiffened_Plate(4);
  const std::string text = Written();
  EXPECT_NE(text.find("byte_order=\"LittleEndian\""), std::string::npos);
  EXPECT_NE(text.find("NumberOfPoints=\"25\" NumberOfCells=\"20\""), std::string::npos);
  EXPECT_EQ(Array(text, "").size(), 25u * 3);
  std::vector<double> types(16, kVtkQuad), offsets;
  types.insert(types.end(), 4, kVtkLine);
  EXPECT_EQ(Array(text, "types"), types);
  for (int c = 1; c <= 20; ++c)
    offsets.push_back(c <= 16 ? 4 * c : 64 + 2 * (c - 16));
  EXPECT_EQ(Array(text, "offsets"), offsets);
  EXPECT_EQ(Array(text, "connectivity").size(), 16u * 4 + 4 * 2);
  const auto width = Array(text, "Width"), thickness = Array(text, "Thickness");
  ASSERT_EQ(width.size(), 20u);
  EXPECT_EQ(width[15], 0.0);
  EXPECT_EQ(width[16], 1.0);
  EXPECT_FLOAT_EQ(thickness[0], 0.1f);
  EXPECT_FLOAT_EQ(thickness[19], 0.1f);
  // Each stiffener joins two points at y = 5, one element apart.
  const auto points = Array(text, ""), conn = Array(text, "connectivity");
  for (int s = 0; s < 4; ++s) {
    const long a = long(conn[64 + 2 * s]), b = long(conn[65 + 2 * s]);
    EXPECT_EQ(points[3 * a + 1], 5.0);
    EXPECT_EQ(points[3 * b + 1], 5.0);
    EXPECT_NEAR(std::abs(points[3 * a] - points[3 * b]), 2.5, 1e-6);
  }
}

// The quad of grid cell (1, 2) names its four grid corners anticlockwise; a
// mesh mirrored in x keeps its quads anticlockwise in the file.
TEST_F(VtuFile, QuadsRunAnticlockwiseOverTheirGridCorners) {
  Simply_Supported_Plate(4);
  const long cell = 1 * 4 + 2; // position order runs along y within a column
  auto signedArea = [&](const std::string& text, long c) {
    const auto p = Array(text, ""), k = Tuple(Array(text, "connectivity"), c, 4);
    double twice = 0;
    for (int i = 0; i < 4; ++i) {
      const long a = long(k[i]), b = long(k[(i + 1) % 4]);
      twice += p[3 * a] * p[3 * b + 1] - p[3 * b] * p[3 * a + 1];
    }
    return twice / 2;
  };
  std::string text = Written();
  EXPECT_EQ(Tuple(Array(text, "connectivity"), cell, 4),
            (std::vector<double>{double(GridNode(1, 2).ID - 1), double(GridNode(2, 2).ID - 1),
                                 double(GridNode(2, 3).ID - 1), double(GridNode(1, 3).ID - 1)}));
  EXPECT_NEAR(signedArea(text, cell), 2.5 * 2.5, 1e-9);
  for (const auto& n : gMesh().Nodes())
    n->xcoord = -n->xcoord;
  text = Written();
  for (long c = 0; c < 16; ++c)
    EXPECT_NEAR(signedArea(text, c), 2.5 * 2.5, 1e-9) << "cell " << c;
}

// One node's arrays carry its fields exactly; a node outside the structure
// shows no results; further mode shapes follow as Mode2...
TEST_F(VtuFile, NodeArraysCarryTheNodesFieldsExactly) {
  Simply_Supported_Plate(2);
  Nodeb& n = GridNode(1, 2);
  n.InPDispX = -1.23456789e-4f;
  n.InPDispY = 3.3333333f;
  n.Sx = -10.000002f;
  n.Sy = 7e-20f;
  n.SXY = 123456.78f;
  n.Mises = 0.1f;
  n.zcoord = -0.99999994f;
  const long i = n.ID - 1;
  ModeShape second(gMesh().Nodes().Count(), 0.0f);
  second[std::size_t(i)] = 0.25f;
  const std::string text = Written({second});
  // Parsed as float: the shortest text must give back the very Single.
  auto single = [&](const std::string& name, int comps, int k) {
    return float(Tuple(Array(text, name), i, comps)[k]);
  };
  EXPECT_EQ(single("InPlaneDisplacement", 3, 0), n.InPDispX);
  EXPECT_EQ(single("InPlaneDisplacement", 3, 1), n.InPDispY);
  EXPECT_EQ(single("InPlaneDisplacement", 3, 2), 0.0f);
  EXPECT_EQ(single("Sx", 1, 0), n.Sx);
  EXPECT_EQ(single("Sy", 1, 0), n.Sy);
  EXPECT_EQ(single("Sxy", 1, 0), n.SXY);
  EXPECT_EQ(single("Mises", 1, 0), n.Mises);
  EXPECT_EQ(single("Mode1", 3, 0), 0.0f);
  EXPECT_EQ(single("Mode1", 3, 1), 0.0f);
  EXPECT_EQ(single("Mode1", 3, 2), n.zcoord);
  EXPECT_EQ(Tuple(Array(text, "Mode2"), i, 3), (std::vector<double>{0, 0, 0.25}));
  EXPECT_EQ(Tuple(Array(text, ""), i, 3), (std::vector<double>{5, 10, 0}));

  n.vID = 0;
  const std::string outside = Written();
  EXPECT_EQ(Tuple(Array(outside, "Sx"), i, 1), std::vector<double>{0});
  EXPECT_EQ(Tuple(Array(outside, "Mode1"), i, 3), (std::vector<double>{0, 0, 0}));

  second.pop_back();
  EXPECT_EQ(FaultOf([&] { Written({second}); }), errSubscript);
}

} // namespace
} // namespace velk::test
