#include "health/verdicts.h"

#include <algorithm>
#include <cmath>

namespace veltrix {

std::string_view VerdictName(Verdict verdict) {
    constexpr std::array<std::string_view, 4> Names{"unknown", "good", "watch", "bad"};
    return Names[static_cast<std::size_t>(verdict)];
}

Finding JudgeSound(const HealthReport& report) {
    if (!report.detecting) return {Verdict::Bad, "detection has stopped"};
    if (report.sound.arriving)
        return report.sound.isDigitalSilence ? Finding{Verdict::Bad, "digital silence"}
                                             : Finding{Verdict::Good, "arriving"};
    if (report.recorder && report.recorder->state == "silent") return {Verdict::Bad, "digital silence"};
    if (report.recorder && report.recorder->state == "waiting") return {Verdict::Bad, "recorder waits"};
    if (report.recorder && report.recorder->state == "ended") return {Verdict::Bad, "recorder has ended"};
    if (report.uptime < StartSeconds) return {Verdict::None, "starting"};
    return {Verdict::Bad, "no sound"};
}

Finding JudgeLevel(const SoundLevel& minute) {
    const auto frames = static_cast<double>(minute.frames);
    if (frames < NominalRate) return {Verdict::None, "not measured"};
    if (static_cast<double>(minute.clippedFrames) > frames * MostClippedPart)
        return {Verdict::Bad, "clipping"};
    const bool isLow = std::ranges::any_of(
        minute.channels, [](const SoundLevel::Channel& channel) { return channel.PeakDb() < LeastPeakDb; });
    return isLow ? Finding{Verdict::Bad, "too low"} : Finding{Verdict::Good, "good"};
}

Finding JudgeRate(const HealthReport& report) {
    if (report.framesLostHour > 0) return {Verdict::Watch, "frames lost"};
    if (!report.sound.rate) return {Verdict::None, "not measured"};
    const MeasuredRate& measured = *report.sound.rate;
    if (std::abs(measured.rate - NominalRate) > NominalRate * RateTolerance + measured.uncertainty)
        return {Verdict::Bad, "not nominal"};
    return {Verdict::Good, "nominal"};
}

Finding JudgeThreshold(const HealthReport& report) {
    if (report.sound.frames == 0) return {Verdict::None, "not measured"};
    return report.threshold.raw < report.noise.raw ? Finding{Verdict::Watch, "in the noise"}
                                                   : Finding{Verdict::Good, "above the noise"};
}

Finding JudgeStrikes(const Rates& strikes) {
    if (strikes.minute > MostStrikesMinute) return {Verdict::Watch, "too many"};
    return strikes.hour > 0 ? Finding{Verdict::Good, "some"} : Finding{Verdict::None, "none"};
}

Finding JudgePeers(const HealthReport& report) {
    if (report.linesDropped.hour > 0) return {Verdict::Watch, "lines dropped"};
    if (report.peers.empty()) return {Verdict::None, "alone"};
    const bool isMissing = std::ranges::any_of(
        report.peers, [](const PeerHealth& peer) { return peer.isClient && !peer.IsConnected(); });
    return isMissing ? Finding{Verdict::Watch, "not all connected"} : Finding{Verdict::Good, "connected"};
}

Finding JudgePublication(const HealthReport& report) {
    const std::int64_t waiting = report.published ? report.publishedAgo : report.uptime;
    if (waiting > LatePublication) return {Verdict::Watch, "late"};
    return report.published ? Finding{Verdict::Good, "published"} : Finding{Verdict::None, "not yet"};
}

Finding JudgeDisk(const std::optional<DiskSpace>& disk) {
    if (!disk) return {Verdict::None, "not known"};
    if (disk->free < LeastDisk) return {Verdict::Bad, "full"};
    return disk->free < LowDisk ? Finding{Verdict::Watch, "nearly full"} : Finding{Verdict::Good, "free"};
}

Finding JudgeClock(const std::optional<bool>& synchronised) {
    if (!synchronised) return {Verdict::None, "not known"};
    return *synchronised ? Finding{Verdict::Good, "synchronised"}
                         : Finding{Verdict::Watch, "not synchronised"};
}

Finding JudgeErrors(std::uint64_t errors) {
    return errors == 0 ? Finding{Verdict::Good, "none"} : Finding{Verdict::Watch, "see the error log"};
}

std::array<NamedFinding, 10> JudgeAll(const HealthReport& report) {
    return {{{"sound", JudgeSound(report)},
             {"level", JudgeLevel(report.sound.minute)},
             {"rate", JudgeRate(report)},
             {"threshold", JudgeThreshold(report)},
             {"strikes", JudgeStrikes(report.strikes)},
             {"peers", JudgePeers(report)},
             {"publication", JudgePublication(report)},
             {"disk", JudgeDisk(report.disk)},
             {"clock", JudgeClock(report.clockSynchronised)},
             {"errors", JudgeErrors(report.errors)}}};
}

Verdict WorstOf(const HealthReport& report) {
    Verdict worst = Verdict::None;
    for (const NamedFinding& named : JudgeAll(report)) worst = std::max(worst, named.finding.verdict);
    return worst;
}

}  // namespace veltrix
