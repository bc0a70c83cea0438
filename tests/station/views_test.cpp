// The views of the form, their dialogs, what they keep across a restart, and the end of a day.

#include "display/bitmap_file.h"
#include "station/station_fixture.h"

namespace veltrix {
namespace {

constexpr ColourValue Ground = MemoryPictures::Ground;

struct Views : StationTest {
    Views() { StartAndSettle(); }

    static Bitmap Plain(ColourValue color, int side = 557) {
        return {side, side, std::vector<ColourValue>(static_cast<std::size_t>(side * side), color)};
    }
    std::string Pixel(const std::string& surface, const std::string& place) {
        return station.Ask("point " + surface + " " + place);
    }
    static std::string Color(ColourValue color) { return "= " + std::to_string(color) + "|ok"; }
    /// The view that is seen, and "2" or "3" for each dialog that is open.
    std::string Seen() {
        std::string seen;
        for (const char* const name : {"Picture1", "Picture4", "Picture5", "Frame2", "Frame3"})
            if (station.Get(std::string(name) + ".Visible") == "1") seen += name + (name[0] == 'P' ? 7 : 5);
        return seen;
    }
    std::string Painted(const std::string& surface) {
        EXPECT_EQ(station.Ask("save " + surface + " painted.bmp"), "ok");
        return computer.files.Content("painted.bmp");
    }
    void Restart() {
        station.form.Form_Unload();
        again.Start();
    }
    TestStation again{computer, {}};
};

TEST_F(Views, TakeTurnsByClicksAndOpenTheirDialogs) {
    // Each request with what is seen behind it.
    const std::string steps[] = {
        "click Picture4: 1",        "click Picture4 right: 1",     "click Picture1: 4",
        "click Picture4: 5",        "click Picture5 right: 5",     "click Picture5: 1",
        "click Picture1 right: 13", "click cmdCancel2: 1",         "mouse Picture1 down 5 5 right: 1",
        "click Picture1: 13",       "click Picture1: 43",          "set SSTab3 Calib: 43",
        "click Picture4: 43",       "set SSTab4 Drag && Drop: 43", "click Picture4 right: 423",
        "click cmdCancel: 43",      "set SSTab3 Setup: 43",        "click Picture4: 53"};
    for (const std::string& step : steps) {
        const std::size_t end = step.find(": ");
        EXPECT_TRUE(station.Ask(step.substr(0, end)).ends_with("ok")) << step;
        EXPECT_EQ(Seen(), step.substr(end + 2)) << step;
    }
    EXPECT_EQ(station.Get("SSTab4"), "Local") << "there is nothing to drag while the map is hidden";
}

TEST_F(Views, ADetectionIsSeenOnAllDisplays) {
    const std::string noTrace = Painted("Picture2");
    station.Feed(Burst(90));
    const double r = (0 + 18.02) * (557 / 2.0 - 4) / 100;  // the burst has some -18 dB
    const std::string east = std::to_string(278 + static_cast<int>(std::lround(r))) + " 278";
    EXPECT_EQ(Pixel("Picture1", east), Color(White));
    EXPECT_EQ(Pixel("Picture9", east), Color(Ground));
    EXPECT_EQ(Pixel("Picture5", "12.0007 90"), Color(Rgb(237, 237, 255)));
    EXPECT_EQ(Pixel("Picture5", "12.1 90"), Color(Black));
    computer.loop.Run(100);
    station.Feed(Samples(2 * 300));
    EXPECT_FALSE(Painted("Picture2") == noTrace);
}

TEST_F(Views, ABackgroundThatCannotBeReadIsReportedAndTheOldPictureStays) {
    for (const char* const name : {"blue.bmp", "bad.gif", "photo.JPG", "notes.txt"})
        computer.files.Put(name, "x");
    computer.pictures.all = {{"blue.bmp", Plain(Rgb(0, 0, 90))}, {"bad.gif", {}}};
    EXPECT_EQ(Pixel("Picture1", "100 100"), Color(Ground));
    station.Ask("click Picture1 right");
    EXPECT_EQ(station.Ask("get File2"), "= bad.gif|= blue.bmp|= photo.JPG|ok");
    EXPECT_EQ(station.Ask("set File2 blue.bmp"), "ok");
    EXPECT_EQ(Seen(), "1");
    EXPECT_EQ(computer.store.GetSetting("setting", "MapFilenamePicture1", ""), "blue.bmp");
    for (const char* const surface : {"Picture1", "Picture9"})
        EXPECT_EQ(Pixel(surface, "100 100"), Color(Rgb(0, 0, 90)));
    EXPECT_EQ(Pixel("Picture9", "278 1"), Color(Yellow)) << "the clean copy has the ring";
    station.Feed(Burst(45));
    const std::string before = Painted("Picture1");
    for (const char* const name : {"bad.gif", "photo.JPG"}) {
        station.Ask("click Picture1 right");
        station.Ask(std::string("set File2 ") + name);
        EXPECT_TRUE(Painted("Picture1") == before) << name;
        EXPECT_EQ(Seen(), "1");
    }
    ASSERT_EQ(computer.messageBox.questions.size(), 2U);
    EXPECT_EQ(computer.messageBox.questions[0].lNumber, errors::InvalidPicture);
    Restart();
    EXPECT_EQ(again.Ask("point Picture1 100 100"), Color(Ground)) << "a bad choice leaves the built-in one";
}

TEST_F(Views, ClearingThePolarDisplayStartsTheCountAgain) {
    for (const double bearing : {40.0, 50.0, 60.0}) station.Feed(Burst(bearing));
    EXPECT_FALSE(Painted("Picture1") == Painted("Picture9"));
    EXPECT_EQ(station.Get("Text2"), "3");
    station.Ask("click Picture1 right");
    EXPECT_EQ(station.Ask("click cmdClearPicture1"), "ok");
    station.ExpectShown("Text2=0|Frame3.Visible=0");
    const std::string clean = Painted("Picture9");
    station.Ask("click cmdClearPicture1");
    EXPECT_TRUE(clean == Painted("Picture9")) << "no dot stays behind in the background";
    station.Feed(Burst(70));
    EXPECT_EQ(station.Get("Text2"), "1");
}

TEST_F(Views, PlotAndTrailStandAgainAfterARestart) {
    for (const double bearing : {90.0, 45.0, 20.0}) station.Feed(Burst(bearing));
    computer.pictures.all["picture5.bmp"] = Plain(Rgb(1, 2, 3));
    Restart();
    EXPECT_EQ(computer.files.Content("picture5.bmp").substr(0, 2), "BM");
    EXPECT_EQ(computer.files.Content("PicSync.bmp").size(), 54U + 196 * 3 * 99);
    EXPECT_EQ(again.Ask("point Picture5 12 90"), Color(Rgb(1, 2, 3)));
    EXPECT_EQ(again.Ask("point Picture1 327 278"), Color(Rgb(250, 250, 0)));
    EXPECT_EQ(again.Get("Picture4.Visible") + again.Get("Picture5.Visible"), "00");
}

TEST_F(Views, ANewDateStartsANewPlot) {
    const std::string yesterday = "picture5yesterday.bmp";
    const auto nextDay = [&](double days) {
        computer.clock.SetNow(computer.clock.Now() + days);
        computer.loop.Run(1100);
    };
    EXPECT_FALSE(computer.files.Exists(yesterday)) << "the first run of all does not roll over";
    station.Feed(Burst(90));
    const std::string before = Painted("Picture5");
    EXPECT_FALSE(before == BmpBytes(Plain(Black)));
    computer.files.FailOn(FileOperation::WriteWhole, yesterday, errors::DiskFull);
    computer.messageBox.replies = {reply::Retry};
    nextDay(1);
    EXPECT_TRUE(computer.files.Content(yesterday) == before);
    EXPECT_TRUE(Painted("Picture5") == BmpBytes(Plain(Black)));
    computer.files.Put("picture5m.bmp", "x");
    computer.pictures.all["picture5m.bmp"] = Plain(Rgb(0, 40, 0), 50);
    nextDay(-3);
    EXPECT_TRUE(computer.files.Content(yesterday) == BmpBytes(Plain(Black)));
    EXPECT_EQ(Pixel("Picture5", "1 1"), Color(Rgb(0, 40, 0)));
    EXPECT_EQ(computer.store.GetSetting("Setting", "strPrevDate", ""), "2024-06-13");
}

TEST_F(Views, SurfacesAndMarksAnswerRequests) {
    const std::pair<std::string, std::string> cases[] = {
        {"point Picture1 500 0", Color(Ground)},
        {"point Picture1 557 0", "= -1|ok"},
        {"point Picture1 1", "error the position is missing"},
        {"point Picture7(100) 8 8", Color(Black)},
        {"get Picture7(12)", "= 0 0 0 0|ok"},
        {"mouse Picture7(12) drop 1 1", "ok"},
        {"save Picture6 mark.bmp", "ok"},
        {"save Picture6", "error the name of the file is missing"},
        {"save Picture1 missing\\a.bmp", "error Failure 76 on missing\\a.bmp"},
    };
    for (const auto& [request, answer] : cases) EXPECT_EQ(station.Ask(request), answer) << request;
    EXPECT_TRUE(computer.files.Content("mark.bmp") == BmpBytes(Plain(Rgb(0, 255, 0), 9)));
}

TEST_F(Views, FoldersAreWalkedAndKept) {
    computer.files.Put("\\logs\\old\\20240615N.csv", "");
    computer.files.Put("\\logs\\20240614N.csv", "");
    for (const std::string name : {"/nowhere", "/logs/20240614N.csv"})
        EXPECT_EQ(station.Ask("set Dir1 " + name), "error Dir1 does not take '" + name + "'");
    station.Ask("set Dir1 \\logs\\");
    EXPECT_EQ(station.Ask("get File1"), "= 20240614N.csv|ok");
    EXPECT_EQ(station.Ask("get Dir1"), "= /logs|= ..|= old|ok");
    station.Ask("set Dir1 old");
    EXPECT_EQ(computer.store.GetSetting("Setting", "Path", ""), "/logs/old");
    EXPECT_EQ(station.Ask("set Drive1 D:"), "ok");
    EXPECT_EQ(computer.store.GetSetting("Setting", "Drive", ""), "D:");
}

TEST_F(Views, TheSplashFormGoesByItselfAndComesBackFromTheAboutTab) {
    again.Start();
    EXPECT_EQ(again.Get("FrmSplash.Visible"), "1");
    computer.loop.Run(3000);
    EXPECT_EQ(again.Get("FrmSplash.Visible"), "0");
    again.Ask("click Picture10");
    EXPECT_EQ(again.Get("FrmSplash.Visible"), "1");
    again.Ask("click FrmSplash");
    EXPECT_EQ(again.Get("FrmSplash.Visible"), "0");
    computer.processes.started.clear();
    for (const char* const button : {"cmdExplorer", "cmdHomePage", "Command1"})
        EXPECT_EQ(again.Ask(std::string("click ") + button), "ok");
    const std::vector<std::vector<std::string>> started = {{"explorer", "https://veltrix.example/network"},
                                                           {"explorer", "https://veltrix.example/"},
                                                           {"notepad", "ReleaseNotes.txt"}};
    EXPECT_EQ(computer.processes.started, started);
    computer.processes.missing = {"explorer"};
    again.Ask("click cmdExplorer");
    EXPECT_TRUE(computer.messageBox.questions.empty());
}

}  // namespace
}  // namespace veltrix
