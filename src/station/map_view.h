#pragma once
// The map of strikes: its background and geometry, the marks and dots on it, and the commands of its dialog.

#include <functional>
#include <string>

#include "location/replot.h"
#include "station/background_dialog.h"
#include "station/map_maker.h"
#include "station/station_marks.h"
#include "station/station_network.h"

namespace veltrix {

/// Puts the map together, and anew whenever something it stands on has changed. Owned by the form.
class MapView {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        FormControls& controls;
        Platform& platform;
        ErrorReporter& errors;
        StationNetwork& network;
        MapMarks& marks;
        RecentData& recent;
        LightningDots& dots;
        std::function<FixRules()> rules;
        std::function<void(bool)> skipSamples;
        std::function<void()> Timer1_Timer;
        std::function<void()> drawCaption;
    };

    explicit MapView(const Parts& parts);

    /// Lays the built-in map and binds the commands of the dialog.
    void Start();
    /// Brings the map of the last run back: its file and its strikes. From here on MapInit() works. Failed
    /// steps are passed over.
    void Load();

    /// Draws the map of the selected station: background, geometry, marks, sectors if they are wanted, the
    /// strikes that are young enough, by the calibration as it now stands, and the caption. Does nothing
    /// before Load(); asked for inside itself, it begins anew at its end. Raises what Pictures and Files
    /// raise for a file that cannot be read, after everything else is done.
    void MapInit();
    /// Lets the dots age; once a minute.
    void Tick();

    /// The map of the selected station is that of the next start.
    void KeepSelectedMap() { dialog_.Keep(parts_.network.Selected().MapFilenamePicture4); }

    /// Opens the dialog.
    void OpenFrame2() { dialog_.Open(); }

  private:
    void DrawOnce(FailureHandler& failures);
    void LoadBackground(const std::string& file);
    void TakeGeometry(const std::string& file);
    void TintSectors();
    void DrawStrikes();
    void Clear();
    void Reset();
    void MakeStationMap();

    Parts parts_;
    PictureBox& Picture4;
    PictureBox& Picture8;
    Shape& shpSphere;
    Shape& shp2D;
    Button& cmdReset;
    Button& cmdStationMap;
    TextBox& txtStationMapRadius;
    CheckBox& optSectors;
    BackgroundDialog dialog_;
    MapMaker maker_;
    bool bLoaded_ = false;
    bool bDrawing_ = false;
    bool bDrawAgain_ = false;  // asked for while drawing
};

}  // namespace veltrix
