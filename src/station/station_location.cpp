#include "station/station_location.h"

#include "common/arithmetic.h"

namespace veltrix {

namespace {

/// In force until the user first edits the box, whatever that shows.
constexpr std::int16_t FirstFocusWindow = 3;
constexpr int PauseAfterSave = 10;  // ms

}  // namespace

StationLocation::StationLocation(FormControls& controls, SettingsBinding& settings, Platform& platform,
                                 ErrorReporter& errors, PreciseNow& preciseNow, StationNetwork& network,
                                 const std::function<HomeStation()>& home)
    : controls_(controls),
      settings_(settings),
      platform_(platform),
      network_(network),
      home_(home),
      iFocusWindow_(FirstFocusWindow),
      dots(platform.clock),
      sync(controls, network.selection),
      marks(controls, platform.store, platform.glyphs, network.mappers, network.selection, home),
      locator({network.mappers, recent, dots, controls.Picture("Picture4").surface,
               controls.Picture("Picture8").surface, platform.files, platform.clock, preciseNow, errors,
               [this] { return Rules(); },
               PairDisplay({sync.Panels(), controls.Text("txtLocal"), controls.Text("txtRemote"),
                            controls.Text("txtClockDrift"), controls.Caption("lblStrikeCount4")})}),
      matching(controls, network, locator, platform.clock, home),
      calibration(controls, settings, platform.files, network) {
    const auto whenTaken = [&](std::string_view control, auto take) {
        settings.WhenTaken(control, [this, take] {
            take();
            if (bStarted_ && OnMapChanged) OnMapChanged();
        });
    };
    whenTaken("txtAge", [this] { dots.Age = RoundToLong(settings_.Number("txtAge")); });
    whenTaken("optFocus", [] {});
    whenTaken("optSectors", [] {});
    whenTaken("txtFocusWindow", [this] {
        if (bStarted_) iFocusWindow_ = RoundToInteger(settings_.Number("txtFocusWindow"));
    });
    network.list.OnMoved = [this](std::int16_t row) { network_.mappers[row].Init(); };
    network.list.OnFilled = [this] { marks.PlaceAllStationMarks(); };
}

void StationLocation::Start() {
    bStarted_ = true;
    HomeMoved();
    sync.Start();
    calibration.Start();
}

void StationLocation::HomeMoved() {
    if (!bStarted_) return;
    const HomeStation home = home_();
    ClassMapper& local = network_.mappers.Local();
    local.Longitude = home.HomeLongitude;
    local.Latitude = home.HomeLatitude;
    local.pSDdat.clear();  // else the table would follow every digit that is typed
    local.Init();
}

FixRules StationLocation::Rules() const {
    const HomeStation home = home_();
    const auto isOn = [this](std::string_view box) { return controls_.Check(box).Checked(); };
    return {.MapperIndex = network_.selection.MapperIndex,
            .home = {home.HomeLongitude, home.HomeLatitude},
            .dAngularSeparation = settings_.Number("txtAngularSeparation"),
            .dLocalCorrectionAngle = calibration.dLocalCorrectionAngle,
            .Age = dots.Age,
            .FocusWindow = iFocusWindow_,
            .iMinStrength = RoundToInteger(settings_.Number("txtMinStrength")),
            .bFocus = isOn("optFocus"),
            .bTOAFilter = isOn("OptionTOAFilter"),
            .bClockDriftCompensation = isOn("OptionClockDriftCompensation"),
            .bLog = isOn("OptionLogLocalRemote"),
            .RTClock = isOn("OptionRealTime")};
}

void StationLocation::SaveTables() {
    for (int row = 0; row <= C_NUMBEROFMAPPERS; ++row) {
        ClassMapper& mapper = network_.mappers[row];
        if (!mapper.pSD.bSDDirty) continue;
        mapper.Save();
        platform_.loop.Sleep(PauseAfterSave);
    }
}

}  // namespace veltrix
