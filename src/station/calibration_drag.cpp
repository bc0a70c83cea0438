#include "station/calibration_drag.h"

#include "common/neutral_text.h"

namespace veltrix {

namespace {

void ShowOffset(TextBox& dX, TextBox& dY, const MarkOffset& offset) {
    dX.SetText("dX:" + GeneralNumber(offset.dX));
    dY.SetText("dY:" + GeneralNumber(offset.dY));
}

}  // namespace

CalibrationDrag::CalibrationDrag(FormControls& controls, StationNetwork& network, Calibration& calibration)
    : network_(network),
      calibration_(calibration),
      Picture6(controls.Mark("Picture6")),
      local_{controls.Check("OptionCalibLocal"), controls.Text("txtLocalDx"),  controls.Text("txtLocaldY"),
             controls.Text("txtLocaldA"),        controls.Text("txtLocalddA"), "lA:"},
      remote_{controls.Check("OptionCalibRemote"), controls.Text("txtRemotedX"),
              controls.Text("txtRemotedY"),        controls.Text("txtRemotedA"),
              controls.Text("txtRemoteddA"),       "rA:"} {}

const Marker& CalibrationDrag::SelectedMark() const {
    const std::int16_t row = network_.selection.MapperIndex;
    return row == 0 ? Picture6 : *network_.mappers[row].Picture7;
}

void CalibrationDrag::Picture4_MouseDown(double x, double y) {
    dDownX_ = x;
    dDownY_ = y;
    Press(local_, Picture6, x, y);
    Press(remote_, SelectedMark(), x, y);
}

void CalibrationDrag::Press(Side& side, const Marker& mark, double x, double y) {
    side.down = OffsetFromMark(mark.Left(), mark.Top(), x, y);
    side.dDownAngle = BearingFromMark(side.down);
    ShowOffset(side.dX, side.dY, side.down);
    side.dA.SetText(std::string(side.angleSign) + GeneralNumber(side.dDownAngle));
}

void CalibrationDrag::Picture4_MouseUp(double x, double y) {
    const CalibrationTurn local = Release(local_, remote_, Picture6, x, y);
    const CalibrationTurn remote = Release(remote_, local_, SelectedMark(), x, y);
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
