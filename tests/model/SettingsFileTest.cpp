// The settings file velk1_4.ini: nine lines of run and display options, and the
// fallbacks that a damaged file gives.
#include "TestSession.h"
#include "model/VELKMain.h"
#include "view/View.h"

#include <fstream>
#include <string>
#include <vector>

namespace velk::test {
namespace {

using SettingsFile = SessionTest;

const std::vector<std::string> kDefaultLines = {"3,8,.8,#FALSE#,#FALSE#,0",
                                                "#FALSE#,#FALSE#,#FALSE#",
                                                "#TRUE#,#TRUE#",
                                                "#TRUE#,#FALSE#,#TRUE#,#FALSE#",
                                                "#TRUE#,#FALSE#",
                                                "#TRUE#,#FALSE#,#FALSE#",
                                                "1,1",
                                                "3,3,3,10",
                                                "0,2,#TRUE#,#FALSE#"};

std::string Join(const std::vector<std::string>& lines) {
  std::string s;
  for (const auto& l : lines) s += l + "\r\n";
  return s;
}

// Every view option away from both its class default and its fallback.
void SetUnusualViewOptions(View& v) {
  v.OptionShowNodeNumber = v.OptionShowStiffenerNumber = v.OptionShowPlateNumber = vbTrue;
  v.OptionShowCoordinate = v.OptionShowStiffener = vbFalse;
  v.OptionShowBoundary = vbFalse;
  v.OptionShowBoundaryValue = vbTrue;
  v.OptionShowLoad = vbFalse;
  v.OptionShowLoadValue = vbTrue;
  v.OptionShowBrace = vbFalse;
  v.OptionShowBraceValue = vbTrue;
  v.OptionShowModel = vbFalse;
  v.OptionShowResult = vbTrue;
  v.OptionHideModelWhenBuckle = vbTrue;
  v.OptionInpMagFactor = 2.5f;
  v.OptionOutpMagFactor = 4;
  v.OptionSelectedMarker_Size = 5;
  v.OptionPropertyMarker_Size = 6;
  v.OptionLayerOffset_Distance = 0.5f;
  v.OptionFontSize = 12;
  v.OptionShowStress = 3;
  v.OptionZoomCenterFactor = 1.5f;
  v.OptionShowPlate = vbFalse;
  v.OptionShading = vbTrue;
}

void ExpectViewFallbacks(const View& v) {
  EXPECT_EQ(v.OptionShowNodeNumber, vbFalse);
  EXPECT_EQ(v.OptionShowStiffenerNumber, vbFalse);
  EXPECT_EQ(v.OptionShowPlateNumber, vbFalse);
  EXPECT_EQ(v.OptionShowCoordinate, vbTrue);
  EXPECT_EQ(v.OptionShowStiffener, vbTrue);
  EXPECT_EQ(v.OptionShowBoundary, vbTrue);
  EXPECT_EQ(v.OptionShowBoundaryValue, vbFalse);
  EXPECT_EQ(v.OptionShowLoad, vbTrue);
  EXPECT_EQ(v.OptionShowLoadValue, vbFalse);
  EXPECT_EQ(v.OptionShowBrace, vbTrue);
  EXPECT_EQ(v.OptionShowBraceValue, vbFalse);
  EXPECT_EQ(v.OptionShowModel, vbTrue);
  EXPECT_EQ(v.OptionShowResult, vbFalse);
  EXPECT_EQ(v.OptionHideModelWhenBuckle, vbFalse);
  EXPECT_EQ(v.OptionInpMagFactor, 10.0f);
  EXPECT_EQ(v.OptionOutpMagFactor, 10.0f);
  EXPECT_EQ(v.OptionSelectedMarker_Size, 10.0f);
  EXPECT_EQ(v.OptionPropertyMarker_Size, 10.0f);
  EXPECT_EQ(v.OptionLayerOffset_Distance, 10.0f);
  EXPECT_EQ(v.OptionFontSize, 10);
  EXPECT_EQ(v.OptionShowStress, 0);
  EXPECT_EQ(v.OptionZoomCenterFactor, 2.0f);
  EXPECT_EQ(v.OptionShowPlate, vbTrue);
  EXPECT_EQ(v.OptionShading, vbTrue);
}

void ExpectAnalysisFallbacks(const Analysis& a) {
  EXPECT_EQ(a.MaxShift, 3);
  EXPECT_EQ(a.MaxCycle, 8);
  EXPECT_EQ(a.ShiftFactor, 0.8f);
  EXPECT_EQ(a.IGSTF, vbFalse);
  EXPECT_EQ(a.ISHEAR, vbFalse);
  EXPECT_EQ(a.OptionInitialB, 0);
}

TEST_F(SettingsFile, ClassDefaultsGiveExactlyTheseNineLines) {
  Save_Option();
  std::string data = ReadFile(SettingsPath());
  EXPECT_EQ(data, Join(kDefaultLines));
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SettingsFile, EveryOptionSurvivesSaveAndRead) {
  SetUnusualViewOptions(gView());
  Analysis& a = gAnalysis();
  a.MaxShift = 6;
  a.MaxCycle = 30;
  a.ShiftFactor = 0.55f;
  a.IGSTF = vbTrue;
  a.OptionInitialB = 1;
  Save_Option();
  auto lines = Lines(ReadFile(SettingsPath()));
  ASSERT_EQ(lines.size(), 9u);
  EXPECT_EQ(lines[0], "6,30,.55,#TRUE#,#FALSE#,1");
  EXPECT_EQ(lines[6], "2.5,4");
  EXPECT_EQ(lines[8], "3,1.5,#FALSE#,#TRUE#");

  Clear_Session();
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  View expected;
  SetUnusualViewOptions(expected);
  const View& v = gView();
  EXPECT_EQ(v.OptionShowBoundaryValue, expected.OptionShowBoundaryValue);
  EXPECT_EQ(v.OptionHideModelWhenBuckle, expected.OptionHideModelWhenBuckle);
  EXPECT_EQ(v.OptionInpMagFactor, expected.OptionInpMagFactor);
  EXPECT_EQ(v.OptionLayerOffset_Distance, expected.OptionLayerOffset_Distance);
  EXPECT_EQ(v.OptionFontSize, expected.OptionFontSize);
  EXPECT_EQ(v.OptionShowStress, expected.OptionShowStress);
  EXPECT_EQ(v.OptionShowPlate, expected.OptionShowPlate);
  EXPECT_EQ(v.OptionShading, expected.OptionShading);
  EXPECT_EQ(gAnalysis().ShiftFactor, 0.55f);
  EXPECT_EQ(gAnalysis().MaxCycle, 30);
  EXPECT_EQ(gAnalysis().IGSTF, vbTrue);
  EXPECT_EQ(gAnalysis().OptionInitialB, 1);
}

TEST_F(SettingsFile, MissingFileIsReportedAndClassDefaultsStay) {
  Read_Option();
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].text, "Error: Reading INI file!");
  EXPECT_EQ(gView().OptionInpMagFactor, 1.0f); // the class default, not the fallback
  EXPECT_EQ(gView().OptionShading, vbFalse);
  EXPECT_EQ(gAnalysis().ShiftFactor, 0.8f);
}

