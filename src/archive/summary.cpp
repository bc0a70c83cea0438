#include "archive/summary.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr double NoiseSigmas = 5;  // standard deviations of the envelope in the noise figure

[[gnu::format(printf, 1, 2)]] std::string Line(const char* format, ...) {
    char text[256];
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return std::string(text) + '\n';
}

std::string LengthOf(std::int64_t frames) {
    const auto seconds = static_cast<long long>(std::llround(static_cast<double>(frames) / SampleRate));
    char text[64];
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60, seconds % 60);
    return text;
}

std::string NoiseLines(const StationReplay& replay) {
    std::string text = Line("%-12s%.1f dB, %d in raw units", "threshold",
                            -DecibelsBelowReference(replay.Threshold()), replay.Threshold());
    const StationReplay::Played& played = replay.Sum();
    if (played.noiseReadings == 0) return text;
    const double figure = played.noiseSum / static_cast<double>(played.noiseReadings);
    text += Line("%-12smean deviation of the envelope %.1f raw units", "noise", figure / NoiseSigmas);
    text += Line("%-12san automatic threshold would have been -%.0f to -%.0f dB", "", played.quietestAuto,
                 played.loudestAuto);
    return text;
}

}  // namespace

std::int64_t Summary::HourOf(DateTime date) {
    // As the clock shows it, which rounds to the nearest millisecond.
    return static_cast<std::int64_t>(std::floor(std::round(date * SecondsPerDay * 1000) / 3600000));
}

void Summary::Take(const HeardPulse& heard) {
    Hour& hour = hours_[HourOf(heard.date)];
    if (hour.strikes == 0 || heard.pulse.dAmp > hour.strongest) hour.strongest = heard.pulse.dAmp;
    if (strikes_ == 0 || heard.pulse.dAmp > strongest_.pulse.dAmp) strongest_ = heard;
    ++hour.strikes;
    ++strikes_;
    if (!heard.isClipped) return;
    ++hour.clipped;
    ++clipped_;
}

std::string Summary::Text(const StationReplay& replay, double seconds) const {
    const StationReplay::Played& played = replay.Sum();
    std::string text = Line("%-12s%s to %s%s", "recorded", GeneralDate(played.start).c_str(),
                            GeneralDate(played.end).c_str(), played.isUniversal ? " UTC" : "");
    text += Line("%-12s%s in %d recording%s; %d gap%s, %s in all", "length", LengthOf(played.frames).c_str(),
                 played.recordings, played.recordings == 1 ? "" : "s", played.gaps,
                 played.gaps == 1 ? "" : "s", LengthOf(played.gapFrames).c_str());
    text += Line("%-12s%ld, of these clipped %ld", "strikes", strikes_, clipped_);
    if (strikes_ > 0)
        text +=
            Line("%-12s%s dB from %s degrees at %s", "strongest",
                 FormatNeutral(strongest_.pulse.dAmp, "0.0").c_str(),
                 FormatNeutral(strongest_.pulse.dDir, "0.0").c_str(), GeneralDate(strongest_.date).c_str());
    text += NoiseLines(replay);
    const double length = static_cast<double>(played.frames) / SampleRate;
    text += Line("%-12s%.2f s, %.0f times as fast as it was recorded", "took", seconds,
                 seconds > 0 ? length / seconds : 0);
    text += Line("%-18s %8s %8s %s", "hour", "strikes", "clipped", "strongest dB");
    for (const auto& [hour, sum] : hours_)
        text +=
            Line("%-18s %8ld %8ld %s",
                 FormatDate(static_cast<double>(hour) / 24 + 1e-6, "YYYY/MM/DD HH:00").c_str(), sum.strikes,
                 sum.clipped, sum.strikes > 0 ? FormatNeutral(sum.strongest, "0.0").c_str() : "-");
    return text;
}

}  // namespace veltrix
