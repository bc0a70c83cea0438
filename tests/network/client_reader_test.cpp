// What a client socket reads: lines in any shape, and what becomes of a detection.
#include "network/client_reader.h"

#include <regex>

#include "network/list_fixture.h"
#include "support/memory_sockets.h"

namespace veltrix {
namespace {

using Texts = std::vector<std::string>;

const std::string LineA = "2024/06/15 12:00:01,030.25,0000678901,-045.3,000000042,52.50000,05.50000,Alpha\r";
const std::string LineB = "2024/06/15 12:00:02,200.50,0000222201,-012.2,000000222,52.50000,05.50000,Alpha\r";
const std::string Greeting =
    "#O2024/06/15 12:00:00 Connected to Veltrix, Beta, 006.50000, 051.50000, 1.2.3, 17\n\r";

/// A reader whose socket 0 is connected to 10.0.0.9, row 1, which is the selected one.
struct ReaderTest : ListTest, RemoteMatching, StrikeDisplays, StrikeAlarm, StationMarks {
    ReaderTest() {
        receivers = {this, this, this, this};
        Fill(1, "Alpha", "10.0.0.9", 5.5, 52.5);
        peer->LocalPort = 4711;
        peer->Listen();
        socket.Tag = "1";
        socket.Connect("10.0.0.9", 4711);
        loop.Run(10);
    }
    void Call(std::string text, std::initializer_list<double> numbers) {
        for (const double number : numbers) text += " " + GeneralNumber(number);
        calls.push_back(text);
    }
    StrikeFix MapUpdate(const RemoteDetection& d) override {
        Call(std::to_string(d.row) + " " + std::to_string(d.socket), {d.dDir, d.dAmp, d.dTime});
        if (onMapUpdate) onMapUpdate();
        return fix;
    }
    void GyrelUpdate(double dDir, double, const AmplitudeLimits&, ColourValue color) override {
        EXPECT_EQ(color, Cyan);
        Call("gyrel", {dDir});
    }
    void UpdateDisplay(DateTime, double, double, const AmplitudeLimits&) override { FAIL(); }
    void Update(double lat, double lon, double strikeLat, double strikeLon) override {
        Call("alarm", {lat, lon, strikeLat, strikeLon});
    }
    void PlaceStationMark(std::int16_t row) override { calls.push_back("mark " + std::to_string(row)); }
    void DisplayStationConnectionState() override { FAIL(); }

    /// Reads each text as one read, and tells what was called.
    Texts Read(const Texts& reads) {
        calls.clear();
        for (const std::string& text : reads) reader.DataArrival(0, 1, text);
        return calls;
    }

    ManualLoop loop{clock};
    MemoryNetwork network{loop};
    StationSockets sockets{network.At("10.0.0.1")};
    Socket& socket = *sockets.sckClient[0];
    std::unique_ptr<Socket> peer = network.At("10.0.0.9").MakeSocket();
    Selection selection;
    NetworkReceivers receivers;
    PreciseNow preciseNow{clock};
    LinkStream link{sockets, preciseNow, errors};
    AmplitudeLimits limits;
    CheckBox mirror{"OptionRemoteCWCCW"}, show{"OptionRemoteShow"}, realTime{"OptionRealTime"};
    TextBox shown{"txtDateRecv"}, alarmLatitude{"txtAlarmLatitude"}, alarmLongitude{"txtAlarmLongitude"};
    ClientReader reader{{sockets, list, selection, receivers, link, limits, clock, errors,
                         [] { return HomeStation{"Me", "", 5, 52, 5, 52, "1.2.3", 0}; }, mirror, show,
                         realTime, shown, alarmLatitude, alarmLongitude}};
    Texts calls;
    StrikeFix fix;
    std::function<void()> onMapUpdate;
};

/// What one read must lead to, by a second opinion on what a good line is: a stamp with equal separators,
/// three fields, and something behind them that, if it has all of its fields, ends with a name.
Texts Expected(std::string text) {
    static const std::regex good(R"((2\d{3})(.)\d\d\2\d\d \d\d(.)\d\d\3\d\d,([^,]*),([^,]*),([^,]*),(.*))");
    static const std::regex nameless("[^,]*,[^,]*,[^,]*,.?");
    Texts calls;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\r'), text.size() - 1);
        const std::string line = text.substr(0, end);
        text.erase(0, end + 1);
        std::smatch found;
        if (!std::regex_match(line, found, good)) break;
        calls.push_back("1 0");
        for (const std::size_t field : {4, 6, 5})
            calls.back() += " " + GeneralNumber(std::stod(found[field]));
        if (std::regex_match(found.str(7), nameless)) break;
    }
    return calls;
}

TEST_F(ReaderTest, TornReadsAreNeverPutTogether) {
    const std::string text = LineA + LineB;
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        const std::string first = text.substr(0, cut), second = text.substr(cut);
        Texts expected = Expected(first);
        std::ranges::copy(Expected(second), std::back_inserter(expected));
        EXPECT_EQ(Read({first, second}), expected) << first << " | " << second;
    }
}

