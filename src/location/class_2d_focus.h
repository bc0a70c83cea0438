#pragma once
// Class2DFocus: sharpens fixes by their neighbours.

#include <array>
#include <cstdint>

#include "common/date_time.h"
#include "location/mod_calc_globe.h"

namespace veltrix {

/// A single fix rests on two noisy bearings. The focus keeps the last 500 fixes as both their stations see
/// them, and puts in the place of a new fix the mean of those that lie in nearly the same directions. The one
/// in use is that of the local station, and holds the fixes of all remote ones.
class Class2DFocus {
  public:
    /// Fixes kept.
    static constexpr int RingLength = 500;
    /// Fixes that make up a mean, at most.
    static constexpr int MostPoints = 20;

    /// Forgets all fixes.
    void Clear();

    /// Stores `fix`, made at the time `pAge`, and returns the mean of it and of those stored that lie within
    /// `iFocusWindow` + 1 degrees, bounds excluded, of its directions from both stations, newest first. The
    /// stations are at (`lX`, `lY`) and (`rX`, `rY`) on the map's bitmap. A fix without a neighbour gives
    /// (0, 0), which draws no dot; with a window of 0 it gives itself.
    MapPoint GetFocus(double lX, double lY, double rX, double rY, MapPoint fix, std::int16_t iFocusWindow,
                      DateTime pAge);

  private:
    struct Record {
        double dLocalAngle = 0;
        double dRemoteAngle = 0;
        double dX = 0;
        double dY = 0;
        DateTime dAge = 0;
    };

    /// The angles of the ring in single precision, for a look at many at once that tells which records may
    /// be near. Each stands twice, a ring's length apart, so that the whole ring up to its head lies in a
    /// row.
    struct Angles {
        Angles() {
            local.fill(Never);
            remote.fill(Never);
        }
        void Put(std::size_t slot, double dLocalAngle, double dRemoteAngle);

        static constexpr float Never = 1e6F;  // of an empty slot: near to no angle, however wide the window
        std::array<float, std::size_t{2} * RingLength> local;
        std::array<float, std::size_t{2} * RingLength> remote;
    };

    std::array<Record, RingLength> ring_{};
    Angles angles_;
    std::int16_t iHead = 0;   // slot that the next fix gets
    std::int16_t iCount = 0;  // fixes held
};

}  // namespace veltrix
