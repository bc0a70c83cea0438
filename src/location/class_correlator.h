#pragma once
// ClassCorrelator: what is known of the clocks of a pair of stations, the local and a remote one.

#include "common/class_median.h"
#include "common/date_time.h"
#include "platform/clock.h"

namespace veltrix {

/// The offset between two stations' clocks moves by a drift rate that is preset, and improved as strikes are
/// paired. One inside every ClassMapper. REQUIRES that the clock outlives it.
class ClassCorrelator {
  public:
    explicit ClassCorrelator(Clock& clock);

    /// Moves the drift rate by a hundredth of `dDrift`, in ms per day. What has drifted until now stays in
    /// the offset.
    void UpdatePreDrift(double dDrift);
    /// Sets the drift rate, in ms per day. What has drifted until now stays in the offset.
    void SetPreDrift(double dDrift);

    ClassMedian Median;     ///< accepted differences of time, ms; the last 5
    ClassMedian TOAMedian;  ///< differences of time less that of travel, ms; the last 10

    double dPreDrift = 0;      ///< drift rate in force, ms per day
    double dSumPreDrift = 0;   ///< offset gathered up to dNowAtStart, ms
    DateTime dNowAtStart = 0;  ///< when the drift rate last changed

    /// Capacity of TOAMedian.
    static constexpr int TOAMedianLength = 10;

  private:
    void FoldDrift();

    Clock& clock_;
};

}  // namespace veltrix
