#include "detection/settings_table.h"

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr auto Text = SettingKind::Text;
constexpr auto Numeric = SettingKind::Numeric;
constexpr auto Clamped = SettingKind::Clamped;
constexpr auto Option = SettingKind::Option;

constexpr std::string_view Whole = "0";
constexpr std::string_view Degrees = "0.00000";
constexpr double NoLow = -std::numeric_limits<double>::max();
constexpr double NoHigh = std::numeric_limits<double>::max();

// Section names differ in case as the stores of all users have them; the store treats them as one.
constexpr Setting Settings[] = {
    {"RAMDrive", "Path", Text, "", "txtRAMDrive"},
    {"Setting", "TresholdQuotient", Numeric, "80", "txtTresholdQuotient", Whole, 1, 100, true, true},
    {"Setting", "TresholdOffset", Numeric, "0", "txtThresholdOffset", Whole, -5, 5, true, true},
    {"Setting", "MinAuto", Numeric, "99", "txtMinAuto", Whole, 0, 120, true, true},
    {"setting", "AutoDetectionWindow", Option, "0", "OptionAutoDetectionWindow"},
    {"setting", "NoiseLog", Option, "0", "OptionNoiseLog"},
    // The filter is on after each start, whatever was saved.
    {"setting", "HighPass", Option, "1", "OptionHighPass", "", NoLow, NoHigh, false},
    {"setting", "Inhibit", Option, "0", "OptionInhibit"},
    {"setting", "RTClock", Option, "0", "OptionRealTime"},
    {"setting", "TOAFilter", Option, "0", "OptionTOAFilter"},
    {"setting", "Cw-Ccw", Option, "0", "Check1"},
    {"setting", "Add90", Option, "0", "Check2"},
    {"setting", "Sub90", Option, "0", "Check3"},
    {"setting", "Mod180", Option, "0", "Check4"},
    {"setting", "LeftChannel", Option, "0", "Check5"},
    {"setting", "RightChannel", Option, "0", "Check6"},
    {"setting", "AngleCorrectionInGyrel", Option, "0", "OptionAngleCorrectionInGyrel"},
    {"setting", "ClockDriftCompensation", Option, "0", "OptionClockDriftCompensation"},
    {"setting", "Log", Option, "0", "OptionLogLocalRemote"},
    {"setting", "Focus", Option, "0", "optFocus"},
    {"setting", "MapSector", Option, "0", "optSectors"},
    {"setting", "CalibLocal", Option, "0", "OptionCalibLocal"},
    {"setting", "CalibRemote", Option, "0", "OptionCalibRemote"},
    {"setting", "StationListUpdate", Option, "1", "optStationListUpdate"},
    {"Setting", "Latitude", Numeric, "-89.99999", "txtLatitude", Degrees, -90, 90},
    {"Setting", "Longitude", Numeric, "-179.99999", "txtLongitude", Degrees, -180, 180},
    {"Setting", "StationName", Text, "New Station", "txtStationName"},
    {"Setting", "RemoteHost", Text, "station.veltrix.example", "txtRemoteHost"},
    {"Setting", "LocalCorrectionAngle", Numeric, "0", "txtLocalCorrectionAngle", Degrees, -90, 90},
    {"Setting", "CorrectionAngle", Numeric, "0.0", "txtCorrectionAngle", Degrees, -90, 90},
    {"Setting", "AngleAtServer", Numeric, "000.0", "txtAngleAtServer", Degrees},
    {"Setting", "MinStrength", Numeric, "80", "txtMinStrength", Whole, 1, 120},
    {"Setting", "AngularSeparation", Numeric, "10", "txtAngularSeparation", Degrees, 0, 90},
    {"Setting", "Age", Numeric, "30", "txtAge", Whole, 1, 1440},
    {"Setting", "FocusWindow", Numeric, "1", "txtFocusWindow", Whole, 0, 5},
    {"Setting", "iDisplayAmpMin", Clamped, "-100", "txtMindB"},
    {"Setting", "iDisplayAmpMax", Clamped, "0", "txtMaxdB"},
    {"Setting", "FtpTo", Text, "", "txtFtpTo"},
    {"Setting", "HomePage", Text, "https://veltrix.example/", "txtHomePage"},
    {"Setting", "LightningInEurope", Text, "https://veltrix.example/network", "txtLightningInEurope"},
    {"Setting", "Announcement", Text, "", "txtAnnouncement"},
    // The alarm's boxes are taken as they stand.
    {"Setting", "AlarmDistance", Text, "25", "txtAlarmDistance"},
    {"Setting", "AlarmRate", Text, "10", "txtAlarmRate"},
    {"Setting", "AlarmLatitude", Text, "52.0", "txtAlarmLatitude"},
    {"Setting", "AlarmLongitude", Text, "6.0", "txtAlarmLongitude"},
};

bool Colour(TextBox& control, bool good) {
    control.SetForeColor(good ? White : Red);
    return good;
}

}  // namespace

std::span<const Setting> SettingsTable() {
    return Settings;
}

CheckedNumber ValidateNumber(TextBox& control, std::string_view mask) {
    const double value = ValNeutral(control.Text());
    const bool same = ValNeutral(FormatNeutral(value, mask)) == value;
    return {value, Colour(control, same && control.Text() != "-")};
}

bool ValidateRange(TextBox& control, double low, double high) {
    const double value = ValNeutral(control.Text());
    return Colour(control, low <= value && value <= high);
}

}  // namespace veltrix
