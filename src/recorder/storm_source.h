#pragma once
// Samples from a synthetic storm.

#include <filesystem>
#include <string>

#include "recorder/sample_source.h"
#include "recorder/truth_file.h"
#include "storm/renderer.h"

namespace veltrix {

/// Plays a storm as a station's sound card hears it. Its time is universal time at the start and goes on by
/// the monotonic clock and the station's clock error, as a sound card's does; a step of the computer's clock
/// does not disturb it.
class StormSource final : public SampleSource {
  public:
    /// `station`: its name; empty: the first. `truth`: the table that is written along; none
    /// where it is empty. Raises what
    /// LoadScenario() and Scenario::StationIndex() raise.
    StormSource(const std::string& scenario, const std::string& station, UtcTime now,
                std::filesystem::path truth, const Say& say);

    std::size_t Read(std::span<std::int16_t> samples, Moment now) override;

    /// The name of the station that listens.
    const std::string& Station() const { return scenario_.stations[station_].name; }

  private:
    Scenario scenario_;
    std::size_t station_;
    Renderer renderer_;
    Pacer pacer_;
    TruthFile truth_;
};

}  // namespace veltrix
