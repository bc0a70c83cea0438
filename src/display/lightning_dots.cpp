#include "display/lightning_dots.h"

#include <algorithm>
#include <cmath>

#include "common/arithmetic.h"
#include "display/colours.h"

namespace veltrix {

namespace {

/// In floating point, so that a pen at any place has its pixels.
struct Offset {
    double x;
    double y;
};

/// The pixels of the pen, from its place.
constexpr std::array<Offset, 4> PenPixels{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}};

/// The greater of two colours, channel by channel.
ColourValue Lighter(ColourValue a, ColourValue b) {
    constexpr ColourValue R = Rgb(255, 0, 0), G = Rgb(0, 255, 0), B = Rgb(0, 0, 255);
    return std::max(a & R, b & R) | std::max(a & G, b & G) | std::max(a & B, b & B);
}

/// An age in days from which on a dot is dark for certain. Most dots are, and need no look at their colour.
double DarkAge(std::int32_t age) {
    constexpr double Margin = 1 + 1e-9;  // far above what rounding can do to the age ramp
    return (std::abs(static_cast<double>(age)) + 1) / 1440 * Margin;
}

}  // namespace

LightningDots::LightningDots(Clock& clock) : clock_(clock) {
    ClearpX2();
}

void LightningDots::ClearpX2() {
    pX2.fill(-1);
    pY2.fill(-1);
    pC2.fill(Black);
    pAge2.fill(0);
}

/// Every slot takes the dot of the one before; slot 0 keeps its own, too.
void LightningDots::MoveOn() {
    const std::size_t newest = head_;
    head_ = PlaceOf(Oldest);
    pX2[head_] = pX2[newest];
    pY2[head_] = pY2[newest];
    pC2[head_] = pC2[newest];
    pAge2[head_] = pAge2[newest];
}

void LightningDots::AddpXY2(const Surface& surface, double x, double y, ColourValue color, DateTime time) {
    const bool inside = x >= 0 && x <= surface.ScaleWidth() && y >= 0 && y <= surface.ScaleHeight();
    if (!inside) return;
    MoveOn();
    pX2[head_] = RoundToLong(x);
    pY2[head_] = RoundToLong(y);
    pC2[head_] = color;
    pAge2[head_] = time;
}

void LightningDots::DrawLightningInPicture4(Surface& surface, const Surface& clean, bool shift) {
    Repaint(surface, clean, shift, clock_.Now());
}

/// Works on the pixels themselves and paints only those that change: most dots are dark, and what they show
/// is there already.
void LightningDots::Repaint(Surface& surface, const Surface& clean, bool shift, DateTime now) {
    if (shift) MoveOn();
    const Bitmap& seen = surface.Image();
    const Bitmap& map = clean.Image();
    const double darkAge = DarkAge(Age);
    const std::size_t newestPainted = shift ? 1 : 0;
    for (std::size_t slot = Slots; slot-- > newestPainted;) {
        const std::size_t i = PlaceOf(slot);
        const std::int32_t x = pX2[i];
        const std::int32_t y = pY2[i];
        if (x < 0 || x >= map.width || y < 0 || y >= map.height) continue;
        const auto pixel =
            static_cast<std::size_t>(y) * static_cast<std::size_t>(map.width) + static_cast<std::size_t>(x);
        ColourValue color = map.pixels[pixel];
        const double age = now - pAge2[i];
        if (slot != Oldest && !(age >= darkAge)) color = Lighter(color, AgeColor(age, Age));
        if (shift) pC2[i] = color;
        if (seen.pixels[pixel] != color) surface.PSet(x, y, color);
    }
}

void LightningDots::PenUp(Surface& surface, std::int32_t x, std::int32_t y) const {
    for (std::size_t i = 0; i < PenPixels.size(); ++i)
        if (PenSaved[i] >= 0) surface.PSet(x + PenPixels[i].x, y + PenPixels[i].y, PenSaved[i]);
}

void LightningDots::PenDown(Surface& surface, std::int32_t x, std::int32_t y) {
    for (std::size_t i = 0; i < PenPixels.size(); ++i)
        PenSaved[i] = surface.Point(x + PenPixels[i].x, y + PenPixels[i].y);
    for (const Offset& at : PenPixels) surface.PSet(x + at.x, y + at.y, Cyan);
}

void LightningDots::DrawAllLightningInPicture4(Surface& surface, const Surface& clean) {
    DrawLightningInPicture4(surface, clean, false);
    PenX = pX2[head_];
    PenY = pY2[head_];
    PenDown(surface, PenX, PenY);
}

void LightningDots::MapUpdatePlot(Surface& surface, const Surface& clean, double x, double y, bool shift) {
    const DateTime now = clock_.Now();
    PenUp(surface, PenX, PenY);
    ColourValue color = Black;
    if (x <= 0 || y <= 0) {
        PenX = pX2[head_];
        PenY = pY2[head_];
        color = AgeColor(now - pAge2[head_], Age);
    } else {
        PenX = RoundToLong(x);
        PenY = RoundToLong(y);
        color = AgeColor(0, Age);
    }
    Repaint(surface, clean, shift, now);
    pX2[head_] = PenX;
    pY2[head_] = PenY;
    pC2[head_] = color;
    pAge2[head_] = now;
    surface.PSet(PenX, PenY, pC2[head_]);
    PenDown(surface, PenX, PenY);
}

}  // namespace veltrix
