#include "recorder/recorder_options.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <string_view>

#include "common/letter_case.h"

namespace veltrix {

namespace {

using Task = RecorderOptions::Task;

constexpr std::size_t LeastBlock = 1024;
constexpr std::size_t LargestBlock = std::size_t{64} * 1024 * 1024;
constexpr double LargestGain = 1000;
constexpr double LongestLevel = 86400;  // s

struct TaskName {
    std::string_view argument;
    Task task;
};

constexpr TaskName Tasks[] = {{"/stop", Task::Stop},   {"/list", Task::List},       {"--list", Task::List},
                              {"/level", Task::Level}, {"--level", Task::Level},    {"/?", Task::Help},
                              {"--help", Task::Help},  {"--version", Task::Version}};

constexpr std::string_view ValueNames[] = {"/ch", "/dt", "/gain",  "/maxsize",
                                           "/sr", "/of", "/level", "--level"};

std::optional<Task> TaskOf(const std::string& argument) {
    const auto found = std::ranges::find(Tasks, LowerCase(argument), &TaskName::argument);
    return found == std::end(Tasks) ? std::optional<Task>() : found->task;
}

/// "/ch" of "/CH=2"; empty when the argument is none of ours.
std::string ValueNameOf(const std::string& argument) {
    const std::size_t sign = argument.find('=');
    const std::string name = sign == std::string::npos ? std::string() : LowerCase(argument.substr(0, sign));
    return std::ranges::find(ValueNames, name) == std::end(ValueNames) ? std::string() : name;
}

/// A number that fills all of `text`.
template <typename NumberType>
std::optional<NumberType> NumberOf(std::string_view text) {
    NumberType value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return {};
    return value;
}

void Demand(const std::string& argument, std::string_view value, unsigned only) {
    if (NumberOf<unsigned>(value) != only)
        throw WrongRecorderOption{argument + ": only " + std::to_string(only) + " is possible"};
}

double GainOf(const std::string& argument, std::string_view value) {
    const std::optional<double> gain = NumberOf<double>(value);
    if (!gain || !(*gain > 0 && *gain <= LargestGain))
        throw WrongRecorderOption{argument + ": a gain is a factor above 0, up to 1000"};
    return *gain;
}

double LevelSecondsOf(const std::string& argument, std::string_view value) {
    const std::optional<double> seconds = NumberOf<double>(value);
    if (!seconds || !(*seconds > 0 && *seconds <= LongestLevel))
        throw WrongRecorderOption{argument + ": seconds above 0, up to 86400"};
    return *seconds;
}

std::size_t SizeOf(const std::string& argument, std::string_view value) {
    std::size_t unit = 1;
    if (!value.empty()) {
        const char last = static_cast<char>(std::toupper(static_cast<unsigned char>(value.back())));
        if (last == 'K') unit = 1024;
        if (last == 'M') unit = 1024 * 1024;
        if (unit != 1) value.remove_suffix(1);
    }
    const std::optional<std::size_t> count = NumberOf<std::size_t>(value);
    if (!count || *count > LargestBlock / unit || *count * unit < LeastBlock)
        throw WrongRecorderOption{argument + ": a size is 1K to 64M, in bytes, K or M"};
    return *count * unit;
}

}  // namespace

RecorderOptions ReadRecorderOptions(const std::vector<std::string>& arguments) {
    RecorderOptions options;
    bool behindPath = false;
    for (const std::string& argument : arguments) {
        if (const std::optional<Task> task = TaskOf(argument)) {
            options.task = *task;
            behindPath = false;
            continue;
        }
        const bool behindLevel = options.task == Task::Level && options.seconds == 0 && !behindPath;
        if (behindLevel && NumberOf<double>(argument)) {
            options.seconds = LevelSecondsOf(argument, argument);
            continue;
        }
        const std::string name = ValueNameOf(argument);
        if (name.empty() && behindPath) {
            options.blockFile += ' ';
            options.blockFile += argument;
            continue;
        }
        const std::string value = argument.substr(argument.find('=') + 1);
        behindPath = name == "/of";
        if (name == "/of") {
            options.blockFile = value;
        } else if (name == "/ch" || name == "/dt") {
            Demand(argument, value, 2);
        } else if (name == "/sr") {
            Demand(argument, value, 22050);
        } else if (name == "/level" || name == "--level") {
            options.task = Task::Level;
            options.seconds = LevelSecondsOf(argument, value);
        } else if (name == "/gain") {
            options.gain = GainOf(argument, value);
        } else if (name == "/maxsize") {
            options.maxBytes = SizeOf(argument, value);
        } else {
            throw WrongRecorderOption{"unknown option '" + argument + "'; /? lists them"};
        }
    }
    std::ranges::replace(options.blockFile, '\\', '/');
    if (options.blockFile.empty() || options.blockFile.ends_with('/'))
        throw WrongRecorderOption{"/of=: the name of a file is missing"};
    return options;
}

std::string RecorderHelp() {
    return R"(SndInput /ch=2 /dt=2 /gain=1 /maxsize=128K /sr=22050 [/of=FILE]

Records two channels at 22050 frames a second and hands them to a station in blocks.

  /ch=2         channels; only 2
  /dt=2         bytes a sample; only 2
  /gain=1       factor for each sample
  /maxsize=128K largest block, in bytes, K or M
  /sr=22050     frames a second; only 22050
  /of=FILE      block file (default: audio.dat)
  /stop         asks the recorder of that block file to end
  /list, --list lists the sound cards and the rates that they offer
  /level, --level [SECONDS]
                shows how loud the source is, without recording, for so long or until Ctrl-C
  /?, --help, --version

The source is told by the environment variable SNDINPUT_SOURCE, else by source= in SndInput.ini in the
working folder or the program's folder:

  card                    the default sound card; ;device=NAME another; ;rate=RATE at that rate of the card
  file:NAME               a sound file, a folder, a pattern with * and ?, a play list (.m3u), or several of
                          them with | between; ;speed=1 in real time (default), ;speed=max as fast as taken;
                          ;loop=yes again and again; ;wait=yes waits for further files
  storm:NAME[,STATION]    a synthetic storm: a scenario file or the built-in demo

Behind each, ;idle=SECONDS tells after how long without a station it ends (default: 600).

Exit code 0: asked to end, files played, or no station for ten minutes. 1: /stop found no recorder, the
earlier recorder does not end, or --level heard no sound. 64: wrong option or setting. 66: the source cannot
be used.
)";
}

}  // namespace veltrix
