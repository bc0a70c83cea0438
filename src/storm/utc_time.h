#pragma once
// Instants of universal time, fine enough for a fraction of a sample.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veltrix {

/// Nanoseconds since 1 January 1970 00:00 UTC, leap seconds left out; holds the years 1678 to 2261.
using UtcTime = std::int64_t;

/// The length of a second in UtcTime.
inline constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;

/// The instant of a stamp "YYYY-MM-DDTHH:MM:SS", to which a fraction of up to nine digits and a "Z" may be
/// added; "/" may stand for "-" and a blank for "T". Always read as UTC. Nothing when the text is none, or
/// lies outside the years 1970 to 2199.
std::optional<UtcTime> ParseUtc(std::string_view text);

/// "YYYY-MM-DDTHH:MM:SS.ffffffZ", the microseconds cut off, not rounded.
std::string UtcText(UtcTime time);

}  // namespace veltrix
