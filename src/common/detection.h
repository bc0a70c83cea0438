#pragma once
// The record of one strike as a station's parts pass it on.

#include <cstdint>

#include "common/date_time.h"

namespace veltrix {

/// Frames per second of both channels, everywhere.
inline constexpr double SampleRate = 22050.0;

/// The reference of all decibels: the area of a pulse at full scale (32768) over the whole detection window
/// of 99 frames above a zero threshold.
inline constexpr double DecibelReference = 3244032.0;

/// One strike heard by one station.
struct Detection {
    DateTime dDate = 0;  ///< clock of the computer when the pulse had ended
    double dDir = 0;     ///< bearing in degrees, 0 to 360, clockwise from north, known modulo 180
    double dAmp = 0;     ///< strength in decibels below DecibelReference; -100 when the area is not positive
    double dTime = 0;    ///< sample number of the first sample of the pulse
    std::int32_t lTickTime = 0;  ///< milliseconds from the start of the tick to the pulse
};

}  // namespace veltrix
