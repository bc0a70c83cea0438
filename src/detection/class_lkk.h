#pragma once
// ClassLKK: the least-squares line through the samples of one pulse.

#include <cstdint>
#include <vector>

namespace veltrix {

/// A line fit on running sums. Points come one by one; when the capacity is reached the window slides, so
/// that the fit covers the newest points. A fit reads the sums and costs no pass over the points.
///
/// Owned by the detector, which gives it x = east-west and y = north-south. REQUIRES Init() before anything
/// else; no other operation allocates. For samples that are multiples of 1/8 below 2^17 all sums are exact.
class ClassLKK {
  public:
    /// The line y = a x + b.
    struct Line {
        double a = 0;
        double b = 0;
    };

    /// Empties the object and gives it room for `p` points. REQUIRES p >= 1.
    void Init(std::int16_t p);

    /// Adds a point, dropping the oldest one when the capacity is reached.
    void Update(double X, double Y);

    /// Least-squares regression of y on x. All points at one x: slope 1e9, intercept 0, which stands for a
    /// vertical line. One point: the slope of the line through it and the origin, 0 when it lies at x = 0.
    Line GetAB() const;

    /// The better conditioned of the regressions of y on x and of x on y: the second one, inverted, where it
    /// is the flatter of the two and not 0. So a line steeper than 45 degrees is fitted as exactly as a flat
    /// one.
    Line GetABYX() const;

    /// Root of the sum of the squared vertical residuals of the line.
    double GetFitError(Line line) const;

    /// Largest perpendicular distance of a point from the line, in percent of the largest distance of a point
    /// from the origin; the first point is deliberately left out of both. A line with slope 0 gives 0
    /// whatever the points. Fewer than two points, or all of them at the origin: 0 / 0, raises Overflow.
    double GetFitError2(Line line) const;

    std::int32_t N = 0;  ///< points held
    double pI = 0;       ///< the value of pi, set by Init()

  private:
    /// Sums over all points held.
    struct Sums {
        double n, x, xx, y, yy, xy;
    };
    Sums Totals() const;
    /// Regression of `y` on `x` by the names in `s`.
    static Line Regression(const Sums& s);

    /// Cumulative sums over points 1 to i, of which entry 0 has none.
    struct Entry {
        double Sx, Sxx, Sy, Syy, Sxy;
    };
    void MoveToFront();

    // The points themselves are the steps from entry to entry; no other copy is kept. When the window slides,
    // entry 0 moves up by one place and its sums with it, so that each entry counts from there; all entries
    // are brought back to the front only when the room ends.
    std::vector<Entry> entries_;
    std::size_t zero_ = 0;  // where entry 0 lies
    std::size_t capacity_ = 0;
};

}  // namespace veltrix
