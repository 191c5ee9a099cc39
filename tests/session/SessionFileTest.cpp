// The project file: the records as written, the two forms read, and what the
// Save and Open commands show and leave behind when something goes wrong. The
// settings file velk1_4.ini: nine lines of options and the fallbacks of a
// damaged file; and File New, which keeps the options only by way of it.
#include "TestSession.h"
#include "editing/Selection.h"
#include "mesh/GirderBuilder.h"
#include "session/ProjectFile.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace velk::test {
namespace {

using Text = std::vector<std::string>;
const char* kPastEndText = "This file has a nonstandard end-of-file marker, or an attempt was made "
                           "\xE2\x80\x9Cto read beyond the end-of-file marker.";

class ProjectFile : public SessionTest {
protected:
  std::string Save(const std::string& name) {
    EXPECT_TRUE(Save_Project_Path(Scratch(name)));
    return ReadFile(Scratch(name));
  }
  // Writes `lines` [0, n) to a file and opens it.
  bool OpenCut(const Text& lines, std::size_t n) {
    std::string cut;
    for (std::size_t i = 0; i < n; ++i)
      cut += lines[i] + "\r\n";
    WriteFile(Scratch("cut.inp"), cut);
    host.messages.clear();
    return Open_Project_Path(Scratch("cut.inp"));
  }
  static Text Slice(const Text& lines, std::size_t from, std::size_t n) {
    return Text(lines.begin() + from, lines.begin() + from + n);
  }
};

TEST_F(ProjectFile, EmptyModelSavesAsThirteenLinesAndReadsBack) {
  std::string data = Save("empty.inp");
  EXPECT_EQ(data, "VELK Version\r\n 1.4 \r\n\"No Title\"\r\n\"No Discription\"\r\n\"0\"\r\n0,0\r\n"
                  ".5,12,120,.5,12,16,.5\r\n.5,12,.5,12,16,.5,0,0\r\n0,0,0\r\n0,0\r\n0\r\n0,0\r\n"
                  "29000,.3\r\n");
  gBeamShape().Length = 1;
  data.replace(0, 12, "Something else entirely"); // the first line may hold any text
  WriteFile(Scratch("other.inp"), data);
  ASSERT_TRUE(Open_Project_Path(Scratch("other.inp")));
  EXPECT_EQ(std::make_tuple(gMesh().Nodes().Count() + gMesh().twoNodes().Count() +
                                gMesh().fourNodes().Count() + host.messages.size(),
                            gBeamShape().Length),
            std::make_tuple(0, 120.0f));
}

// A girder of 2 x 1 elements: nodes 1 to 6 up the three columns, stiffeners
// 1-3, 3-5 (bottom), 2-4, 4-6 (top), then 1-2, 3-4, 5-6; plates 1-3-4-2, 3-5-6-4.
TEST_F(ProjectFile, EditedModelHasItsRecordsAndReadsBackTheSame) {
  gBeamShape().Offset = 0.75f, gBeamShape().ProportionalMesh = 1;
  Build_Girder(gBeamShape(), 2, 1, gMesh());
  Analysis& a = gAnalysis();
  a.Title = "Span 2, the \"big\" one", a.Discription = "a,b,c", a.RunID = "\"";
  a.EigenValueEstimation = 2.5f, a.EigenValue = 3.141593f;
  Mesh& m = gMesh();
  Nodeb& n = *m.Nodes().Item(4);
  n.zcoord = 0.25f, n.InPDispX = 0.006f, n.InPDispY = -1.5e-7f;
  n.SetXTDir(1), n.SetZTDir(1), n.SetYRDir(1), n.XTDirValue = 0.125f, n.YTDirValue = -2;
  n.xtstiff = 1000, n.ZTStiff = 3, n.YRStiff = 2.5e-3f, n.YLoad = -150;
  n.Sx = 120, n.Sy = -16.5f, n.SXY = 0.3333333f, n.Mises = 12345.67f;
  n.UpdatePropertyDefined();
  n.NCP = 4, n.UvID = 9; // not written
  twoNode& s = *m.twoNodes().Item(6);
  s.Thickness = 0.25f, s.width = 4, s.Stress = -1.25e4f;
  s.UpdatePropertyDefined();
  m.fourNodes().Item(1)->Thickness = 0;
  m.fourNodes().Item(2)->Thickness = 0.875f;
  for (const auto& p : m.fourNodes())
    p->UpdatePropertyDefined();
  m.fourNodes().UpdateMaxThickness();
  m.GeneratevID();
  gMaterial().MOE = 2.1e5f, gMaterial().PR = 0.29f;

  const std::string first = Save("edited.inp");
  const Text lines = Lines(first);
  ASSERT_EQ(lines.size(), 9 + 6 * 7 + 1 + 7 * 6 + 2 + 2 * 5 + 1);
  EXPECT_EQ(Slice(lines, 2, 7),
            (Text{"\"Span 2, the 'big' one\"", "\"a,b,c\"", "\"'\"", "2.5,3.141593",
                  ".5,12,120,.5,12,16,.5", ".5,12,.5,12,16,.5,.75,1", "3,2,6"}));
  EXPECT_EQ(Slice(lines, 9 + 3 * 7, 7),
            (Text{"60,16.125,.25,.006,-1.5E-07", "#TRUE#,#TRUE#,#TRUE#,#TRUE#",
                  "#TRUE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,.125,-2,#TRUE#", "1000,0,3,0,.0025",
                  "0,-150", "4,4,#TRUE#", "120,-16.5,.3333333,12345.67"}));
  const std::size_t stiffeners = 9 + 6 * 7, plates = stiffeners + 1 + 7 * 6;
  EXPECT_EQ(lines[stiffeners], "7,5");
  EXPECT_EQ(Slice(lines, stiffeners + 1 + 5 * 6, 6),
            (Text{"3,4", "60,7.875", ".25,4", "#TRUE#", "5,-12500", "6"}));
  EXPECT_EQ(Slice(lines, plates, 7),
            (Text{".875", "2,1", "1,3,4,2", "30,8.0625", "0", "#FALSE#", "1,0"}));
  EXPECT_EQ(Slice(lines, plates + 7, 5), (Text{"3,5,6,4", "90,7.6875", ".875", "#TRUE#", "2,1"}));
  EXPECT_EQ(lines.back(), "210000,.29");

  Clear_Session();
  InstallHost(&host);
  ASSERT_TRUE(Open_Project_Path(Scratch("edited.inp")));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(Save("again.inp"), first);
  // Elements share the nodes that were read; what is not written is 0.
  Mesh& r = gMesh();
  EXPECT_TRUE(r.fourNodes().Item(2)->Node4 == r.Nodes().Item(4) &&
              r.twoNodes().Item(6)->Node2 == r.Nodes().Item(4));
  EXPECT_EQ(r.Nodes().Item(4)->UvID + r.Nodes().Item(4)->NCP, 0);
}

TEST_F(ProjectFile, FileCutShortKeepsTheWholeRecordsReadSoFar) {
  Build_Girder(gBeamShape(), 2, 1, gMesh());
  const Text lines = Lines(Save("girder.inp"));
  const std::size_t stiffeners = 9 + 6 * 7, plates = stiffeners + 1 + 7 * 6;
  // After 3 whole node records and 3 lines of the fourth: the view and the
  // caption do not change.
  gView().PropertyMode = 3;
  SetCaption("VELK V1.4.0:girder.inp");
  EXPECT_FALSE(OpenCut(lines, 9 + 3 * 7 + 3));
  ASSERT_EQ(host.Texts(), (Text{kPastEndText, "File Open Error!"}));
  EXPECT_EQ(std::make_tuple(host.messages[0].title, host.messages[0].buttons,
                            gMesh().Nodes().Count(), gMesh().Nodes().Item(3)->xcoord,
                            session().Caption, gView().PropertyMode),
            std::make_tuple("Disk Error", vbYesNo | vbExclamation, 3, 60.0f,
                            "VELK V1.4.0:girder.inp", 3));

  // Cuts at the start of a plate record, inside one, and at the start of a
  // stiffener record leave a model that can be numbered and saved.
  for (std::size_t n : {plates + 2 + 5, plates + 2 + 5 + 1, stiffeners + 1 + 3 * 6}) {
    EXPECT_FALSE(OpenCut(lines, n));
    EXPECT_EQ(host.Texts(), (Text{kPastEndText, "File Open Error!"}));
    for (const auto& p : gMesh().fourNodes())
      ASSERT_NE(p->Node1, nullptr);
    for (const auto& s : gMesh().twoNodes())
      ASSERT_NE(s->Node2, nullptr);
    gMesh().GeneratevID();
    EXPECT_TRUE(Save_Project_Path(Scratch("resaved.inp")));
  }
  EXPECT_EQ(gMesh().twoNodes().Count(), 3);
}

TEST_F(ProjectFile, OlderVersionReadsWithItsOwnRecordsAndSavesInTheCurrentForm) {
  const std::string path = std::string(VELK_TEST_DATA_DIR) + "/plate13.inp";
  gBeamShape().Length = 77; // the older form has no girder parameters: these stay
  ASSERT_TRUE(Open_Project_Path(path));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(session().Caption, "VELK V1.4.0:plate13.inp");
  // Saved again, the same model record by record in the current form.
  const Text old = Lines(ReadFile(path));
  Text expected = {
      "VELK Version",          " 1.4 ", old[2], old[3], old[4], old[5], ".5,12,77,.5,12,16,.5",
      ".5,12,.5,12,16,.5,0,0", old[6]};
  std::size_t i = 7;
  for (int node = 1; node <= 4; ++node, i += 7) {
    // Of the repeated in-plane displacements the second stands; no stresses.
    std::size_t xyz = 0;
    for (int k = 0; k < 3; ++k)
      xyz = old[i].find(',', xyz) + 1;
    expected.push_back(old[i].substr(0, xyz) + old[i + 6]);
    expected.insert(expected.end(), old.begin() + i + 1, old.begin() + i + 5);
    expected.push_back(old[i + 5] + old[i + 2].substr(old[i + 2].rfind(','))); // and Connected
    expected.push_back("0,0,0,0");
  }
  // Stiffeners as they were, then the plate without its nine extra values.
  expected.insert(expected.end(), old.begin() + i, old.begin() + i + 1 + 4 * 6 + 2 + 5);
  expected.push_back(old.back());
  EXPECT_EQ(Lines(Save("converted.inp")), expected);
}

TEST_F(ProjectFile, UnknownVersionIsRefusedAndLeavesAnEmptyModel) {
  Build_Girder(gBeamShape(), 2, 1, gMesh());
  gView().PropertyMode = 4;
  std::string data = Project_Data();
  SetCaption("VELK V1.4.0:before.inp");
  data.replace(data.find(" 1.4 "), 5, " 1.5 ");
  WriteFile(Scratch("v15.inp"), data);
  EXPECT_FALSE(Open_Project_Path(Scratch("v15.inp")));
  ASSERT_EQ(host.Texts(), Text{"Error: Reading Data"});
  EXPECT_EQ(host.messages[0].title, "Error!");
  EXPECT_EQ(gMesh().Nodes().Count(), 0);
  EXPECT_EQ(session().Caption, "VELK V1.4.0:before.inp");
  EXPECT_EQ(gView().PropertyMode, 1); // the view was initialised all the same
}

TEST_F(ProjectFile, FailuresShowTheDiskErrorAndTheLastWordAndKeepTheModel) {
  Build_Girder(gBeamShape(), 2, 1, gMesh());
  gAnalysis().Title = "Keep";
  SetCaption("VELK V1.4.0:kept.inp");
  std::string data = Project_Data();
  data.replace(data.rfind("29000"), 5, "29OOO"); // a type failure has no row of its own
  WriteFile(Scratch("bad.inp"), data);
  const struct {
    bool open;
    std::string path;
    const char* disk; // the text of the "Disk Error" box, if any
    int buttons;
  } rows[] = {{true, Scratch("nowhere.inp"), nullptr, 0},
              {false, Scratch("no/such/dir/x.inp"), "That path doesn't exist.", vbYesNo},
              {false, "", "That filename is illegal.", vbYesNo},
              {false, "/dev/full", "Disk is full. Continue?", vbYesNoCancel}};
  for (const auto& row : rows) {
    host.messages.clear();
    EXPECT_FALSE(row.open ? Open_Project_Path(row.path) : Save_Project_Path(row.path));
    Text expected = {row.open ? "File Open Error!" : "File Error!"};
    if (row.disk) expected.insert(expected.begin(), row.disk);
    EXPECT_EQ(host.Texts(), expected) << row.path;
    if (row.disk && host.messages.size() == 2) {
      EXPECT_EQ(std::tie(host.messages[0].title, host.messages[0].buttons),
                std::make_tuple("Disk Error", row.buttons | vbExclamation));
    }
  }
  EXPECT_EQ(session().Caption, "VELK V1.4.0:kept.inp");
  EXPECT_EQ(gAnalysis().Title, "Keep");
  EXPECT_EQ(gMesh().Nodes().Count(), 6);
  // A field of the wrong form, past the start of the reading: the last word only.
  host.messages.clear();
  EXPECT_FALSE(Open_Project_Path(Scratch("bad.inp")));
  EXPECT_EQ(host.Texts(), Text{"File Open Error!"});
}

TEST_F(ProjectFile, CommandsUseTheCommonDialogAndCancelChangesNothing) {
  Build_Girder(gBeamShape(), 2, 1, gMesh());
  session().cdlFile.FileName = Scratch("report.vrp");
  SetCaption("VELK V1.4.0:kept.inp");
  host.openAnswers = {std::nullopt, Scratch("girder.inp")};
  host.saveAnswers = {std::nullopt, Scratch("girder.inp")};
  Save_Project();
  Open_Project();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(session().Caption, "VELK V1.4.0:kept.inp");
  EXPECT_EQ(gMesh().Nodes().Count(), 6);
  EXPECT_FALSE(std::filesystem::exists(Scratch("report.vrp")));
  ASSERT_EQ(host.dialogsShown.size(), 2u);
  const FileDialog s = host.dialogsShown[0], o = host.dialogsShown[1];
  EXPECT_EQ(s.Filter, "All Files (*.*)|*.*|VELK Graphic Interface Files(*.inp)|*.inp");
  EXPECT_EQ(std::tie(s.DialogTitle, s.FilterIndex, s.Flags), std::make_tuple("Save As", 2, 6));
  EXPECT_EQ(s.FileName, Scratch("report.vrp")); // what the dialog held last
  EXPECT_EQ(o.Filter, s.Filter);
  EXPECT_EQ(std::tie(o.DialogTitle, o.FilterIndex, o.Flags, o.FileName),
            std::make_tuple("Open Data", 2, 4, ""));

  Save_Project();
  EXPECT_EQ(session().Caption, "VELK V1.4.0:girder.inp");
  int updates = 0, toolbars = 0;
  hooks().Update = [&] { ++updates; };
  hooks().updateToolBar = [&] { ++toolbars; };
  SetCaption("VELK V1.4.0: No Title");
  Open_Project();
  EXPECT_EQ(session().Caption, "VELK V1.4.0:girder.inp");
  EXPECT_TRUE(updates == 1 && toolbars == 1);
  EXPECT_EQ(gMesh().Nodes().Count(), 6);
  EXPECT_TRUE(host.messages.empty());
}

using Settings = SessionTest;

Text WithLine(Text t, std::size_t i, const std::string& line) {
  t[i] = line;
  return t;
}

// The class defaults, then what a reader that fails puts in their place (the
// magnifications become 10, not 1), then every option away from both.
const Text kDefaults =
    Lines("3,8,.8,#FALSE#,#FALSE#,0\r\n#FALSE#,#FALSE#,#FALSE#\r\n#TRUE#,#TRUE#\r\n"
          "#TRUE#,#FALSE#,#TRUE#,#FALSE#\r\n#TRUE#,#FALSE#\r\n#TRUE#,#FALSE#,#FALSE#\r\n"
          "1,1\r\n3,3,3,10\r\n0,2,#TRUE#,#FALSE#\r\n");
const Text kFallbacks =
    WithLine(WithLine(WithLine(kDefaults, 6, "10,10"), 7, "10,10,10,10"), 8, "0,2,#TRUE#,#TRUE#");
const Text kUnusual =
    Lines("6,30,.55,#TRUE#,#FALSE#,1\r\n#TRUE#,#TRUE#,#TRUE#\r\n#FALSE#,#FALSE#\r\n"
          "#FALSE#,#TRUE#,#FALSE#,#TRUE#\r\n#FALSE#,#TRUE#\r\n#FALSE#,#TRUE#,#TRUE#\r\n"
          "2.5,4\r\n5,6,.5,12\r\n3,1.5,#FALSE#,#TRUE#\r\n");

std::string Join(const Text& lines) {
  std::string s;
  for (const auto& l : lines)
    s += l + "\r\n";
  return s;
}

TEST_F(Settings, MissingFileIsReportedAndEveryOptionSurvivesReadAndSave) {
  Read_Option();
  EXPECT_EQ(host.Texts(), Text{"Error: Reading INI file!"});
  Save_Option();
  EXPECT_EQ(ReadFile(SettingsPath()), Join(kDefaults));

  WriteFile(SettingsPath(), Join(kUnusual));
  host.messages.clear();
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  // A few fields by name: the plate option stands on the last line.
  const View& v = gView();
  EXPECT_EQ(std::make_tuple(gAnalysis().ShiftFactor, v.OptionFontSize, v.OptionShowPlate,
                            v.OptionShowStiffener, v.OptionShading),
            std::make_tuple(0.55f, 12, vbFalse, vbFalse, vbTrue));
  Save_Option();
  EXPECT_EQ(ReadFile(SettingsPath()), Join(kUnusual));
}

TEST_F(Settings, DamagedSettingsFilesFallBackQuietly) {
  // Lines [0, to) of `a` followed by the rest of `b`.
  auto Mix = [](const Text& a, const Text& b, std::size_t to) {
    Text t(a.begin(), a.begin() + to);
    t.insert(t.end(), b.begin() + to, b.end());
    return t;
  };
  const struct {
    const char* name;
    Text file, options;
  } cases[] = {
      {"empty", {}, kFallbacks},
      {"only a good first line", {kUnusual[0]}, Mix(kUnusual, kFallbacks, 1)},
      // Lines 2 to 7 had been read, and fall back with the rest.
      {"broken field on line 8", WithLine(kUnusual, 7, "5,6,abc,12"), Mix(kUnusual, kFallbacks, 1)},
      {"broken last field", WithLine(kUnusual, 8, "3,1.5,#FALSE#,1"), Mix(kUnusual, kFallbacks, 1)},
      // The run options stop at their bad field; the display options then
      // meet a number where a boolean stands and fall back as well.
      {"broken first line", WithLine(kUnusual, 0, "6,x,.55,#TRUE#,#FALSE#,1"), kFallbacks},
      {"count beyond 16 bits", WithLine(kUnusual, 0, "40000,30,.55,#TRUE#,#FALSE#,1"), kFallbacks},
      // Values the option dialogs refuse are damage too: a font of 32767
      // would keep the window from opening; no shift, or a zoom factor of 0.
      {"font the dialog refuses", WithLine(kUnusual, 7, "5,6,.5,32767"), Mix(kUnusual, kFallbacks, 1)},
      {"zoom factor 0", WithLine(kUnusual, 8, "3,0,#FALSE#,#TRUE#"), Mix(kUnusual, kFallbacks, 1)},
      {"no shift", WithLine(kUnusual, 0, "0,30,.55,#TRUE#,#FALSE#,1"), Mix(kFallbacks, kUnusual, 1)},
      {"lines may break anywhere",
       {"6,30", ".55,#TRUE#,#FALSE#,1,#TRUE#", "#TRUE#,#TRUE#,#FALSE#,#FALSE#",
        "#FALSE#,#TRUE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,#TRUE#,2.5,4,5",
        "6,.5,12,3,1.5,#FALSE#,#TRUE#"},
       kUnusual}};
  for (const auto& c : cases) {
    WriteFile(SettingsPath(), Join(c.file));
    Read_Option_Data(Join(kUnusual)); // something to be replaced
    Read_Option();
    EXPECT_TRUE(host.messages.empty()) << c.name;
    EXPECT_EQ(Lines(Option_Data()), c.options) << c.name;
  }
}

TEST_F(Settings, NewModelEmptiesTheModelAndKeepsOptionsGirderAndCamera) {
  Build_Girder(gBeamShape(), 2, 1, gMesh());
  Read_Option_Data(Join(kUnusual));
  gAnalysis().ShiftFactor = 0.5f; // as the options dialog leaves it
  gAnalysis().OutputOption = 3, gAnalysis().Title = "Old";
  gMaterial().MOE = 2e5f, gBeamShape().Length = 240;
  gSelection().AddObject(gMesh().Nodes().Item(1));
  const View* view = &gView();
  SetCaption("VELK V1.4.0:girder.inp");
  std::weak_ptr<Nodeb> node = gMesh().Nodes().Item(1);
  int paints = 0;
  hooks().Paint = [&] { ++paints; };

  New_Model();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(node.expired()); // the old graph is released
  EXPECT_GE(paints, 1);
  // A new mesh, material and analysis (whose print level is not in the file);
  // the girder, the view and the caption stay.
  EXPECT_EQ(std::make_tuple(gMesh().Nodes().Count() + gMesh().twoNodes().Count() +
                                gMesh().fourNodes().Count() + gSelection().SelectedCounter(),
                            gAnalysis().Title, gAnalysis().OutputOption, gMaterial().MOE,
                            gBeamShape().Length, session().Caption),
            std::make_tuple(0, "No Title", 1, 29000.0f, 240.0f, "VELK V1.4.0:girder.inp"));
  EXPECT_EQ(&gView(), view);
  const Text kept = WithLine(kUnusual, 0, "6,30,.5,#TRUE#,#FALSE#,1");
  EXPECT_EQ(Lines(Option_Data()), kept);
  EXPECT_EQ(ReadFile(SettingsPath()), Join(kept)); // they went out on the way

  // With the file switched off they survive in memory.
  std::filesystem::remove(SettingsPath());
  SetOptionFileEnabled(false);
  gAnalysis().MaxShift = 4;
  New_Model();
  EXPECT_EQ(gAnalysis().MaxShift, 4);
  EXPECT_FALSE(std::filesystem::exists(SettingsPath()));
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Settings, ResetSessionSavesOptionsAndReleasesEverything) {
  gAnalysis().MaxCycle = 11, gBeamShape().Length = 3, gView();
  Reset_Session();
  const velk::Session& s = session();
  EXPECT_TRUE(!s.BeamShape && !s.Mesh && !s.Material && !s.Analysis && !s.View);
  EXPECT_EQ(Lines(ReadFile(SettingsPath())), WithLine(kDefaults, 0, "3,11,.8,#FALSE#,#FALSE#,0"));
  EXPECT_EQ(gBeamShape().Length, 120.0f); // a new one, on first use
}

} // namespace
} // namespace velk::test
