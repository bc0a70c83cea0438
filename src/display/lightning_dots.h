#pragma once
// The dots of the map: located strikes that lie white on it when new, turn yellow, then red, and go dark; and
// the pen, a cyan block that stands on the newest one.

#include <array>
#include <cstddef>
#include <cstdint>

#include "common/date_time.h"
#include "display/surface.h"
#include "platform/clock.h"

namespace veltrix {

/// The last 2000 dots as pixels, slot 0 the newest. Empty slots stand at -1, -1, outside of every surface.
///
/// Owned by the form. REQUIRES of all calls the same two surfaces, the one that is seen and the clean copy of
/// the map under it, equal in size and with their pixels as scale. Dots outside are kept, but not seen.
class LightningDots {
  public:
    /// The number of dots that are kept.
    static constexpr std::size_t Slots = 2000;

    explicit LightningDots(Clock& clock);

    /// How long a dot is visible, in minutes.
    std::int32_t Age = 30;

    /// Empties all slots. Paints nothing.
    void ClearpX2();

    /// Enters one dot that was made at `time`, as the newest, if it lies on `surface`; its right and lower
    /// border deliberately count as well. Paints nothing.
    void AddpXY2(const Surface& surface, double x, double y, ColourValue color, DateTime time);

    /// Paints all dots in the colours of their ages, the oldest first. A dot lightens the map and never
    /// darkens it: each channel keeps the greater value. Slot 1999 gives the map back. With `shift` the dots
    /// first move one slot on, and slot 0, which is left to the caller, is not painted.
    void DrawLightningInPicture4(Surface& surface, const Surface& clean, bool shift);

    /// Paints all dots on a map that was drawn anew, and sets the pen on the newest one. On an empty store
    /// that is -1, -1, so that the pen's last pixel shows in the corner.
    void DrawAllLightningInPicture4(Surface& surface, const Surface& clean);

    /// Paints all dots, and a new one at x, y with the pen on it. With x or y at 0 or below there is no new
    /// one: the newest dot stays, in the colour that it has reached. In both cases slot 0 counts as made now,
    /// so that the newest dot deliberately does not age as long as this is called. `shift` as above.
    /// Raises Overflow for a position that is no 4-byte integer.
    void MapUpdatePlot(Surface& surface, const Surface& clean, double x, double y, bool shift);

  private:
    static constexpr std::size_t Oldest = Slots - 1;

    /// Where a slot lies in the arrays.
    std::size_t PlaceOf(std::size_t slot) const { return (head_ + slot) % Slots; }
    void MoveOn();
    void Repaint(Surface& surface, const Surface& clean, bool shift, DateTime now);
    void PenUp(Surface& surface, std::int32_t x, std::int32_t y) const;
    void PenDown(Surface& surface, std::int32_t x, std::int32_t y);

    Clock& clock_;

    // A ring, so that no dot is moved when all go one slot on.
    std::size_t head_ = 0;                  // place of slot 0
    std::array<std::int32_t, Slots> pX2{};  // pixels from the left
    std::array<std::int32_t, Slots> pY2{};  // pixels from the top
    std::array<ColourValue, Slots> pC2{};   // colour last painted
    std::array<DateTime, Slots> pAge2{};    // when it was made; 0 when empty

    std::int32_t PenX = 0;
    std::int32_t PenY = 0;
    // The pixels under the pen, clockwise from its place; -1 for one outside of the surface. All are -1 until
    // the pen is set down for the first time, so that lifting it before leaves the picture alone.
    std::array<ColourValue, 4> PenSaved{-1, -1, -1, -1};
};

}  // namespace veltrix
