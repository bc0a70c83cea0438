#include "detection/class_lkk.h"

#include <algorithm>
#include <cmath>

#include "common/arithmetic.h"

namespace veltrix {

namespace {

constexpr double VerticalSlope = 1e9;

/// Takes point 1 out of cumulative sums over n points: the rest moves down by one place.
void DropFirst(std::vector<double>& sums, std::size_t n) {
    const double first = sums[1];
    double* const s = sums.data();
    for (std::size_t i = 2; i <= n; ++i) s[i - 1] = s[i] - first;
}

}  // namespace

void ClassLKK::Init(std::int16_t p) {
    N = 0;
    pI = 4 * std::atan(1.0);
    const std::size_t entries = static_cast<std::size_t>(p) + 1;
    for (std::vector<double>* sums : {&Sx, &Sxx, &Sy, &Syy, &Sxy}) sums->assign(entries, 0.0);
}

void ClassLKK::Update(double X, double Y) {
    const std::size_t bound = Sx.size() - 1;
    if (static_cast<std::size_t>(N) >= bound) {
        for (std::vector<double>* sums : {&Sx, &Sxx, &Sy, &Syy, &Sxy}) DropFirst(*sums, bound);
    } else {
        ++N;
    }
    const auto n = static_cast<std::size_t>(N);
    Sy[n] = Sy[n - 1] + Y;
    Syy[n] = Syy[n - 1] + Y * Y;
    Sxy[n] = Sxy[n - 1] + X * Y;
    Sx[n] = Sx[n - 1] + X;
    Sxx[n] = Sxx[n - 1] + X * X;
}

ClassLKK::Sums ClassLKK::Totals() const {
    const auto n = static_cast<std::size_t>(N);
    return {static_cast<double>(N), Sx[n], Sxx[n], Sy[n], Syy[n], Sxy[n]};
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
    for (std::size_t i = 2; i <= static_cast<std::size_t>(N); ++i) {
        const double x = Sx[i] - Sx[i - 1];
        const double y = Sy[i] - Sy[i - 1];
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
