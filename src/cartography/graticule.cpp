#include "cartography/graticule.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr double KmPerDegree = 111.2;
constexpr double LineWidth = 1;
constexpr std::array Spacings{0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 15.0, 20.0, 30.0};

/// How far the middle of a label at an edge of the map is from that edge.
constexpr double LabelBelow = 9;
constexpr double LabelAside = 19;

double SpacingFrom(double least) {
    const auto found = std::ranges::find_if(Spacings, [least](double spacing) { return spacing >= least; });
    return found == Spacings.end() ? Spacings.back() : *found;
}

/// The multiples of `spacing` from `least` to `most`.
std::vector<double> Multiples(double spacing, double least, double most) {
    std::vector<double> values;
    for (double i = std::ceil(least / spacing); i * spacing <= most; ++i) values.push_back(i * spacing);
    return values;
}

std::string DegreeText(double degrees, double spacing, char positive, char negative) {
    const bool isWhole = std::abs(degrees) < spacing / 2 || std::abs(std::abs(degrees) - 180) < spacing / 2;
    const std::string number = FormatNeutral(std::abs(degrees), spacing < 1 ? "0.0" : "0") + "°";
    return isWhole ? number : number + (degrees > 0 ? positive : negative);
}

/// Where a line crosses the frame on which the middles of the labels stand.
struct FrameCrossings {
    std::vector<MapPixel> left, right, top, bottom;

    void Note(MapPixel from, MapPixel to) {
        constexpr double Last = MapSize - 1;
        NoteUpright(left, LabelAside, from, to);
        NoteUpright(right, Last - LabelAside, from, to);
        NoteLevel(top, LabelBelow, from, to);
        NoteLevel(bottom, Last - LabelBelow, from, to);
    }

    static bool Surrounds(MapPixel pixel) {
        return IsInside(pixel.x, LabelAside) && IsInside(pixel.y, LabelBelow);
    }

  private:
    static bool IsInside(double along, double margin) {
        return along >= margin && along <= MapSize - 1 - margin;
    }
    static void NoteUpright(std::vector<MapPixel>& found, double x, MapPixel from, MapPixel to) {
        if ((from.x < x) == (to.x < x)) return;
        const double y = std::lerp(from.y, to.y, (x - from.x) / (to.x - from.x));
        if (IsInside(y, LabelBelow)) found.push_back({x, y});
    }
    static void NoteLevel(std::vector<MapPixel>& found, double y, MapPixel from, MapPixel to) {
        if ((from.y < y) == (to.y < y)) return;
        const double x = std::lerp(from.x, to.x, (y - from.y) / (to.y - from.y));
        if (IsInside(x, LabelAside)) found.push_back({x, y});
    }
};

std::vector<MapPixel> Joined(const std::array<const std::vector<MapPixel>*, 4>& parts) {
    std::vector<MapPixel> all;
    for (const std::vector<MapPixel>* part : parts) all.insert(all.end(), part->begin(), part->end());
    return all;
}

}  // namespace

Graticule::Graticule(const MapProjection& projection) {
    const MapPlace& centre = projection.Place();
    const double cosine = std::cos(centre.MapLatitude * std::numbers::pi / 180);
    constexpr double LinesFromCentreToEdge = 4;
    const double spacing = SpacingFrom(centre.MapRadius / KmPerDegree / LinesFromCentreToEdge);
    constexpr double Tolerance = 0.8;  // a little closer rather than much wider
    const double aside = SpacingFrom(spacing / cosine * Tolerance);

    // All of the Earth that may come onto the map.
    const double south = std::max(centre.MapLatitude - projection.Reach(), -MostMapLatitude);
    const double north = std::min(centre.MapLatitude + projection.Reach(), MostMapLatitude);
    const double sine = std::sin(projection.Reach() * std::numbers::pi / 180) / cosine;
    const bool hasPole = south <= -MostMapLatitude || north >= MostMapLatitude || sine >= 1;
    const double halfWidth = hasPole ? 180 : std::asin(sine) * 180 / std::numbers::pi;
    const double west = centre.MapLongitude - halfWidth;
    const double east = centre.MapLongitude + halfWidth;

    FrameCrossings crossings;
    MapPath path(projection, [&](MapPixel from, MapPixel to) {
        lines.Stroke(from, to, LineWidth);
        crossings.Note(from, to);
    });
    for (const double latitude : Multiples(spacing, south, north)) {
        crossings = {};
        path.MoveTo(west, latitude);
        path.LineTo(east, latitude);
        std::vector<MapPixel> places =
            Joined({&crossings.right, &crossings.left, &crossings.bottom, &crossings.top});
        // A circle around a pole may be seen whole.
        const MapPixel middle = projection.At(centre.MapLongitude, latitude);
        if (places.empty() && FrameCrossings::Surrounds(middle)) places.push_back(middle);
        labels.push_back({DegreeText(latitude, spacing, 'N', 'S'), std::move(places)});
    }
    for (const double longitude : Multiples(aside, west, east - aside / 1000)) {
        // At the poles they would run into each other.
        const double folded = std::remainder(longitude, 360);
        const bool isQuarter = std::abs(std::remainder(folded, 90)) < aside / 2;
        const double last = isQuarter ? MostMapLatitude : 90 - spacing;
        crossings = {};
        path.MoveTo(longitude, std::max(south, -last));
        path.LineTo(longitude, std::min(north, last));
        labels.push_back({DegreeText(folded, aside, 'E', 'W'),
                          Joined({&crossings.bottom, &crossings.right, &crossings.left, &crossings.top})});
    }
}

}  // namespace veltrix
