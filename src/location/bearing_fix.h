#pragma once
// Where the bearings of two stations cross: the part of a fix that depends on nothing but the bearings, the
// calibration and the places, so that stored bearings can be crossed again at any time.

#include <cstdint>

#include "location/class_mapper.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

/// The bearings of a pair as the stations measured them, in degrees, 0 to 180.
struct RawBearings {
    std::int16_t row = 0;  ///< of the remote station
    double dDirLocal = 0;
    double dDirRemote = 0;
};

/// Places of the two stations on a flat map, y upwards.
struct FlatPlaces {
    MapPoint local;
    MapPoint remote;
};

/// The place of the local station, in degrees.
struct HomePlace {
    double HomeLongitude = 0;
    double HomeLatitude = 0;
};

/// Where a pair of bearings meets, in the making.
struct BearingFix {
    double dDirLocal = 0;  ///< bearings after calibration and correction, degrees, 0 to 360
    double dDirRemote = 0;
    double LongitudeLightning = 0;  ///< degrees, 0 to 360; both 0 on a flat map
    double LatitudeLightning = 0;
    MapPoint place;               ///< on the map's bitmap, y upwards
    double dDistanceToLocal = 0;  ///< km; both 0 on a flat map
    double dDistanceToRemote = 0;
    bool bWide = true;  ///< the bearings cross at a sufficient angle; always so on a flat map
};

/// Corrects both bearings by the stations' tables, the remote one by its station's angle and the local one by
/// `dLocalCorrection`, in degrees.
BearingFix CorrectBearings(Mappers& mappers, const RawBearings& raw, double dLocalCorrection);

/// Crosses corrected bearings on the globe. `dAngularSeparation` is the least angle, in degrees, at which
/// they may meet at the strike.
void CrossOnGlobe(BearingFix& fix, Mappers& mappers, std::int16_t row, const HomePlace& home,
                  double dAngularSeparation);

/// Crosses corrected bearings on a map without geometry.
void CrossOnFlatMap(BearingFix& fix, const FlatPlaces& places);

/// Minutes from `time` to `now`.
inline double AgeInMinutes(DateTime time, DateTime now) {
    return (now - time) * 1440;
}

/// False for the place that the projection gives what it cannot reach.
inline bool IsPlaced(const MapPoint& place) {
    constexpr double NoPlace = -1;
    return place.dX != NoPlace && place.dY != NoPlace;
}

/// True for a place on a surface of that size, its edges included.
inline bool InPicture(const MapPoint& place, double dWidth, double dHeight) {
    return place.dX >= 0 && place.dX <= dWidth && place.dY >= 0 && place.dY <= dHeight;
}

}  // namespace veltrix
