#pragma once
// Arithmetic that keeps the system's rules: conversions round to the nearest number, ties to the even one,
// and what does not fit or has no value raises a Failure instead of yielding a nonsense number.

#include <cmath>
#include <cstdint>

#include "common/failure.h"

namespace veltrix {

/// Nearest integer, ties to even, as a float. NaN and infinities stay.
inline double RoundTiesToEven(double value) {
    // Whole anyway, or no number. Below, every step is exact, whatever the rounding mode of the thread.
    constexpr double AllWhole = 4503599627370496.0;  // two to the power of 52
    if (!(std::abs(value) < AllWhole)) return value;
    const auto whole = static_cast<std::int64_t>(value);
    const double rest = std::abs(value - static_cast<double>(whole));
    const bool away = rest > 0.5 || (rest == 0.5 && (whole & 1) != 0);
    return static_cast<double>(away ? whole + (value < 0 ? -1 : 1) : whole);
}

/// `value` rounded to the nearest 4-byte integer, ties to even. Raises Overflow when it does not fit, NaN
/// included.
std::int32_t RoundToLong(double value, CodeLine where = __builtin_LINE());

/// `value` rounded to the nearest 2-byte integer, ties to even. Raises Overflow when it does not fit, NaN
/// included.
std::int16_t RoundToInteger(double value, CodeLine where = __builtin_LINE());

/// The integer part towards minus infinity: -1.5 gives -2.
double IntegerPart(double value);

/// `numerator` / `denominator`. A denominator of 0 raises DivisionByZero, 0 / 0 Overflow.
double Divide(double numerator, double denominator, CodeLine where = __builtin_LINE());

/// Natural logarithm. An argument of 0 or below raises InvalidCall.
double Ln(double value, CodeLine where = __builtin_LINE());

/// `lCounter` + 1, wrapping to 0 at 2100000000, the common limit of all counters that run for ever.
constexpr std::int32_t NextCount(std::int32_t lCounter) {
    constexpr std::int32_t Limit = 2100000000;
    return (lCounter + 1) % Limit;
}

}  // namespace veltrix
