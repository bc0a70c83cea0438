#pragma once
// One TCP socket of a station on the computer's network.

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <string>
#include <string_view>

#include "platform/qt/inet_socket.h"
#include "platform/qt/qt_sockets.h"

namespace veltrix {

/// A socket of the operating system, watched by the event loop.
class QtSocket final : public Socket {
  public:
    explicit QtSocket(QtSockets& sockets) : sockets_(sockets) {}
    ~QtSocket() override { Close(); }

    SocketState State() const override { return state_; }
    const std::string& RemoteHostIP() const override { return remoteHostIP_; }
    std::string LocalIP() const override;
    std::size_t BytesReceived() const override { return received_.size(); }

    void Listen() override;
    bool Accept(ConnectionRequest request) override;
    void Connect() override;
    void SendData(std::string_view text) override;
    std::string GetData() override;
    void Close() override;

  private:
    /// Raises WrongSocketState unless the socket is in `state`.
    void Require(SocketState state, const char* operation) const;

    void Resolve();
    void Resolved(std::string address);
    void StartConnecting();
    /// Opens, binds and connects; the error is EINPROGRESS when all is well.
    int TryToConnect(int localPort);
    void ConnectionDecided();
    void TakeConnection();

    void TakeRequest();
    void TakeBytes();
    void SendUnsent();
    /// Ends the connection in state Error and tells so.
    void Fail(const SocketError& error);

    /// Runs a handler of the owner. What the socket was doing may have ended behind it.
    void Tell(const std::function<void()>& handler);
    /// Runs `step` from the loop, unless what the socket is doing has ended by then.
    void Later(void (QtSocket::*step)());
    /// Runs `step` whenever the system's socket is ready for it; in the place of an earlier one.
    void Watch(QSocketNotifier::Type type, void (QtSocket::*step)());
    /// Lets go of all that the present activity has; nothing of it that waits in the loop will run.
    void EndActivity();

    /// What one activity, from Listen(), Accept() or Connect() to its end, has on the loop. Destroying it
    /// takes all of that back, but for a lookup, whose answer then goes nowhere.
    struct Activity : QObject {
        QSocketNotifier* readable = nullptr;
        QSocketNotifier* writable = nullptr;
    };

    QtSockets& sockets_;
    SocketState state_ = SocketState::Closed;
    std::string remoteHostIP_;
    InetSocket socket_;
    std::string received_;
    std::string unsent_;
    int sendError_ = 0;  // what a Send() ran into, until the reading side gets there
    Endpoint wanted_;    // where Connect() goes
    int wantedLocalPort_ = 0;
    Activity* activity_ = nullptr;
};

}  // namespace veltrix
