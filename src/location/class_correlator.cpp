#include "location/class_correlator.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr int MedianLength = 5;
constexpr double SamplesPerMillisecond = 22.0;  // a rounding of 22050 a second that is to stay
constexpr double Near = 20;                     // ms around the median that a pair may lie
constexpr double NoDifference = 9999.0;         // of a slot that never held a real time
constexpr double BinWidth = 10.0;               // ms
constexpr std::int32_t LeastPeak = 2;           // differences in the highest bin that prove nothing yet
constexpr std::int32_t LeastAccepted = 3;
constexpr std::int16_t FurthestAhead = 100;
constexpr std::int16_t RunTakenOff = 10;
constexpr double LeastSeconds = 60;   // between two points of the drift
constexpr double FastestDrift = 100;  // ms per day that one estimate may change

/// Puts the state of the search into the log ahead of the report.
class SearchFailures final : public FailureHandler {
  public:
    SearchFailures(ErrorReporter& errors, const double& difference, const std::int16_t& back,
                   const std::int16_t& partner)
        : errors_(errors), report_(errors), difference_(difference), back_(back), partner_(partner) {}

    AfterFailure OnFailure(const Failure& failure) override {
        errors_.LogLine("dDiffTime: " + GeneralNumber(difference_));
        errors_.LogLine("i: " + std::to_string(back_));
        errors_.LogLine("I2: " + std::to_string(partner_));
        return report_.OnFailure(failure);
    }

  private:
    ErrorReporter& errors_;
    ReportFailures report_;
    const double& difference_;
    const std::int16_t& back_;
    const std::int16_t& partner_;
};

}  // namespace

void ClassCorrelator::Side::Init() {
    for (std::size_t i = 0; i < ring_.size(); ++i) {
        const auto place = static_cast<double>(i);
        ring_[i] = {10000 * (place + 1), place, 0, 0, 0};
    }
}

void ClassCorrelator::Side::Store(const OfferedDetection& detection) {
    iHead_ = static_cast<std::int16_t>((iHead_ + 1) % Correlatorlen);
    ring_[static_cast<std::size_t>(iHead_)] = {detection.dTime, detection.dAmp, detection.dX, detection.dY,
                                               std::tan((90 - detection.dDir) * (std::numbers::pi / 180))};
}

std::int16_t ClassCorrelator::Side::Back(std::int16_t back) const {
    return static_cast<std::int16_t>((iHead_ - back + Correlatorlen) % Correlatorlen);
}

ClassCorrelator::ClassCorrelator(Clock& clock, PreciseNow& preciseNow, ErrorReporter& errors)
    : clock_(clock), preciseNow_(preciseNow), errors_(errors) {
    Clear();
}

void ClassCorrelator::Clear() {
    TOAMedian.Start(TOAMedianLength);
    Median.Start(MedianLength);
    CorrelatorInit();
    histograms_.reset();
    dNowAtStart = clock_.Now();
}

ClassCorrelator::Histograms& ClassCorrelator::TheHistograms() {
    if (!histograms_) {
        histograms_ = std::make_unique<Histograms>(errors_);
        for (ClassHistogram* histogram : {&histograms_->coarse, &histograms_->medium, &histograms_->fine})
            histogram->Parent = this;
    }
    return *histograms_;
}

void ClassCorrelator::CorrelatorInit() {
    local_.Init();
    remote_.Init();
    lRemoteSampleCount = 0;
    lLocalSampleCount = 0;
    lCorrelatedCount = 0;
}

Correlation ClassCorrelator::Correlator(const OfferedDetection& detection, bool bRealTime) {
    const bool bLocal = detection.bLocalUpdate;
    Search search{bLocal, bRealTime, clock_.Now()};
    std::int32_t& count = bLocal ? lLocalSampleCount : lRemoteSampleCount;
    count = NextCount(count);
    errors_.EnterProcedure("Correlator");
    SearchFailures failures(errors_, search.dDiffTime, search.I, search.I2);
    if (!CheckBalance(bLocal)) {
        GetDiffTime(search, 0);
    } else {
        Side& side = bLocal ? local_ : remote_;
        bool bCandidates = false;
        RunSteps(
            failures, [&] { side.Store(detection); }, [&] { side.lLastTime = RoundToLong(detection.dTime); },
            [&] { bCandidates = Candidates(search); },
            [&] {
                if (bCandidates) Accept(search);
            });
    }
    errors_.LeaveProcedure("Correlator");
    lmY = Median.Median();
    search.result.lmY = lmY;
    return search.result;
}

/// False when one side runs so far ahead of the other that it may be talking to itself.
bool ClassCorrelator::CheckBalance(bool bLocalUpdate) {
    std::int16_t& speaks = bLocalUpdate ? iLocalRun_ : iRemoteRun_;
    std::int16_t& waits = bLocalUpdate ? iRemoteRun_ : iLocalRun_;
    speaks = static_cast<std::int16_t>(std::min(speaks + 1, int{FurthestAhead}));
    waits = static_cast<std::int16_t>(std::max(waits - RunTakenOff, 0));
    return speaks < FurthestAhead && waits < FurthestAhead;
}

