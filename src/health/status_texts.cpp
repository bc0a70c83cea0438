#include "health/status_texts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::int64_t MinuteSeconds = 60;
constexpr std::int64_t HourSeconds = 3600;
constexpr std::int64_t DaySeconds = 86400;

/// A time span in its two largest units, such as "5 min 12 s".
std::string SpanText(std::int64_t seconds) {
    const auto both = [](std::int64_t large, const char* unit, std::int64_t small, const char* lesser) {
        return std::to_string(large) + ' ' + unit + ' ' + std::to_string(small) + ' ' + lesser;
    };
    if (seconds >= DaySeconds)
        return both(seconds / DaySeconds, "d", seconds % DaySeconds / HourSeconds, "h");
    if (seconds >= HourSeconds)
        return both(seconds / HourSeconds, "h", seconds % HourSeconds / MinuteSeconds, "min");
    if (seconds >= MinuteSeconds) return both(seconds / MinuteSeconds, "min", seconds % MinuteSeconds, "s");
    return std::to_string(seconds) + " s";
}

std::string BytesText(std::uint64_t bytes) {
    constexpr double Kilo = 1000;
    auto amount = static_cast<double>(bytes);
    for (const char* const unit : {"B", "kB", "MB", "GB"}) {
        if (amount < Kilo)
            return FormatNeutral(amount, amount < 10 && bytes >= 1000 ? "0.0" : "0") + ' ' + unit;
        amount /= Kilo;
    }
    return FormatNeutral(amount, amount < 10 ? "0.0" : "0") + " TB";
}

std::string DbText(double db) {
    return std::isfinite(db) ? FormatNeutral(std::round(db) + 0.0, "0") : "-inf";
}

std::string LevelText(const DetectionLevel& level) {
    return level.db ? FormatNeutral(*level.db, "0") + " dB" : std::string("none");
}

StatusCell Cell(std::string_view label, Verdict verdict, std::string text, std::string toolTip) {
    if (verdict >= Verdict::Watch) text.insert(0, "! ");
    return {label, std::move(text), std::move(toolTip), verdict};
}

std::string RatesText(const std::string& what, const Rates& rates) {
    return what + ": " + std::to_string(rates.minute) + " in the last minute, " + std::to_string(rates.hour) +
           " in the last hour, " + std::to_string(rates.total) + " since start. ";
}

StatusCell Sound(const HealthReport& report) {
    const SoundHealth& sound = report.sound;
    const Finding judged = JudgeSound(report);
    std::string text = "Sound " + std::string(judged.word);
    if (judged.verdict == Verdict::Good) text = "Sound ok";
    if (judged.verdict == Verdict::Bad) {
        text = judged.word;
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
        if (!sound.arriving) text += ' ' + SpanText(sound.secondsAgo);
    }
    std::string tip = std::string("Sound ") + (sound.arriving ? "arrives" : "does not arrive") + " since " +
                      GeneralDate(sound.since) + ". " + std::to_string(sound.blocks) + " blocks, " +
                      std::to_string(sound.frames) + " frames since start.";
    if (report.recorder)
        tip += " The recorder (" + report.recorder->source + "): " + report.recorder->state + '.';
    return Cell(StatusLabels[0], judged.verdict, std::move(text), std::move(tip));
}

StatusCell Level(const HealthReport& report) {
    const SoundLevel& minute = report.sound.minute;
    const Finding judged = JudgeLevel(minute);
    const auto& [left, right] = minute.channels;
    const std::string peaks = DbText(left.PeakDb()) + " / " + DbText(right.PeakDb()) + " dB";
    std::string text = "Level " + std::string(judged.word);
    if (judged.verdict == Verdict::Good) text = "Level " + peaks;
    return Cell(StatusLabels[1], judged.verdict, std::move(text),
                "Input level " + std::string(judged.word) +
                    ". Last minute, left / right, of full scale: peak " + peaks + ", RMS " +
                    DbText(left.RmsDb(minute.frames)) + " / " + DbText(right.RmsDb(minute.frames)) + " dB. " +
                    std::to_string(minute.clippedFrames) + " clipped frames, " +
                    std::to_string(minute.zeroFrames) + " of exact zeros among " +
                    std::to_string(minute.frames) +
                    ". Clipped since start: " + std::to_string(report.sound.clipped) + '.');
}

