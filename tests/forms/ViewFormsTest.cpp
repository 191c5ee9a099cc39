// The view option dialog and the stress window as the user drives them: what
// Apply stores and paints, each field's refusals and silent fallbacks, and the
// plot's component, labels and closing.
#include "TestSession.h"
#include "forms/frmOption.h"
#include "forms/frmStress.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <filesystem>

namespace velk::test {
namespace {

using Text = std::vector<std::string>;

class OptionDialog : public SessionTest {
protected:
  frmOption form;
  int paints = 0;
  std::vector<int> fonts;
  void SetUp() override {
    SessionTest::SetUp();
    hooks().Paint = [this] { ++paints; };
    hooks().UpdateFont = [this](int size) { fonts.push_back(size); };
    form.Form_Activate();
  }
};

TEST_F(OptionDialog, OpensOnTheOptionsAndApplyStoresEveryFieldAndPaints) {
  EXPECT_EQ(Text({form.txtInpMag, form.txtOutpMag, form.txtSelectedMarker, form.txtPropertyMarker,
                  form.txtLayerOffset, form.txtFontSize, form.txtZoomFactor}),
            Text({"1", "1", "3", "3", "3", "10", "2"}));
  // Every check the other way round, every number changed; the settings
  // lines show each option in its place.
  for (int* c :
       {&form.chkCoordinate, &form.chkBoundary, &form.chkLoad, &form.chkBrace, &form.chkStiffener,
        &form.chkBoundaryValue, &form.chkLoadValue, &form.chkBraceValue, &form.chkShowNodeNumber,
        &form.chkShowStiffenerNumber, &form.chkShowPlateNumber, &form.chkPlate,
        &form.chkHideModelBuckle, &form.chkShade})
    *c = 1 - *c;
  form.txtInpMag = "-2.5", form.txtOutpMag = "0", form.txtSelectedMarker = "4";
  form.txtPropertyMarker = "5.5", form.txtLayerOffset = "0", form.txtFontSize = "6";
  form.txtZoomFactor = "1";
  form.cmdApply_Click();
  EXPECT_TRUE(host.messages.empty());
  const Text lines = Lines(Option_Data());
  EXPECT_EQ(Text(lines.begin() + 1, lines.end()),
            Text({"#TRUE#,#TRUE#,#TRUE#", "#FALSE#,#FALSE#", "#FALSE#,#TRUE#,#FALSE#,#TRUE#",
                  "#FALSE#,#TRUE#", "#TRUE#,#FALSE#,#TRUE#", "-2.5,0", "4,5.5,0,6",
                  "0,1,#FALSE#,#TRUE#"}));
  EXPECT_EQ(std::make_tuple(fonts, paints), std::make_tuple(std::vector<int>{6}, 1));
  form.cmdApply_Click(); // nothing changed: it still paints, and the dialog stays
  EXPECT_EQ(std::make_tuple(paints, form.Unloaded), std::make_tuple(2, false));
  // The options reach the file only at the next save.
  EXPECT_FALSE(std::filesystem::exists(SettingsPath()));
}

// A field that is no number stops Apply with the message: what stood before it
// is stored, what follows is not, and nothing is painted. Font size and zoom
// factor out of range fall back to the value in force without a word.
TEST_F(OptionDialog, FieldsRefusedAndFallingBack) {
  const struct {
    std::string frmOption::*field;
    const char* text;
    bool message;
    const char* fieldAfter;
  } cases[] = {
      {&frmOption::txtInpMag, "abc", true, "abc"},
      {&frmOption::txtOutpMag, "", true, ""},
      {&frmOption::txtSelectedMarker, "1e40", true, "1e40"},
      {&frmOption::txtLayerOffset, "3,5", true, "3,5"},
      {&frmOption::txtFontSize, "5", false, "10"},
      {&frmOption::txtFontSize, "20", false, "10"},
      {&frmOption::txtFontSize, "19", false, "19"},
      {&frmOption::txtFontSize, "40000", true, "40000"},
      {&frmOption::txtFontSize, "x", true, "x"},
      {&frmOption::txtZoomFactor, "0.99", false, "2"},
      {&frmOption::txtZoomFactor, "10.5", false, "2"},
      {&frmOption::txtZoomFactor, "10", false, "10"},
      {&frmOption::txtZoomFactor, "1e40", true, "1e40"},
  };
  for (const auto& c : cases) {
    Read_Option_Data(""); // every option back to its fallback
    gView().OptionShading = vbFalse, gView().OptionInpMagFactor = 7;
    form.Form_Activate();
    form.chkShade = 1;
    form.txtInpMag = "4";
    form.txtZoomFactor = "3";
    form.*c.field = c.text;
    host.messages.clear(), paints = 0, fonts.clear();
    form.cmdApply_Click();
    const View& v = gView();
    SCOPED_TRACE(c.text);
    EXPECT_EQ(host.Texts(), c.message ? Text{"Error: Input Data!"} : Text{});
    EXPECT_EQ(form.*c.field, c.fieldAfter);
    EXPECT_EQ(paints, c.message ? 0 : 1);
    EXPECT_EQ(v.OptionShading, vbTrue); // the checks come first and stay stored
    EXPECT_EQ(v.OptionInpMagFactor, c.field == &frmOption::txtInpMag ? 7.0f : 4.0f);
    // The zoom factor comes last: any refusal leaves it at the value in force.
    const Single zoom = c.message                              ? 2.0f
                        : c.field != &frmOption::txtZoomFactor ? 3.0f
                                                               : std::stof(c.fieldAfter);
    EXPECT_EQ(v.OptionZoomCenterFactor, zoom);
    EXPECT_EQ(v.OptionFontSize, std::string(c.fieldAfter) == "19" ? 19 : 10);
  }
}

class StressWindowForm : public SessionTest {
protected:
  frmStress form;
  int paints = 0, checksOff = 0;
  void SetUp() override {
    SessionTest::SetUp();
    hooks().Paint = [this] { ++paints; };
    form.StressPlotCheckOff = [this] { ++checksOff; };
  }
};

TEST_F(StressWindowForm, OpensOnThePlotAppliesTheChoiceAndClosingEndsIt) {
  form.Form_Load(); // no plot: no choice set
  EXPECT_FALSE(form.optSx || form.optSy || form.optSxy || form.optMises);
  EXPECT_EQ(paints, 0);
  form.optSxy = true;
  form.OKButton_Click();
  EXPECT_EQ(std::make_pair(gView().OptionShowStress, paints), std::make_pair(Long{3}, 1));
  // While open it takes the probe's values and the extremes of each frame.
  gView().maxStress = 200;
  gView().ShowStressValue(0.5f, 1); // red side: (1 - 0.5) x 200
  gView().ShowMaxMin(123.4f, -0.05f);
  EXPECT_EQ(std::make_tuple(form.lblStress, form.lblMax, form.lblMin),
            std::make_tuple("1.00E+02", "1.23E+02", "-5.00E-02"));
  form.optSxy = false, form.optMises = true;
  form.OKButton_Click();
  EXPECT_EQ(gView().OptionShowStress, 4);

  form.CancelButton_Click();
  EXPECT_EQ(std::make_tuple(gView().OptionShowStress, paints, checksOff),
            std::make_tuple(Long{0}, 3, 1));
  EXPECT_FALSE(gView().ShowStress || gView().ShowMaxMin); // closed: no more values
  gView().OptionShowStress = StressPlots::Sy;             // from the settings file
  form.Form_Load();
  EXPECT_TRUE(form.optSy && !form.optSx);
  form.optSy = false;
  form.OKButton_Click(); // no choice on: no plot
  EXPECT_EQ(gView().OptionShowStress, 0);
}

} // namespace
} // namespace velk::test
