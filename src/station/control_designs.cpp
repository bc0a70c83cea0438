#include "station/control_designs.h"

namespace veltrix {

namespace {

constexpr auto Text = ControlKind::Text;
constexpr auto Caption = ControlKind::Label;
constexpr auto Check = ControlKind::Check;
constexpr auto Push = ControlKind::Button;
constexpr auto Group = ControlKind::Frame;
constexpr auto List = ControlKind::List;
constexpr auto Combo = ControlKind::Combo;
constexpr auto Mark = ControlKind::Marker;
constexpr auto Figure = ControlKind::Shape;
constexpr auto Line = ControlKind::Line;

constexpr int Stations = 100;  // marks of remote stations
constexpr int Clients = 2;     // stations that this one is a client of
constexpr std::string_view PictureTip = "Select file to be used as background in picture.";
constexpr std::string_view HoldTip = "Terminate all connection when set, re-connect when cleared";

constexpr ControlDesign Designs[] = {
    // On the polar display.
    {Text, "Text2", "0"},
    {Caption, "Label2", "Strikes"},
    {Text, "txtMaxdB"},
    {Text, "txtMindB"},
    {Group, "Frame3", "Background of the polar display", "", 0, 0, false},
    {Text, "txtMapFilename2"},
    {List, "File2", "", PictureTip},
    {Push, "cmdClearPicture1", "Clear", "Clear all lightning strikes in picture."},
    {Push, "cmdCancel2", "Cancel"},
    // On the map, and its dialog.
    {Group, "Frame2", "Background of the map", "", 0, 0, false},
    {Text, "txtMapFilename"},
    {List, "File3", "", PictureTip},
    {Push, "cmdClearPicture4", "Clear", "Clear all lightning strikes in picture."},
    {Push, "cmdCancel", "Cancel"},
    {Push, "cmdReset", "Reset"},
    {Push, "cmdStationMap", "Map around station", "Make a map around the local station and use it."},
    {Text, "txtStationMapRadius", "1000", "From the centre of that map to its edge, 50 to 9000 km."},
    {Caption, "LblpSD"},
    {Caption, "lblLocal", "Local"},
    {Caption, "lblRemote", "Remote"},
    {Text, "txtLocalDx", "", "From the place on the map to the local station's mark."},
    {Text, "txtLocaldY", "", "The same upwards."},
    {Text, "txtLocaldA", "", "Bearing of the place that was pressed, or the opposite one."},
    {Text, "txtLocalddA", "", "By how many degrees the bearing turns."},
    {Text, "txtRemotedX", "", "From the place on the map to the selected station's mark."},
    {Text, "txtRemotedY", "", "The same upwards."},
    {Text, "txtRemotedA", "", "Bearing of the place that was pressed, or the opposite one."},
    {Text, "txtRemoteddA", "", "By how many degrees the bearing turns."},
    {Caption, "lblWhoIs", "", "", 0, 0, false},
    {Caption, "LblStationName", "", "", 0, 0, false},
    {Caption, "lblStationIp", "", "", 0, 0, false},
    {Caption, "lblStationHostName", "", "", 0, 0, false},
    {Caption, "LblStationLastHeared", "", "", 0, 0, false},
    {Caption, "LblStationClock", "", "", 0, 0, false},
    {Caption, "lblCalibrationMode",
     "Calibration mode. Drag && Drop lightning showers to their correct location.", "", 0, 0, false},
    {Caption, "lblTextStrikeCount", "Strike count"},
    {Caption, "lblStrikeCount4", "0"},
    {Mark, "Picture6", "", "", 0, 0, false},
    {Mark, "Picture7", "", "", Stations, 1, false},
    {Figure, "ShapeMapperIndex", "", "", 0, 0, false},
    {Figure, "ShapeCircle", "", "", 0, 0, false},
    {Line, "LineLBound", "", "", 0, 0, false},
    {Line, "LineUbound", "", "", 0, 0, false},
    {Figure, "shpSphere", "", "The map shows a part of the globe."},
    {Figure, "shp2D", "", "The map is flat.", 0, 0, false},
    // In the menu of a station's mark.
    {Push, "cmdSelect", "Select"},
    {Push, "cmdConnect", "Connect"},
    {Push, "cmdDisconnect", "Disconnect"},
    {Push, "cmdWhoIs", "Who is"},
    {Push, "cmdDummy", "-"},
    {Push, "cmdDelete", "Delete"},
    {Push, "cmdDummy2", "-"},
    {Push, "cmdResetCnt", "Reset Correlation Counter"},
    {Push, "cmdResetTotalCnt", "Reset Strike Count"},
    {Push, "cmdClearPicSync", "Clear Correlation Display"},
    {Push, "cmdResetCorr", "Reset Correlator"},
    // Around the scopes.
    {Caption, "Label4", "Amplitude"},
    {Text, "Text4"},
    {Text, "Text5"},
    {Caption, "Label3", "Direction"},
    {Text, "Text3"},
    {Text, "txtLocal", "000.0"},
    {Text, "txtRemote", "000.0 => 000.0"},
    // On the form.
    {Caption, "Label1", "Interval"},
    {Text, "Text1", "", "Milliseconds between the last two blocks of samples."},
    {List, "List1"},
    {List, "lstOnline"},
    {Combo, "Drive1"},
    {List, "Dir1"},
    {List, "File1", "", "Plot the strike log of today from this folder."},
    // In the status bar; what they show comes once a second.
    {Caption, "lblHealthSound"},
    {Caption, "lblHealthLevel"},
    {Caption, "lblHealthRate"},
    {Caption, "lblHealthNoise"},
    {Caption, "lblHealthStrikes"},
    {Caption, "lblHealthPeers"},
    {Caption, "lblHealthComputer"},
    // "Gyrel", "Setup": how the antennas stand, filter, diagnosis, folder of the block file.
    {Caption, "Label6", "Antenna"},
    {Check, "Check1", "CW-CCW", "Display Clock Wise or Counter Clock Wise."},
    {Check, "Check2", "+90 °"},
    {Check, "Check3", "- 90 °"},
    {Check, "Check4", "Mod 180", "Display 180 ° ambiguity."},
    {Check, "OptionRealTime", "Realtime clock",
     "Use realtime clock instead of sample nr. clock. Works best when activity is low."},
    {Check, "OptionHighPass", "DSP Filter", "Filter left and right channel with a high pass filter."},
    {Check, "OptionInhibit", "Inhibit 200 mS", "Inhibit detection for 200 mS after last lightning strike."},
    {Check, "OptionTOAFilter", "TOA Filter", "Use Time Of Arrival to verfy position calculation."},
    {Check, "OptionNoiseLog", "Noise Log", "Logging of background noise level."},
    {Caption, "Label5", "Display"},
    {Check, "Check5", "North - South", "Show channel north-south only."},
    {Check, "Check6", "East   - West", "Show channel east-west only."},
    {Caption, "lblLastPing", "Last Ping"},
    {Text, "txtLastPing"},
    {Caption, "lblBadPing", "No Reply"},
    {Text, "txtBadPing"},
    {Push, "cmdTestCalc", "Test", "", 0, 0, false},
    {Push, "cmdTestLineNumber", "Test", "", 0, 0, false},
    {Caption, "lblRAMDrive", "Path"},
    {Text, "txtRAMDrive"},
    {Text, "txtSamplesInPrevFile", "", "The last block that came late, and its frames."},
    {Caption, "lblStrikesMinute", "Strikes / min."},
    {Text, "txtAlarmRate"},
    {Caption, "Label11", "Distance (km)"},
    {Text, "txtAlarmDistance"},
    {Caption, "lblAlarmLatitude", "Lat."},
    {Text, "txtAlarmLatitude"},
    {Caption, "lblAlarmLongitude", "Lon."},
    {Text, "txtAlarmLongitude"},
    {Push, "cmdAsLocal", "Lon.   Lat.", "Reset to local station"},
    // "Gyrel", "Calib".
    {Caption, "Label16", "Correction angle"},
    {Text, "txtLocalCorrectionAngle"},
    {Caption, "Label9", "Correction angle"},
    {Text, "txtCorrectionAngle"},
    {Check, "OptionRemoteCWCCW", "CW-CCW"},
    {Check, "OptionCalibrateAngle", "Angle"},
    {Check, "OptionCalibrateNonLinAngle", "Angle from pSD file"},
    {Check, "OptionCalibLocal", "Local"},
    {Check, "OptionCalibRemote", "Remote"},
    {Push, "cmdClearpSD", "Reset"},
    {Push, "cmdUndopSD", "Undo"},
    // "Gyrel", "Gain".
    {Caption, "Label14", "Threshold"},
    {Text, "Text8", "-"},
    {Text, "txtTresholdQuotient"},
    {Caption, "lblThresholdRange", "  [-1..-100] dB"},
    {Group, "frmAutoTreshold", "Automatic threshold"},
    {Check, "OptionAutoDetectionWindow", "Automatic threshold"},
    {Text, "txtThresholdOffset", "", "Added to the automatic threshold, -5 to 5 dB."},
    {Text, "txtMinAuto", "", "The automatic threshold goes no lower, 0 to 120 dB."},
    {Text, "txtlThreshold", "", "The threshold in force."},
    {Caption, "lblSigmaNoise", "3 x Sigma + Offset"},
    {Text, "txtSigmaNoise"},
    {Text, "txtQ"},
    // "Gyrel", "Options".
    {Group, "FrmClock", " Clock"},
    {Check, "OptionScan", "Scan",
     "Clock drift scan from -900000 to 900000 in steps of 1000. Stops when good correlation is reached."},
    {Text, "txtLocalClockDrift", "", "Milliseconds of samples that the local sound card takes a day."},
    {Text, "txtRemoteClockDrift", "", "The same of the selected station."},
    {Text, "txtDiffLocalRemote", "", "Local less remote."},
    {Text, "txtClockDrift"},
    {Group, "Frame5", "    Automatic clock drift compensation"},
    {Check, "OptionClockDriftCompensation", "    Automatic clock drift compensation"},
    {Check, "OptionLogLocalRemote", "Log YYYYMMDD.csv"},
    {Check, "OptionRemoteShow", "Display remote data", "Display Remote station data in blue."},
    {Check, "OptionAngleCorrectionInGyrel", "Display angle corrections",
     "In the plot for intensity and direction and in the history plot then corrections in the direction are "
     "shown."},
    // "Gyrel", "About".
    {Group, "Frame4", "Veltrix"},
    {Push, "Command1", "Release notes"},
    {Caption, "Label22"},
    {Caption, "Label23", "Lightning observation for amateurs. MIT licence."},
    // "Remote".
    {Caption, "Label7", "Client"},
    {Caption, "Label8", "Server"},
    {Caption, "lblRemoteAddress", "Connect to :"},
    {Combo, "cmbRemoteHost"},
    {Text, "txtRemoteHost"},
    {Check, "OptionHoldClient", "Hold", HoldTip},
    {Check, "optionHoldServer", "Hold", HoldTip},
    {Text, "txtDateRecv"},
    {Text, "txtStateClient"},
    {Text, "txtStateServer", "", "All server connection states"},
    {Combo, "CmbStateServer"},
    {Check, "optStationListUpdate", "Update station list"},
    {Push, "cmdEditStationList", "Edit StationList"},
    // "Sync".
    {Text, "txtDiffTime", "", "", Clients},
    {Caption, "lblRemoteSampleCountCorrelated", "", "", Clients},
    {Caption, "lblRemoteSampleCount", "", "", Clients},
    {Caption, "lblPrevAvgDiffTime", "", "", Clients},
    {Caption, "lblAvgDiffTime", "", "", Clients},
    {Push, "cmdLeft", "<"},
    {Push, "cmdRight", ">"},
    // "Internet".
    {Text, "txtAnnouncement", "",
     "Enter an announcement that will appear in the caption of Veltrix of remote stations that are "
     "connected."},
    {Push, "cmdTestFtp", "Test FTP",
     "Start FTP transfer when pushed or wait 10 minutes. Publish.bat will be executed."},
    {Push, "cmdHomePage", "Home page"},
    {Text, "txtHomePage"},
    {Push, "cmdExplorer", "Lightning in Europe"},
    {Text, "txtLightningInEurope"},
    {Caption, "lblFtpTo", "FTP to :"},
    {Text, "txtFtpTo", "",
     "Provider address where to store your web pages. See : Publish.cmd and Publish.bat"},
    // "Map", "Local Station".
    {Caption, "lblLocalStationName", "Name"},
    {Text, "txtStationName", "New Station", "Enter the name of your Veltrix station"},
    {Text, "txtLatitude"},
    {Text, "txtLongitude"},
    {Text, "txtLatDeg"},
    {Text, "txtLatMin"},
    {Text, "txtLatSec"},
    {Text, "txtLongDeg"},
    {Text, "txtLongMin"},
    {Text, "txtLongSec"},
    {Text, "txtAngleClientServer"},
    {Text, "txtAngleServerClient"},
    {Text, "txtAngleAtClient"},
    {Text, "txtAngleAtServer"},
    // "Map", "Display Options".
    {Caption, "lblAge", "Duration visible"},
    {Text, "txtAge", "", "Number of minutes a lightning discharge is visible."},
    {Caption, "Label13", "[1..1440] min"},
    {Caption, "lblStrength", "Minimum amplitude"},
    {Text, "Text6", "-"},
    {Text, "txtMinStrength", "", "Minimum amplitude to be plotted on the map."},
    {Caption, "Label10", "  [-1..-120] dB"},
    {Caption, "lblAngularSeperation", "Angular separation"},
    {Text, "txtAngularSeparation", "", "Minimum angular separation for plotting location in map."},
    {Caption, "lblAngularSeraration", "  [0..90] "},
    {Check, "optFocus", "Focus window", "Use statistics to improve accuracy in mapping lightning."},
    {Text, "txtFocusWindow", "", "Focus window size. 0 = no focus."},
    {Caption, "Label24", "[0..5] "},
    {Check, "optSectors", "Sectors", "Divide map into sectors of greatest accuracy for each station."},
};

constexpr int View = 557;  // pixels of the three large views, which take turns in one place
constexpr int Scope = 205;

constexpr SurfaceDesign Surfaces[] = {
    {"Picture1", View, View},
    {"Picture9", View, View, {0, 0, View, View}, false},
    {"Picture4", View, View, {0, 0, View, View}, false},
    {"Picture8", View, View, {0, 0, View, View}, false},
    {"Picture5", View, View, {0, 0, 24, 180}, false},            // hours by degrees
    {"Picture2", Scope, 197, {0, 58000, 100, -63000}},           // the amplitude scope
    {"Picture3", Scope, Scope, {-24000, 24000, 48000, -48000}},  // the X-Y scope
    {"PicSync", 196, 99, {0, 0, 196, 99}, true, Clients},
    {"PicpSD", Scope, Scope, {-20, -20, 220, 40}},  // source angle by correction, degrees
    {"Picture10", 480, 300},
};

const TabDesign TabStrips[] = {
    {"SSTab1", {"Gyrel", "Remote", "Sync", "Internet", "Map"}},
    {"SSTab2", {"Local Station", "Display Options"}},
    {"SSTab3", {"Setup", "Calib", "Gain", "Options", "About"}},
    {"SSTab4", {"Local", "Remote", "Drag && Drop"}},
    {"SSTab5", {"Antenna", "Filter", "Diag", "RAM Drv", "Alarm"}},
    {"SSTab6", {"0.00000 °", "000° 00' 00\""}},
};

const MenuDesign Menus[] = {
    {"mnuPopUp",
     "PopUpMenu",
     {"cmdSelect", "cmdConnect", "cmdDisconnect", "cmdWhoIs", "cmdDummy", "cmdDelete", "cmdDummy2",
      "cmdResetCnt", "cmdResetTotalCnt", "cmdClearPicSync", "cmdResetCorr"}},
};

}  // namespace

std::span<const ControlDesign> ControlDesigns() {
    return Designs;
}

std::span<const SurfaceDesign> SurfaceDesigns() {
    return Surfaces;
}

std::span<const TabDesign> TabDesigns() {
    return TabStrips;
}

std::span<const MenuDesign> MenuDesigns() {
    return Menus;
}

}  // namespace veltrix
