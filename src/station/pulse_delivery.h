#pragma once
// The road of one strike: from the finished pulse to the log, the other stations, the alarm and the displays.

#include <functional>
#include <memory>

#include "common/detection.h"
#include "detection/consumers.h"
#include "detection/detector.h"
#include "detection/strike_log.h"
#include "health/rate_counter.h"
#include "platform/platform.h"
#include "station/settings_binding.h"
#include "timebase/precise_now.h"

namespace veltrix {

/// Those who take detections beside the strike log and the boxes of the form, in the order of delivery. A
/// place that nobody fills is null and passed over.
struct DetectionConsumers {
    std::function<void(const Detection&)> onDetection;  ///< told right after the strike log
    DetectionBroadcaster* broadcaster = nullptr;
    DriftRecord* clockDrift = nullptr;
    StationMatching* stations = nullptr;
    StrikeAlarm* alarm = nullptr;
    LocalCalibration* calibration = nullptr;
    StrikeDisplays* displays = nullptr;
};

/// Takes what the detector finds and passes it on in its fixed order. Owned by the form.
class PulseDelivery final : public PulseReceiver {
  public:
    PulseDelivery(FormControls& controls, SettingsBinding& settings, Platform& platform, StrikeLog& log,
                  PreciseNow& preciseNow);

    /// REQUIRES the detector that calls this object.
    void Attach(Detector& detector) { detector_ = &detector; }

    /// To be filled before the first detection.
    DetectionConsumers consumers;

    /// Detections delivered.
    RateCounter strikeCount;

    /// As their boxes have set them.
    AmplitudeLimits limits;

    /// First step of a tick concerning the strongest detection: 0 dB is never one.
    void CheckStrongest();

    /// Shows lTriggerCount in Text2.
    void ShowTriggerCount();

    void OnTrigger() override { ShowTriggerCount(); }
    void OnPulseEnd() override;
    void ShowClipping(bool bClipped) override;
    bool Deliver(const Pulse& pulse, FailureHandler& failures) override;

  private:
    void TimerDelay_Timer();
    void KeepStrongest(const Pulse& pulse);
    bool HandOn(const Pulse& pulse, FailureHandler& failures);
    bool Locate(Pulse& pulse, Located& located, FailureHandler& failures);
    bool WatchAndShow(const Pulse& pulse, const Located& located, FailureHandler& failures);
    void ShowPulse(const Pulse& pulse);
    double DisplayBearing(double dDir) const;

    FormControls& controls_;
    SettingsBinding& settings_;
    Clock& clock_;
    StrikeLog& log_;
    PreciseNow& preciseNow_;
    std::unique_ptr<Timer> TimerDelay;  // ends the inhibit
    Detector* detector_ = nullptr;
    double dStrongestAmp = -100;  // since start, or since the user last used the mouse on Text5
    double dStrongestDir = 0;
    DateTime dStrongestDate = 0;
};

}  // namespace veltrix
