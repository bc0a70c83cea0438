// What runs on the computer we run on: handlers, timers, started programs, the control socket.

#include <sys/stat.h>
#include <unistd.h>

#include <QLocalSocket>
#include <algorithm>
#include <filesystem>
#include <future>
#include <limits>
#include <sstream>

#include "platform/qt/console_lines.h"
#include "platform/qt/console_message_box.h"
#include "platform/qt/control_client.h"
#include "platform/qt/control_server.h"
#include "platform/qt/desk_computer.h"
#include "platform/qt/desk_processes.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "support/manual_clock.h"
#include "support/number_raised_by.h"
#include "support/qt_events.h"
#include "support/recording_errors.h"
#include "support/scratch_folder.h"

namespace veltrix {
namespace {

namespace fs = std::filesystem;
using namespace std::literals;
using Texts = std::vector<std::string>;

TEST(ErrorConvention, TheReplyDecides) {
    // The numbers of the replies, and which of the steps a, b and c ran, b failing once for each reply.
    for (const std::string row :
         {" abc", "5 abc", "4 abbc", "445 abbbc", "41 abb", "0 ab", "7 ab", "2 ab.", "43 abb."}) {
        RecordingErrors reporter;
        reporter.Context() = {"Other", "Late", 64};
        const std::size_t failures = row.find(' ');
        for (const char c : row.substr(0, failures)) reporter.replies.push_back(c - '0');
        std::string ran;
        const auto b = [&] {
            ran += "b";
            if (reporter.reports.size() < failures) throw Failure(errors::Overflow, "Overflow", "Test");
        };
        try {
            UnderErrorConvention(
                reporter, "Update", [&] { ran += "a"; }, b, [&] { ran += "c"; });
        } catch (const ProgramEnded&) {
            ran += ".";
        }
        EXPECT_EQ(ran, row.substr(failures + 1));
        EXPECT_EQ(reporter.reports.size(), failures) << "one report for each failure";
        for (const auto& [context, _] : reporter.reports)
            EXPECT_TRUE(context.ErrProcedure == "Update" && context.ErrStage == "Init" &&
                        context.ErrButtons == 2);
    }
}

/// What is said on standard error, on a clock that the test moves.
struct ConsoleTest : testing::Test {
    ManualClock clock;
    std::ostringstream out;