TEST_F(SettingsFile, EmptyFileGivesFallbacksWithoutAMessage) {
  WriteFile(SettingsPath(), "");
  gAnalysis().MaxShift = 9;
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  ExpectAnalysisFallbacks(gAnalysis());
  ExpectViewFallbacks(gView());
}

TEST_F(SettingsFile, OnlyAGoodFirstLine) {
  WriteFile(SettingsPath(), "2,5,.5,#TRUE#,#FALSE#,1\r\n");
  SetUnusualViewOptions(gView());
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gAnalysis().MaxShift, 2);
  EXPECT_EQ(gAnalysis().MaxCycle, 5);
  EXPECT_EQ(gAnalysis().ShiftFactor, 0.5f);
  EXPECT_EQ(gAnalysis().IGSTF, vbTrue);
  EXPECT_EQ(gAnalysis().ISHEAR, vbFalse);
  EXPECT_EQ(gAnalysis().OptionInitialB, 1);
  ExpectViewFallbacks(gView());
}

TEST_F(SettingsFile, BrokenFieldOnLineEightUndoesLinesTwoToSeven) {
  std::vector<std::string> lines = {"4,9,.6,#FALSE#,#TRUE#,0",
                                    "#TRUE#,#TRUE#,#TRUE#",
                                    "#FALSE#,#FALSE#",
                                    "#FALSE#,#TRUE#,#FALSE#,#TRUE#",
                                    "#FALSE#,#TRUE#",
                                    "#FALSE#,#TRUE#,#TRUE#",
                                    "5,6",
                                    "3,3,abc,10",
                                    "0,2,#TRUE#,#FALSE#"};
  WriteFile(SettingsPath(), Join(lines));
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gAnalysis().MaxShift, 4);
  EXPECT_EQ(gAnalysis().MaxCycle, 9);
  EXPECT_EQ(gAnalysis().ShiftFactor, 0.6f);
  EXPECT_EQ(gAnalysis().ISHEAR, vbTrue);
  ExpectViewFallbacks(gView());
}

