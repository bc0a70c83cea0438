#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "archive/day_plots.h"
#include "archive/pair_site.h"
#include "archive/summary.h"
#include "commands.h"
#include "drawing.h"
#include "output_file.h"
#include "progress.h"

namespace veltrix {

namespace {

constexpr int LeastDb = -120;

struct Options {
    ReplayRules rules;
    DayPlots::Limits limits;
    SummaryOption summary;
    std::string plot;
    std::string log;
    std::vector<std::string> files;
};

Options ReadOptions(Arguments& arguments) {
    Options options;
    options.rules.threads = UsualThreads();
    while (arguments.Next()) {
        const std::string name = arguments.Name();
        if (!arguments.IsOption()) {
            options.files.push_back(name);
        } else if (name == "--summary") {
            options.summary.isOn = true;
            if (arguments.HasOwnValue()) options.summary.file = arguments.Value();
        } else if (name == "--plot") {
            options.plot = arguments.Value();
        } else if (name == "--log") {
            options.log = arguments.Value();
        } else if (name == "--min-db") {
            options.limits.least = static_cast<std::int16_t>(arguments.Whole(LeastDb, 0));
        } else if (name == "--max-db") {
            options.limits.most = static_cast<std::int16_t>(arguments.Whole(LeastDb, 0));
        } else if (!TakeReplayOption(arguments, options.rules)) {
            RefuseOption(name);
        }
    }
    if (options.files.empty()) throw WrongUse{"a recording is missing; --help tells more"};
    if (options.limits.most <= options.limits.least) throw WrongUse{"--max-db must lie above --min-db"};
    return options;
}

/// Where the lines go: a file of ours, or standard output.
class LineFile {
  public:
    explicit LineFile(const std::string& name)
        : name_(name), owned_(name.empty() ? nullptr : std::fopen(name.c_str(), "wb")) {
        if (!name.empty() && !owned_) throw std::system_error(errno, std::generic_category(), name);
    }

    void Write(const std::string& line) {
        std::fputs(line.c_str(), File());
        std::fputc('\n', File());
    }
    /// Raises std::system_error when a line could not be written.
    void Finish() {
        if (std::fflush(File()) != 0 || std::ferror(File()) != 0)
            throw std::system_error(std::make_error_code(std::errc::io_error),
                                    name_.empty() ? "the lines cannot be written" : name_);
    }

  private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::FILE* File() { return owned_ ? owned_.get() : stdout; }

    std::string name_;
    std::unique_ptr<std::FILE, Closer> owned_;
};

/// The name of a day's plot; where there are several, the day stands before the ending.
std::string PlotName(const std::string& name, const std::string& day, std::size_t days) {
    if (days == 1) return name;
    std::filesystem::path path(name);
    path.replace_filename(path.stem().string() + '-' + day + path.extension().string());
    return path.string();
}

class ReplayCommand {
  public:
    explicit ReplayCommand(Options options)
        : options_(std::move(options)), replay_(options_.rules), lines_(options_.log) {
        if (!options_.plot.empty()) {
            drawing_ = std::make_unique<TextDrawing>();
            plots_ = std::make_unique<DayPlots>(options_.limits, errors_, drawing_->TheGlyphs());
        }
        replay_.OnPulse = [this](const HeardPulse& heard) { Take(heard); };
        replay_.OnProgress = [this](const ReadAhead& recording) {
            summary_.HasPlayed(replay_.Sum().end);
            progress_.Show(recording.Position(), recording.Frames(), strikes_);
        };
    }

    int Run() {
        const auto start = std::chrono::steady_clock::now();
        int result = 0;
        for (const std::string& name : RecordingsOf(options_.files)) try {
                replay_.Play(name);
            } catch (const BadRecording& bad) {
                Say(bad.text);
                result = 1;
            }
        lines_.Finish();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        if (plots_ && replay_.Sum().frames > 0) WritePlots();
        if (options_.summary.isOn) WriteSummary(options_.summary, summary_.Text(replay_, took.count()));
        return result;
    }

  private:
    void Take(const HeardPulse& heard) {
        ++strikes_;
        lines_.Write(LogLineOf(heard));
        summary_.Take(heard);
        if (plots_) plots_->Take(heard);
    }

    void WritePlots() {
        if (plots_->Days().empty()) plots_->AddDay(replay_.Sum().start);
        for (const auto& [day, surface] : plots_->Days())
            WritePng(surface.Image(), PlotName(options_.plot, day, plots_->Days().size()));
    }

    Options options_;
    UnheardErrors errors_;
    StationReplay replay_;
    LineFile lines_;
    Summary summary_;
    Progress progress_;
    std::unique_ptr<TextDrawing> drawing_;
    std::unique_ptr<DayPlots> plots_;
    long strikes_ = 0;
};

}  // namespace

int Replay(Arguments arguments) {
    return ReplayCommand(ReadOptions(arguments)).Run();
}

}  // namespace veltrix
