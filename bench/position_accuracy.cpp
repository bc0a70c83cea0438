// How far plotted strikes lie from their places: a storm rendered for several stations, found by the real
// detector, paired and crossed as a station does it, and held against exact geodesics of WGS 84. Prints the
// tables of docs/accuracy.md.

#include <GeographicLib/Geodesic.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <set>
#include <unordered_map>
#include <vector>

#include "bench/heard_storm.h"
#include "bench/home_site.h"
#include "common/neutral_text.h"

using namespace veltrix;

namespace {

constexpr double MapRadius = 2000;
constexpr double KmPerPixel = MapRadius / (MapSide / 2);
constexpr double LeastCrossing = 10;           // degrees, as the map has it by default
constexpr std::int64_t LearningTime = 60'000;  // ms that are not counted
constexpr std::int64_t LineTravel = 60;        // ms that a line of a peer takes
constexpr double Degree = std::numbers::pi / 180;

using Place = HomeSite::Place;

const GeographicLib::Geodesic& Globe() {
    return GeographicLib::Geodesic::WGS84();
}

// ---- The skies.

constexpr double Noise = 70;     // rms in each channel, raw sample units; twice that of the built-in storm
constexpr double Period = 1000;  // hours; no cell moves

/// Three stations; home is the first. The antennas are aligned to the last digit.
std::vector<StormStation> Stations() {
    return {{"Home", 48.2, 9.0, 0, Noise, 800, 50, 35},
            {"Peer", 50.6, 12.2, 0, Noise, 400, 50, -15},
            {"Third", 52.0, 5.6, 0, Noise, 600, 50, 85}};
}

Scenario Sky(std::vector<StormCell> cells) {
    Scenario sky;
    sky.name = "sky";
    sky.seed = 71;
    sky.start = *ParseUtc("2024-06-15T12:00:00Z");
    sky.cells = std::move(cells);
    sky.stations = Stations();
    return sky;
}

/// Strikes evenly all over the map, and some more around home.
Scenario EvenSky() {
    return Sky({{"Near", 48.2, 9.0, 450, 30, 8000, 6, 0, 0, Period},
                {"Wide", 48.2, 9.0, 1750, 90, 30000, 6, 0, 0, Period}});
}

/// Thunderstorms of 15 km radius in all directions and distances, strong enough for all stations.
Scenario StormySky() {
    const StormStation home = Stations().front();
    std::vector<StormCell> cells;
    constexpr double Turn = 137.5;  // degrees; never the same direction twice
    for (int i = 0; i < 16; ++i) {
        const double away = 100 + 100.0 * i;
        StormCell cell{"Cell", 0, 0, 15, 7.5, 50 * away, 6, 0, 0, Period};
        Globe().Direct(home.latitude, home.longitude, 20 + Turn * i, 1000 * away, cell.latitude,
                       cell.longitude);
        cells.push_back(cell);
    }
    return Sky(std::move(cells));
}

/// A strike as a station sees it.
struct Leg {
    double distance = 0;  ///< km
    double bearing = 0;   ///< degrees, at the station
    double atStrike = 0;  ///< the same great circle's direction at the strike
    double offset = 0;    ///< km aside at the strike for each radian of bearing
};

Leg LegTo(Place from, Place to) {
    double s = 0, m = 0, M12 = 0, M21 = 0;
    Leg leg;
    Globe().Inverse(from.latitude, from.longitude, to.latitude, to.longitude, s, leg.bearing, leg.atStrike, m,
                    M12, M21);
    leg.distance = s / 1000;
    leg.offset = m / 1000;
    return leg;
}

Place PlaceOf(const StormStation& station) {
    return {station.longitude, station.latitude};
}
Place PlaceOf(const Strike& strike) {
    return {strike.longitude, strike.latitude};
}

double Between(Place one, Place other) {
    return GeodesicDistance(one.latitude, one.longitude, other.latitude, other.longitude);
}

/// The angle between two lines, 0 to 90.
double Crossing(const Leg& one, const Leg& other) {
    return std::abs(LineError(one.atStrike, other.atStrike));
}

/// A storm with all that is known and heard of it.
struct Storm {
    Storm(Scenario itsScenario, int seconds) : scenario(std::move(itsScenario)) {
        const UtcTime end = scenario.start + seconds * NanosecondsPerSecond;
        strikes = StrikeGenerator(scenario).Between(scenario.start, end);
        for (std::size_t i = 0; i < scenario.stations.size(); ++i) {
            heard.push_back(HeardAt(scenario, i, strikes, seconds));
            std::vector<Leg>& own = legs.emplace_back();
            for (const Strike& strike : strikes)
                own.push_back(LegTo(PlaceOf(scenario.stations[i]), PlaceOf(strike)));
        }
    }

