#include "window/enlarge.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace veltrix {

namespace {

constexpr unsigned Whole = 256;

/// What a new pixel covers: an old one, and of the one behind it so many parts of `Whole`.
struct Cover {
    int first = 0;
    unsigned ofNext = 0;
};

std::vector<Cover> CoversOf(int from, int to) {
    std::vector<Cover> covers(static_cast<std::size_t>(to));
    const double width = static_cast<double>(from) / to;  // of a new pixel in old ones
    for (int i = 0; i < to; ++i) {
        Cover& cover = covers[static_cast<std::size_t>(i)];
        cover.first = std::min(static_cast<int>(i * width), from - 1);
        const double beyond = (i + 1) * width - (cover.first + 1);
        if (beyond > 0 && cover.first + 1 < from)
            cover.ofNext = static_cast<unsigned>(std::lround(std::min(beyond / width, 1.0) * Whole));
    }
    return covers;
}

QRgb Mix(QRgb one, QRgb next, unsigned ofNext) {
    constexpr QRgb RedBlue = 0xFF00FFU;
    constexpr QRgb Green = 0x00FF00U;
    const unsigned ofOne = Whole - ofNext;
    const QRgb redBlue = ((one & RedBlue) * ofOne + (next & RedBlue) * ofNext) / Whole & RedBlue;
    const QRgb green = ((one & Green) * ofOne + (next & Green) * ofNext) / Whole & Green;
    return 0xFF000000U | redBlue | green;
}

}  // namespace

QImage Enlarged(const QImage& image, QSize size) {
    const std::vector<Cover> columns = CoversOf(image.width(), size.width());
    const std::vector<Cover> rows = CoversOf(image.height(), size.height());
    const auto width = static_cast<std::size_t>(size.width());
    const auto widen = [&](int y, std::vector<QRgb>& row) {
        const auto* const from = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (std::size_t x = 0; x < width; ++x) {
            const auto [first, ofNext] = columns[x];
            row[x] = ofNext == 0 ? from[first] : Mix(from[first], from[first + 1], ofNext);
        }
    };
    QImage enlarged(size, QImage::Format_RGB32);
    std::vector<QRgb> row(width);
    std::vector<QRgb> next(width);
    int widened = -1;  // the old row that stands in `row`
    for (int y = 0; y < size.height(); ++y) {
        const auto [first, ofNext] = rows[static_cast<std::size_t>(y)];
        if (widened != first) widen(first, row);
        widened = first;
        auto* const to = reinterpret_cast<QRgb*>(enlarged.scanLine(y));
        if (ofNext == 0) {
            std::copy(row.begin(), row.end(), to);
            continue;
        }
        widen(first + 1, next);
        for (std::size_t x = 0; x < width; ++x) to[x] = Mix(row[x], next[x], ofNext);
        std::swap(row, next);
        widened = first + 1;
    }
    return enlarged;
}

}  // namespace veltrix
