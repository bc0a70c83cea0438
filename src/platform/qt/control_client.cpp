#include "platform/qt/control_client.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace veltrix {

namespace {

using Moment = std::chrono::steady_clock::time_point;

class Connection {
  public:
    Connection(const std::string& path, Moment end) : end_(end) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.size() >= sizeof address.sun_path) throw std::runtime_error("the name is too long");
        std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
        socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (socket_ < 0 ||
            ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            const int error = errno;
            if (socket_ >= 0) ::close(socket_);
            throw std::runtime_error(std::strerror(error));
        }
    }
    ~Connection() { ::close(socket_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Send(std::string_view text) {
        while (!text.empty()) {
            Await(POLLOUT);
            const ssize_t sent = ::send(socket_, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (sent < 0 && errno != EAGAIN && errno != EINTR) throw std::runtime_error(std::strerror(errno));
            text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
        }
    }

    std::string ReadLine() {
        std::size_t end = received_.find('\n');
        while (end == std::string::npos) {
            Await(POLLIN);
            std::array<char, 65536> buffer;
            const ssize_t count = ::recv(socket_, buffer.data(), buffer.size(), MSG_DONTWAIT);
            if (count == 0) throw std::runtime_error("the station closed the connection");
            if (count < 0 && errno != EAGAIN && errno != EINTR)
                throw std::runtime_error(std::strerror(errno));
            received_.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
            end = received_.find('\n');
        }
        std::string line = received_.substr(0, end);
        received_.erase(0, end + 1);
        return line;
    }

  private:
    void Await(short events) {
        using std::chrono::milliseconds;
        const auto left = std::chrono::duration_cast<milliseconds>(end_ - std::chrono::steady_clock::now());
        pollfd watched{socket_, events, 0};
        const int ready = left.count() > 0 ? ::poll(&watched, 1, static_cast<int>(left.count())) : 0;
        if (ready == 0) throw std::runtime_error("no answer in time");
    }

    int socket_ = -1;
    Moment end_;
    std::string received_;
};

}  // namespace

ControlAnswer AskStation(const std::string& path, std::string_view request, std::chrono::milliseconds limit) {
    std::string line(request);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    ControlAnswer answer;
    try {
        Connection connection(path, std::chrono::steady_clock::now() + limit);
        connection.Send(line + "\n");
        do {
            answer.lines.push_back(connection.ReadLine());
        } while (answer.lines.back() != "ok" && !answer.lines.back().starts_with("error "));
    } catch (const std::runtime_error& error) {
        answer.failure = path + ": " + error.what();
    }
    return answer;
}

}  // namespace veltrix
