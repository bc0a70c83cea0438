// The station list: its file, who is who, and what is taken from the network; the lists beside it.
#include "network/station_list.h"

#include "network/class_online.h"
#include "network/ignore_list.h"
#include "network/list_fixture.h"

namespace veltrix {
namespace {

using namespace std::literals;
using StationListTest = ListTest;

TEST_F(StationListTest, IsWrittenToTheByteAndReadBack) {
    ClassMapper& alpha = Fill(1, "Alpha", "10.0.0.9", 5.12345, 52.6789);
    alpha.MapFilenamePicture4 = "MAP_EUROPE.BMP";
    alpha.pSDdat = "pSD1.dat";
    alpha.dCorrectionAngle = -1.5;
    alpha.dBalance = 0.9;
    alpha.Corr.dPreDrift = 1234.9;
    alpha.dLastHeared = clock.Now();
    alpha.sRemoteIP = "1.2.3.4";  // goes, as the address is in digits
    ClassMapper& beta = Fill(2, "Beta Station", "beta.example", -123.456789, -8.5);
    beta.Corr.dPreDrift = -77.7;
    beta.sRemoteIP = "10.0.0.7";
    mappers[3].Longitude = 7;  // not in use
    list.StationListSave();
    const std::string table = Table();
    EXPECT_EQ(table.substr(0, table.find("Station 04")),
              "Station 01;  005.12345;  52.67890; MAP_EUROPE.BMP; pSD1.dat; 10.0.0.9    ; Alpha       ;"
              " -01.50;  0.90;  0001234; 2024/06/15 12:00:00;                \n"
              "Station 02; -123.45679; -08.50000; MAP_2000.BMP  ;         ; beta.example; Beta Station;"
              "  00.00;  1.00; -0000078; 1899/12/30 00:00:00; 10.0.0.7       \n"
              "Station 03;  000.00000;  00.00000; MAP_2000.BMP  ;         ;             ;             ;"
              "  00.00;  1.00;  0000000; 1899/12/30 00:00:00;                \n");
    EXPECT_EQ(TableLines(), C_NUMBEROFMAPPERS);
    EXPECT_EQ(table.substr(table.rfind("Station"), 11), "Station 100");
    EXPECT_FALSE(files.HasArchive("StationList.dat")) << "our own save is no edit";

    clock.Advance(60000);
    beta.dLastHeared = 0;
    list.StationListGet();
    EXPECT_EQ(alpha.dBalance, 1) << "the balance is not read back";
    EXPECT_EQ(GeneralDate(alpha.dLastHeared), "2024/06/15 12:00:00");
    EXPECT_EQ(GeneralDate(beta.dLastHeared), "2024/06/15 11:31:00") << "never heard of";
    EXPECT_EQ(Shown(1) + " " + Shown(2) + " " + Shown(3),
              "Alpha|10.0.0.9||5.12345 52.6789 Beta Station|beta.example|10.0.0.7|-123.45679 -8.5 free");
    list.StationListTo();
    EXPECT_EQ(combo.Entries()[1] + combo.Entries().at(99), "Beta Station");
}

TEST_F(StationListTest, OlderAndDamagedLinesAreReadAsFarAsTheyGo) {
    struct Case {
        std::string line, shown;
        double drift = 5, angle = 0;
    };
    const std::string old = "Old|old.example|10.9.9.9|1 2";
    const Case table[] = {
        {"S; 5,1; 52.1; m; c; 10.0.0.9; Alpha; -1,5; 0.9; 12.7; 2024/06/15 11:00:00; 10.0.0.8; more; x",
         "Alpha|10.0.0.9|10.0.0.8|5.1 52.1", 12.7, -1.5},
        {"S;5.1;52.1;m;c;10.0.0.9;Alpha;1.5;0.9", "Alpha|10.0.0.9|10.9.9.9|5.1 52.1", 5, 1.5},
        {"S,5.1,52.1,m,c,alpha.example, Alpha One ", "Alpha One|alpha.example|10.9.9.9|5.1 52.1"},
        {"S;5.1;52.1;m;c;10.0.0.9;0", "free"},
        {"S;5.1;89;m;c;10.0.0.9;Alpha", "free"},
        {"S;-180;52.1;m;c;10.0.0.9;Alpha", "free"},
        {"S;nan;1e999;m;c;10.0.0.9;Alpha;inf;x;-", "free", 0},
        {"S;5.1;52.1;m;c;10.0.0.9;Alpha;0;1;7;yesterday;", "Alpha|10.0.0.9||5.1 52.1", 7},
        {"", old},
        {std::string(5000, ' '), old},
        {std::string(3000, 'x') + std::string(1, '\0'), old},
        {"S;7", "Old|old.example|10.9.9.9|7 2"},
    };
    for (const Case& c : table) {
        ClassMapper& row = Fill(1, "Old", "old.example", 1, 2);
        row.sRemoteIP = "10.9.9.9";
        row.Corr.dPreDrift = 5;
        row.dBalance = row.dCorrectionAngle = 3;
        files.Put("StationList.dat", c.line + "\r\n");
        list.StationListGet();
        EXPECT_EQ(Shown(1), c.shown) << c.line;
        EXPECT_EQ(row.Corr.dPreDrift, c.drift) << c.line;
        EXPECT_EQ(row.dCorrectionAngle, c.angle) << c.line;
        EXPECT_EQ(row.dBalance, 1) << c.line;
    }
    std::string tooMany;
    for (int i = 1; i <= 130; ++i) tooMany += "S;" + std::to_string(i) + ";1;m;c;10.0.0.9;N\n";
    files.Put("StationList.dat", tooMany);
    list.StationListGet();
    EXPECT_EQ(mappers[100].Longitude, 100);
    EXPECT_TRUE(errors.reports.empty());
}

TEST_F(StationListTest, GreetingsAreMergedIn) {
    std::vector<std::int16_t> moved;
    list.OnMoved = [&](std::int16_t row) { moved.push_back(row); };
    Fill(2, "Beta", "beta.example", 6.5, 51.5);
    Fill(7, "Gone", "10.0.0.77", 0, 49.5);  // not in use
    struct Case {
        const char *why, *name, *ip, *longitude, *latitude;
        std::int16_t row;
        const char* shown;  ///< of that row
    };
    const Case table[] = {
        {"new", " Alpha", "10.0.0.9", " 005.50000", " 052.50000", 1, "Alpha|10.0.0.9||5.5 52.5"},
        {"at a new address", "ALPHA", "10.0.0.8", "5.5", "52.5", 1, "Alpha|10.0.0.8||5.5 52.5"},
        {"renamed", "Omega", "10.0.0.8", "7.5", "50.5", 1, "Omega|10.0.0.8||7.5 50.5"},
        {"known by its place alone", "Psi", "10.0.0.4", "7.5", "50.5", 1, "Psi|10.0.0.4||7.5 50.5"},
        {"a host name stays", "Beta", "10.0.0.7", "6.5", "51.5", 2, "Beta|beta.example|10.0.0.7|6.5 51.5"},
        {"and follows its address", "Zeta", "10.0.0.7", "6", "51", 2, "Zeta|beta.example|10.0.0.7|6 51"},
        {"half a known place", "Eta", "10.0.0.6", "7.5", "-50.5", 3, "Eta|10.0.0.6||7.5 -50.5"},
        {"of two the first row", "Eta", "10.0.0.4", "7.5", "50.5", 1, "Eta|10.0.0.4||7.5 50.5"},
        {"like a row not in use", "Gone", "10.0.0.77", "-7.5", "49.5", 4, "Gone|10.0.0.77||-7.5 49.5"},
        {"nameless", " new STATION ", "10.0.0.5", "1.5", "1.5", NoRow, ""},
        {"cleaned into nameless", "New;Station", "10.0.0.5", "1.5", "1.5", NoRow, ""},
        {"the local station", "Me", "10.0.0.1", "1.5", "1.5", NoRow, ""},
        {"no address", "Who", "0.0.0.0", "1.5", "1.5", NoRow, ""},
        {"a host name", "Who", "who.example", "1.5", "1.5", NoRow, ""},
    };
    for (const Case& c : table) {
        clock.Advance(60000);
        EXPECT_EQ(Merge(c.name, c.ip, c.longitude, c.latitude), c.row) << c.why;
        if (c.row == NoRow) continue;
        EXPECT_EQ(Shown(c.row), c.shown) << c.why;
        EXPECT_EQ(GeneralDate(mappers[c.row].dLastHeared), GeneralDate(clock.Now())) << c.why;
        EXPECT_NE(Table().find(mappers[c.row].sRemoteName), std::string::npos) << c.why;
    }
    EXPECT_EQ(moved, (std::vector<std::int16_t>{1, 1, 1, 1, 2, 2, 3, 3, 4, 4}));
    EXPECT_EQ(combo.Entries()[0] + " " + Shown(5), "Eta free");
    for (const auto& [ip, row] : {std::pair("10.0.0.78", 0), {" 10.0.0.7", 2}, {"10.0.0.77", 4}})
        EXPECT_EQ(list.StationGet(ip), row) << ip;
    const std::size_t notes = errors.notes.size();
    EXPECT_EQ(Merge("Eta", "10.0.0.4", "7.5", "50.5"), 1);
    EXPECT_EQ(errors.notes.size(), notes) << "nothing has changed";
}

TEST_F(StationListTest, AFullListTakesNobodyNewAndFollowsTheOthers) {
    for (std::int16_t row = 1; row <= 100; ++row) Fill(row, "S" + std::to_string(row), "10.1.0.1", row, 1);
    EXPECT_EQ(Merge("New", "10.0.0.9", "5.5", "52.5"), NoRow);
    EXPECT_EQ(Merge("S100", "10.0.0.9", "5.5", "52.5"), 100);
    EXPECT_EQ(Shown(100), "S100|10.0.0.9||5.5 52.5");
}

TEST_F(StationListTest, WithoutTheUsersLeaveAChangeLastsUntilTheFileIsReadAgain) {
    Fill(1, "Alpha", "10.0.0.9", 5.5, 52.5);
    list.StationListSave();
    const std::string before = Table();
    update.SetValue(0);
    EXPECT_EQ(Merge("Beta", "10.0.0.8", "6.5", "51.5"), 2);
    EXPECT_EQ(Merge("Omega", "10.0.0.9", "5.5", "52.5"), 1);
    EXPECT_EQ(Shown(1) + " " + Shown(2), "Omega|10.0.0.9||5.5 52.5 Beta|10.0.0.8||6.5 51.5");
    EXPECT_EQ(Table(), before);
    list.StationListGet();
    EXPECT_EQ(Shown(1) + " " + Shown(2), "Alpha|10.0.0.9||5.5 52.5 free");
}

TEST_F(StationListTest, NoNameBreaksTheTable) {
    Fill(2, "Beta", "10.0.0.8", 6.5, 51.5);
    for (const std::string& name :
         {"A\nB"s, "A\r\nB\r"s, "A;B;C;D;E;F;G"s, ";;;;;;;;;;;;;;;"s, "A;\n;5;6;7\nStation 03;9;9"s,
          " ; ;\t;"s, std::string(4000, 'x'), "A\0B;\0"s, "A\0B;\0"s /* again */}) {
        EXPECT_EQ(Merge(name, "10.0.0.9", "5.5", "52.5"), 1) << name;
        EXPECT_EQ(TableLines(), C_NUMBEROFMAPPERS) << name;
        EXPECT_EQ(Shown(2) + " " + Shown(3), "Beta|10.0.0.8||6.5 51.5 free") << name;
    }
    EXPECT_EQ(Merge(std::string(9000, 'x'), "10.0.0.9", "5.5", "52.5"), NoRow);
}

TEST_F(StationListTest, AnEditIsReadBeforeTheNextSaveAndAFailedFileCostsNoMoreThanItself) {
    Fill(1, "Alpha", "10.0.0.9", 5.5, 52.5);
    list.StationListGet();
    EXPECT_EQ(Shown(1), "Alpha|10.0.0.9||5.5 52.5") << "without a file the rows stay";
    list.StationListSave();
    files.Put("StationList.dat", "Station 01; 0; 0; ; ; ; \nStation 02; 7.5; 50.5; ; ; 10.0.0.7; Edited\n");
    EXPECT_EQ(Merge("Beta", "10.0.0.8", "6.5", "51.5"), 1) << "the editor has freed that row";
    EXPECT_EQ(Shown(2), "Edited|10.0.0.7||7.5 50.5");
    const std::string before = Table();
    files.FailOn(FileOperation::WriteWhole, "StationList.dat", errors::DiskFull);
    EXPECT_EQ(Merge("Gamma", "10.0.0.6", "8.5", "51.5"), 3);
    EXPECT_EQ(Table(), before);
    mappers[1].sRemoteName = "Omega";
    for (const auto& [answer, name] : {std::pair(reply::Ignore, "Omega"), {reply::Retry, "Beta"}}) {
        files.FailOn(FileOperation::ReadLines, "StationList.dat", errors::DeviceIo);
        errors.replies = {answer};
        list.StationListGet();
        EXPECT_EQ(mappers[1].sRemoteName, name);
    }
    EXPECT_EQ(errors.reports.at(0).context.ErrProcedure, "StationListSave");
    EXPECT_EQ(errors.reports.at(1).context.ErrProcedure, "StationListGet");
    files.Put("StationList.dat", "precious");
    files.FailOn(FileOperation::ReadLines, "StationList.dat", errors::DeviceIo);
    list.StationListSave();
    EXPECT_EQ(Table(), "precious") << "an edit that cannot be read is kept";
}

TEST_F(ListTest, TheIgnoreListIsFollowed) {
    IgnoreList ignored(files);
    EXPECT_FALSE(ignored.IsIgnored("10.0.0.9")) << "no file";
    std::string all;
    for (int i = 1; i <= 105; ++i) all += " 10.0.0." + std::to_string(i) + (i % 2 ? " \r\n" : "\n");
    files.Put("IgnoreList.txt", all);
    for (const char* const address : {"10.0.0.1", " 10.0.0.99 ", "10.0.0.105"})
        EXPECT_TRUE(ignored.IsIgnored(address)) << address;
    for (const char* const address : {"10.0.0", "10.0.0.100", "10.0.0.104", "10.0.0.106"})
        EXPECT_FALSE(ignored.IsIgnored(address)) << address;
    files.FailOn(FileOperation::ReadLines, "IgnoreList.txt", errors::DeviceIo);
    EXPECT_TRUE(ignored.IsIgnored("10.0.0.1")) << "not read again";
    files.Put("IgnoreList.txt", "10.0.0.200");
    EXPECT_THROW(ignored.IsIgnored("10.0.0.200"), Failure);
    EXPECT_TRUE(ignored.IsIgnored("10.0.0.200") && !ignored.IsIgnored("10.0.0.1"));
    files.Delete("IgnoreList.txt");
    EXPECT_FALSE(ignored.IsIgnored("10.0.0.200"));
}

TEST_F(ListTest, TheOnlineListPassesStationsOnInTheirOrder) {
    ClassOnline online(clock);
    online.Init(50);
    EXPECT_FALSE(online.From());
    // Four without a name or a place; one that is taken; and four that are like it in one field alone.
    const char* const rows[][4] = {
        {"", "1", "5", "6"},         {"A", "1", "0.0", "6"},           {"A", "1", "5", ""},
        {"A", "1", "x", "6"},        {"A", "10.0.0.1", "5.5", "52.5"}, {"A", "2", "2", "2"},
        {"B", "10.0.0.1", "2", "2"}, {"B", "2", "5.5", "2"},           {"B", "2", "2", "52.5"}};
    for (const auto& [name, ip, longitude, latitude] : rows) online.Update(name, ip, longitude, latitude);
    online.Update("a", "2", "5.50", "52.50");
    clock.Advance(1000);
    for (int i = 3; i <= 60; ++i) {
        const std::string text = std::to_string(i);
        online.Update("S" + text, text, text, text);
    }
    online.Display(combo);
    ASSERT_EQ(combo.Entries().size(), 49U);
    EXPECT_EQ(combo.Entries()[0], " 2024/06/15 12:00:00, 10.0.0.1, 5.5, 52.5, A");
    EXPECT_EQ(combo.Entries()[48], " 2024/06/15 12:00:01, 49, 49, 49, S49");
    std::string names;
    while (const auto entry = online.From()) names += entry->sStationName + " ";
    EXPECT_TRUE(names.starts_with("A a S3 S4 ") && names.ends_with("S48 S49 ")) << names;
}

}  // namespace
}  // namespace veltrix
