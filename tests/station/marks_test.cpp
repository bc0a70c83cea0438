// The marks of the stations on the map, and what the user does on them.

#include <cmath>

#include "common/neutral_text.h"
#include "display/colours.h"
#include "station/mark_commands.h"
#include "station/station_fixture.h"
#include "station/station_marks.h"
#include "support/recording_errors.h"

namespace veltrix {
namespace {

/// The network of a station at the centre of the map, its marks and their commands, without the rest of the
/// form. Rows 1 to 4 lie in the four directions, row 5 at home; row 6 is free.
struct MarksTest : ::testing::Test {
    MarksTest() {
        struct Row {
            double longitude, latitude;
        };
        int number = 0;
        for (const auto& [longitude, latitude] :
             {Row{6.1, 55}, Row{14, 52}, Row{6.1, 49}, Row{-8, 52}, Row{6, 52}}) {
            ClassMapper& row = network.mappers[++number];
            row.Longitude = row.RemoteX = longitude;
            row.Latitude = latitude;
            row.sRemoteName = "S" + std::to_string(number);
            row.sIP = "10.0.1." + std::to_string(number);
        }
        map.MapLongitude = 6;
        map.MapLatitude = 52;
        controls.Text("txtRemoteHost").OnEntry = [] {};
        commands.Start();
        marks.PlaceAllStationMarks();
    }

    std::string Ask(const std::string& request) { return requests.Answer(request).front(); }
    void Do(const std::string& request) { EXPECT_EQ(Ask(request), "ok") << request; }
    std::string Selected() const {
        return std::to_string(network.selection.MapperIndex) + " by socket " +
               std::to_string(network.selection.ClientIndex);
    }
    std::string Tags() const {
        return network.sockets.sckClient[0]->Tag + "|" + network.sockets.sckClient[1]->Tag;
    }
    void Tie(const std::string& tag0, const std::string& tag1) {
        network.sockets.sckClient[0]->Tag = tag0;
        network.sockets.sckClient[1]->Tag = tag1;
    }
    ColourValue At(double x, double y) { return controls.Picture("Picture4").surface.Point(x, y); }

