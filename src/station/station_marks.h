#pragma once
// The marks of the stations on the map, and what is shown of the station under one.

#include <functional>
#include <string>

#include "location/class_mapper.h"
#include "location/mod_calc_globe.h"
#include "network/receivers.h"
#include "network/station_sockets.h"
#include "network/wire_text.h"
#include "platform/glyphs.h"
#include "platform/settings_store.h"
#include "station/form_controls.h"

namespace veltrix {

/// Places Picture6, the mark of the local station, and Picture7, those of the list's rows. From where a mark
/// lies follows where its station is on the map: HomeX and HomeY, RemoteX and RemoteY. Owned by the form.
class MapMarks final : public StationMarks {
  public:
    /// `home` tells where the local station is; `glyphs` how wide a name is.
    MapMarks(FormControls& controls, SettingsStore& store, Glyphs& glyphs, Mappers& mappers,
             const Selection& selection, std::function<HomeStation()> home);

    /// Places the mark of one row, 0 being the local station.
    void PlaceStationMark(std::int16_t row) override;
    /// Places all marks, that of the local station in front. With a MapRadius of 0 they lie where the user
    /// has put them on this map, else where their stations are on the globe. Seen are those of rows in use,
    /// and the local one unless its position is 0, 0.
    void PlaceAllStationMarks();
    void DisplayStationConnectionState() override;
    /// The user has put the mark of a row there, 0 being that of the local station: it is kept for the map
    /// that is shown, and where the station is on the map follows. REQUIRES 0 <= row <= 100.
    void MoveMark(std::int16_t row, double left, double top);

    /// The mark of a row, 0 being the local station. REQUIRES 0 <= row <= 100.
    Marker& MarkOf(std::int16_t row) const;

    /// Draws the rings around the local station, and those around a row's station onto Picture4; in the
    /// second pass only where a client socket is busy with it or connected to it. REQUIRES 1 <= row <= 100,
    /// and that the marks are placed.
    void DrawStationCircle(std::int16_t row, bool bSecondPass);
    /// The rings of all, those of connected stations on top.
    void DrawAllStationCircles();

    /// Frames the mark of the selected station with ShapeMapperIndex, and shows the station's information.
    void ShowSelected();
    /// Fills the labels with what is known of a station and puts its name beside its mark, as long as they
    /// are seen. REQUIRES 0 <= row <= 100.
    void ShowStationInfo(std::int16_t row);

  private:
    std::string SectionOf(std::int16_t row) const;
    void TakePlaceOf(std::int16_t row);
    void PlaceHome();
    void PlaceRemote(std::int16_t row);
    void Place(std::int16_t row, double longitude, double latitude) const;
    MapPoint CentreOf(const Marker& mark) const;
    void DrawRings(double x, double y, ColourValue color);
    void FrameSelected();

    FormControls& controls_;
    SettingsStore& store_;
    Glyphs& glyphs_;
    Mappers& mappers_;
    const Selection& selection_;
    std::function<HomeStation()> home_;
    Surface& Picture4;
    Marker& Picture6;
    Shape& ShapeMapperIndex;
    Label& lblWhoIs;
};

}  // namespace veltrix
