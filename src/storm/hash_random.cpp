#include "storm/hash_random.h"

#include <cmath>
#include <numbers>

namespace veltrix {

NormalPair NormalOf(std::uint64_t hash) {
    // Half a step is added, so that the logarithm never meets 0.
    const double u = (static_cast<double>(hash >> 32) + 0.5) * 0x1p-32;
    const double angle = 2 * std::numbers::pi * static_cast<double>(hash & 0xFFFFFFFF) * 0x1p-32;
    const double radius = std::sqrt(-2 * std::log(u));
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

}  // namespace veltrix
