#pragma once
// What the sound card of one station hears of a storm.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "storm/propagation.h"
#include "storm/scenario.h"
#include "storm/strike_generator.h"

namespace veltrix {

/// Frames a second of a sample clock without error.
inline constexpr int StormSampleRate = 22050;

/// The sample clock of a station: frame k stands at scenario start + k / (22050 (1 + clock error)). All
/// recorders of a station share this row of instants, so the same frame is the same for all of them, noise
/// included.
class SampleGrid {
  public:
    SampleGrid(UtcTime start, double clockErrorPpm);

    /// The instant of a frame, cut to a nanosecond. Frames before the start have negative numbers.
    UtcTime TimeOf(std::int64_t frame) const;
    /// The first frame that is not before `time`.
    std::int64_t FrameFrom(UtcTime time) const;
    /// Time between two frames, s.
    double Period() const;

  private:
    UtcTime start_;
    std::int64_t framesPerGigasecond_;
};

/// Renders frames one after the other: 16-bit samples, left (north-south) and right (east-west) in turn.
/// Pulses, hum and noise are added up, rounded to the nearest number and saturated. The memory it uses does
/// not grow. The scenario must outlive it.
class Renderer {
  public:
    /// Begins with the first frame of the station's grid that is not before `start`.
    Renderer(const Scenario& scenario, std::size_t station, UtcTime start);

    /// The next frames, as many as `samples` holds pairs.
    void Render(std::span<std::int16_t> samples);

    /// The instant of the next frame.
    UtcTime Time() const { return grid_.TimeOf(next_); }
    const SampleGrid& Grid() const { return grid_; }

  private:
    static constexpr std::int64_t BlockFrames = 1024;

    struct Pulse {
        UtcTime time = 0;
        double left = 0;
        double right = 0;
    };

    void RenderBlock(std::int64_t block);
    void AddNoiseAndHum(std::int64_t firstFrame);
    void AddPulse(const Pulse& pulse, UtcTime blockTime);
    void FindPulses(UtcTime from, UtcTime to);

    const StormStation& station_;
    StrikeGenerator strikes_;
    Propagation propagation_;
    SampleGrid grid_;
    std::uint64_t noiseKey_;
    std::int64_t next_;

    // The block that frames are handed out of, at present; blocks begin at multiples of their size.
    std::int64_t block_;
    std::array<double, 2 * BlockFrames> sums_{};
    std::array<std::int16_t, 2 * BlockFrames> samples_{};

    // The pulses of all strikes from pulsesFrom_ to pulsesTo_.
    UtcTime pulsesFrom_ = 0;
    UtcTime pulsesTo_ = 0;
    std::vector<Pulse> pulses_;
};

}  // namespace veltrix
