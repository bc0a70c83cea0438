#pragma once
// Levels as text.

#include <cmath>
#include <cstdio>
#include <string>

namespace veltrix {

/// "-12.3"; "-inf" for minus infinity.
inline std::string DecibelText(double decibels) {
    if (!std::isfinite(decibels)) return "-inf";
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", decibels);
    return text;
}

}  // namespace veltrix
