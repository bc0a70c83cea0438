#include "station/map_view.h"

#include <optional>
#include <vector>

#include "cartography/map_files.h"
#include "common/neutral_text.h"
#include "common/while_set.h"
#include "detection/settings_table.h"
#include "location/map_sector.h"

namespace veltrix {

namespace {

constexpr std::size_t LongestNoName = 3;  // characters; a name that short is no file with an ending
constexpr std::string_view StationMapName = "MAP_HOME.BMP";

/// Passes over failed steps and keeps the first failure.
class FirstFailure final : public FailureHandler {
  public:
    AfterFailure OnFailure(const Failure& failure) override {
        if (!first_) first_ = failure;
        return AfterFailure::NextStep;
    }
    void Raise() const {
        if (first_) throw *first_;
    }

  private:
    std::optional<Failure> first_;
};

}  // namespace

MapView::MapView(const Parts& parts)
    : parts_(parts),
      Picture4(parts.controls.Picture("Picture4")),
      Picture8(parts.controls.Picture("Picture8")),
      shpSphere(parts.controls.Figure("shpSphere")),
      shp2D(parts.controls.Figure("shp2D")),
      cmdReset(parts.controls.Push("cmdReset")),
      cmdStationMap(parts.controls.Push("cmdStationMap")),
      txtStationMapRadius(parts.controls.Text("txtStationMapRadius")),
      optSectors(parts.controls.Check("optSectors")),
      dialog_(parts.controls, parts.platform, parts.errors,
              {"Frame2", "File3", "txtMapFilename", "cmdClearPicture4", "cmdCancel", "MapFilenamePicture4"}),
      maker_(parts.platform) {}

void MapView::Start() {
    dialog_.Start(
        [this] {
            parts_.network.Selected().MapFilenamePicture4 = dialog_.Chosen();
            MapInit();
        },
        [this] { Clear(); });
    cmdReset.OnClick = [this](MouseButton) { Reset(); };
    txtStationMapRadius.OnEntry = [this] {
        ValidateRange(txtStationMapRadius, LeastMapRadius, MostMapRadius);
    };
    cmdStationMap.OnClick = [this](MouseButton) { MakeStationMap(); };
    SkippingErrors([this] { Picture4.surface.SetPicture(maker_.BuiltInMap()); });
}

void MapView::Load() {
    // The choice kept is that of the station that is selected.
    if (!dialog_.Chosen().empty()) parts_.network.Selected().MapFilenamePicture4 = dialog_.Chosen();
    bLoaded_ = true;
    SkippingErrors([this] { maker_.WriteDefaultMap(); },
                   [this] { parts_.recent.LoadpMA(parts_.platform.files, parts_.platform.clock.Now()); },
                   [this] { MapInit(); });
}

void MapView::MapInit() {
    // The walk over the strikes drains the recorder's blocks, which may bring us here again.
    if (!bLoaded_) return;
    bDrawAgain_ = bDrawing_;
    if (bDrawing_) return;
    FirstFailure failures;
    do {
        const WhileSet drawing(bDrawing_);
        DrawOnce(failures);
    } while (bDrawAgain_);
    failures.Raise();
}

void MapView::DrawOnce(FailureHandler& failures) {
    bDrawAgain_ = false;
    ClassMapper& mapper = parts_.network.Selected();
    const std::string file = mapper.MapFilenamePicture4;
    if (file.size() > LongestNoName) mapper.DatFilenamePicture4 = GeometryName(file);
    RunSteps(
        failures, [&] { LoadBackground(file); }, [&] { TakeGeometry(mapper.DatFilenamePicture4); },
        [&] { parts_.marks.PlaceAllStationMarks(); }, [&] { TintSectors(); },
        [&] { parts_.marks.DrawAllStationCircles(); },
        [&] { Picture8.surface.SetPicture(Picture4.surface.Image()); }, [&] { DrawStrikes(); },
        [&] { parts_.drawCaption(); }, [&] { parts_.marks.ShowSelected(); }, [&] { dialog_.Show(file); });
}

/// A file that is not there leaves the background in place; what was drawn on it goes all the same.
void MapView::LoadBackground(const std::string& file) {
    Picture4.surface.Cls();
    if (file.size() > LongestNoName && parts_.platform.files.Exists(file))
        Picture4.surface.SetPicture(parts_.platform.pictures.Load(file));
}

void MapView::TakeGeometry(const std::string& file) {
    ClassMapper& map = parts_.network.mappers.Local();
    const auto take = [&map](const MapPlace& place) {
        map.MapRadius = place.MapRadius;
        map.MapLongitude = place.MapLongitude;
        map.MapLatitude = place.MapLatitude;
    };
    take({});
    shpSphere.SetVisible(true);
    shp2D.SetVisible(false);
    if (file.size() > LongestNoName) take(ReadGeometry(parts_.platform.files, file));
}

void MapView::TintSectors() {
    if (!optSectors.Checked()) return;
    Mappers& mappers = parts_.network.mappers;
    std::vector<MapPoint> stations;
    for (int row = 1; row <= C_NUMBEROFMAPPERS; ++row)
        if (mappers[row].MapperActive()) stations.push_back({mappers[row].RemoteX, mappers[row].RemoteY});
    MapSector sectors(Picture4.surface.Image().width, Picture4.surface.Image().height);
    sectors.Find({mappers.HomeX, mappers.HomeY}, stations, parts_.Timer1_Timer);
    // What was plotted meanwhile is no part of the map; it comes back with the other strikes.
    Picture4.surface.Cls();
    sectors.Tint(Picture4.surface);
}

void MapView::DrawStrikes() {
    ReplotRecentData({parts_.network.mappers, parts_.recent, parts_.dots, parts_.platform.clock,
                      parts_.skipSamples, parts_.Timer1_Timer},
                     Picture4.surface, parts_.rules());
    parts_.dots.DrawAllLightningInPicture4(Picture4.surface, Picture8.surface);
}

void MapView::Tick() {
    parts_.dots.MapUpdatePlot(Picture4.surface, Picture8.surface, 0, 0, false);
}

/// Forgets all strikes.
void MapView::Clear() {
    Picture4.surface.Cls();
    parts_.dots.ClearpX2();
    parts_.network.mappers.c2DFocus.Clear();
    parts_.recent.Clear();
    MapInit();
}

/// Back to the built-in map and its geometry.
void MapView::Reset() {
    parts_.network.Selected().DatFilenamePicture4.clear();
    SkippingErrors([this] { Picture4.surface.SetPicture(maker_.BuiltInMap()); });
    dialog_.Choose("", "cmdReset_Click");
}

/// Makes a map around the local station. Rows that name no map of their own take it, too.
void MapView::MakeStationMap() {
    if (!ValidateRange(txtStationMapRadius, LeastMapRadius, MostMapRadius)) return;
    const std::string name(StationMapName);
    const bool bMade = UnderErrorConvention(parts_.errors, "cmdStationMap_Click", [&] {
        const HomePlace home = parts_.rules().home;
        maker_.Make({ValNeutral(txtStationMapRadius.Text()), home.HomeLongitude, home.HomeLatitude}, name);
        for (int row = 1; row <= C_NUMBEROFMAPPERS; ++row) {
            std::string& map = parts_.network.mappers[row].MapFilenamePicture4;
            if (map.empty() || map == DefaultMap) map = name;
        }
    });
    if (bMade && parts_.platform.files.Exists(name)) dialog_.Choose(name, "cmdStationMap_Click");
}

}  // namespace veltrix
