// Renders what a station hears of a synthetic storm to a sound file, and the truth about the storm to a
// table.

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "common/failure.h"
#include "storm/renderer.h"
#include "storm/truth.h"

namespace {

using namespace veltrix;

constexpr int ExitFailed = 1;
constexpr int ExitUsage = 64;

constexpr const char* Help =
    "veltrix-storm SCENARIO [OPTION...]\n"
    "\n"
    "Renders what a station hears of a storm. SCENARIO is a scenario file or the built-in \"demo\".\n"
    "\n"
    "  --station NAME    the station that listens (default: the scenario's first)\n"
    "  --from STAMP      first instant, UTC, as 2024-01-01T00:00:00Z (default: the scenario's start)\n"
    "  --seconds N       length in seconds, at most a week (default: 60)\n"
    "  --out FILE.wav    the sound: stereo, 16 bit, 22050 Hz\n"
    "  --truth FILE.csv  the truth: a line per strike; - is standard output, also the default without --out\n"
    "  --version, --help\n"
    "\n"
    "Exit code 0; 1 when a file cannot be read or written; 64 for a wrong command line.\n";

constexpr double LongestSeconds = 7 * 86400;

struct WrongUse {
    std::string text;
};

struct Options {
    std::string scenario;
    std::string station;
    std::string from;
    double seconds = 60;
    std::string out;
    std::string truth;
};

double SecondsOf(const std::string& text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end || !(value > 0 && value <= LongestSeconds))
        throw WrongUse{"--seconds: '" + text + "' is no number above 0, up to 604800"};
    return value;
}

Options ReadOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!argument.starts_with("--")) {
            if (!options.scenario.empty())
                throw WrongUse{"one scenario at a time, not '" + argument + "', too"};
            options.scenario = argument;
            continue;
        }
        const std::size_t sign = argument.find('=');
        const std::string name = argument.substr(0, sign);
        const auto value = [&]() -> std::string {
            if (sign != std::string::npos) return argument.substr(sign + 1);
            if (i + 1 == arguments.size()) throw WrongUse{name + " needs a value"};
            return arguments[++i];
        };
        if (name == "--station") {
            options.station = value();
        } else if (name == "--from") {
            options.from = value();
            if (!ParseUtc(options.from))
                throw WrongUse{"--from: '" + options.from +
                               "' is no stamp like 2024-01-01T00:00:00Z of 1970 to 2199"};
        } else if (name == "--seconds") {
            options.seconds = SecondsOf(value());
        } else if (name == "--out") {
            options.out = value();
            if (options.out == "-") throw WrongUse{"--out takes a file, for the sound cannot go into a pipe"};
        } else if (name == "--truth") {
            options.truth = value();
        } else {
            throw WrongUse{"unknown option '" + name + "'; --help lists them"};
        }
    }
    if (options.scenario.empty()) throw WrongUse{"a scenario is missing; --help tells more"};
    if (options.out.empty() && options.truth.empty()) options.truth.assign(1, '-');
    return options;
}

void WriteSound(Renderer& renderer, double seconds, const std::string& name) {
    SF_INFO info{};
    info.channels = 2;
    info.samplerate = StormSampleRate;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(name.c_str(), SFM_WRITE, &info), sf_close);
    if (!file) throw Failure(errors::PathAccess, name + ": " + sf_strerror(nullptr), "veltrix-storm");
    std::array<std::int16_t, 8192> samples;
    auto left = static_cast<sf_count_t>(std::llround(seconds * StormSampleRate));
    while (left > 0) {
        const sf_count_t frames = std::min<sf_count_t>(left, samples.size() / 2);
        renderer.Render({samples.data(), static_cast<std::size_t>(frames) * 2});
        if (sf_writef_short(file.get(), samples.data(), frames) != frames)
            throw Failure(errors::DiskFull, name + ": cannot be written", "veltrix-storm");
        left -= frames;
    }
}

void WriteTruth(const Scenario& scenario, UtcTime from, double seconds, const std::string& name) {
    const bool toOutput = name == "-";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> owned(
        toOutput ? nullptr : std::fopen(name.c_str(), "wb"),
        [](std::FILE* f) { return f ? std::fclose(f) : 0; });
    std::FILE* const file = toOutput ? stdout : owned.get();
    if (file == nullptr) throw Failure(errors::PathAccess, name + ": cannot be written", "veltrix-storm");
    const TruthTable table(scenario);
    bool written = std::fputs(table.Header().c_str(), file) >= 0;
    const UtcTime to = from + std::llround(seconds * 1e9);
    constexpr UtcTime Piece = 600 * NanosecondsPerSecond;
    for (UtcTime at = from; at < to && written; at += Piece)
        written = std::fputs(table.Rows(at, std::min(at + Piece, to)).c_str(), file) >= 0;
    if (!written || std::fflush(file) != 0)
        throw Failure(errors::DiskFull, name + ": cannot be written", "veltrix-storm");
}

void Run(const Options& options) {
    const Scenario scenario = LoadScenario(options.scenario);
    const std::size_t station = scenario.StationIndex(options.station);
    const UtcTime from =
        options.from.empty() ? scenario.start : ParseUtc(options.from).value_or(scenario.start);
    if (!options.out.empty()) {
        Renderer renderer(scenario, station, from);
        WriteSound(renderer, options.seconds, options.out);
    }
    if (!options.truth.empty()) WriteTruth(scenario, from, options.seconds, options.truth);
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (std::ranges::find(arguments, "--help") != arguments.end()) {
        std::fputs(Help, stdout);
        return 0;
    }
    if (std::ranges::find(arguments, "--version") != arguments.end()) {
        std::puts("veltrix-storm " VELTRIX_VERSION);
        return 0;
    }
    try {
        Run(ReadOptions(arguments));
        return 0;
    } catch (const WrongUse& wrong) {
        std::fprintf(stderr, "veltrix-storm: %s\n", wrong.text.c_str());
        return ExitUsage;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "veltrix-storm: %s\n", failure.Description().c_str());
        return ExitFailed;
    }
}
