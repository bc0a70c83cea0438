#include "detection/class_lkk.h"

#include <algorithm>
#include <cmath>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

constexpr double VerticalSlope = 1e9;
constexpr std::size_t Room = 5;  // for so many windows of points, until their sums are moved

}  // namespace

void ClassLKK::Init(std::int16_t p) {
    N = 0;
    pI = 4 * std::atan(1.0);
    capacity_ = static_cast<std::size_t>(p);
    zero_ = 0;
    entries_.resize(Room * capacity_ + 1);
    entries_[0] = {};
}

/// Makes the sums count from entry 0 again, and lays it at the beginning.
void ClassLKK::MoveToFront() {
    const Entry zero = entries_[zero_];
    for (std::size_t i = 0; i <= capacity_; ++i) {
        const Entry& from = entries_[zero_ + i];
        entries_[i] = {from.Sx - zero.Sx, from.Sxx - zero.Sxx, from.Sy - zero.Sy, from.Syy - zero.Syy,
                       from.Sxy - zero.Sxy};
    }
    zero_ = 0;
}

void ClassLKK::Update(double X, double Y) {
    if (static_cast<std::size_t>(N) < capacity_) {
        ++N;
    } else {
        if (zero_ + capacity_ + 1 == entries_.size()) MoveToFront();
        ++zero_;
    }
    const std::size_t last = zero_ + static_cast<std::size_t>(N);
    const Entry& s = entries_[last - 1];
    entries_[last] = {s.Sx + X, s.Sxx + X * X, s.Sy + Y, s.Syy + Y * Y, s.Sxy + X * Y};
}

ClassLKK::Sums ClassLKK::Totals() const {
    const Entry& zero = entries_[zero_];
    const Entry& s = entries_[zero_ + static_cast<std::size_t>(N)];
    return {static_cast<double>(N), s.Sx - zero.Sx,   s.Sxx - zero.Sxx,
            s.Sy - zero.Sy,         s.Syy - zero.Syy, s.Sxy - zero.Sxy};
}

ClassLKK::Line ClassLKK::Regression(const Sums& s) {
    const double d = s.n * s.xx - s.x * s.x;
    if (d == 0) return {VerticalSlope, 0};
    return {(s.n * s.xy - s.y * s.x) / d, (s.xx * s.y - s.xy * s.x) / d};
}

ClassLKK::Line ClassLKK::GetAB() const {
    const Sums s = Totals();
    if (N == 1) return {s.x != 0 ? s.y / s.x : 0, 0};
    return Regression(s);
}

ClassLKK::Line ClassLKK::GetABYX() const {
    const Line first = GetAB();
    // With one point both fits are deliberately the same quotient, which leaves the first one in use.
    if (N == 1) return first;
    const Sums s = Totals();
    const Line second = Regression({s.n, s.y, s.yy, s.x, s.xx, s.xy});
    if (std::abs(second.a) < std::abs(first.a) && second.a != 0) return {1 / second.a, -second.b / second.a};
    return first;
}

double ClassLKK::GetFitError(Line line) const {
    const Sums s = Totals();
    const auto [a, b] = line;
    return std::sqrt(s.yy - 2 * a * s.xy - 2 * b * s.y + a * a * s.xx + 2 * a * b * s.x + s.n * b * b);
}

double ClassLKK::GetFitError2(Line line) const {
    const auto [a, b] = line;
    double r2 = 0;
    double d2 = 0;
    for (std::size_t i = zero_ + 2; i <= zero_ + static_cast<std::size_t>(N); ++i) {
        const double x = entries_[i].Sx - entries_[i - 1].Sx;
        const double y = entries_[i].Sy - entries_[i - 1].Sy;
        r2 = std::max(r2, x * x + y * y);
        if (a == 0) continue;
        const double c = -1 / a;  // slope of the perpendicular
        const double xf = ((y - c * x) - b) / (a - c);
        const double yf = xf * a + b;
        d2 = std::max(d2, (xf - x) * (xf - x) + (yf - y) * (yf - y));
    }
    return Divide(std::sqrt(d2) * 100, std::sqrt(r2));
}

}  // namespace veltrix
