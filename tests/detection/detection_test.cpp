// The detector and its threshold against the plain loop, against signals whose answer is known, and against
// failures; the blocks it is fed with and the log of its strikes.

#include "detection/detector.h"

#include <gtest/gtest.h>

#include <bitset>
#include <cmath>
#include <random>

#include "bench/plain_detector.h"
#include "detection/block_intake.h"
#include "detection/strike_log.h"
#include "support/recording_errors.h"
#include "support/samples.h"
#include "support/test_platform.h"

namespace veltrix {
namespace {

using namespace std::string_literals;

/// Remembers what scopes remember: the last 100 values each.
struct Scopes final : ScopeFeed {
    void Arm() override { drawing = 99; }
    void ScopeTrigger(double dValue) override {
        envelopes[seen++ % 100] = dValue;
        drawing = std::max(drawing - 1, 0);
    }
    void ScopeTriggerXY(double dNS, double dEW) override {
        ns[seenXY % 100] = dNS;
        ew[seenXY++ % 100] = dEW;
    }
    bool Drawing() const override { return drawing > 0; }
    void QuietFrames(std::size_t count, std::span<const double> lastNS,
                     std::span<const double> lastEW) override {
        EXPECT_FALSE(Drawing());
        EXPECT_EQ(lastNS.size(), std::min<std::size_t>(count, 100));
        seen += count - lastNS.size();
        seenXY += count - lastNS.size();
        for (std::size_t i = 0; i < lastNS.size(); ++i) {
            ScopeTrigger(3 * std::sqrt(lastNS[i] * lastNS[i] + lastEW[i] * lastEW[i]));
            ScopeTriggerXY(lastNS[i], lastEW[i]);
        }
    }
    void MarkFit(double, double) override {}

    std::vector<double> envelopes = std::vector<double>(100), ns = envelopes, ew = envelopes;
    std::size_t seen = 0, seenXY = 0;
    int drawing = 0;
};

struct Bench final : PulseReceiver {
    std::vector<Pulse> pulses;
    NoiseControl noise;
    Scopes scopes;
    RecordingErrors errors;
    ReportFailures failures{errors};
    Detector detector{noise, *this, [] { return 7; }};

