// The check before a run: each kind of problem refused once with its object
// and value, on a 4 x 4 plate with a line of stiffeners along y = 5 (nodes
// numbered up each column, 5 to a column; plates 4 to a column of cells;
// stiffeners 9 to 12 the defined ones).
#include "mesh/GirderBuilder.h"
#include "model/ModelCheck.h"

#include <gtest/gtest.h>

#include "RunModels.h"

#include <functional>
#include <string>

namespace velk::test {
namespace {

using ModelCheck = SessionTest;

fourNode& Plate(long i) {
  return *gMesh().fourNodes().Item(i);
}
twoNode& Stiffener(long i) {
  return *gMesh().twoNodes().Item(i);
}
Nodeb& Node(long i) {
  return *gMesh().Nodes().Item(i);
}

const std::string kStale = "the compact numbering stored with the model does not match its "
                           "elements (";

TEST_F(ModelCheck, RefusesTheFirstProblemWithItsObjectAndValue) {
  const struct {
    std::function<void()> edit;
    std::string text; // empty: accepted
    bool numbering = false;
  } cases[] = {
      {[] {}, ""},
      {[] { gMaterial().MOE = -1000; }, "the modulus of elasticity is -1000 but must be above 0"},
      {[] { gMaterial().MOE = 0; }, "the modulus of elasticity is 0 but must be above 0"},
      {[] { gMaterial().PR = 0.5f; },
       "Poisson's ratio is 0.5 but must be at least 0 and below 0.5"},
      {[] { gMaterial().PR = -2; }, "Poisson's ratio is -2 but must be at least 0 and below 0.5"},
      {[] { gMaterial().PR = 0; }, ""},
      {[] { Plate(7).Thickness = -0.1f; }, "plate 7 has thickness -0.1"},
      {[] { Stiffener(2).Thickness = -1; }, "stiffener 2 has thickness -1"},
      {[] { Stiffener(10).width = -2; }, "stiffener 10 has width -2"},
      // What the plate dialog lets through takes no part once renumbered.
      {[] {
         Plate(7).Thickness = -0.000005f;
         Plate(7).UpdatePropertyDefined();
         gMesh().GeneratevID();
       },
       ""},
      {[] { Plate(3).Thickness = 0; }, "plate 3 is marked as defined although its thickness is 0"},
      {[] { Stiffener(1).Thickness = 0.1f, Stiffener(1).width = 1; },
       "stiffener 1 is marked as not defined although its thickness is 0.1 and its width 1"},
      {[] { Plate(5).vID = 6; }, kStale + "plate 5 has vID 6, expected 5)", true},
      {[] { gMesh().fourNodes().MaxvID = 17; },
       kStale + "the plates' MaxvID is 17, expected 16)", true},
      {[] { Stiffener(11).vID = 0; }, kStale + "stiffener 11 has vID 0, expected 3)", true},
      {[] { Node(13).Connected = vbFalse; },
       kStale + "node 13 is not marked as connected, but a defined element touches it)", true},
      {[] {
         for (long i = 1; i <= 25; ++i)
           Node(i).vID = 26 - i;
       },
       kStale + "node 1 has vID 25, expected 1)", true},
      // The middle node pulled past its neighbour: plate 6 folds, and is
      // named before the other three it bends.
      {[] { Node(13).xcoord = 1, Node(13).ycoord = 1; },
       "plate 6 is not convex in its corner order: nodes 7 (2.5, 2.5), 12 (5, 2.5), 13 (1, 1), "
       "8 (2.5, 5)"},
      // Pulled onto its lower neighbour: plate 6 has two corners in one place.
      {[] { Node(13).ycoord = 2.5f; },
       "plate 6 is not convex in its corner order: nodes 7 (2.5, 2.5), 12 (5, 2.5), 13 (5, 2.5), "
       "8 (2.5, 5)"},
  };
  for (const auto& c : cases) {
    Clear_Session();
    Stiffened_Plate(4);
    c.edit();
    const auto problem = Check_Model(gMesh(), gMaterial());
    EXPECT_EQ(problem ? problem->text : "", c.text);
    EXPECT_EQ(problem && problem->numbering, c.numbering) << c.text;
  }
}

TEST_F(ModelCheck, LeavesTheModelAsItIsAndRenumberingClearsAStaleNumbering) {
  Stiffened_Plate(4);
  Stiffener(11).vID = 0;
  Node(2).vID = 7;
  ASSERT_TRUE(Check_Model(gMesh(), gMaterial()));
  EXPECT_EQ(std::make_pair(Stiffener(11).vID, Node(2).vID), std::make_pair(Long{0}, Long{7}));
  gMesh().GeneratevID();
  EXPECT_FALSE(Check_Model(gMesh(), gMaterial()));
}

// The generator's corner order is counter-clockwise: the shoelace area of
// every plate of a girder, tapered and with an offset, is positive.
TEST_F(ModelCheck, GeneratedGirderPlatesRunCounterClockwise) {
  BeamShape b;
  b.Offset = 3, b.Web_HE = 10, b.ProportionalMesh = 1;
  Build_Girder(b, 6, 4, gMesh());
  for (const auto& p : gMesh().fourNodes()) {
    const Nodeb* c[] = {p->Node1.get(), p->Node2.get(), p->Node3.get(), p->Node4.get()};
    double twiceArea = 0;
    for (int k = 0; k < 4; ++k)
      twiceArea += double(c[k]->xcoord) * c[(k + 1) % 4]->ycoord -
                   double(c[(k + 1) % 4]->xcoord) * c[k]->ycoord;
    EXPECT_GT(twiceArea, 0) << "plate " << p->ID;
  }
  EXPECT_FALSE(Check_Model(gMesh(), gMaterial()));
}

} // namespace
} // namespace velk::test
