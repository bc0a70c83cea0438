#include "window/form_pages.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace veltrix {

namespace {

const PageDesign Pages[] = {
    {"SSTab1", 0, {{"", {"SSTab3"}}}},
    {"SSTab1",
     1,
     {{"Label7", {"txtStateClient"}, "OptionHoldClient"},
      {"lblRemoteAddress", {"cmbRemoteHost"}},
      {"=Address", {"txtRemoteHost"}},
      {"=Received", {"txtDateRecv"}, "", true},
      {"Label8", {"txtStateServer"}, "optionHoldServer"},
      {"=Connections", {"CmbStateServer"}},
      {"", {"optStationListUpdate", "cmdEditStationList"}}}},
    {"SSTab1",
     2,
     {{"", {"PicSync(0)", "PicSync(1)"}},
      {"=Difference", {"txtDiffTime(0)", "txtDiffTime(1)"}},
      {"=Matched", {"lblRemoteSampleCountCorrelated(0)", "lblRemoteSampleCountCorrelated(1)"}},
      {"=Heard", {"lblRemoteSampleCount(0)", "lblRemoteSampleCount(1)"}},
      {"=Travel time", {"lblPrevAvgDiffTime(0)", "lblPrevAvgDiffTime(1)"}},
      {"=Average", {"lblAvgDiffTime(0)", "lblAvgDiffTime(1)"}},
      {"=Move", {"cmdLeft", "cmdRight"}}}},
    {"SSTab1",
     3,
     {{"=Announcement", {"txtAnnouncement"}},
      {"cmdHomePage", {"txtHomePage"}},
      {"cmdExplorer", {"txtLightningInEurope"}},
      {"lblFtpTo", {"txtFtpTo"}},
      {"", {"cmdTestFtp"}}}},
    {"SSTab1", 4, {{"", {"SSTab2"}}}},

    {"SSTab3", 0, {{"", {"SSTab5"}}}},
    {"SSTab3", 1, {{"", {"SSTab4"}}, {"", {"cmdClearpSD", "cmdUndopSD"}}}},
    {"SSTab3",
     2,
     {{"Label14", {":Text8", "txtTresholdQuotient"}, "lblThresholdRange"}, {"", {"frmAutoTreshold"}}}},
    {"SSTab3",
     3,
     {{"", {"FrmClock"}},
      {"", {"Frame5"}},
      {"", {"OptionLogLocalRemote"}},
      {"", {"OptionRemoteShow"}},
      {"", {"OptionAngleCorrectionInGyrel"}}}},
    {"SSTab3", 4, {{"", {"Frame4"}}}},
    {"frmAutoTreshold",
     0,
     {{"", {"OptionAutoDetectionWindow"}},
      {"=Offset", {"txtThresholdOffset"}, "=dB"},
      {"=Minimum", {"txtMinAuto"}, "=dB"},
      {"lblSigmaNoise", {"txtSigmaNoise"}},
      {"=The same in dB", {"txtQ"}, "=dB"},
      {"=Threshold in force", {"txtlThreshold"}}}},
    {"FrmClock",
     0,
     {{"=Drift", {"txtClockDrift"}, "OptionScan"},
      {"=Local station", {"txtLocalClockDrift"}},
      {"=Remote station", {"txtRemoteClockDrift"}},
      {"=Difference", {"txtDiffLocalRemote"}}}},
    {"Frame5", 0, {{"", {"OptionClockDriftCompensation"}}}},
    {"Frame4", 0, {{"", {"Picture10"}}, {"", {"Label22"}}, {"", {"Label23"}}, {"", {"Command1"}}}},

    {"SSTab5", 0, {{"Label6", {"Check1"}}, {"=", {"Check2"}}, {"=", {"Check3"}}, {"=", {"Check4"}}}},
    {"SSTab5",
     1,
     {{"", {"OptionRealTime"}},
      {"", {"OptionHighPass"}},
      {"", {"OptionInhibit"}},
      {"", {"OptionTOAFilter"}},
      {"", {"OptionNoiseLog"}}}},
    {"SSTab5",
     2,
     {{"Label5", {"Check5"}},
      {"=", {"Check6"}},
      {"lblLastPing", {"txtLastPing"}},
      {"lblBadPing", {"txtBadPing"}},
      {"", {"cmdTestCalc", "cmdTestLineNumber"}}}},
    {"SSTab5", 3, {{"lblRAMDrive", {"txtRAMDrive"}}, {"=Last late block", {"txtSamplesInPrevFile"}}}},
    {"SSTab5",
     4,
     {{"lblStrikesMinute", {"txtAlarmRate"}},
      {"Label11", {"txtAlarmDistance"}},
      {"lblAlarmLatitude", {"txtAlarmLatitude"}},
      {"lblAlarmLongitude", {"txtAlarmLongitude"}},
      {"=Local station", {"cmdAsLocal"}}}},

    {"SSTab4", 0, {{"Label16", {"txtLocalCorrectionAngle"}, "=°"}}},
    {"SSTab4", 1, {{"Label9", {"txtCorrectionAngle"}, "=°"}, {"=", {"OptionRemoteCWCCW"}}}},
    {"SSTab4",
     2,
     {{"=Change", {"OptionCalibrateAngle", "OptionCalibrateNonLinAngle"}},
      {"=Of", {"OptionCalibLocal", "OptionCalibRemote"}},
      {"lblLocal", {"txtLocalDx", "txtLocaldY"}},
      {"lblRemote", {"txtRemotedX", "txtRemotedY"}},
      {"=Bearing", {"txtLocaldA", "txtRemotedA"}},
      {"=Turn", {"txtLocalddA", "txtRemoteddA"}},
      {"", {"PicpSD"}},
      {"=Table", {"LblpSD"}}}},

    {"SSTab2",
     0,
     {{"lblLocalStationName", {"txtStationName"}},
      {"", {"SSTab6"}},
      {"=To server, back", {"txtAngleClientServer", "txtAngleServerClient"}, "=°"},
      {"=At client, server", {"txtAngleAtClient", "txtAngleAtServer"}, "=°"}}},
    {"SSTab2",
     1,
     {{"lblAge", {"txtAge"}, "Label13"},
      {"lblStrength", {":Text6", "txtMinStrength"}, "Label10"},
      {"lblAngularSeperation", {"txtAngularSeparation"}, "lblAngularSeraration"},
      {"optFocus", {"txtFocusWindow"}, "Label24"},
      {"optSectors", {}}}},
    {"SSTab6", 0, {{"=Latitude", {"txtLatitude"}, "=°"}, {"=Longitude", {"txtLongitude"}, "=°"}}},
    {"SSTab6",
     1,
     {{"=Latitude", {"txtLatDeg", "txtLatMin", "txtLatSec"}},
      {"=Longitude", {"txtLongDeg", "txtLongMin", "txtLongSec"}}}},

    {"Frame3",
     0,
     {{"", {"File2"}}, {"=File", {"txtMapFilename2"}}, {"", {"cmdClearPicture1", "cmdCancel2"}}}},
    {"Frame2",
     0,
     {{"", {"File3"}},
      {"=File", {"txtMapFilename"}},
      {"", {"cmdReset", "cmdClearPicture4", "cmdCancel"}},
      {"=Radius, km", {"txtStationMapRadius", "cmdStationMap"}}}},

    // Below the tabs.
    {"Replay", 0, {{"=Drive", {"Drive1"}}, {"=Folder", {"Dir1"}}, {"=Log", {"File1"}}}},
    {"Interval", 0, {{"Label1", {"Text1"}, "=ms"}}},
};

}  // namespace

const std::vector<RowDesign>& RowsOf(std::string_view owner, int tab) {
    const auto* const found = std::ranges::find_if(
        Pages, [&](const PageDesign& page) { return page.owner == owner && page.tab == tab; });
    if (found == std::end(Pages)) throw std::logic_error("no page is laid out for " + std::string(owner));
    return found->rows;
}

}  // namespace veltrix
