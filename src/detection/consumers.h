#pragma once
// Who takes a detection after the detector, and the scopes that see every frame: what each must do, in the
// order of delivery. Rooms further up implement these and the station hands them in.

#include <cstddef>
#include <cstdint>
#include <span>

#include "common/colour.h"
#include "common/detection.h"
#include "platform/error_convention.h"

namespace veltrix {

/// A finished pulse as the detector measured it.
struct Pulse {
    double dDir = 0;            ///< bearing in degrees, 0 to 360, clockwise from north, known modulo 180
    double dAmp = 0;            ///< strength in decibels
    double dFitError = 0;       ///< percent; below 10 is a good pulse
    std::int32_t N = 0;         ///< points in the line fit
    double dLocalSample = 0;    ///< sample number at the threshold crossing
    double dStopwatchTime = 0;  ///< milliseconds from the start of the tick to the crossing
};

/// What the amplitude scope takes of an envelope.
constexpr double ScopeValue(double dEnvelope) {
    return 3 * dEnvelope;
}

/// The two scopes. They are offered every frame that is not skipped.
class ScopeFeed {
  public:
    virtual ~ScopeFeed() = default;
    /// A pulse has been triggered: both scopes begin a trace.
    virtual void Arm() = 0;
    /// One frame for the amplitude scope: the ScopeValue() of its envelope.
    virtual void ScopeTrigger(double dValue) = 0;
    /// One frame for the X-Y scope.
    virtual void ScopeTriggerXY(double dNS, double dEW) = 0;
    /// True while a trace is being built: frames must then come one by one.
    virtual bool Drawing() const = 0;
    /// `count` frames at once, of which the last ones are given (at least the last 100, or all). The same as
    /// that many calls of ScopeTrigger() and ScopeTriggerXY(). REQUIRES not Drawing(), and all envelopes
    /// below 32000. Draws nothing and raises nothing.
    virtual void QuietFrames(std::size_t count, std::span<const double> lastNS,
                             std::span<const double> lastEW) = 0;
    /// Marks the line fit of a finished pulse on the X-Y scope: the two points at `dRadius` from the centre
    /// in the direction `dAngle`, in radians anticlockwise from east, and opposite; the marks of the pulse
    /// before go.
    virtual void MarkFit(double dAngle, double dRadius) = 0;
};

/// Sends detections to the stations that are connected.
class DetectionBroadcaster {
  public:
    virtual ~DetectionBroadcaster() = default;
    /// Puts the detection on the send queue and sees to it that the queue is worked off.
    virtual void BroadcastDetection(const Detection& detection) = 0;
    /// Pushes one queued message out; called at the end of every tick.
    virtual void Timer6_Timer() = 0;
    /// Closes a ping that has had no answer for 2000 ms; called at the start of every tick.
    virtual void CloseStalePing() = 0;
};

/// Keeps the record from which the rate of the sample clock is computed.
class DriftRecord {
  public:
    virtual ~DriftRecord() = default;
    /// `d` is the precise time in days, `c` the sample number.
    virtual void Update(double d, double c) = 0;
};

/// What has become of a pulse at the last connected station.
struct Located {
    bool bLocated = false;          ///< paired, and a place found
    double LatitudeLightning = 0;   ///< of that place, degrees
    double LongitudeLightning = 0;  ///< degrees
};

/// Looks for the matching detection of each connected station.
class StationMatching {
  public:
    virtual ~StationMatching() = default;
    /// Offers the pulse to the Mapper of each connected station, shows the outcome and calls UpdateLink. With
    /// `bRealTime` each station divides the pulse's dStopwatchTime by 10 and takes that as its time, else the
    /// sample number. `located` is overwritten by one station after the other. A failed step is `failures`'
    /// decision; false when it says that the tick is to be left.
    virtual bool MapUpdateAll(Pulse& pulse, bool bRealTime, Located& located, FailureHandler& failures) = 0;
};

/// Counts located strikes near the place to watch.
class StrikeAlarm {
  public:
    virtual ~StrikeAlarm() = default;
    /// All in degrees: the place to watch, and the strike's.
    virtual void Update(double dAlarmLatitude, double dAlarmLongitude, double LatitudeLightning,
                        double LongitudeLightning) = 0;
};

/// The calibration table of the local station.
class LocalCalibration {
  public:
    virtual ~LocalCalibration() = default;
    /// The true bearing for a reported one, in degrees.
    virtual double DestinToSource(double dDestin) = 0;
};

/// The amplitudes that the displays show, in dB.
struct AmplitudeLimits {
    std::int16_t iDisplayAmpMin = -100;
    std::int16_t iDisplayAmpMax = 0;
};

/// The displays of detections.
class StrikeDisplays {
  public:
    virtual ~StrikeDisplays() = default;
    /// Plots one bearing and amplitude on the polar display.
    virtual void GyrelUpdate(double dDir, double dAmp, const AmplitudeLimits& limits, ColourValue color) = 0;
    /// Adds one detection to the history plot.
    virtual void UpdateDisplay(DateTime date, double dDir, double dAmp, const AmplitudeLimits& limits) = 0;
};

}  // namespace veltrix
