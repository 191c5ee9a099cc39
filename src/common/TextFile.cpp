#include "common/TextFile.h"

#include "common/Fault.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <utility>

namespace velk {

int FaultFromErrno(int err, bool reading) {
  switch (err) {
  case ENOENT:
    return reading ? errFileNotFound : errPathNotFound;
  case ENOTDIR:
    return errPathNotFound;
  case ENAMETOOLONG:
  case EINVAL:
    return errBadFileName;
  case ENOSPC:
  case EDQUOT:
  case EFBIG:
    return errDiskFull;
  case EIO:
    return errDeviceIO;
  case ENXIO:
  case ENODEV:
    return errDeviceUnavailable;
  case EACCES:
  case EPERM:
  case EROFS:
    return errPermissionDenied;
  case EISDIR:
    return errPathFileAccess;
  case EMFILE:
  case ENFILE:
    return errFileAlreadyOpen;
  default:
    return errPathFileAccess;
  }
}

bool IsReadOnlyFile(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code ec;
  const fs::file_status st = fs::status(path, ec);
  if (ec || !fs::is_regular_file(st)) return false;
  constexpr auto anyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  return (st.permissions() & anyWrite) == fs::perms::none;
}

OutFile::OutFile(const std::string& path) {
  namespace fs = std::filesystem;
  if (path.empty()) Raise(errBadFileName);
  // The file's read-only mark holds for every user, the administrator too.
  if (IsReadOnlyFile(path)) Raise(errPermissionDenied, "read-only file " + path);
  std::error_code ec;
  fs::path target = path;
  if (fs::is_symlink(fs::symlink_status(target, ec))) target = fs::canonical(target, ec);
  const fs::file_status st = fs::status(target, ec);
  if (!ec && fs::exists(st) && !fs::is_regular_file(st)) {
    errno = 0;
    f_ = std::fopen(path.c_str(), "wb");
    if (!f_) Raise(FaultFromErrno(errno, false), "cannot write " + path);
    return;
  }
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::string temp = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  errno = 0;
  const int fd = ::mkstemp(temp.data());
  if (fd < 0) Raise(FaultFromErrno(errno, false), "cannot write " + path);
  // The new file gets the old one's permissions, or those of a file made anew.
  if (fs::exists(st)) {
    ::fchmod(fd, static_cast<mode_t>(st.permissions()) & 07777);
  } else {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
  }
  f_ = ::fdopen(fd, "wb");
  if (!f_) {
    const int err = errno;
    ::close(fd);
    ::unlink(temp.c_str());
    Raise(FaultFromErrno(err, false), "cannot write " + path);
  }
  target_ = target.string();
  temp_ = std::move(temp);
}

OutFile::~OutFile() {
  if (f_) std::fclose(f_);
  if (!temp_.empty()) ::unlink(temp_.c_str()); // never completed: the old file stays
}

void OutFile::Put(std::string_view text) {
  if (text.empty()) return;
  if (sink_) {
    sink_->append(text);
  } else {
    if (!f_) Raise(errBadFileMode);
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), f_) != text.size())
      Raise(FaultFromErrno(errno ? errno : EIO, false));
  }
  auto nl = text.find_last_of('\n');
  column_ = nl == std::string_view::npos ? column_ + text.size() : text.size() - nl - 1;
}

void OutFile::Flush() {
  if (!f_) return;
  errno = 0;
  if (std::fflush(f_) != 0) Raise(FaultFromErrno(errno ? errno : EIO, false));
}

void OutFile::Close() {
  if (!f_) return;
  errno = 0;
  int flushed = std::fflush(f_);
  int err = errno;
  if (flushed == 0 && !temp_.empty() && ::fsync(::fileno(f_)) != 0) flushed = -1, err = errno;
  int closed = std::fclose(f_);
  if (closed != 0 && err == 0) err = errno;
  f_ = nullptr;
  if (flushed != 0 || closed != 0) Raise(FaultFromErrno(err ? err : EIO, false));
  if (temp_.empty()) return;
  // Complete: only now does it take the old file's place.
  errno = 0;
  if (std::rename(temp_.c_str(), target_.c_str()) != 0)
    Raise(FaultFromErrno(errno ? errno : EIO, false), "cannot replace " + target_);
  temp_.clear();
}

