// Numbers as text: the numeric test, the conversions, the dialog and file
// forms of a Single and the format pictures of the listing and the reports.
#include "common/Fault.h"
#include "common/TextRules.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace velk {
namespace {

template <class Fn> int FaultOf(Fn&& fn) {
  try {
    fn();
  } catch (const Fault& f) {
    return f.number();
  }
  return 0;
}

// ---- numeric text ----

struct NumericCase {
  const char* text;
  bool numeric;
};

class IsNumericTest : public ::testing::TestWithParam<NumericCase> {};

TEST_P(IsNumericTest, DecidesOnTheWholeText) {
  EXPECT_EQ(IsNumeric(GetParam().text), GetParam().numeric) << "'" << GetParam().text << "'";
}

INSTANTIATE_TEST_SUITE_P(
    Texts, IsNumericTest,
    ::testing::Values(NumericCase{"0.5", true}, NumericCase{"120", true},
                      NumericCase{"  12  ", true}, NumericCase{"-3", true},
                      NumericCase{"+4.", true}, NumericCase{".5", true},
                      NumericCase{"-.25", true}, NumericCase{"1.5E-07", true},
                      NumericCase{"1e+37", true}, NumericCase{"1E5", true},
                      NumericCase{"\t7", true}, NumericCase{"", false}, NumericCase{"   ", false},
                      NumericCase{".", false}, NumericCase{"-", false}, NumericCase{"+.", false},
                      NumericCase{"1e", false}, NumericCase{"1e+", false},
                      NumericCase{"e5", false}, NumericCase{"1.2.3", false},
                      NumericCase{"12a", false}, NumericCase{"1,5", false},
                      NumericCase{"--1", false}, NumericCase{"+-1", false},
                      NumericCase{"1 2", false}, NumericCase{"nan", false},
                      NumericCase{"inf", false}, NumericCase{"0x10", false},
                      NumericCase{"#TRUE#", false}));

// ---- conversions ----

TEST(TextConversion, SingleIsTheNearestFloatOfTheDecimalText) {
  EXPECT_EQ(TextToSingle("0.3"), 0.3f);
  EXPECT_EQ(TextToSingle(" -.25 "), -0.25f);
  EXPECT_EQ(TextToSingle("29000"), 29000.0f);
  EXPECT_EQ(TextToSingle("1.5E-07"), 1.5e-7f);
  // Just above the midpoint between 1 and the next float: going through a
  // double first would land on the midpoint and round down to 1.
  EXPECT_EQ(TextToSingle("1.0000000596046448"), std::nextafter(1.0f, 2.0f));
  EXPECT_EQ(TextToSingle("3.4028234e38"), FLT_MAX);
}

TEST(TextConversion, DoubleIsTheNearestDouble) {
  EXPECT_EQ(TextToDouble("0.1"), 0.1);
  EXPECT_EQ(TextToDouble("-1.5e300"), -1.5e300);
}

struct IntegerCase {
  const char* text;
  int value;
};

class TextToIntegerTest : public ::testing::TestWithParam<IntegerCase> {};

TEST_P(TextToIntegerTest, RoundsHalfToEven) {
  EXPECT_EQ(TextToInteger(GetParam().text), GetParam().value) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Texts, TextToIntegerTest,
                         ::testing::Values(IntegerCase{"2.5", 2}, IntegerCase{"3.5", 4},
                                           IntegerCase{"-2.5", -2}, IntegerCase{"-3.5", -4},
                                           IntegerCase{"0.5", 0}, IntegerCase{"1.5", 2},
                                           IntegerCase{"0.4", 0}, IntegerCase{"2.51", 3},
                                           IntegerCase{" 14 ", 14}, IntegerCase{"32767", 32767},
                                           IntegerCase{"32767.4", 32767},
                                           IntegerCase{"-32768", -32768},
                                           IntegerCase{"-32768.5", -32768},
                                           IntegerCase{"1E3", 1000}));

struct FailureCase {
  const char* text;
  int fault;
};

TEST(TextConversion, OutOfRangeIsOverflowAndNonNumericIsTypeMismatch) {
  const FailureCase integerCases[] = {{"32767.5", errOverflow}, {"32768", errOverflow},
                                      {"-32769", errOverflow},  {"1e400", errOverflow},
                                      {"abc", errTypeMismatch}, {"", errTypeMismatch},
                                      {"1,5", errTypeMismatch}};
  for (const auto& c : integerCases)
    EXPECT_EQ(FaultOf([&] { TextToInteger(c.text); }), c.fault) << "Integer " << c.text;

  const FailureCase singleCases[] = {{"1e39", errOverflow},      {"-3.5e38", errOverflow},
                                     {"1e400", errOverflow},     {"x", errTypeMismatch},
                                     {"  ", errTypeMismatch},    {"1.2.3", errTypeMismatch}};
  for (const auto& c : singleCases)
    EXPECT_EQ(FaultOf([&] { TextToSingle(c.text); }), c.fault) << "Single " << c.text;

  EXPECT_EQ(FaultOf([] { TextToDouble("1e309"); }), errOverflow);
  EXPECT_EQ(FaultOf([] { TextToDouble("one"); }), errTypeMismatch);
  EXPECT_EQ(FaultOf([] { TextToLong("2147483648"); }), errOverflow);
  EXPECT_EQ(TextToLong("2147483647"), 2147483647);
  EXPECT_EQ(TextToLong("-4.5"), -4);
}

TEST(TextConversion, NumberConversionsOfDoubles) {
  EXPECT_EQ(CInt(-0.5), 0);
  EXPECT_EQ(CInt(6.5), 6);
  EXPECT_EQ(CInt(7.5), 8);
  EXPECT_EQ(FaultOf([] { CInt(NAN); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CLng(3e9); }), errOverflow);
  EXPECT_EQ(CSng(0.1), 0.1f);
  EXPECT_EQ(FaultOf([] { CSng(1e39); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CSng(NAN); }), errOverflow);
}

// ---- a Single as text ----

struct FormCase {
  float value;
  const char* dialog;
  const char* file;
};

class SingleFormsTest : public ::testing::TestWithParam<FormCase> {};

TEST_P(SingleFormsTest, DialogAndFileForms) {
  EXPECT_EQ(SingleToText(GetParam().value), GetParam().dialog);
  EXPECT_EQ(SingleToFileText(GetParam().value), GetParam().file);
}

INSTANTIATE_TEST_SUITE_P(
    Values, SingleFormsTest,
    ::testing::Values(FormCase{0.5f, "0.5", ".5"}, FormCase{120.0f, "120", "120"},
                      FormCase{29000.0f, "29000", "29000"}, FormCase{0.3f, "0.3", ".3"},
                      FormCase{1.0f / 3.0f, "0.3333333", ".3333333"},
                      FormCase{-0.25f, "-0.25", "-.25"}, FormCase{1.5e-7f, "1.5E-07", "1.5E-07"},
                      FormCase{1e37f, "1E+37", "1E+37"}, FormCase{-1e37f, "-1E+37", "-1E+37"},
                      FormCase{0.0f, "0", "0"}, FormCase{-0.0f, "0", "0"},
                      FormCase{16.5f, "16.5", "16.5"}, FormCase{8.571428f, "8.571428", "8.571428"},
                      FormCase{12345678.0f, "1.234568E+07", "1.234568E+07"},
                      FormCase{0.46875f, "0.46875", ".46875"}, FormCase{-7.0f, "-7", "-7"}));

TEST(SingleForms, FileFormHasAtMostSevenSignificantDigitsAndNoPadding) {
  for (float v : {0.1f, 2.0f / 3.0f, 123456.789f, 9.87654321e-12f, FLT_MAX, -FLT_MIN}) {
    std::string t = SingleToFileText(v);
    int digits = 0;
    bool inExponent = false;
    for (char c : t) {
      if (c == 'E') inExponent = true;
      if (!inExponent && c >= '0' && c <= '9') ++digits;
    }
    EXPECT_LE(digits, 7) << t;
    EXPECT_EQ(t.find(' '), std::string::npos) << t;
    EXPECT_NE(t.substr(0, 2), "0.") << t;
    auto plus = t.find('+'); // a plus sign only in an exponent
    if (plus != std::string::npos) EXPECT_EQ(t[plus - 1], 'E') << t;
  }
}

// Deterministic spread of Singles over the whole exponent range and both signs.
float SpreadValue(std::uint32_t i) {
  std::uint32_t x = i * 2654435761u + 12345u;
  x ^= x >> 13;
  x *= 0x5bd1e995u;
  x ^= x >> 15;
  float mantissa = 1.0f + static_cast<float>(x & 0xFFFFFF) / 16777216.0f;
  int exponent = static_cast<int>((x >> 24) % 240) - 120;
  float v = std::ldexp(mantissa, exponent);
  return (x & 0x80000000u) ? -v : v;
}

TEST(SingleForms, FileTextReadsBackToSevenDigits) {
  for (std::uint32_t i = 0; i < 20000; ++i) {
    float v = SpreadValue(i);
    std::string t = SingleToFileText(v);
    float back = TextToSingle(t);
    ASSERT_LE(std::fabs(double(back) - v), 6e-7 * std::fabs(double(v))) << v << " -> " << t;
    // A value read from a file is written again in the same text.
    ASSERT_EQ(SingleToFileText(back), t) << v;
    ASSERT_EQ(TextToSingle(SingleToText(v)), back) << v;
  }
}

// ---- format pictures ----

struct PictureCase {
  double value;
  const char* picture;
  const char* text;
};

class FormatTest : public ::testing::TestWithParam<PictureCase> {};

TEST_P(FormatTest, Picture) {
  EXPECT_EQ(Format(GetParam().value, GetParam().picture), GetParam().text)
      << GetParam().value << " by " << GetParam().picture;
}

INSTANTIATE_TEST_SUITE_P(
    Pictures, FormatTest,
    ::testing::Values(PictureCase{29000, "0.00E+00", "2.90E+04"},
                      PictureCase{-0.00125, "0.00E+00", "-1.25E-03"},
                      PictureCase{0, "0.00E+00", "0.00E+00"},
                      PictureCase{-0.0, "0.00E+00", "0.00E+00"},
                      PictureCase{1.5e100, "0.00E+00", "1.50E+100"},
                      PictureCase{29000, "0.0000E+00", "2.9000E+04"},
                      PictureCase{-0.123456, "0.0000E+00", "-1.2346E-01"},
                      PictureCase{120, "Scientific", "1.20E+02"},
                      PictureCase{-0.0015, "Scientific", "-1.50E-03"},
                      PictureCase{0, "Scientific", "0.00E+00"},
                      PictureCase{3.14159, "###0.00", "3.14"}, PictureCase{0.5, "###0.00", "0.50"},
                      PictureCase{12345.678, "###0.00", "12345.68"},
                      PictureCase{-2.5, "###0.00", "-2.50"},
                      PictureCase{1.5, "##0.00#", "1.50"}, PictureCase{2.125, "##0.00#", "2.125"},
                      PictureCase{1.2346, "##0.00#", "1.235"}, PictureCase{0, "##0.00#", "0.00"},
                      PictureCase{-0.0001, "##0.00#", "0.00"},
                      PictureCase{-3.25, "##0.00#", "-3.25"},
                      PictureCase{42, "00000", "00042"}, PictureCase{123456, "00000", "123456"},
                      PictureCase{0, "00000", "00000"}, PictureCase{-5, "00000", "-00005"},
                      PictureCase{0.25, "0.000", "0.250"}));


// ---- independence of the process locale ----

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
    if (hadLocPath_) setenv("LOCPATH", oldLocPath_.c_str(), 1);
    else unsetenv("LOCPATH");
  }
  bool ok = false;

private:
  std::string saved_, oldLocPath_;
  bool hadLocPath_ = false;
};

TEST(TextRulesLocale, PointIsTheDecimalSignWhateverTheLocale) {
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
