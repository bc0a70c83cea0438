#pragma once
// The other end of the control socket.

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace veltrix {

/// What a station answered.
struct ControlAnswer {
    std::vector<std::string> lines;  ///< all lines, the last one "ok" or "error " and a text
    std::string failure;             ///< why there is no whole answer, in one line; empty when there is one
};

/// Sends one request to the station that serves on the socket `path` and waits for its answer. Line ends in
/// the request become blanks. A map that is drawn anew can take a while: the default limit is generous.
ControlAnswer AskStation(const std::string& path, std::string_view request,
                         std::chrono::milliseconds limit = std::chrono::minutes(2));

}  // namespace veltrix
