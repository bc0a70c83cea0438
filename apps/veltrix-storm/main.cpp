// Renders what a station hears of a synthetic storm, and judges what stations made of one.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
#include "common/failure.h"

namespace {

using namespace veltrix;

constexpr int ExitFailed = 1;
constexpr int ExitUsage = 64;

constexpr const char* Help =
    "veltrix-storm SCENARIO [OPTION...]\n"
    "veltrix-storm judge SCENARIO OPTION...\n"
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
    "judge prints how much of a storm stations heard, paired and located in one run, and how far off.\n"
    "\n"
    "  --from STAMP          when the stations had been started, UTC; lines of before are left out\n"
    "  --seconds N           how long they ran\n"
    "  --log STATION=FILE    a strike log of a station; the first STATION is the one that is judged\n"
    "  --fixes FILE          what that station printed, with its lines \"fix ...\"\n"
    "  --pairs STATION=FILE  its correlation log with another station, whose --log is given, too\n"
    "\n"
    "Exit code 0; 1 when a file cannot be read or written; 64 for a wrong command line.\n";

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    if (std::ranges::find(words, "--help") != words.end()) {
        std::fputs(Help, stdout);
        return 0;
    }
    if (std::ranges::find(words, "--version") != words.end()) {
        std::puts("veltrix-storm " VELTRIX_VERSION);
        return 0;
    }
    const bool judges = !words.empty() && words.front() == "judge";
    if (judges) words.erase(words.begin());
    try {
        (judges ? JudgeStations : Render)(StormArguments(std::move(words)));
        return 0;
    } catch (const WrongUse& wrong) {
        std::fprintf(stderr, "veltrix-storm: %s\n", wrong.text.c_str());
        return ExitUsage;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "veltrix-storm: %s\n", failure.Description().c_str());
        return ExitFailed;
    }
}
