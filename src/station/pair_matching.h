#pragma once
// Takes detections, local and remote, to the correlator of the station they may pair with.

#include <array>
#include <functional>
#include <string>

#include "detection/consumers.h"
#include "health/rate_counter.h"
#include "location/map_update.h"
#include "station/form_controls.h"
#include "station/station_network.h"

namespace veltrix {

/// A located strike.
struct LocatedStrike {
    DateTime dDate = 0;             ///< when it was located
    double LatitudeLightning = 0;   ///< degrees
    double LongitudeLightning = 0;  ///< degrees, -180 to 180
    std::int32_t lLocalTime = 0;    ///< sample number of the local detection
    std::string sRemoteName;        ///< the other station
};

/// A strike as a line of text: "fix ", date and time, latitude, longitude, sample number, station.
std::string FixLine(const LocatedStrike& strike);

/// Owned by the form.
class PairMatching final : public StationMatching, public RemoteMatching {
  public:
    PairMatching(FormControls& controls, StationNetwork& network, StrikeLocator& locator, Clock& clock,
                 std::function<HomeStation()> home);

    bool MapUpdateAll(Pulse& pulse, bool bRealTime, Located& located, FailureHandler& failures) override;
    StrikeFix MapUpdate(const RemoteDetection& detection) override;

    RateCounter pairCount;     ///< detections of two stations that belong together
    RateCounter locatedCount;  ///< pairs whose place went on the map

    /// Told of each located strike. May be empty.
    std::function<void(const LocatedStrike&)> OnLocated;

  private:
    void MapUpdateOne(int socket, const Pulse& pulse, bool bRealTime, Located& located, bool& bDoNotPlot);
    void Count(const StrikeFix& fix);
    void ShowCorrelator(int socket);
    ClassMapper& MapperOf(int socket);
    void Tell(const StrikeFix& fix, std::int16_t row);

    StationNetwork& network_;
    StrikeLocator& locator_;
    Clock& clock_;
    std::function<HomeStation()> home_;
    CheckBox& OptionScan;
    std::array<TextBox*, ClientSockets> txtDiffTime{};
};

}  // namespace veltrix
