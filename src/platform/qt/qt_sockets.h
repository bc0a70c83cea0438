#pragma once
// The TCP sockets of a station on the computer's network.

#include <memory>
#include <string>

#include "platform/qt/held_requests.h"
#include "platform/qt/last_words.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/sockets.h"

namespace veltrix {

/// They work on the system's own sockets, watched by the event loop: the sockets of Qt take a connection that
/// was cut off for one that was closed. No more than 64 KiB of what arrives are kept until they are read; a
/// peer that sends more has to wait.
///
/// Events of sockets go on while timers are held.
class QtSockets final : public Sockets {
  public:
    /// `address` is the dotted one that everything happens from; AnyAddress leaves that to the system.
    /// REQUIRES that the loop outlives this object.
    QtSockets(QtEventLoop& loop, std::string address);

    std::unique_ptr<Socket> MakeSocket() override;

    /// What its sockets work with: the loop their events come from and the address of the station.
    QtEventLoop& Loop() { return loop_; }
    const std::string& Address() const { return address_; }
    /// Of all sockets: a request may be accepted on another socket than the one that told of it.
    HeldRequests& Requests() { return requests_; }
    LastWords& Closing() { return closing_; }

  private:
    QtEventLoop& loop_;
    std::string address_;
    HeldRequests requests_;
    LastWords closing_;
};

}  // namespace veltrix
