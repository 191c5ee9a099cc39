// Comma-separated fields: how the writer lays them out and how the reader
// takes them back, and which faults the file operations give.
#include "common/TextFile.h"
#include "common/Fault.h"

#include <gtest/gtest.h>

#include "FaultOf.h"

#include <filesystem>
#include <string>

namespace velk {
namespace {

using test::FaultOf;

TEST(TextFile, WrittenFieldsHaveTheirLayoutAndReadBack) {
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
  w.Boolean(1); // any non-zero is true
  w.EndLine();
  w.Text("say \"hi\"\r\nnow"); // a text cannot carry a quote or a line break
  w.Text("Girder, test 1");
  w.Single(8.571428f);
  w.Integer(32767);
  w.Single(-1.5e-7f);
  w.EndLine();
  EXPECT_EQ(sink, "VELK Version\r\n\"No Title\"\r\n.5,-.25,-55,#TRUE#,#FALSE#,#TRUE#\r\n"
                  "\"say 'hi'  now\",\"Girder, test 1\",8.571428,32767,-1.5E-07\r\n");

  FieldReader r(sink);
  EXPECT_EQ(r.Text(), "VELK Version");
  EXPECT_EQ(r.Text(), "No Title");
  EXPECT_EQ(r.Single(), 0.5f);
  EXPECT_EQ(r.Single(), -0.25f);
  EXPECT_EQ(r.Integer(), -55);
  EXPECT_EQ(r.Boolean(), vbTrue);
  EXPECT_EQ(r.Boolean(), vbFalse);
  EXPECT_EQ(r.Boolean(), vbTrue);
  EXPECT_EQ(r.Text(), "say 'hi'  now");
  EXPECT_EQ(r.Text(), "Girder, test 1");
  EXPECT_EQ(r.Single(), 8.571428f);
  EXPECT_EQ(r.Integer(), 32767);
  EXPECT_EQ(r.Single(), -1.5e-7f);
  EXPECT_TRUE(r.AtEnd());
  EXPECT_EQ(FaultOf([&] { r.Integer(); }), errInputPastEnd);
}

TEST(TextFile, ReaderTakesEveryDelimiterAndQuotedTexts) {
  FieldReader r("1,2\r\n3\n4\r5,\"a, b\",  \"\"\r\nplain text,next\r\n\"x\"  , 1.5E-07,1E+37,  "
                "29000 ,0,70000");
  for (int i = 1; i <= 5; ++i)
    EXPECT_EQ(r.Integer(), i);
  EXPECT_EQ(r.Text(), "a, b");
  EXPECT_EQ(r.Text(), "");
  EXPECT_EQ(r.Text(), "plain text");
  EXPECT_EQ(r.Text(), "next");
  EXPECT_EQ(r.Text(), "x");
  EXPECT_EQ(r.Single(), 1.5e-7f);
  EXPECT_EQ(r.Single(), 1e37f);
  EXPECT_EQ(r.Single(), 29000.0f);
  EXPECT_EQ(r.Single(), 0.0f);
  EXPECT_EQ(r.Long(), 70000);
  EXPECT_EQ(FaultOf([&] { r.Single(); }), errInputPastEnd);
  FieldReader blanks("   ");
  EXPECT_EQ(FaultOf([&] { blanks.Text(); }), errInputPastEnd);
}

TEST(TextFile, FieldsOfTheWrongFormOrSizeFault) {
  struct Case {
    const char* data;
    int which; // 0 Single, 1 Integer, 2 Boolean
    int fault;
  };
  const Case cases[] = {{"abc", 0, errTypeMismatch},        {"\"1\"", 0, errTypeMismatch},
                        {"#TRUE#", 0, errTypeMismatch},     {"1.5.2", 1, errTypeMismatch},
                        {"TRUE", 2, errTypeMismatch},       {"-1", 2, errTypeMismatch},
                        {"\"#TRUE#\"", 2, errTypeMismatch}, {",", 0, errTypeMismatch},
                        {"32768", 1, errOverflow}};
  for (const auto& c : cases) {
    FieldReader r(c.data);
    int fault = FaultOf([&] {
      if (c.which == 0)
        r.Single();
      else if (c.which == 1)
        r.Integer();
      else
        r.Boolean();
    });
    EXPECT_EQ(fault, c.fault) << c.data;
  }
}

TEST(TextFile, FileOperations) {
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
  // Every byte reads back as written.
  const std::string path = (dir / "bytes.txt").string();
  std::string data = "a,b\r\n\"c\"\r\n";
  data.push_back('\0');
  data += "\xff tail";
  {
    OutFile f(path);
    f.Put(data);
    f.Close();
  }
  EXPECT_EQ(ReadWholeFile(path), data);
  std::filesystem::remove_all(dir);
}

} // namespace
} // namespace velk
