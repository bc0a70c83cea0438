#pragma once
// The sync histogram and the dots of the map written down in the plainest way: every bin, every dot, every
// time. What ClassHistogram and LightningDots are measured against, in speed and in outcome.

#include <algorithm>
#include <array>
#include <cmath>

#include "display/class_histogram.h"
#include "display/colours.h"

namespace veltrix {

struct PlainHistogram {
    std::array<int, 800> ring;
    std::array<int, 1731> sliding{}, row{};
    std::size_t head = 0;
    int rowX = 0;

    PlainHistogram() { ring.fill(-1); }

    ClassHistogram::Bins Update(double value, double scale, double offset) {
        const double passes = std::abs(value / scale + offset * 1730) / 1730;
        const int bin = static_cast<int>(std::nearbyint((passes - std::floor(passes)) * 1730));
        head = (head + 1) % 800;
        if (ring[head] >= 0) --sliding[static_cast<std::size_t>(ring[head])];
        ring[head] = bin;
        ++sliding[static_cast<std::size_t>(bin)];
        ++row[static_cast<std::size_t>(bin)];
        std::size_t peak = 0;
        for (std::size_t i = 0; i < 1730; ++i)
            if (sliding[i] > sliding[peak]) peak = i;
        return {bin, static_cast<int>(peak)};
    }

    void Display(Surface& surface, ColourValue mask, double gain, bool merge) {
        int sum = 0, peak = 0;
        double last = -1;
        for (std::size_t i = 0; i < 1730; ++i) {
            const double x = std::nearbyint(surface.ScaleWidth() * static_cast<double>(i) / 1729);
            if (x != last) sum = 0;
            last = x;
            sum += row[i];
            peak = std::max(peak, sum);
            const double v = std::nearbyint(std::clamp(sum * 4 * gain, 0.0, 255.0));
            const ColourValue value = static_cast<int>(v) * mask;
            surface.PSet(x, rowX, merge ? value | surface.Point(x, rowX) : value);
        }
        if (peak * 4 * gain < 255) return;
        const double width = surface.ScaleWidth();
        const int height = static_cast<int>(surface.ScaleHeight());
        rowX = (rowX + 1) % height;
        surface.Line(-width, rowX, width, rowX, Black);
        surface.Line(-width, (rowX + 1) % height, width, (rowX + 1) % height, Rgb(128, 0, 0));
        std::fill_n(row.begin(), 1730, 0);
    }
};

struct PlainDots {
    struct Dot {
        int x = -1, y = -1;
        double made = 0;
    };
    std::array<Dot, 2000> dots;
    int penX = 0, penY = 0;
    std::array<ColourValue, 4> saved{};
    ColourValue seen = 0;  // what a dot is painted over; of no use

    template <class Each>
    void Pen(Each&& each) {
        each(saved[0], penX, penY);
        each(saved[1], penX + 1, penY);
        each(saved[2], penX + 1, penY + 1);
        each(saved[3], penX, penY + 1);
    }
    void PenDown(Surface& surface) {
        Pen([&](ColourValue& under, int x, int y) { under = surface.Point(x, y); });
        Pen([&](ColourValue&, int x, int y) { surface.PSet(x, y, Cyan); });
    }
    void Add(double x, double y, double made) {
        std::copy_backward(dots.begin(), dots.end() - 1, dots.end());
        dots[0] = {static_cast<int>(std::nearbyint(x)), static_cast<int>(std::nearbyint(y)), made};
    }
    void Draw(Surface& surface, const Surface& clean, bool shift, double now, int age) {
        for (std::size_t i = 2000; i-- > (shift ? 1 : 0);) {
            if (shift) dots[i] = dots[i - 1];
            seen = surface.Point(dots[i].x, dots[i].y);
            const ColourValue b = clean.Point(dots[i].x, dots[i].y);
            const ColourValue c = i == 1999 ? Black : AgeColor(now - dots[i].made, age);
            surface.PSet(dots[i].x, dots[i].y,
                         Rgb(std::max(RedOf(b), RedOf(c)), std::max(GreenOf(b), GreenOf(c)),
                             std::max(BlueOf(b), BlueOf(c))));
        }
    }
    void DrawAll(Surface& surface, const Surface& clean, double now, int age) {
        Draw(surface, clean, false, now, age);
        penX = dots[0].x;
        penY = dots[0].y;
        PenDown(surface);
    }
    void Plot(Surface& surface, const Surface& clean, double x, double y, bool shift, double now, int age) {
        Pen([&](ColourValue under, int px, int py) { surface.PSet(px, py, under); });
        const bool strike = x > 0 && y > 0;
        penX = strike ? static_cast<int>(std::nearbyint(x)) : dots[0].x;
        penY = strike ? static_cast<int>(std::nearbyint(y)) : dots[0].y;
        const ColourValue color = AgeColor(strike ? 0 : now - dots[0].made, age);
        Draw(surface, clean, shift, now, age);
        dots[0] = {penX, penY, now};
        surface.PSet(penX, penY, color);
        PenDown(surface);
    }
};

}  // namespace veltrix
