#pragma once
// The local socket through which a station is operated from outside.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veltrix {

/// Answers requests, one a line, of any number of clients. Only the user whom the station runs for can
/// connect.
///
/// A client whose request is longer than 64 KiB is told so and let go, and so is one that leaves more than 1
/// MiB of answers unread. Each client's requests are answered one after the other, in turn with those of the
/// others; they are carried out also when the client has gone meanwhile.
class ControlServer {
  public:
    /// Answers a request with lines, without their line ends. It may run events and may end the server. A
    /// Failure that leaves it is answered with one line, "error " and its description.
    using Answerer = std::function<std::vector<std::string>(std::string_view request)>;

    explicit ControlServer(Answerer answerer);
    ~ControlServer();
    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    /// Makes the socket `path` and begins to serve. What an ended program left there is replaced. Returns why
    /// it cannot be done, in one line: another program serves there, or the name is taken or cannot be made.
    /// Empty on success.
    std::string Listen(const std::string& path);

  private:
    class Listener;
    std::unique_ptr<Listener> listener_;
};

}  // namespace veltrix
