#pragma once
// ClassMedian: rolling statistics over the last values of a stream.

#include <cstdint>
#include <vector>

namespace veltrix {

/// Keeps the last L values of a stream in a ring, a second value (the attachment) with each, and at all times
/// an index of the ring in ascending order of value, so that median and trimmed statistics cost an index
/// lookup.
///
/// Owned by whoever follows the stream. REQUIRES Start() before anything else; after it, no operation
/// allocates. Invariant after each update: Data(Order(k)) <= Data(Order(k+1)) for 0 <= k < Length() - 1.
class ClassMedian {
  public:
    /// Result of MedianAbs().
    struct AroundMiddle {
        double dMean = 0;         ///< the mean, or the caller's fallback when nothing was in range
        std::int32_t lCount = 0;  ///< how many values it is of
    };

    /// Result of Median2().
    struct Tagged {
        double dMedian = 0;
        double pAtch = 0;  ///< the attachment of that value
    };

    /// Empties the object and gives it capacity L. REQUIRES 1 <= `pMaxArraySize`. Returns false.
    bool Start(std::int32_t pMaxArraySize);

    /// The capacity L.
    std::int32_t Size() const { return lMax; }
    /// The number of values held, at most L.
    std::int32_t Length() const { return lCount; }

    /// Adds a value, replacing the oldest one when L are held. Returns false.
    bool Update(double pData);
    /// Adds a value and its attachment. Returns false.
    bool Update2(double pData, double pAtch);

    /// The value at the middle of the sorted values, position (Length() - 1) / 2 rounded with ties to even; 0
    /// when empty. Remembers the result for MedianChanged().
    double Median();
    /// As Median(), with the attachment of the median value; 0 when empty.
    Tagged Median2();
    /// Mean of the values nearer than `pRange` to the value at sorted position Length() / 2, rounded with
    /// ties to even (deliberately not the position of Median()); `pData` when there are none. Remembered as
    /// the median, too.
    AroundMiddle MedianAbs(double pData, double pRange);

    /// Mean of the values held; 0 when empty.
    double Mean() const;
    /// Mean square deviation from Mean(), divided by Length(); 0 when empty.
    double Variance() const;
    /// Variance of the middle half of the sorted values, which ignores the outer quarters; 0 when there are
    /// none.
    double VarianceMean() const;
    /// The same number as Variance(). Callers take the square root: it is deliberately not a standard
    /// deviation.
    double Sigma() const { return Variance(); }
    /// As Variance(), of the attachments.
    double VarianceAtch() const;
    /// Mean product of the deviations of value and attachment from their means; 0 when empty.
    double CoVariance() const;
    /// Mean quotient of the deviation of the value by that of its attachment, over those whose divisor is not
    /// 0; 0 when there are none.
    double CoDefiance() const;
    /// Kept for the outside callers of the class; does nothing.
    void DisplayAData(double) const {}
    /// True if the last two median queries differ and neither gave 0.
    bool MedianChanged() const { return dMedian != dPrevMedian && dMedian != 0 && dPrevMedian != 0; }
    /// CoVariance() by the root of both variances; 0 unless both are above 0.
    double Correlation() const;
    /// Mean of the sorted values from position dLow percent to dHigh percent of Length(), each rounded with
    /// ties to even and limited to the values held; 0 when there are none.
    double MedianMean(double dLow, double dHigh) const;

    /// The ring of values, positions 0 to L - 1; the element L is never used.
    std::vector<double> Data;

  private:
    double Sorted(std::int32_t k) const { return Data[Place(Order[Place(k)])]; }
    static std::size_t Place(std::int32_t i) { return static_cast<std::size_t>(i); }
    void Insert(double v, std::int32_t k);
    double MeanAtch() const;

    std::vector<double> Atch;         // ring of attachments, same positions as Data
    std::vector<std::int32_t> Order;  // ring positions in ascending order of their value, -1 where not in use
    std::int32_t lHead = 0;           // ring position that the next value overwrites
    std::int32_t lCount = 0;
    std::int32_t lMax = 0;
    double dSum = 0;  // running sum of the values held
    double dLast = 0;
    double dMedian = 0;
    double dPrevMedian = 0;
    bool bDirty = false;
};

}  // namespace veltrix
