#include "archive/station_replay.h"

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <ctime>

#include "common/arithmetic.h"
#include "common/detection.h"
#include "common/neutral_text.h"
#include "detection/strike_log.h"

namespace veltrix {

namespace {

constexpr double TickFrames = 2205;  // a station looks for a block every 100 ms
constexpr double MillisecondFrames = 22.05;
constexpr std::int64_t CounterWrap = 2100000000;
constexpr double StampSeconds = 2;     // that two stamps may be off between them
constexpr double ClockError = 100e-6;  // of a sample clock, at most

double DaysOf(std::int64_t frames) {
    return static_cast<double>(frames) / SampleRate / SecondsPerDay;
}

/// Local time of the file's last change; of standard input the present.
DateTime LastChangeOf(const std::string& name) {
    struct stat status {};
    const bool isFile = name != "-" && stat(name.c_str(), &status) == 0;
    const std::time_t when = isFile ? status.st_mtime : std::time(nullptr);
    std::tm local{};
    localtime_r(&when, &local);
    return DateTimeOf(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

}  // namespace

std::string LogLineOf(const HeardPulse& heard) {
    const Pulse& pulse = heard.pulse;
    return StrikeLogLine(
        {heard.date, pulse.dDir, pulse.dAmp, pulse.dLocalSample, RoundToLong(pulse.dStopwatchTime)});
}

StationReplay::StationReplay(const ReplayRules& rules)
    : rules_(rules), detector_(noise_, *this, [this] {
          return static_cast<std::int32_t>(std::fmod(detector_.lSampleCounter, TickFrames) /
                                           MillisecondFrames);
      }) {
    noise_.iTresholdQuotient = rules.threshold;
    noise_.CalcThreshold();
    noise_.StartNoiseLevel();
    noise_.OnMeasured = [this](double automatic) { TakeNoise(automatic); };
    detector_.bHighPass = rules.filter;
    detector_.antenna = rules.antenna;
}

void StationReplay::TakeNoise(double automatic) {
    const bool isFirst = played_.noiseReadings++ == 0;
    played_.noiseSum += noise_.DNoiseLevel();
    played_.quietestAuto = isFirst ? automatic : std::max(played_.quietestAuto, automatic);
    played_.loudestAuto = isFirst ? automatic : std::min(played_.loudestAuto, automatic);
}

/// As the file tells: by the stamp in its name, else by the time of its last change less its length.
DateTime StationReplay::StartOf(const std::string& name, std::int64_t frames,
                                std::optional<FileStamp> stamp) const {
    return stamp ? stamp->date : LastChangeOf(name) - DaysOf(frames);
}

/// Puts a recording behind those before it.
void StationReplay::JoinTo(const std::string& name, DateTime start, bool isStamped) {
    const auto before = static_cast<double>(pieceFrame_ - firstFrame_) / SampleRate;
    const double gap = (start - played_.end) * SecondsPerDay;
    const double tolerance = StampSeconds + ClockError * before;
    if (gap > tolerance) {
        const auto frames = static_cast<std::int64_t>(std::llround(gap * SampleRate));
        pieceFrame_ += frames;
        detector_.lSampleCounter =
            static_cast<std::int32_t>((detector_.lSampleCounter + frames) % CounterWrap);
        played_.gapFrames += frames;
        ++played_.gaps;
        ++run_;
    } else if (gap < -tolerance) {
        if (isStamped)
            throw BadRecording{name + ": begins " + FormatNeutral(-gap, "0") +
                               " s before the recording before it ends"};
        start = played_.end;  // files that were copied have lost their time
    }
    recordingStart_ = start;
}

void StationReplay::Play(const std::string& name) {
    ReadAhead recording(name, rules_.threads);
    const std::optional<FileStamp> stamp = StampInName(name);
    const DateTime told = StartOf(name, recording.Frames(), stamp);
    if (played_.recordings == 0) {
        if (rules_.start) shift_ = *rules_.start - told;
        recordingStart_ = played_.start = rules_.start.value_or(told);
        played_.isUniversal = stamp && stamp->isUniversal && !rules_.start;
    } else {
        JoinTo(name, told + shift_, stamp.has_value());
        played_.isUniversal = played_.isUniversal && stamp && stamp->isUniversal;
    }
    ++played_.recordings;
    firstFrame_ = pieceFrame_;
    SkipFailures failures;
    const auto keepEnd = [&] { played_.end = recordingStart_ + DaysOf(pieceFrame_ - firstFrame_); };
    keepEnd();
    for (;;) {
        const std::span<const std::int16_t> samples = recording.Next();
        if (samples.empty()) break;
        pieceCounter_ = detector_.lSampleCounter;
        detector_.Process(samples, failures);
        pieceFrame_ += std::ssize(samples) / 2;
        played_.frames += std::ssize(samples) / 2;
        keepEnd();
        if (OnProgress) OnProgress(recording);
    }
}

/// The frame that the detector has in hand, in the stream.
std::int64_t StationReplay::FrameNow() const {
    const std::int64_t taken = detector_.lSampleCounter - pieceCounter_;
    return pieceFrame_ + (taken + CounterWrap) % CounterWrap;
}

bool StationReplay::Deliver(const Pulse& pulse, FailureHandler& /*failures*/) {
    const auto since =
        (detector_.lSampleCounter - static_cast<std::int64_t>(pulse.dLocalSample) + CounterWrap) %
        CounterWrap;
    HeardPulse heard;
    heard.frame = FrameNow() - since;
    heard.date = recordingStart_ + DaysOf(heard.frame - firstFrame_);
    heard.run = run_;
    heard.isClipped = isClipped_;
    heard.pulse = pulse;
    if (OnPulse) OnPulse(heard);
    return true;
}

}  // namespace veltrix
