// Moves, tapers and shears of selected nodes on the default girder's 15 x 4
// grid (node 1 at (0, 0), node 4 at (0, 16.5), node 60 at (120, 16.5)).
#include "mesh/GeometryEdit.h"
#include "RunModels.h"
#include "editing/Selection.h"
#include "model/Mesh.h"
#include "view/View.h"

#include <gtest/gtest.h>

namespace velk::test {
namespace {

class GeometryEditTest : public SessionTest {
protected:
  void SetUp() override {
    SessionTest::SetUp();
    Build();
  }
  void Build() {
    Clear_Session();
    before.clear();
    all.ClearSelectedItem();
    Girder_In_Bending();
    for (const auto& n : gMesh().Nodes()) {
      before.push_back({n->xcoord, n->ycoord});
      all.AddObject(n);
    }
    view.MeshMode = MeshModes::Node;
    view.PropertyMode = PropertyModes::Boundary;
  }
  void Answer(std::initializer_list<const char*> answers) {
    for (const char* a : answers)
      host.inputAnswers.push_back(a ? std::optional<std::string>(a) : std::nullopt);
  }
  Single Moved(long id, bool x) const {
    const Nodeb& n = *gMesh().Nodes().Item(id);
    const auto& [x0, y0] = before[static_cast<std::size_t>(id - 1)];
    return x ? n.xcoord - x0 : n.ycoord - y0;
  }
  bool NothingMoved() const {
    for (long id = 1; id <= gMesh().Nodes().Count(); ++id)
      if (Moved(id, true) != 0 || Moved(id, false) != 0) return false;
    return true;
  }
  std::vector<std::pair<Single, Single>> before;
  Selection all;
  View view;
};

TEST_F(GeometryEditTest, ProportionalMoveOnAColumnShearsAndTheTaperMovesNothing) {
  Answer({"1", "4", "2"});
  Edit_Mesh_PMove_NodeX(gMesh(), all, view);
  EXPECT_EQ(host.prompts, (std::vector<std::string>{"Input Ref. Node ID", "Input Target Node ID",
                                                    "Move in X Direction by"}));
  for (long id = 1; id <= 60; ++id) {
    const Nodeb& n = *gMesh().Nodes().Item(id);
    EXPECT_NEAR(Moved(id, true), n.ycoord / 16.5f * 2, 1e-5) << id;
    EXPECT_EQ(Moved(id, false), 0);
  }
  // Element centres follow the corners.
  const fourNode& p = *gMesh().fourNodes().Item(1);
  EXPECT_FLOAT_EQ(p.CPX,
                  (p.Node1->xcoord + p.Node2->xcoord + p.Node3->xcoord + p.Node4->xcoord) / 4);
  Build(); // a fresh girder
  Answer({"1", "4", "2"});
  Edit_Mesh_Rotate_NodeX(gMesh(), all, view);
  EXPECT_TRUE(NothingMoved());
}

TEST_F(GeometryEditTest, TaperIsBilinearBetweenReferenceAndTarget) {
  Answer({"1", "60", "2"});
  Edit_Mesh_Rotate_NodeY(gMesh(), all, view);
  for (long id = 1; id <= 60; ++id) {
    const auto& [x, y] = before[static_cast<std::size_t>(id - 1)];
    EXPECT_NEAR(Moved(id, false), x / 120 * (y / 16.5f) * 2, 1e-5) << id;
  }
  EXPECT_NEAR(Moved(60, false), 2, 1e-6);
  // Reference equal to target: the proportional move shifts all by the
  // distance; a node selected twice moves twice.
  Selection twice;
  twice.AddObject(gMesh().Nodes().Item(5));
  twice.AddObject(gMesh().Nodes().Item(6));
  twice.AddObject(gMesh().Nodes().Item(6));
  const Single y5 = gMesh().Nodes().Item(5)->ycoord, y6 = gMesh().Nodes().Item(6)->ycoord;
  Answer({"7", "7", "-1.5"});
  Edit_Mesh_PMove_NodeY(gMesh(), twice, view);
  EXPECT_FLOAT_EQ(gMesh().Nodes().Item(5)->ycoord, y5 - 1.5f);
  EXPECT_FLOAT_EQ(gMesh().Nodes().Item(6)->ycoord, y6 - 3);
}

TEST_F(GeometryEditTest, FailuresMoveNothing) {
  Answer({"1", "60", nullptr}); // Cancel at the third question
  Edit_Mesh_PMove_NodeX(gMesh(), all, view);
  Answer({"0", "60", "2"}); // no node 0
  Edit_Mesh_Rotate_NodeY(gMesh(), all, view);
  Answer({"1", "abc"});
  Edit_Mesh_Rotate_NodeX(gMesh(), all, view);
  Edit_Mesh_PMove_NodeY(gMesh(), Selection{}, view); // nothing selected: no question
  EXPECT_EQ(host.Texts(),
            (std::vector<std::string>{"Error..[Proportional/X]", "Error..[Rotate/Y]",
                                      "Error..[Rotate/X]", "Error..[Proportional/Y]"}));
  // Silent ends: a target beyond the nodes, plates selected.
  Answer({"1", "61"});
  Edit_Mesh_PMove_NodeX(gMesh(), all, view);
  view.MeshMode = MeshModes::Plate;
  const std::size_t asked = host.prompts.size();
  Edit_Mesh_PMove_NodeX(gMesh(), all, view);
  EXPECT_EQ(host.prompts.size(), asked);
  EXPECT_EQ(host.messages.size(), 4u);
  EXPECT_TRUE(NothingMoved());
}

TEST_F(GeometryEditTest, MoveByADistanceInNodeModesOnly) {
  Selection two;
  two.AddObject(gMesh().Nodes().Item(2));
  two.AddObject(gMesh().Nodes().Item(3));
  host.inputAnswers.push_back("1.25");
  Edit_Mesh_Move_NodeX(gMesh(), two, view);
  EXPECT_FLOAT_EQ(Moved(2, true), 1.25f);
  EXPECT_FLOAT_EQ(Moved(3, true), 1.25f);
  host.inputAnswers.push_back(std::nullopt); // Cancel: silent, nothing moves
  Edit_Mesh_Move_NodeY(gMesh(), two, view);
  // In plate mode no question is asked.
  view.PropertyMode = PropertyModes::Plate;
  Edit_Mesh_Move_NodeY(gMesh(), two, view);
  EXPECT_EQ(host.prompts.size(), 2u);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(Moved(2, false), 0);
}

} // namespace
} // namespace velk::test
