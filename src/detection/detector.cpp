#include "detection/detector.h"

#include <algorithm>
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
constexpr double FilterUnit = 8;              // outputs of the filter are multiples of 1/8
constexpr std::size_t LoudFrames = 20;        // frames to take one by one where no pulse began
constexpr std::size_t ScopeFrames = 100;      // what the scopes remember
constexpr std::size_t CounterLimit = 2100000000;

const double RadiansToDegrees = 180 / (4 * std::atan(1.0));

double Envelope(double dNS, double dEW) {
    return std::sqrt(dNS * dNS + dEW * dEW);
}

/// The 16-bit negation: -32768 has no positive counterpart and stays.
std::int16_t Negated(std::int16_t sample) {
    return static_cast<std::int16_t>(-static_cast<std::int32_t>(sample));
}

}  // namespace

Detector::Detector(NoiseControl& noise, PulseReceiver& receiver, std::function<std::int32_t()> tickElapsed)
    : noise_(noise), receiver_(receiver), tickElapsed_(std::move(tickElapsed)) {
    LineFit.Init(WindowFrames);
}

bool Detector::Process(std::span<const std::int16_t> samples, FailureHandler& failures) {
    const std::size_t frames = (samples.size() + 1) / 2;
    if (bSkipSamples) {
        CountFrames(frames);
        return true;
    }
    std::size_t frame = 0;
    while (frame < frames) {
        // The frame that feeds the noise figure may move the threshold under its own feet, so it never is in
        // a row.
        const auto untilNoise = static_cast<std::size_t>(NoiseInterval - 1 - lNoiseFrames);
        const auto rest = samples.subspan(2 * frame);
        const std::size_t wanted = std::min({rest.size() / 2, untilNoise, RowFrames});
        const std::size_t quiet = Idle() ? ProcessQuiet(rest, wanted) : 0;
        frame += quiet;
        if (quiet > 0 && quiet == wanted) continue;
        // Something is going on, or begins here: frame by frame until the pulse and its traces are through.
        const std::size_t least = frame + (untilNoise == 0 ? 1 : LoudFrames);
        for (; frame < frames && (frame < least || !Idle()); ++frame) {
            const std::int16_t right =
                2 * frame + 1 < samples.size() ? samples[2 * frame + 1] : std::int16_t{0};
            if (!ProcessFrame(samples[2 * frame], right, failures)) return false;
        }
    }
    return true;
}

bool Detector::Idle() const {
    return lPulseSamples == 0 && !(scopes_ && scopes_->Drawing());
}

void Detector::CountFrames(std::size_t frames) {
    lSampleCounter =
        static_cast<std::int32_t>((static_cast<std::size_t>(lSampleCounter) + frames) % CounterLimit);
}

/// Takes up to `wanted` frames at once, as many as stay below the threshold from the first one on. Returns
/// how many.
std::size_t Detector::ProcessQuiet(std::span<const std::int16_t> samples, std::size_t wanted) {
    if (wanted == 0) return 0;
    Turn(samples, wanted);
    const double unit = bHighPass ? FilterUnit : 1;
    if (bHighPass) {
        FilterNS.Filter2Ahead(std::span(rowNS_).first(wanted), std::span(seenNS_).first(wanted));
        FilterEW.Filter2Ahead(std::span(rowEW_).first(wanted), std::span(seenEW_).first(wanted));
    } else {
        std::swap(rowNS_, seenNS_);
        std::swap(rowEW_, seenEW_);
    }
    const std::size_t n = QuietFrames(wanted, unit);
    if (n == 0) return 0;
    if (bHighPass) {
        FilterNS.Filter2Pass(std::span(rowNS_).first(n));
        FilterEW.Filter2Pass(std::span(rowEW_).first(n));
    }
    CountFrames(n);
    lNoiseFrames += static_cast<std::int32_t>(n);
    if (scopes_) FeedScopesQuiet(n, unit);
    return n;
}

