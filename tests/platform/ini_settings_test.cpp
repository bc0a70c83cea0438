#include "platform/qt/ini_settings_store.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <random>
#include <thread>

#include "platform/qt/ini_text.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Texts = std::vector<std::string>;

struct IniSettings : ::testing::Test {
    ScratchFolder folder;
    std::string path = folder.Text() + "/settings.ini";

    IniSettingsStore Store() const { return IniSettingsStore(path); }
    std::string Text() const { return folder.Content("settings.ini"); }
    void Edit(std::string_view text) const { folder.Put("settings.ini", text); }
    std::string Get(std::string_view section, std::string_view key) const {
        return Store().GetSetting(section, key, "(none)");
    }
    std::ptrdiff_t Files() const { return std::distance(fs::directory_iterator(folder.Path()), {}); }
};

TEST_F(IniSettings, WhateverStandsInAFileATextComesBackAndTheFileIsStable) {
    // A text of ours that we would not read back whole would be copied aside at every save.
    Texts odd = {"\\n", "%20", "\f", "\v", "\x01\x1b", "\xC3\xBC", "\xE2\x98\x83", "<<<END"};
    for (const char c : "ab =[];#\"%\\'\t.:/"s) odd.emplace_back(1, c);
    Texts junk = odd, names = odd;
    odd.emplace_back("\xEF\xBB\xBF");
    junk.insert(junk.end(), {"\n", "\n[", "]\n", "\r\n", "\na=", "\xff"});
    names.insert(names.end(), {"\n", "\xff"});
    std::mt19937 random(6);
    const auto some = [&](const Texts& pieces, std::size_t most) {
        std::string made;
        for (std::size_t n = random() % (most + 1); n > 0; --n) made += pieces[random() % pieces.size()];
        return made;
    };
    for (int round = 0; round < 3000; ++round) {
        const std::string before = some(junk, 40), section = some(names, 4), key = some(names, 4);
        const std::string value = some(odd, 6);
        IniText ini(before);
        ini.SetValue(section, key, value);
        const std::string once = ini.Text();
        ASSERT_EQ(IniText(once).Value(section, key), value) << before << "\n--- became\n" << once;
        ASSERT_TRUE(IniText::KeepsAllOf(once)) << before << "\n--- became\n" << once;
    }
    Store().SaveSetting("Setting", "Key", "one\r\ntwo\nthree\0four\xff"s);
    EXPECT_EQ(Get("setting", "kEY"), "one  two three four\xEF\xBF\xBD") << "made to fit into a line";
}

TEST_F(IniSettings, HandEditsAndCommentsStay) {
    Edit(
        "; my\r\n\r\n[SETTING]\r\n Age = 45 \r\n; keep\r\nB=6\r\n\r\n# at\r\n[Map]\r\nx= \" 1 \"\r\n; "
        "end\r\n");
    EXPECT_EQ(Get("Setting", "age") + Get("map", "X"), "45 1 ");
    Store().SaveSetting("setting", "AGE", "50");
    Store().SaveSetting("setting", "New", "1");
    EXPECT_EQ(Text(),
              "; my\n\n\n[SETTING]\nAge=50\n\n; keep\nB=6\nNew=1\n\n\n# at\n[Map]\nx=\" 1 \"\n\n; end\n");
    EXPECT_EQ(Files(), 1);
}

TEST_F(IniSettings, AnEditMadeWhileWeRunStaysAndAnEqualValueTouchesNothing) {
    IniSettingsStore store = Store();
    store.SaveSetting("Setting", "Age", "30");
    Edit("[Setting]\nAge=45\nFtpTo=there\n");
    store.SaveSetting("Setting", "MinAuto", "7");
    EXPECT_EQ(Text(), "[Setting]\nAge=45\nFtpTo=there\nMinAuto=7\n");
    Edit("[Setting]\n  Age = 60\n");
    store.SaveSetting("SETTING", "age", "60");
    EXPECT_EQ(Text(), "[Setting]\n  Age = 60\n");
    Edit("[Setting]\nAge=45\n");
    store.SaveSetting("Setting", "Age", "60");
    EXPECT_EQ(Text(), "[Setting]\nAge=60\n") << "equal to what we last saw, not to what the file holds";
}

TEST_F(IniSettings, WhatCannotBeKeptIsCopiedFirst) {
    const Texts damaged = {"[Setting]\nAge=30\nthis is no setting\n", "[Setting]\nAge=30\nAge=31\n",
                           "[Setting]\nAge=30\n[open\nx=1\n", "[Setting]\nName=\xff\xfe\n",
                           "[Setting]\nAge=30\n"s + '\0' + "rest\n"};
    for (std::size_t i = 0; i < damaged.size(); ++i) {
        Edit(damaged[i]);
        EXPECT_EQ(Get("Setting", "None"), "(none)");
        EXPECT_EQ(Text(), damaged[i]) << "reading changes nothing";
        for (const char* const age : {"45", "46"}) Store().SaveSetting("Setting", "Age", age);
        EXPECT_EQ(Get("Setting", "Age"), "46");
        const std::string copy = "settings.ini.bak" + (i == 0 ? "" : std::to_string(i + 1));
        EXPECT_EQ(folder.Content(copy), damaged[i]);
    }
}

TEST_F(IniSettings, AFileThatCannotBeWrittenIsToldOnceAndWrittenLater) {
    folder.Put("in", "a file where the folder should be");
    ::testing::internal::CaptureStderr();
    IniSettingsStore store((folder / "in/settings.ini").string());
    EXPECT_NE(store.WhyUnusable(), "");
    for (const char* const age : {"30", "45"}) store.SaveSetting("Setting", "Age", age);
    EXPECT_EQ(std::ranges::count(::testing::internal::GetCapturedStderr(), '\n'), 1);
    fs::remove(folder / "in");
    folder.Put("in/settings.ini", "[Setting]\nB=1\n");
    store.SaveSetting("setting", "Age", "45");
    EXPECT_EQ(folder.Content("in/settings.ini"), "[Setting]\nB=1\nAge=45\n");
    EXPECT_NE(IniSettingsStore(folder.Text()).WhyUnusable(), "") << "a folder";
}

TEST_F(IniSettings, AKilledProgramLeavesTheOldOrTheNewText) {
    const std::string values[] = {std::string(30000, 'a'), std::string(50000, 'b')};
    Store().SaveSetting("Setting", "Long", values[0]);
    Store().SaveSetting("Setting", "Age", "30");
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        for (std::size_t i = 1; child == 0; ++i) Store().SaveSetting("Setting", "Long", values[i % 2]);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 15000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string read = Get("Setting", "Long");
        ASSERT_TRUE(read == values[0] || read == values[1]) << read.size() << " bytes";
        ASSERT_EQ(Get("Setting", "Age"), "30");
    }
    Store().SaveSetting("Setting", "Age", "31");
    EXPECT_EQ(Files(), 1) << "what a killed program left is taken over";
}

}  // namespace
}  // namespace veltrix
