#include "platform/qt/inet_socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "common/failure.h"

namespace veltrix {

namespace {

/// Connections that may wait in the operating system until the loop comes round to them.
constexpr int Backlog = 64;

sockaddr_in SystemFormOf(const Endpoint& endpoint) {
    sockaddr_in form{};
    form.sin_family = AF_INET;
    form.sin_port = htons(static_cast<std::uint16_t>(endpoint.port));
    ::inet_pton(AF_INET, endpoint.address.c_str(), &form.sin_addr);
    return form;
}

std::string TextOf(const sockaddr_in& form) {
    std::array<char, INET_ADDRSTRLEN> text{};
    ::inet_ntop(AF_INET, &form.sin_addr, text.data(), text.size());
    return text.data();
}

void SwitchOn(int descriptor, int level, int option) {
    const int on = 1;
    ::setsockopt(descriptor, level, option, &on, sizeof on);
}

/// Lines are short and shall go at once; the system asks after connections that are silent for long.
void PrepareForLines(int descriptor) {
    SwitchOn(descriptor, IPPROTO_TCP, TCP_NODELAY);
    SwitchOn(descriptor, SOL_SOCKET, SO_KEEPALIVE);
}

int ErrorIf(bool failed) {
    return failed ? errno : 0;
}

struct ErrorRow {
    int error;  ///< an errno, 0 for none
    int number;
    const char* text;
};

constexpr ErrorRow ErrorRows[] = {
    {EACCES, 10013, "Permission denied"},
    {EPERM, 10013, "Permission denied"},
    {EMFILE, 10024, "Too many open sockets"},
    {ENFILE, 10024, "Too many open sockets"},
    {EADDRINUSE, errors::AddressInUse, "Address in use"},
    {EADDRNOTAVAIL, 10049, "Address is not available"},
    {EINVAL, 10049, "Address is not available"},
    {ENETDOWN, 10050, "Network is down"},
    {ENETUNREACH, 10051, "Network is unreachable"},
    {ECONNABORTED, 10053, "Connection is aborted"},
    {ECONNRESET, 10054, "Connection is reset by the remote side"},
    {EPIPE, 10054, "Connection is reset by the remote side"},
    {ENOBUFS, 10055, "No buffer space is available"},
    {ENOMEM, 10055, "No buffer space is available"},
    {ETIMEDOUT, 10060, "The attempt to connect timed out"},
    {ECONNREFUSED, 10061, "Connection is forcefully rejected"},
    {EHOSTUNREACH, 10065, "Host is unreachable"},
    {0, HostNotFound, "Host not found"},
};

}  // namespace

bool IsDotted(const std::string& address) {
    in_addr form{};
    if (address.find('\0') != std::string::npos) return false;
    return ::inet_pton(AF_INET, address.c_str(), &form) == 1;
}

InetSocket::~InetSocket() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

InetSocket& InetSocket::operator=(InetSocket&& other) noexcept {
    if (this == &other) return *this;
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = std::exchange(other.descriptor_, -1);
    return *this;
}

int InetSocket::Open() {
    *this = InetSocket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    return ErrorIf(descriptor_ < 0);
}

int InetSocket::Bind(const Endpoint& own) {
    if (own.port != 0) SwitchOn(descriptor_, SOL_SOCKET, SO_REUSEADDR);
    const sockaddr_in form = SystemFormOf(own);
    return ErrorIf(::bind(descriptor_, reinterpret_cast<const sockaddr*>(&form), sizeof form) != 0);
}

int InetSocket::Listen() {
    return ErrorIf(::listen(descriptor_, Backlog) != 0);
}

int InetSocket::Connect(const Endpoint& other) {
    PrepareForLines(descriptor_);
    const sockaddr_in form = SystemFormOf(other);
    return ErrorIf(::connect(descriptor_, reinterpret_cast<const sockaddr*>(&form), sizeof form) != 0);
}

int InetSocket::TakeError() {
    int error = 0;
    socklen_t size = sizeof error;
    return ::getsockopt(descriptor_, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

InetSocket::Accepted InetSocket::Accept() {
    sockaddr_in form{};
    socklen_t size = sizeof form;
    const int descriptor =
        ::accept4(descriptor_, reinterpret_cast<sockaddr*>(&form), &size, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor < 0) return {{}, {}, errno};
    PrepareForLines(descriptor);
    return {InetSocket(descriptor), TextOf(form), 0};
}

InetSocket::Read InetSocket::Receive(std::size_t limit) {
    std::string bytes(limit, '\0');
    const ssize_t count = ::recv(descriptor_, bytes.data(), bytes.size(), 0);
    if (count < 0) return {{}, errno == EINTR ? EAGAIN : errno};
    bytes.resize(static_cast<std::size_t>(count));
    return {std::move(bytes), 0};
}

InetSocket::Written InetSocket::Send(std::string_view bytes) {
    const ssize_t count = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count >= 0) return {static_cast<std::size_t>(count), 0};
    return {0, errno == EAGAIN || errno == EINTR ? 0 : errno};
}

bool InetSocket::IsOver() {
    char next = 0;
    const ssize_t count = ::recv(descriptor_, &next, 1, MSG_PEEK);
    return count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
}

std::string InetSocket::OwnAddress() const {
    sockaddr_in form{};
    socklen_t size = sizeof form;
    if (::getsockname(descriptor_, reinterpret_cast<sockaddr*>(&form), &size) != 0) return AnyAddress;
    return TextOf(form);
}

void InetSocket::EndOrderly() {
    if (descriptor_ < 0) return;
    ::shutdown(descriptor_, SHUT_WR);
    constexpr int MostReads = 16;  // a peer that keeps sending is cut off after all
    std::array<char, 65536> unread;
    for (int read = 0; read < MostReads; ++read)
        if (::recv(descriptor_, unread.data(), unread.size(), 0) <= 0) break;
    *this = InetSocket();
}

SocketError SocketErrorOf(int error) {
    for (const ErrorRow& row : ErrorRows)
        if (error != 0 && row.error == error) return {row.number, row.text};
    return SocketErrorOf(ENETDOWN);
}

SocketError SocketErrorOfNumber(int number) {
    for (const ErrorRow& row : ErrorRows)
        if (row.number == number) return {row.number, row.text};
    return SocketErrorOf(ENETDOWN);
}

}  // namespace veltrix
