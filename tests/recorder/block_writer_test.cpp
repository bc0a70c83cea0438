// The hand-over to the station, on a real disk.

#include "recorder/block_writer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "support/samples.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

struct BlockWriterTest : testing::Test {
    BlockWriterTest() { Begin(); }
    void Begin() {
        fs::remove_all(ram);
        fs::create_directory(ram);
        said.clear();
        got.clear();
        next = 0;
        const BlockWriterSettings settings{.maxBytes = 400, .leastFrames = 10, .queueFrames = 1000};
        writer.emplace(files, settings, [this](const std::string& line) { said.push_back(line); });
    }
    /// Queues frames numbered on from the last ones.
    void Take(int frames) {
        Samples samples;
        for (int i = 0; i < frames; ++i, ++next)
            samples.insert(samples.end(), {next, static_cast<std::int16_t>(-next)});
        writer->Take(samples);
    }
    void Step(std::chrono::milliseconds passed, bool isLast = false) {
        now += passed;
        writer->Step(now, isLast);
    }
    /// What a station does: takes the block that stands to `got`. Returns its frames; -1: none stood.
    int TakeBlock() {
        const std::string bytes = folder.Content("ram/audio.dat");
        if (!fs::remove(ram / "audio.dat")) return -1;
        Samples samples(bytes.size() / 2);
        if (!samples.empty()) std::memcpy(samples.data(), bytes.data(), bytes.size());
        got.insert(got.end(), samples.begin(), samples.end());
        return static_cast<int>(bytes.size() / 4);
    }

    const ScratchFolder folder;
    const fs::path ram = folder / "ram";
    DiskBlockFiles files{ram / "audio.dat"};
    std::optional<BlockWriter> writer;
    std::vector<std::string> said;
    Moment now{};
    std::int16_t next = 0;
    Samples got;
};

TEST_F(BlockWriterTest, BringsEveryFrameOnceInOrderAndNoBlockTooLargeOrTooSmall) {
    std::minstd_rand random(1);
    for (int round = 0; round < 500 || !writer->IsDone(); ++round) {
        if (round < 500) Take(static_cast<int>(random() % 40));
        Step(10ms, round >= 500);
        EXPECT_LE(random() % 2 == 0 ? TakeBlock() : 0, 100);
    }
    Take(9);
    Step(10ms);
    EXPECT_EQ(TakeBlock(), -1);
    Step(10ms, true);
    EXPECT_EQ(TakeBlock(), 9) << "the last ones";
    ASSERT_EQ(got.size(), 2u * static_cast<std::size_t>(next));
    for (std::size_t i = 0; i < got.size(); i += 2) ASSERT_EQ(got[i], static_cast<std::int16_t>(i / 2));
    EXPECT_TRUE(said.empty());
}

TEST_F(BlockWriterTest, TellsOnceWhatALateStationCostAndKeepsTheNewest) {
    for (const int piece : {100, 2500}) {
        Begin();
        Take(100);
        Step(10ms);
        for (int taken = 0; taken < 2500; taken += piece) {
            Take(piece);
            Step(100ms);
        }
        EXPECT_TRUE(said.empty());
        while (TakeBlock() >= 0) Step(100ms);
        // The block that stood, then the newest thousand of the 2500 that came meanwhile.
        ASSERT_EQ(got.size(), 2u * 1100);
        EXPECT_EQ(got[2 * 100], 1600);
        EXPECT_EQ(got.back(), -2599);
        EXPECT_EQ(said, std::vector<std::string>{"the station was late: 1500 frames (0.07 s) were lost"});
    }
}

TEST_F(BlockWriterTest, TellsAFailureOnceTriesCalmlyAndGivesUpOnAFolderThatStaysAway) {
    const struct {
        std::string words;
        std::function<void()> fail;
        bool isAbandoned;
    } table[] = {{"folder " + ram.string() + " is missing", [this] { fs::remove_all(ram); }, true},
                 {"audio.tmp: Is a directory", [this] { fs::create_directory(ram / "audio.tmp"); }, false},
                 {"folder " + ram.string() + " is full",  // a device that always is
                  [this] { fs::create_symlink("/dev/full", ram / "audio.tmp"); }, false}};
    for (const auto& [words, fail, isAbandoned] : table) {
        Begin();
        Take(50);
        for (int i = 0; i <= 600; ++i) {
            EXPECT_FALSE(writer->IsAbandoned(now)) << words;
            fail();
            Step(1s);
        }
        EXPECT_EQ(writer->IsAbandoned(now), isAbandoned) << words;
        fs::remove_all(ram);
        fs::create_directory(ram);
        Step(999ms);
        EXPECT_EQ(TakeBlock(), -1) << "before its time";
        Step(1ms);
        EXPECT_EQ(TakeBlock(), 50) << words;
        ASSERT_EQ(said.size(), 2u);
        EXPECT_TRUE(said[0].ends_with(words + "; trying again")) << said[0];
        EXPECT_EQ(said[1], "blocks go out again");
    }
}

TEST_F(BlockWriterTest, AsksWithEmptyBlocksWhetherTheStationIsThere) {
    int empty = 0;
    for (int i = 0; i < 20 * 60; ++i) {
        Step(1s);
        empty += TakeBlock() == 0 ? 1 : 0;
        EXPECT_FALSE(writer->IsAbandoned(now));
    }
    EXPECT_NEAR(empty, 20, 1);
    // Nobody takes the block of an earlier recorder. It is not replaced, whatever the writer believes.
    Begin();
    folder.Put("ram/audio.dat", "");
    for (int i = 0; i <= 10 * 60; ++i) Step(1s);
    EXPECT_TRUE(writer->IsAbandoned(now));
    folder.Put("ram/audio.tmp", "next");
    EXPECT_EQ(files.Publish(), BlockFiles::Publication::NameTaken);
    EXPECT_EQ(TakeBlock(), 0);
}

}  // namespace
}  // namespace veltrix