TEST_F(SettingsFile, BrokenFirstLineLeavesTheViewLinesOutOfStep) {
  // The analysis reader stops at its bad field; the view reader goes on from
  // where the fields stand, meets a number where it wants a boolean, and falls
  // back as well.
  std::vector<std::string> lines = kDefaultLines;
  lines[0] = "3,x,.8,#FALSE#,#FALSE#,0";
  WriteFile(SettingsPath(), Join(lines));
  gAnalysis().MaxShift = 7;
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  ExpectAnalysisFallbacks(gAnalysis());
  ExpectViewFallbacks(gView());
}

TEST_F(SettingsFile, OptionsTooLargeForTheirFieldsFallBack) {
  std::vector<std::string> lines = kDefaultLines;
  lines[0] = "40000,8,.8,#FALSE#,#FALSE#,0";
  WriteFile(SettingsPath(), Join(lines));
  gAnalysis().MaxCycle = 77;
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gAnalysis().MaxShift, 3);
  EXPECT_EQ(gAnalysis().MaxCycle, 8);
}

TEST_F(SettingsFile, NewModelKeepsAShiftFactorOfOneHalfAndTheViewOptions) {
  gAnalysis().ShiftFactor = 0.5f;
  SetUnusualViewOptions(gView());
  New_Model();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gAnalysis().ShiftFactor, 0.5f);
  View expected;
  SetUnusualViewOptions(expected);
  const View& v = gView();
  EXPECT_EQ(v.OptionShowNodeNumber, expected.OptionShowNodeNumber);
  EXPECT_EQ(v.OptionShowCoordinate, expected.OptionShowCoordinate);
  EXPECT_EQ(v.OptionShowResult, expected.OptionShowResult);
  EXPECT_EQ(v.OptionOutpMagFactor, expected.OptionOutpMagFactor);
  EXPECT_EQ(v.OptionSelectedMarker_Size, expected.OptionSelectedMarker_Size);
  EXPECT_EQ(v.OptionPropertyMarker_Size, expected.OptionPropertyMarker_Size);
  EXPECT_EQ(v.OptionZoomCenterFactor, expected.OptionZoomCenterFactor);
  EXPECT_EQ(v.OptionShading, expected.OptionShading);
}

TEST_F(SettingsFile, SwitchedOffTheOptionsStillSurviveNewModel) {
  SetOptionFileEnabled(false);
  gAnalysis().MaxShift = 6;
  New_Model();
  EXPECT_EQ(gAnalysis().MaxShift, 6);
  EXPECT_FALSE(std::ifstream(SettingsPath()).good());
  EXPECT_TRUE(host.messages.empty());
}

} // namespace
} // namespace velk::test
