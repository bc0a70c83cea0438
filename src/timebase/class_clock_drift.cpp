#include "timebase/class_clock_drift.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/arithmetic.h"
#include "common/failure.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::string_view FileName = "ClockDrift.dat";
constexpr double LeastSeconds = 60;  // from one record to the next

/// The value at the middle, as ClassMedian takes it; 0 when there is none. Reorders `rates`. All at once,
/// since they are all new each time: one by one into a ClassMedian they would take some milliseconds.
double MedianOf(std::span<double> rates) {
    if (rates.empty()) return 0;
    const auto middle = rates.begin() + RoundToLong((static_cast<double>(rates.size()) - 1) / 2);
    std::ranges::nth_element(rates, middle);
    return *middle;
}

}  // namespace

ClassClockDrift::ClassClockDrift(Files& files) : files_(files) {
    Load();
}

void ClassClockDrift::Update(double d, double c) {
    if ((d - dLastUpdate) * SecondsPerDay < LeastSeconds) return;
    dLastUpdate = d;
    const std::size_t next = (static_cast<std::size_t>(iLast) + 1) % RingLength;
    iLast = static_cast<std::int16_t>(next);
    dTimes[next] = d;
    dSamples[next] = c;
}

double ClassClockDrift::GetCoarse() const {
    std::array<double, RingLength> rates{};
    std::size_t count = 0;
    auto a = static_cast<std::size_t>(iLast);
    for (std::size_t step = 1; step < RingLength; ++step) {
        a = (a + RingLength - 1) % RingLength;
        // Deliberately not taken round the ring: behind its end stands the 0 that drops the pair.
        const std::size_t b = a + 1;
        const double dS = dSamples[b] - dSamples[a];
        const double dT = dTimes[b] - dTimes[a];
        if (dSamples[b] == 0 || dT == 0 || dSamples[a] == 0) continue;
        const double rate = dS / dT;
        // Numbers that no clock has given can come out of a damaged file.
        if (std::isfinite(rate)) rates[count++] = rate;
    }
    return MedianOf(std::span(rates).first(count));
}

void ClassClockDrift::Save() const {
    std::string text = std::to_string(iLast) + "\n";
    for (std::size_t i = 0; i < RingLength; ++i)
        text += GeneralNumber(dTimes[i]) + ";" + GeneralNumber(dSamples[i]) + "\n";
    files_.WriteWhole(FileName, text);
}

void ClassClockDrift::Load() {
    std::vector<std::string> lines;
    try {
        lines = files_.ReadLines(FileName);
    } catch (const Failure&) {
        return;
    }
    if (lines.empty()) return;
    const double last = RoundTiesToEven(ValNeutral(lines.front()));
    if (last >= 0 && last < RingLength) iLast = static_cast<std::int16_t>(last);
    std::size_t next = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::string_view line = lines[i];
        const std::size_t mark = line.find(';');
        if (mark == std::string_view::npos) continue;
        dTimes[next] = ValNeutral(line.substr(0, mark));
        dSamples[next] = ValNeutral(line.substr(mark + 1));
        next = (next + 1) % RingLength;
    }
}

}  // namespace veltrix
