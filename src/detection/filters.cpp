#include "detection/filters.h"

#include <algorithm>

namespace veltrix {

namespace {

constexpr std::array<double, 16> dCos = {0.5, 0, -0.5, 0, 0.5, 0, -0.5, 0, 0.5, 0, -0.5, 0, 0.5, 0, -0.5, 0};
constexpr std::array<double, 16> dSin = {0, 0.5, 0, -0.5, 0, 0.5, 0, -0.5, 0, 0.5, 0, -0.5, 0, 0.5, 0, -0.5};
constexpr std::array<double, 8> dSign = {0.5, -0.5, 0.5, -0.5, 0.5, -0.5, 0.5, -0.5};

constexpr std::size_t Taps = dSign.size();
constexpr std::size_t Reach = Taps - 1;  // inputs before the present one that an output rests on

/// x(n) - x(n-1) + x(n-2) - ... - x(n-7)
inline std::int32_t AlternatingSum(const std::int32_t* x) {
    return x[0] - x[-1] + x[-2] - x[-3] + x[-4] - x[-5] + x[-6] - x[-7];
}

}  // namespace

double ClassNotchFilter::Filter(double dD) {
    const auto i = static_cast<std::size_t>(iIndex);
    dSum -= dRing[i];
    dRing[i] = dCos[i] * dD;
    dSum += dRing[i];
    dSumQ -= dRingQ[i];
    dRingQ[i] = dSin[i] * dD;
    dSumQ += dRingQ[i];
    const double output = (dSumQ * dSin[i] + dSum * dCos[i]) * 5.0;
    iIndex = static_cast<std::int16_t>((iIndex + 1) % 16);
    return output;
}

double ClassNotchFilter::Filter2(double dD, std::int32_t) {
    const auto i = static_cast<std::size_t>(iIndex);
    dSum -= dRing[i];
    dRing[i] = dSign[i] * dD;
    dSum += dRing[i];
    const double output = dSum * dSign[i] * 0.5;
    iIndex = static_cast<std::int16_t>((i + 1) % Taps);
    return output;
}

void ClassNotchFilter::Filter2Ahead(std::span<const std::int32_t> in, std::span<std::int32_t> out8) const {
    // The outputs that still reach back behind the row, from a copy of what the ring holds of the inputs.
    std::array<std::int32_t, 2 * Reach> edge{};
    const auto start = static_cast<std::size_t>(iIndex);
    for (std::size_t k = 1; k < Taps; ++k) {
        const std::size_t place = (start + Taps - k) % Taps;
        edge[Reach - k] = static_cast<std::int32_t>(dRing[place] / dSign[place]);
    }
    const std::size_t early = std::min(Reach, in.size());
    std::copy_n(in.begin(), early, edge.begin() + Reach);
    for (std::size_t i = 0; i < early; ++i) out8[i] = AlternatingSum(edge.data() + Reach + i);
    const std::int32_t* const x = in.data();
    std::int32_t* const out = out8.data();
    for (std::size_t i = Reach; i < in.size(); ++i) out[i] = AlternatingSum(x + i);
}

void ClassNotchFilter::Filter2Pass(std::span<const std::int32_t> in) {
    const std::size_t last = std::min(in.size(), Taps);
    auto i = (static_cast<std::size_t>(iIndex) + in.size() - last) % Taps;
    for (const std::int32_t x : in.last(last)) {
        dRing[i] = dSign[i] * x;
        i = (i + 1) % Taps;
    }
    iIndex = static_cast<std::int16_t>(i);
    dSum = 0;
    for (std::size_t k = 0; k < Taps; ++k) dSum += dRing[k];
}

void ClassLowPassFilter::Init(double pTau, double pValue) {
    if (pTau > 1 && pTau < 32000) dTau = pTau;
    dValue = pValue;
}

double ClassLowPassFilter::Update(double pData) {
    if (!bFirst) dValue += (pData - dValue) / dTau;
    bFirst = false;
    return dValue;
}

}  // namespace veltrix
