#include "common/calc_angles.h"

#include <cmath>

#include "common/failure.h"

namespace veltrix {

double CalcModulo(double dValue, double dModulus) {
    if (!std::isfinite(dValue)) throw Failure(errors::Overflow, "Overflow", "ModCalcGlobe");
    // A far value comes near in one exact step, on the side from which the walk below ends as it would have.
    if (std::abs(dValue) > 1000 * dModulus)
        dValue = std::fmod(dValue, dModulus) + (dValue > 0 ? dModulus : 0);
    while (dValue < 0) dValue += dModulus;
    while (dValue > dModulus) dValue -= dModulus;
    return dValue;
}

double CalcAtan2(double x, double y) {
    if (x == 0 && y == 0) return 0;
    double r = std::abs(y) < std::abs(x) ? std::atan(y / x) : CalcPi / 2 - std::atan(x / y);
    // One after the other on the same r: in the fourth quadrant two of these can hold.
    if (-y > x && x < 0) r += CalcPi;
    if (y < 0 && x > 0) r += CalcPi;
    if (-y < x && y < 0) r += CalcPi;
    return r;
}

}  // namespace veltrix
