#pragma once
// The threshold: set by hand, or following the background noise, which is measured in both modes.

#include <cstdint>
#include <functional>

#include "common/class_median.h"
#include "common/detection.h"
#include "platform/error_convention.h"

namespace veltrix {

/// The raw level that lies `dDecibels` below DecibelReference.
double RawLevel(double dDecibels);

/// How many decibels a raw level lies below DecibelReference. A level of 0 or below raises InvalidCall.
double DecibelsBelowReference(double dRaw);

/// Raw automatic level for a noise figure: three times the figure, lowered by `lThresholdOffset` decibels. A
/// figure so small that three times it has no integer part raises InvalidCall.
std::int32_t CalcAutoThreshold(double dNoiseLevel, std::int32_t lThresholdOffset);

/// The noise figure whose automatic level is `lThreshold`. REQUIRES lThreshold > 0.
double CalcNoiseFromThreshold(std::int32_t lThreshold, std::int32_t lThresholdOffset);

/// Decides the threshold of detection. Levels are raw sample units; decibels are below DecibelReference.
/// Owned by the form; the sample loop reads lThreshold for each frame and feeds Update().
class NoiseControl {
  public:
    NoiseControl();

    /// Sets lThreshold from the manual level iTresholdQuotient.
    void CalcThreshold();

    /// Sets the noise figure at start so that the automatic level begins at the present threshold.
    void StartNoiseLevel();

    /// Takes the envelope of one quiet frame into the noise figure and, in automatic mode, moves the
    /// threshold. Failures of its steps go to `failures`; false when these say that the caller is to be left.
    bool Update(double dEnvelope, FailureHandler& failures);

    /// Begins anew to look for the largest and smallest automatic level, from the present threshold.
    void RestartExtremes();

    std::int32_t lThreshold = 324;        ///< the level in force
    std::int16_t iTresholdQuotient = 80;  ///< manual level, 1 to 100 dB
    std::int32_t lThresholdOffset = 0;    ///< offset of the automatic level, -5 to 5 dB; positive lowers it
    std::int16_t iMinAuto = 99;           ///< limit of the automatic level, 0 to 120 dB
    bool bAutomatic = false;              ///< OptionAutoDetectionWindow

    /// The automatic level, its extremes since they were last logged, and the noise level.
    std::int32_t LAutoThreshold() const { return lAutoThreshold; }
    std::int32_t LNoiseMax() const { return lNoiseMax; }
    std::int32_t LNoiseMin() const { return lNoiseMin; }
    double DNoiseLevel() const { return dNoiseLevel; }

    /// Called by Update() with the candidate level's whole decibels, to show lAutoThreshold, lThreshold and
    /// these.
    std::function<void(double qAuto)> OnMeasured;

  private:
    ClassMedian NoiseMedian;          // the last 27 envelope readings
    double dNoiseLevel = 108;         // smoothed: 5 standard deviations of the envelope
    double dMeasured = 0;             // latest unsmoothed figure
    double dAutoDecibels = 0;         // lAutoThreshold in whole decibels
    std::int32_t lAutoThreshold = 0;  // candidate automatic level
    std::int32_t lMinAutoThreshold = 0;
    std::int32_t lNoiseMax = 0;  // extremes of lAutoThreshold since they were last logged
    std::int32_t lNoiseMin = 0;
};

}  // namespace veltrix
