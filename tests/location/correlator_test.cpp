#include "location/class_correlator.h"

#include <gtest/gtest.h>

#include <random>

#include "support/manual_clock.h"
#include "support/recording_errors.h"

namespace veltrix {
namespace {

struct CorrelatorTest : ::testing::Test {
    ManualClock clock;
    PreciseNow preciseNow{clock};
    RecordingErrors errors;
    ClassCorrelator corr{clock, preciseNow, errors};

    Correlation Offer(bool bLocal, double time, bool bRealTime = false) {
        return corr.Correlator({bLocal, 0, 0, 30, -40, time}, bRealTime);
    }
    /// A stroke that both hear, the remote clock `ms` behind.
    bool Both(double time, double ms) {
        Offer(true, time);
        return Offer(false, time - ms * 22).bMatched;
    }
};

/// Two stations under one sky: clocks 41 s and 40 ppm apart, 3 ms of jitter, a fifth of the strokes missed by
/// each, and noise that only one hears.
TEST_F(CorrelatorTest, PairsTheStrokesThatBothHearAndNoOthers) {
    std::mt19937 random(7);
    const auto uniform = [&random](double low, double high) {
        return std::uniform_real_distribution<>(low, high)(random);
    };
    int heard = 0;
    int right = 0;
    int wrong = 0;
    double at = 1e6;  // samples
    for (int stroke = 0; stroke < 1500; ++stroke) {
        at += uniform(0.05, 2) * 22050;
        const double local = std::round(at);
        const double remote = std::round(at * (1 + 40e-6) - 41000 * 22 + uniform(-3, 3) * 22);
        const bool isLocal = uniform(0, 1) < 0.8;
        const bool isRemote = uniform(0, 1) < 0.8;
        if (uniform(0, 1) < 0.1) Offer(uniform(0, 1) < 0.5, local - 9000);
        bool bMatched = isLocal && Offer(true, local).bMatched;
        bMatched = (isRemote && Offer(false, remote).bMatched) || bMatched;
        if (stroke < 50) continue;  // the offset is being learned
        heard += isLocal && isRemote;
        if (!bMatched) continue;
        const bool isRight =
            isLocal && isRemote && corr.MatchedLocal().dTime == local && corr.MatchedRemote().dTime == remote;
        ++(isRight ? right : wrong);
    }
    EXPECT_GT(heard, 850);
    EXPECT_GE(right, heard * 0.97);
    EXPECT_LE(wrong, 5);
    EXPECT_EQ(errors.reports.size(), 0u);
}

TEST_F(CorrelatorTest, ANumberOfCloseButNotOneAndTheSameDifferencesMakeAPair) {
    double at = 1e6;
    for (int i = 0; i < 12; ++i) EXPECT_FALSE(Both(at += 60000, 500)) << "variance 0, stroke " << i;
    EXPECT_FALSE(Both(at += 60000, 503));  // one other value is outside the middle half
    EXPECT_TRUE(Both(at += 60000, 497) || Both(at += 60000, 502) || Both(at += 60000, 498));
    EXPECT_FALSE(Both(at += 60000, corr.lmY + 20)) << "a pair lies nearer than 20 ms";
    EXPECT_TRUE(Both(at += 60000, corr.lmY + 19));
    EXPECT_EQ(corr.lRemoteSampleCount, corr.lLocalSampleCount);
}

/// At the turn of one sample counter the offset of the clocks is another one, which has to be learned as at
/// the start.
TEST_F(CorrelatorTest, PairsAgainSoonAfterOneSampleCounterHasTurned) {
    constexpr double Turn = 2100000000;
    std::mt19937 random(11);
    std::uniform_real_distribution<> jitter(-2 * 22, 2 * 22), pause(0.5 * 22050, 4 * 22050);
    double at = Turn - 300 * 2.25 * 22050;
    int missed = 0;
    int behind = 0;
    for (int stroke = 0; stroke < 900; ++stroke) {
        at += std::round(pause(random));
        Offer(true, at < Turn ? at : at - Turn);
        const bool bMatched = Offer(false, std::round(at - 1e9 + jitter(random))).bMatched;
        if (at < Turn) continue;
        missed += !bMatched;
        ++behind;
    }
    EXPECT_GT(behind, 500);
    EXPECT_LE(missed, 40);
    EXPECT_EQ(errors.reports.size(), 0u);
}

TEST_F(CorrelatorTest, ASideThatTalksToItselfIsNotStored) {
    double at = 1e6;
    for (int i = 0; i < 30; ++i) Both(at += 60000, i % 2);
    for (int i = 0; i < 100; ++i) Offer(true, at += 60000);
    EXPECT_EQ(corr.lLocalSampleCount, 130) << "but counted";
    const double last = corr.MatchedLocal().dTime;
    Offer(true, at += 60000);
    EXPECT_EQ(corr.MatchedLocal().dTime, last);
    Offer(false, at);  // a detection of the silent side ends it
    Offer(true, at += 60000);
    EXPECT_EQ(corr.MatchedLocal().dTime, at);
    corr.Clear();
    EXPECT_EQ(corr.lLocalSampleCount + corr.lCorrelatedCount + corr.Median.Length(), 0);
}

TEST_F(CorrelatorTest, ATimeBeyondAllCountsIsReportedWithTheStateOfTheSearch) {
    Offer(false, 5000);
    EXPECT_FALSE(Offer(true, 1e10, true).bMatched);
    ASSERT_EQ(errors.reports.size(), 1u);
    EXPECT_EQ(errors.reports[0].context.ErrProcedure, "Correlator");
    ASSERT_EQ(errors.lines.size(), 3u);
    EXPECT_EQ(errors.lines[0].substr(0, 11) + errors.lines[1].substr(0, 3) + errors.lines[2].substr(0, 4),
              "dDiffTime: i: I2: ");
}

/// A remote sample clock 50 ppm slow: 4.3 s a day, followed from nothing within two hours.
TEST_F(CorrelatorTest, TheDriftIsLearnedFromWhatIsLeftOfIt) {
    double at = 1e6;
    for (int minute = 0; minute < 200; ++minute)
        for (int i = 0; i < 6; ++i) {
            clock.Advance(10000);
            at += 10 * 22000.0;
            Offer(true, at);
            const Correlation found = Offer(false, at * (1 - 50e-6) + i % 3);
            if (found.bMatched) corr.EstimateClockDrift(found.dOutDiffTime, preciseNow.Now(), true);
        }
    EXPECT_NEAR(corr.dPreDrift, 4320, 400);
    const double rate = corr.dPreDrift;
    corr.EstimateClockDrift(1e6, preciseNow.Now(), false);
    EXPECT_EQ(corr.dPreDrift, rate) << "only with the compensation on";
}

}  // namespace
}  // namespace veltrix
