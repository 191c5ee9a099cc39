// The five property dialogs and the coordinate dialog as the user drives them:
// the first failing check speaks and nothing is written, Apply overwrites a
// mixed selection, and the numbering follows a plate or stiffener change.
#include "RunModels.h"
#include "editing/Selection.h"
#include "forms/frmBoundary.h"
#include "forms/frmBrace.h"
#include "forms/frmCoord.h"
#include "forms/frmLoad.h"
#include "forms/frmPlate.h"
#include "forms/frmStiffener.h"
#include "mesh/GirderBuilder.h"
#include "session/ProjectFile.h"

#include <array>
#include <map>

namespace velk::test {
namespace {

using Texts = std::vector<std::string>;

// A 3 x 2 web of t 0.5 on the corners (0, 0) to (30, 20): nodes 4 x 3, all
// plates defined, no stiffener.
class PropertyDialogTest : public SessionTest {
protected:
  void SetUp() override {
    SessionTest::SetUp();
    Generate_Web(3, 2, 30, 20, 0.5f);
  }
  template <class C> void SelectAll(const C& collection) {
    gSelection().ClearSelectedItem();
    for (const auto& o : collection)
      gSelection().AddObject(o);
  }
  // The whole model as the project file writes it.
  std::string Model() {
    EXPECT_TRUE(Save_Project_Path(Scratch("m.inp")));
    return ReadFile(Scratch("m.inp"));
  }
};

// Opens the dialog on every object of its class, types the fields in order,
// applies; the messages, and whether the dialog closed.
struct Outcome {
  Texts messages;
  bool closed;
};

template <class Form, class C>
Outcome Drive(FakeHost& host, const C& all, std::vector<std::string Form::*> fields,
              const Texts& typed, void (Form::*apply)(), std::array<int, 5> checks = {}) {
  gSelection().ClearSelectedItem();
  for (const auto& o : all)
    gSelection().AddObject(o);
  Form f;
  f.Form_Activate();
  for (std::size_t i = 0; i < typed.size(); ++i)
    f.*fields[i] = typed[i];
  if constexpr (std::is_same_v<Form, frmBoundary>) f.Check1 = checks;
  host.messages.clear();
  (f.*apply)();
  return {host.Texts(), f.Unloaded};
}

TEST_F(PropertyDialogTest, FirstFailingCheckSpeaksAndNothingIsWritten) {
  const std::string numbers = "Input Data Error : Numbers!";
  const std::string range = "Input Data Error : Number out of range!";
  const std::string input = "Input Error!", positive = "Input Data Error : Positive Numbers!";
  const std::string before = Model();
  Mesh& m = gMesh();
  auto plate = [&](Texts t) {
    return Drive<frmPlate>(host, m.fourNodes(), {&frmPlate::txtthick}, t, &frmPlate::cmdApply_Click);
  };
  auto stiffener = [&](Texts t) {
    return Drive<frmStiffener>(host, m.twoNodes(), {&frmStiffener::txtWidth, &frmStiffener::txtthick},
                               t, &frmStiffener::cmdApply_Click);
  };
  auto brace = [&](Texts t) {
    return Drive<frmBrace>(
        host, m.Nodes(),
        {&frmBrace::txtX, &frmBrace::txtY, &frmBrace::txtZ, &frmBrace::txtXR, &frmBrace::txtYR}, t,
        &frmBrace::Command1_Click);
  };
  auto load = [&](Texts t) {
    return Drive<frmLoad>(host, m.Nodes(), {&frmLoad::txtLoadX, &frmLoad::txtLoadY}, t,
                          &frmLoad::cmdApply_Click);
  };
  auto boundary = [&](Texts t, std::array<int, 5> checks) {
    return Drive<frmBoundary>(host, m.Nodes(), {&frmBoundary::txtX, &frmBoundary::txtY}, t,
                              &frmBoundary::Command1_Click, checks);
  };
  const std::vector<std::pair<Outcome, std::string>> cases = {
      {plate({"abc"}), numbers},
      {plate({""}), numbers},
      {plate({"-1"}), input},
      {plate({"-0.0000101"}), input},
      {plate({"1e40"}), range},
      {stiffener({"0", "x"}), numbers}, // every field numeric before any bound
      {stiffener({"1", " "}), numbers},
      {stiffener({"0", "1"}), input},
      {stiffener({"0.000005", "1"}), input},
      {stiffener({"1", "0"}), input},
      {stiffener({"1", "-1e40"}), range},
      {brace({"1", "1", "-1", "x", "1"}), numbers},
      {brace({"1", "1", "1", "1", "-1"}), positive},
      {brace({"1", "1", "1e39", "1", "1"}), range},
      {load({"1,5", "1"}), numbers},
      {load({"1", "3.5e38"}), range},
      {boundary({"a", "0"}, {1, 0, 0, 0, 0}), numbers},
      {boundary({"a", ""}, {0, 1, 0, 0, 0}), numbers},
      {boundary({"0", "1e40"}, {1, 1, 1, 1, 1}), range},
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(cases[i].first.messages, Texts{cases[i].second}) << "case " << i;
    EXPECT_FALSE(cases[i].first.closed) << "case " << i;
  }
  EXPECT_EQ(Model(), before);

  // A selection of another class than the dialog's: the trap, not a crash.
  gSelection().ClearSelectedItem();
  gSelection().AddObject(m.Nodes().Item(1));
  frmPlate p;
  host.messages.clear();
  p.Form_Activate();
  p.txtthick = "1";
  p.cmdApply_Click();
  EXPECT_EQ(host.Texts(), (Texts{"Error...", "Error..."}));
  EXPECT_EQ(Model(), before);
}

TEST_F(PropertyDialogTest, ApplyOverwritesEverySelectedObject) {
  Mesh& m = gMesh();
  const Single loads[] = {3, -7, 0};
  for (int i = 1; i <= 3; ++i) {
    m.Nodes().Item(i)->XLoad = loads[i - 1];
    gSelection().AddObject(m.Nodes().Item(i));
  }
  frmLoad load;
  load.Form_Activate();
  EXPECT_EQ(load.txtLoadX, "3"); // the first node's
  load.txtLoadX = "-5";
  load.txtLoadY = " 0.25 ";
  load.cmdApply_Click();
  EXPECT_TRUE(load.Unloaded);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(m.Nodes().Item(i)->XLoad, -5.0f);
    EXPECT_EQ(m.Nodes().Item(i)->YLoad, 0.25f);
    EXPECT_TRUE(IsTrue(m.Nodes().Item(i)->LoadDefined()));
  }
  EXPECT_EQ(m.Nodes().Item(4)->XLoad, 0.0f);

