#include "common/class_median.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/arithmetic.h"

namespace veltrix {

bool ClassMedian::Start(std::int32_t pMaxArraySize) {
    dSum = 0;
    lCount = 0;
    bDirty = false;
    lMax = pMaxArraySize;
    // The head stays where it was, for all slots are free; only a smaller ring must take it in.
    lHead %= lMax;
    const std::size_t slots = Place(lMax) + 1;
    Data.assign(slots, 0.0);
    Atch.assign(slots, 0.0);
    Order.assign(slots, -1);
    return false;
}

void ClassMedian::Insert(double v, std::int32_t k) {
    lCount = std::min(lCount + 1, lMax);
    dSum += v;
    Data[Place(lHead)] = v;
    Order[Place(k)] = lHead;
    lHead = (lHead + 1) % lMax;
    for (std::int32_t i = k - 1; i >= 0 && !(Sorted(i + 1) > Sorted(i)); --i)
        std::swap(Order[Place(i)], Order[Place(i + 1)]);
    for (std::int32_t i = k + 1; i < lCount && !(Sorted(i - 1) <= Sorted(i)); ++i)
        std::swap(Order[Place(i - 1)], Order[Place(i)]);
    bDirty = true;
}

bool ClassMedian::Update(double pData) {
    dLast = pData;
    dSum -= Data[Place(lHead)];
    const auto used = Order.begin() + lCount;
    Insert(pData, static_cast<std::int32_t>(std::find(Order.begin(), used, lHead) - Order.begin()));
    return false;
}

bool ClassMedian::Update2(double pData, double pAtch) {
    Atch[Place(lHead)] = pAtch;
    return Update(pData);
}

double ClassMedian::Median() {
    return Median2().dMedian;
}

ClassMedian::Tagged ClassMedian::Median2() {
    dPrevMedian = dMedian;
    Tagged result;
    if (lCount >= 1) {
        const std::int32_t place = Order[Place(RoundToLong((lCount - 1) / 2.0))];
        result = {Data[Place(place)], Atch[Place(place)]};
    }
    dMedian = result.dMedian;
    return result;
}

ClassMedian::AroundMiddle ClassMedian::MedianAbs(double pData, double pRange) {
    dPrevMedian = dMedian;
    AroundMiddle result{pData, 0};
    double sum = 0;
    const double c = lCount > 0 ? Sorted(RoundToLong(lCount / 2.0)) : 0;
    for (std::int32_t k = 0; k < lCount; ++k) {
        if (!(std::abs(Sorted(k) - c) < pRange)) continue;
        sum += Sorted(k);
        ++result.lCount;
        result.dMean = sum / result.lCount;
    }
    dMedian = result.dMean;
    return result;
}

double ClassMedian::Mean() const {
    return lCount > 0 ? dSum / lCount : 0;
}

double ClassMedian::MeanAtch() const {
    double sum = 0;
    for (std::int32_t k = 0; k < lCount; ++k) sum += Atch[Place(Order[Place(k)])];
    return lCount > 0 ? sum / lCount : 0;
}

double ClassMedian::Variance() const {
    if (lCount < 1) return 0;
    const double mean = Mean();
    double sum = 0;
    for (std::int32_t k = 0; k < lCount; ++k) {
        const double deviation = Sorted(k) - mean;
        sum += deviation * deviation;
    }
    return sum / lCount;
}

double ClassMedian::VarianceAtch() const {
    if (lCount < 1) return 0;
    const double mean = MeanAtch();
    double sum = 0;
    for (std::int32_t k = 0; k < lCount; ++k) {
        const double deviation = Atch[Place(Order[Place(k)])] - mean;
        sum += deviation * deviation;
    }
    return sum / lCount;
}

double ClassMedian::VarianceMean() const {
    const std::int32_t half = RoundToInteger(lCount / 2.0);
    const std::int32_t first = RoundToInteger(lCount / 4.0);
    if (half < 1) return 0;
    double sum = 0;
    for (std::int32_t k = first; k < first + half; ++k) sum += Sorted(k);
    const double mean = sum / half;
    double squares = 0;
    for (std::int32_t k = first; k < first + half; ++k) squares += (Sorted(k) - mean) * (Sorted(k) - mean);
    return squares / half;
}

double ClassMedian::CoVariance() const {
    if (lCount < 1) return 0;
    const double mean = Mean();
    const double meanAtch = MeanAtch();
    double sum = 0;
    for (std::int32_t k = 0; k < lCount; ++k)
        sum += (Atch[Place(Order[Place(k)])] - meanAtch) * (Sorted(k) - mean);
    return sum / lCount;
}

double ClassMedian::CoDefiance() const {
    const double mean = Mean();
    const double meanAtch = MeanAtch();
    double sum = 0;
    std::int32_t counted = 0;
    for (std::int32_t k = 0; k < lCount; ++k) {
        const double divisor = Atch[Place(Order[Place(k)])] - meanAtch;
        if (divisor == 0) continue;
        sum += (Sorted(k) - mean) / divisor;
        ++counted;
    }
    return counted > 0 ? sum / counted : 0;
}

double ClassMedian::Correlation() const {
    const double variance = Variance();
    const double varianceAtch = VarianceAtch();
    if (!(variance > 0 && varianceAtch > 0)) return 0;
    return CoVariance() / (std::sqrt(variance) * std::sqrt(varianceAtch));
}

double ClassMedian::MedianMean(double dLow, double dHigh) const {
    const std::int32_t low = std::max(RoundToLong(dLow * lCount / 100), 0);
    const std::int32_t high = std::min(RoundToLong(dHigh * lCount / 100), lCount - 1);
    double sum = 0;
    for (std::int32_t k = low; k <= high; ++k) sum += Sorted(k);
    return low <= high ? sum / (high - low + 1) : 0;
}

}  // namespace veltrix
