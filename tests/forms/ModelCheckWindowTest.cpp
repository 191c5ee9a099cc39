// The run dialog refuses a model that fails the check like bad input: one
// message, nothing stored, no deck. A stale numbering comes with the way to
// renumber, and that way works.
#include "editing/Selection.h"
#include "forms/frmEigen.h"
#include "forms/frmPlate.h"
#include "forms/frmStiffener.h"

#include <gtest/gtest.h>

#include "RunModels.h"

#include <filesystem>

namespace velk::test {
namespace {

using ModelCheckWindow = SessionTest;
using Text = std::vector<std::string>;

const std::string kRenumber =
    " To renumber, select one plate and apply Set Property with its thickness unchanged, and the "
    "same for one stiffener that has a section; Delete Property on a plate or stiffener without "
    "one renumbers as well.";

// Presses Run with the title "Checked"; the texts shown.
Text PressRun(FakeHost& host) {
  host.messages.clear();
  frmEigen f;
  f.Form_Load();
  f.txtTitle = "Checked";
  f.cmdApply_Click();
  return host.Texts();
}

// Set Property on the one element, its fields as the dialog fills them.
template <class Form, class T> void ApplyUnchanged(const std::shared_ptr<T>& element) {
  gSelection().ClearSelectedItem();
  gSelection().AddObject(element);
  Form form;
  form.Form_Activate();
  form.cmdApply_Click();
  ASSERT_TRUE(form.Unloaded);
}

TEST_F(ModelCheckWindow, RefusesBeforeAnythingIsWritten) {
  Simply_Supported_Plate(4);
  gMesh().fourNodes().Item(12)->Thickness = -0.1f;
  EXPECT_EQ(PressRun(host), Text{"Plate 12 has thickness -0.1."});
  EXPECT_EQ(gAnalysis().Title, "No Title");
  EXPECT_FALSE(std::filesystem::exists(Scratch("velktempin.vlk")));
}

TEST_F(ModelCheckWindow, StaleNumberingSaysHowToRenumberAndThatRepairsIt) {
  Stiffened_Plate(4);
  gMesh().fourNodes().MaxvID = 3;
  gMesh().twoNodes().Item(11)->vID = 0;
  EXPECT_EQ(PressRun(host), Text{"The compact numbering stored with the model does not match its "
                            "elements (the plates' MaxvID is 3, expected 16)." +
                            kRenumber});
  ApplyUnchanged<frmPlate>(gMesh().fourNodes().Item(1));
  EXPECT_EQ(PressRun(host), Text{"The compact numbering stored with the model does not match its "
                            "elements (stiffener 11 has vID 0, expected 3)." +
                            kRenumber});
  ApplyUnchanged<frmStiffener>(gMesh().twoNodes().Item(9));
  const Text ran = PressRun(host);
  ASSERT_EQ(ran.size(), 1u);
  EXPECT_TRUE(ran[0].starts_with("Eigenvalue of ")) << ran[0];
  EXPECT_EQ(gAnalysis().Title, "Checked");
}

} // namespace
} // namespace velk::test
