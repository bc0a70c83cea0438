#pragma once
// ClassClockDrift: how fast the sample clock of the sound card really runs.

#include <array>
#include <cstddef>
#include <cstdint>

#include "common/date_time.h"
#include "platform/files.h"

namespace veltrix {

/// A ring of (time, sample number) pairs, at least a minute from each to the next, whose median gives the
/// rate of the local sample clock by the computer's clock. Only detections fill it, so that it reaches over a
/// thousand minutes in which something was heard, and it goes on across restarts in "ClockDrift.dat".
///
/// One for the whole station, owned by the form. REQUIRES that the files outlive it.
class ClassClockDrift {
  public:
    /// Takes over the ring of the run before. Never fails: without a readable file the ring is empty, and
    /// what is damaged in it is passed over.
    explicit ClassClockDrift(Files& files);

    /// Records the sample number `c` at the precise time `d`, in days, unless the last record of this run is
    /// less than a minute old. A time that went back counts as less until it has caught up.
    void Update(double d, double c);

    /// The median rate between neighbours in the ring, in samples per day, around 1.905e9; 0 while there are
    /// none. The few rates across a restart or a wrap of the sample counter, huge and negative, do not move
    /// it.
    double GetCoarse() const;

    /// Writes the ring for the next run, whole or not at all. Raises what Files raises.
    void Save() const;

  private:
    static constexpr std::size_t RingLength = 1000;
    using Ring = std::array<double, RingLength + 1>;

    void Load();

    Files& files_;
    Ring dTimes{};           // days; the entry behind the ring is never written
    Ring dSamples{};         // sample numbers; 0 where there is no record
    std::int16_t iLast = 0;  // position of the newest record
    DateTime dLastUpdate = 0;
};

}  // namespace veltrix
