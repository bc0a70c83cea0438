#pragma once
// Connections that their owners have closed while bytes were still on their way.

#include <QObject>
#include <chrono>
#include <string>

#include "platform/qt/inet_socket.h"

namespace veltrix {

/// Sends the rest on such a connection for as long as `patience`, then ends it, orderly when all was taken.
/// Of more than 64 the oldest ends at once, and so do all when this is destroyed.
class LastWords {
  public:
    /// The number of connections that are kept at most.
    static constexpr int Most = 64;

    explicit LastWords(std::chrono::milliseconds patience) : patience_(patience) {}

    /// Takes over a connection and what is still to be sent on it.
    void Send(InetSocket socket, std::string unsent);

  private:
    class Connection;

    std::chrono::milliseconds patience_;
    QObject connections_;  // owns them
};

}  // namespace veltrix
