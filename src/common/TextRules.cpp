#include "common/TextRules.h"

#include "common/Fault.h"

#include <cerrno>
#include <charconv>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale.h>
#include <string>

namespace velk {

namespace {

// The files and dialogs write a point as the decimal sign whatever locale the
// process runs in (a toolkit may set it from the environment), so every C
// conversion below runs in the "C" locale for its thread.
class CLocaleScope {
public:
  CLocaleScope() : old_(c_ ? uselocale(c_) : nullptr) {}
  ~CLocaleScope() {
    if (old_) uselocale(old_);
  }
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
  static inline const locale_t c_ = newlocale(LC_ALL_MASK, "C", locale_t(0));
  locale_t old_;
};

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The numeric core of a text with its blanks removed, or empty when not numeric.
std::string NumericCore(std::string_view text) {
  std::size_t b = 0, e = text.size();
  while (b < e && IsBlank(text[b]))
    ++b;
  while (e > b && IsBlank(text[e - 1]))
    --e;
  std::string_view t = text.substr(b, e - b);
  std::size_t i = 0;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
  std::size_t digits = 0;
  while (i < t.size() && IsDigit(t[i]))
    ++i, ++digits;
  if (i < t.size() && t[i] == '.') {
    ++i;
    while (i < t.size() && IsDigit(t[i]))
      ++i, ++digits;
  }
  if (digits == 0) return {};
  if (i < t.size() && (t[i] == 'E' || t[i] == 'e')) {
    ++i;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
    std::size_t expDigits = 0;
    while (i < t.size() && IsDigit(t[i]))
      ++i, ++expDigits;
    if (expDigits == 0) return {};
  }
  if (i != t.size()) return {};
  return std::string(t);
}

// Round half to even without depending on the floating-point environment.
double RoundHalfEven(double v) {
  double f = std::floor(v);
  double diff = v - f;
  if (diff > 0.5) return f + 1.0;
  if (diff < 0.5) return f;
  return std::fmod(f, 2.0) == 0.0 ? f : f + 1.0;
}

// printf-style %g text turned into the program's form: upper-case exponent,
// no leading zero before the point when `fileForm`, no negative zero.
std::string Tidy(std::string s, bool fileForm) {
  for (auto& c : s)
    if (c == 'e') c = 'E';
  if (s == "-0") return "0";
  if (fileForm) {
    if (s.rfind("0.", 0) == 0)
      s.erase(0, 1);
    else if (s.rfind("-0.", 0) == 0)
      s.erase(1, 1);
  }
  return s;
}

std::string GText(double value, int digits, bool fileForm) {
  if (std::isnan(value)) return "0";
  if (std::isinf(value)) value = value > 0 ? DBL_MAX : -DBL_MAX;
  char buf[64];
  CLocaleScope c;
  std::snprintf(buf, sizeof buf, "%.*g", digits, value);
  return Tidy(buf, fileForm);
}

} // namespace

std::string SingleToExactText(Single value) {
  if (std::isnan(value)) return "0";
  if (std::isinf(value)) value = value > 0 ? FLT_MAX : -FLT_MAX;
  char buf[32];
  // to_chars is locale-free by definition.
  const auto end = std::to_chars(buf, buf + sizeof buf, value).ptr;
  return std::string(buf, end);
}

bool IsNumeric(std::string_view text) {
  return !NumericCore(text).empty();
}

double TextToDouble(std::string_view text) {
  std::string core = NumericCore(text);
  if (core.empty()) Raise(errTypeMismatch, "type mismatch: '" + std::string(text) + "'");
  CLocaleScope c;
  double v = std::strtod(core.c_str(), nullptr);
  if (std::isinf(v)) Raise(errOverflow, "overflow: '" + core + "'");
  return v;
}

Single TextToSingle(std::string_view text) {
  std::string core = NumericCore(text);
  if (core.empty()) Raise(errTypeMismatch, "type mismatch: '" + std::string(text) + "'");
  // strtof rounds the decimal text straight to the nearest float, with no
  // double rounding through a 64-bit value.
  CLocaleScope c;
  float v = std::strtof(core.c_str(), nullptr);
  if (std::isinf(v)) Raise(errOverflow, "overflow: '" + core + "'");
  return v;
}

Integer CInt(double value) {
  if (!std::isfinite(value)) Raise(errOverflow);
  double r = RoundHalfEven(value);
  if (r < -32768.0 || r > 32767.0) Raise(errOverflow);
  return static_cast<Integer>(r);
}

Long CLng(double value) {
  if (!std::isfinite(value)) Raise(errOverflow);
  double r = RoundHalfEven(value);
  if (r < -2147483648.0 || r > 2147483647.0) Raise(errOverflow);
  return static_cast<Long>(r);
}

Single CSng(double value) {
  if (std::isnan(value)) Raise(errOverflow);
  if (std::fabs(value) > FLT_MAX) {
    // Values that round to FLT_MAX are still a Single.
    float f = static_cast<float>(value);
    if (std::isinf(f)) Raise(errOverflow);
    return f;
  }
  return static_cast<float>(value);
}

Integer TextToInteger(std::string_view text) {
  return CInt(TextToDouble(text));
}
Long TextToLong(std::string_view text) {
  return CLng(TextToDouble(text));
}

std::string SingleToText(Single value) {
  return GText(value, 7, false);
}
std::string SingleToFileText(Single value) {
  return GText(value, 7, true);
}
std::string DoubleToFileText(double value) {
  return GText(value, 15, true);
}

std::string Format(double value, std::string_view picture) {
  char buf[64];
  CLocaleScope c;
  if (!std::isfinite(value)) value = std::isnan(value) ? 0.0 : (value > 0 ? DBL_MAX : -DBL_MAX);
  if (picture == "0.00E+00" || picture == "Scientific") {
    std::snprintf(buf, sizeof buf, "%.2E", value);
  } else if (picture == "0.0000E+00") {
    std::snprintf(buf, sizeof buf, "%.4E", value);
  } else if (picture == "###0.00") {
    std::snprintf(buf, sizeof buf, "%.2f", value);
  } else if (picture == "0.000") {
    std::snprintf(buf, sizeof buf, "%.3f", value);
  } else if (picture == "##0.00#") {
    std::snprintf(buf, sizeof buf, "%.3f", value);
    std::string s = buf;
    if (!s.empty() && s.back() == '0') s.pop_back();
    return s == "-0.00" ? "0.00" : s;
  } else if (picture == "00000") {
    // At least five digits; a minus sign stands in front of them.
    double whole = RoundHalfEven(value);
    std::snprintf(buf, sizeof buf, "%s%05.0f", whole < 0 ? "-" : "", std::fabs(whole));
  } else {
    return GText(value, 15, false);
  }
  std::string s = buf;
  // A value that rounds to zero prints without a sign.
  if (s[0] == '-' && s.find_first_of("123456789") == std::string::npos) s.erase(0, 1);
  return s;
}

std::string ZonePad(std::size_t column) {
  std::size_t next =
      column == 0 ? kPrintZone : ((column + kPrintZone - 1) / kPrintZone) * kPrintZone;
  return std::string(next - column, ' ');
}

std::string PrintInteger(long long value) {
  return (value < 0 ? "" : " ") + std::to_string(value) + " ";
}

std::string PrintSingle(Single value) {
  const std::string s = SingleToFileText(value);
  return (s[0] == '-' ? "" : " ") + s + " ";
}

namespace {
template <class Range> std::string JoinZones(const Range& fields) {
  std::string line;
  bool first = true;
  for (const auto& f : fields) {
    if (!first) line += ZonePad(line.size());
    first = false;
    line += f;
  }
  return line;
}
} // namespace

std::string ZoneLine(std::initializer_list<std::string_view> fields) {
  return JoinZones(fields);
}
std::string ZoneLine(const std::vector<std::string>& fields) {
  return JoinZones(fields);
}

std::string Trim(std::string_view text) {
  std::size_t b = 0, e = text.size();
  while (b < e && IsBlank(text[b]))
    ++b;
  while (e > b && IsBlank(text[e - 1]))
    --e;
  return std::string(text.substr(b, e - b));
}

} // namespace velk
