#pragma once
// TCP sockets in the shape of an event-driven control: properties, operations, ten states and events. IPv4.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace veltrix {

/// The states of a socket. The numbers are shown to users and stand in conditions such as "above 0".
enum class SocketState : std::int16_t {
    Closed = 0,
    Open = 1,
    Listening = 2,
    ConnectionPending = 3,
    ResolvingHost = 4,
    HostResolved = 5,
    Connecting = 6,
    Connected = 7,
    PeerIsClosing = 8,
    Error = 9
};

/// Names one station that asks to be let in, until it is accepted or given up.
using ConnectionRequest = std::int32_t;

/// One socket. It listens, or carries one connection, one after the other as often as wished. It is Closed
/// when made.
///
/// Events come from the event loop, never from inside a call of the socket itself. A handler may do anything
/// with the socket but destroy it. A Failure that leaves a handler ends that handler only.
///
/// All addresses are dotted IPv4. What the socket does on the network it does from the address that the
/// station was given, or from any when it was given none.
class Socket {
  public:
    virtual ~Socket() = default;

    /// What the socket is about at this moment.
    virtual SocketState State() const = 0;

    /// The port that Listen() serves or that the next connection goes out from; 0 lets the system choose. Of
    /// an accepted connection it is a number of its owner's, with no meaning on the network.
    std::int32_t LocalPort = 0;
    /// Where Connect() goes: a dotted address or a host name, and the port there.
    std::string RemoteHost;
    std::int32_t RemotePort = 0;
    /// Free text that the owner keeps with the socket.
    std::string Tag;
    /// Texts that SendData() has dropped since the socket was made, as the peer did not read.
    std::uint64_t Dropped = 0;

    /// The address of the other end: of the connection, of the last one when there is none, or, while
    /// listening, of the station that asked last. Empty before any is known.
    virtual const std::string& RemoteHostIP() const = 0;
    /// The address of this end: of the connection; without one the station's own, which is that of the
    /// computer when the station was given none.
    virtual std::string LocalIP() const = 0;
    /// Bytes that have arrived and that GetData() would return.
    virtual std::size_t BytesReceived() const = 0;

    /// Begins to listen on LocalPort. REQUIRES Closed. Raises AddressInUse when the port cannot be had; the
    /// socket stays Closed then.
    virtual void Listen() = 0;
    /// Takes the connection that a request stands for; false when that station has gone meanwhile, and the
    /// socket stays Closed. REQUIRES Closed, whichever socket has told of the request.
    virtual bool Accept(ConnectionRequest request) = 0;
    /// Connects to RemoteHost and RemotePort. REQUIRES Closed. The states are ResolvingHost, HostResolved,
    /// Connecting, Connected; a failure, an empty host and 0.0.0.0 end in Error, told by OnError.
    virtual void Connect() = 0;
    /// The same, having set both.
    void Connect(std::string host, std::int32_t port) {
        RemoteHost = std::move(host);
        RemotePort = port;
        Connect();
    }
    /// Sends bytes as they are. A peer that does not read costs at most 1 MiB: a text that would go beyond it
    /// is dropped whole until the peer drains. Raises WrongSocketState unless Connected.
    virtual void SendData(std::string_view text) = 0;
    /// All bytes that have arrived and were not fetched yet, in every state until Close(). At most 64 KiB
    /// wait for it; a peer that has sent more waits as well.
    virtual std::string GetData() = 0;
    /// Ends whatever goes on; the socket is Closed at once, and no event of what it did comes any more. What
    /// was sent before still leaves, if the peer takes it soon. Nothing happens when it is Closed.
    virtual void Close() = 0;

    /// A station asks to be let in. One that is not accepted is held without a word: the oldest is given up
    /// past 64, and each after 60 s.
    std::function<void(ConnectionRequest)> OnConnectionRequest;
    std::function<void()> OnConnect;      ///< the connection asked for by Connect() stands
    std::function<void()> OnDataArrival;  ///< bytes have arrived, with or without earlier ones left unread
    std::function<void()> OnClose;        ///< the peer has closed: PeerIsClosing, after all of its data
    std::function<void(int number, const std::string& description)> OnError;  ///< the state is Error
    std::function<void()> OnSendComplete;                                     ///< all sent bytes have left
};

/// Makes the sockets of one station.
class Sockets {
  public:
    virtual ~Sockets() = default;
    /// REQUIRES that this object outlives the socket.
    virtual std::unique_ptr<Socket> MakeSocket() = 0;
};

}  // namespace veltrix
