#include "network/send_queue.h"

#include <utility>

namespace veltrix {

bool SendQueue::EnqueueSend(std::string line) {
    const std::size_t next = (write_ + 1) % ring_.size();
    if (next == read_) return false;
    ring_[write_] = std::move(line);
    write_ = next;
    return true;
}

std::optional<std::string> SendQueue::DequeueSend() {
    if (read_ == write_) return {};
    std::string line = std::move(ring_[read_]);
    read_ = (read_ + 1) % ring_.size();
    return line;
}

}  // namespace veltrix
