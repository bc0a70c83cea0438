// The contract of Files, kept by the computer's files and by their twin in memory alike, and what only real
// files have: links, permissions, disks that are full.
#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <array>
#include <csignal>

#include "platform/qt/desk_files.h"
#include "platform/qt/drives.h"
#include "platform/qt/qt_clock.h"
#include "support/memory_files.h"
#include "support/number_raised_by.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;
using namespace errors;
using namespace std::literals;
using Texts = std::vector<std::string>;

struct DeskFilesTest : ::testing::Test {
    ScratchFolder folder;
    DeskFiles desk{folder.Text()};
};

struct FilesContract : DeskFilesTest, ::testing::WithParamInterface<bool> {
    ManualClock clock;
    MemoryFiles memory{clock};
    Files& files = GetParam() ? static_cast<Files&>(memory) : desk;
};

INSTANTIATE_TEST_SUITE_P(OnDeskAndInMemory, FilesContract, ::testing::Bool());

TEST_P(FilesContract, ANameIsFoundInAnyCaseAndForm) {
    files.MakeFolder(".\\Log");
    files.WriteWhole(".\\Log\\VX V1.txt", "x");
    for (const char* const name : {".\\log\\vx v1.TXT", ".\\.\\Log\\\\VX V1.txt", "Log/VX V1.txt"})
        EXPECT_EQ(files.ReadLines(name), Texts{"x"}) << name;
    for (const char* const name : {"", "Log\\none", "VX V1.txt"}) EXPECT_FALSE(files.Exists(name)) << name;
    for (const char* const name : {".\\LOG", "log\\", "."}) EXPECT_TRUE(files.Exists(name)) << name;
    files.AppendLine("log\\vx V1.txt", "y");
    EXPECT_EQ(files.List("Log", "*"), Texts{"VX V1.txt"}) << "in another case it is the same file";
    files.Delete("LOG\\vx v1.txt");
    EXPECT_EQ(files.List("Log", "*"), Texts{});
}

TEST_P(FilesContract, WritingKeepsEveryByteAndReadingEveryLine) {
    const std::string content("\0a\r\n\xff\n", 6);
    files.WriteWhole("a.dat", content);
    files.Copy("A.DAT", "b.dat");
    files.WriteWhole("a.dat", "");
    std::array<char, 16> read{};
    EXPECT_EQ(files.Open("b.dat")->Read(std::as_writable_bytes(std::span(read))), content.size());
    EXPECT_EQ(std::string(read.data(), content.size()), content);
    EXPECT_EQ(files.ReadLines("a.dat"), Texts{});
    files.WriteWhole("a.dat", "one\r\ntwo\n\nfour");
    EXPECT_EQ(files.ReadLines("a.dat"), (Texts{"one", "two", "", "four"}));
    for (const char* const line : {"a", "", "b"}) files.AppendLine("new.txt", line);
    EXPECT_EQ(files.ReadLines("NEW.txt"), (Texts{"a", "", "b"}));
    EXPECT_NEAR(files.DateOfLastChange("a.dat"), GetParam() ? clock.Now() : QtClock().Now(), 1.0 / 1440);
}

TEST_P(FilesContract, FailuresHaveTheirNumbers) {
    for (const char* const name : {"Folder", "FOLDER"}) files.MakeFolder(name);
    files.WriteWhole("file", "x");
    for (const auto& [name, number] : {std::pair{"none", FileNotFound},
                                       {"none\\file", PathNotFound},
                                       {"folder", PathAccess},
                                       {"", PathAccess}}) {
        EXPECT_EQ(NumberRaisedBy([&] { files.Open(name); }), number) << name;
        EXPECT_EQ(NumberRaisedBy([&] { files.ReadLines(name); }), number) << name;
        EXPECT_EQ(NumberRaisedBy([&] { files.Delete(name); }), number) << name;
        EXPECT_EQ(NumberRaisedBy([&] { files.Copy(name, "copy"); }), number) << name;
        if (number == FileNotFound) continue;
        EXPECT_EQ(NumberRaisedBy([&] { files.AppendLine(name, "y"); }), number) << name;
        EXPECT_EQ(NumberRaisedBy([&] { files.WriteWhole(name, "y"); }), number) << name;
    }
    EXPECT_FALSE(files.Exists("copy"));
    EXPECT_EQ(NumberRaisedBy([&] { files.DateOfLastChange("none"); }), FileNotFound);
    EXPECT_EQ(NumberRaisedBy([&] { files.MakeFolder("file"); }), PathAccess);
    EXPECT_EQ(NumberRaisedBy([&] { files.MakeFolder("none\\deeper"); }), PathNotFound);
}

TEST_P(FilesContract, ListsFilesByPatternInAlphabeticalOrder) {
    for (const char* const name : {"Maps", "Maps\\sub.bmp"}) files.MakeFolder(name);
    for (const char* const name : {"b.BMP", "A.bmp", "c.jpeg", "c.jpg", "d.gif.txt", "bmp"})
        files.WriteWhole("Maps\\"s + name, "");
    EXPECT_EQ(files.List("maps", "*.bmp;*.JPG;*.gif"), (Texts{"A.bmp", "b.BMP", "c.jpg"}));
    EXPECT_EQ(files.List("maps", "*c*p*;*"),
              (Texts{"A.bmp", "b.BMP", "bmp", "c.jpeg", "c.jpg", "d.gif.txt"}));
    for (const char* const pattern : {"", "*m*j*"}) EXPECT_EQ(files.List("maps", pattern), Texts{});
    EXPECT_EQ(files.List("none", "*"), Texts{});
}

