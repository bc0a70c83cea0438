#pragma once
// Which figures are healthy: the limits, and the words for what lies beyond them.

#include <array>
#include <string_view>

#include "health/health_report.h"

namespace veltrix {

/// How good or bad a finding is.
enum class Verdict {
    None,   ///< nothing to judge yet, or nothing that could be wrong
    Good,   ///< as it should be
    Watch,  ///< works, but somebody should look into it
    Bad     ///< does not work
};

/// A verdict and, in a word or two, why.
struct Finding {
    Verdict verdict = Verdict::None;
    std::string_view word = "";
};

/// "unknown", "good", "watch" or "bad".
std::string_view VerdictName(Verdict verdict);

/// A near strike may clip for some milliseconds; more frames of a minute than this part are a gain too high.
/// Peaks below LeastPeakDb are one too low.
inline constexpr double MostClippedPart = 1e-4;
/// Sound cards keep their rate to 0.01 %; ten times that is a wrong setting or lost sound.
inline constexpr double RateTolerance = 1e-3;
/// More detections in a minute than any storm within reach makes: the threshold lies in the noise.
inline constexpr std::uint64_t MostStrikesMinute = 1000;
/// Bytes on the disk: logs and pictures of some weeks, and of a day or so.
inline constexpr std::uint64_t LowDisk = 512ULL << 20;
inline constexpr std::uint64_t LeastDisk = 64ULL << 20;
/// Publications come every 600 s.
inline constexpr std::int64_t LatePublication = 900;
/// In so many seconds after start the first sound has come.
inline constexpr std::int64_t StartSeconds = 10;

/// Whether sound arrives, and is more than exact zeros.
Finding JudgeSound(const HealthReport& report);
/// "too low", "good" or "clipping"; none while there is less than a second of sound.
Finding JudgeLevel(const SoundLevel& minute);
/// Measured rate, and frames lost in the last hour.
Finding JudgeRate(const HealthReport& report);
/// How the threshold lies over the noise.
Finding JudgeThreshold(const HealthReport& report);
Finding JudgeStrikes(const Rates& strikes);
/// Stations that this one should be connected to, and lines dropped in the last hour.
Finding JudgePeers(const HealthReport& report);
Finding JudgePublication(const HealthReport& report);
Finding JudgeDisk(const std::optional<DiskSpace>& disk);
Finding JudgeClock(const std::optional<bool>& synchronised);
Finding JudgeErrors(std::uint64_t errors);

/// A finding under the name of what is judged.
struct NamedFinding {
    std::string_view figure;
    Finding finding;
};

/// All of the above, in this order.
std::array<NamedFinding, 10> JudgeAll(const HealthReport& report);

/// The worst of them.
Verdict WorstOf(const HealthReport& report);

}  // namespace veltrix
