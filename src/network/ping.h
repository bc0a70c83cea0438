#pragma once
// The quiet ping: a short connection to a station, whose greeting is its sign of life.

#include <cstdint>
#include <string>

#include "network/class_online.h"
#include "network/presence.h"
#include "network/receivers.h"
#include "network/station_list.h"
#include "network/station_record.h"
#include "network/station_sockets.h"
#include "platform/event_loop.h"
#include "timebase/c_stop_watch_mm.h"

namespace veltrix {

/// Every five seconds the next station that has not been heard of for 25 minutes. One ping at a time. Owned
/// by the form.
class Ping {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        StationSockets& sockets;
        StationList& list;
        Presence& presence;
        ClassOnline& online;
        const NetworkReceivers& receivers;
        EventLoop& loop;
        Clock& clock;
        ErrorReporter& errors;
        TextBox& txtLastPing;
        TextBox& txtBadPing;
        ListBox& lstOnline;
    };

    explicit Ping(const Parts& parts);

    /// Once a second.
    void PingTick();
    /// A ping to this address is to be shown; one that had no answer is told of, unless the address is known.
    void ShowPing(const std::string& address);
    /// Connects to `sIP`; a ping still out is closed, which blocks the program for 100 ms, once a second at
    /// most. Returns the lowest row that IsStation() of this address without a name, or NoRow.
    std::int16_t StationListPingUpdate(const std::string& sIP);
    /// Ten times a second: closes a ping that has had no answer for 2000 ms.
    void CloseStalePing();

  private:
    void sckPing_DataArrival();
    void TakeAnswer(const std::string& text, const std::string& sLocalIP);
    void TakeGreeting(std::int16_t row, const Station& record, const std::string& text);
    void Show(const std::string& target);

    Parts parts_;
    Socket& sckPing;
    CStopWatchMM stopwatch_;       // since the last connect
    CStopWatchMM sinceWait_;       // since the program was last blocked for a ping
    std::string sLastPing_;        // the last target; empty once it has answered
    std::int16_t iTick_ = 0;       // 0 to 4
    std::int16_t iRow_ = 0;        // the row last looked at, 1 to 100
    std::int16_t iLocalPort_ = 0;  // 0 to 9
};

}  // namespace veltrix
