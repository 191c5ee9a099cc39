// The settings file velk1_4.ini: nine lines of run and display options, and the
// fallbacks that a damaged file gives.
#include "TestSession.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace velk::test {
namespace {

using SettingsFile = SessionTest;
using Text = std::vector<std::string>;

Text WithLine(Text t, std::size_t i, const std::string& line) {
  t[i] = line;
  return t;
}

const Text kDefaults = {"3,8,.8,#FALSE#,#FALSE#,0",
                        "#FALSE#,#FALSE#,#FALSE#",
                        "#TRUE#,#TRUE#",
                        "#TRUE#,#FALSE#,#TRUE#,#FALSE#",
                        "#TRUE#,#FALSE#",
                        "#TRUE#,#FALSE#,#FALSE#",
                        "1,1",
                        "3,3,3,10",
                        "0,2,#TRUE#,#FALSE#"};
// What a reader that fails puts in place of each line: the magnifications
// become 10, not their class default 1.
const Text kFallbacks =
    WithLine(WithLine(WithLine(kDefaults, 6, "10,10"), 7, "10,10,10,10"), 8, "0,2,#TRUE#,#TRUE#");
// Every option away from its class default and its fallback.
const Text kUnusual = {"6,30,.55,#TRUE#,#FALSE#,1",
                       "#TRUE#,#TRUE#,#TRUE#",
                       "#FALSE#,#FALSE#",
                       "#FALSE#,#TRUE#,#FALSE#,#TRUE#",
                       "#FALSE#,#TRUE#",
                       "#FALSE#,#TRUE#,#TRUE#",
                       "2.5,4",
                       "5,6,.5,12",
                       "3,1.5,#FALSE#,#TRUE#"};

std::string Join(const Text& lines) {
  std::string s;
  for (const auto& l : lines)
    s += l + "\r\n";
  return s;
}

// The options in memory, as the writer would put them.
Text Options() {
  return Lines(Option_Data());
}

TEST_F(SettingsFile, MissingFileIsReportedAndTheDefaultsAreTheseNineLines) {
  Read_Option();
  EXPECT_EQ(host.Texts(), Text{"Error: Reading INI file!"});
  Save_Option();
  EXPECT_EQ(ReadFile(SettingsPath()), Join(kDefaults));
}

TEST_F(SettingsFile, EveryOptionSurvivesReadAndSave) {
  WriteFile(SettingsPath(), Join(kUnusual));
  Read_Option();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gAnalysis().ShiftFactor, 0.55f);
  EXPECT_EQ(gView().OptionShowStress, 3);
  EXPECT_EQ(gView().OptionFontSize, 12);
  Save_Option();
  EXPECT_EQ(ReadFile(SettingsPath()), Join(kUnusual));
}

TEST_F(SettingsFile, DamagedFilesFallBackQuietly) {
  // Lines [0, to) of `a` followed by the rest of `b`.
  auto Mix = [](const Text& a, const Text& b, std::size_t to) {
    Text t(a.begin(), a.begin() + to);
    t.insert(t.end(), b.begin() + to, b.end());
    return t;
  };
  const struct {
    const char* name;
    Text file, options;
  } cases[] = {
      {"empty", {}, kFallbacks},
      {"only a good first line", {kUnusual[0]}, Mix(kUnusual, kFallbacks, 1)},
      // Lines 2 to 7 had been read, and fall back with the rest.
      {"broken field on line 8", WithLine(kUnusual, 7, "5,6,abc,12"), Mix(kUnusual, kFallbacks, 1)},
      {"broken last field", WithLine(kUnusual, 8, "3,1.5,#FALSE#,1"), Mix(kUnusual, kFallbacks, 1)},
      // The run options stop at their bad field; the display options then
      // meet a number where a boolean stands and fall back as well.
      {"broken first line", WithLine(kUnusual, 0, "6,x,.55,#TRUE#,#FALSE#,1"), kFallbacks},
      {"count beyond 16 bits", WithLine(kUnusual, 0, "40000,30,.55,#TRUE#,#FALSE#,1"), kFallbacks},
      {"lines may break anywhere",
       {"6,30", ".55,#TRUE#,#FALSE#,1,#TRUE#", "#TRUE#,#TRUE#,#FALSE#,#FALSE#",
        "#FALSE#,#TRUE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#,#TRUE#,2.5,4,5",
        "6,.5,12,3,1.5,#FALSE#,#TRUE#"},
       kUnusual}};
  for (const auto& c : cases) {
    WriteFile(SettingsPath(), Join(c.file));
    Read_Option_Data(Join(kUnusual)); // something to be replaced
    Read_Option();
    EXPECT_TRUE(host.messages.empty()) << c.name;
    EXPECT_EQ(Options(), c.options) << c.name;
  }
}

TEST_F(SettingsFile, NewModelKeepsTheOptionsEvenWithTheFileSwitchedOff) {
  Read_Option_Data(Join(kUnusual));
  gAnalysis().ShiftFactor = 0.5f;
  gAnalysis().OutputOption = 2;
  New_Model();
  EXPECT_EQ(gAnalysis().OutputOption, 1); // not in the file
  EXPECT_EQ(Options(), WithLine(kUnusual, 0, "6,30,.5,#TRUE#,#FALSE#,1"));

  std::filesystem::remove(SettingsPath());
  SetOptionFileEnabled(false);
  gAnalysis().MaxShift = 4;
  New_Model();
  EXPECT_EQ(gAnalysis().MaxShift, 4);
  EXPECT_FALSE(std::ifstream(SettingsPath()).good());
  EXPECT_TRUE(host.messages.empty());
}

} // namespace
} // namespace velk::test
