#include "location/class_correlator.h"

namespace veltrix {

namespace {

constexpr int MedianLength = 5;

}  // namespace

ClassCorrelator::ClassCorrelator(Clock& clock) : dNowAtStart(clock.Now()), clock_(clock) {
    TOAMedian.Start(TOAMedianLength);
    Median.Start(MedianLength);
}

void ClassCorrelator::FoldDrift() {
    const DateTime now = clock_.Now();
    dSumPreDrift += dPreDrift * (now - dNowAtStart);
    dNowAtStart = now;
}

void ClassCorrelator::UpdatePreDrift(double dDrift) {
    FoldDrift();
    dPreDrift += dDrift / 100;
}

void ClassCorrelator::SetPreDrift(double dDrift) {
    FoldDrift();
    dPreDrift = dDrift;
}

}  // namespace veltrix
