#pragma once
// The detector: the state machine that every frame of samples runs through and that finds lightning pulses.

#include <array>
#include <cstdint>
#include <functional>
#include <span>

#include "detection/class_lkk.h"
#include "detection/consumers.h"
#include "detection/filters.h"
#include "detection/noise_control.h"
#include "platform/error_convention.h"

namespace veltrix {

/// How the two antennas stand; applied to each frame in this order.
struct AntennaOptions {
    bool bInvertNS = false;  ///< Check1: negate the north-south sample
    bool bAdd90 = false;     ///< Check2: rotate by +90 degrees
    bool bSub90 = false;     ///< Check3: rotate by -90 degrees
};

/// What the station does about a pulse. Only called while samples are processed.
class PulseReceiver {
  public:
    virtual ~PulseReceiver() = default;
    /// A pulse has begun; the number of triggers since the count was last cleared has changed.
    virtual void OnTrigger() = 0;
    /// A pulse has ended: inhibits detection if the user wishes so.
    virtual void OnPulseEnd() = 0;
    /// Shows whether the pulse was clipped.
    virtual void ShowClipping(bool bClipped) = 0;
    /// Delivers the finished pulse. False when `failures` says that the tick is to be left.
    virtual bool Deliver(const Pulse& pulse, FailureHandler& failures) = 0;
};

/// Takes blocks of frames as one stream, filters them, compares their envelope with the threshold and
/// measures each pulse. A pulse lasts at least 99 frames and has no upper limit; it may go on in the next
/// block.
///
/// Owned by the form, with the noise control that sets its threshold. No allocation per frame.
///
/// Frames that stay below the threshold while nothing is going on are worked through in rows that the
/// compiler can vectorise; the outcome is the same to the bit as frame by frame, since the filter's
/// arithmetic is exact.
class Detector {
  public:
    /// `tickElapsed` gives the milliseconds since the present tick began.
    Detector(NoiseControl& noise, PulseReceiver& receiver, std::function<std::int32_t()> tickElapsed);

    /// Runs samples, left and right in turn, through the detector. A last sample without its right one counts
    /// as a frame with a right sample of 0. A failed step is `failures`' decision; false when it says that
    /// the tick is to be left, the frame in hand then being the last one taken.
    bool Process(std::span<const std::int16_t> samples, FailureHandler& failures);

    /// The scopes, or null.
    void SetScopes(ScopeFeed* scopes) { scopes_ = scopes; }

    AntennaOptions antenna;
    bool bHighPass = true;            ///< the detection filter is on
    bool bSkipSamples = false;        ///< count frames, but drop them
    bool bInhibit = false;            ///< no trigger
    std::int32_t lTriggerCount = 0;   ///< triggers since the polar display was last cleared
    std::int32_t lSampleCounter = 0;  ///< frames read since start, wrapping to 0 at 2100000000

  private:
    struct Frame {
        double dNS;
        double dEW;
    };

    bool ProcessFrame(std::int16_t iLeft, std::int16_t iRight, FailureHandler& failures);
    bool Idle() const;
    std::size_t ProcessQuiet(std::span<const std::int16_t> samples, std::size_t wanted);
    void CountFrames(std::size_t frames);
    std::size_t QuietFrames(std::size_t frames, double unit) const;
    void Turn(std::span<const std::int16_t> samples, std::size_t frames);
    void FeedScopesQuiet(std::size_t frames, double unit);
    Frame Shape(std::int16_t iLeft, std::int16_t iRight);
    bool FeedScopes(FailureHandler& failures);
    bool Trigger(FailureHandler& failures);
    bool FollowPulse(FailureHandler& failures);
    bool Evaluate(FailureHandler& failures);

    NoiseControl& noise_;
    PulseReceiver& receiver_;
    std::function<std::int32_t()> tickElapsed_;
    ScopeFeed* scopes_ = nullptr;

    ClassNotchFilter FilterNS, FilterEW;
    ClassLKK LineFit;
    double dNS = 0;
    double dEW = 0;
    double dEnvelope = 0;
    std::int32_t lPulseSamples =
        0;  // 0 while idle, else 1 + frames of this pulse that went through the whole loop
    double dPeakEnvelope = 0;
    double dPeakNS = 0;  // of the frame that set the peak, among those below the clipping limit
    double dPeakEW = 0;
    double dArea = 0;
    double dHalf = 0;
    double dSlopeAngle = 0;  // direction of the fitted line, radians anticlockwise from east
    ClassLKK::Line line_;
    Pulse pulse_;
    std::int32_t lNoiseFrames = 0;  // quiet frames, wrapping at 1000

    // Work rows of ProcessQuiet(): turned samples, then what detection sees, in units of 1/8 behind the
    // filter.
    static constexpr std::size_t RowFrames = 500;
    std::array<std::int32_t, RowFrames> rowNS_{}, rowEW_{}, seenNS_{}, seenEW_{};
};

}  // namespace veltrix
