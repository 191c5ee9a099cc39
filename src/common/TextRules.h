#pragma once
// The one place that owns how numbers become text and text becomes numbers.
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace velk {

using Single = float;
using Integer = std::int16_t;
using Long = std::int32_t;
using Boolean = std::int16_t; // -1 true, 0 false

constexpr Boolean vbTrue = -1;
constexpr Boolean vbFalse = 0;
inline Boolean ToBoolean(bool b) {
  return b ? vbTrue : vbFalse;
}
inline bool IsTrue(Boolean b) {
  return b != 0;
}

// The zero of model values: the 32-bit float nearest to 0.00001.
constexpr Single kTolerance = 0.00001f;

// A decimal number as a whole: optional blanks, optional sign, digits with an
// optional point, optional exponent, optional blanks. Empty text is not numeric.
bool IsNumeric(std::string_view text);

// Conversions of text; a non-numeric text is a type mismatch (13), a value
// beyond the target's range an overflow (6).
Single TextToSingle(std::string_view text);
double TextToDouble(std::string_view text);
Integer TextToInteger(std::string_view text); // round half to even
Long TextToLong(std::string_view text);       // round half to even

// Rounding of a double to the 16- and 32-bit integers, ties to even; overflow (6)
// beyond the range.
Integer CInt(double value);
Long CLng(double value);
// A double stored as Single; overflow (6) when it is beyond a Single's range.
Single CSng(double value);

// A Single as a dialog shows it: "0.5", "120", "0.3333333", "1E+37".
std::string SingleToText(Single value);
// A Single as the files write it: ".5", "-.25", "1.5E-07", "29000".
std::string SingleToFileText(Single value);
// A Double with at most fifteen significant digits, in the file form.
std::string DoubleToFileText(double value);
// The shortest text that reads back as the same Single, in the C form other
// programs parse ("0.5", "-1.5e-07"); a NaN writes 0 and an infinity the
// largest Single of its sign.
std::string SingleToExactText(Single value);

// Format pictures of the listing and the reports: "0.00E+00", "0.0000E+00",
// "###0.00", "##0.00#", "00000", "Scientific", "0.000".
std::string Format(double value, std::string_view picture);

// The 14-column print zones: the blanks that take the print position from
// `column` (0-based) to the next zone start. None where it already stands at
// one, but a whole zone at the start of the line.
constexpr int kPrintZone = 14;
std::string ZonePad(std::size_t column);
// The printed forms of numbers in a zoned line: a blank or the minus sign in
// front and a blank after (" 12 ", "-3 ", " .5 ", "-1.5E-07 ").
std::string PrintInteger(long long value);
std::string PrintSingle(Single value);
// Fields in print zones: each after the first starts at the next zone that is
// still free; the last has no blanks after it.
std::string ZoneLine(std::initializer_list<std::string_view> fields);
std::string ZoneLine(const std::vector<std::string>& fields);

std::string Trim(std::string_view text);

} // namespace velk