/// Samples as they stand after inversion and rotation, as whole numbers.
void Detector::Turn(std::span<const std::int16_t> samples, std::size_t frames) {
    std::int32_t* const ns = rowNS_.data();
    std::int32_t* const ew = rowEW_.data();
    const std::int16_t* const in = samples.data();
    for (std::size_t i = 0; i < frames; ++i) {
        ns[i] = in[2 * i];
        ew[i] = in[2 * i + 1];
    }
    if (antenna.bInvertNS)
        for (std::size_t i = 0; i < frames; ++i) ns[i] = static_cast<std::int16_t>(-ns[i]);
    if (antenna.bAdd90 == antenna.bSub90) return;  // none, or the two of them undo each other
    std::swap(rowNS_, rowEW_);
    std::int32_t* const turned = antenna.bAdd90 ? rowEW_.data() : rowNS_.data();
    for (std::size_t i = 0; i < frames; ++i) turned[i] = -turned[i];
}

/// How many envelopes at the row's start are surely below the threshold and the scope's limit. Squares are
/// compared in single precision against a limit lowered by more than its rounding.
std::size_t Detector::QuietFrames(std::size_t frames, double unit) const {
    const double level = std::min(static_cast<double>(noise_.lThreshold), ScopeLimit) * unit;
    if (level <= 0) return 0;
    const auto limit = static_cast<float>(level * level * (1 - 1e-6));
    const std::int32_t* const ns = seenNS_.data();
    const std::int32_t* const ew = seenEW_.data();
    const auto isLoud = [ns, ew, limit](std::size_t i) {
        const auto x = static_cast<float>(ns[i]);
        const auto y = static_cast<float>(ew[i]);
        return x * x + y * y >= limit ? 1 : 0;
    };
    std::int32_t loud = 0;
    for (std::size_t i = 0; i < frames; ++i) loud |= isLoud(i);
    if (loud == 0) return frames;
    std::size_t first = 0;
    while (isLoud(first) == 0) ++first;
    return first;
}

void Detector::FeedScopesQuiet(std::size_t frames, double unit) {
    const std::size_t last = std::min(frames, ScopeFrames);
    std::array<double, ScopeFrames> ns{};
    std::array<double, ScopeFrames> ew{};
    for (std::size_t i = 0; i < last; ++i) {
        ns[i] = seenNS_[frames - last + i] / unit;
        ew[i] = seenEW_[frames - last + i] / unit;
    }
    scopes_->QuietFrames(frames, std::span(ns).first(last), std::span(ew).first(last));
}

Detector::Frame Detector::Shape(std::int16_t iLeft, std::int16_t iRight) {
    Frame frame{static_cast<double>(antenna.bInvertNS ? Negated(iLeft) : iLeft), static_cast<double>(iRight)};
    if (antenna.bAdd90) frame = {frame.dEW, -frame.dNS};
    if (antenna.bSub90) frame = {-frame.dEW, frame.dNS};
    if (bHighPass)
        frame = {FilterNS.Filter2(frame.dNS, noise_.lThreshold),
                 FilterEW.Filter2(frame.dEW, noise_.lThreshold)};
    return frame;
}

/// One frame. The order of the steps is the detector's contract.
bool Detector::ProcessFrame(std::int16_t iLeft, std::int16_t iRight, FailureHandler& failures) {
    lSampleCounter = NextCount(lSampleCounter);
    if (bSkipSamples) return true;
    const Frame frame = Shape(iLeft, iRight);
    dNS = frame.dNS;
    dEW = frame.dEW;
    dEnvelope = Envelope(dNS, dEW);
    if (noise_.lThreshold > dEnvelope) {
        lNoiseFrames = (lNoiseFrames + 1) % NoiseInterval;
        if (lNoiseFrames == 0 && !noise_.Update(dEnvelope, failures)) return false;
    }
    if (scopes_ && !FeedScopes(failures)) return false;
    const bool begins = dEnvelope > noise_.lThreshold && lPulseSamples == 0 && !bInhibit;
    if (begins && !Trigger(failures)) return false;
    return lPulseSamples < 1 || FollowPulse(failures);
}

bool Detector::FeedScopes(FailureHandler& failures) {
    return RunSteps(
        failures, [this] { scopes_->ScopeTrigger(ScopeValue(dEnvelope)); },
        [this] {
            if (dEnvelope < ScopeLimit) scopes_->ScopeTriggerXY(dNS, dEW);
        });
}

bool Detector::Trigger(FailureHandler& failures) {
    return RunSteps(
        failures,
        [this] {
            if (scopes_) scopes_->Arm();
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
