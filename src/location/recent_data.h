#pragma once
// RecentData: the fix ring, the raw bearings behind the strikes of the map.

#include <array>
#include <cstdint>

#include "common/date_time.h"
#include "platform/files.h"

namespace veltrix {

/// A pair of bearings that made a fix, as they were before any correction.
struct RecentFix {
    bool bRecentValid = false;       ///< false for an empty slot
    double dRecentDirLocal = 0;      ///< bearing at the local station, degrees
    std::int16_t iRecentMapper = 0;  ///< number of the remote station
    double dRecentDirRemote = 0;     ///< bearing at the remote station, degrees
    DateTime dRecentTime = 0;        ///< when the fix was made
};

/// The last 2000 fixes of all stations, so that the map can be drawn anew after a change of map or
/// calibration, and after a restart. One for the whole program, owned by the form.
///
/// Invariant: a record that is valid has the number of a station, 0 to C_NUMBEROFMAPPERS, bearings of a
/// million degrees at most, and a time that a calendar has.
class RecentData {
  public:
    /// The number of bearing pairs that are kept.
    static constexpr int Length = 2000;

    /// Advances the head by one slot and stores there, in place of the oldest record.
    void Add(const RecentFix& fix);
    /// Takes the newest record back: its slot is emptied and the head goes back by one.
    void TakeBack();
    /// Empties all slots; the head goes to 0.
    void Clear();

    /// The newest record.
    const RecentFix& Head() const { return Slot(iRecentHead); }
    /// Raises OutOfRange for a slot that is not there.
    const RecentFix& Slot(int slot) const;

    /// Reads "pMA.dat", unless records stand already (the head is not 0). Stops quietly where the file cannot
    /// be read on and keeps what was read. A line that is no record leaves its slot; a record that no fix can
    /// have made empties it. A time of 0 is replaced by `now`.
    void LoadpMA(Files& files, DateTime now);
    /// Writes the ring to "pMA.dat". Raises what Files raises.
    void SavepMA(Files& files) const;

    /// Slot of the newest record, 0 to Length - 1. It moves with Add() and TakeBack() only.
    std::int16_t iRecentHead = 0;

  private:
    std::array<RecentFix, Length> slots_{};
};

}  // namespace veltrix
