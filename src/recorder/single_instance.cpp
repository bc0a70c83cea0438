#include "recorder/single_instance.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>

#include "common/failure.h"

namespace veltrix {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto LookInterval = std::chrono::milliseconds(20);

struct Address {
    sockaddr_un name{};
    socklen_t length = 0;

    const sockaddr* Name() const { return reinterpret_cast<const sockaddr*>(&name); }
};

/// 64-bit hash of Fowler, Noll and Vo, variant 1a.
std::uint64_t HashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return hash;
}

Address AddressOf(const std::filesystem::path& block) {
    std::error_code error;
    std::filesystem::path full = std::filesystem::weakly_canonical(std::filesystem::absolute(block), error);
    if (error) full = std::filesystem::absolute(block).lexically_normal();
    Address address;
    address.name.sun_family = AF_UNIX;
    // A leading NUL makes a name that is no file.
    const int length = std::snprintf(address.name.sun_path + 1, sizeof address.name.sun_path - 1,
                                     "veltrix-SndInput-%u-%016llx", static_cast<unsigned>(::geteuid()),
                                     static_cast<unsigned long long>(HashOf(full.string())));
    address.length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(length));
    return address;
}

int NewSocket() {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        throw Failure(errors::DeviceIo, std::string("no local socket: ") + std::strerror(errno), "recorder");
    return socket;
}

/// Asks the holder of the name to end. False when nobody holds it.
bool Ask(const Address& address) {
    const int socket = NewSocket();
    const bool isHeld = ::connect(socket, address.Name(), address.length) == 0 || errno == EAGAIN;
    ::close(socket);
    return isHeld;
}

}  // namespace

SingleInstance::SingleInstance(const std::filesystem::path& block, std::chrono::milliseconds limit) {
    const Address address = AddressOf(block);
    const Clock::time_point end = Clock::now() + limit;
    socket_ = NewSocket();
    while (::bind(socket_, address.Name(), address.length) != 0 || ::listen(socket_, 8) != 0) {
        const int error = errno;
        if (error != EADDRINUSE || Clock::now() >= end) {
            ::close(socket_);
            throw Failure(errors::PermissionDenied,
                          error == EADDRINUSE ? "the earlier recorder of " + block.string() + " does not end"
                                              : std::string("no local socket: ") + std::strerror(error),
                          "recorder");
        }
        Ask(address);
        std::this_thread::sleep_for(LookInterval);
    }
}

SingleInstance::~SingleInstance() {
    ::close(socket_);
}

bool SingleInstance::IsAskedToEnd() {
    int peer = -1;
    while ((peer = ::accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0) {
        ucred who{};
        socklen_t length = sizeof who;
        // The name is open to every user of the computer; only our own may give orders.
        if (::getsockopt(peer, SOL_SOCKET, SO_PEERCRED, &who, &length) == 0 && who.uid == ::geteuid())
            isAsked_ = true;
        ::close(peer);
    }
    return isAsked_;
}

SingleInstance::Stopped SingleInstance::Stop(const std::filesystem::path& block,
                                             std::chrono::milliseconds limit) {
    const Address address = AddressOf(block);
    if (!Ask(address)) return Stopped::NoneRuns;
    const Clock::time_point end = Clock::now() + limit;
    while (Clock::now() < end) {
        std::this_thread::sleep_for(LookInterval);
        if (!Ask(address)) return Stopped::Ended;
    }
    return Stopped::StillRuns;
}

}  // namespace veltrix
