#include "timebase/precise_now.h"

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

DateTime PreciseNow::Now() {
    const double milliseconds = clock_.timeGetTime();
    const DateTime now = clock_.Now();
    const double t = milliseconds / 1000 / 86400;
    if (base_ == 0) base_ = now - t;
    return base_ + t;
}

std::string SecondsFraction(DateTime date) {
    const double shifted = (date - IntegerPart(date)) * 86400 + 0.5;
    return FormatNeutral(shifted - IntegerPart(shifted), "0.0000").substr(1, 4);
}

}  // namespace veltrix
