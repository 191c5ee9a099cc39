// Numbers as text: the numeric test, the conversions, the dialog and file
// forms of a Single, the format pictures, and independence of the locale.
#include "common/TextRules.h"
#include "common/Fault.h"

#include <gtest/gtest.h>

#include "FaultOf.h"

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

namespace velk {
namespace {

using test::FaultOf;

TEST(TextRules, IsNumericDecidesOnTheWholeText) {
  for (const char* t :
       {"0.5", "120", "  12  ", "-3", "+4.", ".5", "-.25", "1.5E-07", "1e+37", "1E5", "\t7"})
    EXPECT_TRUE(IsNumeric(t)) << "'" << t << "'";
  for (const char* t : {"", "   ", ".", "-", "+.", "1e", "1e+", "e5", "1.2.3", "12a", "1,5", "--1",
                        "+-1", "1 2", "nan", "inf", "0x10", "#TRUE#"})
    EXPECT_FALSE(IsNumeric(t)) << "'" << t << "'";
}

TEST(TextRules, ConversionsTakeTheNearestValueAndRoundHalfToEven) {
  EXPECT_EQ(TextToSingle("0.3"), 0.3f);
  EXPECT_EQ(TextToSingle(" -.25 "), -0.25f);
  EXPECT_EQ(TextToSingle("1.5E-07"), 1.5e-7f);
  // Just above the midpoint between 1 and the next float: going through a
  // double first would land on the midpoint and round down to 1.
  EXPECT_EQ(TextToSingle("1.0000000596046448"), std::nextafter(1.0f, 2.0f));
  EXPECT_EQ(TextToSingle("3.4028234e38"), FLT_MAX);
  EXPECT_EQ(TextToDouble("0.1"), 0.1);
  EXPECT_EQ(TextToDouble("-1.5e300"), -1.5e300);

  const std::pair<const char*, int> integers[] = {
      {"2.5", 2},         {"3.5", 4},         {"-2.5", -2},         {"-3.5", -4}, {"0.5", 0},
      {"1.5", 2},         {"0.4", 0},         {"2.51", 3},          {" 14 ", 14}, {"32767", 32767},
      {"32767.4", 32767}, {"-32768", -32768}, {"-32768.5", -32768}, {"1E3", 1000}};
  for (auto [text, value] : integers)
    EXPECT_EQ(TextToInteger(text), value) << text;
  EXPECT_EQ(TextToLong("2147483647"), 2147483647);
  EXPECT_EQ(TextToLong("-4.5"), -4);
  EXPECT_EQ(CInt(-0.5), 0);
  EXPECT_EQ(CInt(6.5), 6);
  EXPECT_EQ(CInt(7.5), 8);
  EXPECT_EQ(CSng(0.1), 0.1f);
}

TEST(TextRules, OutOfRangeIsOverflowAndNonNumericIsTypeMismatch) {
  const std::pair<const char*, int> integers[] = {{"32767.5", errOverflow}, {"32768", errOverflow},
                                                  {"-32769", errOverflow},  {"1e400", errOverflow},
                                                  {"abc", errTypeMismatch}, {"", errTypeMismatch},
                                                  {"1,5", errTypeMismatch}};
  for (auto [text, fault] : integers)
    EXPECT_EQ(FaultOf([&] { TextToInteger(text); }), fault) << "Integer " << text;
  const std::pair<const char*, int> singles[] = {
      {"1e39", errOverflow},  {"-3.5e38", errOverflow}, {"1e400", errOverflow},
      {"x", errTypeMismatch}, {"  ", errTypeMismatch},  {"1.2.3", errTypeMismatch}};
  for (auto [text, fault] : singles)
    EXPECT_EQ(FaultOf([&] { TextToSingle(text); }), fault) << "Single " << text;
  EXPECT_EQ(FaultOf([] { TextToDouble("1e309"); }), errOverflow);
  EXPECT_EQ(FaultOf([] { TextToDouble("one"); }), errTypeMismatch);
  EXPECT_EQ(FaultOf([] { TextToLong("2147483648"); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CInt(NAN); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CLng(3e9); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CSng(1e39); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CSng(NAN); }), errOverflow);
}

TEST(TextRules, DialogAndFileFormsOfASingle) {
  struct Case {
    float value;
    const char* dialog;
    const char* file;
  };
  const Case cases[] = {{0.5f, "0.5", ".5"},
                        {120.0f, "120", "120"},
                        {29000.0f, "29000", "29000"},
                        {0.3f, "0.3", ".3"},
                        {1.0f / 3.0f, "0.3333333", ".3333333"},
                        {-0.25f, "-0.25", "-.25"},
                        {1.5e-7f, "1.5E-07", "1.5E-07"},
                        {1e37f, "1E+37", "1E+37"},
                        {-1e37f, "-1E+37", "-1E+37"},
                        {0.0f, "0", "0"},
                        {-0.0f, "0", "0"},
                        {8.571428f, "8.571428", "8.571428"},
                        {12345678.0f, "1.234568E+07", "1.234568E+07"},
                        {0.46875f, "0.46875", ".46875"},
                        {-7.0f, "-7", "-7"}};
  for (const auto& c : cases) {
    EXPECT_EQ(SingleToText(c.value), c.dialog);
    EXPECT_EQ(SingleToFileText(c.value), c.file);
  }
}

// At most seven significant digits, no padding, no leading "0.", a plus sign
// only in an exponent.
void ExpectFileForm(const std::string& t) {
  int digits = 0; // counted from the first non-zero one
  for (std::size_t i = 0; i < t.size() && t[i] != 'E'; ++i)
    digits += t[i] >= '0' && t[i] <= '9' && (digits > 0 || t[i] != '0');
  EXPECT_LE(digits, 7) << t;
  EXPECT_EQ(t.find(' '), std::string::npos) << t;
  EXPECT_NE(t.substr(0, 2), "0.") << t;
  auto plus = t.find('+');
  if (plus != std::string::npos) {
    EXPECT_EQ(t[plus - 1], 'E') << t;
  }
}

// Deterministic spread of Singles over the whole exponent range and both signs.
float SpreadValue(std::uint32_t i) {
  std::uint32_t x = i * 2654435761u + 12345u;
  x ^= x >> 13;
  x *= 0x5bd1e995u;
  x ^= x >> 15;
  float v = std::ldexp(1.0f + static_cast<float>(x & 0xFFFFFF) / 16777216.0f,
                       static_cast<int>((x >> 24) % 240) - 120);
  return (x & 0x80000000u) ? -v : v;
}

TEST(TextRules, FileTextHasSevenDigitsAndReadsBack) {
  for (float v : {0.1f, 2.0f / 3.0f, 123456.789f, 9.87654321e-12f, FLT_MAX, -FLT_MIN})
    ExpectFileForm(SingleToFileText(v));
  for (std::uint32_t i = 0; i < 20000; ++i) {
    float v = SpreadValue(i);
    std::string t = SingleToFileText(v);
    float back = TextToSingle(t);
    ASSERT_LE(std::fabs(double(back) - v), 6e-7 * std::fabs(double(v))) << v << " -> " << t;
    // A value read from a file is written again in the same text.
    ASSERT_EQ(SingleToFileText(back), t) << v;
    ASSERT_EQ(TextToSingle(SingleToText(v)), back) << v;
    ExpectFileForm(t);
  }
}

TEST(TextRules, FormatPictures) {
  struct Case {
    double value;
    const char* picture;
    const char* text;
  };
  const Case cases[] = {{29000, "0.00E+00", "2.90E+04"},
                        {-0.00125, "0.00E+00", "-1.25E-03"},
                        {0, "0.00E+00", "0.00E+00"},
                        {-0.0, "0.00E+00", "0.00E+00"},
                        {1.5e100, "0.00E+00", "1.50E+100"},
                        {29000, "0.0000E+00", "2.9000E+04"},
                        {-0.123456, "0.0000E+00", "-1.2346E-01"},
                        {120, "Scientific", "1.20E+02"},
                        {-0.0015, "Scientific", "-1.50E-03"},
                        {0, "Scientific", "0.00E+00"},
                        {3.14159, "###0.00", "3.14"},
                        {0.5, "###0.00", "0.50"},
                        {12345.678, "###0.00", "12345.68"},
                        {-2.5, "###0.00", "-2.50"},
                        {1.5, "##0.00#", "1.50"},
                        {2.125, "##0.00#", "2.125"},
                        {1.2346, "##0.00#", "1.235"},
                        {0, "##0.00#", "0.00"},
                        {-0.0001, "##0.00#", "0.00"},
                        {-3.25, "##0.00#", "-3.25"},
                        {42, "00000", "00042"},
                        {123456, "00000", "123456"},
                        {0, "00000", "00000"},
                        {-5, "00000", "-00005"},
                        {0.25, "0.000", "0.250"}};
  for (const auto& c : cases)
    EXPECT_EQ(Format(c.value, c.picture), c.text) << c.value << " by " << c.picture;
}

// Makes a German locale (decimal comma) the process locale for the life of
// the object, building it with localedef into a scratch folder that later runs
// reuse; `ok` says whether that worked.
class GermanLocale {
public:
  GermanLocale() {
    const std::string dir = (std::filesystem::temp_directory_path() / "velk-test-locale").string();
    const char* old = std::getenv("LOCPATH");
    hadLocPath_ = old != nullptr;
    if (old) oldLocPath_ = old;
    setenv("LOCPATH", dir.c_str(), 1);
    saved_ = std::setlocale(LC_ALL, nullptr);
    // The C library remembers a locale it failed to find, so build it first.
    if (!std::filesystem::exists(dir + "/de_DE.UTF-8/LC_NUMERIC")) {
      std::filesystem::create_directories(dir);
      std::string cmd = "localedef -i de_DE -f UTF-8 '" + dir + "/de_DE.UTF-8' >/dev/null 2>&1";
      if (std::system(cmd.c_str()) != 0) return;
    }
    ok = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
  }
  ~GermanLocale() {
    std::setlocale(LC_ALL, saved_.c_str());
    if (hadLocPath_)
      setenv("LOCPATH", oldLocPath_.c_str(), 1);
    else
      unsetenv("LOCPATH");
  }
  bool ok = false;

private:
  std::string saved_, oldLocPath_;
  bool hadLocPath_ = false;
};

TEST(TextRules, PointIsTheDecimalSignWhateverTheLocale) {
  GermanLocale german;
  if (!german.ok) GTEST_SKIP() << "no German locale can be built here";
  char probe[16];
  std::snprintf(probe, sizeof probe, "%.1f", 0.5);
  ASSERT_STREQ(probe, "0,5"); // the locale really is in force
  EXPECT_EQ(TextToSingle("0.5"), 0.5f);
  EXPECT_EQ(TextToDouble("-1.25E-3"), -1.25e-3);
  EXPECT_EQ(TextToInteger("2.5"), 2);
  EXPECT_FALSE(IsNumeric("0,5"));
  EXPECT_EQ(SingleToText(0.5f), "0.5");
  EXPECT_EQ(SingleToFileText(-0.25f), "-.25");
  EXPECT_EQ(DoubleToFileText(0.125), ".125");
  EXPECT_EQ(Format(29000, "0.00E+00"), "2.90E+04");
  EXPECT_EQ(Format(3.14159, "###0.00"), "3.14");
  EXPECT_EQ(Format(1.5, "##0.00#"), "1.50");
  EXPECT_EQ(Format(0.25, "0.000"), "0.250");
}

} // namespace
} // namespace velk
