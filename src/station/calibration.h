#pragma once
// The calibration of bearings: the fixed corrections, the commands of the "Calib" tab and the curves.

#include <functional>

#include "detection/consumers.h"
#include "station/settings_binding.h"
#include "station/station_network.h"

namespace veltrix {

/// Corrections and calibration tables of the local and of the selected station. Owned by the form.
class Calibration final : public LocalCalibration {
  public:
    Calibration(FormControls& controls, SettingsBinding& settings, StationNetwork& network);

    /// Binds the commands. REQUIRES that the settings are loaded.
    void Start();

    /// Shows the corrections of the local and of the selected station, and their curves.
    void ShowCorrections();
    /// Draws the curves of the selected and of the local station, while the tab for drag and drop is open.
    void DrawCalibrationCurves();

    double DestinToSource(double dDestin) override;

    /// Bearings have changed: the map is to be drawn anew. May be empty.
    std::function<void()> OnChanged;

    /// Corrections before the last drag, degrees; before any, those of the stations shown.
    double dUndoLocalCorrection = 0;
    double dUndoRemoteCorrection = 0;

  private:
    /// One of the two stations that are calibrated.
    struct Side {
        ClassMapper& mapper;
        TextBox& correction;
        double& dUndo;
        std::string_view backup;  // the table before the last drag
    };

    ClassMapper& Selected() { return network_.mappers[network_.selection.MapperIndex]; }
    template <class Action>
    void ForChosen(Action action);
    void TakeCorrection(ClassMapper& mapper, std::string_view box);
    void TakeTable(ClassMapper& mapper);
    void KeepForUndo();
    void Clear(Side side);
    void Undo(Side side);

    StationNetwork& network_;
    SettingsBinding& settings_;
    TextBox& txtLocalCorrectionAngle;
    TextBox& txtCorrectionAngle;
    TextBox& txtAngularSeparation;
    CheckBox& OptionCalibrateAngle;
    CheckBox& OptionCalibrateNonLinAngle;
    CheckBox& OptionCalibLocal;
    CheckBox& OptionCalibRemote;
    Button& cmdClearpSD;
    Button& cmdUndopSD;
    TabStrip& SSTab3;
    TabStrip& SSTab4;
    PictureBox& PicpSD;
    Label& LblpSD;
    bool bStarted_ = false;
};

}  // namespace veltrix
