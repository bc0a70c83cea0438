#pragma once
// ClassHistogram: counts differences of time in bins, knows the fullest bin, and paints the counts as a
// waterfall, from which one sees how well two stations' clocks run in step.

#include <array>
#include <cstddef>
#include <cstdint>

#include "display/surface.h"
#include "platform/error_convention.h"

namespace veltrix {

/// Whoever a histogram belongs to: the correlator of a station.
class HistogramOwner {
  public:
    virtual ~HistogramOwner() = default;
    /// The median of the differences that are taken for the true one, in ms.
    virtual double MedianDifference() = 0;
};

/// A histogram of 1730 bins over the latest 800 values, and a second one over the values since its row of the
/// waterfall was begun. A row is one line of pixels; when it is bright enough it is closed and the next one
/// begins. Values lie on a circle: what is beyond the last bin comes round to the first.
///
/// Owned by a correlator. No operation allocates. The surface that it paints on REQUIRES a scale that is its
/// pixels; it may change from call to call.
class ClassHistogram {
  public:
    /// Bins of one value.
    struct Bins {
        std::int32_t bin = 0;   ///< where the value was counted
        std::int32_t peak = 0;  ///< the fullest bin; the lowest-numbered one of several
    };

    explicit ClassHistogram(ErrorReporter& errors);

    /// Counts `value` in bins of a width of `scale`, both in ms. 0 lies at the fraction `offset` of the
    /// range. A negative place is deliberately folded onto its positive counterpart. The bin is 0 to 1730;
    /// the last one, which only rounding reaches, is counted but is never the peak and never painted. Raises
    /// what Divide() raises for a scale of 0 and Overflow for what is no number; then it counts nothing.
    Bins Update(double value, double scale, double offset);

    /// How many of the latest 800 values lie in `bin`. Raises OutOfRange for one that is not 0 to 1730.
    std::int32_t MaxValue(std::int32_t bin) const;

    /// Number of bins.
    static constexpr std::int32_t HistogramLen() { return 1730; }

    /// Forgets all values. The waterfall goes on at its row.
    void Clear();

    /// Paints the present row in yellow, and red marks 4 pixels to either side of the owner's median. Closes
    /// the row from 64 counts in a column. REQUIRES Parent. Failures are reported.
    void DisplaySync(Surface& surface);

    /// Paints the present row in those channels that `color` has, a count with a brightness of 4 x `gain`.
    /// Closes the row at full brightness. With `merge` the columns are laid over what is painted there by OR:
    /// bin by bin, so that every partial sum of a column leaves its bits. Failures are reported.
    void DisplaySync2(Surface& surface, ColourValue color, double gain = 1, bool merge = false);

    std::int32_t lRowX = 0;            ///< the row being painted, from the top, despite its name
    HistogramOwner* Parent = nullptr;  ///< outlives the histogram

  private:
    static constexpr std::size_t Length = 1730;
    static constexpr std::size_t RingLength = 800;
    static constexpr std::int32_t Leaves = 2048;  // of the tree: the power of two that holds all bins

    /// How counts become colours.
    struct RowPaint {
        ColourValue mask = 0;  ///< 1 in each channel that is painted
        double gain = 1;
        bool merge = false;

        double Light(std::int32_t sum) const { return sum * 4.0 * gain; }
        ColourValue Value(std::int32_t sum) const;
        bool Closes(std::int32_t peak) const { return Light(peak) >= 255; }
    };

    void Count(std::int32_t bin, std::int32_t change);
    std::int32_t Key(std::int32_t bin) const;
    void FindColumns(double width);
    std::int32_t PaintRow(Surface& surface, const RowPaint& paint);
    void CloseRow(Surface& surface);

    ErrorReporter& errors_;

    double dLastScale = 0;                             // of the latest value
    std::int32_t lRingHead = 0;                        // last written place
    std::array<std::int32_t, RingLength> lRing{};      // bins of the latest values; -1 for an empty place
    std::array<std::int32_t, Length + 1> lSliding{};   // counts over the ring
    std::array<std::int32_t, Length + 1> lRowCount{};  // counts since the row was begun

    // A tournament of the bins, so that the fullest one need not be looked for: node n holds the greater key
    // of nodes 2n and 2n + 1, the lowest nodes those of two neighbouring bins; node 1 is the winner.
    std::array<std::int32_t, Leaves> winners_{};

    // The column of each bin on a surface of that width.
    double columnsWidth_ = 0;
    std::array<std::int32_t, Length> columns_{};
};

}  // namespace veltrix
