// The report, the grid file, the property tables and the bitmap layout: each
// read back and held against the model it came from or the file layout.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>

#include "RunModels.h"
#include "common/Fault.h"
#include "common/TextFile.h"
#include "forms/frmClip.h"
#include "forms/frmPropertyView.h"
#include "mesh/GirderBuilder.h"
#include "reports/Bitmap.h"
#include "reports/PropertyTables.h"
#include "session/ProjectFile.h"
#include "session/ReportCommands.h"
#include "view/View.h"

namespace velk::test {
namespace {

using Text = std::vector<std::string>;

std::string B(std::size_t blanks) {
  return std::string(blanks, ' ');
}

// The fields of a zoned row, by the 14-column zones they start in.
Text Zones(const std::string& row) {
  Text out;
  for (std::size_t at = 0; at < row.size(); at += kPrintZone)
    out.push_back(Trim(row.substr(at, kPrintZone)));
  return out;
}

class Reports : public RunFixture {
protected:
  Text Written(bool (*write)(const std::string&)) {
    EXPECT_TRUE(write(Scratch("out")));
    return Lines(ReadFile(Scratch("out")));
  }
};

// The plate under unit compression per length, t 0.1: the report carries the
// run's eigenvalue and the closed-form stress -1 / 0.1 at every node.
TEST_F(Reports, ReportAfterARunCarriesItsEigenvalueAndStresses) {
  ASSERT_TRUE(Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp"));
  Run();
  const Text lines = Written(Write_Report_Path);
  ASSERT_GE(lines.size(), 6u);
  EXPECT_EQ(lines[5], "Eigenvalue          : " + B(6) + PrintSingle(gAnalysis().EigenValue));
  EXPECT_NEAR(std::stod(lines[5].substr(28)), 3.748e-2, 1e-5);
  std::map<long, const Nodeb*> byVID;
  for (const auto& n : gMesh().Nodes())
    if (n->vID) byVID[n->vID] = n.get();
  const auto at = std::find(lines.begin(), lines.end(), "[Stress_Nodes]");
  ASSERT_NE(at, lines.end());
  EXPECT_EQ(Zones(at[1]), (Text{"Node#", "Sx", "Sy", "Sxy"}));
  std::size_t rows = 0;
  for (auto row = at + 2; row != lines.end() && !row->starts_with("["); ++row, ++rows) {
    const Text f = Zones(*row);
    const Nodeb& n = *byVID.at(std::stol(f.at(0)));
    EXPECT_EQ(f[1], Format(n.Sx, "0.00E+00"));
    EXPECT_NEAR(std::stod(f[1]), -10, 0.05) << *row;
    EXPECT_NEAR(std::stod(f[2]), 0, 0.05) << *row;
  }
  EXPECT_EQ(rows, byVID.size());
}

TEST_F(Reports, ReportLayoutOfZonesOptionsAndFilters) {
  gAnalysis().Title = "A title longer than one zone";
  gAnalysis().IGSTF = vbTrue;
  Text lines = Written(Write_Report_Path);
  EXPECT_EQ(Text(lines.begin(), lines.begin() + 7),
            (Text{"[VELK 1.4 Report File]", "Title: " + B(7) + "A title longer than one zone",
                  "Note:  " + B(7) + "No Discription", "Run_ID:" + B(7) + "0",
                  "Estimated_Eigenvalue: " + B(6) + " 0 ", "Eigenvalue          : " + B(6) + " 0 ",
                  "Torsional Geometric Stiffness Option is Used"}));
  // A field longer than its zone pushes the next one to the next free zone.
  EXPECT_EQ(ZoneLine({"sixteen chars...", "x", "fourteen chars", "y"}),
            "sixteen chars..." + std::string(12, ' ') + "x" + std::string(13, ' ') +
                "fourteen chars" + "y");
  // An empty model: the nine sections with their heads and no rows.
  EXPECT_EQ(lines.size(), 7u + 18u);
  // The row of the node numbered 12 at (120, 4); a load off the structure is
  // listed under 0, a tiny one too.
  Clear_Session();
  Nodes& nodes = gMesh().Nodes();
  nodes.Add(120, 4, 1, "1")->vID = 12;
  nodes.Add(0, 0, 2, "2")->XLoad = 0.000001f;
  lines = Written(Write_Report_Path);
  EXPECT_EQ(lines[8], " 12 " + B(10) + "1.20E+02" + B(6) + "4.00E+00");
  const auto loads = std::find(lines.begin(), lines.end(), "[Loads]");
  ASSERT_NE(loads, lines.end());
  EXPECT_EQ(loads[2], " 0 " + B(11) + "1.00E-06" + B(6) + "0.00E+00");
}

// The grid of the run: NumberNodesY rows of NumberNodesX cells, each cell a
// full zone, each row ending CR CR LF; the normalised shape peaks at 1.
TEST_F(Reports, GridFileHasTheGridsShapeAndTheNormalisedMode) {
  ASSERT_TRUE(Open_Project_Path(VELK_EXAMPLES_DIR "/simply-supported-plate.inp"));
  Run();
  ASSERT_TRUE(Write_GridFile_Path(Scratch("g.txt")));
  const std::string data = ReadFile(Scratch("g.txt"));
  const Text lines = Lines(data);
  const Nodes& nodes = gMesh().Nodes();
  ASSERT_EQ(lines.size(), 9u + nodes.NumberNodesY());
  EXPECT_EQ(lines[5], "Eigenvalue: " + B(2) + PrintSingle(gAnalysis().EigenValue));
  EXPECT_EQ(lines.back(), "DOWN");
  double largest = 0;
  for (int r = 0; r < nodes.NumberNodesY(); ++r) {
    const std::string& row = lines[8 + r];
    ASSERT_EQ(row.size(), kPrintZone * nodes.NumberNodesX() + 1u) << row;
    EXPECT_EQ(row.back(), '\r');
    for (std::size_t c = 0; c + 1 < row.size(); c += kPrintZone)
      largest = std::max(largest, std::fabs(std::stod(row.substr(c, kPrintZone))));
  }
  EXPECT_DOUBLE_EQ(largest, 1.0);
  // 3 columns of 2: positions 2, 4, 6 on top, then 1, 3, 5; a node off the
  // structure shows zero whatever it holds.
  Clear_Session();
  Nodes& small = gMesh().Nodes();
  for (int p = 1; p <= 6; ++p) {
    auto n = small.Add(0, 0, p, std::to_string(p));
    n->vID = p == 5 ? 0 : p;
    n->zcoord = -p / 10.0f;
  }
  small.SetNumberNodesX(3);
  small.SetNumberNodesY(2);
  const Text grid = Lines(ReadFile((Write_GridFile_Path(Scratch("s.txt")), Scratch("s.txt"))));
  const std::string pad(5, ' ');
  EXPECT_EQ(grid[8], "-2.00E-01" + pad + "-4.00E-01" + pad + "-6.00E-01" + pad + "\r");
  EXPECT_EQ(grid[9], "-1.00E-01" + pad + "-3.00E-01" + pad + "0.00E+00" + pad + " \r");
}

// Report, grid and table save: a folder that does not exist, a read-only file
// and a full disk end with "File Error!" and leave the model; cancel is quiet.
TEST_F(Reports, FileFailuresEndWithTheLastWordAndKeepTheModel) {
  Build_Girder(gBeamShape(), 2, 1, gMesh());
  WriteFile(Scratch("locked.vrp"), "old");
  std::filesystem::permissions(Scratch("locked.vrp"), std::filesystem::perms::owner_read);
  frmPropertyView table;
  table.Form_Load();
  const std::function<void()> commands[] = {Write_Report, Write_GridFile,
                                            [&] { table.Command1_Click(); }};
  const std::pair<std::string, Text> rows[] = {
      {Scratch("no/such/dir/r.vrp"), {"That path doesn't exist.", "File Error!"}},
      {Scratch("locked.vrp"), {"File Error!"}},
      {"/dev/full", {"Disk is full. Continue?", "File Error!"}}};
  for (const auto& command : commands) {
    for (const auto& [path, texts] : rows) {
      host.messages.clear();
      host.saveAnswers = {path};
      command();
      EXPECT_EQ(host.Texts(), texts) << path;
    }
    host.messages.clear();
    host.saveAnswers = {std::nullopt};
    command();
    EXPECT_TRUE(host.messages.empty());
  }
  EXPECT_EQ(ReadFile(Scratch("locked.vrp")), "old");
  EXPECT_EQ(gMesh().Nodes().Count(), 6);
  EXPECT_EQ(host.dialogsShown.at(0).Filter, "All Files (*.*)|*.*|VELK Report Files(*.vrp)|*.vrp");
  EXPECT_EQ(host.dialogsShown.at(4).DialogTitle, "Save Grid File As");
}

// The default girder: its plates, flange stiffeners and nodes; a plate row;
// a tab chosen again keeps its list, another one rebuilds.
TEST_F(Reports, PropertyTablesListWhatHasAValue) {
  Build_Girder(gBeamShape(), 14, 3, gMesh());
  const std::pair<int, std::size_t> counts[] = {
      {PropertyTabs::Plate, 42},      {PropertyTabs::Stiffener, 28},
      {PropertyTabs::Coordinate, 60}, {PropertyTabs::Boundary, 0},
      {PropertyTabs::Brace, 0},       {PropertyTabs::Load, 0},
      {PropertyTabs::Buckled, 60},    {PropertyTabs::Stress, 60 + 5 + 28}};
  for (auto [tab, rows] : counts)
    EXPECT_EQ(Lines(Property_Table(tab, gMesh())).size(), rows + 1) << kPropertyTabCaptions[tab];
  EXPECT_TRUE(
      Lines(Property_Table(PropertyTabs::Plate, gMesh()))[3].starts_with("00003  5.00E-01  "));
  // The row tests look at the values, not at the numbering.
  gMesh().fourNodes().Item(1)->Thickness = 0;
  const auto web = std::find_if(gMesh().twoNodes().begin(), gMesh().twoNodes().end(),
                                [](const auto& t) { return t->vID == 0; });
  (*web)->Thickness = 0.5f;
  EXPECT_EQ(Lines(Property_Table(PropertyTabs::Plate, gMesh())).size(), 42u);
  const Text stiffeners = Lines(Property_Table(PropertyTabs::Stiffener, gMesh()));
  EXPECT_EQ(std::count(stiffeners.begin(), stiffeners.end(),
                       "00000     0.00E+00     5.00E-01     " +
                           Format((*web)->Node1->vID, "00000") + "     " +
                           Format((*web)->Node2->vID, "00000")),
            1);
  frmPropertyView form;
  form.Form_Load();
  gMesh().Nodes().Item(1)->xcoord = -7;
  form.SSTab1_Click(PropertyTabs::Coordinate); // the same tab: the list stays
  EXPECT_EQ(form.rtbProperty.find("-7.00E+00"), std::string::npos);
  form.SSTab1_Click(PropertyTabs::Load);
  EXPECT_NE(form.rtbProperty.find("-7.00E+00"), std::string::npos);
}

// Limits of -0.4 to 0.6 give sliders from 0 to 1; From pushes To along and
// the view's bounds follow; Reset opens them again.
TEST_F(Reports, ClipSlidersRoundAndPush) {
  View& v = gView();
  v.SLimitX0 = -0.4, v.SLimitX1 = 0.6, v.SLimitY0 = -2.5, v.SLimitY1 = 3.5;
  v.SetUpClipEq(-0.4, 0.6, -2.5, 3.5);
  frmClip f;
  f.Form_Load();
  EXPECT_EQ(std::tie(f.sldHStart.Min, f.sldHEnd.Max, f.sldVStart.Min, f.sldVEnd.Max),
            std::make_tuple(0L, 1L, -2L, 4L));
  f.sldVStart.Value = 3;
  f.sldVEnd.Value = 2;
  f.sldVEnd_Change();
  EXPECT_EQ(std::tie(f.sldVStart.Value, f.lblVS, f.lblVE), std::make_tuple(2L, "2", "2"));
  EXPECT_EQ(std::tie(v.VClipFrom, v.VClipTo), std::make_tuple(2.0f, 2.0f));
  f.cmdReset_Click();
  EXPECT_EQ(std::tie(v.HClipFrom, v.HClipTo, v.VClipFrom, v.VClipTo),
            std::make_tuple(0.0f, 1.0f, -2.0f, 4.0f));
}

std::uint32_t At(const std::vector<std::uint8_t>& b, std::size_t at, int bytes) {
  std::uint32_t v = 0;
  for (int i = bytes - 1; i >= 0; --i)
    v = v << 8 | b.at(at + i);
  return v;
}

// A box 10 wide gives an image 11 wide: 33 bytes of pixels and 3 of padding a
// row; GL's red, green, blue become blue, green, red; the padding stays zero.
TEST(Bitmap, HeaderPaddingAndColourOrder) {
  EXPECT_FALSE(Bitmap_Box(5, 5, 5, 40).has_value());
  EXPECT_FALSE(Bitmap_Box(5, 5, 40, 5).has_value());
  const PixelBox box = *Bitmap_Box(30.4, 52.5, 20.2, 42.6);
  EXPECT_EQ(std::tie(box.x, box.y, box.width, box.height), std::make_tuple(20L, 52L, 10L, 10L));
  const PixelBox read = Bitmap_Read_Box(box, 25, 100);
  EXPECT_EQ(std::tie(read.x, read.y, read.width, read.height), std::make_tuple(20L, 49L, 5L, 10L));
  EXPECT_THROW(Bitmap_Read_Box({30, 10, 5, 5}, 25, 100), Fault);
  EXPECT_EQ(Bitmap_Row_Size(4), 12);
  ASSERT_EQ(Bitmap_Row_Size(11), 36);
  std::vector<std::uint8_t> rgb(72, 0);
  for (std::size_t i = 0; i < 72; ++i)
    if (i % 36 < 33) rgb[i] = static_cast<std::uint8_t>(100 * (i % 3) + i / 36);
  const auto b = Bitmap_File_Bytes(11, 2, rgb);
  ASSERT_EQ(b.size(), 58u + 72u);
  const std::pair<std::size_t, std::uint32_t> fields[] = {
      {0, 19778}, {2, 130}, {10, 58},   {14, 40},   {18, 11}, {22, 2}, {26, 1}, {28, 24},
      {30, 0},    {34, 72}, {38, 2952}, {42, 2952}, {46, 0},  {50, 0}, {54, 0}};
  for (auto [offset, value] : fields)
    EXPECT_EQ(At(b, offset, offset == 0 || offset == 26 || offset == 28 ? 2 : 4), value) << offset;
  EXPECT_EQ(std::vector<int>(b.begin() + 58, b.begin() + 61), (std::vector<int>{200, 100, 0}));
  EXPECT_EQ(std::vector<int>(b.begin() + 58 + 33, b.begin() + 58 + 36),
            (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(b[58 + 36], 201);
}

} // namespace
} // namespace velk::test
