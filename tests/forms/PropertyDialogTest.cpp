// The property dialogs and the coordinate dialog as the user drives them: the
// first failing check speaks and nothing is written, Apply overwrites every
// selected object, and the numbering follows a plate or stiffener change.
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

// Opens the dialog on the selection, types `typed` into `fields` in order and
// applies; the messages shown, and "closed" when the dialog unloaded.
template <class Form>
Texts Drive(FakeHost& host, std::vector<std::string Form::*> fields, const Texts& typed,
            void (Form::*apply)(), std::array<int, 5> checks = {}) {
  Form f;
  f.Form_Activate();
  for (std::size_t i = 0; i < typed.size(); ++i)
    f.*fields[i] = typed[i];
  if constexpr (std::is_same_v<Form, frmBoundary>) f.Check1 = checks;
  host.messages.clear();
  (f.*apply)();
  Texts out = host.Texts();
  if (f.Unloaded) out.push_back("closed");
  return out;
}

template <class C> const C& Select(const C& objects) {
  gSelection().ClearSelectedItem();
  for (const auto& o : objects)
    gSelection().AddObject(o);
  return objects;
}

// A 3 x 2 web of t 0.5 from (0, 0) to (30, 20): 4 x 3 nodes, all plates defined.
class PropertyDialogTest : public SessionTest {
protected:
  void SetUp() override {
    SessionTest::SetUp();
    Generate_Web(3, 2, 30, 20, 0.5f);
  }
  std::string Model() { // the whole model as the project file writes it
    EXPECT_TRUE(Save_Project_Path(Scratch("m.inp")));
    return ReadFile(Scratch("m.inp"));
  }
  Texts Plate(Texts t) { return Drive(host, {&frmPlate::txtthick}, t, &frmPlate::cmdApply_Click); }
  Texts Stiffener(Texts t) {
    return Drive(host, {&frmStiffener::txtWidth, &frmStiffener::txtthick}, t,
                 &frmStiffener::cmdApply_Click);
  }
  Texts Brace(Texts t) {
    return Drive(
        host,
        {&frmBrace::txtX, &frmBrace::txtY, &frmBrace::txtZ, &frmBrace::txtXR, &frmBrace::txtYR}, t,
        &frmBrace::Command1_Click);
  }
  Texts Load(Texts t) {
    return Drive(host, {&frmLoad::txtLoadX, &frmLoad::txtLoadY}, t, &frmLoad::cmdApply_Click);
  }
  Texts Boundary(Texts t, std::array<int, 5> checks) {
    return Drive(host, {&frmBoundary::txtX, &frmBoundary::txtY}, t, &frmBoundary::Command1_Click,
                 checks);
  }
};

TEST_F(PropertyDialogTest, FirstFailingCheckSpeaksAndNothingIsWritten) {
  const Texts numbers{"Input Data Error : Numbers!"}, input{"Input Error!"};
  const Texts range{"Input Data Error : Number out of range!"};
  const std::string before = Model();
  Select(gMesh().fourNodes());
  std::vector<std::pair<Texts, Texts>> cases = {
      {Plate({""}), numbers}, {Plate({"-0.0000101"}), input}, {Plate({"1e40"}), range}};
  Select(gMesh().twoNodes());
  cases.insert(cases.end(), {{Stiffener({"0", "x"}), numbers}, // all numeric before any bound
                             {Stiffener({"0.000005", "1"}), input},
                             {Stiffener({"1", "0"}), input}});
  Select(gMesh().Nodes());
  cases.insert(cases.end(),
               {{Brace({"1", "1", "-1", "x", "1"}), numbers},
                {Brace({"1", "1", "1", "1", "-1"}), {"Input Data Error : Positive Numbers!"}},
                {Load({"1,5", "1"}), numbers},
                {Load({"1", "3.5e38"}), range},
                {Boundary({"a", "0"}, {1, 0, 0, 0, 0}), numbers},
                {Boundary({"0", ""}, {0, 1, 0, 0, 0}), numbers},
                {Plate({"1"}), {"Error..."}}}); // nodes in the plate dialog: the trap
  for (std::size_t i = 0; i < cases.size(); ++i)
    EXPECT_EQ(cases[i].first, cases[i].second) << "case " << i;
  EXPECT_EQ(Model(), before);
}

TEST_F(PropertyDialogTest, ApplyOverwritesEverySelectedObject) {
  const std::vector three{gMesh().Nodes().Item(1), gMesh().Nodes().Item(2),
                          gMesh().Nodes().Item(3)};
  three[0]->XLoad = 3;
  three[1]->XLoad = -7;
  Select(three);
  EXPECT_EQ(Load({"-5", " 0.25 "}), Texts{"closed"});
  for (const auto& n : three)
    EXPECT_TRUE(n->XLoad == -5.0f && n->YLoad == 0.25f && IsTrue(n->LoadDefined()));
  EXPECT_EQ(gMesh().Nodes().Item(4)->XLoad, 0.0f);

  // Width 0.00001 typed exactly: accepted, yet no stiffener.
  const auto bar = gMesh().twoNodes().Item(5);
  Select(gMesh().twoNodes());
  EXPECT_EQ(Stiffener({"0.00001", "1"}), Texts{"closed"});
  EXPECT_EQ(bar->width, kTolerance);
  EXPECT_FALSE(IsTrue(bar->PropertyDefined));
  Select(std::vector{bar});
  EXPECT_EQ(Stiffener({"0.0001", "1"}), Texts{"closed"});
  EXPECT_EQ(bar->vID, 1);
  EXPECT_EQ(gMesh().twoNodes().MaxvID, 1);
}

