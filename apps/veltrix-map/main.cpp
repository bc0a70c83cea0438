// Paints the map of a place and its geometry file.

#include <QGuiApplication>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cartography/map_files.h"
#include "cartography/map_painter.h"
#include "common/arguments.h"
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

struct Options {
    MapPlace place;
    std::filesystem::path output;
};

std::filesystem::path OutputOf(const std::string& text) {
    std::filesystem::path output = text;
    if (!EqualIgnoringCase(output.extension().string(), ".bmp"))
        throw WrongUse{"--output takes a name that ends in .BMP, not '" + text + "'"};
    return output;
}

Options ReadOptions(Arguments arguments) {
    std::optional<double> latitude;
    std::optional<double> longitude;
    Options options;
    while (arguments.Next()) {
        const std::string name = arguments.Name();
        if (name == "--latitude")
            latitude = arguments.Number(-MostMapLatitude, MostMapLatitude);
        else if (name == "--longitude")
            longitude = arguments.Number(-MostMapLongitude, MostMapLongitude);
        else if (name == "--radius")
            options.place.MapRadius = arguments.Number(LeastMapRadius, MostMapRadius);
        else if (name == "--output")
            options.output = OutputOf(arguments.Value());
        else
            RefuseOption(name);
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
        Run(argv[0], ReadOptions(Arguments(arguments)));
        return 0;
    } catch (const WrongUse& wrong) {
        std::fprintf(stderr, "veltrix-map: %s\n", wrong.text.c_str());
        return ExitUsage;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "veltrix-map: %s\n", failure.Description().c_str());
        return ExitFailed;
    }
}
