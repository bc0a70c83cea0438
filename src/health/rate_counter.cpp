#include "health/rate_counter.h"

#include <algorithm>
#include <utility>

namespace veltrix {

void RateCounter::Count(std::uint32_t events) {
    seconds_[now_] += events;
    minute_ += events;
    hour_ += events;
    total_ += events;
}

void RateCounter::Advance(std::int64_t second) {
    if (!std::exchange(started_, true)) second_ = second;
    if (second <= second_) return;
    const auto steps = std::min<std::int64_t>(second - second_, Hour);
    second_ = second;
    for (std::int64_t i = 0; i < steps; ++i) Step();
}

void RateCounter::Step() {
    now_ = (now_ + 1) % Hour;
    hour_ -= std::exchange(seconds_[now_], 0);
    minute_ -= seconds_[(now_ + Hour - Minute) % Hour];
}

}  // namespace veltrix