// The compact numbers agree with a count made from the corners of the plates
// left, and the largest thickness is recomputed.
TEST_F(PropertyDialogTest, ZeroThicknessRenumbersAndRecomputesMaxThickness) {
  auto plate = [](long id) { return gMesh().fourNodes().Item(id); };
  Select(std::vector{plate(6)});
  Plate({"2"});
  EXPECT_EQ(gMesh().fourNodes().MaxThickness(), 2.0f);
  Select(std::vector{plate(1), plate(2), plate(6)}); // the column at x = 0 and the thick one
  Plate({"0"});
  EXPECT_EQ(gMesh().fourNodes().MaxThickness(), 0.5f);
  long plateNumber = 0, nodeNumber = 0;
  std::map<const Nodeb*, bool> held;
  for (const auto& p : gMesh().fourNodes()) {
    const bool defined = p->Thickness > kTolerance;
    EXPECT_EQ(IsTrue(p->PropertyDefined), defined);
    EXPECT_EQ(p->vID, defined ? ++plateNumber : 0);
    for (const auto* n : {p->Node1.get(), p->Node2.get(), p->Node3.get(), p->Node4.get()})
      held[n] = held[n] || defined;
  }
  for (const auto& n : gMesh().Nodes())
    EXPECT_EQ(n->vID, held[n.get()] ? ++nodeNumber : 0) << n->ID;
  EXPECT_EQ(gMesh().fourNodes().MaxvID, 3);
  EXPECT_EQ(gMesh().Nodes().MaxvID, 8); // x = 0 and the corner (30, 20) lose theirs
}

TEST_F(PropertyDialogTest, BoundaryOverwritesAllFlagsAndKeepsUncheckedValues) {
  const std::vector two{gMesh().Nodes().Item(1), gMesh().Nodes().Item(2)};
  for (const auto& n : two) {
    n->SetXTDir(1), n->SetYTDir(1), n->SetZTDir(1), n->SetXRDir(1), n->SetYRDir(1);
    n->XTDirValue = 3;
  }
  frmBoundary shown;
  Select(two).front()->SetYTDir(0); // the fields show the first node
  shown.Form_Activate();
  EXPECT_EQ(shown.Check1, (std::array<int, 5>{1, 0, 1, 1, 1}));
  EXPECT_EQ(shown.txtX, "3");
  // Letters in a field whose box is clear are not read.
  EXPECT_EQ(Boundary({"letters", "0.5"}, {0, 1, 0, 0, 1}), Texts{"closed"});
  for (const auto& n : two) {
    EXPECT_EQ((std::array{n->XTDir(), n->YTDir(), n->ZTDir(), n->XRDir(), n->YRDir()}),
              (std::array<Boolean, 5>{0, -1, 0, 0, -1}));
    EXPECT_TRUE(n->XTDirValue == 3.0f && n->YTDirValue == 0.5f);
  }
  shown.Form_Activate();
  EXPECT_EQ(shown.txtX, "0.0"); // its box is clear now
  Boundary({"", ""}, {});
  EXPECT_FALSE(IsTrue(two[1]->BoundaryDefined()) || IsTrue(two[1]->PropertyDefined()));
}

TEST_F(PropertyDialogTest, CoordinatesApplyApplyUndo) {
  const auto node = Grid_Node(gMesh().Nodes(), 1, 0); // (10, 0), a corner of plate 1
  const Single cpx = gMesh().fourNodes().Item(1)->CPX;
  int paints = 0;
  hooks().Paint = [&paints] { ++paints; };
  frmCoord c(node);
  c.Form_Activate();
  EXPECT_EQ(c.lblNode + " " + c.txtX, "Node: " + std::to_string(node->vID) + " 10");
  auto apply = [&c](const char* x, const char* y) {
    c.txtX = x;
    c.txtY = y;
    c.cmdApply_Click();
  };
  apply("11", "1");
  apply("12.5", "-2");
  for (const char* bad : {"1e40", "x", ""}) // nothing moves
    apply("0", bad);
  EXPECT_EQ(host.Texts(), Texts(3, "Input Data Error : Numbers!"));
  EXPECT_TRUE(node->xcoord == 12.5f && node->ycoord == -2.0f && c.cmdUndoEnabled);
  c.cmdUndo_Click();
  c.cmdUndo_Click(); // one level only
  EXPECT_TRUE(node->xcoord == 11.0f && node->ycoord == 1.0f && !c.cmdUndoEnabled);
  EXPECT_EQ(paints, 3);
  EXPECT_EQ(gMesh().fourNodes().Item(1)->CPX, cpx); // centres stay until a mesh edit
}

} // namespace
} // namespace velk::test
