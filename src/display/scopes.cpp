#include "display/scopes.h"

#include <algorithm>
#include <cmath>

namespace veltrix {

namespace {

constexpr std::size_t Size = ScopeState::iSize;
constexpr std::size_t FramesAhead = Size * 7 / 10;  // the rest of the ring lies before the trigger
constexpr double UnitsPerValue = 10;                // scale of both surfaces
constexpr double MostEnvelope = 6300;
constexpr double MostSample = 2400;
constexpr ColourValue AmplitudeColor = Red;
constexpr ColourValue XYColor = Rgb(0, 255, 0);
constexpr ColourValue MarkColor = Rgb(0, 0, 255);
constexpr ColourValue OldMarkColor = Rgb(0, 0, 64);

double EnvelopeUnits(double dValue) {
    return std::min(dValue, MostEnvelope) * UnitsPerValue;
}

double SampleUnits(double dValue) {
    return std::clamp(dValue, -MostSample, MostSample) * UnitsPerValue;
}

/// Lays the last values of a row of `count` frames into the ring behind `iWrite`.
template <class Units>
void LayInto(ScopeRing& ring, std::int16_t iWrite, std::size_t count, std::span<const double> last,
             Units&& units) {
    last = last.last(std::min(last.size(), Size));
    std::size_t at = (static_cast<std::size_t>(iWrite) + count - last.size()) % Size;
    for (const double value : last) {
        ring[at] = units(value);
        at = at + 1 == Size ? 0 : at + 1;
    }
}

}  // namespace

void ScopeState::Arm() {
    iRemaining = iSize - 1;
    iDisplay = 1;
}

std::size_t ScopeState::Source() const {
    return (static_cast<std::size_t>(iWrite) + FramesAhead) % Size;
}

void ScopeState::PointDrawn() {
    iDisplay = static_cast<std::int16_t>((iDisplay + 1) % iSize);
    --iRemaining;
}

void ScopeState::FrameWritten() {
    iWrite = iWrite == iSize - 1 ? std::int16_t{0} : static_cast<std::int16_t>(iWrite + 1);
}

void ScopeState::Written(std::size_t count) {
    iWrite = static_cast<std::int16_t>((static_cast<std::size_t>(iWrite) + count) % Size);
}

/// The segment of the shown trace that begins at point `from`; behind the last point there is none.
void AmplitudeScope::Segment(std::size_t from, ColourValue color) {
    if (from + 1 >= Size) return;
    const auto x = static_cast<double>(from);
    pic_.Line(x, plShown_[from], x + 1, plShown_[from + 1], color);
}

void AmplitudeScope::ScopeArm() {
    Segment(0, pic_.BackColor);
    state_.Arm();
}

void AmplitudeScope::ScopeTrigger(double dValue) {
    const auto at = static_cast<std::size_t>(state_.iDisplay);
    if (state_.Drawing()) {
        const double value = plY_[state_.Source()];
        Segment(at, pic_.BackColor);
        plShown_[at] = value;
    }
    plY_[static_cast<std::size_t>(state_.iWrite)] = EnvelopeUnits(dValue);
    if (state_.Drawing()) {
        Segment(at - 1, AmplitudeColor);
        state_.PointDrawn();
    }
    state_.FrameWritten();
}

void AmplitudeScope::Quiet(std::size_t count, std::span<const double> lastValues) {
    LayInto(plY_, state_.iWrite, count, lastValues, EnvelopeUnits);
    state_.Written(count);
}

void XYScope::ScopeArmXY() {
    pic_.Line(plShownX_[0], plShownY_[0], plShownX_[1], plShownY_[1], pic_.BackColor);
    state_.Arm();
}

void XYScope::ScopeTriggerXY(double dNS, double dEW) {
    const auto at = static_cast<std::size_t>(state_.iDisplay);
    if (state_.Drawing()) {
        const std::size_t source = state_.Source();
        pic_.PSet(plShownX_[at], plShownY_[at], pic_.BackColor);
        plShownX_[at] = plX_[source];
        plShownY_[at] = plY_[source];
    }
    plX_[static_cast<std::size_t>(state_.iWrite)] = SampleUnits(dEW);
    plY_[static_cast<std::size_t>(state_.iWrite)] = SampleUnits(dNS);
    if (state_.Drawing()) {
        pic_.PSet(plShownX_[at], plShownY_[at], XYColor);
        state_.PointDrawn();
    }
    state_.FrameWritten();
}

void XYScope::Quiet(std::size_t count, std::span<const double> lastNS, std::span<const double> lastEW) {
    LayInto(plX_, state_.iWrite, count, lastEW, SampleUnits);
    LayInto(plY_, state_.iWrite, count, lastNS, SampleUnits);
    state_.Written(count);
}

void XYScope::MarkFit(double dAngle, double dRadius) {
    pic_.PSet(dMarkX_, dMarkY_, OldMarkColor);
    pic_.PSet(-dMarkX_, -dMarkY_, OldMarkColor);
    dMarkX_ = dRadius * std::cos(dAngle);
    dMarkY_ = dRadius * std::sin(dAngle);
    pic_.PSet(dMarkX_, dMarkY_, MarkColor);
    pic_.PSet(-dMarkX_, -dMarkY_, MarkColor);
}

}  // namespace veltrix
