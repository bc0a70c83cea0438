// The calibration of bearings: what a table makes of them, and the files of tables.

#include <gtest/gtest.h>

#include <string>

#include "common/failure.h"
#include "common/neutral_text.h"
#include "location/direction_table.h"
#include "support/memory_files.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

class Tables : public ::testing::Test {
  protected:
    DirectionTable& Loaded(const std::string& content) {
        files.Put("table.dat", content);
        table.pSD_Restore("table.dat");
        return table;
    }
    std::string Written() {
        table.pSD_Backup("written.dat");
        return files.Content("written.dat");
    }

    ManualClock clock;
    MemoryFiles files{clock};
    DirectionTable table{files};
};

/// `count` points in descending order: source 10 times the place from the end, destination one more.
std::string Descending(int count) {
    std::string text;
    for (int i = count - 1; i >= 0; --i)
        text += std::to_string(10 * i) + ";" + std::to_string(10 * i + 1) + "\n";
    return text;
}

TEST_F(Tables, TurnReportedBearingsIntoTrueOnes) {
    const std::string identity = Written();
    const std::string bent = "60;60\n120;125\n0;-15\n";
    const std::string stepped = "0;0\n50;90\n60;90\n120;120\n";
    const struct {
        std::string table;
        float reported;
        double expected;
    } cases[] = {
        {identity, 0, 0},     {identity, 20, 20},   {identity, 175, 175},    {identity, 180, 180},
        {identity, 200, 200}, {identity, 360, 360}, {identity, 12.5F, 12.5}, {bent, 10, 20},
        {bent, 170, 184},     {bent, 190, 200},     {bent, -10, 4},          {stepped, 90, 50},
        {stepped, 95, 70},    {"30;40\n", 50, 40},  {"30;40\n", 230, 220},   {"", 200, 20},
        {"", 180, 180},       {identity, 500, 0},  // nothing spans it: neither 0 nor 180 is near
        {identity, 290, 290},
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(Loaded(c.table).DestinToSource(c.reported), c.expected) << c.table << c.reported;
    EXPECT_EQ(Loaded("0;0\n90;90\n").DestinToSource(0.1F), static_cast<double>(0.1F));
}

TEST_F(Tables, KeepWhatADamagedFileHeldBeforeTheDamage) {
    const struct {
        std::string content;
        int count;
        std::string sources;  ///< of the first three slots
        float lastSource;     ///< of the last slot
    } cases[] = {
        {"20;1\n0;2\n10;3\n", 3, "0 10 20", 180},          {Descending(19), 19, "0 10 20", 180},
        {Descending(20), 18, "190 180 170", 10},  // full: neither counted nor sorted
        {"170;1\n90;2\nhalf a li", 18, "170 90 20", 180},  {"170;1\n90;2\n\n10;3\n", 18, "170 90 20", 180},
        {"170;1\n1e39;2\n10;3\n", 18, "170 10 20", 180},  // no 4-byte float
        {"20,5;1\n10.5,2\n 3,x\n", 3, "3 10.5 20.5", 180}, {"", 0, "0 10 20", 180},
    };
    for (const auto& c : cases) {
        DirectionTable fresh(files);
        files.Put("damaged.dat", c.content);
        fresh.pSD_Restore("damaged.dat");
        EXPECT_EQ(fresh.Count(), c.count) << c.content;
        std::string sources;
        for (const int slot : {0, 1, 2})
            sources += (slot > 0 ? " " : "") + GeneralSingle(fresh.CTSource(slot));
        EXPECT_EQ(sources, c.sources) << c.content;
        EXPECT_EQ(fresh.CTSource(18), c.lastSource) << c.content;
    }
    EXPECT_EQ(NumberRaisedBy([&] { table.CTSource(19); }), errors::OutOfRange);
    EXPECT_EQ(NumberRaisedBy([&] { table.CTDestion(-1); }), errors::OutOfRange);
}

TEST_F(Tables, AreNamedAfterTheDecimalsOfThePlace) {
    EXPECT_EQ(pSDFilename(5.12345, 52.67890), "pSD1234567890.dat");
    EXPECT_EQ(pSDFilename(-0.25, 0), "pSD7500000000.dat");
    EXPECT_EQ(pSDFilename(12.9999999, -180), "pSD0000000000.dat");
}

TEST_F(Tables, MoveWithTheirStation) {
    const std::string name = "pSD1234567890.dat";
    const std::string path = ".\\pSD\\" + name, unplaced = ".\\pSD\\pSD1234500000.dat", old = "pSDzz.dat";
    const struct {
        const char* fault;
        bool isPlaced;
        std::string oldName;
        std::vector<std::string> present, left;
        std::string usedName;
        double loaded;  ///< number of the file that is in use; 0: none
    } cases[] = {
        {"the table of the place was not used", true, old, {path, old}, {path, old}, path, 1},
        {"the older table was lost", true, old, {old}, {path, old}, path, 1},
        {"a table stays in the working folder", true, name, {name}, {path}, path, 1},
        {"a stale table stays in the working folder", true, "", {path, name}, {path}, path, 1},
        {"a table moved to no place", false, old, {old}, {old}, old, 1},
        {"a station without place and table has no name", false, old, {}, {}, unplaced, 0},
        {"a new station has no name", true, "", {}, {}, path, 0},
    };
    for (const auto& c : cases) {
        MemoryFiles folder(clock);
        folder.MakeFolder("pSD");
        for (std::size_t i = 0; i < c.present.size(); ++i)
            folder.Put(c.present[i], std::to_string(i + 1) + ";0\n");
        DirectionTable moved(folder);
        std::string pSDdat = c.oldName;
        moved.Init(5.12345, c.isPlaced ? 52.67890 : 0, pSDdat);
        EXPECT_EQ(pSDdat, c.usedName) << c.fault;
        EXPECT_EQ(moved.Count(), c.loaded == 0 ? 18 : 1) << c.fault;
        EXPECT_EQ(moved.CTSource(0), c.loaded) << c.fault;
        for (const std::string& file : c.left) EXPECT_TRUE(folder.Exists(file)) << c.fault;
        EXPECT_EQ(folder.AllFiles().size(), c.left.size()) << c.fault;
    }
}

TEST_F(Tables, PassOverFilesThatFail) {
    files.Put("pSDzz.dat", "1;1\n");
    std::string pSDdat = "pSDzz.dat";
    table.Init(5.12345, 52.67890, pSDdat);  // without the folder there is nowhere to copy to
    EXPECT_EQ(pSDdat, "pSDzz.dat");
    EXPECT_EQ(table.Count(), 18);
    table.pSD_Restore("missing.dat");
    table.bSDDirty = true;
    files.FailOn(FileOperation::WriteWhole, "", errors::DiskFull);
    table.Save("full.dat");
    EXPECT_EQ(files.AllFiles().size(), 1U);
}

TEST_F(Tables, AreSavedWhenChangedAsTheyWereRead) {
    const std::string content = "-0.5;0.1\n33.33333;1E-6\n100;16777216\n";
    Loaded(content).Save("saved.dat");
    EXPECT_FALSE(files.Exists("saved.dat"));
    table.bSDDirty = true;
    table.Save("");
    table.Save("saved.dat");
    EXPECT_EQ(files.Content("saved.dat"), "-0.5;0.1\n33.33333;1e-06\n100;16777216\n");
    EXPECT_TRUE(table.bSDDirty);
    files.Delete("saved.dat");
    table.Save("saved.dat");
    EXPECT_TRUE(files.Exists("saved.dat"));
}

TEST_F(Tables, BendAroundADirectionAndGiveTheMeanToTheFixedCorrection) {
    EXPECT_NEAR(table.UpdatepSD(45.7, 0, 10, 1), -4, 1e-6);
    EXPECT_TRUE(table.bSDDirty);
    // 10 degrees less at 45, nothing at 135, and the mean of 5 put back.
    EXPECT_NEAR(table.CTDestion(4), 40 - 9.924039 + 5, 1e-5);
    EXPECT_NEAR(table.CTDestion(13), 130 - 0.075961 + 5, 1e-5);
    EXPECT_EQ(table.CTSource(4), 40);
    EXPECT_EQ(table.CTDestion(18), 180);  // not counted

    Loaded("10;10\n30.5;30.5\n180;180\n");  // only the first is on the grid
    EXPECT_NEAR(table.UpdatepSD(-170, 0, -3, 0), 1, 1e-6);
    EXPECT_EQ(Written(), "10;12\n30.5;29.5\n180;179\n");
    Loaded("");
    EXPECT_EQ(NumberRaisedBy([&] { table.UpdatepSD(0, 0, 1, 0); }), errors::Overflow);
}

}  // namespace
}  // namespace veltrix
