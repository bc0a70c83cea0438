#pragma once
// Who takes what arrives from other stations: what each must do. Rooms further up, and rooms beside this one,
// implement these and the station hands them in.

#include <cstdint>

#include "detection/consumers.h"
#include "location/map_update.h"

namespace veltrix {

/// A detection of another station on its way to that station's Mapper.
struct RemoteDetection {
    std::int16_t row = 0;  ///< of the station
    int socket = 0;        ///< index of the client socket it came by
    double dDir = 0;       ///< bearing in degrees, as that station measured it
    double dAmp = 0;       ///< dB
    double dTime = 0;      ///< sample number, or a tenth of its stopwatch's milliseconds in real-time mode
};

/// Looks for the matching local detection.
class RemoteMatching {
  public:
    virtual ~RemoteMatching() = default;
    /// Offers the detection to its station's pairing; what has become of it.
    virtual StrikeFix MapUpdate(const RemoteDetection& detection) = 0;
};

/// The marks of the stations on the map.
class StationMarks {
  public:
    virtual ~StationMarks() = default;
    /// Draws the mark of a row anew, after its station or place may have changed.
    virtual void PlaceStationMark(std::int16_t row) = 0;
    /// Shows which stations were seen connected since the last call.
    virtual void DisplayStationConnectionState() = 0;
};

/// Places that nobody fills are null and passed over.
struct NetworkReceivers {
    RemoteMatching* matching = nullptr;
    StationMarks* marks = nullptr;
    StrikeDisplays* displays = nullptr;
    StrikeAlarm* alarm = nullptr;

    /// Draws the mark of a row anew, where there is somebody to draw it.
    void DrawMark(std::int16_t row) const {
        if (marks) marks->PlaceStationMark(row);
    }
};

}  // namespace veltrix
