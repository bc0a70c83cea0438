#pragma once
// The calibration of bearings: the fixed corrections, the commands of the "Calib" tab and the curves.

#include <cstdint>
#include <functional>

#include "detection/consumers.h"
#include "station/settings_binding.h"
#include "station/station_network.h"

namespace veltrix {

/// What a drag on the map asks of one station.
struct CalibrationTurn {
    double dDownAngle = 0;  ///< bearing of the place that was pressed, degrees
    double ddA = 0;         ///< by how much that bearing is to turn, degrees
};

/// Corrections and calibration tables of the local and of the selected station. The options say which of the
/// two a command is for, and whether it is for its correction or its table. Owned by the form.
class Calibration final : public LocalCalibration {
  public:
    /// Centre and width of the sector that is calibrated, degrees. Nothing sets one yet.
    static constexpr double dCentreAngle = 0;
    static constexpr double dApertureAngle = 0;

    Calibration(FormControls& controls, SettingsBinding& settings, Files& files, StationNetwork& network);

    /// Binds the commands. REQUIRES that the settings are loaded.
    void Start();

    /// Shows the corrections of the local and of the selected station, and their curves.
    void ShowCorrections();
    /// Draws the curves of the selected and of the local station, while the tab for drag and drop is open.
    void DrawCalibrationCurves();

    /// Turns the bearings of the stations that the options name: by their corrections, which then go into the
    /// station list, or by a bend of their tables around the bearing that was pressed. Of a bend the mean
    /// goes into the correction that the box shows; the one in force deliberately stays as it was. Both
    /// tables as they were go to their backups then, whichever station is turned. What was in force before is
    /// kept for cmdUndopSD.
    void Turn(const CalibrationTurn& local, const CalibrationTurn& remote);

    double DestinToSource(double dDestin) override;

    /// Bearings have changed: the map is to be drawn anew. May be empty.
    std::function<void()> OnChanged;

    /// The corrections that the boxes stand for, degrees. The first is added to new local bearings. A
    /// Mapper's dCorrectionAngle is the same, unless its table was bent.
    double dLocalCorrectionAngle = 0;
    double dRemoteCorrectionAngle = 0;
    /// Those before the last drag.
    double dUndoLocalCorrection = 0;
    double dUndoRemoteCorrection = 0;

  private:
    /// One of the two stations that are calibrated.
    struct Side {
        ClassMapper& mapper;
        CheckBox& chosen;
        TextBox& box;
        double& dCorrection;
        double& dUndo;
        std::string_view backup;  // the table before the last drag
        std::int16_t row;
        std::int16_t& iDragged;
    };

    Side Local();
    Side Remote();
    void Take(Side side);
    void TurnCorrection(Side side, double ddA);
    void BendTable(Side side, const CalibrationTurn& turn);
    template <class Action>
    void Change(Action action);
    template <class Action>
    void ForChosen(Action action);
    static void KeepForUndo(Side side);
    void Clear(Side side);
    void Undo(Side side);

    Files& files_;
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
    bool bChanging_ = false;  // a command is under way, after which the map is drawn once
    // The rows that the last drags have turned.
    std::int16_t iDraggedLocal_ = NoRow;
    std::int16_t iDraggedRemote_ = NoRow;
};

}  // namespace veltrix
