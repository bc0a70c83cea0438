#pragma once
// Connections that ask to be let in and that nobody has accepted yet.

#include <QTimer>
#include <chrono>
#include <deque>
#include <optional>
#include <string>

#include "platform/qt/inet_socket.h"
#include "platform/sockets.h"

namespace veltrix {

/// Holds the connections without a word: the oldest is given up past 64, and each after `age`. What the other
/// end sends meanwhile stays in the operating system.
class HeldRequests {
  public:
    /// The number of connections that are held at most.
    static constexpr std::size_t Most = 64;

    explicit HeldRequests(std::chrono::milliseconds age);

    /// Keeps a connection and gives it its name.
    ConnectionRequest Hold(InetSocket socket, std::string address);

    /// A connection and who asks for it.
    struct Held {
        InetSocket socket;
        std::string address;  ///< of the other end
    };
    /// Hands a connection over; nothing when it was given up, or taken before.
    std::optional<Held> Take(ConnectionRequest request);

    /// Connections held at present.
    std::size_t Count() const { return entries_.size(); }

  private:
    struct Entry {
        ConnectionRequest request;
        std::chrono::steady_clock::time_point end;
        Held held;
    };
    void GiveUpOldest();
    void GiveUpAged();

    std::chrono::milliseconds age_;
    std::deque<Entry> entries_;  // the oldest in front
    ConnectionRequest last_ = 0;
    QTimer timer_;  // runs out with the oldest
};

}  // namespace veltrix
