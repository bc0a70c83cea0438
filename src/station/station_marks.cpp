#include "station/station_marks.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr double EdgeRoom = 20;  // pixels that a mark the user has placed keeps from the edges
constexpr double FrameRoom = 1;  // pixels between a mark and the frame around it
/// Where a station lies that the map's projection gives no place for.
constexpr MapPoint Nowhere{-1, -1};
/// A RemoteX of 0 means that the row is free, so that no station may lie exactly there.
constexpr double BesideZero = 1e-6;
constexpr double HalfMark = Marker::Side / 2.0;

bool IsPlaced(const HomeStation& home) {
    return home.HomeLongitude != 0 || home.HomeLatitude != 0;
}

}  // namespace

MapMarks::MapMarks(FormControls& controls, SettingsStore& store, Glyphs& glyphs, Mappers& mappers,
                   const Selection& selection, std::function<HomeStation()> home)
    : controls_(controls),
      store_(store),
      glyphs_(glyphs),
      mappers_(mappers),
      selection_(selection),
      home_(std::move(home)),
      Picture4(controls.Picture("Picture4").surface),
      Picture6(controls.Mark("Picture6")),
      ShapeMapperIndex(controls.Figure("ShapeMapperIndex")),
      lblWhoIs(controls.Caption("lblWhoIs")) {
    Picture6.SetBackColor(Green);  // as the rings around it
}

Marker& MapMarks::MarkOf(std::int16_t row) const {
    return row == 0 ? Picture6 : *mappers_[row].Picture7;
}

void MapMarks::PlaceStationMark(std::int16_t row) {
    if (row == 0)
        PlaceHome();
    else
        PlaceRemote(row);
    FrameSelected();
}

void MapMarks::PlaceAllStationMarks() {
    PlaceHome();
    for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row) PlaceRemote(row);
    FrameSelected();
    Picture6.BringToFront();
}

void MapMarks::MoveMark(std::int16_t row, double left, double top) {
    Marker& mark = MarkOf(row);
    mark.SetLeft(left);
    mark.SetTop(top);
    TakePlaceOf(row);
    FrameSelected();
    store_.SaveSetting(SectionOf(row), "X", GeneralNumber(left));
    store_.SaveSetting(SectionOf(row), "Y", GeneralNumber(top));
}

/// Where the store keeps the place that the user has given a mark on the present map.
std::string MapMarks::SectionOf(std::int16_t row) const {
    const std::string& map = mappers_[selection_.MapperIndex].MapFilenamePicture4;
    return map + (row == 0 ? "Home" : "Remote" + std::to_string(row));
}

void MapMarks::PlaceHome() {
    const HomeStation home = home_();
    Place(0, home.HomeLongitude, home.HomeLatitude);
    Picture6.SetVisible(IsPlaced(home));
    TakePlaceOf(0);
}

/// A station is where the middle of its mark is.
void MapMarks::TakePlaceOf(std::int16_t row) {
    const MapPoint centre = CentreOf(MarkOf(row));
    if (row == 0) {
        mappers_.HomeX = centre.dX;
        mappers_.HomeY = centre.dY;
        return;
    }
    ClassMapper& station = mappers_[row];
    if (!station.MapperActive()) return;
    station.RemoteX = centre.dX == 0 ? BesideZero : centre.dX;
    station.RemoteY = centre.dY;
}

void MapMarks::PlaceRemote(std::int16_t row) {
    const ClassMapper& station = mappers_[row];
    MarkOf(row).SetVisible(station.MapperActive());
    if (!station.MapperActive()) return;
    Place(row, station.Longitude, station.Latitude);
    TakePlaceOf(row);
}

