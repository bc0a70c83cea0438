#pragma once
// What the stations of a storm hear: its sound, rendered, through the real detector.

#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "bench/ear.h"
#include "storm/renderer.h"
#include "storm/sample_counter.h"

namespace veltrix {

/// A pulse as a station measured it, and the strike that it is of.
struct Heard : Caught {
    std::optional<std::size_t> strike;  ///< place in the list of strikes; none when it belongs to none
    double bearingError = 0;            ///< degrees that it lies clockwise of the exact antenna bearing
};

/// The degrees from `exact` to `found`, two lines without direction, -90 to 90.
inline double LineError(double found, double exact) {
    return std::remainder(found - exact, 180);
}

/// All that a station hears of the first seconds of a storm, with the truth about each pulse. `strikes` are
/// those of that time.
inline std::vector<Heard> HeardAt(const Scenario& scenario, std::size_t station,
                                  const std::vector<Strike>& strikes, int seconds) {
    constexpr std::int32_t BlockFrames = 2205;
    constexpr std::int64_t BlockMilliseconds = 100;
    constexpr UtcTime TriggerDelay = 300'000;  // from the onset of a pulse to its trigger, about
    const auto counter = static_cast<std::int32_t>(1'000'000 * (station + 1));
    Renderer renderer(scenario, station, scenario.start);
    const std::int64_t firstFrame = renderer.Grid().FrameFrom(scenario.start);
    Ear ear(counter);
    std::vector<std::int16_t> samples(2 * BlockFrames);
    for (std::int64_t end = BlockMilliseconds; end <= 1000 * seconds; end += BlockMilliseconds) {
        renderer.Render(samples);
        ear.Listen(samples, end);
    }
    const ArrivalTimes arrivals(strikes, scenario.stations[station]);
    const Propagation propagation;
    std::vector<Heard> heard;
    for (const Caught& caught : ear.caught) {
        Heard one{caught, {}, 0};
        // The counter stands at 1 for the first frame.
        const auto frame = static_cast<std::int64_t>(one.pulse.dLocalSample) - counter - 1 + firstFrame;
        one.strike = arrivals.StrikeAt(renderer.Grid().TimeOf(frame) - TriggerDelay);
        if (one.strike)
            one.bearingError =
                LineError(one.pulse.dDir,
                          propagation.At(scenario.stations[station], strikes[*one.strike]).antennaBearing);
        heard.push_back(one);
    }
    return heard;
}

}  // namespace veltrix
