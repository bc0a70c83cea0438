#include "station/calibration_overlay.h"

#include <algorithm>
#include <cmath>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

constexpr int RemoteTab = 1;  // of SSTab4
constexpr double DegreesPerRadian = 57.2958;

}  // namespace

CalibrationOverlay::CalibrationOverlay(FormControls& controls, StationNetwork& network)
    : network_(network),
      Picture4(controls.Picture("Picture4").surface),
      SSTab4(controls.Tabs("SSTab4")),
      ShapeCircle(controls.Figure("ShapeCircle")),
      LineLBound(controls.Line("LineLBound")),
      LineUbound(controls.Line("LineUbound")) {}

void CalibrationOverlay::Show(bool bCalibrating) {
    const bool bSeen = Place() && bCalibrating && SSTab4.Tab() == RemoteTab;
    ShapeCircle.SetVisible(bSeen);
    LineLBound.SetVisible(bSeen);
    LineUbound.SetVisible(bSeen);
}

bool CalibrationOverlay::Place() {
    const ClassMapper& station = network_.Selected();
    const double width = Picture4.ScaleWidth();
    const double height = Picture4.ScaleHeight();
    const double x = RoundTiesToEven(station.RemoteX);
    const double y = RoundTiesToEven(height - station.RemoteY);
    if (x < 0 || x > width || y < 0 || y > height) return false;
    const double r = std::min({x, y, width - x, height - y});
    ShapeCircle.SetLeft(x - r);
    ShapeCircle.SetTop(y - r);
    ShapeCircle.SetWidth(2 * r);
    ShapeCircle.SetHeight(2 * r);
    const auto bound = [&](double dAngle) {
        const double a = dAngle / DegreesPerRadian;
        return LineShape::Ends{x, y, x + r * std::sin(a), y - r * std::cos(a)};
    };
    LineLBound.SetEnds(bound(Calibration::dCentreAngle + Calibration::dApertureAngle / 2));
    LineUbound.SetEnds(bound(Calibration::dCentreAngle - Calibration::dApertureAngle / 2));
    return true;
}

}  // namespace veltrix
