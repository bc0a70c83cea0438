#pragma once
// The detector: the state machine that every frame of samples runs through and that finds lightning pulses.

#include <array>
#include <cstdint>
#include <functional>
#include <span>

#include "detection/class_lkk.h"
#include "detection/consumers.h"
#include "detection/noise_control.h"
#include "detection/sample_row.h"
#include "platform/error_convention.h"

namespace veltrix {

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
/// Frames are shaped and measured in rows, and those that stay below the threshold while nothing is going on
/// are passed over in rows; the outcome is the same to the bit as frame by frame. Whatever runs outside of
/// the detector finds it between two frames: options may change there, and then count from the next frame on.
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

    /// How the antennas stand, from the next frame on.
    AntennaOptions antenna;
    bool bHighPass = true;            ///< the detection filter is on
    bool bSkipSamples = false;        ///< count frames, but drop them
    bool bInhibit = false;            ///< no trigger
    std::int32_t lTriggerCount = 0;   ///< triggers since the polar display was last cleared
    std::int32_t lSampleCounter = 0;  ///< frames read since start, wrapping to 0 at 2100000000

  private:
    bool ProcessWhole(std::span<const std::int16_t> samples, FailureHandler& failures);
    bool ProcessRow(FailureHandler& failures);
    bool ProcessSome(FailureHandler& failures);
    bool ProcessFrame(FailureHandler& failures);
    bool IsRowValid();
    void PassQuiet();
    bool Idle() const { return lPulseSamples == 0 && !bDrawing_; }
    void CountFrames(std::size_t frames);
    bool FeedNoise(FailureHandler& failures);
    bool FeedScopes(FailureHandler& failures);
    void FeedPending(std::size_t end);
    bool Trigger(FailureHandler& failures);
    bool FollowPulse(FailureHandler& failures);
    bool Evaluate(FailureHandler& failures);

    NoiseControl& noise_;
    PulseReceiver& receiver_;
    std::function<std::int32_t()> tickElapsed_;
    ScopeFeed* scopes_ = nullptr;

    SampleRow row_;
    std::array<SampleRow::Frame, 100> some_{};  // frames of the row, measured
    std::size_t at_ = 0;                        // the row's frame in hand
    std::size_t fed_ = 0;                       // frames of the row that the scopes have had
    bool bDrawing_ = false;    // the scopes are building a trace: they get each frame in its turn
    bool bCalledOut_ = false;  // something outside has run, which may have changed the options

    ClassLKK LineFit;
    double dNS = 0;  // of the frame in hand
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
};

}  // namespace veltrix
