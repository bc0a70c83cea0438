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
    /// A block is taken: `frames` is the number read since start, it included. A break of more than
    /// BreakSeconds begins the measurement anew, since frames may have been lost in it. What comes in the
    /// first SettleSeconds is not measured: a recorder hands over what has piled up faster than it was
    /// recorded.
    void Block(std::int64_t milliseconds, std::uint64_t frames);

    /// What is measured; none in the first LeastSeconds behind those of settling.
    std::optional<MeasuredRate> Measured() const;

    /// The longest pause between blocks, and the shortest measurement that says anything.
    static constexpr int BreakSeconds = 5;
    static constexpr int LeastSeconds = 10;
    static constexpr int SettleSeconds = 5;
    /// Blocks are looked for every 100 ms: either end of the measurement may be wrong by that, or by the time
    /// between two blocks where these are longer. In milliseconds.
    static constexpr std::int64_t BlockJitter = 100;

  private:
    struct Mark {
        std::int64_t milliseconds;
        std::uint64_t frames;
        std::int64_t gap;  // since the block before, milliseconds; BlockJitter at least
    };
    static constexpr std::int64_t BetweenMarks = 60'000;

    std::array<Mark, 61> marks_{};  // one a minute, a ring
    std::size_t newest_ = 0;
    std::size_t count_ = 0;
    Mark last_{};
    bool hasBegun_ = false;
    std::int64_t begun_ = 0;  // milliseconds of the first block
};

}  // namespace veltrix
