// The server side of a whole station: who is let in, what they get, and what is made of what they say.

#include "common/split_by_pattern.h"
#include "station/network_peers.h"

namespace veltrix {
namespace {

const std::string Hello = "2024/06/15 12:00:00,0.0.0.0,50.50000,007.50000,Alpha,,#O\r";

TEST_F(NetworkTest, AVisitorIsGreetedAndGetsTheDetectionsInTheirOrder) {
    Begin();
    Peer alpha(computer, "10.0.0.9"), beta(computer, "10.0.0.8");
    for (Peer* const peer : {&alpha, &beta}) {
        std::string& received = peer->Visit().received;
        EXPECT_EQ(received.substr(22), "Connected to Veltrix, Home, 006.00000, 052.00000, 1.2.3, 0\n\r");
        received.clear();
    }
    computer.files.Put("audio.dat", BytesOf(Burst(30)));
    for (int i = 0; i < 200 && alpha.lines.back().received.empty(); ++i) computer.loop.Run(1);
    EXPECT_EQ(beta.lines.back().received, "") << "one after the other";
    Wait(0.1);
    const std::string line = alpha.lines.back().received;
    EXPECT_TRUE(line.starts_with("2024/06/15 12:00") && line.ends_with(",06.00000,Home\r")) << line;
    EXPECT_EQ(beta.lines.back().received, line);
    // More strikes in one block than the queue holds: the last of them are dropped, and all in order.
    Samples storm;
    for (int i = 0; i < 120; ++i) std::ranges::copy(Burst(30), std::back_inserter(storm));
    for (Peer* const peer : {&alpha, &beta}) peer->lines.back().received.clear();
    station.Feed(storm);
    EXPECT_EQ(station.LoggedStrikes(), 1 + 120);
    Wait(10);
    const std::string all = alpha.lines.back().received;
    EXPECT_EQ(std::ranges::count(all, '\r'), 99);
    EXPECT_EQ(beta.lines.back().received, all);
    std::vector<double> numbers;
    std::istringstream lines(all);
    for (std::string one; std::getline(lines, one, '\r');)
        numbers.push_back(ValNeutral(SplitByPattern(one, "*,*,*,*").field[2]));
    EXPECT_EQ(std::ranges::adjacent_find(numbers, std::greater_equal()), numbers.end());
}

TEST_F(NetworkTest, NineteenVisitorsFindRoomAndTheNextOneAsSoonAsSomebodyLeaves) {
    Begin();
    Peer crowd(computer, "10.0.0.9");
    for (int i = 0; i < 19; ++i) EXPECT_NE(crowd.Visit().received, "") << i;
    EXPECT_EQ(crowd.Visit().received, "");
    EXPECT_TRUE(crowd.IsUp()) << "there is no refusal";
    crowd.lines[4].socket->Close();
    Wait(0.1);
    EXPECT_NE(crowd.Visit().received, "");
    EXPECT_EQ(crowd.Visit().received, "");
}

TEST_F(NetworkTest, WhoIsIgnoredAndWhoeverComesWhileTheServerIsHeldGoesWithoutAWord) {
    computer.files.Put("IgnoreList.txt", " 10.0.0.9\n");
    Begin();
    Peer bad(computer, "10.0.0.9"), good(computer, "10.0.0.8");
    EXPECT_EQ(bad.Visit().received, "");
    EXPECT_NE(good.Visit().received, "");
    computer.files.Put("IgnoreList.txt", "10.0.0.8\n");
    EXPECT_NE(bad.Visit().received, "");
    Wait(21);
    EXPECT_FALSE(good.IsUp());
    EXPECT_TRUE(bad.IsUp());
    station.Ask("set optionHoldServer 1");
    EXPECT_EQ(bad.Visit().received, "");
    Wait(21);
    for (const auto& line : bad.lines) EXPECT_FALSE(line.received != "" && line.IsUp());
    EXPECT_FALSE(bad.Visit().IsUp()) << "nobody listens";
    station.Ask("set optionHoldServer 0");
    Wait(1.1);
    // The station's own failing read of the ignore list is told, and keeps nobody out.
    computer.files.Put("IgnoreList.txt", "10.0.0.8\n");
    computer.files.FailOn(FileOperation::ReadLines, "IgnoreList.txt", errors::DeviceIo);
    EXPECT_NE(bad.Visit().received, "");
    EXPECT_EQ(computer.messageBox.questions.size(), 1U);
}

TEST_F(NetworkTest, ASilentVisitorAndAStrangerAreYellowOnceARound) {
    Begin();
    Peer alpha(computer, "10.0.0.9");
    const auto yellows = [this] {
        std::string shown;
        for (int i = 0; i < 20; ++i) {
            Wait(1);
            const bool isYellow = station.Get("txtStateServer.BackColor") == "65535";
            if (isYellow) shown += station.Get("txtStateServer") + ";";
        }
        return shown;
    };
    alpha.Visit();
    EXPECT_EQ(yellows(), "1 10.0.0.9;");
    station.Ask("click CmbStateServer");
    EXPECT_EQ(station.Ask("get CmbStateServer").substr(0, 26), "= 1_?S_10.0.0.9|= 2____|= ");
    alpha.Say("junk");
    EXPECT_EQ(yellows(), "1 10.0.0.9;");
    alpha.Say(Hello);
    EXPECT_EQ(yellows(), "");
    alpha.Visit();
    EXPECT_EQ(yellows(), "2 10.0.0.9;") << "known, and silent on this line";
}

TEST_F(NetworkTest, OnlyTheFirstLineOfAReadCountsAndNobodyIsBelievedAboutOthers) {
    const std::string beta = "2024/06/15 12:00:00,10.0.0.7,51.5,8.5,Liar,,";
    struct Case {
        std::string why, text, rows;
        std::size_t visitsHere = 0, visitsThere = 0;  ///< pings of the visitor, and of the one it names
    };
    const Case table[] = {
        {"hello", Hello, "1 Alpha, "},
        {"a torn hello", Hello.substr(0, Hello.size() - 4), "1 Alpha, ", 1},
        {"two hellos", "2,0.0.0.0,50.5,7.5,One,,#O\r2,0.0.0.0,51.5,8.5,Two,,#O\r", "1 One, "},
        {"a line end in front", "\r" + Hello, "1 Alpha, "},
        {"an empty first field", Hello.substr(19), ""},
        {"our own name", "2,0.0.0.0,50.5,7.5,Home,,#O\r", ""},
        {"no place", "2,0.0.0.0,0,7.5,Alpha,,#O\r", ""},
        {"a marked entry", beta + "#O\r", "1 Beta, ", 0, 1},
        {"our own address", "2,10.0.0.1,50.5,7.5,Alpha,,#O\r", ""},
        {"a plain entry", beta.substr(0, beta.size() - 1) + "\r", "1 Alpha, ", 1},
        {"junk", "12,34\r", ""},
        {"nothing but line ends", "\r\r\r", ""},
    };
    for (const Case& c : table) {
        TestPlatform own;
        Settle(own, "Home", "6", "52");
        TestStation fresh{own, {}};
        fresh.Start();
        own.loop.Run(2500);
        Peer alpha(own, "10.0.0.9"), there(own, "10.0.0.7");
        alpha.Serve(GreetingOf("Alpha", "007.50000", "050.50000"));
        there.Serve(GreetingOf("Beta", "008.50000", "051.50000"));
        alpha.Visit();
        alpha.Say(c.text);
        EXPECT_EQ(Rows(fresh), c.rows) << c.why;
        EXPECT_EQ(alpha.visits.size(), c.visitsHere) << c.why;
        EXPECT_EQ(there.visits.size(), c.visitsThere) << c.why;
        EXPECT_TRUE(!c.why.starts_with("our own") || fresh.Get("txtLastPing").empty()) << c.why;
    }
}

TEST_F(NetworkTest, OneLinkClientAtATime) {
    Begin();
    Peer display(computer, "10.0.0.9");
    EXPECT_TRUE(display.Visit(LinkPort).IsUp());
    EXPECT_EQ(display.Visit(LinkPort).socket->State(), SocketState::Error);
    display.lines.front().socket->Close();
    Wait(2.1);
    EXPECT_TRUE(display.Visit(LinkPort).IsUp());
}

TEST_F(NetworkTest, AnotherAddressEndsAllConnectionsForAMoment) {
    PutList({{2, "Alpha", "10.0.0.9"}});
    Tie(computer, "2", "");
    Peer alpha(computer, "10.0.0.9"), visitor(computer, "10.0.0.8");
    alpha.Serve(GreetingOf("Alpha", "2.5"));
    Begin();
    visitor.Visit();
    EXPECT_TRUE(alpha.IsUp() && visitor.IsUp());
    computer.files.Put("routeripchanged.txt", "");
    Wait(1);
    EXPECT_FALSE(computer.files.Exists("routeripchanged.txt"));
    EXPECT_FALSE(alpha.IsUp() || visitor.IsUp());
    Wait(2);
    EXPECT_TRUE(alpha.IsUp());
    EXPECT_NE(visitor.Visit().received, "");
}

}  // namespace
}  // namespace veltrix
