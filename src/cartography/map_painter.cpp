#include "cartography/map_painter.h"

#include <algorithm>
#include <numbers>
#include <vector>

#include "cartography/canvas.h"
#include "cartography/graticule.h"
#include "common/arithmetic.h"
#include "common/failure.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr Tint DeepSea{5, 10, 19};
constexpr Tint ShallowSea{14, 30, 47};
constexpr Tint Inland{22, 27, 26};
constexpr Tint Shore{33, 41, 39};
constexpr Tint CoastColor{92, 126, 134};
constexpr Tint BorderColor{104, 104, 92};
constexpr Tint LineColor{88, 122, 150};
constexpr Tint RingColor{92, 168, 140};
constexpr Tint RingTextColor{116, 158, 142};
constexpr Tint DegreeTextColor{104, 124, 146};

constexpr double CoastWidth = 1.2;
constexpr double BorderWidth = 1;
constexpr double RingWidth = 1;
constexpr MapPixel Centre{MapSide / 2, MapSide / 2};

bool IsWithin(double value, double least, double most) {
    return value >= least && value <= most;
}

void Check(const MapPlace& place) {
    if (!IsWithin(place.MapRadius, LeastMapRadius, MostMapRadius) ||
        !IsWithin(place.MapLongitude, -MostMapLongitude, MostMapLongitude) ||
        !IsWithin(place.MapLatitude, -MostMapLatitude, MostMapLatitude))
        throw Failure(errors::InvalidCall, "There is no map of such a place", "PaintMap");
}

template <typename Shape>
void Trace(const MapProjection& projection, const std::vector<GridLine>& lines, const Shape& shape) {
    constexpr double Degrees = 100;
    MapPath path(projection, shape);
    for (const GridLine& line : lines) {
        path.MoveTo(line.front().lon / Degrees, line.front().lat / Degrees);
        for (const GridPoint& point : line) path.LineTo(point.lon / Degrees, point.lat / Degrees);
    }
}

/// True when most of some places on the map are on the other side of a coast than the filled area says.
bool IsInverted(const MapProjection& projection, const Coastlines& coastlines, const Coverage& filled) {
    int votes = 0;
    const double radius = projection.Place().MapRadius / 111.2;
    for (const double distance : {0.2, 0.5, 0.8}) {
        for (double bearing = 10; bearing < 360; bearing += 45) {
            const GeoPoint place = projection.Around(distance * radius, bearing);
            const MapPixel pixel = projection.At(place.dLon, place.dLat);
            const float part = filled.At(static_cast<int>(RoundToLong(pixel.x)), RoundToLong(pixel.y));
            constexpr float NearlyNone = 0.01F;
            if (part > NearlyNone && part < 1 - NearlyNone) continue;  // on a coast
            votes += coastlines.IsLand(place.dLon, place.dLat) == (part > NearlyNone) ? -1 : 1;
        }
    }
    return votes > 0;
}

/// Land and sea, both brightest at the coast.
void PaintGround(Canvas& canvas, const Coverage& land) {
    constexpr int GlowRadius = 5;
    const Coverage smooth = land.Blurred(GlowRadius);
    for (int y = 0; y < MapSize; ++y) {
        for (int x = 0; x < MapSize; ++x) {
            const float near = 2 * smooth.At(x, y);  // 0 out on the sea, 1 at a coast, 2 inland
            const Tint sea = Mixed(DeepSea, ShallowSea, std::min(near, 1.0F));
            const Tint ground = Mixed(Shore, Inland, std::max(near - 1, 0.0F));
            canvas.At(x, y) = Mixed(sea, ground, land.At(x, y));
        }
    }
}

/// Prints labels one after the other, each at the first of its places where it is off the others.
class LabelPrinter {
  public:
    LabelPrinter(Canvas& canvas, Glyphs& glyphs) : canvas_(canvas), glyphs_(glyphs) {}

    /// Keeps labels off an area.
    void Reserve(int left, int top, int width, int height) { taken_.push_back({left, top, width, height}); }

