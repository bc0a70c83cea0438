#pragma once
// The send queue: lines that wait to be sent to all peers.

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace veltrix {

/// A ring of 100 places, of which 99 can be filled. Owned by who sends.
class SendQueue {
  public:
    /// Puts a line at the end. A line for a full ring is dropped without a word; false tells of it.
    bool EnqueueSend(std::string line);
    /// Takes the first line; none from an empty ring.
    std::optional<std::string> DequeueSend();

  private:
    std::array<std::string, 100> ring_;
    std::size_t write_ = 0;
    std::size_t read_ = 0;
};

}  // namespace veltrix