void MapMarks::Place(std::int16_t row, double longitude, double latitude) const {
    const ClassMapper& map = mappers_.Local();
    Marker& mark = MarkOf(row);
    if (map.MapRadius == 0) {
        const std::string section = SectionOf(row);
        const auto stored = [&](std::string_view key, double present, double size) {
            const double wanted = ValNeutral(store_.GetSetting(section, key, GeneralNumber(present)));
            return std::min(std::max(wanted, EdgeRoom), size - EdgeRoom);
        };
        mark.SetLeft(stored("X", mark.Left(), Picture4.ScaleWidth()));
        mark.SetTop(stored("Y", mark.Top(), Picture4.ScaleHeight()));
        return;
    }
    MapPoint place = CalcMapXY(map.MapLongitude, map.MapLatitude, map.MapRadius, longitude, latitude);
    if (!std::isfinite(place.dX) || !std::isfinite(place.dY)) place = Nowhere;
    mark.SetLeft(place.dX - HalfMark + 1);
    mark.SetTop(Picture4.ScaleHeight() - place.dY - HalfMark - 1);
}

/// Where the middle of a mark is on the bitmap, y upwards.
MapPoint MapMarks::CentreOf(const Marker& mark) const {
    return {mark.Left() + HalfMark - 1, Picture4.ScaleHeight() - mark.Top() - HalfMark - 1};
}

void MapMarks::DisplayStationConnectionState() {
    for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row) {
        ClassMapper& station = mappers_[row];
        Marker& mark = MarkOf(row);
        // It has to show itself again before the next pass to keep its border.
        const bool bOnline = std::exchange(station.bOnline, false);
        mark.SetBorder(bOnline ? 1 : 0);
        if (bOnline) mark.BringToFront();
        mark.SetBackColor(station.lColor);
    }
}

void MapMarks::DrawRings(double x, double y, ColourValue color) {
    for (const double radius : {2.0, 3.0}) Picture4.Circle(x, Picture4.ScaleHeight() - y, radius, color);
}

void MapMarks::DrawStationCircle(std::int16_t row, bool bSecondPass) {
    if (Picture6.Visible()) DrawRings(mappers_.HomeX, mappers_.HomeY, Green);
    const ClassMapper& station = mappers_[row];
    if (!station.MapperActive()) return;
    if (bSecondPass && station.lColor != Red && station.lColor != Yellow) return;
    DrawRings(station.RemoteX, station.RemoteY, station.lColor);
}

void MapMarks::DrawAllStationCircles() {
    for (const bool bSecondPass : {false, true})
        for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row) DrawStationCircle(row, bSecondPass);
}

void MapMarks::ShowSelected() {
    FrameSelected();
    ShowStationInfo(selection_.MapperIndex);
}

void MapMarks::FrameSelected() {
    const Marker& mark = MarkOf(selection_.MapperIndex);
    ShapeMapperIndex.SetLeft(mark.Left() - FrameRoom);
    ShapeMapperIndex.SetTop(mark.Top() - FrameRoom);
    ShapeMapperIndex.SetWidth(Marker::Side + 2 * FrameRoom);
    ShapeMapperIndex.SetHeight(Marker::Side + 2 * FrameRoom);
    ShapeMapperIndex.SetVisible(mark.Visible());
}

void MapMarks::ShowStationInfo(std::int16_t row) {
    if (!lblWhoIs.Visible()) return;
    const ClassMapper& station = mappers_[row];
    const Marker& mark = MarkOf(row);
    const double width = glyphs_.Render(station.sRemoteName).width;
    const bool fits = mark.Left() + Marker::Side + width <= Picture4.ScaleWidth();
    lblWhoIs.SetCaption(station.sRemoteName);
    lblWhoIs.SetWidth(width);
    lblWhoIs.SetRightAligned(!fits);
    lblWhoIs.SetLeft(fits ? mark.Left() + Marker::Side : mark.Left() - width);
    lblWhoIs.SetTop(mark.Top());
    const std::pair<std::string_view, std::string> texts[] = {
        {"LblStationName", station.sRemoteName},
        {"lblStationIp", station.sIP},
        {"lblStationHostName", station.sRemoteIP},
        {"LblStationLastHeared", GeneralDate(station.dLastHeared)},
        {"LblStationClock", GeneralNumber(station.dClock)},
    };
    for (const auto& [label, text] : texts) controls_.Caption(label).SetCaption(text);
}

}  // namespace veltrix
