#pragma once
// TCP sockets of the operating system: what owns them, IPv4 addresses and the numbers of their errors.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace veltrix {

/// Stands for any address of this computer.
inline constexpr const char* AnyAddress = "0.0.0.0";

/// An IPv4 address and a port. REQUIRES a dotted address.
struct Endpoint {
    std::string address = AnyAddress;
    int port = 0;
};

/// True for four decimal numbers with points between.
bool IsDotted(const std::string& address);

/// Owns a socket of the operating system, or none. Such sockets never block, and started programs do not
/// inherit them. The calls that can fail return an errno, 0 on success.
class InetSocket {
  public:
    InetSocket() = default;
    ~InetSocket();
    InetSocket(InetSocket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    InetSocket& operator=(InetSocket&& other) noexcept;

    explicit operator bool() const { return descriptor_ >= 0; }
    /// The descriptor; -1 when it owns none.
    int Descriptor() const { return descriptor_; }

    /// Makes the socket, in place of what it held.
    int Open();
    /// Takes `own` for its own end. A port that a former connection still waits on can be had again.
    int Bind(const Endpoint& own);
    int Listen();
    /// EINPROGRESS is no failure: the socket is writable when it is decided.
    int Connect(const Endpoint& other);
    /// What a connection that was in progress has come to.
    int TakeError();

    struct Accepted;
    /// The next connection that waits at a listening socket.
    Accepted Accept();

    /// What has arrived.
    struct Read {
        std::string bytes;
        int error = 0;  ///< EAGAIN when nothing has arrived; nothing and no error is the end
    };
    /// At most `limit` bytes of what has arrived.
    Read Receive(std::size_t limit);

    /// How much was taken; an error is EAGAIN when the system has no room.
    struct Written {
        std::size_t count = 0;
        int error = 0;
    };
    /// As many bytes as the system takes at present, possibly none.
    Written Send(std::string_view bytes);

    /// True when nothing has arrived and nothing will: the other end has closed or is gone.
    bool IsOver();
    std::string OwnAddress() const;

    /// Closes the connection so that the other end gets all that was sent, and then the end: what it has sent
    /// and nobody read would make the system cut the connection off.
    void EndOrderly();

  private:
    explicit InetSocket(int descriptor) : descriptor_(descriptor) {}

    int descriptor_ = -1;
};

/// A connection that was let in; without an error it is one.
struct InetSocket::Accepted {
    InetSocket socket;
    std::string address;  ///< of the other end
    int error = 0;
};

/// A failure as the owner of a socket hears of it.
struct SocketError {
    int number = 0;
    std::string description;
};

/// The number of the failure that a host name has no address.
inline constexpr int HostNotFound = 11001;

/// The number and text that stand for an errno.
SocketError SocketErrorOf(int error);
/// The text of such a number.
SocketError SocketErrorOfNumber(int number);

}  // namespace veltrix
