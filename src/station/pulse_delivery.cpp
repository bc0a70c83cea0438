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

void PulseDelivery::OnTrigger() {
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
    Detection detection;
    double dDir = pulse.dDir;
    bool bLocated = false;  // the last connected station has paired the detection and found a place
    const CheckBox& remoteOnly = controls_.Check("OptionRemoteShow");
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
        },
        [&] {
            if (consumers.stations) bLocated = consumers.stations->MapUpdateAll(pulse);
        },
        [&] {
            if (bLocated && consumers.alarm) consumers.alarm->Update();
        },
        [&] { ShowPulse(pulse, dDir); },
        // From here on the bearing is the calibrated one, for the displays only.
        [&] { dDir = DisplayBearing(dDir); },
        [&] {
            if (consumers.displays && !remoteOnly.Checked())
                consumers.displays->GyrelUpdate(dDir, pulse.dAmp);
        },
        [&] {
            controls_.Text("txtMindB").SetText(std::to_string(iDisplayAmpMin) + " dB");
            controls_.Text("txtMaxdB").SetText(std::to_string(iDisplayAmpMax) + " dB");
        },
        [&] {
            const bool opposite = controls_.Check("Check4").Checked() && !remoteOnly.Checked();
            if (consumers.displays && opposite) consumers.displays->GyrelUpdate(dDir + 180, pulse.dAmp);
        },
        [&] {
            if (consumers.displays && pulse.dFitError < GoodFit)
                consumers.displays->UpdateDisplay(clock_.Now(), dDir, pulse.dAmp);
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

void PulseDelivery::ShowPulse(const Pulse& pulse, double dDir) {
    controls_.Text("Text3").SetText(FormatNeutral(dDir, "000.0 °") + "  " +
                                    FormatNeutral(pulse.dFitError, "0.0 ") +
                                    "%  N:" + FormatNeutral(pulse.N, "0"));
    controls_.Text("Text4").SetText(FormatNeutral(pulse.dAmp, "00.0 dB") + "  " +
                                    GeneralNumber(pulse.dLocalSample));
}

double PulseDelivery::DisplayBearing(double dDir) const {
    if (!consumers.calibration || !controls_.Check("OptionAngleCorrectionInGyrel").Checked()) return dDir;
    const double corrected =
        consumers.calibration->DestinToSource(dDir) + settings_.Number("txtLocalCorrectionAngle");
    return CalcModulo(corrected, 360);
}

}  // namespace veltrix
