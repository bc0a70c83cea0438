#include "platform/qt/held_requests.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace veltrix {

using std::chrono::steady_clock;

HeldRequests::HeldRequests(std::chrono::milliseconds age) : age_(age) {
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, [this] { GiveUpAged(); });
}

ConnectionRequest HeldRequests::Hold(InetSocket socket, std::string address) {
    if (entries_.size() >= Most) GiveUpOldest();
    last_ = last_ == std::numeric_limits<ConnectionRequest>::max() ? 1 : last_ + 1;
    entries_.push_back({last_, steady_clock::now() + age_, {std::move(socket), std::move(address)}});
    if (!timer_.isActive()) timer_.start(age_);
    return last_;
}

std::optional<HeldRequests::Held> HeldRequests::Take(ConnectionRequest request) {
    const auto found = std::ranges::find(entries_, request, &Entry::request);
    if (found == entries_.end()) return std::nullopt;
    Held held = std::move(found->held);
    entries_.erase(found);
    return held;
}

void HeldRequests::GiveUpOldest() {
    entries_.front().held.socket.EndOrderly();
    entries_.pop_front();
}

void HeldRequests::GiveUpAged() {
    const auto now = steady_clock::now();
    while (!entries_.empty() && entries_.front().end <= now) GiveUpOldest();
    if (entries_.empty()) return;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(entries_.front().end - now);
    timer_.start(left);
}

}  // namespace veltrix
