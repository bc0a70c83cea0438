#pragma once
// How the detections of this station reach its peers.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "detection/consumers.h"
#include "network/online_entries.h"
#include "network/ping.h"
#include "network/send_queue.h"
#include "network/station_sockets.h"
#include "network/wire_text.h"

namespace veltrix {

/// Sends queued lines to the connected server sockets, one socket at a time: a tick of Timer6 or the end of a
/// send moves on to the next, so that no peer can hold up the others for longer than a tick. Owned by the
/// form.
class DetectionSender final : public DetectionBroadcaster {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        StationSockets& sockets;
        OnlineEntries& entries;
        Ping& ping;
        EventLoop& loop;
        std::function<HomeStation()> home;
        std::function<bool()> hasClientData;  ///< whether any client socket has had data since start
    };

    explicit DetectionSender(Parts parts);

    /// Until this station hears something from others, it announces its online list with every detection.
    void BroadcastDetection(const Detection& detection) override;
    void Timer6_Timer() override;
    void CloseStalePing() override { parts_.ping.CloseStalePing(); }

    /// Detections since start that connected peers were not offered, as too many were waiting.
    std::uint64_t DroppedLines() const { return dropped_; }

  private:
    bool HasPeer() const;

    Parts parts_;
    std::unique_ptr<Timer> Timer6;
    SendQueue queue_;
    std::uint64_t dropped_ = 0;
    std::string line_;          // being sent; empty when there is none
    std::int16_t iCursor_ = 0;  // the next server socket; their number: the line has been offered to all
};

}  // namespace veltrix
