// The tick and the delivery of what it finds.

#include "common/neutral_text.h"
#include "station/station_fixture.h"

namespace veltrix {
namespace {

/// Writes down who is called, in order.
struct Consumers final : DetectionBroadcaster,
                         DriftRecord,
                         StationMatching,
                         StrikeAlarm,
                         LocalCalibration,
                         StrikeDisplays {
    explicit Consumers(TestStation& station) {
        DetectionConsumers& c = station.form.Consumers();
        c.onDetection = [this, &station](const Detection&) {
            calls += station.LoggedStrikes() == 0 ? "early " : "logged ";
        };
        c.broadcaster = this;
        c.clockDrift = this;
        c.stations = this;
        c.alarm = this;
        c.calibration = this;
        c.displays = this;
    }
    void BroadcastDetection(const Detection& d) override {
        calls += "broadcast ";
        last = d;
        if (onBroadcast) onBroadcast();
    }
    void Timer6_Timer() override { ++sends; }
    void CloseStalePing() override { ++pingChecks; }
    void Update(double, double c) override { calls += "drift " + GeneralNumber(c) + " "; }

    bool MapUpdateAll(Pulse&, bool bRealTime, Located& found, FailureHandler&) override {
        calls += bRealTime ? "match realtime " : "match ";
        found = located;
        return true;
    }
    void Update(double dLat, double dLon, double dLatLightning, double dLonLightning) override {
        calls += "alarm";
        for (const double degrees : {dLat, dLon, dLatLightning, dLonLightning})
            calls += " " + GeneralNumber(degrees);
        calls += " ";
    }
    double DestinToSource(double d) override { return d + 1; }
    void GyrelUpdate(double dDir, double, const AmplitudeLimits&, ColourValue color) override {
        calls += "gyrel" + FormatNeutral(dDir, "0") + " ";
        EXPECT_EQ(color, Yellow);
    }
    void UpdateDisplay(DateTime date, double dDir, double dAmp, const AmplitudeLimits&) override {
        calls += "history" + FormatNeutral(dDir, "0") + " ";
        shown = GeneralDate(date) + " " + GeneralNumber(dAmp);
    }

    std::string calls, shown;
    Detection last;
    std::function<void()> onBroadcast;
    Located located;
    int sends = 0, pingChecks = 0;
};

struct Running : StationTest {
    Running() { StartAndSettle(); }
};
using Delivery = Running;
using Tick = Running;

TEST_F(Delivery, GoesInItsFixedOrder) {
    Consumers consumers(station);
    const auto fed = [&] {
        consumers.calls.clear();
        station.Feed(Burst(30));
        EXPECT_NEAR(consumers.last.dDir, 30, 0.1);
        return consumers.calls;
    };
    EXPECT_EQ(fed(), "logged broadcast drift 51 match gyrel30 history30 ");
    consumers.located = {true, 51.5, 7.25};
    for (const char* const name :
         {"Check4 1", "OptionAngleCorrectionInGyrel 1", "txtLocalCorrectionAngle -85", "OptionRealTime 1"})
        station.Ask(std::string("set ") + name);
    // Corrected for the displays alone, and plotted at the opposite bearing too.
    EXPECT_EQ(fed(),
              "logged broadcast drift 351 match realtime alarm 52 6 51.5 7.25 gyrel306 gyrel486 history306 ");
    station.Ask("set OptionRemoteShow 1");
    EXPECT_EQ(fed(), "logged broadcast drift 651 match realtime alarm 52 6 51.5 7.25 history306 ");
}

TEST_F(Delivery, ShowsTheDetectionAndTheStrongestSoFar) {
    for (const auto& [bearing, peak] : {std::pair{30, 9000}, {60, 4000}}) station.Feed(Burst(bearing, peak));
    station.ExpectShown(
        "Text2=2|Text5=-18.0 dB   030.0 °   12:00:02|txtMindB=-100 dB|Label4.ForeColor=16777215");
    EXPECT_EQ(station.Get("Text3").substr(0, 8), "060.0 °");
    station.Ask("mouse Text5 down 3 3");
    station.Feed(Burst(60, 4000));
    EXPECT_NE(station.Get("Text5").find("060.0"), std::string::npos);
}

TEST_F(Delivery, TheInhibitEndsAfter200Milliseconds) {
    station.Ask("set OptionInhibit 1");
    for (int i = 0; i < 6; ++i) station.Feed(Burst(30));
    // At 0, 200 and 400 ms, or one tick later where the timers meet.
    const auto strikes = station.LoggedStrikes();
    EXPECT_TRUE(strikes == 2 || strikes == 3) << strikes;
    EXPECT_EQ(station.Get("Text2"), std::to_string(strikes));
}

TEST_F(Delivery, AHeldLogAndAFullDiskCostLinesAndNothingElse) {
    Consumers consumers(station);
    const std::string log = "Data\\20240615N.csv";
    computer.files.FailOn(FileOperation::AppendLine, log, errors::PermissionDenied);
    station.Feed(Burst(30));
    EXPECT_TRUE(computer.messageBox.questions.empty()) << "a file that another program holds is no error";
    computer.files.FailOn(FileOperation::AppendLine, log, errors::DiskFull, 2);
    computer.messageBox.replies = {reply::Retry, reply::Ignore};
    station.Feed(Burst(30));
    EXPECT_EQ(computer.messageBox.questions.size(), 2U);
    computer.files.FailOn(FileOperation::AppendLine, "", errors::DiskFull, 1000);
    computer.files.FailOn(FileOperation::WriteWhole, "", errors::DiskFull, 1000);
    for (int i = 0; i < 5; ++i) station.Feed(Burst(30));
    EXPECT_EQ(consumers.calls.substr(0, 16), "early broadcast ");
    EXPECT_EQ(station.Get("Text2"), "7");
    EXPECT_EQ(station.LoggedStrikes() + std::ssize(station.warnings), 0);
}

TEST_F(Delivery, ReplaysTodaysLogOfTheChosenFolder) {
    Consumers consumers(station);
    computer.files.Put("D:\\logs\\20240615N.csv",
                       "2024/03/01 10:00:00,123.4,0000678901,-045.3,000000042\n"
                       "damaged\n"
                       "2024-03-01 10.00.01,001.6,0000678902,-100.0,000000000\n");
    for (const char* const request : {"set Dir1 D:\\logs", "set File1 20240615N.csv"})
        EXPECT_EQ(station.Ask(request), "ok");
    EXPECT_EQ(consumers.calls, "history123 history2 ");
    EXPECT_EQ(consumers.shown, "2024/03/01 10:00:01 -100");
    EXPECT_EQ(computer.messageBox.questions.size(), 1U);
}

TEST_F(Tick, RunsItsStepsWithoutABlockTooAndIsLeftWhenOneCannotBeRead) {
    Consumers consumers(station);
    computer.loop.Run(1000);
    EXPECT_EQ(std::pair(consumers.sends, consumers.pingChecks), std::pair(10, 10));
    EXPECT_EQ(station.Get("FrmVeltrix.Caption"), "V1.2.3 Veltrix - 2024/06/15 12:00:03   100 [-]");
    computer.files.FailOn(FileOperation::Open, "audio.dat", errors::PermissionDenied);
    station.Feed(Burst(30));
    computer.files.FailOn(FileOperation::Read, "audio.dat", errors::DeviceIo);
    computer.loop.Run(100);
    EXPECT_EQ(consumers.sends, 10);
    EXPECT_EQ(station.LoggedStrikes(), 0);
    computer.files.FailOn(FileOperation::Delete, "audio.dat", errors::PermissionDenied);
    computer.loop.Run(300);
    EXPECT_EQ(consumers.sends, 13);
    EXPECT_EQ(station.LoggedStrikes(), 2) << "the block waits, and comes again if it cannot be deleted";
}

TEST_F(Tick, NeverRunsInsideItself) {
    Consumers consumers(station);
    consumers.onBroadcast = [&] { computer.loop.Run(300); };
    for (int i = 0; i < 2; ++i) station.Feed(Burst(30));
    const std::string notes = computer.files.Content(".\\log\\Saturday.log");
    EXPECT_NE(notes.find("Timer1_Timer() recursion."), std::string::npos);
    EXPECT_EQ(station.LoggedStrikes(), 2);
}

TEST_F(Tick, TheFirstErrorOfANumberIsAskedAboutAndTheSecondStopsDetection) {
    station.Ask("set OptionHighPass 0");
    station.Feed(Plateau(32767));
    ASSERT_EQ(computer.messageBox.questions.size(), 1U);
    EXPECT_EQ(computer.messageBox.questions[0].lNumber, errors::Overflow);
    EXPECT_TRUE(computer.messageBox.questions[0].title.starts_with("ScopeTriggerXY:"))
        << "the procedure that was entered last";
    EXPECT_EQ(station.Get("Label4.ForeColor"), "255") << "the pulse was clipped";
    EXPECT_EQ(station.LoggedStrikes(), 1) << "ignored: the strike went its way";
    EXPECT_TRUE(station.warnings.empty());
    station.Feed(Plateau(32767));
    computer.loop.Run(1000);
    EXPECT_EQ(computer.messageBox.questions.size(), 1U);
    EXPECT_EQ(station.warnings.size(), 1U);
    EXPECT_EQ(station.LoggedStrikes(), 1);
    EXPECT_TRUE(computer.files.Exists("audio.dat"));
}

TEST_F(Tick, AnErrorOfAnotherNumberIsAskedAboutAgain) {
    int number = 0;
    station.form.Consumers().onDetection = [&number](const Detection&) {
        throw Failure(number, "x", "Test");
    };
    for (const int next : {errors::DiskFull, errors::DeviceIo, errors::DiskFull}) {
        number = next;
        station.Feed(Burst(30));
    }
    EXPECT_EQ(computer.messageBox.questions.size(), 3U);
    EXPECT_EQ(station.LoggedStrikes(), 3);
}

TEST_F(StationTest, TheNoiseLogGetsALineAMinuteIfTheUserWishes) {
    const char* const name = ".\\Log\\Noise20240615.log";
    station.Start();
    computer.loop.Run(61000);
    EXPECT_EQ(computer.files.Content(name), "");
    station.Ask("set OptionNoiseLog 1");
    computer.loop.Run(60000);
    const std::string log = computer.files.Content(name);
    ASSERT_EQ(log.size(), 35U);
    EXPECT_EQ(log.substr(0, 15) + log.substr(19), "2024/06/15 12:0; 324; 324; 324\n");
}

}  // namespace
}  // namespace veltrix
