#pragma once
// The two scopes: the envelope against time, and north-south against east-west. Each keeps the last 100
// frames; a trigger has the part around it drawn over the frames that follow, so that no frame pays for a
// whole redraw.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "display/surface.h"

namespace veltrix {

/// Where a scope stands in its ring of frames and in the trace that it draws. All indices wrap at 100.
struct ScopeState {
    static constexpr std::int16_t iSize = 100;  ///< frames of the ring, points of a trace

    std::int16_t iWrite = 0;      ///< where the next frame goes
    std::int16_t iDisplay = 0;    ///< next point of the trace
    std::int16_t iRemaining = 0;  ///< points still to be drawn, 0 when idle

    /// Whether points of a trace are still to be drawn.
    bool Drawing() const { return iRemaining > 0; }
    /// A trace begins: points 1 to 99 are to be drawn.
    void Arm();
    /// The place in the ring that the next point of the trace comes from: 70 frames ahead, which holds the
    /// frame that is 30 frames old, so that the trigger stands at 30 percent of the trace.
    std::size_t Source() const;
    /// Moves the trace on by one point.
    void PointDrawn();
    /// Moves the writing place on by one frame.
    void FrameWritten();
    /// Moves the writing place on by `count` frames.
    void Written(std::size_t count);
};

/// One value of each of the last frames.
using ScopeRing = std::array<double, ScopeState::iSize>;

/// The amplitude scope. Each frame is one of ScopeTrigger() or a part of Quiet().
class AmplitudeScope {
  public:
    explicit AmplitudeScope(Surface& surface) : pic_(surface) {}

    /// Whether a trace is being drawn, a piece with each frame.
    bool Drawing() const { return state_.Drawing(); }
    /// A pulse has been triggered: begins a trace.
    void ScopeArm();
    /// One frame. `dValue` counts up to 6300.
    void ScopeTrigger(double dValue);
    /// `count` frames of which the last ones are given: at least the last 100, or all. REQUIRES not
    /// Drawing().
    void Quiet(std::size_t count, std::span<const double> lastValues);

  private:
    void Segment(std::size_t from, ColourValue color);

    Surface& pic_;
    ScopeState state_;
    ScopeRing plY_{};
    ScopeRing plShown_{};
};

/// The X-Y scope: a point is the pair (east-west, north-south). Each frame is one of ScopeTriggerXY() or a
/// part of Quiet().
class XYScope {
  public:
    explicit XYScope(Surface& surface) : pic_(surface) {}

    /// Whether a trace is being drawn, a piece with each frame.
    bool Drawing() const { return state_.Drawing(); }
    /// A pulse has been triggered: begins a trace.
    void ScopeArmXY();
    /// One frame. Both values count from -2400 to 2400.
    void ScopeTriggerXY(double dNS, double dEW);
    /// `count` frames of which the last ones are given: at least the last 100, or all. REQUIRES not
    /// Drawing().
    void Quiet(std::size_t count, std::span<const double> lastNS, std::span<const double> lastEW);
    /// Marks the line fit of a pulse: two points at `dRadius` from the centre, in the direction `dAngle` in
    /// radians anticlockwise from east and opposite. The marks before are painted over in dark blue.
    void MarkFit(double dAngle, double dRadius);

  private:
    Surface& pic_;
    ScopeState state_;
    ScopeRing plX_{};
    ScopeRing plY_{};
    ScopeRing plShownX_{};
    ScopeRing plShownY_{};
    double dMarkX_ = 0;  // of the last pulse; its second mark lies opposite
    double dMarkY_ = 0;
};

}  // namespace veltrix
