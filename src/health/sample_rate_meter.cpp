#include "health/sample_rate_meter.h"

#include <algorithm>
#include <utility>

namespace veltrix {

void SampleRateMeter::Block(std::int64_t milliseconds, std::uint64_t frames) {
    const std::int64_t gap = milliseconds - last_.milliseconds;
    if (!std::exchange(hasBegun_, true) || gap > BreakSeconds * 1000) {
        begun_ = milliseconds;
        count_ = 0;
    }
    last_ = {milliseconds, frames, std::max(gap, BlockJitter)};
    if (milliseconds - begun_ < SettleSeconds * 1000) return;
    if (count_ > 0 && milliseconds - marks_[newest_].milliseconds < BetweenMarks) return;
    newest_ = (newest_ + 1) % marks_.size();
    marks_[newest_] = last_;
    count_ = std::min(count_ + 1, marks_.size());
}

std::optional<MeasuredRate> SampleRateMeter::Measured() const {
    if (count_ == 0) return std::nullopt;
    const Mark& first = marks_[(newest_ + marks_.size() + 1 - count_) % marks_.size()];
    const double seconds = static_cast<double>(last_.milliseconds - first.milliseconds) / 1000;
    if (seconds < LeastSeconds) return std::nullopt;
    const double rate = static_cast<double>(last_.frames - first.frames) / seconds;
    return MeasuredRate{rate, rate * static_cast<double>(first.gap + last_.gap) / 1000 / seconds, seconds};
}

}  // namespace veltrix
