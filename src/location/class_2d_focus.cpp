#include "location/class_2d_focus.h"

#include <cmath>

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

// The records are looked at in blocks, from the newest on. The loops over a block have no branch, so that the
// compiler does several records at once; what it takes for near is then tested exactly.
constexpr std::size_t Block = 20;
static_assert(Class2DFocus::RingLength % Block == 0);
constexpr float Slack = 0.001F;  // degrees, far above what single precision can be off

/// The angle between two directions.
float Apart(float a, float b) {
    const float one = std::abs(a - b);
    const float other = std::abs(one - 360);
    return other < one ? other : one;
}

/// Directions with a limit, in single precision.
struct Window {
    float local;
    float remote;
    float limit;
};

/// Which records of a block may lie within a window, and how many.
struct Candidates {
    Candidates(const Window& window, const float* local, const float* remote) {
        int all = 0;
        for (std::size_t i = 0; i < Block; ++i) {
            const int near = static_cast<int>(Apart(local[i], window.local) < window.limit) &
                             static_cast<int>(Apart(remote[i], window.remote) < window.limit);
            isNear[i] = near;
            all += near;
        }
        count = all;
    }

    std::array<int, Block> isNear;
    int count;
};

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

void Class2DFocus::Angles::Put(std::size_t slot, double dLocalAngle, double dRemoteAngle) {
    local[slot] = local[slot + RingLength] = static_cast<float>(dLocalAngle);
    remote[slot] = remote[slot + RingLength] = static_cast<float>(dRemoteAngle);
}

void Class2DFocus::Clear() {
    *this = Class2DFocus();
}

MapPoint Class2DFocus::GetFocus(double lX, double lY, double rX, double rY, MapPoint fix,
                                std::int16_t iFocusWindow, DateTime pAge) {
    const double aL = AngleFrom(lX, lY, fix);
    const double aR = AngleFrom(rX, rY, fix);
    const double w = iFocusWindow + 1;

    const auto slot = static_cast<std::size_t>(iHead);
    ring_[slot] = {aL, aR, fix.dX, fix.dY, pAge};
    angles_.Put(slot, aL, aR);
    iHead = static_cast<std::int16_t>((iHead + 1) % RingLength);
    if (iCount < RingLength) ++iCount;

    const Window window{static_cast<float>(aL), static_cast<float>(aR), static_cast<float>(w) + Slack};
    Mean mean;
    bool isFull = false;
    for (std::size_t k = 0; k < static_cast<std::size_t>(iCount) && !isFull; k += Block) {
        const std::size_t first = static_cast<std::size_t>(iHead) + RingLength - Block - k;
        const Candidates candidates(window, &angles_.local[first], &angles_.remote[first]);
        if (candidates.count == 0) continue;
        for (std::size_t i = Block; i-- > 0 && !isFull;) {
            const Record& record = ring_[(first + i) % RingLength];
            const bool isNear = candidates.isNear[i] != 0 && IsWithin(record.dLocalAngle, aL, w) &&
                                IsWithin(record.dRemoteAngle, aR, w);
            isFull = isNear && !mean.Add({record.dX, record.dY});
        }
    }
    const bool isEnough = mean.dN >= 2 || (w < 2 && mean.dN > 0);
    return isEnough ? MapPoint{mean.dSumX / mean.dN, mean.dSumY / mean.dN} : MapPoint{};
}

}  // namespace veltrix