StatusCell Rate(const HealthReport& report) {
    const Finding judged = JudgeRate(report);
    const std::optional<MeasuredRate>& rate = report.sound.rate;
    std::string text = rate ? FormatNeutral(rate->rate, "0") + " Hz" : "Rate " + std::string(judged.word);
    std::string tip = "Sample rate " + std::string(judged.word) + '.';
    if (rate)
        tip += " Measured " + FormatNeutral(rate->rate, "0.00") + " Hz, give or take " +
               FormatNeutral(rate->uncertainty, "0.00") + ", over " +
               SpanText(static_cast<std::int64_t>(rate->seconds)) + "; nominal " +
               FormatNeutral(NominalRate, "0") + " Hz.";
    if (report.framesLostHour > 0) text = "Lost " + std::to_string(report.framesLostHour) + " frames";
    if (report.recorder && report.recorder->framesLost)
        tip += " The recorder has lost " + std::to_string(*report.recorder->framesLost) +
               " frames since its start, " + std::to_string(report.framesLostHour) + " in the last hour.";
    return Cell(StatusLabels[2], judged.verdict, std::move(text), std::move(tip));
}

StatusCell Noise(const HealthReport& report) {
    const Finding judged = JudgeThreshold(report);
    return Cell(StatusLabels[3], judged.verdict,
                judged.verdict == Verdict::Watch ? "Threshold in the noise"
                                                 : "Threshold " + LevelText(report.threshold),
                "Threshold " + LevelText(report.threshold) + " (" + FormatNeutral(report.threshold.raw, "0") +
                    "), noise " + LevelText(report.noise) + " (" + FormatNeutral(report.noise.raw, "0") +
                    ", 5 standard deviations).");
}

StatusCell Strikes(const HealthReport& report) {
    const Finding judged = JudgeStrikes(report.strikes);
    return Cell(StatusLabels[4], judged.verdict,
                "Strikes " + std::to_string(report.strikes.minute) + "/min " +
                    std::to_string(report.strikes.hour) + "/h",
                RatesText("Strikes", report.strikes) + RatesText("Paired", report.pairs) +
                    RatesText("Located", report.located));
}

StatusCell Peers(const HealthReport& report) {
    const Finding judged = JudgePeers(report);
    std::string text = "No peers";
    if (!report.peers.empty())
        text = "Peers " + std::to_string(std::ranges::count_if(report.peers, &PeerHealth::IsConnected)) +
               " of " + std::to_string(report.peers.size());
    if (report.linesDropped.hour > 0) text = std::to_string(report.linesDropped.hour) + " lines dropped";
    std::string tip;
    for (const PeerHealth& peer : report.peers)
        tip += (peer.isClient ? "To " : "From ") +
               (peer.station.empty() ? std::string("unknown") : peer.station) + " (" + peer.address +
               "): " + peer.stateText + ". ";
    tip += RatesText("Lines dropped", report.linesDropped);
    return Cell(StatusLabels[5], judged.verdict, std::move(text), std::move(tip));
}

/// What is worst of disk, clock, errors and publication.
StatusCell Surroundings(const HealthReport& report) {
    const Finding disk = JudgeDisk(report.disk);
    const Finding clock = JudgeClock(report.clockSynchronised);
    const Finding errors = JudgeErrors(report.errors);
    const Finding publication = JudgePublication(report);
    const std::string free = report.disk ? BytesText(report.disk->free) : std::string("not known");
    const std::string errorCount =
        std::to_string(report.errors) + (report.errors == 1 ? " error" : " errors");
    struct Candidate {
        Verdict verdict;
        std::string text;
    };
    const std::array<Candidate, 4> candidates{{{disk.verdict, "Disk " + free},
                                               {errors.verdict, errorCount},
                                               {clock.verdict, "Clock not synced"},
                                               {publication.verdict, "Publication late"}}};
    const Candidate& worst = *std::ranges::max_element(candidates, {}, &Candidate::verdict);
    return Cell(StatusLabels[6], worst.verdict, worst.verdict >= Verdict::Watch ? worst.text : "Disk " + free,
                "Disk: " + free + " free. Clock: " + std::string(clock.word) +
                    ". Errors since start: " + std::to_string(report.errors) + ". Last publication: " +
                    (report.published ? GeneralDate(*report.published) : std::string("none yet")) + '.');
}

}  // namespace

std::array<StatusCell, StatusLabels.size()> StatusCells(const HealthReport& report) {
    return {Sound(report),   Level(report), Rate(report),        Noise(report),
            Strikes(report), Peers(report), Surroundings(report)};
}

ColourValue VerdictColour(Verdict verdict) {
    switch (verdict) {
        case Verdict::Good:
            return Rgb(0, 140, 60);
        case Verdict::Watch:
            return Rgb(200, 120, 0);
        case Verdict::Bad:
            return Rgb(210, 0, 0);
        case Verdict::None:
            break;
    }
    return White;
}

}  // namespace veltrix
