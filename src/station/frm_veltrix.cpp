#include "station/frm_veltrix.h"

#include <algorithm>
#include <utility>

#include "common/arithmetic.h"
#include "common/neutral_text.h"
#include "common/replace_first.h"
#include "display/bitmap_file.h"

namespace veltrix {

namespace {

constexpr int TickMilliseconds = 100;
constexpr std::int16_t LowestDisplayDb = -120;
constexpr std::int16_t LeastDisplaySpan = 5;
constexpr double FarOutDb = 1000;
constexpr std::size_t MostWarnings = 100;

/// A folder as the block file's name wants it: with a "\" at its end, unless it is empty.
std::string WithFinalBackslash(std::string path) {
    if (!path.empty() && path.back() != '\\') path += '\\';
    return path;
}

/// The whole number in a box. What is far out of range stays so, but fits the type.
std::int16_t DisplayDbOf(const TextBox& box) {
    return RoundToInteger(std::clamp(ValNeutral(box.Text()), -FarOutDb, FarOutDb));
}

}  // namespace

FrmVeltrix::FrmVeltrix(Platform platform, StationOptions options)
    : platform_(platform),
      options_(std::move(options)),
      controls_(platform_.glyphs),
      errors_(platform_, options_.version),
      settings_(controls_, platform_.store),
      position_(controls_, settings_),
      preciseNow_(platform_.clock),
      strikeLog_(platform_.files, platform_.clock, errors_),
      displays_(controls_, errors_),
      delivery_(controls_, settings_, platform_, strikeLog_, preciseNow_),
      tick_(controls_, platform_, errors_, delivery_, noise_, errors_.Version()),
      polarView_(controls_, platform_, displays_.Polar(), errors_,
                 [this] {
                     tick_.TheDetector().lTriggerCount = 0;
                     delivery_.ShowTriggerCount();
                 }),
      viewCycle_(
          controls_, [this] { polarView_.OpenFrame3(); }, [this] { mapView_.OpenFrame2(); }),
      replayFiles_(controls_, platform_,
                   [this](const std::string& folder) {
                       strikeLog_.ReplayTodayLog(folder, delivery_.limits, *Consumers().displays);
                   }),
      about_(controls_, platform_, errors_, errors_.Version(), options_.releaseNotes),
      rollover_(platform_, controls_.Picture("Picture5").surface, errors_),
      alarm_(platform_.clock, platform_.files, platform_.processes, errors_),
      alarmPage_(controls_, settings_, position_, alarm_),
      recorder_(platform_, options_.recorder, [this] { return ramDrivePath_; }),
      network_(controls_, platform_, errors_, preciseNow_, delivery_.limits, [this] { return Home(); }),
      location_(controls_, settings_, platform_, errors_, preciseNow_, network_, [this] { return Home(); }),
      captions_(controls_, platform_.clock, network_, location_.dots, options_.version),
      mapView_({controls_, platform_, errors_, network_, location_.marks, location_.recent, location_.dots,
                [this] { return location_.Rules(); },
                [this](bool bSkip) { tick_.TheDetector().bSkipSamples = bSkip; },
                [this] { tick_.Timer1_Timer(); }, [this] { captions_.DrawMap(); }}),
      markDrag_(location_.marks),
      markCommands_(controls_, platform_.store, network_, location_.marks, markDrag_,
                    [this] { FollowSelection(); }),
      calibrationDrag_(controls_, network_.selection, location_.marks, location_.calibration),
      calibrationOverlay_(controls_, network_),
      clockDrift_(controls_, platform_.files, network_),
      publishing_(Published()),
      commands_(controls_, settings_, platform_, network_,
                [this](std::int16_t row) { markCommands_.ConnectTo(row); }),
      housekeeping_(controls_, platform_, network_, [this] { return Home(); }),
      health_({controls_, platform_, tick_, noise_, delivery_, network_, location_.matching, publishing_,
               errors_, options_.version, [this] { return ramDrivePath_; },
               [this](const std::string& line) { Warn(line); }}),
      Timer1(platform_.loop.MakeTimer([this] { tick_.Timer1_Timer(); })) {
    delivery_.consumers.displays = &displays_;
    delivery_.consumers.broadcaster = &network_.sender;
    network_.receivers.displays = &displays_;
    BindLocation();
    BindCalibration();
    BindOutput();
    tick_.TheDetector().SetScopes(&displays_);
}

void FrmVeltrix::Form_Initialize() {
    SkippingErrors([&] { BindDetection(); }, [&] { BindDisplayLimits(); }, [&] { BindTexts(); },
                   [&] { BindLaunchers(); }, [&] { polarView_.Start(); }, [&] { mapView_.Start(); },
                   [&] { viewCycle_.Start(); }, [&] { about_.Start(); },
                   [&] {
                       tick_.OnStandstill = [this](int lNumber) {
                           health_.DetectionHasStopped();
                           Warn("detection has stopped: error " + std::to_string(lNumber) +
                                " came twice; see the error log and restart the station");
                       };
                       recorder_.OnNoRecorder = [this](const std::string& why) {
                           Warn("the recorder could not be started: " + why);
                       };
                       network_.server.OnCannotListen = [this](const std::string& why) {
                           Warn("no station can connect: " + why + "; it is tried again every second");
                       };
                   },
                   [&] { settings_.Load(); }, [&] { ReadRamDrivePath(); }, [&] { noise_.StartNoiseLevel(); },
                   // The rows of the list take their calibration tables there as they are read.
                   [&] { platform_.files.MakeFolder("pSD"); }, [&] { network_.Start(); },
                   [&] { location_.Start(); }, [&] { commands_.Start(); }, [&] { markCommands_.Start(); },
                   [&] {
                       if (network_.Selected().MapperActive()) ShowStation();
                   },
                   [&] { BindHousekeeping(); }, [&] { OpenTabs(); },
                   [&] {
                       Timer1->SetInterval(TickMilliseconds);
                       Timer1->SetEnabled(true);
                   },
                   [&] { recorder_.Start(); }, [&] { housekeeping_.Start(); }, [&] { health_.Start(); });
}

void FrmVeltrix::Form_Load() {
    SkippingErrors(
        [&] { about_.ShowSplash(); }, [&] { platform_.loop.DoEvents(); },
        [&] { platform_.files.MakeFolder("Data"); },
        [&] { controls_.Picture("Picture5").surface.SetPicture(platform_.pictures.Load("picture5.bmp")); },
        [&] { replayFiles_.Start(); },
        [&] {
            ReadRamDrivePath();
            tick_.sAudioFile = ramDrivePath_ + "audio.dat";
            if (platform_.files.Exists(tick_.sAudioFile)) platform_.files.Delete(tick_.sAudioFile);
        },
        [&] { LoadDisplays(); }, [&] { bLoaded = true; });
}

void FrmVeltrix::ReadRamDrivePath() {
    ramDrivePath_ = platform_.store.GetSetting("RAMDrive", "Path", "");
}

void FrmVeltrix::LoadDisplays() {
    SkippingErrors([&] { displays_.Polar().Load(platform_.files); },
                   [&] { polarView_.GyrelLoadBackground(); }, [&] { mapView_.Load(); },
                   [&] { DrawCaptions(); }, [&] { captions_.DrawHistory(); });
}

void FrmVeltrix::Form_Unload() {
    Timer1->SetEnabled(false);
    housekeeping_.Stop();
    SkippingErrors(
        [&] { location_.SaveTables(); }, [&] { network_.list.StationListSave(); },
        [&] { SaveBitmap(platform_.files, "PicSync.bmp", location_.sync.Current().surface.Image()); },
        [&] { SaveBitmap(platform_.files, "picture5.bmp", controls_.Picture("Picture5").surface.Image()); },
        [&] { displays_.Polar().Save(platform_.files); }, [&] { location_.recent.SavepMA(platform_.files); },
        [&] { health_.Stop(); }, [&] { network_.End(); }, [&] { clockDrift_.Save(); });
}

/// Tells the user on the form and outside it.
void FrmVeltrix::Warn(const std::string& line) {
    ListBox& List1 = controls_.List("List1");
    if (List1.Entries().size() >= MostWarnings) List1.Clear();
    List1.Add(GeneralDate(platform_.clock.Now()) + " " + line);
    options_.warn(line);
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
    settings_.WhenTaken("txtStationName", [this] {
        network_.mappers.Local().sRemoteName =
            platform_.store.GetSetting("Setting", "StationName", controls_.Text("txtStationName").Text());
    });
}

void FrmVeltrix::BindLaunchers() {
    const auto launch = [this](std::string_view command, std::string_view address) {
        controls_.Push(command).OnClick = [this, &box = controls_.Text(address)](MouseButton) {
            SkippingErrors(
                [&] { platform_.processes.Start("explorer", {box.Text()}, WindowStyle::Maximized); });
        };
    };
    launch("cmdExplorer", "txtLightningInEurope");
    launch("cmdHomePage", "txtHomePage");
}

void FrmVeltrix::OpenTabs() {
    // A new user enters name and place first.
    if (platform_.store.GetSetting("Setting", "StationName", "New Station") != "New Station") return;
    controls_.Tabs("SSTab1").Enter("Map");
    controls_.Tabs("SSTab2").Enter("Local Station");
}

void FrmVeltrix::BindLocation() {
    delivery_.consumers.stations = &location_.matching;
    delivery_.consumers.calibration = &location_.calibration;
    network_.receivers.matching = &location_.matching;
    network_.receivers.marks = &location_.marks;
    location_.OnMapChanged = [this] {
        DrawMap();
        captions_.DrawPolar();
    };
    network_.list.OnEdited = [this] { ShowEdits(); };
    position_.OnMoved = [this](bool bDecimal) {
        location_.HomeMoved();
        if (bDecimal) DrawMap();
    };
}

void FrmVeltrix::BindCalibration() {
    location_.calibration.OnChanged = [this] {
        location_.calibration.DrawCalibrationCurves();
        DrawMap();
    };
    viewCycle_.OnCalibrationTab = [this] {
        calibrationOverlay_.Show(viewCycle_.IsCalibrating());
        location_.calibration.DrawCalibrationCurves();
    };
    viewCycle_.OnMapMouse = [this](const MouseEvent& event) { MouseOnMap(event); };
}

/// Presses and releases belong to the calibration, moves and drops to the marks.
void FrmVeltrix::MouseOnMap(const MouseEvent& event) {
    if (event.action == MouseAction::Drop) return markDrag_.DropTaken(event.x, event.y);
    if (!viewCycle_.IsCalibrating()) {
        if (event.action == MouseAction::Move) markDrag_.Picture4_MouseMove(event.x, event.y);
        return;
    }
    if (event.button != MouseButton::Left) return;
    if (event.action == MouseAction::Down) calibrationDrag_.Picture4_MouseDown(event.x, event.y);
    if (event.action == MouseAction::Up)
        UnderErrorConvention(errors_, "Picture4_MouseUp",
                             [&] { calibrationDrag_.Picture4_MouseUp(event.x, event.y); });
}

void FrmVeltrix::BindOutput() {
    delivery_.consumers.alarm = &alarm_;
    network_.receivers.alarm = &alarm_;
    delivery_.consumers.clockDrift = &clockDrift_;
    settings_.WhenTaken("txtAnnouncement", [this] {
        if (bLoaded) DrawCaptions();
    });
    controls_.Push("cmdTestFtp").OnClick = [this](MouseButton) { publishing_.cmdTestFtp_Click(); };
}

PublishingParts FrmVeltrix::Published() {
    return {platform_,
            controls_.Picture("Picture1").surface,
            controls_.Picture("Picture4").surface,
            controls_.Picture("Picture5").surface,
            [this]() -> Surface& { return location_.sync.Current().surface; },
            [this] { captions_.DrawPolar(); },
            [this] { captions_.DrawMap(); },
            [this] { captions_.DrawHistory(); },
            [&txtFtpTo = controls_.Text("txtFtpTo")] { return txtFtpTo.Text(); }};
}

/// The captions of the polar display and of the map.
void FrmVeltrix::DrawCaptions() {
    captions_.DrawPolar();
    captions_.DrawMap();
}

/// Whatever asks for it goes on: a map that cannot be read is reported here.
void FrmVeltrix::DrawMap() {
    UnderErrorConvention(errors_, "MapInit", [this] { mapView_.MapInit(); });
}

/// The map and the boxes show the selected station.
void FrmVeltrix::FollowSelection() {
    ShowStation();
    location_.sync.ShowCurrent();
    mapView_.KeepSelectedMap();
    DrawMap();
    calibrationOverlay_.Show(viewCycle_.IsCalibrating());
}

/// The user has edited the list or a map.
void FrmVeltrix::ShowEdits() {
    ShowStation();
    DrawMap();
}

void FrmVeltrix::ShowStation() {
    commands_.ShowStation();
    location_.calibration.ShowCorrections();
}

void FrmVeltrix::BindHousekeeping() {
    housekeeping_.jobs.GetCoarse = [this] {
        preciseNow_.Now();  // sees each turn of the counter, also in a winter without a strike
        return clockDrift_.GetCoarse();
    };
    housekeeping_.jobs.ShowClockDrift = [this] { clockDrift_.Show(); };
    housekeeping_.jobs.PublishMinute = [this] { publishing_.Publish(); };
    housekeeping_.jobs.NoiseLogMinute = [this] { NoiseLogMinute(); };
    housekeeping_.jobs.MapUpdatePlot = [this] { mapView_.Tick(); };
    housekeeping_.jobs.MapInit = [this] { ShowEdits(); };
    housekeeping_.jobs.Timer5_Timer = [this] {
        // Events that run while the form is loading must not take the plot that is still to come for an empty
        // day.
        if (bLoaded) rollover_.Timer5_Timer();
    };
}

HomeStation FrmVeltrix::Home() {
    const auto shown = [this](std::string_view box) { return ValNeutral(controls_.Text(box).Text()); };
    return {network_.mappers.Local().sRemoteName,
            platform_.store.GetSetting("Setting", "Announcement", ""),
            position_.HomeLongitude(),
            position_.HomeLatitude(),
            shown("txtLongitude"),
            shown("txtLatitude"),
            options_.version,
            network_.mappers.Local().dClock};
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
