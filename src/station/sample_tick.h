#pragma once
// Timer1_Timer: the spine of the station, ten times a second.

#include <cstdint>
#include <functional>
#include <string>

#include "detection/block_intake.h"
#include "detection/detector.h"
#include "health/sound_meter.h"
#include "platform/platform.h"
#include "station/pulse_delivery.h"
#include "timebase/c_stop_watch_mm.h"

namespace veltrix {

/// Decides about failures inside a tick. The first of a number is reported and answered by the user; the same
/// number again leaves the tick without a word.
class TickFailures final : public FailureHandler {
  public:
    explicit TickFailures(ErrorReporter& errors) : report_(errors) {}
    AfterFailure OnFailure(const Failure& failure) override;
    /// The last error number seen, 0 when there was none.
    int LastNumber() const { return lastNumber_; }

  private:
    ReportFailures report_;
    int lastNumber_ = 0;
};

/// Looks for a finished block of the recorder, runs it through the detector and deletes it. Owned by the
/// form.
class SampleTick {
  public:
    SampleTick(FormControls& controls, Platform& platform, ErrorReporter& errors, PulseDelivery& delivery,
               NoiseControl& noise, std::string strVersion);

    /// One tick. Never runs inside itself: a call while one is running is noted and does nothing.
    void Timer1_Timer();

    /// The detector that takes the samples.
    Detector& TheDetector() { return detector_; }

    /// What came from the recorder.
    SoundMeter sound;

    /// Full name of the block file; empty until the form is loaded.
    std::string sAudioFile;

    /// Called once if a repeated failure has left the recursion flag set, which ends detection until the next
    /// start.
    std::function<void(int lNumber)> OnStandstill;

  private:
    void ShowCaption(std::int32_t elapsed);
    void BeginBlock();
    bool TakeBlock();

    FormControls& controls_;
    Clock& clock_;
    ErrorReporter& errors_;
    PulseDelivery& delivery_;
    CStopWatchMM stopwatch_;
    TickFailures failures_;
    Detector detector_;
    BlockIntake intake_;
    std::string strVersion_;
    std::int32_t lPrevTickClock = 0;
    std::int32_t lTickClock = 0;
    std::int32_t lSamplesInFile = 0;      // frames of the present block
    std::int32_t lSamplesInPrevFile = 0;  // frames of the block before
    std::int32_t lBlockClock = 0;         // of the tick that took the last block
    bool bBlockSeen = false;
    bool bRunning = false;  // the recursion flag
    bool bStandstillTold = false;
};

}  // namespace veltrix
