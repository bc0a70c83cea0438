#include "detection/detector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "common/arithmetic.h"
#include "common/calc_angles.h"
#include "common/detection.h"

namespace veltrix {

namespace {

constexpr std::int32_t WindowFrames = 99;     // shortest pulse, and capacity of the fit
constexpr std::int32_t NoiseInterval = 1000;  // one quiet frame in so many feeds the noise figure
constexpr double ClippingLimit = 32500;       // frames at or above it do not enter the fit
constexpr double ScopeLimit = 32000;          // frames at or above it do not reach the X-Y scope
constexpr std::size_t LeastLoud = 8;          // frames to take one by one where no pulse began
constexpr std::size_t ScopeFrames = 100;      // what the scopes remember
constexpr std::size_t CounterLimit = 2100000000;

const double RadiansToDegrees = 180 / (4 * std::atan(1.0));

}  // namespace

Detector::Detector(NoiseControl& noise, PulseReceiver& receiver, std::function<std::int32_t()> tickElapsed)
    : noise_(noise), receiver_(receiver), tickElapsed_(std::move(tickElapsed)) {
    LineFit.Init(WindowFrames);
}

bool Detector::Process(std::span<const std::int16_t> samples, FailureHandler& failures) {
    const std::size_t whole = samples.size() - samples.size() % 2;
    if (!ProcessWhole(samples.first(whole), failures)) return false;
    if (whole == samples.size()) return true;
    const std::array<std::int16_t, 2> last{samples.back(), 0};
    return ProcessWhole(last, failures);
}

bool Detector::ProcessWhole(std::span<const std::int16_t> samples, FailureHandler& failures) {
    while (!samples.empty()) {
        if (bSkipSamples) {
            CountFrames(samples.size() / 2);
            return true;
        }
        // The frame that feeds the noise figure is the last one of its row, for it may move the threshold.
        const auto untilNoise = static_cast<std::size_t>(NoiseInterval - lNoiseFrames);
        row_.Take(samples.first(std::min(samples.size(), 2 * untilNoise)), antenna, bHighPass);
        at_ = 0;
        fed_ = 0;
        bDrawing_ = scopes_ && scopes_->Drawing();
        const bool goesOn = ProcessRow(failures);
        if (goesOn) FeedPending(at_);
        row_.Leave(at_);
        samples = samples.subspan(2 * at_);
        if (!goesOn) return false;
    }
    return true;
}

/// Takes the row's frames, all of them unless the options change.
bool Detector::ProcessRow(FailureHandler& failures) {
    const std::size_t size = row_.Size();
    while (at_ < size && IsRowValid()) {
        if (Idle()) PassQuiet();
        if (at_ < size && !ProcessSome(failures)) return false;
    }
    return true;
}

/// Whether the rest of the row may be taken as it stands.
bool Detector::IsRowValid() {
    bCalledOut_ = false;
    return !bSkipSamples && row_.IsShapedBy(antenna, bHighPass);
}

/// Passes over frames that change nothing but the counts.
void Detector::PassQuiet() {
    const std::size_t end =
        std::min(row_.Size(), at_ + static_cast<std::size_t>(NoiseInterval - 1 - lNoiseFrames));
    const std::size_t quiet =
        row_.QuietFrames(at_, end, std::min(static_cast<double>(noise_.lThreshold), ScopeLimit));
    at_ += quiet;
    CountFrames(quiet);
    lNoiseFrames += static_cast<std::int32_t>(quiet);
}

/// Takes frames one by one until the pulse and its traces are through, or a good many. Leaves at once when
/// something outside has changed the options.
bool Detector::ProcessSome(FailureHandler& failures) {
    const auto some = std::span(some_).first(std::min(row_.Size() - at_, some_.size()));
    row_.Measure(at_, some);
    for (std::size_t i = 0; i < some.size() && (i < LeastLoud || !Idle()); ++i) {
        dNS = some[i].dNS;
        dEW = some[i].dEW;
        dEnvelope = some[i].dEnvelope;
        const bool goesOn = ProcessFrame(failures);
        ++at_;
        if (!goesOn) return false;
        if (bCalledOut_ && !IsRowValid()) break;
    }
    return true;
}

void Detector::CountFrames(std::size_t frames) {
    lSampleCounter =
        static_cast<std::int32_t>((static_cast<std::size_t>(lSampleCounter) + frames) % CounterLimit);
}

/// One frame. The order of the steps is the detector's contract.
bool Detector::ProcessFrame(FailureHandler& failures) {
    lSampleCounter = NextCount(lSampleCounter);
    if (noise_.lThreshold > dEnvelope && ++lNoiseFrames == NoiseInterval && !FeedNoise(failures))
        return false;
    if (scopes_ && (bDrawing_ || dEnvelope >= ScopeLimit) && !FeedScopes(failures)) return false;
    const bool begins = dEnvelope > noise_.lThreshold && lPulseSamples == 0 && !bInhibit;
    if (begins && !Trigger(failures)) return false;
    return lPulseSamples < 1 || FollowPulse(failures);
}

bool Detector::FeedNoise(FailureHandler& failures) {
    lNoiseFrames = 0;
    bCalledOut_ = true;
    FeedPending(at_);
    return noise_.Update(dEnvelope, failures);
}

bool Detector::FeedScopes(FailureHandler& failures) {
    FeedPending(at_);
    fed_ = at_ + 1;
    bCalledOut_ = true;
    const bool goesOn = RunSteps(
        failures, [this] { scopes_->ScopeTrigger(ScopeValue(dEnvelope)); },
        [this] {
            if (dEnvelope < ScopeLimit) scopes_->ScopeTriggerXY(dNS, dEW);
        });
    bDrawing_ = scopes_->Drawing();
    return goesOn;
}

/// Gives the scopes the frames of the row before `end` that they have not had.
void Detector::FeedPending(std::size_t end) {
    if (!scopes_ || fed_ == end) return;
    const std::size_t count = end - fed_;
    const std::size_t last = std::min(count, ScopeFrames);
    std::array<double, ScopeFrames> ns;
    std::array<double, ScopeFrames> ew;
    row_.Unpack(end - last, std::span(ns).first(last), std::span(ew).first(last));
    scopes_->QuietFrames(count, std::span(ns).first(last), std::span(ew).first(last));
    fed_ = end;
}

bool Detector::Trigger(FailureHandler& failures) {
    bCalledOut_ = true;
    return RunSteps(
        failures,
        [this] {
            if (!scopes_) return;
            FeedPending(at_ + 1);
            scopes_->Arm();
            bDrawing_ = scopes_->Drawing();
        },
        [this] {
            lPulseSamples = 1;
            lTriggerCount = NextCount(lTriggerCount);
        },
        [this] { receiver_.OnTrigger(); },
        [this] {
            dPeakNS = dNS;
            dPeakEW = dEW;
            dPeakEnvelope = dEnvelope;
            dArea = dEnvelope - noise_.lThreshold;
            pulse_.dLocalSample = lSampleCounter;
            pulse_.dStopwatchTime = tickElapsed_();
            LineFit.Init(WindowFrames);
        });
}

bool Detector::FollowPulse(FailureHandler& failures) {
    // The peak may be clipped, but the pair that gives its direction never is.
    if (dEnvelope > dPeakEnvelope) {
        dPeakEnvelope = dEnvelope;
        if (dEnvelope < ClippingLimit) {
            dPeakNS = dNS;
            dPeakEW = dEW;
        }
    }
    if (noise_.lThreshold <= dEnvelope) {
        dArea += dEnvelope - noise_.lThreshold;
        if (dEnvelope < ClippingLimit) LineFit.Update(dEW, dNS);
    } else if (lPulseSamples < 5) {
        LineFit.Update(dEW, dNS);  // so that a pulse that starts with a single spike has a few points
    }
    ++lPulseSamples;
    const bool faded = dEnvelope <= 0.3 * dPeakEnvelope || dEnvelope <= noise_.lThreshold;
    return lPulseSamples <= WindowFrames || !faded || Evaluate(failures);
}

bool Detector::Evaluate(FailureHandler& failures) {
    bCalledOut_ = true;
    FeedPending(at_ + 1);
    return RunSteps(
               failures, [&] { lPulseSamples = 0; }, [&] { receiver_.OnPulseEnd(); },
               [&] {
                   dHalf = 0;
                   if (CalcAtan2(dPeakEW, dPeakNS) * RadiansToDegrees > 180) dHalf = 180;
               },
               [&] { line_ = LineFit.GetABYX(); }, [&] { pulse_.dFitError = LineFit.GetFitError2(line_); },
               [&] {
                   dSlopeAngle = std::atan(line_.a);
                   if (scopes_) scopes_->MarkFit(dSlopeAngle, dPeakEnvelope * 20);
               },
               [&] { pulse_.dDir = CalcModulo(90 - dSlopeAngle * RadiansToDegrees + dHalf, 360); },
               [&] { pulse_.N = LineFit.N; }, [&] { receiver_.ShowClipping(dPeakEnvelope > ClippingLimit); },
               [&] { pulse_.dAmp = dArea <= 0 ? -100 : -DecibelsBelowReference(dArea); }) &&
           receiver_.Deliver(pulse_, failures);
}

}  // namespace veltrix
