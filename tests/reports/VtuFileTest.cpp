// The VTK grid of a small plate, read back array by array and held against
// the grid that built it.
#include <gtest/gtest.h>

#include <sstream>

#include "FaultOf.h"
#include "RunModels.h"
#include "common/TextFile.h"
#include "reports/VtuFile.h"

namespace velk::test {
namespace {

using Numbers = std::vector<double>;

class VtuFile : public RunFixture {
protected:
  // Tuple i (of n numbers) of the array `name` ("" for the points).
  Numbers Tuple(const std::string& name, long i, int n, const std::vector<ModeShape>& extra = {}) {
    std::string text;
    OutFile out(&text);
    Write_Vtu_To(out, gMesh(), extra);
    const std::size_t at = name.empty() ? text.find("<DataArray", text.find("<Points>"))
                                        : text.find(" Name=\"" + name + "\"");
    const std::size_t from = text.find('>', at) + 1;
    std::istringstream in(text.substr(from, text.find("</DataArray>", from) - from));
    Numbers all;
    for (double x; in >> x;)
      all.push_back(x);
    EXPECT_LE(std::size_t((i + 1) * n), all.size()) << name;
    return all.size() < std::size_t((i + 1) * n)
               ? Numbers{}
               : Numbers(all.begin() + i * n, all.begin() + (i + 1) * n);
  }
};

// n = 4: 25 points, 16 quads, then the 4 stiffener segments along y = 5.
TEST_F(VtuFile, CellsFollowTheGridWithQuadsAnticlockwise) {
  Stiffened_Plate(4);
  EXPECT_EQ(Tuple("", 24, 3), (Numbers{10, 10, 0}));
  Numbers types(16, kVtkQuad);
  types.insert(types.end(), 4, kVtkLine);
  EXPECT_EQ(Tuple("types", 0, 20), types);
  EXPECT_EQ(Tuple("offsets", 19, 1), Numbers{16 * 4 + 4 * 2});
  EXPECT_EQ(Tuple("Width", 16, 1), Numbers{1});
  // Grid cell (1, 2) names its corners anticlockwise from (1, 2).
  auto corner = [](int i, int j) { return double(GridNode(i, j).ID - 1); };
  const Numbers cell{corner(1, 2), corner(2, 2), corner(2, 3), corner(1, 3)};
  EXPECT_EQ(Tuple("connectivity", 1 * 4 + 2, 4), cell);
  // Mirrored in x, the cell turns over and is written the other way round.
  for (const auto& n : gMesh().Nodes())
    n->xcoord = -n->xcoord;
  EXPECT_EQ(Tuple("connectivity", 1 * 4 + 2, 4), (Numbers{cell[0], cell[3], cell[2], cell[1]}));
}

// One node's arrays give back its Singles exactly; a node outside the
// structure shows no results; further shapes follow as Mode2.
TEST_F(VtuFile, NodeArraysCarryTheNodesFieldsExactly) {
  Simply_Supported_Plate(2);
  Nodeb& n = GridNode(1, 2);
  n.InPDispX = -1.23456789e-4f;
  n.Sx = 123456.78f;
  n.Mises = 7e-20f;
  n.zcoord = -0.99999994f;
  const long i = n.ID - 1;
  ModeShape second(gMesh().Nodes().Count(), 0.0f);
  second[std::size_t(i)] = 0.25f;
  EXPECT_EQ(float(Tuple("InPlaneDisplacement", i, 3)[0]), n.InPDispX);
  EXPECT_EQ(float(Tuple("Sx", i, 1)[0]), n.Sx);
  EXPECT_EQ(float(Tuple("Mises", i, 1)[0]), n.Mises);
  EXPECT_EQ(float(Tuple("Mode1", i, 3)[2]), n.zcoord);
  EXPECT_EQ(Tuple("Mode2", i, 3, {second}), (Numbers{0, 0, 0.25}));
  n.vID = 0;
  EXPECT_EQ(Tuple("Sx", i, 1), Numbers{0});
  second.pop_back();
  EXPECT_EQ(FaultOf([&] { Tuple("Mode2", i, 3, {second}); }), errSubscript);
}

} // namespace
} // namespace velk::test
