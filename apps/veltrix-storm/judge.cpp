#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "commands.h"
#include "common/failure.h"
#include "storm/judge.h"

namespace veltrix {

namespace {

struct Options {
    using NamedFiles = std::vector<std::pair<std::string, std::string>>;

    std::string scenario;
    NamedFiles logs;
    NamedFiles pairs;
    std::vector<std::string> fixes;
    UtcTime from = 0;
    double seconds = 0;
};

Options ReadOptions(StormArguments& arguments) {
    Options options;
    while (arguments.Next()) {
        const std::string name = arguments.Name();
        if (!arguments.IsOption()) {
            arguments.TakeScenario(options.scenario);
        } else if (name == "--from") {
            options.from = arguments.Stamp();
        } else if (name == "--seconds") {
            options.seconds = arguments.Seconds();
        } else if (name == "--log") {
            options.logs.push_back(arguments.NamedFile());
        } else if (name == "--pairs") {
            options.pairs.push_back(arguments.NamedFile());
        } else if (name == "--fixes") {
            options.fixes.push_back(arguments.Value());
        } else {
            RefuseOption(name);
        }
    }
    if (options.scenario.empty()) throw WrongUse{"judge: a scenario is missing; --help tells more"};
    if (options.from == 0 || options.seconds == 0) throw WrongUse{"judge: --from and --seconds are needed"};
    if (options.logs.empty()) throw WrongUse{"judge: --log STATION=FILE is needed"};
    return options;
}

std::string ContentOf(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad())
        throw Failure(errors::PathAccess, name + ": cannot be read", "veltrix-storm");
    return content;
}

/// The instant of a time that the clock of this computer shows.
UtcTime InstantOf(UtcTime local) {
    const std::time_t seconds = local / NanosecondsPerSecond;
    std::tm fields{};
    ::gmtime_r(&seconds, &fields);
    fields.tm_isdst = -1;
    return std::mktime(&fields) * NanosecondsPerSecond;
}

/// The entry of a station in a list of them, made when it is not there.
template <typename Entry>
Entry& EntryOf(std::vector<Entry>& entries, std::size_t station) {
    const auto entry = std::ranges::find(entries, station, &Entry::station);
    if (entry != entries.end()) return *entry;
    return entries.emplace_back(Entry{station, {}});
}

template <typename Line>
void Append(std::vector<Line>& lines, const std::vector<Line>& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

Evidence ReadEvidence(const Options& options, const Scenario& scenario) {
    Evidence evidence;
    evidence.from = options.from;
    evidence.to = options.from + std::llround(options.seconds * 1e9);
    for (const auto& [station, file] : options.logs)
        Append(EntryOf(evidence.heard, scenario.StationIndex(station)).log,
               ReadStrikeLog({ContentOf(file), file}, InstantOf));
    for (const auto& [station, file] : options.pairs) {
        const std::size_t place = scenario.StationIndex(station);
        if (std::ranges::find(evidence.heard, place, &HeardBy::station) == evidence.heard.end())
            throw WrongUse{"judge: --pairs " + station + " needs --log " + station + ", too"};
        Append(EntryOf(evidence.paired, place).pairs, ReadCorrelationLog({ContentOf(file), file}, InstantOf));
    }
    for (const std::string& file : options.fixes)
        Append(evidence.fixes, ReadFixes({ContentOf(file), file}, InstantOf));
    return evidence;
}

}  // namespace

void JudgeStations(StormArguments arguments) {
    const Options options = ReadOptions(arguments);
    const Scenario scenario = LoadScenario(options.scenario);
    const std::string text = JudgementText(Judge(scenario, ReadEvidence(options, scenario)));
    if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0)
        throw Failure(errors::DiskFull, "the findings cannot be written", "veltrix-storm");
}

}  // namespace veltrix
