// "Create Finite Element Mesh": the checks, in their order, and the girder mesh
// that the command builds.
#include "TestSession.h"
#include "editing/Selection.h"
#include "forms/frmBeamShape.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace velk::test {
namespace {

using Text = std::vector<std::string>;
using Edit = std::function<void(frmBeamShape&)>;
const char* kWarning = "Existing Mesh will be destroyed!";

class GirderGenerator : public SessionTest {
protected:
  // The dialog as it opens, with the given changes typed in, then the command.
  frmBeamShape Run(const Edit& edit = {}) {
    frmBeamShape form;
    form.Form_Activate();
    if (edit) edit(form);
    form.cmdGenerate_Click();
    return form;
  }
  void Fresh() {
    Clear_Session();
    InstallHost(&host);
  }
  Mesh& m() { return gMesh(); }
  double X(long node) { return m().Nodes().Item(node)->xcoord; }
  double Y(long node) { return m().Nodes().Item(node)->ycoord; }
};

TEST_F(GirderGenerator, DefaultGirder) {
  int toolbarMode = -1;
  gView().PropertyMode = 4;
  gView().MeshMode = 1;
  hooks().updateToolBar = [&] { toolbarMode = gView().PropertyMode; };
  gSelection().AddObject(std::make_shared<Nodeb>());

  frmBeamShape form = Run();
  EXPECT_TRUE(form.Unloaded);
  EXPECT_TRUE(host.messages.empty());
  Nodes& nodes = m().Nodes();
  EXPECT_EQ(nodes.NumberNodesX(), 15);
  EXPECT_EQ(nodes.NumberNodesY(), 4);
  ASSERT_EQ(nodes.Count(), 60);
  ASSERT_EQ(m().fourNodes().Count(), 42);
  ASSERT_EQ(m().twoNodes().Count(), 101);
  EXPECT_EQ(X(1), 0);
  EXPECT_EQ(Y(1), 0);
  EXPECT_EQ(X(4), 0);
  EXPECT_EQ(Y(4), 16.5);
  EXPECT_NEAR(X(5), 8.5714, 1e-4);
  EXPECT_EQ(X(60), 120);
  EXPECT_EQ(Y(60), 16.5);
  EXPECT_EQ(X(57), 120);
  EXPECT_EQ(Y(57), 0);
  for (long i = 1; i <= 101; ++i) {
    const twoNode& s = *m().twoNodes().Item(i);
    bool flange = (i >= 1 && i <= 14) || (i >= 43 && i <= 56);
    EXPECT_EQ(s.width, flange ? 12.0f : 0.0f) << "stiffener " << i;
    EXPECT_EQ(s.Thickness, flange ? 0.5f : 0.0f) << "stiffener " << i;
    EXPECT_EQ(IsTrue(s.PropertyDefined), flange) << "stiffener " << i;
    EXPECT_FLOAT_EQ(s.CPX, (s.Node1->xcoord + s.Node2->xcoord) * 0.5f);
  }
  for (const auto& p : m().fourNodes()) {
    EXPECT_EQ(p->Thickness, 0.5f);
    EXPECT_TRUE(IsTrue(p->PropertyDefined));
    EXPECT_EQ(p->vID, p->ID);
  }
  EXPECT_EQ(m().fourNodes().MaxThickness(), 0.5f);
  EXPECT_EQ(m().fourNodes().MaxvID, 42);
  EXPECT_EQ(m().twoNodes().MaxvID, 28);
  EXPECT_EQ(m().twoNodes().Item(43)->vID, 15);
  EXPECT_EQ(nodes.MaxvID, 60);
  for (const auto& n : nodes)
    EXPECT_TRUE(IsTrue(n->Connected));
  EXPECT_EQ(gSelection().SelectedCounter(), 0);
  // The tool bar was updated before the view reset the edit mode.
  EXPECT_EQ(toolbarMode, 4);
  EXPECT_EQ(gView().PropertyMode, 1);
  EXPECT_EQ(gView().MeshMode, 3);
}

TEST_F(GirderGenerator, TaperedWebSteppedByColumn) {
  Run([](frmBeamShape& f) { f.txtBWTE = "0.25", f.txtNumXElements = "4"; });
  ASSERT_EQ(m().fourNodes().Count(), 12);
  const float expected[] = {0.46875f, 0.40625f, 0.34375f, 0.28125f};
  for (long i = 1; i <= 12; ++i)
    EXPECT_EQ(m().fourNodes().Item(i)->Thickness, expected[(i - 1) / 3]) << "plate " << i;
  EXPECT_EQ(m().fourNodes().MaxThickness(), 0.46875f);
  EXPECT_EQ(gBeamShape().Web_TE, 0.25f);
}

TEST_F(GirderGenerator, SectionChangesMoveTheNodes) {
  struct Node {
    long id;
    double x, y;
  };
  const struct {
    const char* name;
    Edit edit;
    std::vector<Node> nodes;
  } cases[] = {
      // The offset lowers the whole far section.
      {"offset",
       [](frmBeamShape& f) { f.txtOffset = "2"; },
       {{1, 0, 0}, {4, 0, 16.5}, {57, 120, -2}, {60, 120, 14.5}}},
      {"offset, proportional: still even",
       [](frmBeamShape& f) { f.txtOffset = "2", f.chkProportionalMesh = 1; },
       {{5, 120.0 / 14, -1.0 / 7}, {29, 60, -1}, {53, 120 - 120.0 / 14, -2 + 1.0 / 7}}},
      // A deeper far end grows downward from a straight top.
      {"deeper far end",
       [](frmBeamShape& f) { f.txtBWHE = "32"; },
       {{8, 120.0 / 14, 16.5}, {32, 60, 16.5}, {57, 120, -16}, {60, 120, 16.5}}},
      {"proportional, equal depths: even",
       [](frmBeamShape& f) { f.chkProportionalMesh = 1; },
       {{5, 120.0 / 14, 0}}},
      // With no top flange at End 1 the top line is the web's.
      {"no top flange at end 1", [](frmBeamShape& f) { f.txtBTFW = "0"; }, {{4, 0, 16.25}}},
      // A deeper bottom flange at End 2 moves the bottom line down by a quarter.
      {"thicker bottom flange at end 2",
       [](frmBeamShape& f) { f.txtBBFTE = "0.75"; },
       {{57, 120, -0.125}}},
      {"negative length", [](frmBeamShape& f) { f.txtBL = "-60"; }, {{60, -60, 16.5}}}};
  for (const auto& c : cases) {
    Fresh();
    Run(c.edit);
    for (const auto& n : c.nodes) {
      EXPECT_NEAR(X(n.id), n.x, 1e-5) << c.name << ", node " << n.id;
      EXPECT_NEAR(Y(n.id), n.y, 1e-5) << c.name << ", node " << n.id;
    }
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(GirderGenerator, ProportionalMeshGradesTheColumnsByTheDepth) {
  Run([](frmBeamShape& f) {
    f.txtBWHE = "32", f.txtNumXElements = "6", f.chkProportionalMesh = 1;
  });
  EXPECT_EQ(gBeamShape().ProportionalMesh, 1);
  ASSERT_EQ(m().Nodes().Count(), 7 * 4);
  // Element lengths grow so that the last is to the first as the depths.
  EXPECT_NEAR((X(25) - X(21)) / (X(5) - X(1)), 32.5 / 16.5, 1e-4);
  EXPECT_EQ(X(25), 120);
  // One element with equal depths is built; with unequal ones it is refused below.
  Fresh();
  frmBeamShape form =
      Run([](frmBeamShape& f) { f.chkProportionalMesh = 1, f.txtNumXElements = "1"; });
  EXPECT_TRUE(form.Unloaded);
  EXPECT_EQ(m().Nodes().Count(), 8);
  EXPECT_EQ(X(5), 120);
}

TEST_F(GirderGenerator, FlangeMissingAtOneEndTapersAlongTheGirder) {
  frmBeamShape form = Run([](frmBeamShape& f) { f.txtBTFW = "0"; });
  ASSERT_TRUE(form.Unloaded);
  EXPECT_EQ(form.txtBTFT, "0"); // the checks zero the partner field
  EXPECT_EQ(gBeamShape().Top_Flange_W, 0.0f);
  EXPECT_EQ(gBeamShape().Top_Flange_T, 0.0f);
  const twoNode& first = *m().twoNodes().Item(43);
  EXPECT_FLOAT_EQ(first.width, 12.0f * first.CPX / 120.0f);
  EXPECT_TRUE(IsTrue(first.PropertyDefined));

  Fresh();
  form = Run([](frmBeamShape& f) { f.txtBTFTE = "0"; });
  EXPECT_EQ(form.txtBTFWE, "0");
  EXPECT_EQ(gBeamShape().Top_Flange_WE, 0.0f);
  for (long i = 43; i <= 56; ++i) {
    const twoNode& s = *m().twoNodes().Item(i);
    EXPECT_NEAR(s.width, 12.0 - 12.0 * s.CPX / 120.0, 2e-6);
    EXPECT_NEAR(s.Thickness, 0.5 - 0.5 * s.CPX / 120.0, 2e-7);
    EXPECT_TRUE(IsTrue(s.PropertyDefined)) << i;
  }
  EXPECT_EQ(m().twoNodes().MaxvID, 28);
}

TEST_F(GirderGenerator, FieldsAreStoredAndCountsRoundHalfToEven) {
  frmBeamShape form = Run([](frmBeamShape& f) {
    f.txtMOE = "200000", f.txtPR = "5", f.txtBTFWE = "10", f.txtBBFW = "-3", f.txtBBFWE = "-3";
    f.txtNumXElements = "2.5", f.txtNumYElements = "3.5";
  });
  EXPECT_TRUE(form.Unloaded);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gMaterial().MOE, 200000.0f);
  EXPECT_EQ(gMaterial().PR, 5.0f); // a large ratio passes
  EXPECT_EQ(gBeamShape().Top_Flange_WE, 10.0f);
  EXPECT_FALSE(IsTrue(m().twoNodes().Item(1)->PropertyDefined)); // negative width
  EXPECT_EQ(m().Nodes().NumberNodesX(), 3);
  EXPECT_EQ(m().Nodes().NumberNodesY(), 5);

  // The largest counts that fit are accepted.
  Run([](frmBeamShape& f) { f.txtNumXElements = "32766", f.txtNumYElements = "1"; });
  EXPECT_EQ(m().Nodes().NumberNodesX(), 32767);
  EXPECT_EQ(m().Nodes().Count(), 32767 * 2);
  EXPECT_EQ(X(32767 * 2), 120);
}

TEST_F(GirderGenerator, FirstFailingCheckSpeaksAndNothingIsBuilt) {
  const char* kNumbers = "Input Data Error : Numbers!";
  const char* kLongitudinal = "Invalid Input Data : Longitudinal!";
  const char* kTransverse = "Invalid Input Data : Transverse!";
  const char* kMoE = "Invalid Input Data : MoE!";
  const char* kPR = "Invalid Input Data : PR!";
  const char* kWeb = "Invalid Input Data : Beam Web!";
  const std::pair<Edit, const char*> cases[] = {
      {[](frmBeamShape& f) { f.txtBL = "abc"; }, kNumbers},
      {[](frmBeamShape& f) { f.txtNumYElements = ""; }, kNumbers},
      {[](frmBeamShape& f) { f.txtOffset = "x"; }, kNumbers},
      {[](frmBeamShape& f) { f.txtNumXElements = "0", f.txtBBFTE = "1.."; }, kNumbers},
      {[](frmBeamShape& f) { f.txtNumXElements = "0"; }, kLongitudinal},
      {[](frmBeamShape& f) { f.txtNumXElements = "0.4"; }, kLongitudinal},
      {[](frmBeamShape& f) { f.txtNumXElements = "-3"; }, kLongitudinal},
      {[](frmBeamShape& f) { f.txtNumXElements = "0", f.txtNumYElements = "0"; }, kLongitudinal},
      {[](frmBeamShape& f) { f.txtNumYElements = "0.5"; }, kTransverse},
      {[](frmBeamShape& f) { f.txtNumYElements = "0", f.txtMOE = "0", f.txtPR = "0"; },
       kTransverse},
      {[](frmBeamShape& f) { f.txtMOE = "0"; }, kMoE},
      {[](frmBeamShape& f) { f.txtMOE = "-29000"; }, kMoE},
      {[](frmBeamShape& f) { f.txtMOE = "0", f.txtPR = "0"; }, kMoE},
      {[](frmBeamShape& f) { f.txtPR = "0"; }, kPR},
      {[](frmBeamShape& f) { f.txtPR = "-0.1", f.txtBWT = "0"; }, kPR},
      {[](frmBeamShape& f) { f.txtBWT = "0"; }, kWeb},
      {[](frmBeamShape& f) { f.txtBWH = "0.0"; }, kWeb},
      {[](frmBeamShape& f) { f.txtBWTE = "0"; }, kWeb},
      {[](frmBeamShape& f) { f.txtBWHE = "-0"; }, kWeb},
      {[](frmBeamShape& f) { f.txtBL = "0", f.txtBWHE = "0"; }, kWeb},
      {[](frmBeamShape& f) { f.txtBL = "0"; }, "Invalid Input Data : Beam Length!"}};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    host.messages.clear();
    frmBeamShape form = Run(cases[i].first);
    EXPECT_FALSE(form.Unloaded) << "case " << i;
    EXPECT_EQ(host.Texts(), Text{cases[i].second}) << "case " << i;
  }
  EXPECT_EQ(m().Nodes().Count(), 0);
  EXPECT_EQ(gBeamShape().Length, 120.0f);
  EXPECT_EQ(gBeamShape().Top_Flange_W, 12.0f);
  EXPECT_EQ(gMaterial().MOE, 29000.0f);

  // Flange fields zeroed by the checks stay zeroed; End 2 flanges come after
  // the End 1 web, and no flange is zeroed before the material checks.
  host.messages.clear();
  frmBeamShape form =
      Run([](frmBeamShape& f) { f.txtBTFW = "0", f.txtBBFT = "0", f.txtBWHE = "0"; });
  EXPECT_EQ(host.Texts(), Text{kWeb});
  EXPECT_EQ(form.txtBTFT, "0");
  EXPECT_EQ(form.txtBBFW, "0");
  EXPECT_EQ(form.txtBTFTE, "0.5");
  EXPECT_EQ(gBeamShape().Top_Flange_T, 0.5f);
  host.messages.clear();
  form = Run([](frmBeamShape& f) { f.txtPR = "0", f.txtBTFW = "0"; });
  EXPECT_EQ(host.Texts(), Text{kPR});
  EXPECT_EQ(form.txtBTFT, "0.5");
}

class GirderOverMesh : public GirderGenerator {
protected:
  void SetUp() override {
    GirderGenerator::SetUp();
    gAnalysis().Title = "Before";
    Run();
    EXPECT_TRUE(host.messages.empty()); // an empty mesh needs no warning
    EXPECT_EQ(gAnalysis().Title, "Before");
    ASSERT_EQ(m().Nodes().Count(), 60);
    gAnalysis().Title = "Keep";
    gMaterial().MOE = 12345;
  }
  void ExpectOldModel() {
    EXPECT_EQ(m().Nodes().Count(), 60);
    EXPECT_EQ(m().twoNodes().Count(), 101);
    EXPECT_EQ(gAnalysis().Title, "Keep");
    EXPECT_EQ(gMaterial().MOE, 12345.0f);
    EXPECT_EQ(gBeamShape().Length, 120.0f);
  }
};

TEST_F(GirderOverMesh, CancelOrAFailingCheckKeepsTheOldModelAndOkReplacesIt) {
  host.msgAnswers.push_back(vbCancel);
  frmBeamShape form = Run([](frmBeamShape& f) { f.txtBL = "60"; });
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].text, kWarning);
  EXPECT_EQ(host.messages[0].title, "Warning");
  EXPECT_EQ(host.messages[0].buttons & 7, vbOKCancel);
  EXPECT_FALSE(form.Unloaded);
  ExpectOldModel();

  host.messages.clear();
  form = Run([](frmBeamShape& f) { f.txtBL = "0", f.txtMOE = "1"; });
  EXPECT_EQ(host.Texts(), (Text{kWarning, "Invalid Input Data : Beam Length!"}));
  EXPECT_FALSE(form.Unloaded);
  ExpectOldModel();

  host.messages.clear();
  gAnalysis().MaxCycle = 15;
  form = Run([](frmBeamShape& f) { f.txtNumXElements = "2"; });
  EXPECT_TRUE(form.Unloaded);
  EXPECT_EQ(host.Texts(), Text{kWarning});
  EXPECT_EQ(m().Nodes().Count(), 12);
  EXPECT_EQ(gAnalysis().Title, "No Title");
  EXPECT_EQ(gAnalysis().MaxCycle, 15);
  EXPECT_EQ(gMaterial().MOE, 12345.0f); // from the field, filled from the old material
}

