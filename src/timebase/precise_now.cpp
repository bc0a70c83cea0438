#include "timebase/precise_now.h"

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

DateTime PreciseNow::Now() {
    // By what the counter has moved since the last reading, in its own 32 bits.
    counter_ += static_cast<std::uint32_t>(clock_.timeGetTime()) - static_cast<std::uint32_t>(counter_);
    const DateTime now = clock_.Now();
    const double t = static_cast<double>(counter_) / 1000 / 86400;
    if (base_ == 0) base_ = now - t;
    return base_ + t;
}

std::string SecondsFraction(DateTime date) {
    const double shifted = (date - IntegerPart(date)) * 86400 + 0.5;
    return FormatNeutral(shifted - IntegerPart(shifted), "0.0000").substr(1, 4);
}

}  // namespace veltrix
