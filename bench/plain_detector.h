#pragma once
// The detection loop written down frame by frame, in the plainest way: what the detector is measured against,
// in speed and in outcome.

#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

#include "common/class_median.h"
#include "detection/consumers.h"

namespace veltrix {

class PlainDetector {
  public:
    struct Options {
        bool invert = false, add90 = false, sub90 = false, filter = true, automatic = false;
        int threshold = 324, offset = 0, minAuto = 99;
    };

    explicit PlainDetector(const Options& options)
        : o(options), threshold(options.threshold), noiseLevel(options.threshold / 3.0) {
        noise.Start(27);
    }

    void Process(std::span<const std::int16_t> samples) {
        for (std::size_t i = 0; i + 1 < samples.size(); i += 2) OneFrame(samples[i], samples[i + 1]);
    }

    Options o;
    int threshold;
    double noiseLevel;
    int triggers = 0;
    std::int32_t counter = 0;
    std::vector<Pulse> pulses;
    ScopeFeed* scopes = nullptr;  ///< offered every frame, one by one, when there are any
    std::vector<double> envelopes = std::vector<double>(100), ns100 = envelopes,
                        ew100 = envelopes;  // last 100
    std::size_t seen = 0, seenXY = 0;

  private:
    struct Fir {
        double ring[8] = {}, sum = 0;
        int at = 0;
        double Next(double x) {
            const double sign = at % 2 == 0 ? 0.5 : -0.5;
            sum -= ring[at];
            ring[at] = sign * x;
            sum += ring[at];
            const double y = sum * sign * 0.5;
            at = (at + 1) % 8;
            return y;
        }
    };

    void OneFrame(std::int16_t left, std::int16_t right) {
        counter = (counter + 1) % 2100000000;
        double n = o.invert ? static_cast<std::int16_t>(-left) : left;
        double e = right;
        if (o.add90) {
            const double was = n;
            n = e;
            e = -was;
        }
        if (o.sub90) {
            const double was = n;
            n = -e;
            e = was;
        }
        if (o.filter) {
            n = firN.Next(n);
            e = firE.Next(e);
        }
        const double envelope = std::sqrt(n * n + e * e);
        if (threshold > envelope && (noiseFrames = (noiseFrames + 1) % 1000) == 0) Noise(envelope);
        envelopes[seen++ % 100] = 3 * envelope;
        if (envelope < 32000) {
            ns100[seenXY % 100] = n;
            ew100[seenXY++ % 100] = e;
        }
        if (scopes) {
            scopes->ScopeTrigger(3 * envelope);
            if (envelope < 32000) scopes->ScopeTriggerXY(n, e);
        }
        if (envelope > threshold && inPulse == 0) {
            if (scopes) scopes->Arm();
            inPulse = 1;
            ++triggers;
            peakN = n;
            peakE = e;
            peak = envelope;
            area = envelope - threshold;
            pulse.dLocalSample = counter;
            points.clear();
        }
        if (inPulse < 1) return;
        if (envelope > peak) {
            peak = envelope;
            if (envelope < 32500) {
                peakN = n;
                peakE = e;
            }
        }
        if (threshold <= envelope) area += envelope - threshold;
        if (threshold <= envelope ? envelope < 32500 : inPulse < 5) points.push_back({e, n});
        if (++inPulse > 99 && (envelope <= 0.3 * peak || envelope <= threshold)) End();
    }

    void Noise(double envelope) {
        noise.Update(envelope);
        noiseLevel += (std::sqrt(noise.Variance()) * 5 - noiseLevel) * 0.003;
        const double q = -20 * std::log10(std::floor(3 * noiseLevel) / 3244032) + o.offset;
        const int level = static_cast<int>(std::nearbyint(3244032 * std::pow(10, -q / 20)));
        const int floor = static_cast<int>(std::nearbyint(3244032 * std::pow(10, -o.minAuto / 20.0)));
        if (o.automatic) threshold = std::max(level, floor);
    }

    struct Point {
        double x, y;
    };

    void End() {
        inPulse = 0;
        if (points.size() > 99) points.erase(points.begin(), points.end() - 99);
        double sx = 0, sy = 0, sxx = 0, syy = 0, sxy = 0;
        for (const auto& [x, y] : points) {
            sx += x;
            sy += y;
            sxx += x * x;
            syy += y * y;
            sxy += x * y;
        }
        const double n = static_cast<double>(points.size());
        const double dx = n * sxx - sx * sx, dy = n * syy - sy * sy, c = n * sxy - sy * sx;
        double a = dx == 0 ? 1e9 : c / dx;
        double b = dx == 0 ? 0 : (sxx * sy - sxy * sx) / dx;
        const double a2 = dy == 0 ? 1e9 : c / dy;
        if (std::fabs(a2) < std::fabs(a) && a2 != 0) {
            a = 1 / a2;
            b = dy == 0 ? 0 : -((syy * sx - sy * sxy) / dy) / a2;
        }
        double r2 = 0, d2 = 0;
        for (std::size_t i = 1; i < points.size(); ++i) {
            const auto [x, y] = points[i];
            r2 = std::max(r2, x * x + y * y);
            if (a != 0) d2 = std::max(d2, std::pow(a * x - y + b, 2) / (a * a + 1));
        }
        pulse.dFitError = std::sqrt(d2) * 100 / std::sqrt(r2);
        const double pi = std::acos(-1.0);
        const bool lowerHalf = peakN < 0 && peakE != 0;
        pulse.dDir = 90 - std::atan(a) * 180 / pi + (lowerHalf || (peakN == 0 && peakE < 0) ? 180 : 0);
        pulse.N = static_cast<int>(points.size());
        pulse.dAmp = area <= 0 ? -100 : 20 * std::log10(area / 3244032);
        pulses.push_back(pulse);
    }

    Fir firN, firE;
    ClassMedian noise;
    int noiseFrames = 0, inPulse = 0;
    double peak = 0, peakN = 0, peakE = 0, area = 0;
    std::vector<Point> points;
    Pulse pulse;
};

}  // namespace veltrix
