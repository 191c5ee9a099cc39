#include "common/TextFile.h"

#include "common/Fault.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <filesystem>

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
    if (!f_) Raise(FaultFromErrno(errno, false), "cannot open " + path);
    return;
  }
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::string temp = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  errno = 0;
  const int fd = ::mkstemp(temp.data());
  if (fd < 0) Raise(FaultFromErrno(errno, false), "cannot open " + path);
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
    Raise(FaultFromErrno(err, false), "cannot open " + path);
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

std::string ReadWholeFile(const std::string& path) {
  if (path.empty()) Raise(errBadFileName);
  errno = 0;
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) Raise(FaultFromErrno(errno, true), "cannot open " + path);
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

void FieldReader::SkipDelimiter() {
  if (pos_ >= data_.size()) return;
  if (data_[pos_] == ',') {
    ++pos_;
  } else if (data_[pos_] == '\r') {
    ++pos_;
    if (pos_ < data_.size() && data_[pos_] == '\n') ++pos_;
  } else if (data_[pos_] == '\n') {
    ++pos_;
  }
}

std::string FieldReader::RawField(bool* quoted) {
  while (pos_ < data_.size() && IsBlank(data_[pos_]))
    ++pos_;
  if (pos_ >= data_.size()) Raise(errInputPastEnd, "input past end of file");
  if (quoted) *quoted = false;
  if (data_[pos_] == '"') {
    if (quoted) *quoted = true;
    std::size_t close = data_.find('"', pos_ + 1);
    std::string text;
    if (close == std::string::npos) {
      text = data_.substr(pos_ + 1);
      pos_ = data_.size();
      return text;
    }
    text = data_.substr(pos_ + 1, close - pos_ - 1);
    pos_ = close + 1;
    // Anything between the closing quote and the delimiter is passed over.
    while (pos_ < data_.size() && data_[pos_] != ',' && !IsLineEnd(data_[pos_]))
      ++pos_;
    SkipDelimiter();
    return text;
  }
  std::size_t start = pos_;
  while (pos_ < data_.size() && data_[pos_] != ',' && !IsLineEnd(data_[pos_]))
    ++pos_;
  std::string text = Trim(std::string_view(data_).substr(start, pos_ - start));
  SkipDelimiter();
  return text;
}

std::string FieldReader::Text() {
  return RawField();
}

double FieldReader::Double() {
  bool quoted = false;
  std::string f = RawField(&quoted);
  if (quoted) Raise(errTypeMismatch);
  return TextToDouble(f);
}

velk::Single FieldReader::Single() {
  bool quoted = false;
  std::string f = RawField(&quoted);
  if (quoted) Raise(errTypeMismatch);
  return TextToSingle(f);
}

velk::Integer FieldReader::Integer() {
  return CInt(Double());
}
velk::Long FieldReader::Long() {
  return CLng(Double());
}

velk::Boolean FieldReader::Boolean() {
  bool quoted = false;
  std::string f = RawField(&quoted);
  if (!quoted) {
    if (f == "#TRUE#") return vbTrue;
    if (f == "#FALSE#") return vbFalse;
  }
  Raise(errTypeMismatch, "not a boolean: '" + f + "'");
}

} // namespace velk
