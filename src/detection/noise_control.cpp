#include "detection/noise_control.h"

#include <cmath>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

const double dLn10 = std::log(10.0);
constexpr std::int32_t NoiseReadings = 27;

}  // namespace

double RawLevel(double dDecibels) {
    return DecibelReference * std::exp(-dDecibels / 20 * dLn10);
}

double DecibelsBelowReference(double dRaw) {
    return -20 * Ln(dRaw / DecibelReference) / dLn10;
}

std::int32_t CalcAutoThreshold(double dNoiseLevel, std::int32_t lThresholdOffset) {
    const double q = DecibelsBelowReference(IntegerPart(3 * dNoiseLevel)) + lThresholdOffset;
    return RoundToLong(RawLevel(q));
}

double CalcNoiseFromThreshold(std::int32_t lThreshold, std::int32_t lThresholdOffset) {
    return RawLevel(DecibelsBelowReference(lThreshold) - lThresholdOffset) / 3;
}

NoiseControl::NoiseControl() {
    NoiseMedian.Start(NoiseReadings);
}

void NoiseControl::CalcThreshold() {
    lThreshold = RoundToLong(RawLevel(iTresholdQuotient));
}

void NoiseControl::StartNoiseLevel() {
    dNoiseLevel = CalcNoiseFromThreshold(lThreshold, lThresholdOffset);
}

bool NoiseControl::Update(double dEnvelope, FailureHandler& failures) {
    return RunSteps(
        failures, [&] { NoiseMedian.Update(dEnvelope); },
        // Five standard deviations; with the factor 3 of CalcAutoThreshold() the level lies at 15 of them.
        [&] { dMeasured = std::sqrt(NoiseMedian.Sigma()) * 5; },
        // A time constant of some 333 updates, 15 s of quiet signal: single disturbances do not show.
        [&] { dNoiseLevel = (dMeasured - dNoiseLevel) * 0.003 + dNoiseLevel; },
        [&] { lAutoThreshold = CalcAutoThreshold(dNoiseLevel, lThresholdOffset); },
        [&] {
            lMinAutoThreshold = RoundToLong(RawLevel(iMinAuto));
            if (lAutoThreshold < lMinAutoThreshold) lAutoThreshold = lMinAutoThreshold;
        },
        [&] { dAutoDecibels = IntegerPart(DecibelsBelowReference(lAutoThreshold)); },
        [&] {
            if (OnMeasured) OnMeasured(dAutoDecibels);
        },
        [&] {
            if (lNoiseMax == 0 || lAutoThreshold > lNoiseMax) lNoiseMax = lAutoThreshold;
            if (lNoiseMin == 0 || lAutoThreshold < lNoiseMin) lNoiseMin = lAutoThreshold;
        },
        [&] {
            if (bAutomatic) lThreshold = lAutoThreshold;
        });
}

void NoiseControl::RestartExtremes() {
    lNoiseMax = lThreshold;
    lNoiseMin = lThreshold;
}

}  // namespace veltrix
