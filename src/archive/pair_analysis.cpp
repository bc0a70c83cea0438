#include "archive/pair_analysis.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "common/detection.h"

namespace veltrix {

namespace {

constexpr double ClockReach = 120;              // s that two recordings' clocks may be apart
constexpr double LongestSpan = 86400;           // s; a correlator's sample numbers are 4-byte integers
constexpr double LineTravel = 0.06;             // s that a detection takes to the other station
constexpr std::int32_t EnoughPairs = 30;        // that the correlator learns from
constexpr double SamplesPerMillisecond = 22.0;  // as the correlator reckons

/// A pulse on the common time line.
struct Event {
    double time = 0;  // s
    bool isFirst = false;
    const HeardPulse* heard = nullptr;
};

/// The pulses of one station in one span. Times are by the station's own clock, in seconds after the first
/// station's stamp of its first frame.
struct Side {
    std::vector<const HeardPulse*> heard;
    std::vector<double> times;
};

/// The pulses of a row of recordings without a gap.
std::span<const HeardPulse> RunOf(const StationRecord& station, int run) {
    return std::ranges::equal_range(station.pulses, run, {}, &HeardPulse::run);
}

Side SideOf(const StationRecord& station, int run, DateTime zero, double from, double to) {
    const double ahead = (station.start - zero) * SecondsPerDay;
    const auto timeOf = [ahead](const HeardPulse& heard) {
        return ahead + static_cast<double>(heard.frame) / SampleRate;
    };
    const std::span<const HeardPulse> pulses = RunOf(station, run);
    Side side;
    for (auto heard = std::ranges::lower_bound(pulses, from, {}, timeOf);
         heard != pulses.end() && timeOf(*heard) < to; ++heard) {
        side.heard.push_back(&*heard);
        side.times.push_back(timeOf(*heard));
    }
    return side;
}

/// One span without gaps.
class SpanAnalysis {
  public:
    SpanAnalysis(const StationRecord& first, const StationRecord& second, const PairRules& rules,
                 Files& files, const ClockOffset& offset, double start)
        : start_(start),
          clock_(first.start + start / SecondsPerDay),
          site_(clock_, files, first.place, second.place, rules.mapRadius),
          offset_(offset) {
        site_.rules.dAngularSeparation = rules.angularSeparation;
        site_.rules.dLocalCorrectionAngle = first.correction;
        site_.rules.iMinStrength = rules.minStrength;
        site_.rules.bTOAFilter = rules.toaFilter;
        site_.Remote().dCorrectionAngle = second.correction;
        if (!rules.tables) return;
        site_.mappers.Local().Init();
        site_.Remote().Init();
    }

    void Run(const Side& first, const Side& second, PairFindings& findings) {
        AddEvents(first, second);
        // What the difference grows by in a day, in the correlator's milliseconds.
        Corr().SetPreDrift(offset_.rate * SecondsPerDay * SampleRate / SamplesPerMillisecond);
        for (const Event& event : events_) {
            Offer(event);
            if (Corr().lCorrelatedCount >= EnoughPairs) break;
        }
        const std::int32_t learnt = Corr().lCorrelatedCount;
        for (const Event& event : events_)
            if (const StrikeFix fix = Offer(event); fix.bLocated) findings.strikes.push_back(Located(fix));
        findings.pairs += Corr().lCorrelatedCount - learnt;
    }

  private:
    void AddEvents(const Side& first, const Side& second) {
        firstFrames_ = first.heard;
        secondFrames_ = second.heard;
        for (std::size_t i = 0; i < first.heard.size(); ++i)
            events_.push_back({first.times[i], true, first.heard[i]});
        for (std::size_t i = 0; i < second.heard.size(); ++i)
            events_.push_back({offset_.ToFirst(second.times[i]) + LineTravel, false, second.heard[i]});
        std::ranges::stable_sort(events_, {}, &Event::time);
        firstBase_ = first.heard.front()->frame;
        secondBase_ = second.heard.front()->frame;
    }

    /// Sample numbers of a span begin anew, far from 0, which stands for none.
    static double SampleOf(const HeardPulse& heard, std::int64_t base) {
        constexpr std::int64_t First = 1000;
        return static_cast<double>(heard.frame - base + First);
    }
    static const HeardPulse& PulseAt(const std::vector<const HeardPulse*>& pulses, std::int64_t base,
                                     double sample) {
        const auto found = std::ranges::lower_bound(
            pulses, sample, {}, [base](const HeardPulse* heard) { return SampleOf(*heard, base); });
        return **found;
    }

