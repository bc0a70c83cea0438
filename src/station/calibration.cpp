#include "station/calibration.h"

#include "common/neutral_text.h"
#include "common/while_set.h"

namespace veltrix {

namespace {

constexpr std::string_view CorrectionMask = "0.0";
constexpr std::string_view TurnedMask = "##0.0";
constexpr std::string_view DragTab = "Drag && Drop";
constexpr std::string_view CalibrationTab = "Calib";
constexpr int CurveEnd = 170;  // degrees
constexpr int CurveStep = 10;

}  // namespace

Calibration::Calibration(FormControls& controls, SettingsBinding& settings, Files& files,
                         StationNetwork& network)
    : files_(files),
      network_(network),
      settings_(settings),
      txtLocalCorrectionAngle(controls.Text("txtLocalCorrectionAngle")),
      txtCorrectionAngle(controls.Text("txtCorrectionAngle")),
      txtAngularSeparation(controls.Text("txtAngularSeparation")),
      OptionCalibrateAngle(controls.Check("OptionCalibrateAngle")),
      OptionCalibrateNonLinAngle(controls.Check("OptionCalibrateNonLinAngle")),
      OptionCalibLocal(controls.Check("OptionCalibLocal")),
      OptionCalibRemote(controls.Check("OptionCalibRemote")),
      cmdClearpSD(controls.Push("cmdClearpSD")),
      cmdUndopSD(controls.Push("cmdUndopSD")),
      SSTab3(controls.Tabs("SSTab3")),
      SSTab4(controls.Tabs("SSTab4")),
      PicpSD(controls.Picture("PicpSD")),
      LblpSD(controls.Caption("LblpSD")) {
    settings.WhenTaken("txtLocalCorrectionAngle", [this] { Take(Local()); });
    settings.WhenTaken("txtCorrectionAngle", [this] {
        // Until the list is read, the box shows what was stored for the station of the last run.
        if (bStarted_) Take(Remote());
    });
}

void Calibration::Start() {
    bStarted_ = true;
    cmdClearpSD.OnClick = [this](MouseButton) { ForChosen([this](Side side) { Clear(side); }); };
    cmdUndopSD.OnClick = [this](MouseButton) { ForChosen([this](Side side) { Undo(side); }); };
    dRemoteCorrectionAngle = network_.Selected().dCorrectionAngle;
}

Calibration::Side Calibration::Local() {
    return {network_.mappers.Local(),
            OptionCalibLocal,
            txtLocalCorrectionAngle,
            dLocalCorrectionAngle,
            dUndoLocalCorrection,
            "Local_pSD.dat",
            0,
            iDraggedLocal_};
}

Calibration::Side Calibration::Remote() {
    return {network_.Selected(),
            OptionCalibRemote,
            txtCorrectionAngle,
            dRemoteCorrectionAngle,
            dUndoRemoteCorrection,
            "Remote_pSD.dat",
            network_.selection.MapperIndex,
            iDraggedRemote_};
}

/// The user has typed a correction, or a command has.
void Calibration::Take(Side side) {
    side.dCorrection = settings_.Number(side.box.Name());
    side.mapper.dCorrectionAngle = side.dCorrection;
    if (bStarted_ && !bChanging_ && OnChanged) OnChanged();
}

/// Runs a command that may change several bearings; the map is drawn once at its end.
template <class Action>
void Calibration::Change(Action action) {
    {
        const WhileSet changing(bChanging_);
        action();
    }
    if (OnChanged) OnChanged();
}

template <class Action>
void Calibration::ForChosen(Action action) {
    Change([&] {
        for (const Side& side : {Local(), Remote()})
            if (side.chosen.Checked()) action(side);
    });
}

void Calibration::Clear(Side side) {
    if (OptionCalibrateAngle.Checked()) {
        side.box.Enter("0.0");
        return;
    }
    side.mapper.pSD.bSDDirty = true;
    side.mapper.pSD.Clear();
    side.mapper.Save();
}

/// A station keeps what it has, unless it was dragged; and its table, when the backup is that of another one.
void Calibration::Undo(Side side) {
    const bool bDragged = side.iDragged == side.row;
    if (bDragged) side.box.Enter(GeneralNumber(side.dUndo));
    if (!OptionCalibrateNonLinAngle.Checked() || !(bDragged || side.iDragged == NoRow)) return;
    if (!files_.Exists(side.backup)) return;
    side.mapper.pSD.pSD_Restore(side.backup);
    side.mapper.Save();
}

void Calibration::Turn(const CalibrationTurn& local, const CalibrationTurn& remote) {
    // Else they would be read over what is turned here.
    network_.list.TakeEdits();
    if (OptionCalibrateAngle.Checked()) {
        Change([&] {
            TurnCorrection(Local(), local.ddA);
            TurnCorrection(Remote(), remote.ddA);
            network_.list.StationListSave();
        });
    } else if (OptionCalibrateNonLinAngle.Checked()) {
        Change([&] {
            BendTable(Remote(), remote);
            BendTable(Local(), local);
        });
    }
}

/// What cmdUndopSD is to bring back.
void Calibration::KeepForUndo(Side side) {
    side.iDragged = side.row;
    side.dUndo = side.dCorrection;
}

void Calibration::TurnCorrection(Side side, double ddA) {
    if (!side.chosen.Checked()) return;
    KeepForUndo(side);
    side.dCorrection += ddA;
    side.mapper.dCorrectionAngle = side.dCorrection;
    side.box.Enter(FormatNeutral(side.dCorrection, TurnedMask));
}

/// The table bends the bearing that is reported, while the drag speaks of the true one: hence the sign.
void Calibration::BendTable(Side side, const CalibrationTurn& turn) {
    side.mapper.pSD.pSD_Backup(side.backup);
    if (!side.chosen.Checked()) return;
    KeepForUndo(side);
    side.dCorrection =
        side.mapper.pSD.UpdatepSD(turn.dDownAngle - 90, dApertureAngle, -turn.ddA, side.dCorrection);
    side.box.Enter(FormatNeutral(side.dCorrection, TurnedMask));
    side.mapper.dCorrectionAngle = side.dUndo;
    side.mapper.Save();
}

void Calibration::ShowCorrections() {
    dRemoteCorrectionAngle = network_.Selected().dCorrectionAngle;
    txtLocalCorrectionAngle.SetText(FormatNeutral(dLocalCorrectionAngle, CorrectionMask));
    txtCorrectionAngle.SetText(FormatNeutral(dRemoteCorrectionAngle, CorrectionMask));
    txtAngularSeparation.SetText(FormatNeutral(settings_.Number("txtAngularSeparation"), CorrectionMask));
    DrawCalibrationCurves();
}

void Calibration::DrawCalibrationCurves() {
    if (SSTab3.Lines().front() != CalibrationTab || SSTab4.Lines().front() != DragTab) return;
    Surface& surface = PicpSD.surface;
    surface.Cls();
    LblpSD.SetCaption(network_.Selected().pSDdat);
    const auto plot = [&surface](const ClassMapper& mapper, int a, ColourValue colour) {
        surface.PSet(a, mapper.pSD.DestinToSource(static_cast<float>(a)) - a, colour);
    };
    for (int a = 0; a <= CurveEnd; a += CurveStep) {
        plot(network_.Selected(), a, Red);
        plot(network_.mappers.Local(), a, Green);
        surface.PSet(a, 0, White);
    }
}

double Calibration::DestinToSource(double dDestin) {
    return network_.mappers.Local().pSD.DestinToSource(static_cast<float>(dDestin));
}

}  // namespace veltrix
