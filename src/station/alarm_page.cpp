#include "station/alarm_page.h"

#include <algorithm>
#include <limits>

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

/// The whole number in a box. What is far out of range stays so, but fits the type.
std::int16_t LimitIn(const TextBox& box) {
    using Limits = std::numeric_limits<std::int16_t>;
    return RoundToInteger(std::clamp<double>(ValNeutral(box.Text()), Limits::min(), Limits::max()));
}

}  // namespace

AlarmPage::AlarmPage(FormControls& controls, SettingsBinding& settings, const PositionBoxes& home,
                     ClassAlarm& alarm)
    : home_(home),
      alarm_(alarm),
      txtAlarmRate(controls.Text("txtAlarmRate")),
      txtAlarmDistance(controls.Text("txtAlarmDistance")),
      txtAlarmLatitude(controls.Text("txtAlarmLatitude")),
      txtAlarmLongitude(controls.Text("txtAlarmLongitude")) {
    settings.WhenTaken("txtAlarmRate", [this] { InitAlarm(); });
    settings.WhenTaken("txtAlarmDistance", [this] { InitAlarm(); });
    controls.Push("cmdAsLocal").OnClick = [this](MouseButton) { cmdAsLocal_Click(); };
}

void AlarmPage::InitAlarm() {
    alarm_.Init(LimitIn(txtAlarmRate), LimitIn(txtAlarmDistance));
}

void AlarmPage::cmdAsLocal_Click() {
    txtAlarmLatitude.Enter(GeneralNumber(home_.HomeLatitude()));
    txtAlarmLongitude.Enter(GeneralNumber(home_.HomeLongitude()));
}

}  // namespace veltrix
