#include "archive/clock_offset.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace veltrix {

namespace {

constexpr double Span = 300;         // s
constexpr double Bin = 0.01;         // s
constexpr std::size_t PeakBins = 4;  // that the differences of common strikes may spread over
constexpr double FastestDrift = 500e-6;
constexpr double LeastReach = 0.1;  // s around where the peak is expected
constexpr int LeastPeak = 6;        // differences
constexpr double Sigmas = 6;        // by which a peak stands out from chance
constexpr std::size_t MostForSlope = 600;

/// A pulse of the second recording, and what one of the first differs from it.
struct Difference {
    double second = 0;
    double difference = 0;
};

double MedianOf(std::vector<double> values) {
    const auto middle = values.begin() + std::ssize(values) / 2;
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// All differences of pulses of the second recording from those of the first within `reach` of `expected`.
std::vector<Difference> DifferencesOf(std::span<const double> first, std::span<const double> second,
                                      double expected, double reach) {
    std::vector<Difference> all;
    for (const double time : second) {
        auto other = std::ranges::lower_bound(first, time + expected - reach);
        for (; other != first.end() && *other <= time + expected + reach; ++other)
            all.push_back({time, *other - time});
    }
    return all;
}

/// Those in the fullest part of the histogram; none when it does not stand out.
std::vector<Difference> PeakOf(std::vector<Difference> all, double expected, double reach) {
    const auto bins = static_cast<std::size_t>(std::ceil(2 * reach / Bin)) + PeakBins;
    std::vector<int> counts(bins);
    const double least = expected - reach;
    const auto binOf = [least](const Difference& one) {
        return static_cast<std::size_t>((one.difference - least) / Bin);
    };
    for (const Difference& one : all) ++counts[binOf(one)];
    std::size_t best = 0;
    int most = 0;
    for (std::size_t i = 0; i + PeakBins <= bins; ++i) {
        int sum = 0;
        for (std::size_t k = 0; k < PeakBins; ++k) sum += counts[i + k];
        if (sum <= most) continue;
        most = sum;
        best = i;
    }
    const double chance = static_cast<double>(all.size()) * PeakBins / static_cast<double>(bins);
    if (most < LeastPeak || most < chance + Sigmas * std::sqrt(chance + 1)) return {};
    std::erase_if(all,
                  [&](const Difference& one) { return binOf(one) < best || binOf(one) >= best + PeakBins; });
    return all;
}

/// The line through the differences; of a great many an even choice gives the slope.
ClockOffset LineThrough(const std::vector<Difference>& found) {
    std::vector<Difference> chosen;
    const std::size_t step = found.size() / MostForSlope + 1;
    for (std::size_t i = 0; i < found.size(); i += step) chosen.push_back(found[i]);
    std::vector<double> slopes;
    const double apart = (chosen.back().second - chosen.front().second) / 4;
    for (std::size_t i = 0; i < chosen.size(); ++i)
        for (std::size_t k = i + 1; k < chosen.size(); ++k) {
            const double time = chosen[k].second - chosen[i].second;
            if (time > apart) slopes.push_back((chosen[k].difference - chosen[i].difference) / time);
        }
    ClockOffset line;
    line.rate = slopes.empty() ? 0 : MedianOf(std::move(slopes));
    std::vector<double> heights;
    for (const Difference& one : found) heights.push_back(one.difference - line.rate * one.second);
    line.atZero = MedianOf(std::move(heights));
    return line;
}

}  // namespace

std::optional<ClockOffset> FindClockOffset(std::span<const double> first, std::span<const double> second,
                                           double reach) {
    std::vector<Difference> found;
    double expected = 0;
    double lastFound = 0;
    auto begin = second.begin();
    while (begin != second.end()) {
        const double middle = *begin + Span / 2;
        const auto end = std::lower_bound(begin, second.end(), *begin + Span);
        const double toLook =
            found.empty() ? reach : std::min(reach, LeastReach + FastestDrift * (middle - lastFound));
        const std::vector<Difference> peak =
            PeakOf(DifferencesOf(first, std::span(begin, end), expected, toLook), expected, toLook);
        if (!peak.empty()) {
            std::vector<double> differences;
            for (const Difference& one : peak) differences.push_back(one.difference);
            expected = MedianOf(std::move(differences));
            lastFound = middle;
            found.insert(found.end(), peak.begin(), peak.end());
        }
        begin = end;
    }
    if (found.empty()) return {};
    return LineThrough(found);
}

}  // namespace veltrix
