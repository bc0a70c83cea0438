#include <cmath>
#include <cstdio>
#include <optional>
#include <system_error>

#include "archive/pair_analysis.h"
#include "archive/strike_table.h"
#include "cartography/map_limits.h"
#include "commands.h"
#include "common/neutral_text.h"
#include "drawing.h"
#include "output_file.h"
#include "platform/qt/desk_files.h"
#include "progress.h"

namespace veltrix {

namespace {

constexpr double MostCorrection = 90;  // degrees
constexpr int MostStrength = 120;      // dB
constexpr double LeastApart = 1;       // km between two stations

struct Station {
    std::string name;
    SitePlace place;
    double correction = 0;
    ReplayRules rules;
    std::vector<std::string> files;
};

struct Options {
    std::vector<Station> stations;
    PairRules rules;
    SummaryOption summary;
    std::string fixes;
    std::string geojson;
    std::string map;
    std::string tables;
};

/// The station that NAME:LAT,LON tells of; what was set before the first station holds for all.
Station StationOf(const std::string& text, const Station& usual) {
    const std::size_t colon = text.rfind(':');
    const std::size_t comma = text.find(',', colon == std::string::npos ? 0 : colon);
    if (colon == 0 || colon == std::string::npos || comma == std::string::npos)
        throw WrongUse{"--station takes NAME:LATITUDE,LONGITUDE, not '" + text + "'"};
    Station station = usual;
    station.name = text.substr(0, colon);
    station.place.latitude =
        NumberOf("the latitude of " + station.name, text.substr(colon + 1, comma - colon - 1),
                 -MostMapLatitude, MostMapLatitude);
    station.place.longitude = NumberOf("the longitude of " + station.name, text.substr(comma + 1),
                                       -MostMapLongitude, MostMapLongitude);
    return station;
}

bool TakePairOption(Arguments& arguments, Options& options) {
    const std::string name = arguments.Name();
    PairRules& rules = options.rules;
    if (name == "--fixes") {
        options.fixes = arguments.Value();
    } else if (name == "--geojson") {
        options.geojson = arguments.Value();
    } else if (name == "--map") {
        options.map = arguments.Value();
    } else if (name == "--tables") {
        options.tables = arguments.Value();
        rules.tables = true;
    } else if (name == "--radius") {
        rules.mapRadius = arguments.Number(LeastMapRadius, MostMapRadius);
    } else if (name == "--angle") {
        rules.angularSeparation = arguments.Number(0, 90);
    } else if (name == "--min-strength") {
        rules.minStrength = static_cast<std::int16_t>(arguments.Whole(1, MostStrength));
    } else if (name == "--toa-filter") {
        rules.toaFilter = true;
    } else if (name == "--summary") {
        options.summary.isOn = true;
        if (arguments.HasOwnValue()) options.summary.file = arguments.Value();
    } else {
        return false;
    }
    return true;
}

void CheckStations(const std::vector<Station>& stations) {
    if (stations.size() != 2) throw WrongUse{"pair: two times --station is needed; --help tells more"};
    if (stations[0].name == stations[1].name) throw WrongUse{"pair: the two stations have the same name"};
    for (const Station& station : stations)
        if (station.files.empty()) throw WrongUse{"pair: a recording of " + station.name + " is missing"};
    const SitePlace& one = stations[0].place;
    const SitePlace& other = stations[1].place;
    if (CalcDistance(one.latitude, one.longitude, other.latitude, other.longitude) < LeastApart)
        throw WrongUse{"pair: the two stations stand at the same place"};
}

Options ReadOptions(Arguments& arguments) {
    Options options;
    Station usual;
    usual.rules.threads = UsualThreads();
    while (arguments.Next()) {
        const std::string name = arguments.Name();
        Station& present = options.stations.empty() ? usual : options.stations.back();
        if (!arguments.IsOption()) {
            if (options.stations.empty())
                throw WrongUse{"pair: '" + name + "' stands before the first --station"};
            present.files.push_back(name);
        } else if (name == "--station") {
            Station station = StationOf(arguments.Value(), usual);
            options.stations.push_back(std::move(station));
        } else if (name == "--correction") {
            present.correction = arguments.Number(-MostCorrection, MostCorrection);
        } else if (!TakePairOption(arguments, options) && !TakeReplayOption(arguments, present.rules)) {
            RefuseOption(name);
        }
    }
    CheckStations(options.stations);
    return options;
}

/// All that a station has heard.
struct Heard {
    StationRecord record;
    StationReplay::Played played;
};

class PairCommand {
  public:
    explicit PairCommand(Options options) : options_(std::move(options)) {}

