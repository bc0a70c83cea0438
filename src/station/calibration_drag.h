#pragma once
// A drag on the map: a strike is taken with the mouse and dropped where it belongs.

#include "location/calibration_turn.h"
#include "station/calibration.h"
#include "station/station_marks.h"

namespace veltrix {

/// Follows the left button on Picture4, shows the drag as both stations see it, and has the calibration turn
/// their bearings accordingly. A release without a press works with the press before; one in the very place
/// of the press turns nothing. Owned by the form.
class CalibrationDrag {
  public:
    CalibrationDrag(FormControls& controls, const Selection& selection, const MapMarks& marks,
                    Calibration& calibration);

    /// The left button went down there on the map.
    void Picture4_MouseDown(double x, double y);
    /// It went up there. Raises what TurnAlongOther() and Calibration::Turn() raise.
    void Picture4_MouseUp(double x, double y);

  private:
    /// What one station shows of a drag, and the press as it saw it.
    struct Side {
        CheckBox& chosen;
        TextBox& dX;
        TextBox& dY;
        TextBox& dA;
        TextBox& ddA;
        std::string_view angleSign;
        MarkOffset down = {};
        double dDownAngle = 0;
    };

    static void Press(Side& side, const Marker& mark, double x, double y);
    static CalibrationTurn Release(const Side& side, const Side& other, const Marker& mark, double x,
                                   double y);

    const Selection& selection_;
    const MapMarks& marks_;
    Calibration& calibration_;
    Side local_;
    Side remote_;
    double dDownX_ = 0;
    double dDownY_ = 0;
};

}  // namespace veltrix