    TestPlatform computer;
    RecordingErrors errors;
    FormControls controls{computer.glyphs};
    PreciseNow preciseNow{computer.clock};
    AmplitudeLimits limits;
    HomeStation home{"Home", "", 6, 52, 6, 52, "1.2.3"};
    int followed = 0;
    StationNetwork network{controls, computer.platform, errors, preciseNow, limits, [this] { return home; }};
    MapMarks marks{controls,        computer.store,    computer.glyphs,
                   network.mappers, network.selection, [this] { return home; }};
    MarkDrag drag{marks};
    MarkCommands commands{controls, computer.store, network, marks, drag, [this] { ++followed; }};
    ControlRequests requests{controls.All(), computer.files, [] {}};
    ClassMapper& map = network.mappers.Local();
};

TEST_F(MarksTest, LieWhereTheMapShowsTheirStations) {
    EXPECT_NEAR(network.mappers.HomeX, 278.5, 1e-9);
    EXPECT_NEAR(network.mappers.HomeY, 278.5, 1e-9);
    EXPECT_TRUE(Ask("get Picture6").starts_with("= 275 273 ")) << "the middle of 9 pixels is near pixel 278";
    double y[6] = {};
    for (int row = 1; row <= 5; ++row) {
        const ClassMapper& station = network.mappers[row];
        const MapPoint place = CalcMapXY(6, 52, 2000, station.Longitude, station.Latitude);
        EXPECT_NEAR(station.RemoteX, place.dX, 1e-9) << row;
        EXPECT_NEAR(y[row] = station.RemoteY, place.dY, 1e-9) << row;
        EXPECT_TRUE(station.Picture7->Visible());
    }
    EXPECT_GT(y[1], y[3]) << "y counts upward";
    EXPECT_LT(controls.Mark("Picture7(1)").Top(), controls.Mark("Picture7(3)").Top()) << "north is up";
    EXPECT_FALSE(network.mappers[6].MapperActive());
    EXPECT_FALSE(controls.Mark("Picture7(6)").Visible());
    EXPECT_EQ(network.selection.MapperIndex, 1);
    const Marker& first = controls.Mark("Picture7(1)");
    EXPECT_EQ(Ask("get ShapeMapperIndex"),
              "= " + GeneralNumber(first.Left() - 1) + " " + GeneralNumber(first.Top() - 1) + " 11 11 1");
    home.HomeLongitude = home.HomeLatitude = 0;
    network.selection.MapperIndex = 6;
    marks.PlaceAllStationMarks();
    EXPECT_FALSE(controls.Mark("Picture6").Visible()) << "nobody knows where it is";
    EXPECT_FALSE(controls.Figure("ShapeMapperIndex").Visible()) << "there is no station to frame";
}

TEST_F(MarksTest, NoPlaceOnAnyMapFreesARow) {
    // The radius at which row 4 lies exactly on the left edge, where x is 0.
    double low = 100, high = 2000;
    const auto edge = [&] { return CalcMapXY(6, 52, map.MapRadius, -8, 52).dX; };
    for (int i = 0; i < 200 && (i == 0 || edge() != 0); ++i) {
        map.MapRadius = (low + high) / 2;
        (edge() < 0 ? low : high) = map.MapRadius;
    }
    EXPECT_EQ(edge(), 0);
    for (const double radius : {map.MapRadius, 1e-300, -5.0, 5e8}) {
        map.MapRadius = radius;
        marks.PlaceAllStationMarks();
        for (int row = 1; row <= 5; ++row) {
            const ClassMapper& station = network.mappers[row];
            EXPECT_TRUE(station.MapperActive()) << radius << " " << row;
            EXPECT_TRUE(std::isfinite(station.RemoteX) && std::isfinite(station.RemoteY)) << radius;
        }
    }
}

TEST_F(MarksTest, LieOnAFlatMapWhereTheUserHasPutThem) {
    map.MapRadius = 0;
    network.selection.MapperIndex = 3;
    network.mappers[3].MapFilenamePicture4 = "flat.bmp";
    network.mappers[1].MapFilenamePicture4 = "other.bmp";
    const auto put = [&](const char* section, const char* x, const char* y) {
        computer.store.SaveSetting(section, "X", x);
        computer.store.SaveSetting(section, "Y", y);
    };
    put("flat.bmpHome", "100", "19.5");
    put("flat.bmpRemote1", "-40", "900");
    put("flat.bmpRemote2", "537", "250.5");
    put("other.bmpRemote4", "50", "50");
    const std::string before = Ask("get Picture7(4)");
    marks.PlaceAllStationMarks();
    EXPECT_TRUE(Ask("get Picture6").starts_with("= 100 20 "));
    EXPECT_TRUE(Ask("get Picture7(1)").starts_with("= 20 537 "));
    EXPECT_TRUE(Ask("get Picture7(2)").starts_with("= 537 250.5 "));
    EXPECT_EQ(Ask("get Picture7(4)"), before) << "another map says nothing about it";
    EXPECT_EQ(network.mappers.HomeX, 103.5);
    EXPECT_EQ(network.mappers.HomeY, 557 - 20 - 5.5);
    EXPECT_EQ(network.mappers[2].RemoteX, 540.5);
    EXPECT_EQ(network.mappers[2].RemoteY, 301);
}

TEST_F(MarksTest, HaveABorderWhileTheirStationShowsItself) {
    const Marker& mark = controls.Mark("Picture7(2)");
    network.mappers[2].bOnline = true;
    network.mappers[2].lColor = Red;
    for (const int border : {1, 0, 0}) {
        marks.DisplayStationConnectionState();
        EXPECT_EQ(mark.Border(), border);
        EXPECT_EQ(mark.BackColor(), Red);
    }
    EXPECT_EQ(controls.Mark("Picture7(1)").Border(), 0);
}

TEST_F(MarksTest, RingsOfConnectedStationsEndOnTop) {
    const ColourValue grey = Rgb(192, 192, 192), green = Rgb(0, 255, 0);
    network.mappers[1].lColor = Red;
    for (int row = 2; row <= 5; ++row) network.mappers[row].lColor = grey;
    network.mappers[4].Longitude = network.mappers[1].Longitude;
    network.mappers[4].Latitude = network.mappers[1].Latitude;
    network.mappers[5].Longitude = 7;
    marks.PlaceAllStationMarks();
    marks.DrawAllStationCircles();
    const auto count = [this](ColourValue color, double x, double y) {
        int pixels = 0;
        for (int i = -4; i <= 4; ++i)
            for (int j = -4; j <= 4; ++j) pixels += At(x + i, 557 - y + j) == color;
        return pixels;
    };
    const ClassMapper &connected = network.mappers[1], &heard = network.mappers[3];
    EXPECT_GE(count(green, network.mappers.HomeX, network.mappers.HomeY), 20) << "two rings";
    EXPECT_GE(count(Red, connected.RemoteX, connected.RemoteY), 20);
    EXPECT_EQ(count(grey, connected.RemoteX, connected.RemoteY), 0) << "the row below lies at the same place";
    EXPECT_GE(count(grey, heard.RemoteX, heard.RemoteY), 20);
    EXPECT_EQ(At(heard.RemoteX, 557 - heard.RemoteY), Black) << "rings only";
}

TEST_F(MarksTest, WhoIsStandsBesideItsMark) {
    ClassMapper& station = network.mappers[2];
    station.sRemoteIP = "10.9.9.9";
    station.dLastHeared = computer.clock.Now();
    station.dClock = 22.5;
    Marker& mark = controls.Mark("Picture7(2)");
    marks.ShowStationInfo(2);
    EXPECT_EQ(Ask("get lblStationIp"), "= ") << "nobody has asked";
    Do("click Picture7(2) right");
    Do("click cmdWhoIs");
    const std::pair<const char*, std::string> texts[] = {{"lblWhoIs", "S2"},
                                                         {"LblStationName", "S2"},
                                                         {"lblStationIp", "10.0.1.2"},
                                                         {"lblStationHostName", "10.9.9.9"},
                                                         {"LblStationLastHeared", "2024/06/15 12:00:00"},
                                                         {"LblStationClock", "22.5"}};
    for (const auto& [label, text] : texts) {
        EXPECT_EQ(Ask(std::string("get ") + label), "= " + text);
        EXPECT_TRUE(controls.Caption(label).Visible()) << label;
    }
    const Label& name = controls.Caption("lblWhoIs");
    EXPECT_EQ(name.Left(), mark.Left() + 9);
    EXPECT_EQ(name.Top(), mark.Top());
    station.sRemoteName = "A station whose name is far too long for the room to the right of its mark";
    marks.ShowStationInfo(2);
    EXPECT_TRUE(name.RightAligned());
    EXPECT_EQ(name.Left() + name.Width(), mark.Left());
    Do("click cmdWhoIs");
    for (const auto& [label, text] : texts) EXPECT_FALSE(controls.Caption(label).Visible()) << label;
}

TEST_F(MarksTest, AClickSelectsAndConnectsNobody) {
    Tie("4", "2");
    for (const char* const entry : {"cmdSelect", "cmdConnect", "cmdDisconnect", "cmdDelete", "cmdResetCnt",
                                    "cmdResetTotalCnt", "cmdResetCorr"})
        Do(std::string("click ") + entry);
    EXPECT_EQ(followed, 0) << "no mark was clicked";
    EXPECT_EQ(Ask("click cmdDummy"), "error cmdDummy does nothing on a click");
    Do("click Picture7(2)");
    EXPECT_EQ(Selected(), "2 by socket 1");
    Do("click Picture7(3) right");
    EXPECT_EQ(Selected(), "2 by socket 1") << "that opens the menu only";
    Do("click cmdSelect");
    EXPECT_EQ(Selected(), "3 by socket 1") << "no socket of its own: the current one stays";
    EXPECT_EQ(followed, 2);
    EXPECT_EQ(computer.store.GetSetting("Setting", "MapperIndex", ""), "3");
    EXPECT_EQ(Tags(), "4|2");
    EXPECT_TRUE(errors.notes.empty()) << "no socket was closed";
}

TEST_F(MarksTest, ConnectTakesAFreeSocketElseThatOfTheStationClickedBefore) {
    struct Case {
        const char *tag0, *tag1, *before, *selected, *tags;
    };
    for (const auto& [tag0, tag1, before, selected, tags] :
         {Case{"4", "", "4", "3 by socket 1", "4|3"}, Case{"4", "2", "4", "3 by socket 0", "3|2"},
          Case{"4", "2", "2", "3 by socket 1", "4|3"}, Case{"4", "2", "1", "3 by socket 1", "4|3"}}) {
        Tie(tag0, tag1);
        network.selection.ClientIndex = 0;
        Do("click Picture7(" + std::string(before) + ") right");
        Do("click Picture7(3) right");
        Do("click cmdConnect");
        EXPECT_EQ(Selected(), selected);
        EXPECT_EQ(Tags(), tags);
        EXPECT_EQ(Ask("get txtRemoteHost"), "= 10.0.1.3");
    }
}

TEST_F(MarksTest, DisconnectFreesTheSocketsOfTheRowForGood) {
    Tie("2", "2");
    for (const int index : {0, 1})
        network.sockets.sckClient[static_cast<std::size_t>(index)]->Connect("10.0.1.2", StationPort);
    Do("click Picture7(3) right");
    Do("click cmdDisconnect");
    EXPECT_EQ(Tags(), "2|2");
    Do("click Picture7(2) right");
    Do("click cmdDisconnect");
    EXPECT_EQ(Tags(), "|");
    for (const auto& socket : network.sockets.sckClient) EXPECT_EQ(socket->State(), SocketState::Closed);
    EXPECT_EQ(controls.Mark("Picture7(2)").BackColor(), GreyBase);
    network.client.Upkeep();
    EXPECT_EQ(network.sockets.sckClient[0]->State(), SocketState::Closed);
}

TEST_F(MarksTest, DeleteFreesTheRowInTheListToo) {
    Tie("", "2");
    Do("click Picture7(2)");
    Do("click Picture7(3) right");
    Do("click Picture7(2) right");
    Do("click cmdDelete");
    EXPECT_EQ(Selected(), "2 by socket 1") << "the selection stays on the empty row";
    EXPECT_EQ(followed, 2);
    EXPECT_EQ(Tags(), "|");
    EXPECT_FALSE(controls.Mark("Picture7(2)").Visible());
    network.list.StationListGet();
    EXPECT_FALSE(network.mappers[2].MapperActive());
    EXPECT_TRUE(network.mappers[1].MapperActive() && network.mappers[3].MapperActive());
    Do("click cmdDelete");
    EXPECT_FALSE(network.mappers[3].MapperActive()) << "the cursor went back to the mark clicked before";
}

TEST_F(MarksTest, ResetsConcernTheRowOfTheMarkAndTheDisplayOfItsSocket) {
    for (const int row : {2, 3}) {
        ClassCorrelator& corr = network.mappers[row].Corr;
        corr.lRemoteSampleCount = corr.lLocalSampleCount = corr.lCorrelatedCount = 7;
        network.mappers[row].lCorrelatedPlottedCount = 7;
        corr.Median.Update(55);
        const int index = row - 2;
        controls.Picture(ElementName("PicSync", index)).surface.PSet(5, 5, Yellow);
        controls.Caption(ElementName("lblAvgDiffTime", index)).SetCaption("7");
    }
    const auto state = [this](int row) {
        ClassMapper& station = network.mappers[row];
        const std::string index = "(" + std::to_string(row - 2) + ")";
        return std::to_string(station.Corr.lRemoteSampleCount + station.Corr.lLocalSampleCount +
                              station.Corr.lCorrelatedCount + station.lCorrelatedPlottedCount) +
               Ask("point PicSync" + index + " 5 5") + " " + GeneralNumber(station.Corr.MedianDifference()) +
               Ask("get lblAvgDiffTime" + index);
    };
    const std::string before = "28= " + std::to_string(Yellow) + " 55= 7";
    Tie("2", "3");
    Do("click Picture7(2)");
    Do("click cmdResetTotalCnt");
    EXPECT_EQ(state(2), before) << "nothing";
    for (const char* const entry : {"cmdResetCnt", "cmdClearPicSync", "cmdResetCorr"})
        Do(std::string("click ") + entry);
    EXPECT_EQ(state(2), "0= 0 0= ");
    EXPECT_EQ(state(3), before);
}

}  // namespace
}  // namespace veltrix
