#pragma once
// Sound of a station with little to hear.

#include <random>

#include "support/samples.h"

namespace veltrix {

/// Noise of 30 rms in each channel, far below the threshold.
inline Samples Quiet(std::size_t frames) {
    std::mt19937 random(11);
    std::normal_distribution<> noise(0, 30);
    Samples samples(2 * frames);
    for (std::int16_t& sample : samples) sample = Clipped(noise(random));
    return samples;
}

/// Adds a burst of that bearing; its trigger is some 51 frames behind `frame`.
inline void AddBurst(Samples& samples, std::size_t frame, double bearing) {
    const Samples burst = Burst(bearing);
    for (std::size_t i = 0; i < burst.size(); ++i) samples[2 * frame + i] = burst[i];
}

}  // namespace veltrix
