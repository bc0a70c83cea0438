// Runs recordings through the station's detector as fast as the machine can and prints the lines of the
// strike log.

#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "common/arithmetic.h"
#include "common/failure.h"
#include "common/neutral_text.h"
#include "detection/detector.h"
#include "detection/strike_log.h"
#include "recording.h"

namespace {

using namespace veltrix;

constexpr int ExitUsage = 64;
constexpr double TickFrames = 2205;  // a station looks for a block every 100 ms
constexpr double MillisecondFrames = 22.05;

constexpr const char* Help =
    "veltrix-replay [OPTION...] FILE...\n"
    "\n"
    "Prints a line of the strike log for each strike in sound files of two channels at 22050 Hz; - is "
    "standard input.\n"
    "\n"
    "  --threshold DB   detection threshold, 1 to 100 dB below the reference (default 80)\n"
    "  --no-filter      without the detection filter\n"
    "  --start STAMP    when the recording began, \"YYYY/MM/DD HH:MM:SS\" (default: the time of the file's "
    "last\n"
    "                   change less its length)\n"
    "  --version, --help\n"
    "\n"
    "A line holds date and time, bearing in degrees, sample number, strength in dB, and milliseconds since "
    "the "
    "100 ms tick began.\n"
    "Exit code 0; 1 when a file cannot be read or a line cannot be written; 64 for a wrong command line.\n";

struct Options {
    std::int16_t threshold = 80;
    bool filter = true;
    std::optional<DateTime> start;
    std::vector<std::string> files;
};

struct WrongUse {
    std::string text;
};

/// Prints each strike as a line of the log, with the time in the recording as its date.
class Printer final : public PulseReceiver {
  public:
    explicit Printer(DateTime start) : start_(start) {}

    void OnTrigger() override {}
    void OnPulseEnd() override {}
    void ShowClipping(bool) override {}
    bool Deliver(const Pulse& pulse, FailureHandler&) override {
        const DateTime date = start_ + pulse.dLocalSample / SampleRate / SecondsPerDay;
        const Detection detection{date, pulse.dDir, pulse.dAmp, pulse.dLocalSample,
                                  RoundToLong(pulse.dStopwatchTime)};
        std::puts(StrikeLogLine(detection).c_str());
        ++strikes;
        return true;
    }

    long strikes = 0;

  private:
    DateTime start_;
};

/// A bar on a terminal's standard error, drawn anew a few times a second at most; nothing on a pipe or a
/// file.
class Progress {
  public:
    void Show(const Recording& recording, long strikes, bool done) {
        const auto now = std::chrono::steady_clock::now();
        if (!terminal_ || recording.Frames() <= 0 || (!done && now - shown_ < std::chrono::milliseconds(100)))
            return;
        shown_ = now;
        const double part =
            static_cast<double>(recording.Position()) / static_cast<double>(recording.Frames());
        const auto filled = static_cast<std::size_t>(part * Width);
        std::string bar(std::min(filled, Width), '#');
        bar.resize(Width, '.');
        std::fflush(stdout);
        std::fprintf(stderr, "\r[%s] %3.0f %%  %ld strikes%s", bar.c_str(), part * 100, strikes,
                     done ? "\n" : "");
    }

  private:
    static constexpr std::size_t Width = 40;
    bool terminal_ = isatty(STDERR_FILENO) == 1;
    std::chrono::steady_clock::time_point shown_;
};

DateTime BeginningOf(const std::string& name, const Recording& recording) {
    struct stat status {};
    const bool known = name != "-" && stat(name.c_str(), &status) == 0;
    const std::time_t end = known ? status.st_mtime : std::time(nullptr);
    std::tm local{};
    localtime_r(&end, &local);
    const DateTime date = DateTimeOf(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
    return date - static_cast<double>(recording.Frames()) / SampleRate / SecondsPerDay;
}

void Replay(const Options& options, const std::string& name) {
    Recording recording(name);
    NoiseControl noise;
    noise.iTresholdQuotient = options.threshold;
    noise.CalcThreshold();
    noise.StartNoiseLevel();
    Printer printer(options.start ? *options.start : BeginningOf(name, recording));
    const Detector* running = nullptr;
    Detector detector(noise, printer, [&running] {
        return static_cast<std::int32_t>(std::fmod(running->lSampleCounter, TickFrames) / MillisecondFrames);
    });
    running = &detector;
    detector.bHighPass = options.filter;
    SkipFailures failures;
    Progress progress;
    std::vector<std::int16_t> samples(65536);
    while (const std::size_t count = recording.Read(samples)) {
        detector.Process(std::span(samples).first(count), failures);
        progress.Show(recording, printer.strikes, false);
    }
    progress.Show(recording, printer.strikes, true);
}

Options ReadOptions(const std::vector<std::string>& words) {
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        const auto value = [&]() -> std::string {
            if (i + 1 == words.size()) throw WrongUse{word + " needs a value"};
            return words[++i];
        };
        if (word == "--threshold") {
            const std::string text = value();
            const auto read = std::from_chars(text.data(), text.data() + text.size(), options.threshold);
            if (read.ptr != text.data() + text.size() || options.threshold < 1 || options.threshold > 100)
                throw WrongUse{"--threshold takes 1 to 100, not '" + text + "'"};
        } else if (word == "--no-filter") {
            options.filter = false;
        } else if (word == "--start") {
            std::string stamp = value();
            try {
                options.start = ParseStamp(stamp);
            } catch (const Failure&) {
                throw WrongUse{"--start takes YYYY/MM/DD HH:MM:SS, not '" + stamp + "'"};
            }
        } else if (word.starts_with("--")) {
            throw WrongUse{"unknown option '" + word + "'; --help lists them"};
        } else {
            options.files.push_back(word);
        }
    }
    if (options.files.empty()) throw WrongUse{"a recording is missing; --help tells more"};
    return options;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    for (const std::string& word : words) {
        if (word != "--help" && word != "--version") continue;
        std::fputs(word == "--help" ? Help : "veltrix-replay " VELTRIX_VERSION "\n", stdout);
        return 0;
    }
    Options options;
    try {
        options = ReadOptions(words);
    } catch (const WrongUse& wrong) {
        std::fprintf(stderr, "veltrix-replay: %s\n", wrong.text.c_str());
        return ExitUsage;
    }
    int result = 0;
    for (const std::string& file : options.files) {
        try {
            Replay(options, file);
        } catch (const BadRecording& bad) {
            std::fflush(stdout);
            std::fprintf(stderr, "veltrix-replay: %s\n", bad.text.c_str());
            result = 1;
        }
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::fputs("veltrix-replay: the lines cannot be written\n", stderr);
        return 1;
    }
    return result;
}
