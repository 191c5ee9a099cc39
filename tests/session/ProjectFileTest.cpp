// The project file: the exact form written, the two forms read, and what the
// Save and Open commands show and leave behind when something goes wrong.
#include "session/ProjectFile.h"
#include "TestSession.h"
#include "forms/frmBeamShape.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace velk::test {
namespace {

using Text = std::vector<std::string>;
using Floats = std::vector<float>;
const char* kPastEndText = "This file has a nonstandard end-of-file marker, or an attempt was made "
                           "\xE2\x80\x9Cto read beyond the end-of-file marker.";
const std::string kPlate13 = std::string(VELK_TEST_DATA_DIR) + "/plate13.inp";

class ProjectFile : public SessionTest {
protected:
  // The default girder of 14 x 3 elements, as the Geometry dialog builds it.
  void GenerateDefaultGirder() {
    frmBeamShape form;
    form.Form_Activate();
    form.cmdGenerate_Click();
    ASSERT_TRUE(form.Unloaded);
    host.messages.clear();
  }
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
};

TEST_F(ProjectFile, EmptyModelSavesAsThirteenLinesAndReadsBack) {
  std::string data = Save("empty.inp");
  EXPECT_EQ(data, "VELK Version\r\n"
                  " 1.4 \r\n"
                  "\"No Title\"\r\n"
                  "\"No Discription\"\r\n"
                  "\"0\"\r\n"
                  "0,0\r\n"
                  ".5,12,120,.5,12,16,.5\r\n"
                  ".5,12,.5,12,16,.5,0,0\r\n"
                  "0,0,0\r\n"
                  "0,0\r\n"
                  "0\r\n"
                  "0,0\r\n"
                  "29000,.3\r\n");
  EXPECT_EQ(Project_Data(), data);
  gBeamShape().Length = 1;
  data.replace(0, 12, "Something else entirely"); // the first line may hold any text
  WriteFile(Scratch("other.inp"), data);
  ASSERT_TRUE(Open_Project_Path(Scratch("other.inp")));
  EXPECT_EQ(gMesh().Nodes().Count() + gMesh().twoNodes().Count() + gMesh().fourNodes().Count(), 0);
  EXPECT_EQ(gBeamShape().Length, 120.0f);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ProjectFile, RecordOfAnUnconnectedNodeAtTheOrigin) {
  Nodes& nodes = gMesh().Nodes();
  nodes.SetNumberNodesX(1);
  nodes.SetNumberNodesY(1);
  nodes.Add(0, 0, 1, "1");
  auto lines = Lines(Save("one.inp"));
  ASSERT_EQ(lines.size(), 13u + 7u);
  EXPECT_EQ(Text(lines.begin() + 8, lines.begin() + 17),
            (Text{"1,1,0", "0,0,0,0,0", "#FALSE#,#FALSE#,#FALSE#,#FALSE#",
                  "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,0,0,#FALSE#", "0,0,0,0,0", "0,0",
                  "1,0,#FALSE#", "0,0,0,0", "0,0"}));
}

TEST_F(ProjectFile, GirderRecordsAndFilesCutShortOfThem) {
  GenerateDefaultGirder();
  auto lines = Lines(Save("girder.inp"));
  EXPECT_EQ(lines[8], "15,4,60");
  // Node 2 stands at (0, 5.5) and belongs to plates.
  EXPECT_EQ(lines[9 + 7], "0,5.5,0,0,0");
  EXPECT_EQ(lines[9 + 7 + 5], "2,2,#TRUE#");
  const std::size_t stiffeners = 9 + 60 * 7;
  EXPECT_EQ(lines[stiffeners], "101,28");
  // Stiffener 1: the bottom flange between nodes 1 and 5.
  EXPECT_EQ(Text(lines.begin() + stiffeners + 1, lines.begin() + stiffeners + 7),
            (Text{"1,5", "4.285714,0", ".5,12", "#TRUE#", "1,0", "1"}));
  const std::size_t plates = stiffeners + 1 + 101 * 6;
  EXPECT_EQ(lines[plates], ".5");
  EXPECT_EQ(lines[plates + 1], "42,42");
  EXPECT_EQ(Text(lines.begin() + plates + 2, lines.begin() + plates + 7),
            (Text{"1,5,6,2", "4.285714,2.75", ".5", "#TRUE#", "1,1"}));
  EXPECT_EQ(lines.back(), "29000,.3");
  EXPECT_EQ(lines.size(), plates + 2 + 42 * 5 + 1);

  // Cut after 10 whole node records and 3 lines of the eleventh: the records
  // read so far stay, the view and the caption do not change.
  gView().PropertyMode = 3;
  SetCaption("VELK V1.4.0:girder.inp");
  EXPECT_FALSE(OpenCut(lines, 9 + 10 * 7 + 3));
  ASSERT_EQ(host.messages.size(), 2u);
  EXPECT_EQ(host.messages[0].text, kPastEndText);
  EXPECT_EQ(host.messages[0].title, "Disk Error");
  EXPECT_EQ(host.messages[0].buttons, vbYesNo | vbExclamation);
  EXPECT_EQ(host.messages[1].text, "File Open Error!");
  EXPECT_EQ(gMesh().Nodes().Count(), 10);
  EXPECT_EQ(gMesh().Nodes().Item(10)->ycoord, 5.5f);
  EXPECT_EQ(gMesh().twoNodes().Count(), 0);
  EXPECT_EQ(session().Caption, "VELK V1.4.0:girder.inp");
  EXPECT_EQ(gView().PropertyMode, 3);

  // Cuts at the start of a plate record, inside one, and at the start of a
  // stiffener record leave a model that can be numbered and saved.
  for (std::size_t n : {plates + 2 + 5 * 5, plates + 2 + 5 * 5 + 1, stiffeners + 1 + 3 * 6}) {
    EXPECT_FALSE(OpenCut(lines, n));
    EXPECT_EQ(host.Texts(), (Text{kPastEndText, "File Open Error!"}));
    for (const auto& p : gMesh().fourNodes())
      ASSERT_NE(p->Node1, nullptr);
    for (const auto& s : gMesh().twoNodes())
      ASSERT_NE(s->Node2, nullptr);
    gMesh().fourNodes().GenerateCP();
    gMesh().Nodes().GeneratevID(gMesh().twoNodes(), gMesh().fourNodes());
    EXPECT_TRUE(Save_Project_Path(Scratch("resaved.inp")));
  }
  EXPECT_EQ(gMesh().twoNodes().Count(), 3);
}

TEST_F(ProjectFile, GeneratedAndEditedModelReadsBackTheSame) {
  GenerateDefaultGirder();
  Analysis& a = gAnalysis();
  a.Title = "Girder G1", a.Discription = "Web panel check", a.RunID = "17";
  a.EigenValueEstimation = 2.5f, a.EigenValue = 3.141593f;
  gBeamShape().Offset = 0.75f, gBeamShape().ProportionalMesh = 1;
  Mesh& m = gMesh();
  auto n1 = m.Nodes().Item(1);
  n1->SetXTDir(1), n1->SetYTDir(1), n1->SetZTDir(1), n1->XTDirValue = 0.125f;
  n1->UpdatePropertyDefined();
  auto n30 = m.Nodes().Item(30);
  n30->xtstiff = 1000, n30->YRStiff = 2.5e-3f, n30->YLoad = -150;
  n30->UpdatePropertyDefined();
  for (const auto& n : m.Nodes()) {
    n->zcoord = n->ycoord / 16.5f, n->InPDispX = n->xcoord * 1e-4f, n->InPDispY = -1.5e-7f;
    n->Sx = n->xcoord * 2, n->Sy = -n->ycoord, n->SXY = 0.3333333f, n->Mises = 12345.67f;
    n->NCP = 4, n->UvID = 9; // not written
  }
  m.twoNodes().Item(20)->Thickness = 0.375f; // a web stiffener without width: still absent
  m.twoNodes().Item(20)->UpdatePropertyDefined();
  auto s60 = m.twoNodes().Item(60);
  s60->Thickness = 0.25f, s60->width = 4, s60->Stress = -1.25e4f;
  s60->UpdatePropertyDefined();
  m.fourNodes().Item(7)->Thickness = 0;
  m.fourNodes().Item(7)->UpdatePropertyDefined();
  m.fourNodes().Item(8)->Thickness = 0.875f;
  m.fourNodes().Item(8)->UpdatePropertyDefined();
  m.fourNodes().UpdateMaxThickness();
  m.GeneratevID();
  gMaterial().MOE = 2.1e5f, gMaterial().PR = 0.29f;

  std::string first = Save("edited.inp");
  Clear_Session();
  InstallHost(&host);
  ASSERT_TRUE(Open_Project_Path(Scratch("edited.inp")));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(Save("again.inp"), first);

  // The same text again; and what it holds is the edited model.
  Mesh& r = gMesh();
  ASSERT_EQ(r.Nodes().Count(), 60);
  EXPECT_EQ(gAnalysis().Title, "Girder G1");
  EXPECT_EQ(gBeamShape().Offset, 0.75f);
  EXPECT_EQ(r.Nodes().Item(1)->XTDirValue, 0.125f);
  EXPECT_TRUE(IsTrue(r.Nodes().Item(1)->BoundaryDefined()));
  EXPECT_TRUE(IsTrue(r.Nodes().Item(30)->BraceDefined()));
  EXPECT_EQ(r.Nodes().Item(30)->YLoad, -150.0f);
  EXPECT_EQ(r.Nodes().Item(30)->Mises, 12345.67f);
  for (const auto& n : r.Nodes())
    EXPECT_EQ(n->UvID + n->NCP, 0);
  EXPECT_EQ(r.twoNodes().Item(60)->Stress, -1.25e4f);
  EXPECT_EQ(r.twoNodes().Item(60)->vID, 29);
  EXPECT_EQ(r.fourNodes().Item(8)->vID, 7);
  EXPECT_EQ(r.fourNodes().MaxThickness(), 0.875f);
  // Elements share the nodes that were read.
  EXPECT_EQ(r.fourNodes().Item(1)->Node2, r.Nodes().Item(5));
  EXPECT_EQ(r.twoNodes().Item(1)->Node2, r.Nodes().Item(5));
  EXPECT_EQ(gMaterial().PR, 0.29f);
}

TEST_F(ProjectFile, CommaAndDoubleQuoteInTexts) {
  gAnalysis().Title = "Span 2, the \"big\" one";
  gAnalysis().Discription = "a,b,c";
  gAnalysis().RunID = "\"";
  gAnalysis().EigenValue = 4;
  EXPECT_EQ(Lines(Save("quote.inp"))[2], "\"Span 2, the 'big' one\"");
  ASSERT_TRUE(Open_Project_Path(Scratch("quote.inp")));
  EXPECT_EQ(gAnalysis().Title, "Span 2, the 'big' one");
  EXPECT_EQ(gAnalysis().Discription, "a,b,c");
  EXPECT_EQ(gAnalysis().RunID, "'");
  EXPECT_EQ(gAnalysis().EigenValue, 4.0f);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ProjectFile, OlderVersionReadsWithItsOwnRecordsAndSavesInTheCurrentForm) {
  gBeamShape().Length = 77;
  ASSERT_TRUE(Open_Project_Path(kPlate13));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(session().Caption, "VELK V1.4.0:plate13.inp");
  const Analysis& a = gAnalysis();
  EXPECT_EQ((Text{a.Title, a.Discription, a.RunID}), (Text{"Old plate", "Written by hand", "7"}));
  // No girder parameters in this form: the session's length stays.
  EXPECT_EQ((Floats{a.EigenValueEstimation, a.EigenValue, gBeamShape().Length}),
            (Floats{1.5f, 2.25f, 77}));
  Mesh& m = gMesh();
  ASSERT_EQ(m.Nodes().Count(), 4);
  EXPECT_EQ(m.Nodes().MaxvID, 4);
  auto n1 = m.Nodes().Item(1);
  auto N = [&](long i) { return m.Nodes().Item(i); };
  // Of the repeated in-plane value of node 1, the second stands.
  EXPECT_EQ((Floats{n1->zcoord, n1->InPDispX, n1->InPDispY, n1->XTDirValue, N(2)->YLoad,
                    N(3)->ZTStiff, N(4)->InPDispY}),
            (Floats{0.1f, 0.011f, 0.012f, 0.125f, -50, 100, 0.042f}));
  EXPECT_TRUE(n1->ZTDir() == vbTrue && n1->vID == 1 && IsTrue(N(2)->LoadDefined()));
  for (const auto& n : m.Nodes()) {
    EXPECT_EQ(n->Sx + n->Sy + n->SXY + n->Mises, 0.0f);
    EXPECT_TRUE(IsTrue(n->Connected));
  }
  ASSERT_EQ(m.twoNodes().Count(), 4);
  EXPECT_EQ(m.twoNodes().MaxvID, 2);
  auto s2 = m.twoNodes().Item(2);
  EXPECT_TRUE(s2->Node1 == N(2) && s2->Node2 == N(4));
  EXPECT_EQ((Floats{s2->Stress, s2->width}), (Floats{8.25f, 12}));
  EXPECT_EQ(m.twoNodes().Item(4)->ID, 4);
  ASSERT_EQ(m.fourNodes().Count(), 1);
  auto p = m.fourNodes().Item(1);
  EXPECT_EQ(p->Node3, N(4));
  EXPECT_EQ(p->vID, 1);
  // The nine extra values of the plate record are passed over.
  EXPECT_EQ((Floats{m.fourNodes().MaxThickness(), p->CPX, gMaterial().MOE, gMaterial().PR}),
            (Floats{0.375f, 10, 30000, 0.25f}));

  std::string data = Save("converted.inp");
  EXPECT_EQ(Lines(data)[1], " 1.4 ");
  ASSERT_TRUE(Open_Project_Path(Scratch("converted.inp")));
  EXPECT_EQ(Save("converted2.inp"), data);
}

TEST_F(ProjectFile, UnknownVersionIsRefusedAndLeavesAnEmptyModel) {
  GenerateDefaultGirder();
  gView().PropertyMode = 4;
  std::string data = Save("girder.inp");
  SetCaption("VELK V1.4.0:before.inp");
  data.replace(data.find(" 1.4 "), 5, " 1.5 ");
  WriteFile(Scratch("v15.inp"), data);
  EXPECT_FALSE(Open_Project_Path(Scratch("v15.inp")));
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].text, "Error: Reading Data");
  EXPECT_EQ(host.messages[0].title, "Error!");
  EXPECT_EQ(gMesh().Nodes().Count() + gMesh().fourNodes().Count(), 0);
  EXPECT_EQ(session().Caption, "VELK V1.4.0:before.inp");
  EXPECT_EQ(gView().PropertyMode, 1); // the view was initialised all the same
}

