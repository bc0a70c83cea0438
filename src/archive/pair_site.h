#pragma once
// The locating part of a station, on a clock that follows recordings.

#include <cmath>

#include "location/map_update.h"
#include "platform/message_box.h"

namespace veltrix {

/// The time of the recordings.
class ArchiveClock final : public Clock {
  public:
    explicit ArchiveClock(DateTime start) : start_(start) {}

    /// Sets both clocks to that many seconds after the start, at most 24 days either way.
    void SetTo(double seconds) { seconds_ = seconds; }

    DateTime Now() override { return start_ + seconds_ / SecondsPerDay; }
    std::int32_t timeGetTime() override { return static_cast<std::int32_t>(std::lround(seconds_ * 1000)); }

  private:
    DateTime start_;
    double seconds_ = 0;
};

/// Passes over what fails; nobody is there to be asked.
class UnheardErrors final : public ErrorReporter {
  public:
    int ReportRuntimeError(const Failure&) override { return reply::Ignore; }
    void LogLine(std::string_view) override {}
    void LogNote(std::string_view) override {}
    void EndProgram() override {}
};

/// Draws no text.
struct NoGlyphs final : Glyphs {
    GlyphMask Render(std::string_view) override { return {}; }
};

/// A place on Earth in degrees.
struct SitePlace {
    double latitude = 0;
    double longitude = 0;
};

/// Correlator, crossing and tests are those of every station; what they draw nobody sees. The map has the
/// first station in its middle. REQUIRES that `files` outlives it; there the stations' calibration tables
/// are.
class PairSite {
  public:
    static constexpr std::int16_t Row = 1;  ///< of the second station

    PairSite(ArchiveClock& ofRecordings, Files& files, SitePlace home, SitePlace other, double mapRadius)
        : clock(ofRecordings), mappers({clock, preciseNow_, files, errors_}), locator(PartsOf(files)) {
        rules.MapperIndex = 0;  // no station is on show
        rules.home = {home.longitude, home.latitude};
        ClassMapper& local = mappers.Local();
        local.Longitude = local.MapLongitude = home.longitude;
        local.Latitude = local.MapLatitude = home.latitude;
        local.MapRadius = mapRadius;
        const MapPoint homePoint = OnMap(home);
        mappers.HomeX = homePoint.dX;
        mappers.HomeY = homePoint.dY;
        Remote().Longitude = other.longitude;
        Remote().Latitude = other.latitude;
        const MapPoint otherPoint = OnMap(other);
        Remote().RemoteX = otherPoint.dX;
        Remote().RemoteY = otherPoint.dY;
    }

    /// The row of the second station.
    ClassMapper& Remote() { return mappers[Row]; }

    /// Where a place lies on the map, y upwards.
    MapPoint OnMap(SitePlace place) {
        const ClassMapper& map = mappers.Local();
        return CalcMapXY(map.MapLongitude, map.MapLatitude, map.MapRadius, place.longitude, place.latitude);
    }

    /// The bearings of the last pair, with all corrections.
    BearingFix LastBearings() {
        const RecentFix& last = recent_.Head();
        return CorrectBearings(mappers, {Row, last.dRecentDirLocal, last.dRecentDirRemote},
                               rules.dLocalCorrectionAngle);
    }

  private:
    static constexpr int Side = static_cast<int>(MapSide);
    static constexpr SurfaceScale Pixels{0, 0, Side, Side};
    static constexpr int SyncWidth = 196;
    static constexpr int SyncHeight = 99;

    StrikeLocator::Parts PartsOf(Files& files) {
        return {mappers,
                recent_,
                dots_,
                map_,
                clean_,
                files,
                clock,
                preciseNow_,
                errors_,
                [this] { return rules; },
                PairDisplay({{{sync_, labels_[0], labels_[1], labels_[2], labels_[3]}},
                             boxes_[0],
                             boxes_[1],
                             boxes_[2],
                             labels_[4]})};
    }

    NoGlyphs glyphs_;
    UnheardErrors errors_;
    Label labels_[5]{Label("1"), Label("2"), Label("3"), Label("4"), Label("5")};
    TextBox boxes_[3]{TextBox("1"), TextBox("2"), TextBox("3")};
    Surface sync_{SyncWidth, SyncHeight, glyphs_, {0, 0, SyncWidth, SyncHeight}};
    Surface map_{Side, Side, glyphs_, Pixels};
    Surface clean_{Side, Side, glyphs_, Pixels};

  public:
    /// The time, as the caller sets it.
    ArchiveClock& clock;

  private:
    PreciseNow preciseNow_{clock};
    RecentData recent_;
    LightningDots dots_{clock};

  public:
    /// As the user has set them; taken anew for each detection.
    FixRules rules;
    /// The two stations.
    Mappers mappers;
    /// Takes the detections of both.
    StrikeLocator locator;
};

}  // namespace veltrix
