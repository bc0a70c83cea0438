#include "station/frm_veltrix.h"

#include <algorithm>
#include <utility>

#include "common/arithmetic.h"
#include "common/neutral_text.h"
#include "common/replace_first.h"

namespace veltrix {

namespace {

constexpr int TickMilliseconds = 100;
constexpr int HousekeepingMilliseconds = 1000;
constexpr std::int16_t LowestDisplayDb = -120;
constexpr std::int16_t LeastDisplaySpan = 5;

/// A folder as the block file's name wants it: with a "\" at its end, unless it is empty.
std::string WithFinalBackslash(std::string path) {
    if (!path.empty() && path.back() != '\\') path += '\\';
    return path;
}

/// The whole number in a box, within the range of the amplitudes.
std::int16_t DisplayDbOf(const TextBox& box) {
    return RoundToInteger(std::clamp(ValNeutral(box.Text()), -1000.0, 1000.0));
}

}  // namespace

FrmVeltrix::FrmVeltrix(Platform platform, StationOptions options)
    : platform_(platform),
      options_(std::move(options)),
      errors_(platform_, options_.version),
      settings_(controls_, platform_.store),
      position_(controls_, settings_),
      preciseNow_(platform_.clock),
      strikeLog_(platform_.files, platform_.clock, errors_),
      delivery_(controls_, settings_, platform_, strikeLog_, preciseNow_),
      tick_(controls_, platform_, errors_, delivery_, noise_, errors_.Version()),
      recorder_(platform_, options_.recorder, [this] { return ramDrivePath_; }),
      housekeepingStopwatch_(platform_.clock),
      Timer1(platform_.loop.MakeTimer([this] { tick_.Timer1_Timer(); })),
      Timer3(platform_.loop.MakeTimer([this] { Timer3_Timer(); })) {}

void FrmVeltrix::Form_Initialize() {
    SkippingErrors([&] { BindDetection(); }, [&] { BindDisplayLimits(); }, [&] { BindTexts(); },
                   [&] { BindReplay(); },
                   [&] {
                       tick_.OnStandstill = [this](int lNumber) {
                           options_.warn("detection has stopped: error " + std::to_string(lNumber) +
                                         " came twice; see the error log and restart the station");
                       };
                       recorder_.OnNoRecorder = [this](const std::string& why) {
                           options_.warn("the recorder could not be started: " + why);
                       };
                   },
                   [&] { settings_.Load(); }, [&] { noise_.StartNoiseLevel(); }, [&] { OpenTabs(); },
                   [&] {
                       Timer1->SetInterval(TickMilliseconds);
                       Timer1->SetEnabled(true);
                       recorder_.Start();
                       Timer3->SetInterval(HousekeepingMilliseconds);
                       Timer3->SetEnabled(true);
                   });
}

void FrmVeltrix::Form_Load() {
    SkippingErrors([&] { platform_.loop.DoEvents(); }, [&] { platform_.files.MakeFolder("Data"); },
                   [&] { platform_.files.MakeFolder("pSD"); },
                   [&] {
                       ramDrivePath_ = platform_.store.GetSetting("RAMDrive", "Path", "");
                       tick_.sAudioFile = ramDrivePath_ + "audio.dat";
                       if (platform_.files.Exists(tick_.sAudioFile)) platform_.files.Delete(tick_.sAudioFile);
                   });
}

void FrmVeltrix::Form_Unload() {
    Timer1->SetEnabled(false);
    Timer3->SetEnabled(false);
}

void FrmVeltrix::BindDetection() {
    Detector& detector = tick_.TheDetector();
    const auto flag = [this](std::string_view control, bool& target) {
        CheckBox& box = controls_.Check(control);
        settings_.WhenTaken(control, [&box, &target] { target = box.Checked(); });
    };
    flag("Check1", detector.antenna.bInvertNS);
    flag("Check2", detector.antenna.bAdd90);
    flag("Check3", detector.antenna.bSub90);
    flag("OptionHighPass", detector.bHighPass);

    TextBox& txtlThreshold = controls_.Text("txtlThreshold");
    settings_.WhenTaken("txtTresholdQuotient", [this, &txtlThreshold] {
        noise_.iTresholdQuotient = RoundToInteger(settings_.Number("txtTresholdQuotient"));
        noise_.CalcThreshold();
        txtlThreshold.SetText(std::to_string(noise_.lThreshold));
    });
    settings_.WhenTaken("txtThresholdOffset", [this] {
        noise_.lThresholdOffset = RoundToLong(settings_.Number("txtThresholdOffset"));
        noise_.CalcThreshold();
    });
    settings_.WhenTaken("txtMinAuto",
                        [this] { noise_.iMinAuto = RoundToInteger(settings_.Number("txtMinAuto")); });
    CheckBox& automatic = controls_.Check("OptionAutoDetectionWindow");
    settings_.WhenTaken("OptionAutoDetectionWindow", [this, &automatic] {
        noise_.bAutomatic = automatic.Checked();
        if (!noise_.bAutomatic) noise_.CalcThreshold();
    });
    noise_.OnMeasured = [this, &txtlThreshold](double qAuto) {
        controls_.Text("txtSigmaNoise").SetText(std::to_string(noise_.LAutoThreshold()));
        txtlThreshold.SetText(std::to_string(noise_.lThreshold));
        controls_.Text("txtQ").SetText(GeneralNumber(qAuto));
    };
}

void FrmVeltrix::BindDisplayLimits() {
    settings_.ClampWith("txtMindB", [this, &box = controls_.Text("txtMindB")] {
        std::int16_t& low = delivery_.limits.iDisplayAmpMin;
        low = std::clamp(DisplayDbOf(box), LowestDisplayDb, std::int16_t{0});
        const std::int16_t high = delivery_.limits.iDisplayAmpMax;
        if (low >= high) low = static_cast<std::int16_t>(high - LeastDisplaySpan);
        return std::to_string(low);
    });
    settings_.ClampWith("txtMaxdB", [this, &box = controls_.Text("txtMaxdB")] {
        std::int16_t& high = delivery_.limits.iDisplayAmpMax;
        const std::int16_t low = delivery_.limits.iDisplayAmpMin;
        high = std::max(DisplayDbOf(box), LowestDisplayDb);
        if (high <= low) high = static_cast<std::int16_t>(low + LeastDisplaySpan);
        high = std::min(high, std::int16_t{0});
        return std::to_string(high);
    });
}

void FrmVeltrix::BindTexts() {
    settings_.CleanWith("txtRAMDrive", WithFinalBackslash);
    settings_.CleanWith("txtStationName", [](const std::string& name) {
        return ReplaceFirst(ReplaceFirst(name, ",", " "), ";", " ");
    });
    settings_.CleanWith("txtAnnouncement",
                        [](const std::string& text) { return ReplaceFirst(text, ",", " "); });
    // Not a key of the store: the figure of the selected row of the station list.
    TextBox& txtClockDrift = controls_.Text("txtClockDrift");
    txtClockDrift.OnEntry = [&txtClockDrift] {
        const CheckedNumber number = ValidateNumber(txtClockDrift, "0");
        if (number.good && ValidateRange(txtClockDrift, -90000000, 90000000))
            txtClockDrift.SetText(GeneralNumber(number.value));
    };
}

void FrmVeltrix::BindReplay() {
    TextBox& folder = controls_.Text("Dir1");
    ListBox& logs = controls_.List("File1");
    settings_.WhenTaken("Dir1", [this, &folder, &logs] {
        if (folder.Text().empty()) folder.SetText(platform_.files.WorkingDirectory());
        logs.SetEntries(platform_.files.List(folder.Text(), "*N.csv"));
    });
    logs.OnClick = [this, &folder](MouseButton button) {
        if (button == MouseButton::Left && delivery_.consumers.displays)
            strikeLog_.ReplayTodayLog(folder.Text(), delivery_.limits, *delivery_.consumers.displays);
    };
}

void FrmVeltrix::OpenTabs() {
    // A new user enters name and place first.
    if (platform_.store.GetSetting("Setting", "StationName", "New Station") != "New Station") return;
    controls_.Tabs("SSTab1").Enter("Map");
    controls_.Tabs("SSTab2").Enter("Local Station");
}

void FrmVeltrix::Timer3_Timer() {
    SkippingErrors([&] { housekeepingStopwatch_.Reset(); },
                   [&] {
                       iMinute = static_cast<std::int16_t>((iMinute + 1) % 60);
                       if (iMinute == 0) NoiseLogMinute();
                   });
}

void FrmVeltrix::NoiseLogMinute() {
    SkippingErrors(
        [&] {
            if (!controls_.Check("OptionNoiseLog").Checked()) return;
            const DateTime now = platform_.clock.Now();
            platform_.files.MakeFolder(".\\Log");
            platform_.files.AppendLine(".\\Log\\Noise" + FormatDate(now, "YYYYMMDD") + ".log",
                                       GeneralDate(now) + "; " + std::to_string(noise_.LNoiseMax()) + "; " +
                                           std::to_string(noise_.lThreshold) + "; " +
                                           std::to_string(noise_.LNoiseMin()));
        },
        [&] { noise_.RestartExtremes(); });
}

}  // namespace veltrix