    StrikeFix Offer(const Event& event) {
        clock_.SetTo(event.time - start_);
        const Pulse& pulse = event.heard->pulse;
        if (event.isFirst)
            return site_.locator.MapUpdate(PairSite::Row, 0,
                                           {true, site_.mappers.HomeX, site_.mappers.HomeY, pulse.dDir,
                                            pulse.dAmp, SampleOf(*event.heard, firstBase_)},
                                           pulse.dFitError);
        return site_.locator.MapUpdate(PairSite::Row, 0,
                                       {false, site_.Remote().RemoteX, site_.Remote().RemoteY, pulse.dDir,
                                        pulse.dAmp, SampleOf(*event.heard, secondBase_)},
                                       0);
    }

    /// The strike that the last detection located.
    LocatedPair Located(const StrikeFix& fix) {
        const ClassMapper& remote = site_.Remote();
        LocatedPair strike;
        strike.first = PulseAt(firstFrames_, firstBase_, Corr().MatchedLocal().dTime);
        strike.second = PulseAt(secondFrames_, secondBase_, Corr().MatchedRemote().dTime);
        strike.latitude = fix.LatitudeLightning;
        strike.longitude = std::remainder(fix.LongitudeLightning, 360);
        const BearingFix bearings = site_.LastBearings();
        strike.firstBearing = bearings.dDirLocal;
        strike.secondBearing = bearings.dDirRemote;
        strike.firstDistance = remote.dDistanceToLocal;
        strike.secondDistance = remote.dDistanceToRemote;
        strike.toaError = remote.dThisTOADiffTime - remote.dTOADiffTime;
        strike.deltaT = strike.toaError - remote.dTravelTime;
        return strike;
    }

    ClassCorrelator& Corr() { return site_.Remote().Corr; }

    double start_;  // of the clock, s
    ArchiveClock clock_;
    PairSite site_;
    ClockOffset offset_;
    std::vector<Event> events_;
    std::vector<const HeardPulse*> firstFrames_;
    std::vector<const HeardPulse*> secondFrames_;
    std::int64_t firstBase_ = 0;
    std::int64_t secondBase_ = 0;
};

/// Locates in all that the two stations have in common of one run of each.
void LocateInRuns(const StationRecord& first, int firstRun, const StationRecord& second, int secondRun,
                  const PairRules& rules, Files& files, PairFindings& findings) {
    const std::span<const HeardPulse> pulses = RunOf(first, firstRun);
    if (pulses.empty()) return;
    const double end = static_cast<double>(pulses.back().frame + 1) / SampleRate;
    for (double from = static_cast<double>(pulses.front().frame) / SampleRate; from < end;
         from += LongestSpan) {
        const Side here = SideOf(first, firstRun, first.start, from, from + LongestSpan);
        if (here.heard.empty()) continue;
        const Side there = SideOf(second, secondRun, first.start, here.times.front() - ClockReach,
                                  here.times.back() + ClockReach);
        if (there.heard.empty()) continue;
        const auto offset = FindClockOffset(here.times, there.times, ClockReach);
        if (!offset) {
            ++findings.withoutOffset;
            continue;
        }
        findings.offsets.push_back(*offset);
        SpanAnalysis(first, second, rules, files, *offset, here.times.front()).Run(here, there, findings);
    }
}

int RunsOf(const StationRecord& station) {
    return station.pulses.empty() ? 0 : station.pulses.back().run + 1;
}

}  // namespace

PairFindings LocatePairs(const StationRecord& first, const StationRecord& second, const PairRules& rules,
                         Files& files) {
    PairFindings findings;
    for (int firstRun = 0; firstRun < RunsOf(first); ++firstRun)
        for (int secondRun = 0; secondRun < RunsOf(second); ++secondRun)
            LocateInRuns(first, firstRun, second, secondRun, rules, files, findings);
    std::ranges::stable_sort(findings.strikes, {},
                             [](const LocatedPair& strike) { return strike.first.frame; });
    return findings;
}

}  // namespace veltrix
