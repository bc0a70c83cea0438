#include "location/calibration_turn.h"

#include <cmath>
#include <numbers>

#include "common/arithmetic.h"
#include "common/calc_angles.h"

namespace veltrix {

namespace {

constexpr double Circle = 360;

/// In degrees anticlockwise from the x axis.
double AngleOf(const MarkOffset& offset) {
    return CalcAtan2(offset.dX, offset.dY) * 180 / std::numbers::pi;
}

/// The same turn the shorter way round.
double Folded(double dTurn) {
    const double turn = CalcModulo(dTurn, Circle);
    return turn > Circle / 2 ? turn - Circle : turn;
}

}  // namespace

MarkOffset OffsetFromMark(double left, double top, double x, double y) {
    return {left - x, -(top - y)};
}

double BearingFromMark(const MarkOffset& offset) {
    return CalcModulo(90 - AngleOf(offset), Circle);
}

double TurnToRelease(double dDownAngle, const MarkOffset& release) {
    return Folded(90 - AngleOf(release) - dDownAngle);
}

double TurnAlongOther(const MarkOffset& down, const MarkOffset& otherDown, const MarkOffset& release) {
    MarkOffset moved = release;
    if (std::abs(otherDown.dY) < std::abs(otherDown.dX))
        moved.dY = Divide(otherDown.dY, otherDown.dX) * (release.dX - down.dX) + down.dY;
    else
        moved.dX = Divide(otherDown.dX, otherDown.dY) * (release.dY - down.dY) + down.dX;
    return Folded(AngleOf(down) - AngleOf(moved));
}

}  // namespace veltrix
