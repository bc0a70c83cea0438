#pragma once
// The focus of fixes written down in the plainest way: every record, every compare. What Class2DFocus is
// measured against, in speed and in outcome.

#include <array>
#include <cstdint>

#include "common/calc_angles.h"
#include "common/date_time.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

struct PlainFocus {
    struct Record {
        double dLocalAngle, dRemoteAngle, dX, dY;
    };
    std::array<Record, 500> ring{};
    int iHead = 0, iCount = 0;

    static bool IsWithin(double angle, double centre, double w) {
        const auto isInside = [&](double a) { return centre - w < a && a < centre + w; };
        return isInside(angle) || isInside(angle + 360) || isInside(angle - 360);
    }

    MapPoint GetFocus(double lX, double lY, double rX, double rY, MapPoint fix, std::int16_t iFocusWindow,
                      DateTime) {
        constexpr double Degrees = 57.295827908797776;
        const double aL = CalcAtan2(lX - fix.dX, lY - fix.dY) * Degrees;
        const double aR = CalcAtan2(rX - fix.dX, rY - fix.dY) * Degrees;
        const double w = iFocusWindow + 1;
        ring[static_cast<std::size_t>(iHead)] = {aL, aR, fix.dX, fix.dY};
        iHead = (iHead + 1) % 500;
        if (iCount < 500) ++iCount;
        double dSumX = 0, dSumY = 0, dN = 0;
        std::array<MapPoint, 21> buffer{};
        std::size_t iSlot = 0;
        for (int k = 0; k < iCount; ++k) {
            const Record& record = ring[static_cast<std::size_t>((iHead - k + 499) % 500)];
            if (!IsWithin(record.dLocalAngle, aL, w) || !IsWithin(record.dRemoteAngle, aR, w)) continue;
            dSumX = dSumX - buffer[iSlot].dX + record.dX;
            dSumY = dSumY - buffer[iSlot].dY + record.dY;
            buffer[iSlot] = {record.dX, record.dY};
            iSlot = (iSlot + 1) % 20;
            if (dN == 20) break;
            ++dN;
        }
        if ((dN >= 2 || w < 2) && dN > 0) return {dSumX / dN, dSumY / dN};
        return {};
    }
};

}  // namespace veltrix
