#pragma once
// The rate at which frames really arrive.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace veltrix {

/// A measured rate and how sure it is.
struct MeasuredRate {
    double rate = 0;         ///< frames a second
    double uncertainty = 0;  ///< the true rate lies this close to it, frames a second
    double seconds = 0;      ///< that were measured
};

/// Divides the frames between two blocks by the time between them, over the last hour at most. Times are
/// milliseconds of a clock that never goes back and does not wrap.
class SampleRateMeter {
  public:
    /// A block is taken: `frames` is the number read before it since start. A break of more than BreakSeconds
    /// begins the measurement anew, since frames were lost in it.
    void Block(std::int64_t milliseconds, std::uint64_t frames);

    /// What is measured; none in the first LeastSeconds.
    std::optional<MeasuredRate> Measured() const;

    /// The longest pause between blocks, and the shortest measurement that says anything.
    static constexpr int BreakSeconds = 5;
    static constexpr int LeastSeconds = 10;
    /// Blocks are taken every 100 ms, and come late by that or less unless the computer is busy: this much
    /// either end of the measurement may be wrong, in seconds.
    static constexpr double BlockJitter = 0.1;

  private:
    struct Mark {
        std::int64_t milliseconds;
        std::uint64_t frames;
    };
    static constexpr std::int64_t BetweenMarks = 60'000;

    std::array<Mark, 61> marks_{};  // one a minute, a ring
    std::size_t newest_ = 0;
    std::size_t count_ = 0;
    Mark last_{};
};

}  // namespace veltrix
