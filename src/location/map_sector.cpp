#include "location/map_sector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "common/calc_angles.h"

namespace veltrix {

namespace {

constexpr int ColumnsBetweenDrains = 10;

// Where a station stands between clearly worse and possibly the best is told without roots and arc tangents.
//
// Let r1 and r2 be the distances of a pixel from home and from the station, s the sine of the angle between,
// and e the measure of error. Its counterpart r1 * r1 / e, the greater the better, is
//     (r1 / r2) * (s + 0.00001 + d).
// d is what the angles' constants are off: CalcAtan2() errs by up to 2 (CalcPi - pi) = 0.000002, Degree on 90
// degrees by 0.0000006. A direction that CalcAtan2() takes for its opposite changes no sine, nor do the
// folds. |cross product| / r2^2 is (r1 / r2) * s; in single precision its s comes out up to 0.0000007 off, as
// long as both distances are neither tiny nor beyond the range. So it is less than the counterpart in any
// case; and adding Margin * (r1^2 / r2^2 + 1), which is at least (r1 / r2) * 2 Margin, makes it greater in
// any case. Either by more than 0.000005 * r1 / r2, far above what rounding does to e.
constexpr float Margin = 0.00001F;
constexpr double Tiny = 0.5;  // pixels
constexpr double Range = 1e9;

// Rows of a column are judged side by side. Each step is a loop of its own without a branch, since those are
// the loops that the compiler turns into instructions for several values at once.
constexpr std::size_t Rows = 32;
using RowValues = std::array<float, Rows>;

/// A pixel row from the places of home and of a station.
struct Offsets {
    float dx1, dy1, dx2, dy2;
};

/// Between what the counterpart of an error lies: above `least`, below `most` + Margin.
struct Bounds {
    float least;
    float most;
};

Bounds BoundsOf(const Offsets& at) {
    const float cross = std::abs(at.dx1 * at.dy2 - at.dy1 * at.dx2);
    const float perSquare = 1 / (at.dx2 * at.dx2 + at.dy2 * at.dy2);
    return {cross * perSquare, (cross + Margin * (at.dx1 * at.dx1 + at.dy1 * at.dy1)) * perSquare};
}

float Greater(float a, float b) {
    return a < b ? b : a;
}

float Lesser(float a, float b) {
    return b < a ? b : a;
}

/// The stations compared so far, for each row.
struct Ranking {
    RowValues least{};   ///< what the best reaches in any case
    RowValues most{};    ///< what the one that may be the best reaches at most
    RowValues winner{};  ///< that one's ordinal
    RowValues second{};  ///< what all others reach at most

    void Add(const RowValues& itsLeast, const RowValues& itsMost, float ordinal) {
        for (std::size_t i = 0; i < Rows; ++i) least[i] = Greater(least[i], itsLeast[i]);
        for (std::size_t i = 0; i < Rows; ++i) winner[i] = most[i] < itsMost[i] ? ordinal : winner[i];
        for (std::size_t i = 0; i < Rows; ++i) second[i] = Greater(second[i], Lesser(most[i], itsMost[i]));
        for (std::size_t i = 0; i < Rows; ++i) most[i] = Greater(most[i], itsMost[i]);
    }
    /// True when none but the winner can be the best.
    bool IsDecided(std::size_t i) const { return second[i] + Margin < least[i]; }
};

struct Contender {
    MapPoint place;
    std::uint8_t ordinal = 0;
};

/// A pixel as a station sees it.
struct Sight {
    Sight(const MapPoint& from, int x, int y) {
        const double dx = x - from.dX;
        const double dy = y - from.dY;
        r = std::sqrt(dx * dx + dy * dy);
        a = CalcAtan2(dy, dx) * 180 / std::numbers::pi;
    }

    double r = 0;  // pixels
    double a = 0;  // degrees
};

/// The measure of error.
double ErrorOf(const Sight& home, const Sight& station) {
    constexpr double Degree = 0.017453286279273523;  // deliberately not pi / 180
    double c = std::abs(station.a - home.a);
    if (c > 180) c = 360 - c;
    if (c > 90) c = 180 - c;
    return home.r * station.r / (std::abs(std::sin(c * Degree)) + 0.00001);
}

/// Home and the stations during one walk.
class Contest {
  public:
    Contest(MapPoint home, std::span<const MapPoint> stations) : home_(home) {
        isTame_ = IsTame(home);
        for (std::size_t i = 0; i < stations.size(); ++i) {
            // One at the place of an earlier one ties with it everywhere, and so wins nowhere.
            if (HasPlace(stations[i])) continue;
            contenders_.push_back({stations[i], static_cast<std::uint8_t>(i + 1)});
            isTame_ = isTame_ && IsTame(stations[i]);
        }
    }

    /// The winners of a column, from the lowest row.
    void JudgeColumn(int x, std::span<std::uint8_t> column) const {
        if (contenders_.size() < 2) {
            std::fill(column.begin(), column.end(), contenders_.empty() ? std::uint8_t{0} : std::uint8_t{1});
            return;
        }
        if (!isTame_) {
            for (std::size_t y = 0; y < column.size(); ++y) column[y] = Best(x, static_cast<int>(y), 0);
            return;
        }
        for (std::size_t y = 0; y < column.size(); y += Rows)
            JudgeRows(x, static_cast<int>(y), column.subspan(y, std::min(Rows, column.size() - y)));
        JudgeAround(home_, x, column);
        for (const Contender& contender : contenders_) JudgeAround(contender.place, x, column);
    }

