#pragma once
// The strikes of a storm.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "storm/scenario.h"

namespace veltrix {

/// One discharge, as nobody but the storm knows it.
struct Strike {
    UtcTime time = 0;
    double latitude = 0;   ///< degrees
    double longitude = 0;  ///< degrees
    std::size_t cell = 0;  ///< place in Scenario::cells
    double strength = 0;   ///< peak at 100 km, raw sample units
    int polarity = 1;      ///< 1 or -1
};

/// Hands out the strikes of a scenario. They are drawn afresh from seed, cell and second at each call, so
/// that every station, whenever it starts, hears the same storm. Keeps nothing but the scenario, which must
/// outlive it.
class StrikeGenerator {
  public:
    explicit StrikeGenerator(const Scenario& scenario);

    /// The strikes with `from` <= time < `to`, in the order of time.
    std::vector<Strike> Between(UtcTime from, UtcTime to) const;

  private:
    void AppendSecond(std::size_t cell, std::int64_t second, std::vector<Strike>& strikes) const;
    Strike Draw(std::size_t cell, std::int64_t second, std::uint64_t key) const;

    const Scenario& scenario_;
    std::vector<double> expMinusMean_;  // per cell, of its strikes a second
};

}  // namespace veltrix
