// Runs recordings through the station's detector as fast as the machine can: the strike log of one station,
// or the located strikes of two.

#include <algorithm>
#include <cstdio>
#include <string>
#include <system_error>
#include <vector>

#include "commands.h"
#include "common/failure.h"
#include "progress.h"

namespace {

using namespace veltrix;

constexpr int ExitFailed = 1;
constexpr int ExitUsage = 64;

constexpr const char* Help =
    "veltrix-replay [OPTION...] FILE...\n"
    "veltrix-replay pair [OPTION...] --station NAME:LAT,LON [OPTION...] FILE... --station NAME:LAT,LON ...\n"
    "\n"
    "Prints a line of the strike log for each strike in sound files of two channels at 22050 Hz; - is\n"
    "standard input, a folder stands for the sound files in it. Several files are one recording in parts;\n"
    "when they began tell their names, as in alpha_20260601_200000.flac, else their last changes.\n"
    "\n"
    "  --threshold DB    detection threshold, 1 to 100 dB below the reference (default 80)\n"
    "  --no-filter       without the detection filter\n"
    "  --cw-ccw, --add90, --sub90\n"
    "                    how the antennas stand, as the station's options of these names\n"
    "  --start STAMP     when the first file began, \"YYYY/MM/DD HH:MM:SS\" (default: the stamp in its "
    "name,\n"
    "                    else the time of its last change less its length)\n"
    "  --log FILE        the lines go there instead of standard output\n"
    "  --summary[=FILE]  strikes by the hour, strongest, noise, length and speed, on standard error or "
    "there\n"
    "  --plot FILE.png   the history plot of the day; of several days FILE-YYYYMMDD.png each\n"
    "  --min-db DB, --max-db DB\n"
    "                    limits of its colours (default -100 and 0)\n"
    "  --threads N       that decode (default: as many as the computer runs at a time, at most 16)\n"
    "  --version, --help\n"
    "\n"
    "A line holds date and time, bearing in degrees, sample number, strength in dB, and milliseconds since\n"
    "the 100 ms tick began.\n"
    "\n"
    "pair locates the strikes that two stations have recorded, as the first one would have done with the\n"
    "second as its peer, and prints them as a station does: \"fix\", date and time, latitude, longitude,\n"
    "sample number, the other station. The options above that concern detection, and --start, hold for the\n"
    "station they follow; before the first they hold for both.\n"
    "\n"
    "  --station NAME:LAT,LON  a station, degrees; its files follow\n"
    "  --correction DEG        added to the bearings of the station, -90 to 90\n"
    "  --tables DIR            with the calibration tables of the station whose working folder that is\n"
    "  --fixes FILE.csv        the strikes as a table\n"
    "  --geojson FILE          the same for maps of other programs\n"
    "  --map FILE.png          a map with the strikes, the latest white, the earliest red\n"
    "  --radius KM             of the map, beyond which strikes are left out (default 2000)\n"
    "  --angle DEG             least angle at which the bearings cross (default 10)\n"
    "  --min-strength DB       of a strike at both stations, dB below 0 (default 80)\n"
    "  --toa-filter            leave out strikes whose times of arrival do not fit\n"
    "  --summary[=FILE]        counts, and how far the clocks are apart\n"
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
        std::puts("veltrix-replay " VELTRIX_VERSION);
        return 0;
    }
    const bool isPair = !words.empty() && words.front() == "pair";
    if (isPair) words.erase(words.begin());
    try {
        return (isPair ? ReplayPair : Replay)(Arguments(std::move(words)));
    } catch (const WrongUse& wrong) {
        Say(wrong.text);
        return ExitUsage;
    } catch (const BadRecording& bad) {
        Say(bad.text);
    } catch (const Failure& failure) {
        Say(failure.Description());
    } catch (const std::system_error& error) {
        Say(error.what());
    }
    return ExitFailed;
}
