#pragma once
// The polar display: each detection is a dot, its bearing the angle, its loudness the nearness to the centre;
// the dots of the last 1000 detections fade as new ones come.

#include <array>
#include <cstddef>
#include <cstdint>

#include "display/surface.h"
#include "platform/error_convention.h"
#include "platform/files.h"

namespace veltrix {

/// The trail of the polar display and its head. Offsets are pixels from the centre, east and north positive.
/// The newest dot of all is the head; slot 0 is the newest of the stored ones, slot 1000 the oldest.
///
/// Owned by the form. REQUIRES a square surface whose scale is its pixels, and a clean copy of the same size.
class PolarDisplay {
  public:
    /// The number of dots of the trail behind the head.
    static constexpr std::size_t Slots = 1001;

    /// `surface` is what is seen, `cleanCopy` keeps the background without dots.
    PolarDisplay(Surface& surface, Surface& cleanCopy, ErrorReporter& errors)
        : surface_(surface), cleanCopy_(cleanCopy), errors_(errors) {}

    /// Plots one detection: `direction` in degrees clockwise from north, `amplitude` in dB; `maxDb` lies at
    /// the centre, `minDb` 4 pixels inside the rim, and what lies beyond is limited.
    /// `color` is the family: Yellow for the station's own, Cyan for those of a remote station. Ages the
    /// trail by one step. Failures are reported.
    void GyrelUpdate(double direction, double amplitude, double minDb, double maxDb, ColourValue color);

    /// Draws the centre mark and the whole trail. With a colour other than 0 it first moves the trail one
    /// slot on.
    void ReplotGyrelHistory(ColourValue color);

    /// The ring at the rim.
    void GyrelDrawRing();

    /// Lays a new background under the trail, or the present one when there is none to lay: draws the ring on
    /// what is seen, keeps a clean copy of that and repaints the trail over it.
    void RenewBackground();

    /// Empties slots 1 to 1000; slot 0 keeps its value.
    void ClearGyrelHistory();

    /// The trail's offsets in "pXY.dat": a line for each slot, x and y with a comma; families are not kept.
    /// Load() stops quietly at the end of a short file and at the first line that is no such pair, and keeps
    /// what it read before. Both raise what Files raises.
    void Load(Files& files);
    void Save(Files& files) const;

  private:
    struct Pixel {
        std::int32_t x = 0;
        std::int32_t y = 0;
    };
    /// The pixels of a head, from its place.
    static constexpr std::array<Pixel, 4> HeadPixels{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}};

    Pixel Centre() const;
    void DrawCentreMark();
    void RestoreUnderHead();
    void PushHead(ColourValue color);
    void PaintHead();

    Surface& surface_;
    Surface& cleanCopy_;
    ErrorReporter& errors_;
    std::array<std::int32_t, Slots> GyrelHistoryX{};
    std::array<std::int32_t, Slots> GyrelHistoryY{};
    std::array<ColourValue, Slots> GyrelHistoryColor{};  // the family; 0 for a slot never filled
    std::int32_t GyrelHeadX = 0;
    std::int32_t GyrelHeadY = 0;
    std::array<ColourValue, 4> GyrelHeadSaved{};  // what lies under the head
};

}  // namespace veltrix