TEST_F(ReaderTest, ABadLineEndsItsRead) {
    const std::string a = "1 0 30.25 -45.3 678901", b = "1 0 200.5 -12.2 222201";
    const auto with = [](std::size_t place, const std::string& text) {
        std::string line = LineA;
        return line.replace(place, text.size(), text);
    };
    const std::tuple<const char*, std::string, Texts> table[] = {
        {"no year", with(0, "1") + LineB, {}},
        {"unequal separators of the date", with(4, "-") + LineB, {}},
        {"unequal separators of the time", with(16, ".") + LineB, {}},
        {"separators of another region", "2024-06-15 12.00.01" + LineA.substr(19) + LineB, {a, b}},
        {"no date", with(5, "13") + LineB, {}},
        {"an empty line", "\r" + LineB, {}},
        {"a bad place", with(55, "99.50000") + LineB, {a}},
        {"a short name", LineA.substr(0, LineA.size() - 5) + "\r" + LineB, {a}},
        {"a line feed in front", LineA + "\n" + LineB, {a}},
        {"a wild bearing", "2024/06/15 12:00:01,1e300,1,2,3\r" + LineB, {}},
        {"a wild amplitude", "2024/06/15 12:00:01,1,1,-1e7,3\r" + LineB, {}},
        {"a greeting in front", Greeting + LineB, {"mark 1"}},
        {"a greeting behind", LineA + Greeting + LineB, {a, "mark 1"}},
    };
    for (const auto& [why, text, expected] : table) EXPECT_EQ(Read({text}), expected) << why;
    EXPECT_TRUE(errors.reports.empty());
}

TEST_F(ReaderTest, TheOptionsShapeADetectionOfTheSelectedStation) {
    Read({LineA});
    EXPECT_EQ(shown.Text(), "12:00:01 00:00:00, 030.3, -045.3");
    for (CheckBox* const option : {&mirror, &show, &realTime}) option->SetValue(1);
    EXPECT_EQ(Read({LineA, LineB}),
              (Texts{"gyrel 149.75", "1 0 149.75 -45.3 4.2", "gyrel -20.5", "1 0 -20.5 -12.2 22.2"}));
    selection.MapperIndex = 2;
    EXPECT_EQ(Read({LineA}), Texts{"1 0 30.25 -45.3 4.2"});
    EXPECT_EQ(shown.Text(), "12:00:02 00:00:01, 200.5, -012.2") << "still that of the selected one";
}

TEST_F(ReaderTest, AFixGoesToTheLinkClientAndTheAlarm) {
    const auto display = network.At("10.0.0.8").MakeSocket();
    link.Upkeep();
    display->Connect("10.0.0.1", LinkPort);
    loop.Run(10);
    alarmLatitude.SetText("51,5");
    const std::tuple<StrikeFix, bool, Texts> table[] = {
        {{true, 365.5, 52.5, false}, true, {"alarm 51.5 0 52.5 5.5"}},  // a full turn is taken off
        {{false, 5.5, 52.5, false}, true, {}},
        {{false, 5.5, 52.5, true}, false, {}},
        {{true, 0, 52.5, false}, false, {"alarm 51.5 0 52.5 0"}},
        {{false, 5.5, 0, false}, false, {}},
    };
    for (const bool isRealTime : {false, true})
        for (const auto& [fixHere, isLinked, alarm] : table) {
            fix = fixHere;
            realTime.SetValue(isRealTime ? 1 : 0);
            Read({LineA});
            loop.Run(10);
            const std::string received = display->GetData();
            EXPECT_EQ(received.substr(std::min<std::size_t>(26, received.size())),
                      isLinked && !isRealTime ? ", 000065.3, 031.3, -1\n\r" : "");
            EXPECT_EQ(Texts(calls.begin() + 1, calls.end()), isRealTime ? Texts{} : alarm);
        }
}

TEST_F(ReaderTest, TheTailOfALineAndTheGreetingKeepTheListUpToDate) {
    const auto read = [this](const std::string& tail) {
        Read({LineA.substr(0, 55) + tail});
        return Shown(1);
    };
    mappers[1].dLastHeared = 0;
    EXPECT_EQ(read("52.50000,05.50000,OmegaX"), "Omega|10.0.0.9||5.5 52.5") << "it has no line end";
    EXPECT_EQ(mappers[1].dLastHeared, clock.Now());
    EXPECT_EQ(read("51.25000,05.50000,Omega, second\r"), "Omega, second|10.0.0.9||5.5 51.25");
    mappers[1].sIP = "10.0.0.77";
    EXPECT_EQ(read("50.00000,04.00000,Somebody else\r"), "Omega, second|10.0.0.77||5.5 51.25");
    EXPECT_EQ(TableLines(), 0) << "lines do not save";
    // The greeting: another station than the one dialled. The mark counts for the dialled one.
    Fill(7, "Beta", "beta.example", 1, 1);
    EXPECT_EQ(Read({Greeting}), Texts{"mark 7"});
    EXPECT_EQ(socket.Tag, "7");
    EXPECT_EQ(std::pair(mappers[1].tCapability, mappers[7].tCapability), std::pair(1, 0));
    // One that cannot be listed brings its mark alone.
    mappers[1].tCapability = 0;
    EXPECT_EQ(Read({"#O2024, New Station, 1, 1, 1, 1\n\r", "#Q#Onothing\r"}), Texts{});
    EXPECT_EQ(std::pair(socket.Tag, mappers[1].tCapability), std::pair(std::string("7"), 1));
}

TEST_F(ReaderTest, DataThatArrivesWhileALineIsWorkedOnIsLost) {
    onMapUpdate = [this] { reader.DataArrival(1, 2, LineB); };
    EXPECT_EQ(Read({LineA}).size(), 1U);
    onMapUpdate = [] { throw Failure(errors::Overflow, "", ""); };
    EXPECT_EQ(Read({LineA + LineB}).size(), 1U) << "a failure ends its read";
    onMapUpdate = {};
    EXPECT_EQ(Read({LineB}).size(), 1U);
    EXPECT_EQ(errors.reports.at(0).context.ErrProcedure, "DataArrival");
}

}  // namespace
}  // namespace veltrix
