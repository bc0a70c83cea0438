#pragma once
// ClassMapper: all that is known of one station, and the array of them.

#include <cstdint>
#include <deque>
#include <string>

#include "common/colour.h"
#include "common/date_time.h"
#include "location/class_2d_focus.h"
#include "location/class_correlator.h"
#include "location/direction_table.h"
#include "location/map_place.h"
#include "platform/controls.h"
#include "platform/files.h"

namespace veltrix {

/// What every station works with. REQUIRES that it all outlives the stations.
struct MapperServices {
    Clock& clock;
    PreciseNow& preciseNow;
    Files& files;
    ErrorReporter& errors;
};

/// One station: the local one, or a row of the station list.
struct ClassMapper {
    explicit ClassMapper(const MapperServices& services)
        : Corr(services.clock, services.preciseNow, services.errors), pSD(services.files) {}

    /// True when the row is in use.
    bool MapperActive() const { return RemoteX != 0; }
    /// True when the last sign of life is less than `dMinuteLimit` minutes old at `now`.
    bool HearedFromSince(double dMinuteLimit, DateTime now) const {
        return (now - dLastHeared) * 1440 < dMinuteLimit;
    }

    ClassCorrelator Corr;
    std::string sLocalName;   ///< the row's label, such as "Station 07"
    std::string sRemoteName;  ///< the station's own name

    /// Position on the map's bitmap, y upwards. RemoteX is 0 exactly when the row is not in use; until the
    /// map places it, it holds the longitude.
    double RemoteX = 0;
    double RemoteY = 0;
    double Longitude = 0;  ///< degrees, east positive
    double Latitude = 0;   ///< degrees, north positive

    std::string MapFilenamePicture4;  ///< the station's map
    std::string DatFilenamePicture4;  ///< the file of its geometry
    /// Geometry of the map that is shown, of the local station alone: its centre in degrees and its radius in
    /// km. Both coordinates 0: a flat map. At first that of the built-in map.
    double MapLongitude = MapPlace{}.MapLongitude;
    double MapLatitude = MapPlace{}.MapLatitude;
    double MapRadius = MapPlace{}.MapRadius;
    bool HasGeometry() const { return MapLongitude != 0 || MapLatitude != 0; }

    DirectionTable pSD;  ///< the station's calibration table
    std::string pSDdat;  ///< its file
    /// Finds and loads the calibration table that belongs to the station's position.
    void Init() { pSD.Init(Longitude, Latitude, pSDdat); }
    /// Writes the table, when it has changed.
    void Save() { pSD.Save(pSDdat); }

    std::string sIP;        ///< where to connect to: a dotted address or a host name
    std::string sRemoteIP;  ///< the last address seen of a station whose sIP is a host name
    DateTime dLastHeared = 0;
    double dClock = 0;             ///< the station's own clock figure
    std::int32_t tCapability = 0;  ///< see capability.h of the network
    bool bOnline = false;          ///< it was seen connected since the marks were last drawn

    double dCorrectionAngle = 0;   ///< added to its bearings, degrees
    double dBalance = 1;           ///< of its two channels
    double dAngleLocalRemote = 0;  ///< bearing of the link at this station's end, degrees

    // Of the last pair with this station.
    double dFixX = 0;  ///< its position on the map's bitmap, y upwards until it is plotted
    double dFixY = 0;
    double dDistanceToLocal = 0;  ///< km from there to each station
    double dDistanceToRemote = 0;
    double dTravelTime = 0;                    ///< difference of the times of travel, ms
    double dThisTOADiffTime = 0;               ///< of the clocks, if the position is right, ms
    double dTOADiffTime = 0;                   ///< median of those, ms
    std::int32_t lCorrelatedPlottedCount = 0;  ///< strikes plotted

    ColourValue lColor = 0;      ///< of its mark
    Marker* Picture7 = nullptr;  ///< its mark on the map; none for the local station
};

/// Rows of the station list.
inline constexpr std::int16_t C_NUMBEROFMAPPERS = 100;

/// Number 0 is the local station, 1 to C_NUMBEROFMAPPERS are the rows of the station list. Owned by the form
/// for its whole run.
class Mappers {
  public:
    explicit Mappers(const MapperServices& services);

    /// Raises OutOfRange for a number that no station has.
    ClassMapper& operator[](std::int32_t row);
    ClassMapper& Local() { return all_.front(); }

    /// Place of the local station on the map's bitmap, y upwards.
    double HomeX = 0;
    double HomeY = 0;

    /// The last fixes of all stations on the map.
    Class2DFocus c2DFocus;

  private:
    std::deque<ClassMapper> all_;
};

}  // namespace veltrix