TEST_F(ProjectFile, MissingFileDamagedFieldAndWrongPathShowTheLastWord) {
  GenerateDefaultGirder();
  gAnalysis().Title = "Keep";
  EXPECT_FALSE(Open_Project_Path(Scratch("nowhere.inp")));
  EXPECT_EQ(host.Texts(), Text{"File Open Error!"});
  EXPECT_EQ(gMesh().Nodes().Count(), 60);
  EXPECT_EQ(gAnalysis().Title, "Keep");

  std::string data = Project_Data();
  data.replace(data.rfind("29000"), 5, "29OOO");
  WriteFile(Scratch("bad.inp"), data);
  host.messages.clear();
  EXPECT_FALSE(Open_Project_Path(Scratch("bad.inp")));
  EXPECT_EQ(host.Texts(), Text{"File Open Error!"});

  host.messages.clear();
  EXPECT_FALSE(Save_Project_Path(Scratch("no/such/dir/x.inp")));
  EXPECT_EQ(host.Texts(), (Text{"That path doesn't exist.", "File Error!"}));
}

TEST_F(ProjectFile, CommandsUseTheCommonDialog) {
  session().cdlFile.FileName = Scratch("report.vrp");
  host.saveAnswers.push_back(Scratch("girder.inp"));
  Save_Project();
  ASSERT_EQ(host.dialogsShown.size(), 1u);
  const FileDialog s = host.dialogsShown[0];
  EXPECT_EQ(s.Filter, "All Files (*.*)|*.*|VELK Graphic Interface Files(*.inp)|*.inp");
  EXPECT_EQ(std::tie(s.DialogTitle, s.FilterIndex, s.Flags), std::make_tuple("Save As", 2, 6));
  EXPECT_EQ(s.FileName, Scratch("report.vrp")); // what the dialog held last
  EXPECT_EQ(session().Caption, "VELK V1.4.0:girder.inp");

  int updates = 0, toolbars = 0;
  hooks().Update = [&] { ++updates; };
  hooks().updateToolBar = [&] { ++toolbars; };
  SetCaption("VELK V1.4.0: No Title");
  host.openAnswers.push_back(Scratch("girder.inp"));
  Open_Project();
  ASSERT_EQ(host.dialogsShown.size(), 2u);
  const FileDialog o = host.dialogsShown[1];
  EXPECT_EQ(o.Filter, s.Filter);
  EXPECT_EQ(std::tie(o.DialogTitle, o.FilterIndex, o.Flags, o.FileName),
            std::make_tuple("Open Data", 2, 4, ""));
  EXPECT_EQ(session().Caption, "VELK V1.4.0:girder.inp");
  EXPECT_TRUE(updates == 1 && toolbars == 1);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ProjectFile, CancelChangesNothingAndAFullDiskAsks) {
  GenerateDefaultGirder();
  gAnalysis().Title = "Keep";
  SetCaption("VELK V1.4.0:kept.inp");
  host.openAnswers.push_back(std::nullopt);
  host.saveAnswers.push_back(std::nullopt);
  Open_Project();
  Save_Project();
  EXPECT_EQ(host.dialogsShown.size(), 2u);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gMesh().Nodes().Count(), 60);
  EXPECT_EQ(gAnalysis().Title, "Keep");
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    EXPECT_NE(entry.path().extension(), ".inp") << entry.path();

  host.saveAnswers.push_back(std::string("/dev/full"));
  Save_Project();
  ASSERT_EQ(host.messages.size(), 2u);
  EXPECT_EQ(host.messages[0].text, "Disk is full. Continue?");
  EXPECT_EQ(host.messages[0].title, "Disk Error");
  EXPECT_EQ(host.messages[0].buttons, vbYesNoCancel | vbExclamation);
  EXPECT_EQ(host.messages[1].text, "File Error!");
  EXPECT_EQ(session().Caption, "VELK V1.4.0:kept.inp");
  EXPECT_EQ(gMesh().Nodes().Count(), 60);
}

