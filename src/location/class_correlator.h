#pragma once
// ClassCorrelator: decides which detections of two stations are the same lightning stroke, and learns from
// them how far the two stations' clocks are apart.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "common/class_median.h"
#include "common/date_time.h"
#include "display/class_histogram.h"
#include "platform/clock.h"
#include "platform/error_convention.h"
#include "timebase/precise_now.h"

namespace veltrix {

/// A detection as it is offered to a correlator.
struct OfferedDetection {
    bool bLocalUpdate = false;  ///< of the local station, else of the remote one
    double dX = 0;              ///< place of the reporting station on the map's bitmap, y upwards
    double dY = 0;
    double dDir = 0;   ///< bearing in degrees as measured
    double dAmp = 0;   ///< dB
    double dTime = 0;  ///< sample number, or milliseconds in real-time mode
};

/// What has become of it.
struct Correlation {
    bool bMatched = false;    ///< a pair was accepted; it stands at index -1 of both sides
    double lmY = 0;           ///< median of the accepted differences, ms
    double dOutDiffTime = 0;  ///< local less remote time of the pair, or of the last candidate, ms
};

/// One inside every ClassMapper: the local station and that remote one. Two stations never share a clock, so
/// equal times mean nothing. The differences of all plausible pairs go to a histogram, whose peak is the
/// offset of the clocks; the last few that fell into the peak have a median, and a pair is accepted when its
/// difference lies within 20 ms of that. The slow movement of the offset becomes a drift rate, which is taken
/// off every later difference.
///
/// REQUIRES that clock, precise clock and reporter outlive it. Of a hundred stations few are ever connected,
/// so the histograms are made with the first detection; from then on nothing allocates but Clear().
class ClassCorrelator final : public HistogramOwner {
  public:
    ClassCorrelator(Clock& clock, PreciseNow& preciseNow, ErrorReporter& errors);

    /// Ring length of each side.
    static constexpr std::int16_t Correlatorlen = 100;
    /// The most recent detections of the other side that are tried as partners.
    static constexpr std::int16_t pC_CORRELATIONLEN = 10;
    /// Drift rates that the user may set, ms per day both ways.
    static constexpr double FarthestPreDrift = 90000000;
    /// A Median whose VarianceMean() is below this says where the clocks stand.
    static constexpr double WidestVariance = 5000;
    /// Capacity of TOAMedian.
    static constexpr int TOAMedianLength = 10;

    /// Takes a detection and looks for its partner. With `bRealTime` the times are milliseconds as they
    /// stand, else sample numbers. A side that runs 100 detections ahead of the other is not stored until the
    /// other speaks. Runs under the error convention, a failure with the state of the search in the log; a
    /// time beyond a 4-byte integer is one.
    Correlation Correlator(const OfferedDetection& detection, bool bRealTime);

    /// Improves the drift rate, from points at least a minute apart. `dToa` is the present difference less
    /// that of travel, in ms, `PrevNow` the precise time. Does nothing while `bCompensation` is off. True
    /// when dPreDrift has changed. Raises Overflow for a difference beyond a 4-byte integer.
    bool EstimateClockDrift(double dToa, DateTime PrevNow, bool bCompensation);

    /// Moves the drift rate by a hundredth of `dDrift`, in ms per day. What has drifted until now stays in
    /// the offset.
    void UpdatePreDrift(double dDrift);
    /// Sets the drift rate, in ms per day. What has drifted until now stays in the offset.
    void SetPreDrift(double dDrift);

    /// Empties rings, counters, medians and histograms. The drift rate stays; what has drifted since its last
    /// change is dropped.
    void Clear();

    /// One side's part in the detections held.
    struct Held {
        double dTime = 0;
        double dAmp = 0;
        double dX = 0;
        double dY = 0;
        double dA = 0;  ///< slope of the bearing line on the map, the tangent of 90 - dDir
    };
    /// The local and the remote half of the last pair that was looked at; after a match, of the pair.
    const Held& MatchedLocal() const { return local_.At(iMatchLocal_); }
    const Held& MatchedRemote() const { return remote_.At(iMatchRemote_); }

    double MedianDifference() override { return Median.Median(); }

    ClassMedian Median;     ///< accepted differences of time, ms; the last 5, each with its moment
    ClassMedian TOAMedian;  ///< differences of time less that of travel, ms; the last 10

    std::int32_t lRemoteSampleCount = 0;  ///< remote detections offered
    std::int32_t lLocalSampleCount = 0;   ///< local detections offered
    std::int32_t lCorrelatedCount = 0;    ///< pairs accepted
    double lmY = 0;                       ///< median of the accepted differences, ms

    double dPreDrift = 0;      ///< drift rate in force, ms per day
    double dSumPreDrift = 0;   ///< offset gathered up to dNowAtStart, ms
    DateTime dNowAtStart = 0;  ///< when the drift rate last changed

    ClassHistogram& cCoarseHistogram() { return TheHistograms().coarse; }  ///< of the fixes, as measured
    ClassHistogram& cFineHistogram() { return TheHistograms().fine; }      ///< of the fixes, less the travel
    ClassHistogram& cMediumHistogram() { return TheHistograms().medium; }  ///< of all plausible pairs, 10 ms
    /// The one that is displayed.
    ClassHistogram& cHistogram() { return cMediumHistogram(); }

  private:
    /// The detections of one side, the newest at the head.
    class Side {
      public:
        Side() { Init(); }
        /// Empties the ring; whoever speaks goes on where it stood.
        void Init();
        void Store(const OfferedDetection& detection);
        /// Index of the `back`-th most recent one, 0 being the newest.
        std::int16_t Back(std::int16_t back) const;
        const Held& At(std::int16_t index) const { return ring_[static_cast<std::size_t>(index)]; }
        std::int32_t lLastTime = 0;  ///< 0 until one has come

      private:
        std::array<Held, Correlatorlen> ring_;
        std::int16_t iHead_ = 0;
    };

    struct Histograms {
        explicit Histograms(ErrorReporter& errors) : coarse(errors), medium(errors), fine(errors) {}
        ClassHistogram coarse;
        ClassHistogram medium;
        ClassHistogram fine;
    };

    /// The search for the partner of one detection.
    struct Search {
        bool bLocalUpdate;
        bool bRealTime;
        DateTime now;
        double dDiffTime = 0;
        std::int16_t I = 0;   // how far back the partner is
        std::int16_t I2 = 0;  // its index
        Correlation result = {};
    };

    void CorrelatorInit();
    Histograms& TheHistograms();
    void FoldDrift();
    bool CheckBalance(bool bLocalUpdate);
    bool GetDiffTime(Search& search, std::int16_t I);
    bool UpdateSync(double dY);
    bool Candidates(Search& search);
    void Accept(Search& search);
    std::optional<std::int16_t> Nearest(Search& search);

    Clock& clock_;
    PreciseNow& preciseNow_;
    ErrorReporter& errors_;
    std::unique_ptr<Histograms> histograms_;
    Side local_;
    Side remote_;
    std::int16_t iMatchLocal_ = 0;
    std::int16_t iMatchRemote_ = 0;
    std::int16_t iLocalRun_ = 0;
    std::int16_t iRemoteRun_ = 0;
    bool bMedianSeeded_ = false;
    DateTime vDriftPrevNow_ = 0;        // 0: none yet
    std::int32_t lDriftPrevY_ = 0;      // 0: none yet
    std::int32_t lDriftPrevPrevY_ = 0;  // 0: none yet
};

}  // namespace veltrix
