#pragma once
// What a storm is made of: the cells that flash and the stations that listen.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "storm/utc_time.h"

namespace veltrix {

/// A patch of sky that produces strikes, evenly over its disc.
struct StormCell {
    std::string name;
    double latitude = 0;   ///< of its centre at the start of each drift, degrees
    double longitude = 0;  ///< degrees
    double radius = 0;     ///< km
    double rate = 0;       ///< strikes a minute, on average
    double strength = 0;   ///< median peak at 100 km, raw sample units
    double spread = 0;     ///< standard deviation of the strength, dB
    double speed = 0;      ///< of the drift, km/h
    double direction = 0;  ///< the way it drifts, degrees clockwise from north
    double period = 0;     ///< hours after which it begins anew at its first place
};

/// A pair of loop antennas with a sound card.
struct StormStation {
    std::string name;
    double latitude = 0;      ///< degrees
    double longitude = 0;     ///< degrees
    double bearingError = 0;  ///< degrees that the antenna shows too much
    double noise = 0;         ///< raw sample units, rms, in each channel
    double hum = 0;           ///< amplitude of the mains hum, raw sample units, alike in both channels
    double humFrequency = 0;  ///< Hz
    double clockError = 0;    ///< ppm that the sample clock runs fast; kept to 0.001 ppm
};

/// One storm. Everything that is heard of it is a pure function of this and of the time.
struct Scenario {
    std::string name;  ///< of the file or built-in scenario, for messages
    std::uint64_t seed = 0;
    UtcTime start = 0;  ///< no strike before; the cells stand at their first places then
    std::vector<StormCell> cells;
    std::vector<StormStation> stations;

    /// The place of a station in `stations` by its name, without regard to case; the empty name is the first.
    /// Raises InvalidCall, with the names that there are, when no station has it.
    std::size_t StationIndex(std::string_view station) const;
};

/// The scenario of an INI text. `name` is used in messages. Raises InvalidCall with one line that names the
/// scenario, the section and the key, when something is missing, unknown or out of range.
Scenario ParseScenario(std::string_view text, std::string_view name);

/// The scenario of the file `name`; where there is no such file, the built-in one of that name. Raises
/// FileNotFound when there is neither, PermissionDenied when the file cannot be read, InvalidCall as
/// ParseScenario() does.
Scenario LoadScenario(const std::string& name);

/// The text of a built-in scenario.
std::optional<std::string_view> BuiltInScenario(std::string_view name);
/// The names of the built-in scenarios, for messages: "demo".
std::string BuiltInNames();

}  // namespace veltrix
