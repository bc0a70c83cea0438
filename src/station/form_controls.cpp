#include "station/form_controls.h"

#include <stdexcept>

namespace veltrix {

namespace {

/// One control, or an array of them, as the form is designed.
struct ControlDesign {
    ControlKind kind;
    std::string_view name;
    std::string_view shows = "";  // text of a box, caption of anything else
    std::string_view toolTip = "";
    int elements = 0;  // above 0: an array
};

constexpr auto Text = ControlKind::Text;
constexpr auto Caption = ControlKind::Label;
constexpr auto Check = ControlKind::Check;

constexpr ControlDesign Designs[] = {
    // The last and the strongest detection.
    {Text, "Text2", "0"},
    {Text, "Text3"},
    {Text, "Text4"},
    {Text, "Text5"},
    {Caption, "Label4", "Amplitude"},
    {Text, "txtMaxdB"},
    {Text, "txtMindB"},
    {Text, "txtDiffTime", "", "", 2},
    {Text, "txtSamplesInPrevFile"},
    // How the antennas stand.
    {Check, "Check1", "CW-CCW", "Display Clock Wise or Counter Clock Wise."},
    {Check, "Check2", "+90 °"},
    {Check, "Check3", "- 90 °"},
    {Check, "Check4", "Mod 180", "Display 180 ° ambiguity."},
    {Check, "Check5", "North - South", "Show channel north-south only."},
    {Check, "Check6", "East   - West", "Show channel east-west only."},
    // Filter and threshold.
    {Check, "OptionRealTime", "Realtime clock",
     "Use realtime clock instead of sample nr. clock. Works best when activity is low."},
    {Check, "OptionHighPass", "DSP Filter", "Filter left and right channel with a high pass filter."},
    {Check, "OptionInhibit", "Inhibit 200 mS", "Inhibit detection for 200 mS after last lightning strike."},
    {Check, "OptionTOAFilter", "TOA Filter", "Use Time Of Arrival to verfy position calculation."},
    {Check, "OptionNoiseLog", "Noise Log", "Logging of background noise level."},
    {Check, "OptionAutoDetectionWindow", "Automatic threshold"},
    {Text, "txtTresholdQuotient"},
    {Text, "txtThresholdOffset"},
    {Text, "txtMinAuto"},
    {Text, "txtlThreshold"},
    {Caption, "lblSigmaNoise", "3 x Sigma + Offset"},
    {Text, "txtSigmaNoise"},
    {Text, "txtQ"},
    {Text, "txtRAMDrive"},
    // Calibration and clock.
    {Check, "OptionScan", "Scan",
     "Clock drift scan from -900000 to 900000 in steps of 1000. Stops when good correlation is reached."},
    {Text, "txtClockDrift"},
    {Check, "OptionClockDriftCompensation", "    Automatic clock drift compensation"},
    {Check, "OptionLogLocalRemote", "Log YYYYMMDD.csv"},
    {Check, "OptionRemoteShow", "Display remote data", "Display Remote station data in blue."},
    {Check, "OptionAngleCorrectionInGyrel", "Display angle corrections",
     "In the plot for intensity and direction and in the history plot then corrections in the direction are "
     "shown."},
    {Check, "OptionCalibLocal", "Local"},
    {Check, "OptionCalibRemote", "Remote"},
    {Text, "txtLocalCorrectionAngle"},
    {Text, "txtCorrectionAngle"},
    {Text, "txtAngleAtServer"},
    // Map.
    {Check, "optFocus", "Focus window", "Use statistics to improve accuracy in mapping lightning."},
    {Check, "optSectors", "Sectors", "Divide map into sectors of greatest accuracy for each station."},
    {Text, "txtAge", "", "Number of minutes a lightning discharge is visible."},
    {Text, "txtMinStrength", "", "Minimum amplitude to be plotted on the map."},
    {Text, "txtAngularSeparation", "", "Minimum angular separation for plotting location in map."},
    {Text, "txtFocusWindow", "", "Focus window size. 0 = no focus."},
    // The local station.
    {Text, "txtStationName", "New Station", "Enter the name of your Veltrix station"},
    {Text, "txtLatitude"},
    {Text, "txtLongitude"},
    {Text, "txtLatDeg"},
    {Text, "txtLatMin"},
    {Text, "txtLatSec"},
    {Text, "txtLongDeg"},
    {Text, "txtLongMin"},
    {Text, "txtLongSec"},
    // Network and publishing.
    {Text, "txtRemoteHost"},
    {Check, "optStationListUpdate", "Update station list"},
    {Text, "txtFtpTo", "",
     "Provider address where to store your web pages. See : Publish.cmd and Publish.bat"},
    {Text, "txtHomePage"},
    {Text, "txtLightningInEurope"},
    {Text, "txtAnnouncement", "",
     "Enter an announcement that will appear in the caption of Veltrix of remote stations that are "
     "connected."},
    // Alarm.
    {Text, "txtAlarmRate"},
    {Text, "txtAlarmDistance"},
    {Text, "txtAlarmLatitude"},
    {Text, "txtAlarmLongitude"},
    // Replay of log files.
    {Text, "Drive1"},
    {Text, "Dir1"},
    {ControlKind::List, "File1"},
};

struct TabDesign {
    std::string_view name;
    std::vector<std::string> tabs;
};

const TabDesign TabStrips[] = {
    {"SSTab1", {"Gyrel", "Remote", "Sync", "Internet", "Map"}},
    {"SSTab2", {"Local Station", "Display Options"}},
    {"SSTab3", {"Setup", "Calib", "Gain", "Options", "About"}},
    {"SSTab4", {"Local", "Remote", "Drag && Drop"}},
    {"SSTab5", {"Antenna", "Filter", "Diag", "RAM Drv", "Alarm"}},
    {"SSTab6", {"0.00000 °", "000° 00' 00\""}},
};

void MakeOne(ControlSet& set, const ControlDesign& design, std::string name) {
    Control* made = nullptr;
    switch (design.kind) {
        case ControlKind::Text: {
            TextBox& box = set.Make<TextBox>(std::move(name));
            box.SetText(std::string(design.shows));
            made = &box;
            break;
        }
        case ControlKind::Check:
            made = &set.Make<CheckBox>(std::move(name));
            break;
        case ControlKind::List:
            made = &set.Make<ListBox>(std::move(name), ControlKind::List);
            break;
        default:
            made = &set.Make<Label>(std::move(name));
            break;
    }
    if (design.kind != ControlKind::Text) made->SetCaption(std::string(design.shows));
    made->SetToolTipText(std::string(design.toolTip));
}

}  // namespace

FormControls::FormControls() : form_(set_.Make<FormControl>("FrmVeltrix")) {
    for (const ControlDesign& design : Designs) {
        if (design.elements == 0) MakeOne(set_, design, std::string(design.name));
        for (int i = 0; i < design.elements; ++i) MakeOne(set_, design, ElementName(design.name, i));
    }
    for (const TabDesign& strip : TabStrips) set_.Make<TabStrip>(std::string(strip.name), strip.tabs);
}

Control& FormControls::Require(std::string_view name) const {
    Control* const control = set_.Find(name);
    if (!control) throw std::logic_error("the form has no control named " + std::string(name));
    return *control;
}

}  // namespace veltrix
