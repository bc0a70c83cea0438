#pragma once
// By how much a station's bearing has to turn so that a strike lies where the user has dropped it.

namespace veltrix {

/// A place as a station's mark sees it, in pixels: mark less place, y upwards.
struct MarkOffset {
    double dX = 0;
    double dY = 0;
};

/// The offset of the place (`x`, `y`) from a mark whose upper left corner is at (`left`, `top`), y downwards
/// in both.
MarkOffset OffsetFromMark(double left, double top, double x, double y);

/// The bearing of a place as seen from the mark, degrees clockwise from north, 0 to 360. The axis alone is
/// meant: the bearing may be that of the opposite direction.
double BearingFromMark(const MarkOffset& offset);

/// The turn of a bearing, in degrees above -180 to 180, that lets it go through the place of release. The
/// other station's bearing is to turn, too.
double TurnToRelease(double dDownAngle, const MarkOffset& release);

/// The same while the other station's bearing is to stay: the place of release first moves along x or y onto
/// the other's line, whichever that line is flatter to. `down` and `otherDown` are the place of the press as
/// both marks see it. Raises DivisionByZero or Overflow for a press right at the other mark.
double TurnAlongOther(const MarkOffset& down, const MarkOffset& otherDown, const MarkOffset& release);

}  // namespace veltrix