TEST_F(GirderOverMesh, LimitsAreRefusedBeforeAnythingIsReplaced) {
  const std::pair<Edit, const char*> cases[] = {
      {[](frmBeamShape& f) { f.txtNumXElements = "32767"; }, "Longitudinal"},
      {[](frmBeamShape& f) { f.txtNumXElements = "40000"; }, "Longitudinal"},
      {[](frmBeamShape& f) { f.txtNumYElements = "32767"; }, "Transverse"},
      {[](frmBeamShape& f) { f.txtNumXElements = "2000", f.txtNumYElements = "2000"; }, "Elements"},
      {[](frmBeamShape& f) { f.txtBL = "1e39"; }, "range"},
      {[](frmBeamShape& f) { f.txtMOE = "-4e38"; }, "range"},
      {[](frmBeamShape& f) { f.txtOffset = "1e400"; }, "range"},
      {[](frmBeamShape& f) { f.chkProportionalMesh = 1, f.txtBWHE = "-20"; }, "Proportional"},
      {[](frmBeamShape& f) { f.chkProportionalMesh = 1, f.txtBWH = "-0.5"; }, "Proportional"},
      {[](frmBeamShape& f) {
         f.chkProportionalMesh = 1, f.txtNumXElements = "1", f.txtBWHE = "32";
       },
       "Proportional"}};
  for (const auto& [edit, fragment] : cases) {
    host.messages.clear();
    frmBeamShape form = Run(edit);
    EXPECT_FALSE(form.Unloaded) << fragment;
    auto texts = host.Texts();
    ASSERT_EQ(texts.size(), 2u) << fragment;
    EXPECT_EQ(texts[0], kWarning);
    EXPECT_NE(texts[1].find(fragment), std::string::npos) << texts[1];
    ExpectOldModel();
  }
}

} // namespace
} // namespace velk::test
