#pragma once
// MapUpdate: the whole road from one new detection to a plotted position.

#include <cstdint>
#include <functional>

#include "display/lightning_dots.h"
#include "location/bearing_fix.h"
#include "location/class_mapper.h"
#include "location/pair_display.h"
#include "location/recent_data.h"
#include "platform/platform.h"

namespace veltrix {

/// What the user has set, as a fix needs it.
struct FixRules {
    std::int16_t MapperIndex = 1;      ///< the selected station
    HomePlace home;                    ///< of the local station
    double dAngularSeparation = 10;    ///< least crossing angle, degrees
    double dLocalCorrectionAngle = 0;  ///< added to the local bearing of a new fix, degrees
    std::int32_t Age = 30;             ///< minutes that a strike is shown
    std::int16_t FocusWindow = 3;      ///< degrees
    std::int16_t iMinStrength = 80;    ///< dB below 0
    bool bFocus = false;
    bool bTOAFilter = false;
    bool bClockDriftCompensation = false;
    bool bLog = false;
    bool RTClock = false;  ///< times are milliseconds
};

/// What has become of an offered detection.
struct StrikeFix {
    bool bLocated = false;          ///< paired, and the position is to be plotted
    double LongitudeLightning = 0;  ///< degrees, 0 to 360; both 0 when there is no position
    double LatitudeLightning = 0;
    bool bDoNotPlot = false;      ///< paired, but not to be plotted
    std::int32_t lLocalTime = 0;  ///< time of the matched local detection, samples
};

/// Offers detections to the correlators; crosses, tests, logs and plots the pairs. Owned by the form, which
/// hands in all it works with. REQUIRES that this outlives it.
class StrikeLocator {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        Mappers& mappers;
        RecentData& recent;
        LightningDots& dots;
        Surface& Picture4;  ///< the map
        Surface& Picture8;  ///< a clean copy of it
        Files& files;
        Clock& clock;
        PreciseNow& preciseNow;
        ErrorReporter& errors;
        std::function<FixRules()> rules;
        PairDisplay display;
    };

    explicit StrikeLocator(Parts parts) : parts_(std::move(parts)) {}

    /// A detection of the local station, or of the one in `row`, on the connection by client socket `socket`.
    /// `dFitError` is the residual of its bearing fit in percent, 0 for a remote detection. Runs under the
    /// error convention.
    StrikeFix MapUpdate(std::int16_t row, int socket, const OfferedDetection& detection, double dFitError);

    /// Told of each located strike, with the row of the remote station.
    std::function<void(const StrikeFix& fix, std::int16_t row)> OnLocated;

  private:
    /// One detection on its way.
    struct Offer {
        std::int16_t row;
        int socket;
        ClassMapper& mapper;
        FixRules rules;
        PairFigures figures;
        StrikeFix result;
        BearingFix fix;
        bool bRingEntry = false;  // its bearings stand in the ring
        bool bRejected = false;
    };

    void Match(Offer& offer, const OfferedDetection& detection, double dFitError);
    void Cross(Offer& offer);
    void TimeOfArrival(Offer& offer);
    void TestStrength(Offer& offer);
    void Log(const Offer& offer) const;
    void Show(Offer& offer);
    void Plot(Offer& offer);
    bool IsSelected(const Offer& offer) const { return offer.row == offer.rules.MapperIndex; }
    bool OnMap(const MapPoint& place) const {
        return InPicture(place, parts_.Picture4.ScaleWidth(), parts_.Picture4.ScaleHeight());
    }

    Parts parts_;
    // Of the last pair of all stations; they stay on show until the next one.
    double dDirLocal_ = 0;
    double dDirRemote_ = 0;
};

}  // namespace veltrix
