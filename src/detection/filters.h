#pragma once
// The two filters: the FIR that the samples of each antenna pass before detection, and a first-order
// smoother.

#include <array>
#include <cstdint>
#include <span>

namespace veltrix {

/// FIR filter by running sums, one instance per antenna channel. An instance uses Filter() or Filter2(), not
/// both, for they share their state. Nothing allocates.
class ClassNotchFilter {
  public:
    /// Band pass at a quarter of the sample rate, in quadrature, over 16 samples.
    double Filter(double dD);

    /// The detection filter: output(n) = 1/8 sum over k = 0..7 of (-1)^k x(n-k), a band pass at the top of
    /// the sampled band with response 1 at 11025 Hz and nulls at 0, 2756, 5512 and 8269 Hz. `lThreshold` is
    /// taken and not used.
    double Filter2(double dD, std::int32_t lThreshold);

    /// What Filter2() would put out for a row of whole-numbered inputs, times 8, so that it is whole, too;
    /// the state stays as it is. Every step is exact, so the values are those of Filter2() to the bit.
    /// REQUIRES the sizes to agree, inputs within +-32768, now and since the start.
    void Filter2Ahead(std::span<const std::int32_t> in, std::span<std::int32_t> out8) const;

    /// Brings the state to where Filter2() would have left it after these inputs.
    void Filter2Pass(std::span<const std::int32_t> in);

  private:
    std::array<double, 16> dRing{};   // last products, in phase; Filter2 uses the first 8
    std::array<double, 16> dRingQ{};  // last products, in quadrature
    std::int16_t iIndex = 0;
    double dSum = 0;
    double dSumQ = 0;
};

/// Moves towards its input by a fixed part of the difference at each update.
class ClassLowPassFilter {
  public:
    /// Sets the output, and the divisor if 1 < `pTau` < 32000; else the divisor stays.
    void Init(double pTau, double pValue);
    /// Takes a value in and returns the new output. The first call only arms the filter: its value is not
    /// taken in.
    double Update(double pData);
    double Value() const { return dValue; }

  private:
    double dValue = 0;
    double dTau = 20;
    bool bFirst = true;
};

}  // namespace veltrix
