#include "cartography/coverage.h"

#include <algorithm>
#include <cmath>

namespace veltrix {

namespace {

constexpr int LinesPerPixel = 8;
constexpr int ScanLines = MapSize * LinesPerPixel;

/// The first scan line below a height, counted in pixels, of the middle of pixels.
int ScanLineBelow(double y) {
    const double line = std::floor((y + 0.5) * LinesPerPixel - 0.5) + 1;
    return static_cast<int>(std::clamp(line, 0.0, static_cast<double>(ScanLines)));
}

double HeightOf(int scanLine) {
    return (scanLine + 0.5) / LinesPerPixel - 0.5;
}

/// The pixels from `least` to `most` that are on the map.
struct Range {
    Range(double least, double most)
        : begin(static_cast<int>(std::ceil(std::clamp(least, 0.0, static_cast<double>(MapSize))))),
          end(static_cast<int>(std::floor(std::clamp(most, -1.0, MapSize - 1.0))) + 1) {}
    int begin, end;
};

/// Like hypot, which is slow for the sake of lengths that no map has.
double Length(double x, double y) {
    return std::sqrt(x * x + y * y);
}

/// What a line of a width covers of a pixel at a distance from its middle.
float PartCovered(double distance, double width) {
    return static_cast<float>(std::clamp(width / 2 + 0.5 - distance, 0.0, std::min(width, 1.0)));
}

/// The mean of each part of a row or column and its neighbours on both sides.
void Smooth(const std::vector<float>& from, std::vector<float>& to, std::size_t start, std::size_t step,
            int radius) {
    const auto at = [&](int i) {
        return from[start + step * static_cast<std::size_t>(std::clamp(i, 0, MapSize - 1))];
    };
    double sum = 0;
    for (int i = -radius; i <= radius; ++i) sum += at(i);
    for (int i = 0; i < MapSize; ++i) {
        to[start + step * static_cast<std::size_t>(i)] = static_cast<float>(sum / (2 * radius + 1));
        sum += at(i + radius + 1) - at(i - radius);
    }
}

}  // namespace

void Coverage::Stroke(MapPixel from, MapPixel to, double width) {
    const double around = width / 2 + 0.5;
    const Range across(std::min(from.x, to.x) - around, std::max(from.x, to.x) + around);
    const Range down(std::min(from.y, to.y) - around, std::max(from.y, to.y) + around);
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    for (int y = down.begin; y < down.end; ++y) {
        for (int x = across.begin; x < across.end; ++x) {
            const double along = (x - from.x) * dx + (y - from.y) * dy;
            const double part = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
            const double distance = Length(from.x + part * dx - x, from.y + part * dy - y);
            At(x, y) = std::max(At(x, y), PartCovered(distance, width));
        }
    }
}

void Coverage::Circle(MapPixel centre, double radius, double width) {
    for (int y = 0; y < MapSize; ++y) {
        for (int x = 0; x < MapSize; ++x) {
            const double distance = std::abs(Length(x - centre.x, y - centre.y) - radius);
            At(x, y) = std::max(At(x, y), PartCovered(distance, width));
        }
    }
}

Coverage Coverage::Blurred(int radius) const {
    Coverage smooth = *this;
    Coverage half;
    // Means of means come near a bell.
    for (int pass = 0; pass < 3; ++pass) {
        for (int i = 0; i < MapSize; ++i) Smooth(smooth.parts_, half.parts_, Index(0, i), 1, radius);
        for (int i = 0; i < MapSize; ++i) Smooth(half.parts_, smooth.parts_, Index(i, 0), MapSize, radius);
    }
    return smooth;
}

void Coverage::Invert() {
    for (float& part : parts_) part = 1 - part;
}

AreaFill::AreaFill() : crossings_(ScanLines), leftEdge_(ScanLines + 1) {}

void AreaFill::Add(MapPixel from, MapPixel to) {
    constexpr double Left = -0.5;
    constexpr double Right = MapSize - 0.5;
    if (from.x < Left && to.x < Left) return;
    if (from.x < Left || to.x < Left) {
        MapPixel& outside = from.x < Left ? from : to;
        const MapPixel inside = from.x < Left ? to : from;
        // From here on the outline goes along the edge; which scan lines that changes is told by the same
        // number as for the piece that stays, so that both agree.
        outside.y = std::lerp(outside.y, inside.y, (Left - outside.x) / (inside.x - outside.x));
        outside.x = Left;
        leftEdge_[static_cast<std::size_t>(ScanLineBelow(outside.y))] ^= 1;
    }
    if (from.x >= Right && to.x >= Right) return;
    const int begin = ScanLineBelow(std::min(from.y, to.y));
    const int end = ScanLineBelow(std::max(from.y, to.y));
    for (int line = begin; line < end; ++line) {
        const double part = (HeightOf(line) - from.y) / (to.y - from.y);
        const double x = std::clamp(std::lerp(from.x, to.x, part), Left, Right);
        crossings_[static_cast<std::size_t>(line)].push_back(static_cast<float>(x - Left));
    }
}

Coverage AreaFill::Fill() const {
    Coverage filled;
    bool isInside = false;
    std::vector<float> edges;
    for (std::size_t line = 0; line < crossings_.size(); ++line) {
        if (leftEdge_[line] != 0) isInside = !isInside;
        edges = crossings_[line];
        if (isInside) edges.push_back(0);
        std::ranges::sort(edges);
        if (edges.size() % 2 != 0) edges.push_back(MapSize);
        const int y = static_cast<int>(line) / LinesPerPixel;
        for (std::size_t i = 0; i < edges.size(); i += 2) {
            const int first = static_cast<int>(edges[i]);
            for (int x = first; x < MapSize && static_cast<float>(x) < edges[i + 1]; ++x) {
                const float begin = std::max(edges[i], static_cast<float>(x));
                const float end = std::min(edges[i + 1], static_cast<float>(x + 1));
                filled.At(x, y) += (end - begin) / LinesPerPixel;
            }
        }
    }
    return filled;
}

}  // namespace veltrix
