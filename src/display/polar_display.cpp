#include "display/polar_display.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

constexpr std::size_t Oldest = PolarDisplay::Slots - 1;
constexpr std::size_t CleanFrom = 996;  // from this slot on a dot gives way to the background
constexpr ColourValue MarkColor = Yellow;
constexpr std::int32_t NeedleTop = 2;  // the needle deliberately begins at this row, not 2 above the centre
constexpr const char* FileName = "pXY.dat";

const double Pi = 4 * std::atan(1.0);

/// The two brightnesses of a fading dot: `f` from the newest slot to the oldest, `g` in the newer half only.
struct Fade {
    int f = 0;
    int g = 0;
};

std::array<Fade, PolarDisplay::Slots> MakeFades() {
    std::array<Fade, PolarDisplay::Slots> fades{};
    for (std::size_t i = 0; i < fades.size(); ++i) {
        fades[i].f = static_cast<int>(RoundTiesToEven(static_cast<double>(Oldest - i) / 4));
        fades[i].g = static_cast<int>(std::max(RoundTiesToEven((500 - static_cast<double>(i)) / 2), 0.0));
    }
    return fades;
}

const std::array<Fade, PolarDisplay::Slots> Fades = MakeFades();

/// Reads a whole number and the text up to `end` behind it.
std::optional<std::int32_t> TakeInteger(std::string_view& text, std::string_view end) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    std::int32_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    while (text.starts_with(' ')) text.remove_prefix(1);
    if (!text.starts_with(end)) return std::nullopt;
    text.remove_prefix(end.size());
    return number;
}

}  // namespace

PolarDisplay::Pixel PolarDisplay::Centre() const {
    return {RoundToLong(surface_.ScaleWidth() / 2), RoundToLong(surface_.ScaleHeight() / 2)};
}

void PolarDisplay::GyrelUpdate(double direction, double amplitude, double minDb, double maxDb,
                               ColourValue color) {
    double r = 0;
    UnderErrorConvention(
        errors_, "GyrelUpdate", [&] { RestoreUnderHead(); }, [&] { DrawCentreMark(); },
        [&] {
            if (amplitude >= maxDb) amplitude = maxDb;
            if (amplitude < minDb) amplitude = minDb;
            r = Divide((maxDb - amplitude) * (surface_.ScaleHeight() / 2 - 4), maxDb - minDb);
            if (r < 0) r = 0;
        },
        [&] { ReplotGyrelHistory(color); }, [&] { PushHead(color); },
        [&] {
            const double a = direction / 180 * Pi;
            GyrelHeadX = RoundToLong(r * std::sin(a));
            GyrelHeadY = RoundToLong(r * std::cos(a));
        },
        [&] { PaintHead(); });
}

/// Gives the pixels under the head back. After a change of the background they deliberately are still the old
/// ones.
void PolarDisplay::RestoreUnderHead() {
    const Pixel centre = Centre();
    for (std::size_t i = 0; i < HeadPixels.size(); ++i)
        surface_.PSet(centre.x + GyrelHeadX + HeadPixels[i].x, centre.y - GyrelHeadY + HeadPixels[i].y,
                      GyrelHeadSaved[i]);
}

void PolarDisplay::DrawCentreMark() {
    const Pixel centre = Centre();
    surface_.Line(centre.x - 2, centre.y, centre.x + 3, centre.y, MarkColor);
    surface_.Line(centre.x, NeedleTop, centre.x, centre.y + 3, MarkColor);
}

/// The head becomes a dot. Its family is deliberately that of the detection that pushes it there.
void PolarDisplay::PushHead(ColourValue color) {
    const Pixel centre = Centre();
    GyrelHistoryX[0] = GyrelHeadX;
    GyrelHistoryY[0] = GyrelHeadY;
    GyrelHistoryColor[0] = color;
    surface_.PSet(centre.x + GyrelHistoryX[0], centre.y - GyrelHistoryY[0], color);
}

void PolarDisplay::PaintHead() {
    const Pixel centre = Centre();
    const auto each = [&](auto&& pixel) {
        for (std::size_t i = 0; i < HeadPixels.size(); ++i)
            pixel(i, centre.x + GyrelHeadX + HeadPixels[i].x, centre.y - GyrelHeadY + HeadPixels[i].y);
    };
    each([&](std::size_t i, std::int32_t x, std::int32_t y) { GyrelHeadSaved[i] = surface_.Point(x, y); });
    each([&](std::size_t, std::int32_t x, std::int32_t y) { surface_.PSet(x, y, White); });
}

void PolarDisplay::ReplotGyrelHistory(ColourValue color) {
    DrawCentreMark();
    const Pixel centre = Centre();
    if (color != 0) {
        std::copy_backward(GyrelHistoryX.begin(), GyrelHistoryX.end() - 1, GyrelHistoryX.end());
        std::copy_backward(GyrelHistoryY.begin(), GyrelHistoryY.end() - 1, GyrelHistoryY.end());
        std::copy_backward(GyrelHistoryColor.begin(), GyrelHistoryColor.end() - 1, GyrelHistoryColor.end());
    }
    // Oldest first, so that newer dots lie over older ones.
    for (std::size_t i = Oldest; i >= 1; --i) {
        // In floating point, since a damaged file may have offsets of any size.
        const double x = static_cast<double>(centre.x) + GyrelHistoryX[i];
        const double y = static_cast<double>(centre.y) - GyrelHistoryY[i];
        const Fade fade = Fades[i];
        if (i >= CleanFrom)
            surface_.PSet(x, y, cleanCopy_.Point(x, y));
        else
            surface_.PSet(x, y,
                          GyrelHistoryColor[i] == Cyan ? Rgb(0, fade.g, fade.f) : Rgb(fade.f, fade.g, 0));
    }
}

void PolarDisplay::GyrelDrawRing() {
    const double middle = surface_.ScaleHeight() / 2;
    surface_.Circle(middle, middle, middle - 1, MarkColor);
}

void PolarDisplay::RenewBackground() {
    GyrelDrawRing();
    cleanCopy_.SetPicture(surface_.Image());
    ReplotGyrelHistory(0);
}

void PolarDisplay::ClearGyrelHistory() {
    std::fill(GyrelHistoryX.begin() + 1, GyrelHistoryX.end(), 0);
    std::fill(GyrelHistoryY.begin() + 1, GyrelHistoryY.end(), 0);
    std::fill(GyrelHistoryColor.begin() + 1, GyrelHistoryColor.end(), 0);
}

void PolarDisplay::Load(Files& files) {
    std::size_t slot = 0;
    for (const std::string& line : files.ReadLines(FileName)) {
        std::string_view rest = line;
        const auto x = TakeInteger(rest, ",");
        const auto y = x ? TakeInteger(rest, "") : std::nullopt;
        if (slot == Slots || !y || !rest.empty()) return;
        GyrelHistoryX[slot] = *x;
        GyrelHistoryY[slot] = *y;
        ++slot;
    }
}

void PolarDisplay::Save(Files& files) const {
    std::string content;
    for (std::size_t i = 0; i < Slots; ++i)
        content += std::to_string(GyrelHistoryX[i]) + ',' + std::to_string(GyrelHistoryY[i]) + '\n';
    files.WriteWhole(FileName, content);
}

}  // namespace veltrix
