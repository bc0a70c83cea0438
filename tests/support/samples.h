#pragma once
// Samples whose answer is known: left and right in turn, as a sound card gives them.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace veltrix {

using Samples = std::vector<std::int16_t>;

/// The nearest sample to a value, as a sound card clips it.
inline std::int16_t Clipped(double value) {
    return static_cast<std::int16_t>(std::clamp(std::round(value), -32768.0, 32767.0));
}

/// 300 frames with one burst of 90 along `bearing`, in degrees, and of height `peak`, beginning at frame 50.
inline Samples Burst(double bearing, double peak = 9000) {
    Samples samples(2 * 300);
    const double angle = bearing * std::acos(-1.0) / 180;
    for (std::size_t k = 50; k < 140; ++k) {
        const double x = peak * std::cos(2.9 * static_cast<double>(k));
        samples[2 * k] = Clipped(x * std::cos(angle));
        samples[2 * k + 1] = Clipped(x * std::sin(angle));
    }
    return samples;
}

/// 400 frames, some of them at one level on the north-south antenna. At full scale they are a pulse that
/// leaves the line fit without a point, if the filter is off.
inline Samples Plateau(std::int16_t level, std::size_t first = 20, std::size_t count = 110) {
    Samples samples(2 * 400);
    for (std::size_t k = first; k < first + count; ++k) samples[2 * k] = level;
    return samples;
}

/// The bytes of a block file.
inline std::string BytesOf(const Samples& samples) {
    std::string bytes;
    for (const std::int16_t sample : samples)
        bytes += {static_cast<char>(sample & 0xff), static_cast<char>(sample >> 8)};
    return bytes;
}

}  // namespace veltrix
