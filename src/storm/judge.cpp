#include "storm/judge.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>

#include "storm/sample_counter.h"

namespace veltrix {

namespace {

/// How long after a strike its lines may come.
constexpr UtcTime Delay = 10 * NanosecondsPerSecond;

template <typename LineType>
std::vector<LineType> OfThisRun(std::vector<LineType> lines, const Evidence& evidence) {
    std::erase_if(lines, [&](const LineType& line) {
        return line.written < evidence.from || line.written >= evidence.to + Delay;
    });
    return lines;
}

/// One station's view of the strikes.
class Ear {
  public:
    Ear(const HeardBy& heard, const Evidence& evidence, const std::vector<Strike>& strikes,
        const StormStation& station)
        : log_(OfThisRun(heard.log, evidence)),
          arrivals_(strikes, station),
          counter_(SampleCounter::Learnt(log_, arrivals_, station)) {}

    const std::vector<DetectionLine>& Log() const { return log_; }
    bool IsInStep() const { return counter_.has_value() || log_.empty(); }
    /// When the station began to count frames.
    std::optional<UtcTime> Start() const {
        if (!counter_) return {};
        return counter_->StartOf(log_.front());
    }
    std::optional<std::size_t> StrikeOf(const DetectionLine& line) const {
        if (!counter_) return {};
        return arrivals_.StrikeAt(counter_->TimeOf(line));
    }

  private:
    std::vector<DetectionLine> log_;
    ArrivalTimes arrivals_;
    std::optional<SampleCounter> counter_;
};

/// The value below which a share of the sorted values lies, interpolated between neighbours.
double Quantile(const std::vector<double>& sorted, double share) {
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], place - std::floor(place));
}

PositionErrors ErrorsOf(std::vector<double> kilometres) {
    if (kilometres.empty()) return {};
    std::ranges::sort(kilometres);
    return {kilometres.size(), Quantile(kilometres, 0.5), Quantile(kilometres, 0.9)};
}

/// Holds the evidence while the findings are gathered.
class Trial {
  public:
    Trial(const Scenario& scenario, const Evidence& evidence)
        : scenario_(scenario),
          evidence_(evidence),
          strikes_(StrikeGenerator(scenario).Between(evidence.from, evidence.to + Delay)) {
        for (const HeardBy& heard : evidence.heard)
            ears_.emplace(heard.station, Ear(heard, evidence, strikes_, scenario.stations.at(heard.station)));
        findings_.from = evidence.from;
        findings_.to = evidence.to;
        for (const auto& [station, ear] : ears_)
            findings_.from = std::max(findings_.from, ear.Start().value_or(evidence.from));
        findings_.strikes = static_cast<std::size_t>(
            std::ranges::count_if(strikes_, [this](const Strike& strike) { return IsJudged(strike); }));
    }

    Judgement Findings() {
        for (const HeardBy& heard : evidence_.heard) AddDetected(heard.station);
        for (const PairedWith& paired : evidence_.paired) AddPaired(paired);
        AddFixes();
        return findings_;
    }

  private:
    bool IsJudged(const Strike& strike) const {
        return strike.time >= findings_.from && strike.time < findings_.to;
    }
    bool IsJudged(std::size_t strike) const { return IsJudged(strikes_[strike]); }
    /// A line of no strike can only be placed by when it was written.
    bool IsJudged(const DetectionLine& line) const {
        return line.written >= findings_.from && line.written < findings_.to;
    }
    const Ear& Home() const { return ears_.at(evidence_.heard.front().station); }

    void AddDetected(std::size_t station) {
        const Ear& ear = ears_.at(station);
        Judgement::Detected detected{scenario_.stations[station].name, ear.IsInStep()};
        std::set<std::size_t> heard;
        for (const DetectionLine& line : ear.Log())
            if (const auto strike = ear.StrikeOf(line)) {
                if (IsJudged(*strike)) heard.insert(*strike);
            } else if (IsJudged(line)) {
                ++detected.noStrike;
            }
        detected.strikes = heard.size();
        findings_.detected.push_back(detected);
    }