  // Springs that sum to nothing are no brace; the tiny negative passes the check.
  frmBrace brace;
  brace.Form_Activate();
  EXPECT_EQ(brace.txtX, "0");
  brace.txtX = "2";
  brace.txtY = "-0.00001";
  brace.txtZ = brace.txtXR = brace.txtYR = "0";
  brace.Command1_Click();
  EXPECT_TRUE(brace.Unloaded);
  EXPECT_EQ(m.Nodes().Item(2)->YTStiff, -kTolerance);
  EXPECT_TRUE(IsTrue(m.Nodes().Item(2)->BraceDefined()));

  // The stiffener of width 0.00001, typed exactly: accepted, yet no stiffener.
  SelectAll(m.twoNodes());
  frmStiffener s;
  s.Form_Activate();
  s.txtWidth = "0.00001";
  s.txtthick = "1";
  s.cmdApply_Click();
  EXPECT_TRUE(s.Unloaded);
  EXPECT_TRUE(host.Texts().empty());
  EXPECT_EQ(m.twoNodes().Item(5)->width, kTolerance);
  EXPECT_FALSE(IsTrue(m.twoNodes().Item(5)->PropertyDefined));
  EXPECT_EQ(m.twoNodes().MaxvID, 0);
  gSelection().ClearSelectedItem();
  gSelection().AddObject(m.twoNodes().Item(5));
  s.txtWidth = "0.0001";
  s.cmdApply_Click();
  EXPECT_EQ(m.twoNodes().Item(5)->vID, 1);
  EXPECT_EQ(m.twoNodes().MaxvID, 1);
}

// Plate thickness 0 on the first column of cells: the compact numbers of
// plates and nodes agree with a count made from the corners, and the largest
// thickness is recomputed.
TEST_F(PropertyDialogTest, ZeroThicknessRenumbersAndRecomputesMaxThickness) {
  Mesh& m = gMesh();
  auto apply = [&](std::vector<long> plates, const char* thick) {
    gSelection().ClearSelectedItem();
    for (long p : plates)
      gSelection().AddObject(m.fourNodes().Item(p));
    frmPlate f;
    f.Form_Activate();
    f.txtthick = thick;
    f.cmdApply_Click();
    EXPECT_TRUE(f.Unloaded);
  };
  apply({6}, "2");
  EXPECT_EQ(m.fourNodes().MaxThickness(), 2.0f);
  apply({1, 2, 6}, "0"); // cells (0, 0), (0, 1) and the thick one
  EXPECT_EQ(m.fourNodes().MaxThickness(), 0.5f);

  long plateNumber = 0;
  std::map<const Nodeb*, bool> touched;
  for (const auto& p : m.fourNodes()) {
    const bool defined = p->Thickness > kTolerance;
    EXPECT_EQ(IsTrue(p->PropertyDefined), defined);
    EXPECT_EQ(p->vID, defined ? ++plateNumber : 0);
    for (const auto* n : {p->Node1.get(), p->Node2.get(), p->Node3.get(), p->Node4.get()})
      touched[n] = touched[n] || defined;
  }
  EXPECT_EQ(plateNumber, 3);
  EXPECT_EQ(m.fourNodes().MaxvID, 3);
  long nodeNumber = 0;
  for (const auto& n : m.Nodes())
    EXPECT_EQ(n->vID, touched[n.get()] ? ++nodeNumber : 0) << n->ID;
  EXPECT_EQ(nodeNumber, 8); // the column at x = 0 and the corner (30, 20) lose theirs
  EXPECT_EQ(m.Nodes().MaxvID, 8);
}

TEST_F(PropertyDialogTest, BoundaryOverwritesAllFlagsAndKeepsUncheckedValues) {
  Nodes& nodes = gMesh().Nodes();
  for (long i : {1, 2}) {
    Nodeb& n = *nodes.Item(i);
    n.SetXTDir(1), n.SetYTDir(1), n.SetZTDir(1), n.SetXRDir(1), n.SetYRDir(1);
    n.XTDirValue = 3;
    n.YTDirValue = 4;
    gSelection().AddObject(nodes.Item(i));
  }
  nodes.Item(2)->SetYTDir(0);
  frmBoundary b;
  b.Form_Activate();
  EXPECT_EQ(b.Check1, (std::array<int, 5>{1, 1, 1, 1, 1}));
  EXPECT_EQ(b.txtX, "3");
  b.Check1 = {0, 1, 0, 0, 1};
  b.txtX = "letters"; // not read: its box is clear
  b.txtY = "0.5";
  b.Command1_Click();
  EXPECT_TRUE(b.Unloaded);
  EXPECT_TRUE(host.Texts().empty());
  for (long i : {1, 2}) {
    const Nodeb& n = *nodes.Item(i);
    EXPECT_EQ((std::array<Boolean, 5>{n.XTDir(), n.YTDir(), n.ZTDir(), n.XRDir(), n.YRDir()}),
              (std::array<Boolean, 5>{0, -1, 0, 0, -1}));
    EXPECT_EQ(n.XTDirValue, 3.0f);
    EXPECT_EQ(n.YTDirValue, 0.5f);
  }
  frmBoundary again;
  again.Form_Activate();
  EXPECT_EQ(again.txtX, "0.0"); // its box is clear now
  EXPECT_EQ(again.txtY, "0.5");
  again.Check1 = {};
  again.Command1_Click();
  EXPECT_FALSE(IsTrue(nodes.Item(2)->BoundaryDefined()));
  EXPECT_FALSE(IsTrue(nodes.Item(2)->PropertyDefined()));
}

TEST_F(PropertyDialogTest, CoordinatesApplyApplyUndo) {
  const auto node = Grid_Node(gMesh().Nodes(), 1, 0); // (10, 0)
  const Single cpx = gMesh().fourNodes().Item(1)->CPX;
  int paints = 0;
  hooks().Paint = [&paints] { ++paints; };
  frmCoord c(node);
  c.Form_Activate();
  EXPECT_EQ(c.lblNode, "Node: " + std::to_string(node->vID));
  EXPECT_EQ(c.txtX, "10");
  EXPECT_FALSE(c.cmdUndoEnabled);
  c.txtX = "11";
  c.txtY = "1";
  c.cmdApply_Click();
  c.txtX = "12.5";
  c.txtY = "-2";
  c.cmdApply_Click();
  EXPECT_EQ(node->xcoord, 12.5f);
  for (const char* bad : {"1e40", "x", ""}) { // nothing moves
    c.txtY = bad;
    c.cmdApply_Click();
  }
  EXPECT_EQ(host.Texts(), Texts(3, "Input Data Error : Numbers!"));
  EXPECT_EQ(node->ycoord, -2.0f);
  c.cmdUndo_Click();
  EXPECT_EQ(node->xcoord, 11.0f);
  EXPECT_EQ(node->ycoord, 1.0f);
  EXPECT_FALSE(c.cmdUndoEnabled);
  c.cmdUndo_Click(); // one level only
  EXPECT_EQ(node->xcoord, 11.0f);
  EXPECT_EQ(paints, 3);
  EXPECT_EQ(gMesh().fourNodes().Item(1)->CPX, cpx); // centres stay until a mesh edit
}

} // namespace
} // namespace velk::test
