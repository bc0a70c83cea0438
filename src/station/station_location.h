#pragma once
// The station's part in locating strikes, put together.

#include <cstdint>
#include <functional>

#include "station/calibration.h"
#include "station/pair_matching.h"
#include "station/station_marks.h"
#include "station/sync_page.h"

namespace veltrix {

/// Owns what the correlation of detections and the map of strikes need beside the rows of the station list;
/// the members are made in the order in which they use each other. Owned by the form.
class StationLocation {
  public:
    /// `home` tells where the local station is.
    StationLocation(FormControls& controls, SettingsBinding& settings, Platform& platform,
                    ErrorReporter& errors, PreciseNow& preciseNow, StationNetwork& network,
                    const std::function<HomeStation()>& home);

    /// Binds the controls. REQUIRES that the settings are loaded and the network has started.
    void Start();
    /// Writes the calibration tables that have changed.
    void SaveTables();

    /// What the user has set.
    FixRules Rules() const;

    /// The local station is where its boxes say: its calibration table follows.
    void HomeMoved();

    /// A setting that the whole map depends on has changed. May be empty.
    std::function<void()> OnMapChanged;

  private:
    FormControls& controls_;
    SettingsBinding& settings_;
    Platform& platform_;
    StationNetwork& network_;
    std::function<HomeStation()> home_;
    std::int16_t iFocusWindow_;
    bool bStarted_ = false;

  public:
    /// The parts, for who wires them to the rest of the form.
    RecentData recent;
    LightningDots dots;
    SyncPage sync;
    MapMarks marks;
    StrikeLocator locator;
    PairMatching matching;
    Calibration calibration;
};

}  // namespace veltrix