TEST_F(DeskFilesTest, AFullDiskLeavesNoHalfLineAndNoHalfFile) {
    folder.Put("log.txt", "0123456789\n");
    folder.Put("state.dat", "old");
    const std::string much(20, 'x');
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit full{16, limit.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);  // as on a disk that is full
    EXPECT_EQ(NumberRaisedBy([&] { desk.AppendLine(".\\LOG.txt", much); }), DiskFull);
    EXPECT_EQ(NumberRaisedBy([&] { desk.AppendLine("new.txt", much); }), DiskFull);
    EXPECT_EQ(NumberRaisedBy([&] { desk.WriteWhole("state.dat", much); }), DiskFull);
    desk.AppendLine("log.txt", "fits");
    ::setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(folder.Content("log.txt"), "0123456789\nfits\n");
    EXPECT_EQ(folder.Content("state.dat"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2) << "a temporary file stayed";
}

TEST_P(FilesContract, FoldersAreListedByThemselves) {
    for (const char* const name : {"maps", "Data", "data\\Old", ".hidden"}) files.MakeFolder(name);
    files.WriteWhole("Data\\file", "x");
    EXPECT_EQ(files.Folders(""), (Texts{"Data", "maps"}));
    EXPECT_EQ(files.Folders(".\\DATA\\"), Texts{"Old"});
    for (const char* const name : {"none", "data\\file", "data\\old"})
        EXPECT_EQ(files.Folders(name), Texts{}) << name;
    EXPECT_EQ(files.Drives().front(), "/");
}

TEST_P(FilesContract, TheArchiveAttributeTellsOfChangesByAnyone) {
    const auto write = [&](const std::string& content) {
        if (GetParam())
            memory.Put("List.dat", content);
        else
            folder.Put("List.dat", content);
    };
    EXPECT_FALSE(files.HasArchive("list.dat")) << "there is no such file";
    files.ClearArchive("list.dat");
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"as an editor makes it", [&] { write("a\n"); }},
        {"as an editor writes it", [&] { write("b\n\n"); }},
        {"as the station writes it", [&] { files.WriteWhole("List.dat", "b\n\n"); }},
        {"a line is added", [&] { files.AppendLine("list.dat", "c"); }}};
    for (const auto& [what, change] : changes) {
        change();
        EXPECT_TRUE(files.HasArchive("List.dat")) << what;
        files.ClearArchive("List.dat");
        EXPECT_FALSE(files.HasArchive("LIST.dat")) << what;
    }
    EXPECT_EQ(files.ReadLines("List.dat").size(), 3u);
    EXPECT_FALSE(files.HasArchive("List.dat")) << "reading is no change";
    EXPECT_FALSE(files.HasArchive(""));
}

TEST(Drives, AreTheVolumesThatAUserKnows) {
    const std::vector<Volume> volumes = {{"/media/me/Zip", "/dev/sdc1", "vfat"},
                                         {"/home", "/dev/sda3", "ext4"},
                                         {"/", "/dev/sda2", "btrfs"},
                                         {"/home/me/linked", "/dev/sda3", "ext4"},
                                         {"/run/media/me/Stick", "/dev/sdb1", "fuseblk"},
                                         {"/run/user/1000/gvfs", "gvfsd-fuse", "fuse"},
                                         {"/mnt/music", "server:/music", "nfs4"},
                                         {"/snap/core/1", "/dev/loop0", "squashfs"},
                                         {"/mnt/disc", "/dev/loop1", "iso9660"},
                                         {"/boot/efi", "/dev/sda1", "vfat"},
                                         {"/bootable", "/dev/sdd1", "ext4"},
                                         {"/etc/hosts", "/dev/vda1", "ext4"},
                                         {"/var/lib/docker/x", "overlay", "overlay"}};
    EXPECT_EQ(DrivesAmong(volumes), (Texts{"/", "/bootable", "/home", "/media/me/Zip", "/mnt/disc",
                                           "/mnt/music", "/run/media/me/Stick"}));
    EXPECT_EQ(DrivesAmong({}), Texts{"/"});
    EXPECT_EQ(DrivesAmong({{"/", "overlay", "overlay"}}), Texts{"/"}) << "also in a container";
}

TEST_F(DeskFilesTest, WhatIsNoFileIsLeftAlone) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(NumberRaisedBy([&] { desk.Open("pipe"); }), PathAccess) << "it would wait for ever";
    EXPECT_NE(NumberRaisedBy([&] { desk.AppendLine("pipe", "x"); }), 0);
    for (const std::string& name : {"pipe"s, "/DEV\\null"s, "loop"s, std::string(300, 'n')})
        EXPECT_EQ(NumberRaisedBy([&] { desk.WriteWhole(name, "x"); }), PathAccess) << name;
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_FALSE(desk.Exists("pipe\0x"sv));
}

TEST_F(DeskFilesTest, ExactCaseComesFirstAndLinksAndPermissionsSurviveAWrite) {
    for (const char* const name : {"MAP.bmp", "Map.bmp", "map.bmp"}) folder.Put(name, name + "\rb\r\r\n"s);
    for (const char* const name : {"Map.bmp", "map.bmp"})
        EXPECT_EQ(desk.ReadLines(name), (Texts{name, "b", ""}));
    EXPECT_EQ(desk.ReadLines("mAP.bmp").front(), "MAP.bmp");
    folder.Put("deep/real.dat", "old");
    ASSERT_EQ(::chmod((folder / "deep/real.dat").c_str(), 0640), 0);
    fs::create_symlink("deep/real.dat", folder / "link.dat");
    desk.WriteWhole(folder.Text() + "\\LINK.dat", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link.dat"));
    EXPECT_EQ(folder.Content("deep/real.dat"), "new");
    EXPECT_EQ(fs::status(folder / "deep/real.dat").permissions(), static_cast<fs::perms>(0640));
}

}  // namespace
}  // namespace veltrix
