// Numbers as text: the numeric test, the conversions and their faults, the
// dialog and file forms of a Single, the format pictures, the print zones,
// independence of the locale; and comma-separated fields as the files hold them.
#include "common/TextRules.h"
#include "common/Fault.h"
#include "common/TextFile.h"

#include <gtest/gtest.h>

#include "FaultOf.h"

#include <bit>
#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace velk {
namespace {

using test::FaultOf;
using Text = std::vector<std::string>;

TEST(TextRules, IsNumericDecidesOnTheWholeText) {
  for (const char* t :
       {"0.5", "120", "  12  ", "-3", "+4.", ".5", "-.25", "1.5E-07", "1e+37", "1E5", "\t7"})
    EXPECT_TRUE(IsNumeric(t)) << "'" << t << "'";
  for (const char* t : {"", "   ", ".", "-", "+.", "1e", "1e+", "e5", "1.2.3", "12a", "1,5", "--1",
                        "+-1", "1 2", "nan", "inf", "0x10", "#TRUE#"})
    EXPECT_FALSE(IsNumeric(t)) << "'" << t << "'";
}

TEST(TextRules, ConversionsRoundHalfToEvenAndFaultOutOfRange) {
  EXPECT_EQ(TextToSingle(" -.25 "), -0.25f);
  EXPECT_EQ(TextToSingle("1.5E-07"), 1.5e-7f);
  // Just above the midpoint between 1 and the next float: going through a
  // double first would land on the midpoint and round down to 1.
  EXPECT_EQ(TextToSingle("1.0000000596046448"), std::nextafter(1.0f, 2.0f));
  EXPECT_EQ(TextToSingle("3.4028234e38"), FLT_MAX);
  const std::pair<const char*, int> integers[] = {
      {"2.5", 2},         {"3.5", 4},         {"-2.5", -2},         {"-3.5", -4}, {"0.5", 0},
      {"1.5", 2},         {"0.4", 0},         {"2.51", 3},          {" 14 ", 14}, {"32767", 32767},
      {"32767.4", 32767}, {"-32768", -32768}, {"-32768.5", -32768}, {"1E3", 1000}};
  for (auto [text, value] : integers)
    EXPECT_EQ(TextToInteger(text), value) << text;
  EXPECT_EQ(TextToLong("2147483647"), 2147483647);
  EXPECT_EQ(TextToLong("-4.5"), -4);

  for (const char* t : {"32767.5", "-32769", "1e400"})
    EXPECT_EQ(FaultOf([&] { TextToInteger(t); }), errOverflow) << t;
  for (const char* t : {"abc", "", "1,5"})
    EXPECT_EQ(FaultOf([&] { TextToInteger(t); }), errTypeMismatch) << t;
  for (const char* t : {"1e39", "-3.5e38"})
    EXPECT_EQ(FaultOf([&] { TextToSingle(t); }), errOverflow) << t;
  for (const char* t : {"x", "  "})
    EXPECT_EQ(FaultOf([&] { TextToSingle(t); }), errTypeMismatch) << t;
  EXPECT_EQ(FaultOf([] { TextToLong("2147483648"); }), errOverflow);
  EXPECT_EQ(FaultOf([] { TextToDouble("1e309"); }), errOverflow);
  EXPECT_EQ(FaultOf([] { TextToDouble("one"); }), errTypeMismatch);
  EXPECT_EQ(FaultOf([] { CInt(NAN); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CLng(3e9); }), errOverflow);
  EXPECT_EQ(FaultOf([] { CSng(1e39); }), errOverflow);
}

TEST(TextRules, DialogAndFileFormsOfASingle) {
  // clang-format off
  const struct {
    float value;
    const char* dialog;
    const char* file;
  } cases[] = {
      {0.5f, "0.5", ".5"},                            {0.33333334f, "0.3333333", ".3333333"},
      {-0.25f, "-0.25", "-.25"},                      {1.5e-7f, "1.5E-07", "1.5E-07"},
      {-1e37f, "-1E+37", "-1E+37"},                   {-0.0f, "0", "0"},
      {12345678.0f, "1.234568E+07", "1.234568E+07"},  {0.46875f, "0.46875", ".46875"},
      {8.571428f, "8.571428", "8.571428"},            {-7.0f, "-7", "-7"}};
  // clang-format on
  for (const auto& c : cases) {
    EXPECT_EQ(SingleToText(c.value), c.dialog);
    EXPECT_EQ(SingleToFileText(c.value), c.file);
  }
  EXPECT_EQ(DoubleToFileText(-0.125), "-.125");
  EXPECT_EQ(DoubleToFileText(1.0 / 3), ".333333333333333");
}

// Any Single, written to a file and read back: the nearest value within seven
// digits, written again in the same text; at most seven significant digits, no
// blank, no leading "0.", a plus sign only in an exponent.
TEST(TextRules, FileTextOfAnySingleHasSevenDigitsAndReadsBack) {
  std::mt19937 bits(20240531);
  for (int i = 0; i < 20000;) {
    const float v = std::bit_cast<float>(static_cast<std::uint32_t>(bits()));
    if (!std::isnormal(v)) continue;
    ++i;
    const std::string t = SingleToFileText(v);
    const float back = TextToSingle(t);
    ASSERT_LE(std::fabs(double(back) - v), 6e-7 * std::fabs(double(v))) << v << " -> " << t;
    ASSERT_EQ(SingleToFileText(back), t) << v;
    ASSERT_EQ(TextToSingle(SingleToText(v)), back) << v;
    int digits = 0; // counted from the first non-zero one
    for (std::size_t k = 0; k < t.size() && t[k] != 'E'; ++k)
      digits += t[k] >= '0' && t[k] <= '9' && (digits > 0 || t[k] != '0');
    ASSERT_LE(digits, 7) << t;
    ASSERT_EQ(t.find(' '), std::string::npos) << t;
    ASSERT_NE(t.substr(0, 2), "0.") << t;
    const auto plus = t.find('+');
    ASSERT_TRUE(plus == std::string::npos || t[plus - 1] == 'E') << t;
  }
}

TEST(TextRules, FormatPictures) {
  // clang-format off
  const struct {
    double value;
    const char* picture;
    const char* text;
  } cases[] = {
      {29000, "0.00E+00", "2.90E+04"},      {-0.00125, "0.00E+00", "-1.25E-03"},
      {-0.0, "0.00E+00", "0.00E+00"},       {1.5e100, "0.00E+00", "1.50E+100"},
      {29000, "0.0000E+00", "2.9000E+04"},  {-0.123456, "0.0000E+00", "-1.2346E-01"},
      {120, "Scientific", "1.20E+02"},      {-0.0015, "Scientific", "-1.50E-03"},
      {3.14159, "###0.00", "3.14"},         {0.5, "###0.00", "0.50"},
      {12345.678, "###0.00", "12345.68"},   {-2.5, "###0.00", "-2.50"},
      {1.5, "##0.00#", "1.50"},             {2.125, "##0.00#", "2.125"},
      {1.2346, "##0.00#", "1.235"},         {-0.0001, "##0.00#", "0.00"},
      {-3.25, "##0.00#", "-3.25"},          {42, "00000", "00042"},
      {123456, "00000", "123456"},          {-5, "00000", "-00005"},
      {0.25, "0.000", "0.250"}};
  // clang-format on
  for (const auto& c : cases)
    EXPECT_EQ(Format(c.value, c.picture), c.text) << c.value << " by " << c.picture;
}

TEST(TextRules, PrintZonesStartEveryFourteenColumns) {
  // Items after the first begin at columns 15, 29, 43, ... (1-based); an item
  // that fills its zone is followed by the next at once.
  const std::pair<std::size_t, std::size_t> pads[] = {{0, 14},  {1, 13}, {13, 1}, {14, 0},
                                                      {15, 13}, {27, 1}, {28, 0}, {40, 2}};
  for (auto [column, blanks] : pads)
    EXPECT_EQ(ZonePad(column), std::string(blanks, ' ')) << column;
}

// Under a German locale (decimal comma), built with localedef into a scratch
// folder that later runs reuse, the point stays the decimal sign.
TEST(TextRules, PointIsTheDecimalSignWhateverTheLocale) {
  const auto dir = std::filesystem::temp_directory_path() / "velk-test-locale";
  setenv("LOCPATH", dir.c_str(), 1);
  // The C library remembers a locale it failed to find, so build it first.
  const std::string cmd = "mkdir -p '" + dir.string() + "' && localedef -i de_DE -f UTF-8 '" +
                          (dir / "de_DE.UTF-8").string() + "' >/dev/null 2>&1";
  if ((!std::filesystem::exists(dir / "de_DE.UTF-8/LC_NUMERIC") && std::system(cmd.c_str()) != 0) ||
      !std::setlocale(LC_ALL, "de_DE.UTF-8"))
    GTEST_SKIP() << "no German locale can be built here";
  char probe[16];
  std::snprintf(probe, sizeof probe, "%.1f", 0.5);
  EXPECT_STREQ(probe, "0,5"); // the locale really is in force
  EXPECT_TRUE(TextToSingle("0.5") == 0.5f && TextToInteger("2.5") == 2 && !IsNumeric("0,5"));
  EXPECT_EQ(Text({SingleToText(0.5f), SingleToFileText(-0.25f), DoubleToFileText(0.125),
                  Format(29000, "0.00E+00"), Format(1.5, "##0.00#")}),
            Text({"0.5", "-.25", ".125", "2.90E+04", "1.50"}));
  std::setlocale(LC_ALL, "C");
  unsetenv("LOCPATH");
}

TEST(TextFile, WrittenFieldsHaveTheirLayoutAndReadBack) {
  std::string sink;
  OutFile out(&sink);
  FieldWriter w(out);
  w.Line("VELK Version");
  w.Text("say \"hi\"\r\nnow"); // a text cannot carry a quote or a line break
  w.Text("Girder, test 1");
  w.EndLine();
  w.Single(0.5f), w.Single(-1.5e-7f), w.Integer(-55), w.Integer(70000);
  w.Boolean(vbTrue), w.Boolean(vbFalse), w.Boolean(1); // any non-zero is true
  w.EndLine();
  EXPECT_EQ(sink, "VELK Version\r\n\"say 'hi'  now\",\"Girder, test 1\"\r\n"
                  ".5,-1.5E-07,-55,70000,#TRUE#,#FALSE#,#TRUE#\r\n");

  FieldReader r(sink); // the braces below read the fields in order
  for (const char* text : {"VELK Version", "say 'hi'  now", "Girder, test 1"})
    EXPECT_EQ(r.Text(), text);
  EXPECT_EQ((std::tuple{r.Single(), r.Single(), r.Integer(), r.Long()}),
            std::make_tuple(0.5f, -1.5e-7f, -55, 70000));
  EXPECT_EQ((std::tuple{r.Boolean(), r.Boolean(), r.Boolean()}),
            std::make_tuple(vbTrue, vbFalse, vbTrue));
  EXPECT_TRUE(r.AtEnd());
  EXPECT_EQ(FaultOf([&] { r.Integer(); }), errInputPastEnd);
}

TEST(TextFile, ReaderTakesEveryDelimiterAndQuotedTexts) {
  FieldReader r("1,2\r\n3\n4\r5,\"a, b\",  \"\"\r\nplain text,next\r\n\"x\"  , 1E+37,  "
                "29000 ,0");
  for (int i = 1; i <= 5; ++i)
    EXPECT_EQ(r.Integer(), i);
  for (const char* text : {"a, b", "", "plain text", "next", "x"})
    EXPECT_EQ(r.Text(), text);
  EXPECT_EQ((std::tuple{r.Single(), r.Single(), r.Single()}),
            std::make_tuple(1e37f, 29000.0f, 0.0f));
  EXPECT_EQ(FaultOf([&] { r.Single(); }), errInputPastEnd);
  EXPECT_EQ(FaultOf([] { FieldReader("   ").Text(); }), errInputPastEnd);
}

TEST(TextFile, FieldsOfTheWrongFormOrSizeFault) {
  for (const char* t : {"abc", "\"1\"", "#TRUE#", ","})
    EXPECT_EQ(FaultOf([&] { FieldReader(t).Single(); }), errTypeMismatch) << t;
  for (const char* t : {"TRUE", "-1", "\"#TRUE#\""})
    EXPECT_EQ(FaultOf([&] { FieldReader(t).Boolean(); }), errTypeMismatch) << t;
  EXPECT_EQ(FaultOf([] { FieldReader("1.5.2").Integer(); }), errTypeMismatch);
  EXPECT_EQ(FaultOf([] { FieldReader("32768").Integer(); }), errOverflow);
}

TEST(TextFile, EveryByteReadsBackAsWritten) {
  const std::string path = (std::filesystem::temp_directory_path() /
                            ("velk-textfile-" + std::to_string(::getpid()) + ".bin"))
                               .string();
  const std::string data("a,b\r\n\"c\"\r\n\0\xff tail", 17);
  OutFile f(path);
  f.Put(data);
  f.Close();
  EXPECT_EQ(ReadWholeFile(path), data);
  std::filesystem::remove(path);
  EXPECT_EQ(FaultOf([&] { ReadWholeFile(path); }), errFileNotFound);
}

} // namespace
} // namespace velk
