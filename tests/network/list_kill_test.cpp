// The list on a real disk, under a program that is killed.

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "network/list_fixture.h"
#include "platform/qt/desk_files.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

TEST_F(ListTest, AKillWhileItIsSavedLeavesTheOldOrTheNewList) {
    const ScratchFolder folder;
    DeskFiles disk(folder.Text());
    StationListFile file(mappers, disk, clock, errors);
    std::string tables[2];
    const auto save = [&](int turn) {
        for (std::int16_t row = 1; row <= C_NUMBEROFMAPPERS; ++row)
            Fill(row, turn == 0 ? "Old" : "The new name", "10.0.0.9", 5.5, 52.5);
        file.StationListSave();
    };
    for (const int turn : {1, 0}) {
        save(turn);
        tables[turn] = folder.Content("StationList.dat");
    }
    int both = 0;
    // Where a save takes long, the children get longer, until both tables were left behind.
    for (int round = 0; round < 1000 || (both != 3 && round < 8000); ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        for (int turn = 1; child == 0; turn = 1 - turn) save(turn);
        ::usleep(static_cast<useconds_t>((1 + round / 1000) * (500 + round * 7919 % 4000)));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string left = folder.Content("StationList.dat");
        ASSERT_TRUE(left == tables[0] || left == tables[1]) << "round " << round;
        both |= left == tables[0] ? 1 : 2;
    }
    EXPECT_EQ(both, 3) << "the children were killed before they saved";
}

}  // namespace
}  // namespace veltrix
