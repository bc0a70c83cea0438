#include "station/calibration_drag.h"

#include "common/neutral_text.h"

namespace veltrix {

namespace {

void ShowOffset(TextBox& dX, TextBox& dY, const MarkOffset& offset) {
    dX.SetText("dX:" + GeneralNumber(offset.dX));
    dY.SetText("dY:" + GeneralNumber(offset.dY));
}

}  // namespace

CalibrationDrag::CalibrationDrag(FormControls& controls, const Selection& selection, const MapMarks& marks,
                                 Calibration& calibration)
    : selection_(selection),
      marks_(marks),
      calibration_(calibration),
      local_{controls.Check("OptionCalibLocal"), controls.Text("txtLocalDx"),  controls.Text("txtLocaldY"),
             controls.Text("txtLocaldA"),        controls.Text("txtLocalddA"), "lA:"},
      remote_{controls.Check("OptionCalibRemote"), controls.Text("txtRemotedX"),
              controls.Text("txtRemotedY"),        controls.Text("txtRemotedA"),
              controls.Text("txtRemoteddA"),       "rA:"} {}

void CalibrationDrag::Picture4_MouseDown(double x, double y) {
    dDownX_ = x;
    dDownY_ = y;
    Press(local_, marks_.MarkOf(0), x, y);
    Press(remote_, marks_.MarkOf(selection_.MapperIndex), x, y);
}

void CalibrationDrag::Press(Side& side, const Marker& mark, double x, double y) {
    side.down = OffsetFromMark(mark.Left(), mark.Top(), x, y);
    side.dDownAngle = BearingFromMark(side.down);
    ShowOffset(side.dX, side.dY, side.down);
    side.dA.SetText(std::string(side.angleSign) + GeneralNumber(side.dDownAngle));
}

void CalibrationDrag::Picture4_MouseUp(double x, double y) {
    const CalibrationTurn local = Release(local_, remote_, marks_.MarkOf(0), x, y);
    const CalibrationTurn remote = Release(remote_, local_, marks_.MarkOf(selection_.MapperIndex), x, y);
    // A click would else take the undo of the drag before away.
    const bool bClick = x == dDownX_ && y == dDownY_ && (local_.chosen.Checked() || remote_.chosen.Checked());
    if (!bClick) calibration_.Turn(local, remote);
}

CalibrationTurn CalibrationDrag::Release(const Side& side, const Side& other, const Marker& mark, double x,
                                         double y) {
    const MarkOffset release = OffsetFromMark(mark.Left(), mark.Top(), x, y);
    double ddA = 0;
    if (side.chosen.Checked())
        ddA = other.chosen.Checked() ? TurnToRelease(side.dDownAngle, release)
                                     : TurnAlongOther(side.down, other.down, release);
    ShowOffset(side.dX, side.dY, release);
    side.ddA.SetText(GeneralNumber(ddA));
    return {side.dDownAngle, ddA};
}

}  // namespace veltrix
