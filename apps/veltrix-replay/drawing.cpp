#include "drawing.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <algorithm>
#include <clocale>
#include <cmath>

#include "cartography/map_painter.h"
#include "display/colours.h"
#include "output_file.h"
#include "platform/qt/qt_glyphs.h"
#include "platform/qt/resources.h"

namespace veltrix {

namespace {

constexpr double MinutesPerDay = 1440;
constexpr double ShownPart = 2.0 / 3;  // of the colours of age; the rest is too dark to be seen
constexpr int CrossArm = 4;            // pixels

/// A colour over another, channel by channel the greater value.
ColourValue Brighter(ColourValue one, ColourValue other) {
    return Rgb(std::max(RedOf(one), RedOf(other)), std::max(GreenOf(one), GreenOf(other)),
               std::max(BlueOf(one), BlueOf(other)));
}

}  // namespace

struct TextDrawing::Application {
    Application() : application(count, arguments) {}

    char name[16] = "veltrix-replay";
    char* arguments[2] = {name, nullptr};
    int count = 1;
    QGuiApplication application;
};

TextDrawing::TextDrawing() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QtMessageHandler usual =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    application_ = std::make_unique<Application>();
    qInstallMessageHandler(usual);
    // The application object takes over the user's locale; numbers keep their point.
    std::setlocale(LC_NUMERIC, "C");
    glyphs_ = std::make_unique<QtGlyphs>();
}

TextDrawing::~TextDrawing() = default;

void WritePng(const Bitmap& picture, const std::string& name) {
    QImage image(picture.width, picture.height, QImage::Format_RGB32);
    std::size_t at = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const ColourValue color = picture.pixels[at++];
            image.setPixel(x, y, qRgb(RedOf(color), GreenOf(color), BlueOf(color)));
        }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    WriteOutput(name, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

Bitmap StrikeMap(const StationRecord& first, const StationRecord& second, const PairFindings& findings,
                 double radius, Glyphs& glyphs) {
    const MapPlace place{
        .MapRadius = radius, .MapLongitude = first.place.longitude, .MapLatitude = first.place.latitude};
    const Coastlines coastlines(resources::CoastlineBytes());
    Bitmap map = PaintMap(place, coastlines, glyphs);
    const double side = map.width;
    Surface surface(map.width, map.height, glyphs, {0, 0, side, side});
    surface.SetPicture(std::move(map));
    const auto pointOf = [&](double latitude, double longitude) {
        MapPoint point =
            CalcMapXY(place.MapLongitude, place.MapLatitude, place.MapRadius, longitude, latitude);
        point.dY = side - point.dY;  // the map grows northwards, the surface downwards
        return point;
    };
    if (!findings.strikes.empty()) {
        const DateTime newest = findings.strikes.back().first.date;
        const double days = newest - findings.strikes.front().first.date;
        const auto minutes = static_cast<std::int32_t>(std::ceil(days * MinutesPerDay));
        for (const LocatedPair& strike : findings.strikes) {
            const MapPoint at = pointOf(strike.latitude, strike.longitude);
            const ColourValue color = AgeColor((newest - strike.first.date) * ShownPart, minutes);
            surface.PSet(at.dX, at.dY, Brighter(surface.Point(at.dX, at.dY), color));
        }
    }
    for (const StationRecord* station : {&first, &second}) {
        const MapPoint at = pointOf(station->place.latitude, station->place.longitude);
        surface.Line(at.dX - CrossArm, at.dY, at.dX + CrossArm, at.dY, Cyan);
        surface.Line(at.dX, at.dY - CrossArm, at.dX, at.dY + CrossArm, Cyan);
    }
    return surface.Image();
}

}  // namespace veltrix
