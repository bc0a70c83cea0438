#include "station/calibration.h"

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::string_view CorrectionMask = "0.0";
constexpr std::string_view DragTab = "Drag && Drop";
constexpr std::string_view CalibrationTab = "Calib";
constexpr int CurveEnd = 170;  // degrees
constexpr int CurveStep = 10;

}  // namespace

Calibration::Calibration(FormControls& controls, SettingsBinding& settings, StationNetwork& network)
    : network_(network),
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
    settings.WhenTaken("txtLocalCorrectionAngle",
                       [this] { TakeCorrection(network_.mappers.Local(), "txtLocalCorrectionAngle"); });
    settings.WhenTaken("txtCorrectionAngle", [this] {
        // Until the list is read, the box shows what was stored for the station of the last run.
        if (bStarted_) TakeCorrection(Selected(), "txtCorrectionAngle");
    });
}

void Calibration::Start() {
    bStarted_ = true;
    cmdClearpSD.OnClick = [this](MouseButton) { ForChosen([this](Side side) { Clear(side); }); };
    cmdUndopSD.OnClick = [this](MouseButton) { ForChosen([this](Side side) { Undo(side); }); };
    SSTab4.OnClick = [this](MouseButton) { DrawCalibrationCurves(); };
    KeepForUndo();
}

void Calibration::KeepForUndo() {
    dUndoLocalCorrection = network_.mappers.Local().dCorrectionAngle;
    dUndoRemoteCorrection = Selected().dCorrectionAngle;
}

void Calibration::TakeCorrection(ClassMapper& mapper, std::string_view box) {
    mapper.dCorrectionAngle = settings_.Number(box);
    if (bStarted_ && OnChanged) OnChanged();
}

template <class Action>
void Calibration::ForChosen(Action action) {
    if (OptionCalibLocal.Checked())
        action({network_.mappers.Local(), txtLocalCorrectionAngle, dUndoLocalCorrection, "Local_pSD.dat"});
    if (OptionCalibRemote.Checked())
        action({Selected(), txtCorrectionAngle, dUndoRemoteCorrection, "Remote_pSD.dat"});
}

void Calibration::Clear(Side side) {
    if (OptionCalibrateAngle.Checked()) {
        side.correction.Enter("0.0");
        return;
    }
    side.mapper.pSD.bSDDirty = true;
    side.mapper.pSD.Clear();
    TakeTable(side.mapper);
}

void Calibration::Undo(Side side) {
    side.correction.Enter(GeneralNumber(side.dUndo));
    if (!OptionCalibrateNonLinAngle.Checked()) return;
    side.mapper.pSD.pSD_Restore(side.backup);
    TakeTable(side.mapper);
}

void Calibration::TakeTable(ClassMapper& mapper) {
    mapper.Save();
    if (OnChanged) OnChanged();
}

void Calibration::ShowCorrections() {
    KeepForUndo();
    txtLocalCorrectionAngle.SetText(FormatNeutral(network_.mappers.Local().dCorrectionAngle, CorrectionMask));
    txtCorrectionAngle.SetText(FormatNeutral(Selected().dCorrectionAngle, CorrectionMask));
    txtAngularSeparation.SetText(FormatNeutral(settings_.Number("txtAngularSeparation"), CorrectionMask));
    DrawCalibrationCurves();
}

void Calibration::DrawCalibrationCurves() {
    if (SSTab3.Lines().front() != CalibrationTab || SSTab4.Lines().front() != DragTab) return;
    Surface& surface = PicpSD.surface;
    surface.Cls();
    LblpSD.SetCaption(Selected().pSDdat);
    const auto plot = [&surface](const ClassMapper& mapper, int a, ColourValue colour) {
        surface.PSet(a, mapper.pSD.DestinToSource(static_cast<float>(a)) - a, colour);
    };
    for (int a = 0; a <= CurveEnd; a += CurveStep) {
        plot(Selected(), a, Red);
        plot(network_.mappers.Local(), a, Green);
        surface.PSet(a, 0, White);
    }
}

double Calibration::DestinToSource(double dDestin) {
    return network_.mappers.Local().pSD.DestinToSource(static_cast<float>(dDestin));
}

}  // namespace veltrix