    Scenario scenario;
    std::vector<Strike> strikes;
    std::vector<std::vector<Heard>> heard;  ///< by station
    std::vector<std::vector<Leg>> legs;     ///< by station and strike
};

// ---- The station at work.

struct Rules {
    const char* name;
    std::size_t peers = 1;
    bool toaFilter = false;
    bool compensation = false;  ///< the box that follows the drift of the clocks
    bool driftIsSet = false;    ///< the drift is set from the start
    std::int16_t focus = 0;     ///< window; 0 for none
};

/// A dot of a right pair.
struct Dot {
    std::size_t strike = 0;
    std::size_t peer = 0;  ///< station
    double error = 0;      ///< km
    double homeError = 0;  ///< of the bearings, degrees
    double peerError = 0;
};

struct Outcome {
    int heardByBoth = 0;  ///< strikes; of several peers, with each
    int pairs = 0;
    int wrong = 0;   ///< of these, of two different strikes or of none
    int missed = 0;  ///< of heardByBoth, those without a right pair
    int wrongDots = 0;
    std::vector<Dot> dots;
    std::set<std::size_t> strikesSeen;
};

class Run {
  public:
    Run(const Storm& storm, const Rules& rules)
        : storm_(storm), rules_(rules), site_(PlaceOf(storm.scenario.stations[0]), MapRadius) {
        site_.rules.bTOAFilter = rules.toaFilter;
        site_.rules.bClockDriftCompensation = rules.compensation;
        site_.rules.bFocus = rules.focus > 0;
        if (rules.focus > 0) site_.rules.FocusWindow = rules.focus;
        for (std::size_t peer = 1; peer <= rules.peers; ++peer) AddPeer(peer);
        CollectEvents();
    }

    Outcome Done() {
        for (const Event& event : events_) Offer(event);
        for (std::size_t peer = 1; peer <= rules_.peers; ++peer) CountMissed(peer);
        return std::move(outcome_);
    }

  private:
    struct Event {
        std::int64_t time = 0;  // ms
        std::size_t station = 0;
        const Heard* heard = nullptr;
    };

    void AddPeer(std::size_t peer) {
        const auto row = static_cast<std::int16_t>(peer);
        const StormStation& station = storm_.scenario.stations[peer];
        site_.AddPeer(row, PlaceOf(station));
        if (!rules_.driftIsSet) return;
        // A day's samples of each, at the 22 a millisecond that the correlator reckons with.
        const double ppm = storm_.scenario.stations[0].clockError - station.clockError;
        site_.mappers[row].Corr.SetPreDrift(ppm * 1e-6 * 86400 * SampleRate / 22);
    }

    void CollectEvents() {
        bySample_.resize(rules_.peers + 1);
        for (std::size_t station = 0; station <= rules_.peers; ++station)
            for (const Heard& heard : storm_.heard[station]) {
                events_.push_back({heard.delivered + (station == 0 ? 0 : LineTravel), station, &heard});
                bySample_[station][std::llround(heard.pulse.dLocalSample)] = &heard;
            }
        std::ranges::stable_sort(events_, {}, &Event::time);
    }

    void Offer(const Event& event) {
        site_.clock.Advance(event.time - now_);
        now_ = event.time;
        const Pulse& pulse = event.heard->pulse;
        if (event.station == 0) {
            for (std::size_t peer = 1; peer <= rules_.peers; ++peer)
                Offered(peer, [&](std::int16_t row) { return site_.OfferLocal(row, pulse); });
        } else {
            // A line carries so many digits.
            const double dDir = ValNeutral(FormatNeutral(pulse.dDir, "000.00"));
            const double dAmp = ValNeutral(FormatNeutral(pulse.dAmp, "000.0"));
            Offered(event.station,
                    [&](std::int16_t row) { return site_.OfferRemote(row, dDir, dAmp, pulse.dLocalSample); });
        }
    }

