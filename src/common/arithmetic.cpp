#include "common/arithmetic.h"

#include <cmath>
#include <limits>

#include "common/failure.h"

namespace veltrix {

namespace {

template <class Int>
Int RoundTo(double value, CodeLine where) {
    const double rounded = RoundTiesToEven(value);
    // Written so that NaN fails the test too.
    if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
        throw Failure(errors::Overflow, "Overflow", "Veltrix", where);
    return static_cast<Int>(rounded);
}

}  // namespace

std::int32_t RoundToLong(double value, CodeLine where) {
    return RoundTo<std::int32_t>(value, where);
}

std::int16_t RoundToInteger(double value, CodeLine where) {
    return RoundTo<std::int16_t>(value, where);
}

double IntegerPart(double value) {
    return std::floor(value);
}

double Divide(double numerator, double denominator, CodeLine where) {
    if (denominator == 0) {
        if (numerator == 0) throw Failure(errors::Overflow, "Overflow", "Veltrix", where);
        throw Failure(errors::DivisionByZero, "Division by zero", "Veltrix", where);
    }
    return numerator / denominator;
}

double Ln(double value, CodeLine where) {
    if (!(value > 0))
        throw Failure(errors::InvalidCall, "Invalid procedure call or argument", "Veltrix", where);
    return std::log(value);
}

}  // namespace veltrix