    int Run() {
        const Heard first = Listen(options_.stations[0]);
        const Heard second = Listen(options_.stations[1]);
        DeskFiles tables(options_.tables);
        const PairFindings findings = LocatePairs(first.record, second.record, options_.rules, tables);
        if (findings.offsets.empty()) {
            Say("the two stations have too few strikes in common within two minutes of each other; do the "
                "recordings begin when their names, --start or their last changes say?");
            result_ = 1;
        }
        Write(first, second, findings);
        if (options_.summary.isOn) WriteSummary(options_.summary, Text(first, second, findings));
        return result_;
    }

  private:
    Heard Listen(const Station& station) {
        Heard heard{{station.name, station.place, station.correction, 0, {}}, {}};
        StationReplay replay(station.rules);
        Progress progress;
        replay.OnPulse = [&](const HeardPulse& pulse) { heard.record.pulses.push_back(pulse); };
        replay.OnProgress = [&](const ReadAhead& recording) {
            progress.Show(recording.Position(), recording.Frames(),
                          static_cast<long>(heard.record.pulses.size()));
        };
        for (const std::string& name : RecordingsOf(station.files)) try {
                replay.Play(name);
            } catch (const BadRecording& bad) {
                Say(bad.text);
                result_ = 1;
            }
        heard.played = replay.Sum();
        heard.record.start = heard.played.start;
        return heard;
    }

    void Write(const Heard& first, const Heard& second, const PairFindings& findings) {
        const TableStations stations{first.record.name, second.record.name, first.played.isUniversal};
        for (const LocatedPair& strike : findings.strikes) std::puts(FixLineOf(strike, stations).c_str());
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
            throw std::system_error(std::make_error_code(std::errc::io_error), "the lines cannot be written");
        if (!options_.fixes.empty()) WriteOutput(options_.fixes, StrikeCsv(findings.strikes, stations));
        if (!options_.geojson.empty())
            WriteOutput(options_.geojson, StrikeGeoJson(findings.strikes, stations));
        if (options_.map.empty()) return;
        TextDrawing drawing;
        WritePng(
            StrikeMap(first.record, second.record, findings, options_.rules.mapRadius, drawing.TheGlyphs()),
            options_.map);
    }

    static std::string Text(const Heard& first, const Heard& second, const PairFindings& findings) {
        std::string text;
        const auto line = [&text](std::string what, const std::string& value) {
            what.resize(std::max<std::size_t>(what.size() + 2, 24), ' ');
            text += what + value + '\n';
        };
        for (const Heard* heard : {&first, &second})
            line("strikes at " + heard->record.name, std::to_string(heard->record.pulses.size()));
        line("pairs", std::to_string(findings.pairs));
        line("located", std::to_string(findings.strikes.size()));
        constexpr double Ppm = 1e6;
        for (const ClockOffset& offset : findings.offsets)
            line("clock of " + first.record.name,
                 FormatNeutral(offset.atZero, "0.000") + " s ahead at the start, " +
                     FormatNeutral(offset.rate * Ppm, "0.00") + " ppm faster");
        if (findings.withoutOffset > 0)
            line("too little in common", std::to_string(findings.withoutOffset) + " span(s)");
        return text;
    }

    Options options_;
    int result_ = 0;
};

}  // namespace

int ReplayPair(Arguments arguments) {
    return PairCommand(ReadOptions(arguments)).Run();
}

}  // namespace veltrix
