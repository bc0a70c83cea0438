#include "storm/propagation.h"

#include <GeographicLib/Geodesic.hpp>
#include <algorithm>
#include <cmath>

#include "storm/sferic.h"

namespace veltrix {

namespace {

constexpr double Normal = 100;      // km
constexpr double LossRange = 3000;  // km
constexpr double Nearest = 10;      // km

/// An angle in 0 to below 360.
double Circle(double degrees) {
    const double angle = std::fmod(degrees, 360.0);
    const double positive = angle < 0 ? angle + 360 : angle;
    return positive >= 360 ? 0 : positive;
}

}  // namespace

double Attenuation(double distance) {
    const double d = std::max(distance, Nearest);
    return Normal / d * std::exp((Normal - d) / LossRange);
}

double GeodesicDistance(double latitude1, double longitude1, double latitude2, double longitude2) {
    double metres = 0;
    GeographicLib::Geodesic::WGS84().Inverse(latitude1, longitude1, latitude2, longitude2, metres);
    return metres / 1000;
}

Propagation::Propagation() : filteredShare_(SfericPeakBehindFilter()) {}

Arrival Propagation::At(const StormStation& station, const Strike& strike) const {
    double metres = 0;
    double atStation = 0;
    double atStrike = 0;
    GeographicLib::Geodesic::WGS84().Inverse(station.latitude, station.longitude, strike.latitude,
                                             strike.longitude, metres, atStation, atStrike);
    Arrival arrival;
    arrival.distance = metres / 1000;
    arrival.time = strike.time + std::llround(arrival.distance / LightSpeed * 1e9);
    arrival.trueBearing = Circle(atStation);
    arrival.antennaBearing = Circle(atStation + station.bearingError);
    arrival.peak = strike.strength * Attenuation(arrival.distance);
    arrival.filteredPeak = arrival.peak * filteredShare_;
    return arrival;
}

}  // namespace veltrix