    template <typename Offers>
    void Offered(std::size_t peer, Offers&& offer) {
        const auto row = static_cast<std::int16_t>(peer);
        ClassMapper& mapper = site_.mappers[row];
        const std::int32_t before = mapper.Corr.lCorrelatedCount;
        const StrikeFix fix = offer(row);
        if (mapper.Corr.lCorrelatedCount == before || now_ < LearningTime) return;
        const Heard& here = *bySample_[0].at(std::llround(mapper.Corr.MatchedLocal().dTime));
        const Heard& there = *bySample_[peer].at(std::llround(mapper.Corr.MatchedRemote().dTime));
        const bool isRight = here.strike && here.strike == there.strike;
        ++outcome_.pairs;
        if (isRight)
            paired_.emplace(peer, *here.strike);
        else
            ++outcome_.wrong;
        // The focus draws no dot of a strike without neighbours.
        if (!fix.bLocated || (rules_.focus > 0 && mapper.dFixX == 0)) return;
        if (!isRight) {
            ++outcome_.wrongDots;
        } else {
            outcome_.dots.push_back({*here.strike, peer, Error(fix, mapper, *here.strike), here.bearingError,
                                     there.bearingError});
            outcome_.strikesSeen.insert(*here.strike);
        }
    }

    /// Of a fix on the globe, in km. The focus moves the dot alone, so that it is measured on the map.
    double Error(const StrikeFix& fix, const ClassMapper& mapper, std::size_t strike) {
        const Place place = PlaceOf(storm_.strikes[strike]);
        if (rules_.focus == 0) return Between({fix.LongitudeLightning, fix.LatitudeLightning}, place);
        const MapPoint exact = site_.OnMap(place);
        return KmPerPixel * std::hypot(mapper.dFixX - exact.dX, MapSide - mapper.dFixY - exact.dY);
    }

    void CountMissed(std::size_t peer) {
        std::set<std::size_t> there;
        for (const Heard& heard : storm_.heard[peer])
            if (heard.strike) there.insert(*heard.strike);
        std::set<std::size_t> seen;
        for (const Heard& heard : storm_.heard[0])
            if (heard.strike && heard.delivered > LearningTime && there.contains(*heard.strike) &&
                seen.insert(*heard.strike).second) {
                ++outcome_.heardByBoth;
                if (!paired_.contains({peer, *heard.strike})) ++outcome_.missed;
            }
    }

