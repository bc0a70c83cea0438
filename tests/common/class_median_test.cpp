#include "common/class_median.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace veltrix {
namespace {

using Values = std::vector<double>;

double MeanOf(const Values& values) {
    const double count = static_cast<double>(values.size());
    return values.empty() ? 0 : std::reduce(values.begin(), values.end()) / count;
}

double CoVarianceOf(const Values& one, const Values& other) {
    Values products;
    for (std::size_t i = 0; i < one.size(); ++i)
        products.push_back((one[i] - MeanOf(one)) * (other[i] - MeanOf(other)));
    return MeanOf(products);
}

/// The values from one position up to before another, both rounded, as far as there are any.
Values Slice(const Values& sorted, double from, double to) {
    const std::size_t first = static_cast<std::size_t>(std::nearbyint(from));
    const std::size_t end = std::min(static_cast<std::size_t>(std::nearbyint(to)), sorted.size());
    return first < end ? Values(&sorted[first], &sorted[first] + (end - first)) : Values();
}

/// Compares with the same statistics the slow way, from a list that is sorted anew for each question.
void ExpectSame(ClassMedian& median, const Values& values, const Values& attachments) {
    Values sorted = values;
    std::ranges::sort(sorted);
    const double count = static_cast<double>(sorted.size());
    const double middle = sorted.empty() ? 0 : Slice(sorted, (count - 1) / 2, count).front();
    const auto near = [](double one, double expected) {
        EXPECT_NEAR(one, expected, 1e-9 * (1 + std::abs(expected)));
    };
    EXPECT_EQ(median.Length(), static_cast<std::int32_t>(sorted.size()));
    EXPECT_EQ(median.Median(), middle);
    EXPECT_EQ(median.Median2().dMedian, middle);
    near(median.Mean(), MeanOf(values));
    near(median.Variance(), CoVarianceOf(values, values));
    near(median.VarianceAtch(), CoVarianceOf(attachments, attachments));
    near(median.CoVariance(), CoVarianceOf(values, attachments));
    const double quarter = std::nearbyint(count / 4);
    const Values half = Slice(sorted, quarter, quarter + std::nearbyint(count / 2));
    near(median.VarianceMean(), CoVarianceOf(half, half));
    near(median.MedianMean(20, 70), MeanOf(Slice(sorted, 0.2 * count, std::nearbyint(0.7 * count) + 1)));
    near(median.MedianMean(0, 100), MeanOf(sorted));
    const Values upper = Slice(sorted, count / 2, count);
    std::erase_if(sorted, [&](double value) { return !(std::abs(value - upper.front()) < 3); });
    const ClassMedian::AroundMiddle around = median.MedianAbs(-5, 3);
    EXPECT_EQ(around.lCount, static_cast<std::int32_t>(sorted.size()));
    near(around.dMean, sorted.empty() ? -5 : MeanOf(sorted));
}

TEST(ClassMedian, AgreesWithSortingAnew) {
    std::mt19937 random(7);
    ClassMedian median;  // one for all, so that each start finds another ring position
    for (const std::int32_t capacity : {1, 2, 3, 4, 9, 27, 300}) {
        for (const int distinct : {1, 3, 100000}) {  // the fewer values, the more ties
            EXPECT_FALSE(median.Start(capacity));
            EXPECT_EQ(median.Size(), capacity);
            ExpectSame(median, {}, {});
            std::uniform_int_distribution<int> numbers(-distinct, distinct);
            Values values, attachments;
            for (int i = 1; i < 3 * capacity + 5; ++i) {
                values.push_back(numbers(random) / 4.0);
                attachments.push_back(numbers(random));
                median.Update2(values.back(), attachments.back());
                if (i % (1 + capacity / 10) != 0) continue;
                const int first = std::max(i - capacity, 0);
                ExpectSame(median, Slice(values, first, i), Slice(attachments, first, i));
                if (HasFailure()) FAIL() << "capacity " << capacity << " update " << i;
            }
        }
    }
}

TEST(ClassMedian, SaysWhetherTheLastTwoMediansDiffer) {
    ClassMedian median;
    median.Start(3);
    median.Update2(5, 50);
    EXPECT_EQ(median.Median2().pAtch, 50);
    EXPECT_FALSE(median.MedianChanged()) << "the first one has none before it";
    median.Update(9);
    median.Update(9);
    median.Median();
    EXPECT_TRUE(median.MedianChanged());
    median.MedianAbs(0, 1e-9);
    EXPECT_FALSE(median.MedianChanged()) << "nothing in range gives the caller's value, here 0";
}

TEST(ClassMedian, AStraightLineCorrelatesWholly) {
    for (const double slope : {3.0, -2.0, 0.0}) {
        ClassMedian median;
        median.Start(20);
        EXPECT_EQ(median.CoDefiance(), 0);
        for (int i = 0; i < 30; ++i) median.Update2(slope * i + 4, i);
        EXPECT_NEAR(median.CoDefiance(), slope, 1e-12);
        EXPECT_NEAR(median.Correlation(), slope > 0 ? 1 : slope / 2, 1e-12);
    }
}

}  // namespace
}  // namespace veltrix