std::FILE* OpenForReading(const std::string& path) {
  namespace fs = std::filesystem;
  if (path.empty()) Raise(errBadFileName);
  std::error_code ec;
  const fs::file_status st = fs::status(path, ec);
  if (fs::is_directory(st)) Raise(errPathFileAccess, path + " is a folder, not a file");
  if (fs::exists(st) && !fs::is_regular_file(st))
    Raise(errPathFileAccess, path + " is not a regular file (a device or a pipe)");
  errno = 0;
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) {
    const int err = errno;
    Raise(FaultFromErrno(err, true), path + ": " + std::strerror(err));
  }
  return f;
}

std::string ReadWholeFile(const std::string& path) {
  std::FILE* f = OpenForReading(path);
  std::string data;
  char buf[65536];
  std::size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0)
    data.append(buf, n);
  bool failed = std::ferror(f);
  int err = errno;
  std::fclose(f);
  if (failed) Raise(FaultFromErrno(err ? err : EIO, true));
  return data;
}

// ---- writer ----

std::string FieldWriter::QuotedSafe(std::string_view text) {
  std::string s(text);
  for (auto& c : s) {
    if (c == '"')
      c = '\'';
    else if (c == '\r' || c == '\n')
      c = ' ';
  }
  return s;
}

void FieldWriter::Separator() {
  if (!first_) out_.Put(",");
  first_ = false;
}

void FieldWriter::Text(std::string_view text) {
  Separator();
  out_.Put("\"" + QuotedSafe(text) + "\"");
}

void FieldWriter::Single(velk::Single value) {
  Separator();
  out_.Put(SingleToFileText(value));
}

void FieldWriter::Boolean(velk::Boolean value) {
  Separator();
  out_.Put(value ? "#TRUE#" : "#FALSE#");
}

void FieldWriter::Integer(long long value) {
  Separator();
  out_.Put(std::to_string(value));
}

void FieldWriter::EndLine() {
  out_.Put("\r\n");
  first_ = true;
}

void FieldWriter::Line(std::string_view raw) {
  out_.Put(raw);
  EndLine();
}

// ---- reader ----

namespace {
bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}
} // namespace

FieldReader FieldReader::FromFile(const std::string& path) {
  FieldReader r;
  r.file_ = OpenForReading(path);
  return r;
}

FieldReader::FieldReader(FieldReader&& other) noexcept
    : data_(std::move(other.data_)), pos_(other.pos_), file_(std::exchange(other.file_, nullptr)),
      line_(other.line_), fieldLine_(other.fieldLine_) {}

FieldReader::~FieldReader() {
  if (file_) std::fclose(file_);
}

bool FieldReader::More() {
  if (!file_) return false;
  char buf[65536];
  const std::size_t n = std::fread(buf, 1, sizeof buf, file_);
  if (n == 0) {
    const bool failed = std::ferror(file_);
    const int err = errno;
    std::fclose(file_);
    file_ = nullptr;
    if (failed) Raise(FaultFromErrno(err ? err : EIO, true));
    return false;
  }
  data_.append(buf, n);
  return true;
}

bool FieldReader::Has(std::size_t at) {
  while (at >= data_.size())
    if (!More()) return false;
  return true;
}

bool FieldReader::AtEnd() {
  return !Has(pos_);
}

void FieldReader::Bad(int number, const std::string& field, const char* what) const {
  std::string shown = field.size() > 40 ? field.substr(0, 40) + "..." : field;
  for (char& c : shown) // a junk file's bytes would garble the message
    if (static_cast<unsigned char>(c) < 32 || static_cast<unsigned char>(c) > 126) c = '?';
  Raise(number, "line " + std::to_string(fieldLine_) + ": '" + shown + "' " + what);
}

