#pragma once
// The locating part of a station, put together on a clock that is set, without sound and network.

#include <cstdint>

#include "location/map_update.h"
#include "station/form_controls.h"
#include "station/sync_page.h"
#include "support/memory_files.h"
#include "support/plain_glyphs.h"
#include "support/recording_errors.h"

namespace veltrix {

/// Correlator, crossing, tests, map and displays are the real ones. The map has the station in its middle.
struct HomeSite {
    struct Place {
        double longitude = 0;
        double latitude = 0;
    };

    HomeSite(Place home, double mapRadius) {
        rules.home = {home.longitude, home.latitude};
        ClassMapper& local = mappers.Local();
        local.Longitude = local.MapLongitude = home.longitude;
        local.Latitude = local.MapLatitude = home.latitude;
        local.MapRadius = mapRadius;
        const MapPoint place = OnMap(home);
        mappers.HomeX = place.dX;
        mappers.HomeY = place.dY;
    }

    void AddPeer(std::int16_t row, Place place) {
        ClassMapper& mapper = mappers[row];
        mapper.Longitude = place.longitude;
        mapper.Latitude = place.latitude;
        const MapPoint onMap = OnMap(place);
        mapper.RemoteX = onMap.dX;
        mapper.RemoteY = onMap.dY;
    }

    /// Where a place lies on the map, y upwards.
    MapPoint OnMap(Place place) {
        const ClassMapper& map = mappers.Local();
        return CalcMapXY(map.MapLongitude, map.MapLatitude, map.MapRadius, place.longitude, place.latitude);
    }

    /// Offers a detection of the local station to the correlator of a row.
    StrikeFix OfferLocal(std::int16_t row, const Pulse& pulse) {
        return locator.MapUpdate(
            row, row - 1, {true, mappers.HomeX, mappers.HomeY, pulse.dDir, pulse.dAmp, pulse.dLocalSample},
            pulse.dFitError);
    }
    /// Offers a detection of the station of a row.
    StrikeFix OfferRemote(std::int16_t row, double dDir, double dAmp, double dSample) {
        const ClassMapper& mapper = mappers[row];
        return locator.MapUpdate(row, row - 1, {false, mapper.RemoteX, mapper.RemoteY, dDir, dAmp, dSample},
                                 0);
    }

    FixRules rules;
    ManualClock clock;
    MemoryFiles files{clock};
    PlainGlyphs glyphs;
    RecordingErrors errors;
    FormControls controls{glyphs};
    PreciseNow preciseNow{clock};
    Mappers mappers{{clock, preciseNow, files, errors}};
    RecentData recent;
    LightningDots dots{clock};
    Selection selection;
    SyncPage sync{controls, selection};
    StrikeLocator locator{
        {mappers, recent, dots, controls.Picture("Picture4").surface, controls.Picture("Picture8").surface,
         files, clock, preciseNow, errors, [this] { return rules; },
         PairDisplay({sync.Panels(), controls.Text("txtLocal"), controls.Text("txtRemote"),
                      controls.Text("txtClockDrift"), controls.Caption("lblStrikeCount4")})}};
};

}  // namespace veltrix
