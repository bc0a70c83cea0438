#pragma once
// The sectors of the map written down in the plainest way: every station at every pixel, with both arc
// tangents. What MapSector is measured against, in speed and in outcome.

#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

#include "common/calc_angles.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

/// The ordinal of the winner of one pixel; 0 for none.
inline std::uint8_t PlainWinner(MapPoint home, std::span<const MapPoint> stations, int x, int y) {
    std::uint8_t ordinal = 0, winner = 0;
    double best = 0;
    for (const MapPoint& station : stations) {
        ++ordinal;
        const double dx1 = x - home.dX, dy1 = y - home.dY;
        const double dx2 = x - station.dX, dy2 = y - station.dY;
        const double r1 = std::sqrt(dx1 * dx1 + dy1 * dy1);
        const double r2 = std::sqrt(dx2 * dx2 + dy2 * dy2);
        const double a1 = CalcAtan2(dy1, dx1) * 180 / std::numbers::pi;
        const double a2 = CalcAtan2(dy2, dx2) * 180 / std::numbers::pi;
        double c = std::abs(a2 - a1);
        if (c > 180) c = 360 - c;
        if (c > 90) c = 180 - c;
        const double e = r1 * r2 / (std::abs(std::sin(c * 0.017453286279273523)) + 0.00001);
        if (winner == 0 || e < best) {
            best = e;
            winner = ordinal;
        }
    }
    return winner;
}

/// All pixels, column by column.
inline std::vector<std::uint8_t> PlainSectors(int width, int height, MapPoint home,
                                              std::span<const MapPoint> stations) {
    std::vector<std::uint8_t> winners;
    for (int x = 0; x < width; ++x)
        for (int y = 0; y < height; ++y) winners.push_back(PlainWinner(home, stations, x, y));
    return winners;
}

}  // namespace veltrix
