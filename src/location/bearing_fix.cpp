#include "location/bearing_fix.h"

#include "common/calc_angles.h"

namespace veltrix {

namespace {

double Corrected(const ClassMapper& mapper, double dDir, double dCorrection) {
    return CalcModulo(mapper.pSD.DestinToSource(static_cast<float>(dDir)) + dCorrection, 360);
}

}  // namespace

BearingFix CorrectBearings(Mappers& mappers, const RawBearings& raw, double dLocalCorrection) {
    const ClassMapper& remote = mappers[raw.row];
    BearingFix fix;
    fix.dDirLocal = Corrected(mappers.Local(), raw.dDirLocal, dLocalCorrection);
    fix.dDirRemote = Corrected(remote, raw.dDirRemote, remote.dCorrectionAngle);
    return fix;
}

void CrossOnGlobe(BearingFix& fix, Mappers& mappers, std::int16_t row, const HomePlace& home,
                  double dAngularSeparation) {
    const ClassMapper& map = mappers.Local();
    const ClassMapper& remote = mappers[row];
    const GeoPoint strike = CalcCrossing(home.HomeLongitude, home.HomeLatitude, fix.dDirLocal,
                                         remote.Longitude, remote.Latitude, fix.dDirRemote);
    fix.LongitudeLightning = strike.dLon;
    fix.LatitudeLightning = strike.dLat;
    fix.place = CalcMapXY(map.MapLongitude, map.MapLatitude, map.MapRadius, strike.dLon, strike.dLat);
    fix.dDistanceToLocal = CalcDistance(home.HomeLatitude, home.HomeLongitude, strike.dLat, strike.dLon);
    fix.dDistanceToRemote = CalcDistance(remote.Latitude, remote.Longitude, strike.dLat, strike.dLon);
    const double toLocal =
        CalcBearings(strike.dLat, strike.dLon, home.HomeLatitude, home.HomeLongitude).dBearing1;
    const double toRemote =
        CalcBearings(strike.dLat, strike.dLon, remote.Latitude, remote.Longitude).dBearing1;
    const double dCrossAngle = CalcAngleDiff(toLocal, toRemote);
    fix.bWide = CalcAnglesWide(dCrossAngle, dCrossAngle, dAngularSeparation);
}

void CrossOnFlatMap(BearingFix& fix, const FlatPlaces& places) {
    fix.place = CalcCrossingFlat(places.local.dX, places.local.dY, fix.dDirLocal, places.remote.dX,
                                 places.remote.dY, fix.dDirRemote);
}

}  // namespace veltrix
