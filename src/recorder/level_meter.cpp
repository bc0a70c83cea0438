#include "recorder/level_meter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "recorder/decibel_text.h"

namespace veltrix {

namespace {

constexpr double LowestShown = -80;       // dB, at the left end of a bar
constexpr std::size_t FiguresWidth = 46;  // at most
constexpr const char* Names[] = {"left  N-S", "right E-W"};

const char* TextOf(LevelMeter::Verdict verdict) {
    switch (verdict) {
        case LevelMeter::Verdict::Nothing:
            return "no sound";
        case LevelMeter::Verdict::TooLow:
            return "too low";
        case LevelMeter::Verdict::Good:
            return "good";
        case LevelMeter::Verdict::Clipping:
            break;
    }
    return "CLIPPING";
}

/// Columns of a bar of `width` up to a level.
std::size_t ColumnsUpTo(double decibels, std::size_t width) {
    if (!(decibels > LowestShown)) return 0;
    const double part = std::min(1 - decibels / LowestShown, 1.0);
    return static_cast<std::size_t>(std::lrint(part * static_cast<double>(width)));
}

}  // namespace

void LevelMeter::Add(const SoundLevel& level, std::uint64_t clippedFrames, Moment now) {
    SoundLevel counted = level;
    // Where the source tells of clipping that the resampling has hidden, the louder channel it was.
    if (clippedFrames > level.clippedFrames) {
        counted.clippedFrames = clippedFrames;
        counted.channels[level.channels[0].peak >= level.channels[1].peak ? 0 : 1].clips = true;
    }
    second_.Advance(now.time_since_epoch() / std::chrono::milliseconds(100));
    second_.Add(counted);
    hold_.Advance(now.time_since_epoch() / std::chrono::seconds(1));
    hold_.Add(counted);
    total_.Add(counted);
    lastSecond_ = second_.All();
    held_ = hold_.All();
}

LevelMeter::Verdict LevelMeter::VerdictOf(std::size_t channel) const {
    const SoundLevel::Channel& held = held_.channels[channel];
    if (held.peak == 0) return Verdict::Nothing;
    if (held.clips) return Verdict::Clipping;
    return held.PeakDb() < LeastPeakDb ? Verdict::TooLow : Verdict::Good;
}

std::string LevelMeter::FiguresOf(std::size_t channel) const {
    const SoundLevel::Channel& now = lastSecond_.channels[channel];
    char text[80];
    std::snprintf(text, sizeof text, "peak %5s  rms %5s  hold %5s dB  %s", DecibelText(now.PeakDb()).c_str(),
                  DecibelText(now.RmsDb(lastSecond_.frames)).c_str(),
                  DecibelText(held_.channels[channel].PeakDb()).c_str(), TextOf(VerdictOf(channel)));
    return text;
}

std::array<std::string, 2> LevelMeter::Bars(std::size_t width) const {
    std::array<std::string, 2> bars;
    for (std::size_t channel = 0; channel < 2; ++channel) {
        const std::string before = std::string(Names[channel]) + " [";
        const std::size_t columns = std::max(width, LeastWidth) - before.size() - FiguresWidth - 2;
        const SoundLevel::Channel& now = lastSecond_.channels[channel];
        std::string bar(columns, ' ');
        std::fill_n(bar.begin(), ColumnsUpTo(now.PeakDb(), columns), '-');
        std::fill_n(bar.begin(), ColumnsUpTo(now.RmsDb(lastSecond_.frames), columns), '#');
        if (const std::size_t hold = ColumnsUpTo(held_.channels[channel].PeakDb(), columns); hold > 0)
            bar[hold - 1] = held_.channels[channel].clips ? '!' : '|';
        bars[channel] = before + bar + "] " + FiguresOf(channel);
    }
    return bars;
}

std::string LevelMeter::Line() const {
    return std::string(Names[0]) + "  " + FiguresOf(0) + "   " + Names[1] + "  " + FiguresOf(1);
}

std::string LevelMeter::Summary() const {
    if (total_.frames == 0) return "no sound came";
    if (!HasHeardSound()) return "only zeros came";
    const auto figures = [this](std::size_t channel) {
        return std::string(Names[channel]) + " peak " + DecibelText(total_.channels[channel].PeakDb()) +
               " rms " + DecibelText(total_.channels[channel].RmsDb(total_.frames)) + " dB";
    };
    return std::to_string(total_.frames) + " frames: " + figures(0) + ", " + figures(1) + ", " +
           std::to_string(total_.clippedFrames) + " frames clipped";
}

}  // namespace veltrix
