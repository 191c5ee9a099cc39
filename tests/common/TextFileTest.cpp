// Comma-separated fields: how the writer lays them out and how the reader
// takes them back, and which faults the file operations give.
#include "common/Fault.h"
#include "common/TextFile.h"

#include <gtest/gtest.h>

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

TEST(FieldWriter, LaysOutFieldsWithCommasAndCrLf) {
  std::string sink;
  OutFile out(&sink);
  FieldWriter w(out);
  w.Line("VELK Version");
  w.Text("No Title");
  w.EndLine();
  w.Single(0.5f);
  w.Single(-0.25f);
  w.Integer(-55);
  w.Boolean(vbTrue);
  w.Boolean(vbFalse);
  w.EndLine();
  EXPECT_EQ(sink, "VELK Version\r\n\"No Title\"\r\n.5,-.25,-55,#TRUE#,#FALSE#\r\n");
}

TEST(FieldWriter, AnyNonZeroBooleanIsTrue) {
  std::string sink;
  OutFile out(&sink);
  FieldWriter w(out);
  w.Boolean(1);
  EXPECT_EQ(sink, "#TRUE#");
}

TEST(FieldWriter, TextCannotCarryAQuoteOrALineBreak) {
  std::string sink;
  OutFile out(&sink);
  FieldWriter w(out);
  w.Text("say \"hi\"\r\nnow");
  EXPECT_EQ(sink, "\"say 'hi'  now\"");
}

TEST(FieldReader, LineEndCountsLikeAComma) {
  FieldReader r("1,2\r\n3\n4\r5");
  EXPECT_EQ(r.Integer(), 1);
  EXPECT_EQ(r.Integer(), 2);
  EXPECT_EQ(r.Integer(), 3);
  EXPECT_EQ(r.Integer(), 4);
  EXPECT_EQ(r.Integer(), 5);
  EXPECT_TRUE(r.AtEnd());
  EXPECT_EQ(FaultOf([&] { r.Integer(); }), errInputPastEnd);
}

TEST(FieldReader, QuotedTextKeepsCommasAndEndsAtItsQuote) {
  FieldReader r("\"a, b\",  \"\"\r\nplain text,next\r\n\"x\"  ,7");
  EXPECT_EQ(r.Text(), "a, b");
  EXPECT_EQ(r.Text(), "");
  EXPECT_EQ(r.Text(), "plain text");
  EXPECT_EQ(r.Text(), "next");
  EXPECT_EQ(r.Text(), "x");
  EXPECT_EQ(r.Integer(), 7);
}

TEST(FieldReader, NumbersInEveryWrittenForm) {
  FieldReader r(" .5,0.5,-.25,1.5E-07,1E+37,  29000 ,0");
  EXPECT_EQ(r.Single(), 0.5f);
  EXPECT_EQ(r.Single(), 0.5f);
  EXPECT_EQ(r.Single(), -0.25f);
  EXPECT_EQ(r.Single(), 1.5e-7f);
  EXPECT_EQ(r.Single(), 1e37f);
  EXPECT_EQ(r.Single(), 29000.0f);
  EXPECT_EQ(r.Single(), 0.0f);
}

TEST(FieldReader, Booleans) {
  FieldReader r("#TRUE#,#FALSE#");
  EXPECT_EQ(r.Boolean(), vbTrue);
  EXPECT_EQ(r.Boolean(), vbFalse);
}

TEST(FieldReader, FieldsOfTheWrongFormAreTypeMismatches) {
  struct Case {
    const char* data;
    int which; // 0 Single, 1 Integer, 2 Boolean
  };
  const Case cases[] = {{"abc", 0},    {"\"1\"", 0}, {"#TRUE#", 0}, {"1.5.2", 1},
                        {"TRUE", 2},   {"-1", 2},    {"\"#TRUE#\"", 2}, {",", 0}};
  for (const auto& c : cases) {
    FieldReader r(c.data);
    int fault = FaultOf([&] {
      if (c.which == 0) r.Single();
      else if (c.which == 1) r.Integer();
      else r.Boolean();
    });
    EXPECT_EQ(fault, errTypeMismatch) << c.data;
  }
}

TEST(FieldReader, IntegerFieldsBeyondSixteenBitsOverflow) {
  FieldReader r("32768,70000");
  EXPECT_EQ(FaultOf([&] { r.Integer(); }), errOverflow);
  EXPECT_EQ(r.Long(), 70000);
}

TEST(FieldReader, ReadingPastTheEndIsFault62) {
  FieldReader r("1\r\n");
  EXPECT_EQ(r.Integer(), 1);
  EXPECT_EQ(FaultOf([&] { r.Single(); }), errInputPastEnd);
  FieldReader blanks("   ");
  EXPECT_EQ(FaultOf([&] { blanks.Text(); }), errInputPastEnd);
}

TEST(FieldWriterReader, WrittenFieldsReadBack) {
  std::string sink;
  OutFile out(&sink);
  FieldWriter w(out);
  w.Text("Girder, test 1");
  w.Single(8.571428f);
  w.EndLine();
  w.Integer(32767);
  w.Boolean(vbTrue);
  w.Single(-1.5e-7f);
  w.EndLine();
  FieldReader r(sink);
  EXPECT_EQ(r.Text(), "Girder, test 1");
  EXPECT_EQ(r.Single(), 8.571428f);
  EXPECT_EQ(r.Integer(), 32767);
  EXPECT_EQ(r.Boolean(), vbTrue);
  EXPECT_EQ(r.Single(), -1.5e-7f);
  EXPECT_TRUE(r.AtEnd());
}

TEST(FileOperations, FailuresCarryTheirNumbers) {
  auto dir = std::filesystem::temp_directory_path() / "velk-textfile-test";
  std::filesystem::create_directories(dir);
  EXPECT_EQ(FaultOf([&] { ReadWholeFile((dir / "missing.inp").string()); }), errFileNotFound);
  EXPECT_EQ(FaultOf([&] { OutFile f((dir / "no/such/folder.inp").string()); }), errPathNotFound);
  EXPECT_EQ(FaultOf([] { OutFile f(""); }), errBadFileName);
  // A full disk shows when the buffered text goes out.
  EXPECT_EQ(FaultOf([] {
              OutFile f("/dev/full");
              f.Put("0,0\r\n");
              f.Close();
            }),
            errDiskFull);
  std::filesystem::remove_all(dir);
}

TEST(FileOperations, WholeFileReadsBackByteForByte) {
  auto path = (std::filesystem::temp_directory_path() / "velk-textfile-bytes.txt").string();
  std::string data = "a,b\r\n\"c\"\r\n";
  data.push_back('\0');
  data += "\xff tail";
  {
    OutFile f(path);
    f.Put(data);
    f.Close();
  }
  EXPECT_EQ(ReadWholeFile(path), data);
  std::filesystem::remove(path);
}

} // namespace
} // namespace velk
