// Paints the map of a place and its geometry file.

#include <QGuiApplication>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cartography/map_files.h"
#include "cartography/map_painter.h"
#include "common/failure.h"
#include "common/letter_case.h"
#include "common/neutral_text.h"
#include "platform/qt/desk_files.h"
#include "platform/qt/qt_glyphs.h"
#include "platform/qt/resources.h"

namespace {

using namespace veltrix;

constexpr int ExitFailed = 1;
constexpr int ExitUsage = 64;

constexpr const char* Help =
    "veltrix-map --latitude LAT --longitude LON [OPTION...]\n"
    "\n"
    "Paints a map around a place for the display of strikes: a picture of 557 by 557 pixels, and beside it "
    "the\n"
    "geometry file, of the same name with the ending dat, by which the station knows what the map shows.\n"
    "\n"
    "  --latitude LAT     of the centre, degrees, north positive, -89.99 to 89.99\n"
    "  --longitude LON    of the centre, degrees, east positive, -180 to 180\n"
    "  --radius KM        from the centre to the edges, 50 to 9000 km (default: 2000)\n"
    "  --output FILE.BMP  the picture (default: MAP_<radius>.BMP in the present folder)\n"
    "  --version, --help\n"
    "\n"
    "Exit code 0; 1 when a file cannot be written; 64 for a wrong command line.\n";

struct WrongUse {
    std::string text;
};

struct Options {
    MapPlace place;
    std::filesystem::path output;
};

double NumberOf(const std::string& option, const std::string& text, double least, double most) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end || !(value >= least && value <= most))
        throw WrongUse{option + " takes a number from " + GeneralNumber(least) + " to " +
                       GeneralNumber(most) + ", not '" + text + "'"};
    return value;
}

std::filesystem::path OutputOf(const std::string& text) {
    std::filesystem::path output = text;
    if (!EqualIgnoringCase(output.extension().string(), ".bmp"))
        throw WrongUse{"--output takes a name that ends in .BMP, not '" + text + "'"};
    return output;
}

Options ReadOptions(const std::vector<std::string>& arguments) {
    std::optional<double> latitude;
    std::optional<double> longitude;
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const std::size_t sign = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        const std::string name = argument.substr(0, sign);
        const auto value = [&]() -> std::string {
            if (sign != std::string::npos) return argument.substr(sign + 1);
            if (i + 1 == arguments.size()) throw WrongUse{name + " needs a value"};
            return arguments[++i];
        };
        if (name == "--latitude")
            latitude = NumberOf(name, value(), -MostMapLatitude, MostMapLatitude);
        else if (name == "--longitude")
            longitude = NumberOf(name, value(), -MostMapLongitude, MostMapLongitude);
        else if (name == "--radius")
            options.place.MapRadius = NumberOf(name, value(), LeastMapRadius, MostMapRadius);
        else if (name == "--output")
            options.output = OutputOf(value());
        else
            throw WrongUse{"unknown option '" + argument + "'; --help lists them"};
    }
    if (!latitude) throw WrongUse{"--latitude is missing; --help tells more"};
    if (!longitude) throw WrongUse{"--longitude is missing; --help tells more"};
    options.place.MapLatitude = *latitude;
    options.place.MapLongitude = *longitude;
    if (options.output.empty()) options.output = "MAP_" + GeneralNumber(options.place.MapRadius) + ".BMP";
    return options;
}

void Run(char* program, const Options& options) {
    // Only the texts on the map take Qt's part for pictures.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QtMessageHandler usual =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    char* arguments[] = {program, nullptr};
    int count = 1;
    const QGuiApplication application(count, arguments);
    qInstallMessageHandler(usual);

    const Coastlines coastlines(resources::CoastlineBytes());
    QtGlyphs glyphs;
    const Bitmap map = PaintMap(options.place, coastlines, glyphs);
    DeskFiles files(options.output.parent_path().string());
    WriteMap(files, options.output.filename().string(), options.place, map);
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (std::ranges::find(arguments, "--help") != arguments.end()) {
        std::fputs(Help, stdout);
        return 0;
    }
    if (std::ranges::find(arguments, "--version") != arguments.end()) {
        std::puts("veltrix-map " VELTRIX_VERSION);
        return 0;
    }
    try {
        Run(argv[0], ReadOptions(arguments));
        return 0;
    } catch (const WrongUse& wrong) {
        std::fprintf(stderr, "veltrix-map: %s\n", wrong.text.c_str());
        return ExitUsage;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "veltrix-map: %s\n", failure.Description().c_str());
        return ExitFailed;
    }
}
