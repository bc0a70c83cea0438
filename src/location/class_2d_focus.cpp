#include "location/class_2d_focus.h"

#include "common/calc_angles.h"

namespace veltrix {

namespace {

constexpr double Degrees = 57.295827908797776;  // per radian; deliberately not that of ModCalcGlobe

double AngleFrom(double x, double y, MapPoint fix) {
    return CalcAtan2(x - fix.dX, y - fix.dY) * Degrees;
}

/// True when `angle`, or the same a circle on either side, lies within `w` of `centre`, bounds excluded.
bool IsWithin(double angle, double centre, double w) {
    const auto isInside = [&](double a) { return centre - w < a && a < centre + w; };
    return isInside(angle) || isInside(angle + 360) || isInside(angle - 360);
}

/// The last points of a mean, with their sums.
class Mean {
  public:
    /// Takes a point in. False when it was one too many: it has replaced the first.
    bool Add(MapPoint point) {
        MapPoint& slot = points_[iSlot];
        dSumX = dSumX - slot.dX + point.dX;
        dSumY = dSumY - slot.dY + point.dY;
        slot = point;
        iSlot = (iSlot + 1) % points_.size();
        if (dN == Class2DFocus::MostPoints) return false;
        ++dN;
        return true;
    }

    double dSumX = 0;
    double dSumY = 0;
    double dN = 0;

  private:
    std::array<MapPoint, Class2DFocus::MostPoints> points_{};
    std::size_t iSlot = 0;
};

}  // namespace

void Class2DFocus::Clear() {
    *this = Class2DFocus();
}

MapPoint Class2DFocus::GetFocus(double lX, double lY, double rX, double rY, MapPoint fix,
                                std::int16_t iFocusWindow, DateTime pAge) {
    const double aL = AngleFrom(lX, lY, fix);
    const double aR = AngleFrom(rX, rY, fix);
    const double w = iFocusWindow + 1;

    ring_[static_cast<std::size_t>(iHead)] = {aL, aR, fix.dX, fix.dY, pAge};
    iHead = static_cast<std::int16_t>((iHead + 1) % RingLength);
    if (iCount < RingLength) ++iCount;

    Mean mean;
    for (int k = 0; k < iCount; ++k) {
        const Record& record = ring_[static_cast<std::size_t>((iHead - k + RingLength - 1) % RingLength)];
        const bool isNear = IsWithin(record.dLocalAngle, aL, w) && IsWithin(record.dRemoteAngle, aR, w);
        if (isNear && !mean.Add({record.dX, record.dY})) break;
    }
    const bool isEnough = mean.dN >= 2 || (w < 2 && mean.dN > 0);
    return isEnough ? MapPoint{mean.dSumX / mean.dN, mean.dSumY / mean.dN} : MapPoint{};
}

}  // namespace veltrix