  private:
    static bool IsTame(const MapPoint& place) {
        return std::abs(place.dX) < Range && std::abs(place.dY) < Range;
    }

    bool HasPlace(const MapPoint& place) const {
        return std::any_of(contenders_.begin(), contenders_.end(), [&](const Contender& other) {
            return other.place.dX == place.dX && other.place.dY == place.dY;
        });
    }

    /// The best by the measure of error itself, among those that may reach `least`.
    std::uint8_t Best(int x, int y, float least) const {
        const Sight home(home_, x, y);
        const auto dx1 = static_cast<float>(x - home_.dX);
        const auto dy1 = static_cast<float>(y - home_.dY);
        std::uint8_t winner = 0;
        double bestError = 0;
        for (const Contender& contender : contenders_) {
            const auto dx2 = static_cast<float>(x - contender.place.dX);
            const auto dy2 = static_cast<float>(y - contender.place.dY);
            if (BoundsOf({dx1, dy1, dx2, dy2}).most + Margin < least) continue;
            const double e = ErrorOf(home, Sight(contender.place, x, y));
            if (winner == 0 || e < bestError) {
                winner = contender.ordinal;
                bestError = e;
            }
        }
        return winner;
    }

    /// Up to Rows pixels of a column from row `y` on. Where none but one station can have the greatest
    /// counterpart, it has the least error.
    void JudgeRows(int x, int y, std::span<std::uint8_t> pixels) const {
        const auto dx1 = static_cast<float>(x - home_.dX);
        RowValues dy1{}, least{}, most{};
        std::array<double, Rows> row{};
        for (std::size_t i = 0; i < Rows; ++i) row[i] = y + static_cast<int>(i);
        for (std::size_t i = 0; i < Rows; ++i) dy1[i] = static_cast<float>(row[i] - home_.dY);
        Ranking ranking;
        for (const Contender& contender : contenders_) {
            const double dY = contender.place.dY;
            const auto dx2 = static_cast<float>(x - contender.place.dX);
            for (std::size_t i = 0; i < Rows; ++i) {
                const Bounds bounds = BoundsOf({dx1, dy1[i], dx2, static_cast<float>(row[i] - dY)});
                least[i] = bounds.least;
                most[i] = bounds.most;
            }
            ranking.Add(least, most, static_cast<float>(contender.ordinal));
        }
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = ranking.IsDecided(i) ? static_cast<std::uint8_t>(ranking.winner[i])
                                             : Best(x, y + static_cast<int>(i), ranking.least[i]);
    }

    /// The pixel that a place lies in, where a distance is tiny, if it is in this column.
    void JudgeAround(const MapPoint& place, int x, std::span<std::uint8_t> column) const {
        const double y = std::nearbyint(place.dY);
        if (std::abs(place.dX - x) > Tiny || y < 0 || y >= static_cast<double>(column.size())) return;
        column[static_cast<std::size_t>(y)] = Best(x, static_cast<int>(y), 0);
    }

    MapPoint home_;
    std::vector<Contender> contenders_;
    bool isTame_ = false;
};

/// A quarter of the palette; its channels divide evenly.
constexpr std::array<ColourValue, 8> Tints{Rgb(0, 0, 0) / 4,     Rgb(128, 0, 0) / 4,    Rgb(0, 128, 0) / 4,
                                           Rgb(0, 0, 128) / 4,   Rgb(128, 128, 0) / 4,  Rgb(128, 0, 128) / 4,
                                           Rgb(0, 128, 128) / 4, Rgb(128, 128, 128) / 4};

}  // namespace

MapSector::MapSector(int width, int height)
    : width_(width),
      height_(height),
      winners_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

void MapSector::Find(MapPoint home, std::span<const MapPoint> stations,
                     const std::function<void()>& Timer1_Timer) {
    const Contest contest(home, stations);
    const auto height = static_cast<std::size_t>(height_);
    for (int x = 0; x < width_; ++x) {
        if (x % ColumnsBetweenDrains == 0) Timer1_Timer();
        contest.JudgeColumn(x, std::span(winners_).subspan(static_cast<std::size_t>(x) * height, height));
    }
}

std::uint8_t MapSector::Winner(int x, int y) const {
    return winners_[static_cast<std::size_t>(x) * static_cast<std::size_t>(height_) +
                    static_cast<std::size_t>(y)];
}

void MapSector::Tint(Surface& pPic) const {
    constexpr ColourValue AllColours = 0xFFFFFF;
    for (int x = 0; x < width_; ++x)
        for (int y = 0; y < height_; ++y) {
            const ColourValue tint = Tints[Winner(x, y) % Tints.size()];
            const ColourValue color = tint != 0 ? pPic.Point(x, height_ - y) : -1;
            if (color >= 0) pPic.PSet(x, height_ - y, (color + tint) & AllColours);
        }
}

}  // namespace veltrix