    void AddPaired(const PairedWith& with) {
        const Ear& other = ears_.at(with.station);
        Judgement::Paired paired{scenario_.stations[with.station].name};
        std::set<std::size_t> right;
        for (const PairLine& pair : OfThisRun(with.pairs, evidence_)) {
            const auto strike = Home().StrikeOf(pair);
            if (strike ? !IsJudged(*strike) : !IsJudged(pair)) continue;
            if (strike && strike == other.StrikeOf({pair.written, pair.remoteSample})) {
                right.insert(*strike);
            } else {
                ++paired.wrong;
            }
        }
        paired.strikes = right.size();
        findings_.paired.push_back(paired);
    }

    void AddFixes() {
        std::set<std::size_t> located;
        std::vector<double> all;
        std::vector<std::pair<std::string, std::vector<double>>> byStation;
        for (const ReportedFix& fix : OfThisRun(evidence_.fixes, evidence_)) {
            const auto strike = Home().StrikeOf(fix);
            if (!strike) {
                if (IsJudged(fix)) ++findings_.noStrike;
                continue;
            }
            if (!IsJudged(*strike)) continue;
            located.insert(*strike);
            const Strike& truth = strikes_[*strike];
            all.push_back(GeodesicDistance(fix.latitude, fix.longitude, truth.latitude, truth.longitude));
            auto entry = std::ranges::find(byStation, fix.remote, [](const auto& e) { return e.first; });
            if (entry == byStation.end()) entry = byStation.insert(entry, {fix.remote, {}});
            entry->second.push_back(all.back());
        }
        findings_.located = located.size();
        findings_.errors = ErrorsOf(all);
        for (const auto& [station, kilometres] : byStation)
            findings_.locatedWith.push_back({station, ErrorsOf(kilometres)});
    }

    const Scenario& scenario_;
    const Evidence& evidence_;
    std::vector<Strike> strikes_;
    std::map<std::size_t, Ear> ears_;
    Judgement findings_;
};

std::string Kilometres(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f km", value);
    return text;
}

/// One line: what, how many, and a remark.
std::string Count(const std::string& what, std::size_t count, const std::string& remark = {}) {
    char text[192];
    std::snprintf(text, sizeof text, "%-36.60s%7zu%s%s\n", what.c_str(), count, remark.empty() ? "" : "  ",
                  remark.c_str());
    return text;
}

std::string ErrorText(const std::string& whose, const PositionErrors& errors) {
    if (errors.fixes == 0) return "";
    char text[192];
    std::snprintf(text, sizeof text, "%-36.60smedian %s, 90 %% within %s\n", whose.c_str(),
                  Kilometres(errors.median).c_str(), Kilometres(errors.most).c_str());
    return text;
}

}  // namespace

Judgement Judge(const Scenario& scenario, const Evidence& evidence) {
    return Trial(scenario, evidence).Findings();
}

std::string JudgementText(const Judgement& judgement) {
    const auto share = [&](std::size_t strikes) {
        if (judgement.strikes == 0) return std::string();
        return std::to_string(std::lround(100.0 * static_cast<double>(strikes) /
                                          static_cast<double>(judgement.strikes))) +
               " %";
    };
    const std::int64_t seconds = std::max<UtcTime>(judgement.to - judgement.from, 0) / NanosecondsPerSecond;
    std::string text =
        Count("strikes in the truth", judgement.strikes,
              "in " + std::to_string(seconds) + " s from " + UtcText(judgement.from).substr(0, 19) + "Z");
    for (const Judgement::Detected& detected : judgement.detected) {
        const std::string remark = detected.isInStep ? share(detected.strikes) + "; of no strike " +
                                                           std::to_string(detected.noStrike)
                                                     : "its strike log fits no strikes of the storm";
        text += Count("detected by " + detected.station, detected.strikes, remark);
    }
    for (const Judgement::Paired& paired : judgement.paired)
        text += Count("paired with " + paired.station, paired.strikes,
                      share(paired.strikes) + "; wrong pairs " + std::to_string(paired.wrong));
    text += Count("located", judgement.located,
                  share(judgement.located) + "; fixes of no strike " + std::to_string(judgement.noStrike));
    text += ErrorText("position error", judgement.errors);
    if (judgement.locatedWith.size() > 1)
        for (const Judgement::Located& located : judgement.locatedWith)
            text +=
                ErrorText("  of " + std::to_string(located.errors.fixes) + " fixes with " + located.station,
                          located.errors);
    return text;
}

}  // namespace veltrix