/// The difference of the newest detection of the side that speaks and the `I`-th most recent of the other,
/// always local less remote, less what the clocks have drifted. False when one of them has no time.
bool ClassCorrelator::GetDiffTime(Search& search, std::int16_t I) {
    search.I = I;
    iMatchLocal_ = local_.Back(search.bLocalUpdate ? std::int16_t{0} : I);
    iMatchRemote_ = remote_.Back(search.bLocalUpdate ? I : std::int16_t{0});
    search.I2 = search.bLocalUpdate ? iMatchRemote_ : iMatchLocal_;
    const double localTime = MatchedLocal().dTime;
    const double remoteTime = MatchedRemote().dTime;
    if (localTime == 0 || remoteTime == 0) {
        search.dDiffTime = NoDifference;
        return false;
    }
    double difference = localTime - remoteTime;
    if (!search.bRealTime) difference /= SamplesPerMillisecond;
    search.dDiffTime = difference - (dSumPreDrift + dPreDrift * (search.now - dNowAtStart));
    return true;
}

/// Takes a difference into the histogram, and into the median while it falls into the highest bin. True when
/// it is near the median.
bool ClassCorrelator::UpdateSync(double dY) {
    bool bNear = false;
    UnderErrorConvention(errors_, "UpdateSync", [&] {
        const ClassHistogram::Bins bins = cMediumHistogram().Update(dY, BinWidth, 0.0);
        const bool bInPeak = bins.bin == bins.peak && cMediumHistogram().MaxValue(bins.peak) > LeastPeak;
        if (bInPeak || !bMedianSeeded_) {
            bMedianSeeded_ = true;
            Median.Update2(dY, preciseNow_.Now());
            lmY = Median.Median();
        }
        bNear = std::abs(dY - lmY) < Near && Median.Length() >= LeastAccepted;
    });
    return bNear;
}

/// First pass: all partners go to the histogram, which makes the real offset stand out. True when one of them
/// is a candidate.
bool ClassCorrelator::Candidates(Search& search) {
    if (!GetDiffTime(search, 0)) return false;
    search.result.dOutDiffTime = search.dDiffTime;
    if (local_.lLastTime == 0 || remote_.lLastTime == 0) return false;
    bool bFound = false;
    for (std::int16_t I = 0; I < pC_CORRELATIONLEN; ++I) {
        if (!GetDiffTime(search, I) || !UpdateSync(search.dDiffTime)) continue;
        bFound = true;
        search.result.dOutDiffTime = search.dDiffTime;
    }
    lmY = Median.Median();
    return bFound;
}

/// Second pass: how far back the partner nearest to the median is; of equal ones the older.
std::optional<std::int16_t> ClassCorrelator::Nearest(Search& search) {
    std::optional<std::int16_t> best;
    double least = 0;
    for (std::int16_t I = 0; I < pC_CORRELATIONLEN; ++I) {
        if (!GetDiffTime(search, I)) continue;
        const double deviation = std::abs(search.dDiffTime - lmY);
        if (I == 0) least = deviation;
        if (!(deviation < Near && deviation <= least)) continue;
        least = deviation;
        best = I;
        search.result.dOutDiffTime = search.dDiffTime;
    }
    return best;
}

void ClassCorrelator::Accept(Search& search) {
    const std::optional<std::int16_t> best = Nearest(search);
    if (!best) return;
    GetDiffTime(search, *best);
    lmY = Median.Median2().dMedian;
    // A window of equal differences proves nothing either.
    const double variance = Median.VarianceMean();
    if (!(std::abs(search.dDiffTime - lmY) < Near && variance < WidestVariance && variance > 0)) return;
    ++lCorrelatedCount;
    search.result.dOutDiffTime = search.dDiffTime;
    search.result.bMatched = true;
}

bool ClassCorrelator::EstimateClockDrift(double dToa, DateTime PrevNow, bool bCompensation) {
    if (vDriftPrevNow_ == 0) vDriftPrevNow_ = PrevNow;
    if (lDriftPrevY_ == 0) lDriftPrevY_ = RoundToLong(dToa);
    const double seconds = (PrevNow - vDriftPrevNow_) * 86400;
    if (!bCompensation) return false;
    const double variance = Median.VarianceMean();
    // After a bad phase the estimate starts again.
    if (variance > WidestVariance) lDriftPrevPrevY_ = 0;
    if (!(std::abs(dToa - lDriftPrevY_) > 0 && variance < WidestVariance && variance > 0 &&
          seconds > LeastSeconds))
        return false;
    const bool bEstimates = lDriftPrevPrevY_ != 0;
    if (bEstimates) {
        const double estimate = (dToa - lDriftPrevY_) / (PrevNow - vDriftPrevNow_);
        UpdatePreDrift(100 * std::clamp(estimate, -FastestDrift, FastestDrift));
    }
    lDriftPrevPrevY_ = lDriftPrevY_;
    lDriftPrevY_ = RoundToLong(dToa);
    vDriftPrevNow_ = PrevNow;
    return bEstimates;
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
