#include "detection/sample_row.h"

#include <algorithm>
#include <cmath>

namespace veltrix {

namespace {

constexpr std::size_t QuietStretch = 100;  // frames looked at together

/// The samples of one channel, of which every second one in `in` is; negated in 16 bits where `negate16` says
/// so, -32768 having no positive counterpart there, and then as whole numbers where `negate` does.
void Spread(const std::int16_t* in, std::span<std::int32_t> out, bool negate16, bool negate) {
    std::int32_t* const values = out.data();
    const std::size_t frames = out.size();
    if (!negate16 && !negate)
        for (std::size_t i = 0; i < frames; ++i) values[i] = in[2 * i];
    else if (!negate16)
        for (std::size_t i = 0; i < frames; ++i) values[i] = -in[2 * i];
    else if (!negate)
        for (std::size_t i = 0; i < frames; ++i) values[i] = static_cast<std::int16_t>(-in[2 * i]);
    else
        for (std::size_t i = 0; i < frames; ++i) values[i] = -static_cast<std::int16_t>(-in[2 * i]);
}

}  // namespace

void SampleRow::Take(std::span<const std::int16_t> samples, const AntennaOptions& antenna, bool bHighPass) {
    antenna_ = antenna;
    bHighPass_ = bHighPass;
    size_ = std::min(samples.size() / 2, MostFrames);
    const auto ns = std::span(turnedNS_).first(size_);
    const auto ew = std::span(turnedEW_).first(size_);
    const std::int16_t* const left = samples.data();
    const std::int16_t* const right = left + 1;
    const bool turned = antenna.bAdd90 != antenna.bSub90;  // both undo each other
    Spread(left, turned ? ew : ns, antenna.bInvertNS, turned && antenna.bAdd90);
    Spread(right, turned ? ns : ew, false, turned && antenna.bSub90);
    if (!bHighPass) return;
    FilterNS.Filter2Ahead(ns, std::span(filteredNS_).first(size_));
    FilterEW.Filter2Ahead(ew, std::span(filteredEW_).first(size_));
}

/// Squares are compared in single precision against a limit lowered by more than its rounding.
std::size_t SampleRow::QuietFrames(std::size_t first, std::size_t end, double dLevel) const {
    if (dLevel <= 0) return 0;
    const double level = dLevel / Step();
    const auto limit = static_cast<float>(level * level * (1 - 1e-6));
    const std::int32_t* const ns = SeenNS().data();
    const std::int32_t* const ew = SeenEW().data();
    const auto isLoud = [ns, ew, limit](std::size_t i) {
        const auto x = static_cast<float>(ns[i]);
        const auto y = static_cast<float>(ew[i]);
        return x * x + y * y >= limit ? 1 : 0;
    };
    for (std::size_t at = first; at < end;) {
        const std::size_t next = std::min(at + QuietStretch, end);
        std::int32_t loud = 0;
        for (std::size_t i = at; i < next; ++i) loud |= isLoud(i);
        if (loud != 0) {
            while (isLoud(at) == 0) ++at;
            return at - first;
        }
        at = next;
    }
    return end - first;
}

void SampleRow::Measure(std::size_t first, std::span<Frame> frames) const {
    const double step = Step();
    const std::int32_t* const ns = SeenNS().data() + first;
    const std::int32_t* const ew = SeenEW().data() + first;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const double dNS = ns[i] * step;
        const double dEW = ew[i] * step;
        frames[i] = {dNS, dEW, std::sqrt(dNS * dNS + dEW * dEW)};
    }
}

void SampleRow::Unpack(std::size_t first, std::span<double> ns, std::span<double> ew) const {
    const double step = Step();
    const std::int32_t* const seenNS = SeenNS().data() + first;
    const std::int32_t* const seenEW = SeenEW().data() + first;
    for (std::size_t i = 0; i < ns.size(); ++i) ns[i] = seenNS[i] * step;
    for (std::size_t i = 0; i < ew.size(); ++i) ew[i] = seenEW[i] * step;
}

void SampleRow::Leave(std::size_t frames) {
    if (bHighPass_) {
        FilterNS.Filter2Pass(std::span(turnedNS_).first(frames));
        FilterEW.Filter2Pass(std::span(turnedEW_).first(frames));
    }
    size_ = 0;
}

}  // namespace veltrix