    const Storm& storm_;
    Rules rules_;
    HomeSite site_;
    std::vector<Event> events_;
    std::vector<std::unordered_map<std::int64_t, const Heard*>> bySample_;  // of each station
    std::set<std::pair<std::size_t, std::size_t>> paired_;                  // peer and strike
    std::int64_t now_ = 0;
    Outcome outcome_;
};

// ---- What the noise of the bearings alone allows.

struct Spread {
    double median = 0;
    double most = 0;  ///< nine tenths are better
};

Spread SpreadOf(std::vector<double> errors) {
    if (errors.empty()) return {};
    std::ranges::sort(errors);
    return {errors[errors.size() / 2], errors[errors.size() * 9 / 10]};
}

/// The standard deviation of the normal distribution that has as many errors within it: 68.27 % of them.
/// Strikes that arrive together give bearings off by anything, which a plain standard deviation would follow.
double Sigma(std::vector<double> errors) {
    if (errors.empty()) return 0;
    for (double& error : errors) error = std::abs(error);
    std::ranges::sort(errors);
    return errors[static_cast<std::size_t>(0.6827 * static_cast<double>(errors.size() - 1))];
}

/// Where two stations' geodesics of given bearings cross near a place: Newton's method, each step in the
/// plane of the tangents at the last place. `aside` is the error of each bearing, in radians.
Place Crossed(const std::array<Place, 2>& stations, const std::array<double, 2>& bearings, Place place) {
    for (int pass = 0; pass < 5; ++pass) {
        double n[2][2], aside[2];
        for (std::size_t i = 0; i < 2; ++i) {
            const Leg leg = LegTo(stations[i], place);
            n[i][0] = std::cos(leg.atStrike * Degree);  // to the right of the ray
            n[i][1] = -std::sin(leg.atStrike * Degree);
            aside[i] = leg.offset * LineError(bearings[i], leg.bearing) * Degree;
        }
        const double det = n[0][0] * n[1][1] - n[0][1] * n[1][0];
        const double east = (aside[0] * n[1][1] - aside[1] * n[0][1]) / det;
        const double north = (aside[1] * n[0][0] - aside[0] * n[1][0]) / det;
        const double step = std::min(std::hypot(east, north), 1000.0);
        Globe().Direct(place.latitude, place.longitude, std::atan2(east, north) / Degree, 1000 * step,
                       place.latitude, place.longitude);
    }
    return place;
}

/// What is to be expected of dots if their bearings had normal errors and everything else were exact.
struct Limit {
    double homeSigma = 0;  ///< degrees, measured
    double peerSigma = 0;
    double rms = 0;  ///< km, by the formula
    Spread spread;   ///< of draws with exact geodesics
    Spread exact;    ///< of exact geodesics with the very bearings that were measured
};

/// A bearing off by s radians misses a strike at distance r by r s to the side. The lines so moved cross at
/// (a1 u2 - a2 u1) / sin(angle) from the strike, a being how far each was moved and u the directions of the
/// lines, so that the mean square of the error is ((r1 s1)^2 + (r2 s2)^2) / sin^2(angle). On the globe the
/// reduced length of the geodesic stands for r.
Limit LimitOf(const Storm& storm, const std::vector<Dot>& dots) {
    constexpr int Draws = 20;
    std::vector<double> home, peer, errors, exact;
    for (const Dot& dot : dots) {
        home.push_back(dot.homeError);
        peer.push_back(dot.peerError);
    }
    Limit limit{Sigma(home), Sigma(peer), 0, {}, {}};
    std::mt19937 random(5);
    std::normal_distribution<> normal;
    double squares = 0;
    for (const Dot& dot : dots) {
        const Leg& here = storm.legs[0][dot.strike];
        const Leg& there = storm.legs[dot.peer][dot.strike];
        const double sine = std::sin(Crossing(here, there) * Degree);
        squares += (std::pow(here.offset * limit.homeSigma * Degree, 2) +
                    std::pow(there.offset * limit.peerSigma * Degree, 2)) /
                   (sine * sine);
        const std::array<Place, 2> stations{PlaceOf(storm.scenario.stations[0]),
                                            PlaceOf(storm.scenario.stations[dot.peer])};
        const Place strike = PlaceOf(storm.strikes[dot.strike]);
        const auto crossed = [&](double homeError, double peerError) {
            return Crossed(stations, {here.bearing + homeError, there.bearing + peerError}, strike);
        };
        exact.push_back(Between(crossed(dot.homeError, dot.peerError), strike));
        for (int draw = 0; draw < Draws; ++draw) {
            const Place place = crossed(limit.homeSigma * normal(random), limit.peerSigma * normal(random));
            // What crosses too flat is not on the map.
            if (Crossing(LegTo(stations[0], place), LegTo(stations[1], place)) >= LeastCrossing)
                errors.push_back(
                    GeodesicDistance(place.latitude, place.longitude, strike.latitude, strike.longitude));
        }
    }
    if (!dots.empty()) limit.rms = std::sqrt(squares / static_cast<double>(dots.size()));
    limit.spread = SpreadOf(std::move(errors));
    limit.exact = SpreadOf(std::move(exact));
    return limit;
}

// ---- The tables.

using Measure = double (*)(const Storm&, const Dot&);

double DistanceOf(const Storm& storm, const Dot& dot) {
    return storm.legs[0][dot.strike].distance;
}
double CrossingOf(const Storm& storm, const Dot& dot) {
    return Crossing(storm.legs[0][dot.strike], storm.legs[dot.peer][dot.strike]);
}

struct Axis {
    const char* name;
    Measure measure;
    std::vector<double> edges;
};

const Axis Distance{"km from home", DistanceOf, {0, 200, 400, 600, 800, 1000, 1250, 1500, 1750}};
const Axis Angle{"crossing angle", CrossingOf, {10, 20, 30, 40, 50, 60, 70, 80, 90}};

std::vector<Dot> Within(const Storm& storm, const Outcome& outcome, const Axis& axis, std::size_t bin) {
    std::vector<Dot> dots;
    for (const Dot& dot : outcome.dots) {
        const double value = axis.measure(storm, dot);
        if (value >= axis.edges[bin] && value < axis.edges[bin + 1]) dots.push_back(dot);
    }
    return dots;
}

Spread ErrorsOf(const std::vector<Dot>& dots) {
    std::vector<double> errors;
    for (const Dot& dot : dots) errors.push_back(dot.error);
    return SpreadOf(std::move(errors));
}

/// One line a bin: bearing errors and their limit from the first outcome, then each outcome's dots.
void PrintAxis(const Storm& storm, const Axis& axis, const std::vector<Rules>& rules,
               const std::vector<Outcome>& outcomes) {
    std::printf("\n| %s | bearings, ° | rms by formula | drawn | exact |", axis.name);
    for (const Rules& rule : rules) std::printf(" %s |", rule.name);
    std::printf("\n|---|---|---:|---:|---:|");
    for (std::size_t i = 0; i < rules.size(); ++i) std::printf("---:|");
    std::printf("\n");
    for (std::size_t bin = 0; bin + 1 < axis.edges.size(); ++bin) {
        const std::vector<Dot> plain = Within(storm, outcomes.front(), axis, bin);
        if (plain.empty()) continue;
        const Limit limit = LimitOf(storm, plain);
        std::printf("| %g to %g | %.2f, %.2f | %.1f | %.1f, %.1f | %.1f, %.1f |", axis.edges[bin],
                    axis.edges[bin + 1], limit.homeSigma, limit.peerSigma, limit.rms, limit.spread.median,
                    limit.spread.most, limit.exact.median, limit.exact.most);
        for (const Outcome& outcome : outcomes) {
            const std::vector<Dot> dots = Within(storm, outcome, axis, bin);
            const Spread spread = ErrorsOf(dots);
            std::printf(" %zu: %.1f, %.1f |", dots.size(), spread.median, spread.most);
        }
        std::printf("\n");
    }
}

void PrintCounts(const std::vector<Rules>& rules, const std::vector<Outcome>& outcomes) {
    std::printf(
        "\n| | heard by both | pairs | wrong | missed | dots | of wrong pairs | strikes on the map | median "
        "| "
        "90 %% |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const Outcome& o = outcomes[i];
        const Spread spread = ErrorsOf(o.dots);
        std::printf("| %s | %d | %d | %d | %d | %zu | %d | %zu | %.1f | %.1f |\n", rules[i].name,
                    o.heardByBoth, o.pairs, o.wrong, o.missed,
                    o.dots.size() + static_cast<std::size_t>(o.wrongDots), o.wrongDots, o.strikesSeen.size(),
                    spread.median, spread.most);
    }
}

std::vector<Outcome> RunAll(const Storm& storm, const std::vector<Rules>& rules) {
    std::vector<Outcome> outcomes;
    for (const Rules& rule : rules) outcomes.push_back(Run(storm, rule).Done());
    return outcomes;
}

void PrintSky(const char* title, const Storm& storm) {
    const std::vector<Rules> rules{{.name = "all", .driftIsSet = true},
                                   {.name = "TOA filter", .toaFilter = true, .driftIsSet = true},
                                   {.name = "focus 1", .driftIsSet = true, .focus = 1},
                                   {.name = "focus 3", .driftIsSet = true, .focus = 3}};
    std::printf("\n%s: %zu strikes\n", title, storm.strikes.size());
    const std::vector<Outcome> outcomes = RunAll(storm, rules);
    PrintAxis(storm, Distance, rules, outcomes);
    PrintAxis(storm, Angle, rules, outcomes);
    const std::vector<Rules> more{
        {.name = "nothing set"},
        {.name = "TOA filter", .toaFilter = true},
        {.name = "drift compensation", .compensation = true},
        {.name = "drift compensation, TOA filter", .toaFilter = true, .compensation = true},
        {.name = "drift rate entered", .driftIsSet = true},
        {.name = "drift rate entered, TOA filter", .toaFilter = true, .driftIsSet = true},
        {.name = "drift rate entered, focus 1", .driftIsSet = true, .focus = 1},
        {.name = "drift rate entered, focus 3", .driftIsSet = true, .focus = 3},
        {.name = "drift rate entered, TOA filter, focus 1",
         .toaFilter = true,
         .driftIsSet = true,
         .focus = 1},
        {.name = "two peers, drift rates entered", .peers = 2, .driftIsSet = true},
        {.name = "two peers, drift rates entered, TOA filter",
         .peers = 2,
         .toaFilter = true,
         .driftIsSet = true}};
    PrintCounts(more, RunAll(storm, more));
}

}  // namespace

int main() {
    constexpr int Seconds = 3600;
    PrintSky("Strikes evenly all over the map", Storm(EvenSky(), Seconds));
    PrintSky("Thunderstorms of 15 km radius", Storm(StormySky(), Seconds));
    return 0;
}
