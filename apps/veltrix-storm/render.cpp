#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "commands.h"
#include "common/failure.h"
#include "storm/renderer.h"
#include "storm/truth.h"

namespace veltrix {

namespace {

struct Options {
    std::string scenario;
    std::string station;
    std::optional<UtcTime> from;
    double seconds = 60;
    std::string out;
    std::string truth;
};

Options ReadOptions(StormArguments& arguments) {
    Options options;
    while (arguments.Next()) {
        const std::string name = arguments.Name();
        if (!arguments.IsOption()) {
            arguments.TakeScenario(options.scenario);
        } else if (name == "--station") {
            options.station = arguments.Value();
        } else if (name == "--from") {
            options.from = arguments.Stamp();
        } else if (name == "--seconds") {
            options.seconds = arguments.Seconds();
        } else if (name == "--out") {
            options.out = arguments.Value();
            if (options.out == "-") throw WrongUse{"--out takes a file, for the sound cannot go into a pipe"};
        } else if (name == "--truth") {
            options.truth = arguments.Value();
        } else {
            RefuseOption(name);
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

}  // namespace

void Render(StormArguments arguments) {
    const Options options = ReadOptions(arguments);
    const Scenario scenario = LoadScenario(options.scenario);
    const std::size_t station = scenario.StationIndex(options.station);
    const UtcTime from = options.from.value_or(scenario.start);
    if (!options.out.empty()) {
        Renderer renderer(scenario, station, from);
        WriteSound(renderer, options.seconds, options.out);
    }
    if (!options.truth.empty()) WriteTruth(scenario, from, options.seconds, options.truth);
}

}  // namespace veltrix
