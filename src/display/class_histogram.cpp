#include "display/class_histogram.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "common/arithmetic.h"
#include "display/colours.h"

namespace veltrix {

namespace {

constexpr ColourValue CursorColor = Rgb(128, 0, 0);
constexpr double MarkDistance = 4;  // pixels from the median to each of its marks

/// The place of `x` within the range of bins, from 0 to below 1730 but for rounding.
double WithinRange(double x) {
    const double passes = std::abs(x) / ClassHistogram::HistogramLen();
    return (passes - IntegerPart(passes)) * ClassHistogram::HistogramLen();
}

/// One row of pixels; empty where there is none.
std::span<const ColourValue> PixelsOf(const Surface& surface, std::int32_t row) {
    const Bitmap& image = surface.Image();
    if (row < 0 || row >= image.height) return {};
    const auto width = static_cast<std::size_t>(image.width);
    return std::span(image.pixels).subspan(static_cast<std::size_t>(row) * width, width);
}

}  // namespace

ClassHistogram::ClassHistogram(ErrorReporter& errors) : errors_(errors) {
    Clear();
}

void ClassHistogram::Clear() {
    lRing.fill(-1);
    lSliding.fill(0);
    lRowCount.fill(0);
    for (std::size_t node = winners_.size() - 1; node >= 1; --node)
        winners_[node] = node < winners_.size() / 2 ? winners_[2 * node]
                                                    : Key(2 * static_cast<std::int32_t>(node) - Leaves);
}

/// Greater for the fuller bin, and of two equal ones for the lower-numbered. What fills the tree behind the
/// last bin, the one that only rounding reaches included, counts as empty and loses against all.
std::int32_t ClassHistogram::Key(std::int32_t bin) const {
    const std::int32_t count = bin < HistogramLen() ? lSliding[static_cast<std::size_t>(bin)] : 0;
    return count * Leaves + (Leaves - 1 - bin);
}

/// Changes the count of a bin over the ring, and the matches that the bin plays in.
void ClassHistogram::Count(std::int32_t bin, std::int32_t change) {
    lSliding[static_cast<std::size_t>(bin)] += change;
    std::int32_t winner = std::max(Key(bin), Key(bin ^ 1));
    for (auto node = static_cast<std::size_t>(Leaves + bin) / 2; winners_[node] != winner; node /= 2) {
        winners_[node] = winner;
        if (node == 1) return;
        winner = std::max(winner, winners_[node ^ 1]);
    }
}

ClassHistogram::Bins ClassHistogram::Update(double value, double scale, double offset) {
    dLastScale = scale;
    const std::int32_t bin = RoundToLong(WithinRange(Divide(value, scale) + offset * HistogramLen()));
    lRingHead = (lRingHead + 1) % static_cast<std::int32_t>(RingLength);
    std::int32_t& place = lRing[static_cast<std::size_t>(lRingHead)];
    if (place >= 0) Count(place, -1);
    place = bin;
    Count(bin, 1);
    ++lRowCount[static_cast<std::size_t>(bin)];
    return {bin, Leaves - 1 - winners_[1] % Leaves};
}

std::int32_t ClassHistogram::MaxValue(std::int32_t bin) const {
    if (bin < 0 || bin > HistogramLen())
        throw Failure(errors::OutOfRange, "Subscript out of range", "ClassHistogram");
    return lSliding[static_cast<std::size_t>(bin)];
}

/// The colour of a column. The brightness is a whole number before it goes to the channels, so that no
/// fraction of one channel spills into the next.
ColourValue ClassHistogram::RowPaint::Value(std::int32_t sum) const {
    return sum == 0 ? Black : RoundToLong(ClampByte(Light(sum))) * mask;
}

void ClassHistogram::FindColumns(double width) {
    if (width == columnsWidth_) return;
    for (std::size_t i = 0; i < Length; ++i)
        columns_[i] = RoundToLong(width * static_cast<double>(i) / (HistogramLen() - 1));
    columnsWidth_ = width;
}

/// Paints each column of the row once, with what painting it bin by bin would end with, and only where that
/// changes something: from one pair to the next little does. Gives the count of the fullest column.
std::int32_t ClassHistogram::PaintRow(Surface& surface, const RowPaint& paint) {
    FindColumns(surface.ScaleWidth());
    const std::span<const ColourValue> row = PixelsOf(surface, lRowX);
    std::int32_t peak = 0;
    for (std::size_t i = 0; i < Length;) {
        const std::int32_t x = columns_[i];
        std::int32_t sum = 0;
        ColourValue merged = 0;
        for (; i < Length && columns_[i] == x; ++i) {
            sum += lRowCount[i];
            if (paint.merge && lRowCount[i] != 0) merged |= paint.Value(sum);
        }
        peak = std::max(peak, sum);
        if (static_cast<std::size_t>(x) >= row.size()) continue;  // the last column lies past the edge
        const ColourValue there = row[static_cast<std::size_t>(x)];
        const ColourValue color = paint.merge ? merged | there : paint.Value(sum);
        if (color != there) surface.PSet(x, lRowX, color);
    }
    return peak;
}

void ClassHistogram::CloseRow(Surface& surface) {
    const std::int32_t rows = RoundToLong(surface.ScaleHeight());
    const auto line = [&](std::int32_t row, ColourValue color) {
        surface.Line(-surface.ScaleWidth(), row, surface.ScaleWidth(), row, color);
    };
    lRowX = (lRowX + 1) % rows;
    line(lRowX, Black);
    const std::int32_t lMarkerRow = (lRowX + 1) % rows;
    line(lMarkerRow, CursorColor);
    std::fill_n(lRowCount.begin(), Length, 0);
}

void ClassHistogram::DisplaySync(Surface& surface) {
    const RowPaint paint{Rgb(1, 1, 0)};
    std::int32_t peak = 0;
    double median = 0;
    UnderErrorConvention(
        errors_, "DisplaySync", [&] { peak = PaintRow(surface, paint); },
        [&] { median = Parent->MedianDifference(); },
        [&] {
            if (dLastScale != 0) median /= dLastScale;
            const double m = WithinRange(median) * surface.ScaleWidth() / HistogramLen();
            surface.PSet(m + MarkDistance, lRowX, Red);
            surface.PSet(m - MarkDistance, lRowX, Red);
        },
        [&] {
            if (paint.Closes(peak)) CloseRow(surface);
        });
}

void ClassHistogram::DisplaySync2(Surface& surface, ColourValue color, double gain, bool merge) {
    const ColourValue mask = Rgb(RedOf(color) != 0, GreenOf(color) != 0, BlueOf(color) != 0);
    const RowPaint paint{mask, gain, merge};
    std::int32_t peak = 0;
    UnderErrorConvention(
        errors_, "DisplaySync", [&] { peak = PaintRow(surface, paint); },
        [&] {
            if (paint.Closes(peak)) CloseRow(surface);
        });
}

}  // namespace veltrix
