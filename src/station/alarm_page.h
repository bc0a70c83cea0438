#pragma once
// The "Alarm" tab.

#include "output/class_alarm.h"
#include "station/position_boxes.h"
#include "station/settings_binding.h"

namespace veltrix {

/// Gives the alarm its limits as the user types them, and the place to watch. The boxes take any text; what
/// is no number counts as 0. Owned by the form.
class AlarmPage {
  public:
    AlarmPage(FormControls& controls, SettingsBinding& settings, const PositionBoxes& home,
              ClassAlarm& alarm);

  private:
    void InitAlarm();
    void cmdAsLocal_Click();

    const PositionBoxes& home_;
    ClassAlarm& alarm_;
    TextBox& txtAlarmRate;
    TextBox& txtAlarmDistance;
    TextBox& txtAlarmLatitude;
    TextBox& txtAlarmLongitude;
};

}  // namespace veltrix
