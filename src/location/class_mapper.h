#pragma once
// ClassMapper: all that is known of one station, and the array of them.

#include <cstdint>
#include <deque>
#include <string>

#include "common/colour.h"
#include "common/date_time.h"
#include "location/class_correlator.h"
#include "platform/controls.h"

namespace veltrix {

/// One station: the local one, or a row of the station list.
struct ClassMapper {
    explicit ClassMapper(Clock& clock) : Corr(clock) {}

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
    /// Centre of the map, degrees; both 0: a map without geometry. At first that of the built-in map.
    double MapLongitude = 4.43579;
    double MapLatitude = 50.93272;
    std::string pSDdat;  ///< the station's calibration table

    std::string sIP;        ///< where to connect to: a dotted address or a host name
    std::string sRemoteIP;  ///< the last address seen of a station whose sIP is a host name
    DateTime dLastHeared = 0;
    double dClock = 0;             ///< the station's own clock figure
    std::int32_t tCapability = 0;  ///< see capability.h of the network
    bool bOnline = false;          ///< it was seen connected since the marks were last drawn

    double dCorrectionAngle = 0;   ///< added to its bearings, degrees
    double dBalance = 1;           ///< of its two channels
    double dAngleLocalRemote = 0;  ///< bearing of the link at this station's end, degrees

    ColourValue lColor = 0;      ///< of its mark
    Marker* Picture7 = nullptr;  ///< its mark on the map; none for the local station
};

/// Rows of the station list.
inline constexpr std::int16_t C_NUMBEROFMAPPERS = 100;

/// Number 0 is the local station, 1 to C_NUMBEROFMAPPERS are the rows of the station list. Owned by the form
/// for its whole run.
class Mappers {
  public:
    explicit Mappers(Clock& clock);

    /// Raises OutOfRange for a number that no station has.
    ClassMapper& operator[](std::int32_t row);
    ClassMapper& Local() { return all_.front(); }

    /// Place of the local station on the map's bitmap, y upwards.
    double HomeX = 0;
    double HomeY = 0;

  private:
    std::deque<ClassMapper> all_;
};

}  // namespace veltrix