    bool Run(const Samples& samples) { return detector.Process(samples, failures); }
    void OnTrigger() override {}
    void OnPulseEnd() override {}
    void ShowClipping(bool) override {}
    bool Deliver(const Pulse& pulse, FailureHandler&) override {
        pulses.push_back(pulse);
        return true;
    }
    /// Envelopes that alternate around 100 with a standard deviation near `sigma`.
    void FeedNoise(double sigma, int updates) {
        for (int i = 0; i < updates; ++i) noise.Update(100 + (i % 2 == 0 ? sigma : -sigma), failures);
    }
};

/// Stretches of anything a sound card can deliver: silence, full scale of both signs, envelopes exactly at
/// the threshold of 324, noise of all bits.
Samples HostileSky(std::mt19937& random, std::size_t frames) {
    Samples samples(2 * frames);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::int16_t extreme = i / 2 % 2 == 0 ? std::int16_t{-32768} : std::int16_t{32767};
        const std::int16_t choices[] = {0, extreme, std::int16_t{324}, std::int16_t{-324},
                                        static_cast<std::int16_t>(random())};
        samples[i] = choices[(i / 1400 + i % 2 * (i / 4200)) % 5];
    }
    return samples;
}

/// Noise with bursts near 11 kHz at random places, some clipped, some with long tails.
Samples RandomSky(std::mt19937& random, std::size_t frames) {
    std::normal_distribution<double> noise(0, std::uniform_real_distribution<double>(0.1, 60)(random));
    std::uniform_real_distribution<double> unit(0, 1);
    Samples samples(2 * frames);
    for (std::int16_t& sample : samples) sample = Clipped(noise(random));
    for (std::size_t at = 0; at < frames; at += static_cast<std::size_t>(40 + 4000 * unit(random))) {
        const double size = std::pow(10, 2.2 + 3 * unit(random));
        const double angle = 6.283 * unit(random);
        const double decay = 10 + 200 * unit(random) * unit(random);
        for (std::size_t k = 0; at + k < frames && k < 1200; ++k) {
            const double x =
                size * std::exp(-static_cast<double>(k) / decay) * std::cos(2.9 * static_cast<double>(k));
            samples[2 * (at + k)] = Clipped(samples[2 * (at + k)] + x * std::cos(angle));
            samples[2 * (at + k) + 1] = Clipped(samples[2 * (at + k) + 1] + x * std::sin(angle));
        }
    }
    return samples;
}

TEST(Detector, AgreesWithThePlainLoopWhateverTheOptionsAndBlockLengths) {
    std::size_t pulses = 0;
    for (unsigned variant = 0; variant < 48; ++variant) {
        const std::bitset<5> bits(variant);
        const PlainDetector::Options options{.invert = bits[0],
                                             .add90 = bits[1],
                                             .sub90 = bits[2],
                                             .filter = !bits[3],
                                             .automatic = bits[4],
                                             .offset = static_cast<int>(variant % 11) - 5,
                                             .minAuto = variant % 3 == 0 ? 99 : 85};
        std::mt19937 random(variant);
        const Samples sky = variant % 7 == 6 ? HostileSky(random, 60000) : RandomSky(random, 60000);

        PlainDetector plain(options);
        Bench bench;
        bench.noise.StartNoiseLevel();
        bench.noise.bAutomatic = options.automatic;
        bench.noise.iMinAuto = static_cast<std::int16_t>(options.minAuto);
        bench.noise.lThresholdOffset = options.offset;
        bench.detector.antenna = {options.invert, options.add90, options.sub90};
        bench.detector.bHighPass = options.filter;
        if (variant % 2 == 0) bench.detector.SetScopes(&bench.scopes);
        bench.detector.lSampleCounter = plain.counter = 2099970000;
        for (std::span<const std::int16_t> rest = sky; !rest.empty();) {
            const std::size_t frames = std::uniform_int_distribution<std::size_t>(1, 5000)(random);
            const auto block = rest.first(std::min(2 * frames, rest.size()));
            rest = rest.subspan(block.size());
            plain.Process(block);
            ASSERT_TRUE(bench.detector.Process(block, bench.failures));
            ASSERT_EQ(bench.noise.lThreshold, plain.threshold) << "variant " << variant;
        }
        EXPECT_EQ(bench.detector.lTriggerCount, plain.triggers);
        EXPECT_EQ(bench.detector.lSampleCounter, plain.counter);
        ASSERT_EQ(bench.pulses.size(), plain.pulses.size());
        for (std::size_t i = 0; i < plain.pulses.size(); ++i) {
            const Pulse &got = bench.pulses[i], &want = plain.pulses[i];
            EXPECT_EQ(std::pair(got.dLocalSample, got.N), std::pair(want.dLocalSample, want.N));
            EXPECT_NEAR(got.dAmp, want.dAmp, 1e-9);
            // No points to speak of, as when a pulse is clipped from its first frame on: no line.
            if (want.N < 2 || std::isnan(want.dFitError)) continue;
            EXPECT_NEAR(got.dDir, want.dDir, 1e-5);
            EXPECT_NEAR(got.dFitError, want.dFitError, 1e-4);
        }
        if (variant % 2 == 0) {
            EXPECT_EQ(std::pair(bench.scopes.seen, bench.scopes.seenXY), std::pair(plain.seen, plain.seenXY));
            EXPECT_EQ(bench.scopes.envelopes, plain.envelopes);
            EXPECT_EQ(bench.scopes.ns, plain.ns100);
            EXPECT_EQ(bench.scopes.ew, plain.ew100);
        }
        pulses += plain.pulses.size();
    }
    EXPECT_GT(pulses, 500U);
}

TEST(Detector, OptionsThatChangeInsideABlockCountFromTheNextFrameOn) {
    // What a tick delivers may let the user's clicks in; the rest of the block then goes on differently, as
    // if it had come in a block of its own.
    struct Clicking final : PulseReceiver {
        explicit Clicking(bool on) : clicks(on) {}
        void Click() {
            detector.bHighPass = !detector.bHighPass;
            detector.antenna.bAdd90 = detector.bHighPass;
        }
        void OnTrigger() override { triggers.push_back(detector.lSampleCounter); }
        void OnPulseEnd() override { ends.push_back(detector.lSampleCounter); }
        void ShowClipping(bool) override {}
        bool Deliver(const Pulse& pulse, FailureHandler&) override {
            bearings.push_back(pulse.dDir);
            if (clicks) Click();
            return true;
        }
        bool clicks;
        NoiseControl noise;
        SkipFailures failures;
        Detector detector{noise, *this, [] { return 7; }};
        std::vector<std::int32_t> triggers, ends;
        std::vector<double> bearings;
    };
    std::mt19937 random(5);
    const Samples sky = RandomSky(random, 40000);
    Clicking inside(true), between(false);
    inside.detector.Process(sky, inside.failures);
    for (std::size_t i = 0; i < sky.size(); i += 2) {
        const std::size_t pulses = between.bearings.size();
        between.detector.Process(std::span(sky).subspan(i, 2), between.failures);
        if (between.bearings.size() > pulses) between.Click();
    }
    EXPECT_GT(inside.bearings.size(), 5U);
    EXPECT_EQ(inside.triggers, between.triggers);
    EXPECT_EQ(inside.ends, between.ends);
    EXPECT_EQ(inside.bearings, between.bearings);
}

TEST(Detector, FindsTheBearingModulo180AndTheStrengthOfAKnownPulse) {
    for (const bool filter : {false, true}) {
        for (double bearing = 0; bearing < 360; bearing += 7.5) {
            Bench bench;
            bench.detector.bHighPass = filter;
            bench.Run(Burst(bearing));
            ASSERT_EQ(bench.pulses.size(), 1U) << bearing;
            const Pulse& pulse = bench.pulses.front();
            EXPECT_NEAR(std::remainder(pulse.dDir - bearing, 180), 0, 0.02) << bearing;
            EXPECT_TRUE(pulse.dDir >= 0 && pulse.dDir <= 360);
            EXPECT_LT(pulse.dFitError, 0.2);
            EXPECT_EQ(pulse.dStopwatchTime, 7);
            EXPECT_NEAR(pulse.dLocalSample, 51, filter ? 4 : 0);
        }
    }
    Bench flat;
    flat.detector.bHighPass = false;
    flat.Run(Plateau(1324));
    // 110 frames of 1000 above the threshold, the first of them counted twice.
    EXPECT_NEAR(flat.pulses.at(0).dAmp, 20 * std::log10(111000 / 3244032.0), 1e-9);
    EXPECT_NEAR(flat.pulses.at(0).dDir, 0, 1e-6);  // the slope 1e9 stands for north
    flat.Run({1, 2, 3});
    EXPECT_EQ(flat.detector.lSampleCounter, 402) << "a left sample without its right one is a frame";
}

TEST(NoiseControl, MeasuresUnderAThresholdSetByHandToo) {
    Bench bench;
    NoiseControl& noise = bench.noise;
    noise.lThresholdOffset = 5;
    noise.StartNoiseLevel();
    EXPECT_NEAR(CalcAutoThreshold(noise.DNoiseLevel(), 5), 324, 1);
    double shown = 0;
    noise.OnMeasured = [&shown](double q) { shown = q; };
    bench.FeedNoise(10, 4000);
    // Five standard deviations smoothed, three times that, and 5 dB lower.
    EXPECT_NEAR(noise.LAutoThreshold(), 150 * std::pow(10, -0.25), 1);
    EXPECT_EQ(shown, 91);
    EXPECT_EQ(noise.LNoiseMin(), noise.LAutoThreshold());
    noise.RestartExtremes();
    EXPECT_EQ(noise.LNoiseMax(), 324);
}

TEST(NoiseControl, SilenceEndsInTheLogarithmOfZeroAndTheLastLevelStays) {
    for (const auto& [limit, level] : {std::pair{99, 36}, {0, 3244032}}) {
        Bench bench;
        NoiseControl& noise = bench.noise;
        noise.bAutomatic = true;
        noise.iMinAuto = static_cast<std::int16_t>(limit);
        bench.FeedNoise(0, 3000);
        ASSERT_FALSE(bench.errors.reports.empty());
        EXPECT_EQ(bench.errors.reports[0].failure.Number(), errors::InvalidCall);
        EXPECT_EQ(noise.lThreshold, level) << "never below its limit";
        bench.errors.replies = {reply::None};
        EXPECT_FALSE(noise.Update(0, bench.failures));
    }
}

TEST(BlockIntake, TakesWhatTheFileHoldsAndDeletesIt) {
    Samples large(150001);
    for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<std::int16_t>(i);
    const std::pair<std::string, Samples> cases[] = {
        {"", {}},
        {"\x01\x00\xff\xff"s, {1, -1}},
        {"\x00\x80\xff\x7f\x02\x00"s, {-32768, 32767, 2}},  // a left sample without its right one
        {"\x05\x00\x07"s, {5}},                             // half a sample behind it
        {BytesOf(large), large},
    };
    TestPlatform computer;
    BlockIntake intake(computer.files);
    for (const auto& [bytes, samples] : cases) {
        computer.files.Put("audio.dat", bytes);
        Samples taken;
        const auto process = [&taken](std::span<const std::int16_t> row) {
            EXPECT_EQ(taken.size() % 2, 0U) << "a frame must not be torn";
            taken.insert(taken.end(), row.begin(), row.end());
            return true;
        };
        const auto opened = [] {};
        const auto take = [&] { return intake.Take("audio.dat", opened, process); };
        EXPECT_EQ(take(), BlockIntake::Outcome::Taken);
        EXPECT_EQ(taken, samples);
        EXPECT_EQ(take(), BlockIntake::Outcome::NoBlock);
    }
}

TEST(StrikeLog, WritesLinesOfFixedFormIntoTheFileOfTheMomentOfWriting) {
    TestPlatform computer;
    RecordingErrors errors;
    StrikeLog log(computer.files, computer.clock, errors);
    computer.files.MakeFolder("Data");
    computer.clock.SetNow(CalendarParts{2024, 12, 31, 23, 59, 59});
    log.FileUpdate({DateTimeOf({2008, 6, 21, 14, 3, 9}), 123.44, -45.25, 678901, 42}, "ignored");
    computer.clock.Advance(1000);
    log.FileUpdate({DateTimeOf({2008, 6, 21, 14, 3, 9}), 0, -100, 2099999999, 0}, "ignored");
    EXPECT_EQ(computer.files.Content("Data\\20241231N.csv"),
              "2008/06/21 14:03:09,123.4,0000678901,-045.3,000000042\n");
    EXPECT_EQ(computer.files.Content("Data\\20250101N.csv"),
              "2008/06/21 14:03:09,000.0,2099999999,-100.0,000000000\n");
}

}  // namespace
}  // namespace veltrix
