#pragma once
// A row of frames as detection sees them: turned, filtered and measured many at once, in loops that the
// compiler can vectorise.

#include <array>
#include <cstdint>
#include <span>

#include "detection/filters.h"

namespace veltrix {

/// How the two antennas stand; applied to each frame in this order.
struct AntennaOptions {
    bool bInvertNS = false;  ///< Check1: negate the north-south sample
    bool bAdd90 = false;     ///< Check2: rotate by +90 degrees
    bool bSub90 = false;     ///< Check3: rotate by -90 degrees

    bool operator==(const AntennaOptions&) const = default;
};

/// Some frames on their way into the detector. The values are those of Filter2() and of arithmetic frame by
/// frame to the bit: they are worked out as whole numbers, in units of 1/8 behind the filter, and the
/// filter's own steps are exact.
///
/// Owned by the detector. Holds the two filters, which stay where they are until Leave(). Nothing allocates.
class SampleRow {
  public:
    /// One frame behind inversion, rotation and filter.
    struct Frame {
        double dNS = 0;
        double dEW = 0;
        double dEnvelope = 0;
    };

    /// The number of frames that one row holds at most.
    static constexpr std::size_t MostFrames = 1000;

    /// Turns the frames that `samples` begins with, left and right in turn, up to MostFrames of them, and
    /// filters them if `bHighPass`.
    void Take(std::span<const std::int16_t> samples, const AntennaOptions& antenna, bool bHighPass);

    /// The number of frames in the row.
    std::size_t Size() const { return size_; }
    /// Whether the frames stand as these options want them.
    bool IsShapedBy(const AntennaOptions& antenna, bool bHighPass) const {
        return antenna == antenna_ && bHighPass == bHighPass_;
    }

    /// How many frames from `first` on, up to the one before `end`, are surely below `dLevel`. A frame less
    /// than a millionth below it may count as not below.
    std::size_t QuietFrames(std::size_t first, std::size_t end, double dLevel) const;

    /// Puts the frames from `first` on into `frames`. REQUIRES the row to hold as many.
    void Measure(std::size_t first, std::span<Frame> frames) const;

    /// Puts the channels of frames from `first` on into `ns` and `ew`. REQUIRES the row to hold as many, and
    /// both to be of one length.
    void Unpack(std::size_t first, std::span<double> ns, std::span<double> ew) const;

    /// Moves the filters behind the first `frames` frames, for what comes next. Ends the row.
    void Leave(std::size_t frames);

  private:
    using Values = std::array<std::int32_t, MostFrames>;

    double Step() const { return bHighPass_ ? 1.0 / 8 : 1; }
    const Values& SeenNS() const { return bHighPass_ ? filteredNS_ : turnedNS_; }
    const Values& SeenEW() const { return bHighPass_ ? filteredEW_ : turnedEW_; }

    ClassNotchFilter FilterNS, FilterEW;
    AntennaOptions antenna_;
    bool bHighPass_ = true;
    std::size_t size_ = 0;
    Values turnedNS_{}, turnedEW_{};      // behind inversion and rotation
    Values filteredNS_{}, filteredEW_{};  // behind the filter, times 8
};

}  // namespace veltrix
