#pragma once
// The state of a station at one moment, as plain figures.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/date_time.h"
#include "health/rate_counter.h"
#include "health/recorder_state.h"
#include "health/sound_meter.h"
#include "platform/computer.h"

namespace veltrix {

/// The rate that the recorder delivers, in frames a second.
inline constexpr double NominalRate = 22050;

/// How often something has happened.
struct Rates {
    std::uint64_t minute = 0;  ///< in the last 60 s
    std::uint64_t hour = 0;    ///< in the last 3600 s
    std::uint64_t total = 0;   ///< since start

    Rates() = default;
    explicit Rates(const RateCounter& counter)
        : minute(counter.LastMinute()), hour(counter.LastHour()), total(counter.Total()) {}
};

/// A raw level of detection, and the same in decibels, as the boxes of the form show it.
struct DetectionLevel {
    double raw = 0;
    std::optional<double> db;  ///< 0 or below; none for a raw level of 0
};

/// A socket that carries another station, or that should.
struct PeerHealth {
    bool isClient = false;  ///< this station listens to that one; else that one to this
    int socket = 0;         ///< index in its array
    std::string station;    ///< its name; empty while it has not said
    std::string address;
    int state = 0;          ///< number of the socket's state
    std::string stateText;  ///< the same in words

    /// Whether the connection stands.
    bool IsConnected() const { return state == 7; }
};

/// All figures. Texts are clean: valid UTF-8 on one line. Date-times are local.
struct HealthReport {
    std::string version;
    std::string station;
    bool running = true;  ///< false in the last report of a run
    DateTime time = 0;
    DateTime started = 0;
    std::int64_t uptime = 0;  ///< seconds

    SoundHealth sound;
    bool detecting = true;  ///< false once a repeated failure has ended detection
    std::optional<RecorderAccount> recorder;
    std::uint64_t framesLostHour = 0;  ///< by the recorder, in the last hour

    DetectionLevel threshold;
    DetectionLevel noise;  ///< 5 standard deviations of the envelope between pulses
    Rates strikes;
    Rates pairs;
    Rates located;

    std::vector<PeerHealth> peers;
    Rates linesDropped;  ///< that were to be sent to peers

    std::optional<DateTime> published;
    std::int64_t publishedAgo = 0;  ///< seconds since then

    std::optional<DiskSpace> disk;
    std::optional<bool> clockSynchronised;
    std::uint64_t errors = 0;  ///< reported since start
};

}  // namespace veltrix
