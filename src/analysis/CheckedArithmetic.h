#pragma once
// Checked arithmetic of the analysis. A run must stop with the right failure
// rather than carry NaN or infinity into its results: a zero divisor is a
// division by zero, 0/0 and a floating overflow are an overflow, and so is a
// 16-bit count or freedom number that leaves its range.
#include <cmath>
#include <cstdint>
#include <limits>

#include "common/Fault.h"

namespace velk {

// The failure that dividing `dividend` by a zero divisor would give.
[[noreturn]] inline void RaiseZeroDivisor(double dividend) {
  Raise(dividend == 0.0 ? errOverflow : errDivByZero);
}

// A value that came out of arithmetic: infinity or NaN there means an
// operation overflowed (or was 0/0, inf - inf) somewhere on the way.
inline double Finite(double value) {
  if (!std::isfinite(value)) Raise(errOverflow);
  return value;
}

// dividend / divisor with the failures of the run. An operand that is already
// infinite or NaN is the trace of an earlier overflow and is reported as such.
inline double Div(double dividend, double divisor) {
  if (!std::isfinite(dividend) || !std::isfinite(divisor)) Raise(errOverflow);
  if (divisor == 0.0) RaiseZeroDivisor(dividend);
  return Finite(dividend / divisor);
}

// A divisor that comes from the geometry of an element (an area, a length, a
// Jacobian). Zero means a degenerate element, which the run reports as a
// division by zero whatever the dividend.
inline double Divisor(double divisor) {
  if (divisor == 0.0) Raise(errDivByZero);
  return divisor;
}

// Square root of a value known to be a sum of squares; only overflow can hurt.
inline double Sqrt(double value) {
  return Finite(std::sqrt(Finite(value)));
}

// 16-bit integer arithmetic: counts, indexes and freedom numbers.
inline std::int16_t Int16(long long value) {
  if (value < std::numeric_limits<std::int16_t>::min() ||
      value > std::numeric_limits<std::int16_t>::max())
    Raise(errOverflow);
  return static_cast<std::int16_t>(value);
}

// Global number of local freedom d (1-based) at analysis point n (1-based) with
// `perPoint` freedoms a point: perPoint * (n - 1) + d, each step in 16 bits.
inline std::int16_t Dof_Number(int point, int d, int perPoint) {
  const std::int16_t previous = Int16(static_cast<long long>(point) - 1);
  const std::int16_t offset = Int16(static_cast<long long>(perPoint) * previous);
  return Int16(static_cast<long long>(offset) + d);
}

} // namespace velk