void FieldReader::SkipDelimiter() {
  if (!Has(pos_)) return;
  if (data_[pos_] == ',') {
    ++pos_;
  } else if (data_[pos_] == '\r') {
    ++pos_;
    if (Has(pos_) && data_[pos_] == '\n') ++pos_;
    ++line_;
  } else if (data_[pos_] == '\n') {
    ++pos_;
    ++line_;
  }
}

std::string FieldReader::RawField(bool* quoted) {
  // What is read is dropped between fields, so the window of a file stays a
  // piece or two long; indices within a field stay valid while it is read.
  if (file_ && pos_ > sizeof(char[65536])) {
    data_.erase(0, pos_);
    pos_ = 0;
  }
  while (Has(pos_) && IsBlank(data_[pos_]))
    ++pos_;
  fieldLine_ = line_;
  if (!Has(pos_)) Raise(errInputPastEnd, "line " + std::to_string(line_) + ": input past end of file");
  if (quoted) *quoted = false;
  std::size_t end = pos_;
  auto tooLong = [&] {
    if (end - pos_ > kLongestField)
      Raise(errTypeMismatch, "line " + std::to_string(fieldLine_) + ": a field longer than " +
                                 std::to_string(kLongestField) + " bytes");
  };
  if (data_[pos_] == '"') {
    if (quoted) *quoted = true;
    end = pos_ + 1;
    while (Has(end) && data_[end] != '"') {
      if (data_[end] == '\n') ++line_;
      ++end;
      tooLong();
    }
    std::string text = data_.substr(pos_ + 1, end - pos_ - 1);
    if (!Has(end)) { // no closing quote: the rest of the file
      pos_ = end;
      return text;
    }
    pos_ = end + 1;
    // Anything between the closing quote and the delimiter is passed over.
    while (Has(pos_) && data_[pos_] != ',' && !IsLineEnd(data_[pos_]))
      ++pos_;
    SkipDelimiter();
    return text;
  }
  while (Has(end) && data_[end] != ',' && !IsLineEnd(data_[end])) {
    ++end;
    tooLong();
  }
  std::string text = Trim(std::string_view(data_).substr(pos_, end - pos_));
  pos_ = end;
  SkipDelimiter();
  return text;
}

std::string FieldReader::Text() {
  return RawField();
}

double FieldReader::Double() {
  bool quoted = false;
  std::string f = RawField(&quoted);
  if (quoted) Bad(errTypeMismatch, f, "is a text, not a number");
  try {
    return TextToDouble(f);
  } catch (const Fault& e) {
    Bad(e.number(), f, e.number() == errOverflow ? "is too large" : "is not a number");
  }
}

velk::Single FieldReader::Single() {
  bool quoted = false;
  std::string f = RawField(&quoted);
  if (quoted) Bad(errTypeMismatch, f, "is a text, not a number");
  try {
    return TextToSingle(f);
  } catch (const Fault& e) {
    Bad(e.number(), f, e.number() == errOverflow ? "is too large" : "is not a number");
  }
}

velk::Integer FieldReader::Integer() {
  const double v = Double();
  try {
    return CInt(v);
  } catch (const Fault& e) {
    Bad(e.number(), std::to_string(v), "is beyond a whole number's range");
  }
}
velk::Long FieldReader::Long() {
  const double v = Double();
  try {
    return CLng(v);
  } catch (const Fault& e) {
    Bad(e.number(), std::to_string(v), "is beyond a whole number's range");
  }
}

velk::Boolean FieldReader::Boolean() {
  bool quoted = false;
  std::string f = RawField(&quoted);
  if (!quoted) {
    if (f == "#TRUE#") return vbTrue;
    if (f == "#FALSE#") return vbFalse;
  }
  Bad(errTypeMismatch, f, "is not #TRUE# or #FALSE#");
}

} // namespace velk
