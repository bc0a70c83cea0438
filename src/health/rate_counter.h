#pragma once
// How often something has happened lately.

#include <array>
#include <cstddef>
#include <cstdint>

namespace veltrix {

/// Counts events in a ring of the last hour's seconds. Count() costs a few additions, so it may stand
/// anywhere; the owner of the clock calls Advance().
class RateCounter {
  public:
    /// So many events in the present second.
    void Count(std::uint32_t events = 1);

    /// Moves on to the second `second` of any clock that never goes back; earlier ones are passed over. What
    /// was counted before the first call belongs to its second.
    void Advance(std::int64_t second);

    std::uint64_t LastMinute() const { return minute_; }  ///< in the present second and the 60 before
    std::uint64_t LastHour() const { return hour_; }      ///< in the present second and the 3600 before
    std::uint64_t Total() const { return total_; }        ///< since start

  private:
    static constexpr std::size_t Minute = 61;
    static constexpr std::size_t Hour = 3601;

    void Step();

    std::array<std::uint32_t, Hour> seconds_{};
    std::size_t now_ = 0;      // place of the present second
    std::int64_t second_ = 0;  // of the last Advance()
    bool started_ = false;
    std::uint64_t minute_ = 0;
    std::uint64_t hour_ = 0;
    std::uint64_t total_ = 0;
};

}  // namespace veltrix
