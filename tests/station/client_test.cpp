// The client side of a whole station, its pings, and what stations learn of each other.

#include <set>

#include "display/colours.h"
#include "station/network_peers.h"

namespace veltrix {
namespace {

/// A station tied to row 2, which is at 10.0.0.9. Nobody asks row 1, which the pings come back to.
struct ClientTest : NetworkTest {
    ClientTest() {
        PutList({{2, "Alpha", "10.0.0.9"}, {3, "Beta", "10.0.0.8"}});
        Tie(computer, "2", "");
    }

    Peer alpha{computer, "10.0.0.9"}, beta{computer, "10.0.0.8"}, gamma{computer, "10.0.0.7"};
    const std::string greeting = GreetingOf("Alpha", "2.5");
};

TEST_F(ClientTest, AnAttemptThatHangsIsCutEarlyOnceAndThenEvery30Seconds) {
    for (const char* const address : {"10.0.0.9", "10.0.0.66", "nowhere.example", ""}) {
        TestPlatform own;
        Settle(own, "Home", "6", "52");
        Tie(own, "2", "");
        own.files.Put("StationList.dat", "-\n-; 5.5; 50.5; ; ; 10.0.0.9; Alpha\n");
        own.network.Silence("10.0.0.9");
        TestStation fresh{own, {}};
        fresh.Start();
        fresh.Ask(std::string("set txtRemoteHost ") + address);
        std::string cuts;
        for (int second = 1; second <= 120; ++second) {
            own.loop.Run(1000);
            if (fresh.Get("txtStateClient") == "Closed") cuts += std::to_string(second) + " ";
        }
        EXPECT_EQ(cuts, "3 33 63 94 ") << address;
    }
}

TEST_F(ClientTest, SaysHelloAndGivesASilentServerUpBeforeSixMinutes) {
    alpha.Serve(greeting);
    Begin();
    EXPECT_EQ(alpha.lines.at(0).received.substr(19), ",0.0.0.0,52.00000,006.00000,Home,,#O\r");
    Wait(4 * 60);
    alpha.Say("any sign of life");
    Wait(5 * 60 - 5);
    EXPECT_EQ(alpha.visits.size(), 1U);
    Wait(60 + 7);
    EXPECT_EQ(alpha.visits.size(), 2U);
    EXPECT_TRUE(alpha.IsUp() && !alpha.lines[0].IsUp());
    alpha.lines.back().socket->Close();
    Wait(2.1);
    EXPECT_EQ(alpha.visits.size(), 3U);
    station.Ask("set OptionHoldClient 1");
    Wait(10);
    EXPECT_EQ(station.Get("txtStateClient"), "Closed");
    EXPECT_FALSE(alpha.IsUp());
    station.Ask("set OptionHoldClient 0");
    Wait(1.1);
    EXPECT_EQ(alpha.visits.size(), 4U);
}

TEST_F(ClientTest, TheTieFollowsTheStationThatAnswers) {
    computer.network.Name("alpha.example", "10.0.0.9");
    PutList({{2, "Alpha", "alpha.example", 40},
             {3, "Beta", "10.0.0.8", 40},
             {4, "Gamma", "10.0.0.7", 40},
             {5, "Delta", "10.0.0.6", 1}});
    for (const char* const address : {"10.0.0.8", "10.0.0.7", "10.0.0.6"}) computer.network.Silence(address);
    Tie(computer, "2", "4");
    alpha.Serve(GreetingOf("Beta", "3.5"));
    Begin();
    Wait(20);
    EXPECT_EQ(Rows(station), "2 Alpha, 3 Beta, 4 Gamma, 5 Delta, ");
    int row = 0;  // nobody, one unheard of for long, the one that answers, a silent tied one, a known one
    for (const ColourValue mark : {GreyBase / 2, GreyBase / 2, Red, Yellow, Rgb(192, 192, 192)}) {
        const std::string name = "Picture7(" + std::to_string(++row) + ").BackColor";
        EXPECT_EQ(station.Get(name), std::to_string(mark)) << name;
    }
    station.form.Form_Unload();
    EXPECT_EQ(computer.store.GetSetting("ClientSocket", "Tag0", ""), "3");
    EXPECT_NE(computer.files.Content("StationList.dat").find("; 10.0.0.9 "), std::string::npos);
}

TEST_F(ClientTest, AChoiceTakesAFreeSocketAndThenTheNextOne) {
    PutList({{2, "Alpha", "10.0.0.9"}, {3, "Beta", "10.0.0.8"}, {4, "Gamma", "10.0.0.7"}});
    alpha.Serve(greeting);
    beta.Serve(GreetingOf("Beta", "3.5"));
    gamma.Serve(GreetingOf("Gamma", "4.5"));
    Begin();
    const auto choose = [this](const std::string& choice) {
        EXPECT_EQ(station.Ask("set " + choice), "ok");
        Wait(2.1);
    };
    choose("cmbRemoteHost Beta");
    EXPECT_EQ(station.Get("txtRemoteHost"), "10.0.0.8");
    EXPECT_TRUE(alpha.IsUp() && beta.IsUp());
    choose("cmbRemoteHost Gamma");
    EXPECT_TRUE(gamma.IsUp() && beta.IsUp() && !alpha.IsUp()) << "the socket after that of Beta";
    choose("txtRemoteHost 10.0.0.9");
    EXPECT_TRUE(alpha.IsUp() && !gamma.IsUp());
}

TEST_F(ClientTest, QuietStationsArePingedInTurnEveryFifthSecond) {
    PutList({{2, "Alpha", "10.0.0.9", 26}, {3, "Beta", "10.0.0.8", 24}, {5, "Gamma", "10.0.0.7", 26}});
    Tie(computer, "", "");
    alpha.Serve("no greeting");
    beta.Serve("");
    gamma.Serve(GreetingOf("Gamma II", "5.5"));
    const DateTime start = computer.clock.Now();
    const auto seconds = [start](const Peer& peer) {
        std::string text;
        for (const DateTime visit : peer.visits)
            text += FormatNeutral((visit - start) * SecondsPerDay, "0") + " ";
        return text;
    };
    station.Start();
    Wait(6.5);
    station.ExpectShown("txtLastPing=2 Alpha|txtLastPing.BackColor=" + std::to_string(White));
    Wait(15);
    EXPECT_EQ(seconds(alpha) + "| " + seconds(gamma), "6 | 11 16 21 ") << "the last one again";
    EXPECT_EQ(Rows(station), "2 Alpha, 3 Beta, 5 Gamma II, ");
    Wait(60);
    EXPECT_EQ(seconds(beta), "61 66 71 76 81 ") << "from 25 minutes on, and no answer is no sign of life";
    EXPECT_FALSE(alpha.IsUp() || gamma.IsUp());
}

TEST_F(ClientTest, APingWithoutAnswerIsClosedAndToldOfWhenAStrangerIsNext) {
    PutList({{2, "Alpha", "10.0.0.9", 60}, {3, "Beta", "10.0.0.8"}});
    Tie(computer, "", "");
    alpha.Serve("");
    beta.Serve(GreetingOf("Beta", "3.5"));
    station.Start();
    Wait(7.9);
    EXPECT_TRUE(alpha.IsUp());
    Wait(0.3);
    EXPECT_FALSE(alpha.IsUp());
    EXPECT_EQ(station.Get("txtLastPing.BackColor"), std::to_string(Rgb(0, 0, 255)));
    const std::string entry = "2,10.0.0.8,1,1,x,,#O\r";
    beta.Visit();
    beta.Say(entry);
    EXPECT_EQ(station.Get("txtBadPing"), "") << "the next target is known";
    Wait(3);
    gamma.Visit();
    gamma.Say(entry);
    station.ExpectShown("txtBadPing=2 Alpha|txtLastPing=3 Beta");
}

TEST_F(ClientTest, TidingsGoOutAnEntryAMinuteMarkedForWhoUnderstandsThem) {
    Tie(computer, "2", "3");
    alpha.Serve(greeting);
    beta.Serve(GreetingOf("Beta", "3.5", "51.5").substr(2));
    Begin();
    Wait(60);
    const auto entries = [](const Peer& peer) {
        const std::string& all = peer.lines.back().received;
        return all.substr(all.rfind('\r', all.size() - 2) + 20);
    };
    EXPECT_EQ(entries(alpha), ",10.0.0.9,50.50000,002.50000,Alpha,,#O\r");
    EXPECT_EQ(entries(beta), ",10.0.0.1,52.00000,006.00000,Alpha,\r") << "our place, the other's name";
    EXPECT_EQ(station.Ask("get lstOnline").find("Home"), station.Ask("get lstOnline").rfind("Home"));
    Wait(60);
    EXPECT_EQ(entries(alpha), ",0.0.0.0,52.00000,006.00000,Home,,#O\r")
        << "Beta shares a latitude with Alpha";
}

TEST_F(ClientTest, AnEditedListIsTakenOverWithinAMinute) {
    Begin();
    PutList({{4, "Gamma", "10.0.0.7"}});
    Wait(60);
    EXPECT_EQ(station.Ask("get cmbRemoteHost").substr(0, 22), "= |= |= |= Gamma|= |= ");
    EXPECT_EQ(station.Get("Picture7(2).Visible") + station.Get("Picture7(4).Visible"), "01");
    EXPECT_FALSE(computer.files.HasArchive("StationList.dat"));
    station.form.Form_Unload();
    EXPECT_EQ(Rows(station), "4 Gamma, ");
}

TEST_F(ClientTest, TheDriftScanTurnsRoundAtItsEnds) {
    alpha.Serve(greeting);
    Begin();
    station.Ask("set OptionScan 1");
    const auto scan = [this](const std::string& from, const std::string& drifts) {
        station.Ask("set txtClockDrift " + from);
        std::istringstream expected(drifts);
        for (std::string drift; expected >> drift; alpha.Say("sign of life")) {
            Wait(60);
            EXPECT_EQ(station.Get("txtClockDrift"), drift);
        }
    };
    scan("-899500", "-900500 -899500 -898500");
    scan("899000", "900000 901000 900000");
    scan("0", "-1000 -2000 -3000");
}

TEST_F(NetworkTest, StationsInARingLearnOfEachOther) {
    TestPlatform second(computer, "10.0.0.2"), third(computer, "10.0.0.3");
    Settle(second, "Second", "7", "51");
    Settle(third, "Third", "8", "50");
    TestStation two{second, {}}, three{third, {}};
    const auto expectKnown = [](TestStation& of, std::set<std::string> expected) {
        std::istringstream rows(Rows(of));
        for (std::string row, name; rows >> row >> name;)
            EXPECT_EQ(expected.erase(name), 1U) << of.computer.address << " " << name;
        EXPECT_TRUE(expected.empty()) << of.computer.address;
    };
    TestStation* const ring[] = {&station, &two, &three, &station};
    for (TestStation* const each : {&station, &two, &three}) {
        Tie(each->computer, "5", "");
        each->Start();
    }
    Wait(5);
    for (int i = 0; i < 3; ++i) {
        ring[i]->Ask("set txtRemoteHost " + ring[i + 1]->computer.address);
        Wait(5);
    }
    Wait(10 * 60);
    expectKnown(station, {"Second,", "Third,"});
    expectKnown(two, {"Home,", "Third,"});
    expectKnown(three, {"Home,", "Second,"});
}

}  // namespace
}  // namespace veltrix
