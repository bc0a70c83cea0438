#include "recorder/frame_queue.h"

#include <algorithm>

namespace veltrix {

std::size_t FrameQueue::Push(std::span<const std::int16_t> samples) {
    std::size_t lost = 0;
    if (samples.size() > ring_.size()) {
        lost = (samples.size() - ring_.size()) / 2;
        samples = samples.last(ring_.size());
    }
    const std::size_t frames = samples.size() / 2;
    const std::size_t free = Capacity() - size_;
    if (frames > free) {
        lost += frames - free;
        Drop(frames - free);
    }
    std::size_t at = (first_ + size_) % Capacity() * 2;
    for (const std::int16_t sample : samples.first(2 * frames)) {
        ring_[at] = sample;
        at = at + 1 == ring_.size() ? 0 : at + 1;
    }
    size_ += frames;
    return lost;
}

void FrameQueue::Peek(std::span<std::int16_t> samples) const {
    const std::size_t upToEnd = std::min(samples.size(), ring_.size() - 2 * first_);
    const auto begin = ring_.begin();
    std::copy_n(begin + static_cast<std::ptrdiff_t>(2 * first_), upToEnd, samples.begin());
    std::copy_n(begin, samples.size() - upToEnd, samples.begin() + static_cast<std::ptrdiff_t>(upToEnd));
}

void FrameQueue::Drop(std::size_t frames) {
    first_ = (first_ + frames) % Capacity();
    size_ -= frames;
}

}  // namespace veltrix
