#include "station/form_displays.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltrix {

FormDisplays::FormDisplays(FormControls& controls, ErrorReporter& errors)
    : errors_(errors),
      Picture5_(controls.Picture("Picture5").surface),
      polar_(controls.Picture("Picture1").surface, controls.Picture("Picture9").surface, errors),
      history_(errors),
      amplitudeScope_(controls.Picture("Picture2").surface),
      xyScope_(controls.Picture("Picture3").surface) {}

void FormDisplays::GyrelUpdate(double dDir, double dAmp, const AmplitudeLimits& limits, ColourValue color) {
    polar_.GyrelUpdate(dDir, dAmp, limits.iDisplayAmpMin, limits.iDisplayAmpMax, color);
}

void FormDisplays::UpdateDisplay(DateTime date, double dDir, double dAmp, const AmplitudeLimits& limits) {
    history_.UpdateDisplay(date, dDir, dAmp, limits.iDisplayAmpMin, limits.iDisplayAmpMax, Picture5_);
}

void FormDisplays::Arm() {
    amplitudeScope_.ScopeArm();
    xyScope_.ScopeArmXY();
}

void FormDisplays::ScopeTrigger(double dValue) {
    UnderErrorConvention(errors_, "ScopeTrigger", [&] { amplitudeScope_.ScopeTrigger(dValue); });
}

void FormDisplays::ScopeTriggerXY(double dNS, double dEW) {
    UnderErrorConvention(errors_, "ScopeTriggerXY", [&] { xyScope_.ScopeTriggerXY(dNS, dEW); });
}

/// The last of these frames enters the same procedure last as if they had come one by one.
void FormDisplays::QuietFrames(std::size_t count, std::span<const double> lastNS,
                               std::span<const double> lastEW) {
    errors_.EnterProcedure("ScopeTriggerXY");
    std::array<double, ScopeState::iSize> values{};
    const std::size_t last = std::min(lastNS.size(), values.size());
    lastNS = lastNS.last(last);
    lastEW = lastEW.last(last);
    for (std::size_t i = 0; i < last; ++i)
        values[i] = ScopeValue(std::sqrt(lastNS[i] * lastNS[i] + lastEW[i] * lastEW[i]));
    amplitudeScope_.Quiet(count, std::span(values).first(last));
    xyScope_.Quiet(count, lastNS, lastEW);
}

}  // namespace veltrix
