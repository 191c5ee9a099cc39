// Picking on a known camera, where a model unit is a window pixel, and the
// property clipboard with its renumbering.
#include "editing/Selection.h"
#include "FaultOf.h"
#include "RunModels.h"
#include "common/Fault.h"
#include "model/Mesh.h"
#include "view/View.h"

#include <gtest/gtest.h>

namespace velk::test {
namespace {

// Model (x, y) lands on window (x, y) of a 100 x 100 viewport: glOrtho(0, 100,
// 0, 100, -1, 1) and an identity model-view. A mouse at (X, Y) points at
// window y = 101 - Y.
View PixelCamera(Long meshMode) {
  View v;
  v.MeshMode = meshMode;
  v.FrameViewport = {0, 0, 100, 100};
  v.FrameModelView = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  v.FrameProjection = {0.02, 0, 0, 0, 0, 0.02, 0, 0, 0, 0, -1, 0, -1, -1, 0, 1};
  return v;
}

// A mesh of loose nodes (and one element of each kind, so that picking runs).
Mesh& NodesAt(std::initializer_list<std::pair<Single, Single>> xy) {
  Mesh& m = gMesh();
  for (auto [x, y] : xy)
    m.Nodes().Add(x, y, m.Nodes().Count() + 1, std::to_string(m.Nodes().Count() + 1));
  auto n = m.Nodes().Item(1);
  m.twoNodes().Add(n, n, 1, "1");
  m.fourNodes().Add(n, n, n, n, 1, "1");
  return m;
}

std::shared_ptr<Nodeb> NodeOf(const Selection& s, Long i) {
  return std::get<std::shared_ptr<Nodeb>>(s.Item(i));
}

// `s` holding just the objects given, in order.
template <class... T> Selection& Pick(Selection& s, const T&... objects) {
  s.ClearSelectedItem();
  (s.AddObject(objects), ...);
  return s;
}

using SelectionTest = SessionTest;

TEST_F(SelectionTest, ProjectionOfTheFrame) {
  View v = PixelCamera(MeshModes::Node);
  Single sx = 0, sy = 0;
  Project_Point(v, 37, -12, sx, sy);
  EXPECT_FLOAT_EQ(sx, 37);
  EXPECT_FLOAT_EQ(sy, -12);
  v.FrameViewport = {10, 20, 200, 50}; // scaled and offset like glViewport
  Project_Point(v, 50, 50, sx, sy);
  EXPECT_FLOAT_EQ(sx, 10 + 100);
  EXPECT_FLOAT_EQ(sy, 20 + 25);
}

TEST_F(SelectionTest, NearestByRoundedPointWithTiesToTheLowerPosition) {
  // 0.9 and 1.2 both stand at 1: the lower position wins wherever the click.
  Mesh& m = NodesAt({{0.9f, 50}, {1.2f, 50}, {2.5f, 80}, {3.4f, 80}, {60, 60}});
  const View v = PixelCamera(MeshModes::Node);
  Selection s;
  Single X = 1.4f, Y = 51; // window y 50
  s.SelectItemOne(m, v, X, Y);
  ASSERT_EQ(s.SelectedCounter(), 1);
  EXPECT_EQ(NodeOf(s, 1)->ID, 1);
  EXPECT_FLOAT_EQ(Y, 50); // the argument comes back counted from the bottom
  // 2.5 rounds to even 2, 3.4 to 3: a click at 3 gets the second.
  X = 3, Y = 21;
  s.SelectItemOne(m, v, X, Y);
  EXPECT_EQ(NodeOf(s, 1)->ID, 4);
  // A click far away still picks one: the nearest, or the first when none is
  // within reach.
  X = 99, Y = 1;
  s.SelectItemOne(m, v, X, Y);
  EXPECT_EQ(NodeOf(s, 1)->ID, 5);
  X = 1e5f, Y = -1e5f;
  s.SelectItemOne(m, v, X, Y);
  ASSERT_EQ(s.SelectedCounter(), 1);
  EXPECT_EQ(NodeOf(s, 1)->ID, 1);
  // Shift adds, twice the same object included.
  X = 60, Y = 41;
  s.AddItemOne(m, v, X, Y);
  X = 60, Y = 41;
  s.AddItemOne(m, v, X, Y);
  ASSERT_EQ(s.SelectedCounter(), 3);
  EXPECT_EQ(NodeOf(s, 2), NodeOf(s, 3));
}

TEST_F(SelectionTest, BoxIsStrictAndOrderFree) {
  Mesh& m = NodesAt({{10, 10}, {20, 20}, {30, 30}, {40, 40}, {10, 20}});
  const View v = PixelCamera(MeshModes::Node);
  Selection s;
  // Window box x 10..30, y 10..30 (mouse y 91..71): the nodes on its edges are out.
  Single x1 = 10, y1 = 91, x2 = 30, y2 = 71;
  s.SelectItemBox(m, v, x1, y1, x2, y2);
  ASSERT_EQ(s.SelectedCounter(), 1);
  EXPECT_EQ(NodeOf(s, 1)->ID, 2);
  EXPECT_TRUE(x1 < x2 && y1 < y2); // corners sorted for the caller
  // Drawn from bottom right to top left: the same objects.
  x1 = 45, y1 = 51, x2 = 15, y2 = 96;
  s.SelectItemBox(m, v, x1, y1, x2, y2);
  ASSERT_EQ(s.SelectedCounter(), 3);
  EXPECT_EQ(NodeOf(s, 3)->ID, 4);
  // Shift adds, duplicates kept; a box of no width takes nothing.
  x1 = 15, y1 = 96, x2 = 25, y2 = 76;
  s.AddItemBox(m, v, x1, y1, x2, y2);
  EXPECT_EQ(s.SelectedCounter(), 4);
  x1 = 20, y1 = 96, x2 = 20, y2 = 50;
  s.SelectItemBox(m, v, x1, y1, x2, y2);
  EXPECT_EQ(s.SelectedCounter(), 0);
}

TEST_F(SelectionTest, ElementsByTheirCentresAndFaultsOfThePick) {
  Generate_Web(2, 2, 20, 20, 0.1f); // plates centred at 5 and 15
  const View plates = PixelCamera(MeshModes::Plate);
  Selection s;
  Single X = 16, Y = 101 - 4;
  s.SelectItemOne(gMesh(), plates, X, Y);
  const auto p = std::get<std::shared_ptr<fourNode>>(s.Item(1));
  EXPECT_FLOAT_EQ(p->CPX, 15);
  EXPECT_FLOAT_EQ(p->CPY, 5);
  // An empty model gives nothing; a node beyond 16 bits stops the pick there,
  // with what was appended so far kept.
  Mesh empty;
  s.SelectItemOne(empty, plates, X, Y);
  EXPECT_EQ(s.SelectedCounter(), 0);
  Clear_Session();
  Mesh& m = NodesAt({{5, 5}, {40000, 5}, {6, 6}});
  const View nodes = PixelCamera(MeshModes::Node);
  Single x1 = 0, y1 = 100, x2 = 99, y2 = 0;
  EXPECT_EQ(FaultOf([&] { s.SelectItemBox(m, nodes, x1, y1, x2, y2); }), errOverflow);
  EXPECT_EQ(s.SelectedCounter(), 1);
  EXPECT_EQ(FaultOf([&] { s.Item(2); }), errSubscript);
}

TEST_F(SelectionTest, PasteAndDeleteOfNodePropertiesByEditMode) {
  Mesh& m = NodesAt({{0, 0}, {1, 0}, {2, 0}});
  auto src = m.Nodes().Item(1), a = m.Nodes().Item(2), b = m.Nodes().Item(3);
  src->SetXTDir(1), src->XTDirValue = 0.5f, src->ZTStiff = 7, src->XLoad = -3, src->YLoad = 2;
  a->SetZTDir(1), a->YTStiff = 4;
  Selection s;
  Pick(s, src).Copy();
  s.ClearSelectedItem();
  EXPECT_TRUE(s.CopiedItem.has_value()); // clearing keeps the clipboard
  Pick(s, a, b).Paste(m, PropertyModes::Load); // loads only
  EXPECT_FLOAT_EQ(a->XLoad, -3);
  EXPECT_FLOAT_EQ(b->YLoad, 2);
  EXPECT_TRUE(a->ZTDir() && a->YTStiff == 4 && b->ZTStiff == 0);
  EXPECT_TRUE(b->LoadDefined() && !b->BoundaryDefined());
  s.Paste(m, PropertyModes::Boundary); // the five flags, not the prescribed values
  EXPECT_TRUE(b->XTDir() && !b->ZTDir() && !a->ZTDir());
  EXPECT_FLOAT_EQ(b->XTDirValue, 0);
  EXPECT_TRUE(b->BoundaryDefined());
  // The clipboard is the live source: deleting its springs pastes zeros.
  s.Paste(m, PropertyModes::Brace);
  EXPECT_FLOAT_EQ(a->ZTStiff, 7);
  Selection only;
  Pick(only, src).Delete(m, PropertyModes::Brace);
  EXPECT_EQ(only.SelectedCounter(), 0);
  EXPECT_FLOAT_EQ(src->ZTStiff, 0);
  EXPECT_FLOAT_EQ(src->XLoad, -3); // other kinds stay
  s.Paste(m, PropertyModes::Brace);
  EXPECT_FLOAT_EQ(a->ZTStiff, 0);
  EXPECT_FALSE(a->BraceDefined());
  // Boundary delete clears the flags and keeps the prescribed value.
  s.Delete(m, PropertyModes::Boundary);
  EXPECT_TRUE(!a->XTDir() && !b->XTDir() && !b->BoundaryDefined());
  EXPECT_TRUE(b->LoadDefined());
}

TEST_F(SelectionTest, PasteAndDeleteOfElementsRenumber) {
  Generate_Web(2, 1, 20, 10, 0.1f); // plates 1, 2; stiffeners without sections
  Mesh& m = gMesh();
  auto p1 = m.fourNodes().Item(1), p2 = m.fourNodes().Item(2);
  p2->Thickness = 0.4f;
  m.fourNodes().UpdateMaxThickness();
  Selection s;
  // A stiffener's property does not go onto plates.
  Pick(s, m.twoNodes().Item(1)).Copy();
  Pick(s, p2).Paste(m, PropertyModes::Plate);
  EXPECT_FLOAT_EQ(p2->Thickness, 0.4f);
  // The thin plate pasted onto the thick one: the largest thickness stays stale.
  Pick(s, p1, p2).Copy(); // the first counts
  Pick(s, p2).Paste(m, PropertyModes::Plate);
  EXPECT_FLOAT_EQ(p2->Thickness, 0.1f);
  EXPECT_FLOAT_EQ(m.fourNodes().MaxThickness(), 0.4f);
  // Deleting the first plate: it drops out of the numbering, and so do the
  // nodes that only it touched; the largest thickness is recomputed.
  Pick(s, p1).Delete(m, PropertyModes::Plate);
  EXPECT_EQ(p1->vID, 0);
  EXPECT_EQ(p2->vID, 1);
  EXPECT_FLOAT_EQ(m.fourNodes().MaxThickness(), 0.1f);
  EXPECT_EQ(GridNode(0, 0).vID, 0);
  EXPECT_GT(GridNode(1, 0).vID, 0);
  // Stiffeners: a pasted section defines them and numbers them.
  auto t1 = m.twoNodes().Item(1), t2 = m.twoNodes().Item(2);
  t1->width = 2, t1->Thickness = 0.2f;
  t1->UpdatePropertyDefined();
  Pick(s, t1).Copy();
  Pick(s, t2).Paste(m, PropertyModes::Stiffener);
  EXPECT_TRUE(t2->PropertyDefined);
  EXPECT_EQ(t2->vID, 2);
  s.Delete(m, PropertyModes::Stiffener);
  EXPECT_EQ(t2->vID, 0);
  EXPECT_FLOAT_EQ(t2->width, 0);
}

} // namespace
} // namespace velk::test
