// Months without a restart: the counters that turn.

#include <limits>

#include "common/split_by_pattern.h"
#include "station/network_peers.h"

namespace veltrix {
namespace {

struct LongRun : NetworkTest, ::testing::WithParamInterface<std::int32_t> {};

/// The millisecond counter begins 90 seconds before it turns, as signed or as unsigned number, and runs for
/// twice as long.
TEST_P(LongRun, NobodyNoticesTheTurnOfTheMillisecondCounter) {
    computer.clock.SetTimeGetTime(GetParam() - 90000);
    Peer server(computer, "10.0.0.2"), visitor(computer, "10.0.0.3"), display(computer, "10.0.0.4");
    server.Serve(GreetingOf("Alpha", "1.5"));
    PutList({{1, "Alpha", "10.0.0.2", 60}, {2, "Beta", "10.0.0.5", 60}});
    Tie(computer, "1", "");
    Peer quiet(computer, "10.0.0.5");
    quiet.listener = quiet.sockets.MakeSocket();
    quiet.listener->LocalPort = StationPort;
    int asked = 0;
    quiet.listener->OnConnectionRequest = [&asked](ConnectionRequest) { ++asked; };
    quiet.listener->Listen();
    Begin();
    Peer::Line& heard = visitor.Visit();
    heard.received.clear();
    display.Visit(4712);
    const DateTime begin = computer.clock.Now();
    int strikes = 0;
    for (; strikes < 90; ++strikes) {
        station.Feed(Burst(30));
        Wait(1.9);
        ASSERT_EQ(station.LoggedStrikes(), strikes + 1) << "a tick has stood still";
        ASSERT_EQ(std::ranges::count(heard.received, '\r'), strikes + 1) << "a line waits";
    }
    std::istringstream log(computer.files.Content("Data\\20240615N.csv"));
    for (std::string line; std::getline(log, line);)
        EXPECT_LE(ValNeutral(SplitByPattern(line, "*,*,*,*,*").field[4]), 100) << line;
    EXPECT_TRUE(server.lines.front().IsUp()) << "the connection of before stands";
    EXPECT_TRUE(display.IsUp());

    EXPECT_NEAR(asked, 36, 2) << "a quiet station is asked every five seconds";

    station.form.Form_Unload();
    // A record of the sample clock each minute, a minute apart, on over the turn.
    const auto records = computer.files.ReadLines("ClockDrift.dat");
    std::vector<double> times;
    for (const std::string& record : records)
        if (const double time = ValNeutral(SplitByPattern(record, "*;*").field[0]); time > 40000)
            times.push_back((time - begin) * 86400);
    ASSERT_EQ(times.size(), 3U);
    for (std::size_t i = 1; i < times.size(); ++i) EXPECT_NEAR(times[i] - times[i - 1], 60, 2.5);
    EXPECT_EQ(std::ssize(computer.messageBox.questions) + std::ssize(station.warnings), 0);
}

INSTANTIATE_TEST_SUITE_P(AsSignedAndAsUnsigned, LongRun,
                         ::testing::Values(std::numeric_limits<std::int32_t>::max(), -1));

}  // namespace
}  // namespace veltrix
