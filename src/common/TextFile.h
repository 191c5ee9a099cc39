#pragma once
// Comma-separated text files in the program's classic form: fields separated by
// commas, a carriage return and line feed at each line end, texts in double
// quotes, booleans as #TRUE# and #FALSE#. The writer and the reader are each
// other's inverse; I/O failures become numbered faults.
#include "common/TextRules.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace velk {

// Maps an errno value from opening, reading or writing to a fault number.
int FaultFromErrno(int err, bool reading);

// A regular file whose permissions let nobody write to it.
bool IsReadOnlyFile(const std::string& path);

// A file opened for output; replaces what was there. A read-only file is
// refused (70), whoever runs the program. The text goes to a temporary file
// beside the target, renamed over it only by a Close that succeeded: a full
// disk, a fault or a killed program leaves the old file as it was. A device
// or a pipe (/dev/null, /dev/full) is written directly.
class OutFile {
public:
  explicit OutFile(const std::string& path);
  // Writes into `sink` instead of a file.
  explicit OutFile(std::string* sink) : sink_(sink) {}
  ~OutFile();
  OutFile(const OutFile&) = delete;
  OutFile& operator=(const OutFile&) = delete;

  void Put(std::string_view text);
  void Flush(); // to the file now; a failure (a full disk) is a fault
  void Close(); // flushes; a failure is a fault
  std::size_t Column() const { return column_; }

private:
  std::FILE* f_ = nullptr;
  std::string* sink_ = nullptr;
  std::size_t column_ = 0;
  std::string target_, temp_; // temp_ empty when writing directly
};

// Opens a regular file for reading: a missing one is fault 53, a folder, a
// device or a pipe fault 75, each with the path in its text. The /dev/zero of
// a mistyped name would otherwise be read for ever.
std::FILE* OpenForReading(const std::string& path);

// Reads a whole (small) regular file into memory.
std::string ReadWholeFile(const std::string& path);

class FieldWriter {
public:
  explicit FieldWriter(OutFile& out) : out_(out) {}
  void Text(std::string_view text);
  void Single(velk::Single value);
  void Boolean(velk::Boolean value);
  void Integer(long long value);
  void EndLine();
  void Line(std::string_view raw); // a plain line, as it stands

  // A text made safe for a quoted field: a double quote becomes an apostrophe
  // and line breaks become blanks, so the reader always finds the closing quote.
  static std::string QuotedSafe(std::string_view text);

private:
  void Separator();
  OutFile& out_;
  bool first_ = true;
};

// Reads fields from text in memory, or from a file as a stream: only a
// window of the file is held, so memory follows the model read, not the
// file's size, and a file of junk fails at its first bad field. Its faults
// say where: "line 12: 'abc' is not a number".
class FieldReader {
public:
  explicit FieldReader(std::string data) : data_(std::move(data)) {}
  // Streams the file at `path` (see OpenForReading); closes it at the end.
  static FieldReader FromFile(const std::string& path);
  FieldReader(FieldReader&& other) noexcept;
  FieldReader& operator=(FieldReader&&) = delete;
  FieldReader(const FieldReader&) = delete;
  ~FieldReader();
  std::string Text();
  velk::Single Single();
  double Double();
  velk::Integer Integer();
  velk::Long Long();
  velk::Boolean Boolean();
  bool AtEnd();
  long Line() const { return fieldLine_; } // of the field read last

  // No field, quoted text included, is longer than this: junk is refused
  // before it fills the memory.
  static constexpr std::size_t kLongestField = 1 << 20;

private:
  FieldReader() = default;
  std::string RawField(bool* quoted = nullptr);
  void SkipDelimiter();
  bool More(); // appends the next piece of the file; false at its end
  bool Has(std::size_t at); // data_[at] exists, reading more when it must
  [[noreturn]] void Bad(int number, const std::string& field, const char* what) const;
  std::string data_;
  std::size_t pos_ = 0;
  std::FILE* file_ = nullptr;
  long line_ = 1, fieldLine_ = 1;
};

} // namespace velk