TEST_F(ProjectFile, FileErrorsKnowsItsTable) {
  const struct {
    int number;
    const char* text;
    int buttons;
  } rows[] = {{68, "That device appears unavailable.", vbYesNo},
              {71, "Insert a disk in the drive and close the door.", vbYesNo},
              {57, "Internal disk error.", vbYesNo},
              {61, "Disk is full. Continue?", vbYesNoCancel},
              {52, "That filename is illegal.", vbYesNo},
              {64, "That filename is illegal.", vbYesNo},
              {76, "That path doesn't exist.", vbYesNo},
              {54, "Can't open your file for that type of access.", vbYesNo},
              {55, "This file is already open.", vbYesNo},
              {62, kPastEndText, vbYesNo}};
  for (const auto& row : rows) {
    host.messages.clear();
    File_Errors(row.number);
    ASSERT_EQ(host.messages.size(), 1u) << row.number;
    EXPECT_EQ(host.messages[0].text, row.text);
    EXPECT_EQ(host.messages[0].buttons, row.buttons | vbExclamation);
    EXPECT_EQ(host.messages[0].title, "Disk Error");
  }
  host.messages.clear();
  for (int other : {5, 6, 9, 13, 53, 70, 75, 32755})
    File_Errors(other);
  EXPECT_TRUE(host.messages.empty());
}

} // namespace
} // namespace velk::test
