#pragma once
// FrmVeltrix: the main form. It owns every part of a station and runs its start, its timers and its end.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "detection/noise_control.h"
#include "detection/strike_log.h"
#include "output/class_alarm.h"
#include "output/daily_rollover.h"
#include "output/error_log.h"
#include "output/publishing.h"
#include "platform/platform.h"
#include "station/about.h"
#include "station/alarm_page.h"
#include "station/calibration_drag.h"
#include "station/calibration_overlay.h"
#include "station/caption_blocks.h"
#include "station/clock_drift_page.h"
#include "station/form_controls.h"
#include "station/form_displays.h"
#include "station/health_watch.h"
#include "station/housekeeping.h"
#include "station/map_view.h"
#include "station/mark_commands.h"
#include "station/mark_drag.h"
#include "station/polar_view.h"
#include "station/position_boxes.h"
#include "station/pulse_delivery.h"
#include "station/recorder_start.h"
#include "station/replay_files.h"
#include "station/sample_tick.h"
#include "station/settings_binding.h"
#include "station/station_commands.h"
#include "station/station_location.h"
#include "station/station_network.h"
#include "station/view_cycle.h"
#include "timebase/precise_now.h"

namespace veltrix {

/// What a station is told by the program that makes it.
struct StationOptions {
    std::string version = "0.0.0";  ///< major, minor and revision
    RecorderChoice recorder;
    /// Takes one-line warnings for the user.
    std::function<void(const std::string&)> warn = [](const std::string&) {};
    std::string releaseNotes = {};  ///< what the "About" tab shows on request
};

/// A station. Everything runs on the event loop of its platform. REQUIRES Form_Initialize() and Form_Load(),
/// in this order, before the loop runs, and Form_Unload() at the end.
class FrmVeltrix {
  public:
    FrmVeltrix(Platform platform, StationOptions options);

    /// Builds the parts, reads the settings into the controls and enables the timers. Failed steps are passed
    /// over.
    void Form_Initialize();
    /// Makes the folders, finds the block file and brings back the displays. Failed steps are passed over.
    void Form_Load();
    /// Stops the timers and saves what the displays show. The recorder is left running. Failed steps are
    /// passed over.
    void Form_Unload();

    /// All controls, for a window and for the control socket.
    ControlSet& Controls() { return controls_.All(); }
    /// Who takes detections; a program may put itself in a place that nobody fills.
    DetectionConsumers& Consumers() { return delivery_.consumers; }
    /// Told of each located strike. May be empty.
    std::function<void(const LocatedStrike&)>& OnLocated() { return location_.matching.OnLocated; }
    ErrorReporter& Errors() { return errors_; }
    /// "V", major, ".", minor, ".", revision.
    const std::string& Version() const { return errors_.Version(); }

  private:
    void Warn(const std::string& line);
    void BindDetection();
    void BindDisplayLimits();
    void BindTexts();
    void BindLaunchers();
    void ReadRamDrivePath();
    void LoadDisplays();
    void OpenTabs();
    void BindHousekeeping();
    void BindLocation();
    void BindCalibration();
    void BindOutput();
    PublishingParts Published();
    void MouseOnMap(const MouseEvent& event);
    void DrawCaptions();
    void DrawMap();
    void FollowSelection();
    void ShowEdits();
    void ShowStation();
    void NoiseLogMinute();
    HomeStation Home();

    Platform platform_;
    StationOptions options_;
    FormControls controls_;
    ErrorLog errors_;
    SettingsBinding settings_;
    std::string ramDrivePath_;  // as it was at load; a new one takes effect at the next start
    PositionBoxes position_;
    PreciseNow preciseNow_;
    NoiseControl noise_;
    StrikeLog strikeLog_;
    FormDisplays displays_;
    PulseDelivery delivery_;
    SampleTick tick_;
    PolarView polarView_;
    ViewCycle viewCycle_;
    ReplayFiles replayFiles_;
    About about_;
    DailyRollover rollover_;
    ClassAlarm alarm_;
    AlarmPage alarmPage_;
    RecorderStart recorder_;
    StationNetwork network_;
    StationLocation location_;
    CaptionBlocks captions_;
    MapView mapView_;
    MarkDrag markDrag_;
    MarkCommands markCommands_;
    CalibrationDrag calibrationDrag_;
    CalibrationOverlay calibrationOverlay_;
    ClockDriftPage clockDrift_;
    Publishing publishing_;
    StationCommands commands_;
    Housekeeping housekeeping_;
    HealthWatch health_;
    std::unique_ptr<Timer> Timer1;
    bool bLoaded = false;
};

}  // namespace veltrix
