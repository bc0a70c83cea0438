#pragma once
// The way of a pulse from the strike to a station's antennas.

#include "storm/scenario.h"
#include "storm/strike_generator.h"

namespace veltrix {

/// How a strike arrives at a station.
struct Arrival {
    UtcTime time = 0;        ///< of the pulse's onset
    double distance = 0;     ///< km along the geodesic
    double trueBearing = 0;  ///< from the station to the strike, degrees clockwise from north, 0 to below 360
    double antennaBearing = 0;  ///< the same with the antenna's error, 0 to below 360
    double peak = 0;            ///< of the envelope at the sound card, raw sample units, before saturation
    double filteredPeak =
        0;  ///< the most the envelope reaches behind the station's detection filter, raw units
};

/// Speed of light, km a second.
inline constexpr double LightSpeed = 299792.458;

/// The longest way, to the antipode, takes less than this.
inline constexpr UtcTime LongestTravel = 67'000'000;

/// Peak of a pulse at a distance in km, for one that has peak 1 at 100 km: spreading with 1 / d, as the range
/// normalisation of lightning networks has it, and a loss of 1 / e in 3000 km (2.9 dB per 1000 km), which is
/// what the earth-ionosphere guide costs near 10 kHz by day over land. Below 10 km it grows no more.
double Attenuation(double distance);

/// Length of the geodesic between two places in degrees, km.
double GeodesicDistance(double latitude1, double longitude1, double latitude2, double longitude2);

/// Geometry on the WGS84 ellipsoid to nanometres and nanoseconds (GeographicLib), never by the station's own
/// formulas, which it is there to judge.
class Propagation {
  public:
    Propagation();
    /// What a station hears of a strike, and when.
    Arrival At(const StormStation& station, const Strike& strike) const;

  private:
    double filteredShare_;
};

}  // namespace veltrix
