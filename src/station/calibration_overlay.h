#pragma once
// The overlay that lies on the map around the station whose bearings are being calibrated.

#include "station/calibration.h"

namespace veltrix {

/// A circle around the selected station, as large as fits on the map, and the two bounds of a sector of it.
/// Nothing sets the sector yet, so that both bounds stand straight up. Owned by the form.
class CalibrationOverlay {
  public:
    CalibrationOverlay(FormControls& controls, StationNetwork& network);

    /// Places the overlay, and shows it while the calibration is active and its "Remote" tab is open, if the
    /// station lies on the map.
    void Show(bool bCalibrating);

  private:
    bool Place();

    StationNetwork& network_;
    const Surface& Picture4;
    TabStrip& SSTab4;
    Shape& ShapeCircle;
    LineShape& LineLBound;
    LineShape& LineUbound;
};

}  // namespace veltrix
