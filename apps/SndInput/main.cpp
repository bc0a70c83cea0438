// The recorder: brings samples of a sound card, a sound file or a synthetic storm to a station, block by
// block.

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
#include "recorder/messages.h"
#include "recorder/recorder.h"
#include "recorder/recorder_options.h"
#include "recorder/single_instance.h"
#include "recorder/source_choice.h"
#include "recorder/storm_source.h"

namespace {

using namespace veltrix;
namespace fs = std::filesystem;

constexpr int ExitEarlierRuns = 1;
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

std::unique_ptr<SampleSource> MakeSource(const SourceChoice& choice, const fs::path& block, const Say& say) {
    switch (choice.kind) {
        case SourceChoice::Kind::File: {
            const auto speed = choice.fullSpeed ? FileSource::Speed::AsTaken : FileSource::Speed::Real;
            auto source = std::make_unique<FileSource>(choice.name, speed, say);
            say("playing " + choice.name + " to " + block.string());
            return source;
        }
        case SourceChoice::Kind::Storm: {
            auto source = std::make_unique<StormSource>(choice.name, choice.station, UtcNow(),
                                                        block.parent_path() / "storm-truth.csv", say);
            say("playing storm " + choice.name + " as heard by " + source->Station() + " to " +
                block.string());
            return source;
        }
        case SourceChoice::Kind::Card:
            break;
    }
    return std::make_unique<CardSource>(choice.device, say);
}

int Record(const RecorderOptions& options, const Messages& messages) {
    const Say say = [&messages](const std::string& line) { messages.Say(line); };
    try {
        const char* const environment = std::getenv("SNDINPUT_SOURCE");
        const SourceChoice choice =
            ChooseSource(environment == nullptr ? std::optional<std::string>() : environment,
                         LoadRecorderIni({fs::current_path(), ProgramFolder()}));
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
        const std::unique_ptr<SampleSource> source = MakeSource(choice, block, say);
        DiskBlockFiles files(block);
        BlockWriterSettings settings;
        settings.maxBytes = options.maxBytes;
        settings.untakenLimit = choice.idle;
        BlockWriter writer(files, settings, say);
        say(Recorder(*source, writer, options.gain).Run([&instance] {
            return isSignalled != 0 || instance->IsAskedToEnd();
        }));
        return 0;
    } catch (const WrongRecorderOption& wrong) {
        say(wrong.text);
        return ExitUsage;
    } catch (const Failure& failure) {
        say(failure.Description());
        return ExitNoSource;
    }
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

int List() {
    const std::vector<SoundCard> cards = SoundSystem().Cards();
    if (cards.empty()) std::puts("no sound card with an input");
    for (const SoundCard& card : cards)
        std::printf("%s (%d %s)%s\n", card.name.c_str(), card.channels,
                    card.channels == 1 ? "channel" : "channels", card.isDefault ? ", default" : "");
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
        case RecorderOptions::Task::Record:
            break;
    }
    return Record(options, Messages(fs::current_path() / "SndInput.log"));
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
