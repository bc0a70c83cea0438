// The recorder: brings samples of a sound card, a sound file or a synthetic storm to a station, block by
// block.

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/failure.h"
#include "recorder/block_writer.h"
#include "recorder/card_source.h"
#include "recorder/file_source.h"
#include "recorder/level_run.h"
#include "recorder/messages.h"
#include "recorder/recorder.h"
#include "recorder/recorder_options.h"
#include "recorder/single_instance.h"
#include "recorder/sound_probe.h"
#include "recorder/source_choice.h"
#include "recorder/state_file.h"
#include "recorder/storm_source.h"

namespace {

using namespace veltrix;
namespace fs = std::filesystem;

constexpr int ExitEarlierRuns = 1;
constexpr int ExitNoSound = 1;
constexpr int ExitUsage = 64;
constexpr int ExitNoSource = 66;

/// An earlier recorder that is busy opening a sound card may take seconds to hear us.
constexpr auto EndingLimit = std::chrono::seconds(10);

volatile std::sig_atomic_t isSignalled = 0;

void WatchSignals() {
    struct sigaction action {};
    action.sa_handler = [](int) { isSignalled = 1; };
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) ::sigaction(signal, &action, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
}

fs::path ProgramFolder() {
    std::error_code ignored;
    return fs::read_symlink("/proc/self/exe", ignored).parent_path();
}

UtcTime UtcNow() {
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

SourceChoice Choice() {
    const char* const environment = std::getenv("SNDINPUT_SOURCE");
    return ChooseSource(environment == nullptr ? std::optional<std::string>() : environment,
                        LoadRecorderIni({fs::current_path(), ProgramFolder()}));
}

/// `truth`: where a storm's truth is written; empty: nowhere.
std::unique_ptr<SampleSource> MakeSource(const SourceChoice& choice, const fs::path& truth, const Say& say) {
    switch (choice.kind) {
        case SourceChoice::Kind::File: {
            const auto speed = choice.fullSpeed ? FileSource::Speed::AsTaken : FileSource::Speed::Real;
            const auto atEnd = choice.loops   ? FileSource::AtEnd::Again
                               : choice.waits ? FileSource::AtEnd::Wait
                                              : FileSource::AtEnd::End;
            return std::make_unique<FileSource>(choice.name, speed, atEnd, say);
        }
        case SourceChoice::Kind::Storm: {
            auto source = std::make_unique<StormSource>(choice.name, choice.station, UtcNow(), truth, say);
            say("playing storm " + choice.name + " as heard by " + source->Station());
            return source;
        }
        case SourceChoice::Kind::Card:
            break;
    }
    return std::make_unique<CardSource>(choice.device, choice.rate, say);
}

/// Ends the use of a source. Where the sound system hangs, the program ends here with `code`.
void Release(SampleSource& source, int code) {
    if (source.Release()) return;
    std::fflush(nullptr);
    std::_Exit(code);
}

/// Runs `task`, which returns the exit code, and tells what keeps it from running.
int Telling(const Say& say, const std::function<int()>& task) {
    try {
        return task();
    } catch (const WrongRecorderOption& wrong) {
        say(wrong.text);
        return ExitUsage;
    } catch (const Failure& failure) {
        say(failure.Description());
        return ExitNoSource;
    }
}

int Record(const RecorderOptions& options, const Say& say) {
    const SourceChoice choice = Choice();
    // The folder may go and come again while we run; an absolute name finds the new one.
    const fs::path block = fs::absolute(options.blockFile);
    WatchSignals();
    std::unique_ptr<SingleInstance> instance;
    try {
        instance = std::make_unique<SingleInstance>(block, EndingLimit);
    } catch (const Failure& failure) {
        say(failure.Description());
        return ExitEarlierRuns;
    }
    const std::unique_ptr<SampleSource> source =
        MakeSource(choice, block.parent_path() / "storm-truth.csv", say);
    DiskBlockFiles files(block);
    BlockWriterSettings settings;
    settings.maxBytes = options.maxBytes;
    settings.untakenLimit = choice.idle;
    BlockWriter writer(files, settings, say);
    StateFile state(block.parent_path(), VELTRIX_VERSION, UtcNow);
    say(Recorder(*source, writer, state, options.gain).Run([&instance] {
        return isSignalled != 0 || instance->IsAskedToEnd();
    }));
    Release(*source, 0);
    return 0;
}

/// Columns of the terminal that standard output is; 0: it is none.
std::size_t TerminalWidth() {
    if (::isatty(STDOUT_FILENO) == 0) return 0;
    winsize size{};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : 80;
}

int ShowLevel(const RecorderOptions& options) {
    const SourceChoice choice = Choice();
    WatchSignals();
    LevelRun run(options.gain, TerminalWidth(), [](const std::string& text) {
        std::fputs(text.c_str(), stdout);
        std::fflush(stdout);
    });
    const std::unique_ptr<SampleSource> source =
        MakeSource(choice, {}, [&run](const std::string& line) { run.Say(line); });
    std::optional<std::chrono::duration<double>> limit;
    if (options.seconds > 0) limit = std::chrono::duration<double>(options.seconds);
    const bool hasHeard = run.Run(*source, limit, [] { return isSignalled != 0; });
    const int code = hasHeard ? 0 : ExitNoSound;
    Release(*source, code);
    return code;
}

int Stop(const RecorderOptions& options) {
    switch (SingleInstance::Stop(fs::absolute(options.blockFile), EndingLimit)) {
        case SingleInstance::Stopped::Ended:
            return 0;
        case SingleInstance::Stopped::NoneRuns:
            std::fprintf(stderr, "SndInput: no recorder of %s runs\n", options.blockFile.c_str());
            break;
        case SingleInstance::Stopped::StillRuns:
            std::fprintf(stderr, "SndInput: the recorder of %s does not end\n", options.blockFile.c_str());
            break;
    }
    return ExitEarlierRuns;
}

/// "44100 48000 Hz; recorded at 44100 Hz, resampled".
std::string RatesText(const SoundCard& card) {
    SoundProbe probe;
    probe.rates = {card.nativeRate};
    if (card.isAlsa) {
        const QuietErrors quiet;
        probe = ProbeSound(card.name);
    }
    if (probe.isInUse) return InUseText(probe.holder);
    const int rate = RatesToTry(probe).front();
    std::string text = probe.isServer ? "a sound server, converts to every rate;" : "offers";
    if (!probe.isServer)
        for (const int offered : probe.rates) text += " " + std::to_string(offered);
    if (!probe.isServer) text += probe.rates.empty() ? " no rate that is known;" : " Hz;";
    text += " recorded at " + std::to_string(rate) + " Hz";
    return rate == RecorderSampleRate ? text : text + ", resampled";
}

int List() {
    SoundSystem::Prepare();
    const SoundSystem system;
    const std::vector<SoundCard> cards = system.Cards();
    std::vector<std::string> held;
    {
        const QuietErrors quiet;
        held = SoundCardsInUse();
    }
    if (cards.empty() && held.empty()) std::puts("no sound card with an input");
    for (const SoundCard& card : cards)
        std::printf("%s (%d %s)%s\n    native rate %d Hz; %s\n", card.name.c_str(), card.channels,
                    card.channels == 1 ? "channel" : "channels", card.isDefault ? ", default" : "",
                    card.nativeRate, RatesText(card).c_str());
    for (const std::string& name : held) {
        const bool isListed =
            std::ranges::any_of(cards, [&name](const SoundCard& card) { return card.name == name; });
        if (!isListed) std::printf("%s\n    %s\n", name.c_str(), InUseText(ProbeSound(name).holder).c_str());
    }
    return 0;
}

int Run(const RecorderOptions& options) {
    switch (options.task) {
        case RecorderOptions::Task::Help:
            std::fputs(RecorderHelp().c_str(), stdout);
            return 0;
        case RecorderOptions::Task::Version:
            std::puts("SndInput " VELTRIX_VERSION);
            return 0;
        case RecorderOptions::Task::List:
            return List();
        case RecorderOptions::Task::Stop:
            return Stop(options);
        case RecorderOptions::Task::Level: {
            const Messages messages({});
            return Telling([&messages](const std::string& line) { messages.Say(line); },
                           [&options] { return ShowLevel(options); });
        }
        case RecorderOptions::Task::Record:
            break;
    }
    const Messages messages(fs::current_path() / "SndInput.log");
    const Say say = [&messages](const std::string& line) { messages.Say(line); };
    return Telling(say, [&options, &say] { return Record(options, say); });
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(ReadRecorderOptions({argv + 1, argv + argc}));
    } catch (const WrongRecorderOption& wrong) {
        std::fprintf(stderr, "SndInput: %s\n", wrong.text.c_str());
        return ExitUsage;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "SndInput: %s\n", failure.what());
        return ExitNoSource;
    }
}
