#include "storm/sferic.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veltrix {

namespace {

constexpr double Tau = 0.00035;                   // s
constexpr double EnvelopePeak = 0.5413411329465;  // of x^2 exp(-x), at x = 2

}  // namespace

double SfericAt(double seconds) {
    if (!(seconds > 0 && seconds < SfericLength)) return 0;
    const double x = seconds / Tau;
    return x * x * std::exp(-x) / EnvelopePeak * std::sin(2 * std::numbers::pi * SfericFrequency * seconds);
}

double SfericPeakBehindFilter() {
    constexpr double SamplePeriod = 1.0 / 22050;
    constexpr double Step = 1e-7;
    constexpr double LatestPeak = 0.002;
    double peak = 0;
    for (double t = 0; t < LatestPeak; t += Step) {
        double sum = 0;
        for (int k = 0; k < 8; ++k) sum += (k % 2 == 0 ? 1 : -1) * SfericAt(t - k * SamplePeriod);
        peak = std::max(peak, std::fabs(sum) / 8);
    }
    return peak;
}

}  // namespace veltrix