    void Print(const MapLabel& label, const Tint& color) {
        const GlyphMask mask = glyphs_.Render(label.text);
        for (const MapPixel& place : label.places) {
            if (!IsWithin(place.x, 0, MapSize) || !IsWithin(place.y, 0, MapSize)) continue;
            const Area area{StartOf(place.x, mask.width), StartOf(place.y, mask.height), mask.width,
                            mask.height};
            if (!IsFree(area)) continue;
            canvas_.Print(mask, area.left, area.top, color);
            taken_.push_back(area);
            return;
        }
    }

  private:
    struct Area {
        int left, top, width, height;
    };
    /// Where a label with its middle at a place begins; moved so that all of it is on the map.
    static int StartOf(double middle, int length) {
        constexpr int Margin = 3;
        const int last = std::max(MapSize - Margin - length, Margin);
        return std::clamp(static_cast<int>(RoundToLong(middle)) - length / 2, Margin, last);
    }
    bool IsFree(const Area& area) const {
        constexpr int Gap = 4;
        return std::ranges::none_of(taken_, [&](const Area& other) {
            return area.left < other.left + other.width + Gap && other.left < area.left + area.width + Gap &&
                   area.top < other.top + other.height && other.top < area.top + area.height;
        });
    }

    Canvas& canvas_;
    Glyphs& glyphs_;
    std::vector<Area> taken_;
};

/// The distance between rings: the smallest of 1, 2 and 5 with noughts that needs no more than five.
double RingStep(double radius) {
    constexpr double MostRings = 5;
    for (double tens = 1;; tens *= 10)
        for (const double step : {tens, 2 * tens, 5 * tens})
            if (radius / step <= MostRings) return step;
}

/// Draws the rings and returns their labels, to the lower right of the centre.
std::vector<MapLabel> PaintRings(Canvas& canvas, double radius) {
    Coverage rings;
    std::vector<MapLabel> labels;
    const double step = RingStep(radius);
    for (double distance = step; distance <= radius; distance += step) {
        const double pixels = MapSide / 2 * distance / radius;
        rings.Circle(Centre, pixels, RingWidth);
        const double diagonal = pixels / std::numbers::sqrt2;
        labels.push_back({GeneralNumber(distance) + " km", {{Centre.x + diagonal, Centre.y + diagonal}}});
    }
    constexpr double Arm = 5;
    rings.Stroke({Centre.x - Arm, Centre.y}, {Centre.x + Arm, Centre.y}, RingWidth);
    rings.Stroke({Centre.x, Centre.y - Arm}, {Centre.x, Centre.y + Arm}, RingWidth);
    canvas.Blend(rings, RingColor, 0.38F);
    return labels;
}

}  // namespace

Bitmap PaintMap(const MapPlace& place, const Coastlines& coastlines, Glyphs& glyphs) {
    Check(place);
    const MapProjection projection(place);
    AreaFill area;
    Coverage coasts;
    Trace(projection, coastlines.Coasts(), [&](MapPixel from, MapPixel to) {
        area.Add(from, to);
        coasts.Stroke(from, to, CoastWidth);
    });
    Coverage borders;
    Trace(projection, coastlines.Borders(),
          [&](MapPixel from, MapPixel to) { borders.Stroke(from, to, BorderWidth); });
    Coverage land = area.Fill();
    if (IsInverted(projection, coastlines, land)) land.Invert();
    const Graticule graticule(projection);

    Canvas canvas;
    PaintGround(canvas, land);
    canvas.Blend(graticule.lines, LineColor, 0.22F);
    canvas.Blend(borders, BorderColor, 0.5F);
    canvas.Blend(coasts, CoastColor, 0.85F);
    const std::vector<MapLabel> ringLabels = PaintRings(canvas, place.MapRadius);

    LabelPrinter printer(canvas, glyphs);
    // Where the station prints the time, its announcement and the colours of strikes.
    printer.Reserve(0, 0, MapSize, 14);
    printer.Reserve(0, 0, 160, 116);
    for (const MapLabel& label : ringLabels) printer.Print(label, RingTextColor);
    for (const MapLabel& label : graticule.labels) printer.Print(label, DegreeTextColor);
    return canvas.Finished();
}

}  // namespace veltrix
