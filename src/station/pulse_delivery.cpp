#include "station/pulse_delivery.h"

#include <string>

#include "common/arithmetic.h"
#include "common/calc_angles.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr int InhibitMilliseconds = 200;
constexpr double NoStrength = -100;
constexpr double GoodFit = 10.0;  // percent; poorer pulses stay out of the history plot

}  // namespace

PulseDelivery::PulseDelivery(FormControls& controls, SettingsBinding& settings, Platform& platform,
                             StrikeLog& log, PreciseNow& preciseNow)
    : controls_(controls),
      settings_(settings),
      clock_(platform.clock),
      log_(log),
      preciseNow_(preciseNow),
      TimerDelay(platform.loop.MakeTimer([this] { TimerDelay_Timer(); })) {
    TimerDelay->SetInterval(InhibitMilliseconds);
    controls_.Text("Text5").OnMouse = [this](const MouseEvent&) { dStrongestAmp = NoStrength; };
}

void PulseDelivery::CheckStrongest() {
    if (dStrongestAmp == 0) dStrongestAmp = NoStrength;
}

void PulseDelivery::ShowTriggerCount() {
    controls_.Text("Text2").SetText(std::to_string(detector_->lTriggerCount));
}

void PulseDelivery::OnPulseEnd() {
    if (!controls_.Check("OptionInhibit").Checked()) return;
    detector_->bInhibit = true;
    TimerDelay->SetEnabled(true);
}

void PulseDelivery::TimerDelay_Timer() {
    TimerDelay->SetEnabled(false);
    detector_->bInhibit = false;
}

void PulseDelivery::ShowClipping(bool bClipped) {
    controls_.Caption("Label4").SetForeColor(bClipped ? Red : White);
}

bool PulseDelivery::Deliver(const Pulse& finished, FailureHandler& failures) {
    Pulse pulse = finished;
    Located located;
    strikeCount.Count();
    return HandOn(pulse, failures) && Locate(pulse, located, failures) &&
           WatchAndShow(pulse, located, failures);
}

/// The detection as it was measured, to all who keep it.
bool PulseDelivery::HandOn(const Pulse& pulse, FailureHandler& failures) {
    Detection detection;
    return RunSteps(
        failures, [&] { KeepStrongest(pulse); },
        [&] {
            detection = {clock_.Now(), pulse.dDir, pulse.dAmp, pulse.dLocalSample,
                         RoundToLong(pulse.dStopwatchTime)};
        },
        [&] { log_.FileUpdate(detection, ""); },
        [&] {
            if (consumers.onDetection) consumers.onDetection(detection);
        },
        [&] {
            if (consumers.broadcaster) consumers.broadcaster->BroadcastDetection(detection);
        },
        [&] {
            const DateTime now = preciseNow_.Now();
            if (consumers.clockDrift) consumers.clockDrift->Update(now, pulse.dLocalSample);
        });
}

bool PulseDelivery::Locate(Pulse& pulse, Located& located, FailureHandler& failures) {
    const bool bRealTime = controls_.Check("OptionRealTime").Checked();
    return !consumers.stations || consumers.stations->MapUpdateAll(pulse, bRealTime, located, failures);
}

bool PulseDelivery::WatchAndShow(const Pulse& pulse, const Located& located, FailureHandler& failures) {
    double dDir = pulse.dDir;
    const bool isShown = consumers.displays && !controls_.Check("OptionRemoteShow").Checked();
    return RunSteps(
        failures,
        [&] {
            if (located.bLocated && consumers.alarm)
                consumers.alarm->Update(ValNeutral(controls_.Text("txtAlarmLatitude").Text()),
                                        ValNeutral(controls_.Text("txtAlarmLongitude").Text()),
                                        located.LatitudeLightning, located.LongitudeLightning);
        },
        [&] { ShowPulse(pulse); },
        // From here on the bearing is the calibrated one, for the displays only.
        [&] { dDir = DisplayBearing(dDir); },
        [&] {
            if (isShown) consumers.displays->GyrelUpdate(dDir, pulse.dAmp, limits, Yellow);
        },
        [&] {
            controls_.Text("txtMindB").SetText(std::to_string(limits.iDisplayAmpMin) + " dB");
            controls_.Text("txtMaxdB").SetText(std::to_string(limits.iDisplayAmpMax) + " dB");
        },
        [&] {
            if (isShown && controls_.Check("Check4").Checked())
                consumers.displays->GyrelUpdate(dDir + 180, pulse.dAmp, limits, Yellow);
        },
        [&] {
            if (consumers.displays && pulse.dFitError < GoodFit)
                consumers.displays->UpdateDisplay(clock_.Now(), dDir, pulse.dAmp, limits);
        });
}

void PulseDelivery::KeepStrongest(const Pulse& pulse) {
    if (!(pulse.dAmp > dStrongestAmp)) return;
    dStrongestDir = pulse.dDir;
    dStrongestAmp = pulse.dAmp;
    dStrongestDate = clock_.Now();
    controls_.Text("Text5").SetText(FormatNeutral(dStrongestAmp, "00.0") + " dB   " +
                                    FormatNeutral(dStrongestDir, "000.0 °") + "   " +
                                    FormatDate(dStrongestDate, "HH:MM:SS"));
}

void PulseDelivery::ShowPulse(const Pulse& pulse) {
    controls_.Text("Text3").SetText(FormatNeutral(pulse.dDir, "000.0 °") + "  " +
                                    FormatNeutral(pulse.dFitError, "0.0 ") +
                                    "%  N:" + FormatNeutral(pulse.N, "0"));
    controls_.Text("Text4").SetText(FormatNeutral(pulse.dAmp, "00.0 dB") + "  " +
                                    GeneralNumber(pulse.dLocalSample));
}

double PulseDelivery::DisplayBearing(double dDir) const {
    if (!controls_.Check("OptionAngleCorrectionInGyrel").Checked()) return dDir;
    const double source = consumers.calibration ? consumers.calibration->DestinToSource(dDir) : dDir;
    return CalcModulo(source + settings_.Number("txtLocalCorrectionAngle"), 360);
}

}  // namespace veltrix