    /// What has been written since the last call.
    std::string Written() {
        std::string text = out.str();
        out.str("");
        return text;
    }
};

TEST_F(ConsoleTest, TheMessageBoxTellsOnceAndGoesOn) {
    ConsoleLines console(clock, out, false);
    ConsoleMessageBox box(console);
    const MessageBox::Question question{6, "Init\r\n\x1b[2J Error", 2, "Timer1_Timer:12"};
    for (int i = 0; i < 3; ++i) EXPECT_EQ(box.Ask(question), reply::Ignore);
    box.Ask({7, "other", 2, "x"});
    EXPECT_EQ(Written(), "Timer1_Timer:12: Init[2J Error\nx: other\n");
}

TEST_F(ConsoleTest, ALastingFaultTakesTwoLinesInTenMinutes) {
    using enum ConsoleLines::Level;
    clock.SetTimeGetTime(std::numeric_limits<std::int32_t>::max() - 1000);  // it wraps meanwhile
    {
        ConsoleLines console(clock, out, true);
        for (int tick = 0; tick < 58; ++tick, clock.Advance(10000)) {
            console.Say(Error, "disk full");
            if (tick % 29 == 0) console.Say(Warning, "late");
        }
        EXPECT_EQ(Written(), "<3>disk full\n<4>late\n");
        clock.Advance(ConsoleLines::QuietTime - 580000);
        console.Say(Error, "disk full");
        EXPECT_EQ(Written(), "<3>disk full (repeated 57 times)\n<4>late (repeated once)\n<3>disk full\n");
        console.Say(Error, "disk full");
        // More different lines than are remembered, and those that come again are counted.
        for (std::size_t i = 0; i < ConsoleLines::MostLines; ++i) console.Say(Warning, std::to_string(i));
        EXPECT_NE(Written().find("<4>14\n<3>disk full (repeated once)\n<4>15\n"), std::string::npos);
        console.Say(Warning, "15");
    }
    EXPECT_EQ(Written(), "<4>15 (repeated once)\n") << "the rest, at the end";
}

TEST(Journal, IsKnownByItsStream) {
    struct stat status {};
    ASSERT_EQ(::fstat(STDERR_FILENO, &status), 0);
    const std::string stream = std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
    EXPECT_TRUE(LeadsToJournal(STDERR_FILENO, stream.c_str()));
    for (const char* const other : {"", "1", "8:0", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(LeadsToJournal(STDERR_FILENO, other));
    EXPECT_FALSE(LeadsToJournal(-1, stream.c_str()));
}

TEST(DeskComputer, KnowsTheDiskOfItsFolder) {
    const ScratchFolder folder;
    const std::optional<DiskSpace> space = DeskComputer(folder.Text()).Space();
    ASSERT_TRUE(space);
    EXPECT_GT(space->total, 0U);
    EXPECT_LE(space->free, space->total);
    EXPECT_FALSE(DeskComputer(folder.Text() + "/gone").Space());
    EXPECT_NO_THROW(DeskComputer(folder.Text()).IsClockSynchronised());
}

struct QtEventLoopTest : WithEvents {
    QtEventLoop loop;

    static void Enable(Timer& timer, int interval) {
        timer.SetInterval(interval);
        timer.SetEnabled(true);
    }
};

TEST_F(QtEventLoopTest, EventsKeepTheirIntervalDoNotPileUpAndEndWithTheLoop) {
    QtClock clock;
    int events = 0;
    const auto timer = loop.MakeTimer([&] {
        if (++events == 4) loop.Quit();
    });
    Enable(*timer, 100);
    loop.Sleep(1000);
    EXPECT_EQ(events, 0);
    loop.DoEvents();
    EXPECT_EQ(events, 1);
    const std::int32_t start = clock.timeGetTime();
    for (int run = 0; run < 2; ++run) loop.Run();
    EXPECT_GE(clock.timeGetTime() - start, 280);
    EXPECT_EQ(events, 4) << "a loop that was quit does not start again";
}

TEST_F(QtEventLoopTest, AHandlerMayChangeAndEndItsTimer) {
    int events = 0;
    std::unique_ptr<Timer> timer;
    timer = loop.MakeTimer([&, kept = std::string(100, 'k')] {
        if (++events == 1) return timer->SetInterval(20);
        timer.reset();
        loop.DoEvents();
        events += static_cast<int>(kept.size());
    });
    Enable(*timer, 5);
    EXPECT_TRUE(RunUntil([&] { return !timer; }));
    EXPECT_EQ(events, 102) << "the handler outlived its timer";
}

TEST_F(QtEventLoopTest, AFailureEndsItsHandlerOnlyAndIsToldOnce) {
    int events = 0;
    const auto timer = loop.MakeTimer([&] { throw Failure(++events, "Disk full: x", "Test"); });
    ::testing::internal::CaptureStderr();
    Enable(*timer, 1);
    EXPECT_TRUE(RunUntil([&] { return events >= 3; }));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "veltrix: Test: Disk full: x\n");
}

TEST(QtClock, CountsFromTheDayZeroInLocalTime) {
    ::setenv("TZ", "Europe/Amsterdam", 1);
    ::tzset();
    EXPECT_NEAR(LocalDateTime(0), UnixEpoch + 1.0 / 24, 1e-9);
    EXPECT_NEAR(LocalDateTime(1719835200123), DateTimeOf({2024, 7, 1, 14, 0, 0, 0}) + 0.123 / 86400, 1e-8);
}

struct DeskProcessesTest : ::testing::Test {
    ScratchFolder directory, own;
    DeskProcesses processes{directory.Text(), own.Text()};

    /// Puts a script there that writes each argument in brackets where it runs, then gives the note its name.
    static void Install(const ScratchFolder& folder, const std::string& name, mode_t mode = 0755) {
        folder.Put(name,
                   "#!/bin/sh\n"
                   "{ for a in \"$@\"; do printf '[%s]' \"$a\"; done; } > note.part; mv note.part note\n");
        ::chmod((folder / name).c_str(), mode);
    }
    /// Starts a program and returns what it noted in its working directory, or the failure's number.
    std::string NoteOf(const std::string& program, const std::vector<std::string>& arguments = {}) {
        fs::remove(directory / "note");
        const auto start = [&] { processes.Start(program, arguments, WindowStyle::Hidden); };
        if (const int number = NumberRaisedBy(start)) return std::to_string(number);
        EXPECT_TRUE(WaitFor([this] { return fs::exists(directory / "note"); })) << program;
        return directory.Content("note");
    }
};

TEST_F(DeskProcessesTest, ArgumentsArriveAsTheyAre) {
    Install(directory, "Alarm.exe");
    EXPECT_EQ(NoteOf("alarm.EXE", {"a b", "", "$(touch x)", "\"q\"", "'", "*", "-n", "\xC3\xBC", "a\\b"}),
              "[a b][][$(touch x)][\"q\"]['][*][-n][\xC3\xBC][a\\b]");
    Install(directory, "sub/Publish.cmd", 0644);
    EXPECT_EQ(NoteOf(".\\SUB\\publish.cmd", {"x y"}), "[x y]") << "a script is run by the shell";
}

TEST_F(DeskProcessesTest, TheSearchGoesFromTheWorkingDirectoryToThePath) {
    Install(own, "SndInput");
    directory.Put("SndInput.exe", "MZ, a program for another system");
    Install(directory, "sh");
    EXPECT_EQ(NoteOf("SndInput.exe", {"own"}), "[own]") << "a file that cannot be run is passed over";
    EXPECT_EQ(NoteOf("sh.exe", {"here"}), "[here]");
    EXPECT_EQ(NoteOf("bash.exe", {"-c", "printf x > note.part; mv note.part note"}), "x");
    for (const char* const missing : {"none.exe", "", ".", "./env"})
        EXPECT_EQ(NoteOf(missing), std::to_string(errors::FileNotFound)) << missing;
    Install(directory, "text.exe", 0644);
    EXPECT_EQ(NoteOf("text.exe"), std::to_string(errors::PermissionDenied));
}

TEST_F(DeskProcessesTest, TheDesktopStandsInForTheLauncherAndTheEditor) {
    const std::string path = std::getenv("PATH");
    fs::create_directory(directory / "tools");
    fs::create_symlink("/bin/mv", directory / "tools/mv");  // and nothing else that the computer has
    ::setenv("PATH", (directory.Text() + "/tools").c_str(), 1);
    ::setenv("VISUAL", "missing", 1);
    EXPECT_EQ(NoteOf("notepad", {"list"}), std::to_string(errors::FileNotFound));
    Install(directory, "tools/xdg-open");
    for (const char* const name : {"explorer", "Explorer.EXE", "notepad"})
        EXPECT_EQ(NoteOf(name, {"x y"}), "[x y]");
    Install(directory, "tools/editor");
    directory.Put("tools/xdg-open", "");
    ::setenv("VISUAL", "editor", 1);
    EXPECT_EQ(NoteOf("notepad.exe", {"list"}), "[list]");
    ::setenv("VISUAL", "editor --wait \"in front\"", 1);
    EXPECT_EQ(NoteOf("notepad", {"a b"}), "[--wait][in front][a b]");
    Install(own, "explorer");
    EXPECT_EQ(NoteOf("explorer.exe", {"own"}), "[own]") << "a real program of that name comes first";
    ::setenv("PATH", path.c_str(), 1);
}

struct ControlSocket : WithEvents {
    ScratchFolder folder;
    std::string path = folder.Text() + "/control";
    Texts requests;
    std::unique_ptr<ControlServer> server =
        std::make_unique<ControlServer>([this](std::string_view request) -> Texts {
            requests.emplace_back(request);
            if (request == "fail") throw Failure(errors::DiskFull, "Disk full: x", "Test");
            if (request == "big") return {std::string(100000, 'x'), "ok"};
            if (request == "quit") server.reset();
            if (request == "lines") return {"= a\nb", "= c\r", "ok"};
            return {"= " + std::string(request), "ok"};
        });

    ControlSocket() { EXPECT_EQ(server->Listen(path), ""); }

    /// A client that does as it pleases: it never reads what it is sent.
    std::unique_ptr<QLocalSocket> Client() const {
        auto client = std::make_unique<QLocalSocket>();
        client->setReadBufferSize(1);
        client->connectToServer(QString::fromStdString(path));
        return client;
    }
    /// True when the server lets go of a client that goes on sending `text`.
    static bool IsLetGo(QLocalSocket& client, const std::string& text) {
        return RunUntil([&] {
            client.write(text.data(), static_cast<qint64>(text.size()));
            return client.state() == QLocalSocket::UnconnectedState;
        });
    }

    /// Asks from another thread while the events of the station run.
    ControlAnswer Ask(const std::string& request) const {
        auto asked = std::async(std::launch::async, [&] { return AskStation(path, request, 60s); });
        EXPECT_TRUE(RunUntil([&] { return asked.wait_for(0s) == std::future_status::ready; }));
        return asked.get();
    }
};

TEST_F(ControlSocket, AnswersAreWholeLinesAndAClientThatHasGoneIsDoneAsItAsked) {
    EXPECT_EQ(Ask("lines").lines, (Texts{"= a b", "= c ", "ok"})) << "a line end would break the answer";
    EXPECT_EQ(Ask("fail").lines, Texts{"error Disk full: x"});
    EXPECT_EQ(Ask("two\nlines").lines, (Texts{"= two lines", "ok"}));
    auto hasty = Client();
    hasty->write("a\nb\nc\n");
    hasty->flush();
    hasty.reset();
    EXPECT_TRUE(RunUntil([&] { return requests.back() == "c"; }));
}

TEST_F(ControlSocket, OnlyItsUserCanReachItAndItGoesAtTheEnd) {
    EXPECT_EQ(fs::status(path).permissions(), static_cast<fs::perms>(0600));
    ControlServer second([](std::string_view) { return Texts{"ok"}; });
    EXPECT_EQ(second.Listen(path),
              "cannot open the control socket " + path + ": another program serves there");
    folder.Put("file", "mine");
    EXPECT_NE(second.Listen((folder / "file").string()), "");
    EXPECT_EQ(folder.Content("file"), "mine");
    fs::create_hard_link(path, path + "2");
    EXPECT_NE(Ask("quit").failure, "") << "a request may end the server";
    EXPECT_FALSE(fs::exists(path));
    fs::rename(path + "2", path);
    EXPECT_EQ(second.Listen(path), "") << "a socket that nobody serves is taken over";
}

TEST_F(ControlSocket, AClientThatNeverReadsIsDroppedAndTheOthersAreServed) {
    const auto other = Client();
    EXPECT_TRUE(IsLetGo(*Client(), "big\n"));
    other->write("get txtAge\n");
    EXPECT_TRUE(RunUntil([&] { return requests.back() == "get txtAge"; }));
    EXPECT_LT(requests.size(), 20u) << "more was answered than a megabyte and the system's own buffers";
    EXPECT_EQ(Ask("big").lines.front().size(), 100000u);
}

TEST_F(ControlSocket, GarbageAndATooLongLineCostOnlyTheirSender) {
    const std::string longest(65536, 'y');
    EXPECT_TRUE(IsLetGo(*Client(), "x" + longest));
    const auto odd = Client();
    odd->write("\0\xff\x1b\r\n\nhalf", 10);
    EXPECT_EQ(Ask("x").lines.back(), "ok");
    EXPECT_TRUE(RunUntil([&] { return std::ranges::count(requests, "\0\xff\x1b"s) == 1; }));
    odd->write((" a line\n" + longest + "\n").c_str());
    EXPECT_TRUE(RunUntil([&] { return requests.back() == longest; }));
    EXPECT_EQ(requests.rbegin()[1], "half a line");
}

}  // namespace
}  // namespace veltrix
