// The station program: reads the command line and chooses between a window and none.

#include <unistd.h>

#include <QApplication>
#include <QIcon>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include "command_line.h"
#include "display_probe.h"
#include "platform/qt/console_lines.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/resources.h"
#include "station_program.h"

namespace {

using namespace veltrix;

/// The application object takes over the user's locale; numbers in files and messages keep their point.
void KeepDecimalPoint() {
    std::setlocale(LC_NUMERIC, "C");
}

int RunHeadless(char* program, const CommandLine& line, const RecorderChoice& recorder,
                ConsoleLines& console) {
    // Texts on the displays are drawn all the same, which takes Qt's part for pictures.
    char option[] = "-platform";
    char platform[] = "offscreen";
    char* arguments[] = {program, option, platform, nullptr};
    int count = 3;
    // Without a desktop session it complains of one's folder, which nothing here needs.
    const QtMessageHandler usual =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QGuiApplication application(count, arguments);
    qInstallMessageHandler(usual);
    KeepDecimalPoint();
    return RunStation(line, recorder, console);
}

int RunWithWindow(char* program, const CommandLine& line, const RecorderChoice& recorder,
                  ConsoleLines& console) {
    char* arguments[] = {program, nullptr};
    int count = 1;
    const QApplication application(count, arguments);
    KeepDecimalPoint();
    QGuiApplication::setQuitOnLastWindowClosed(false);  // the station ends itself, in its order
    resources::Open();
    QGuiApplication::setWindowIcon(QIcon(QString::fromLatin1(resources::Icon)));
    return RunStation(line, recorder, console);
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    QtClock clock;
    ConsoleLines console(clock, std::cerr, LeadsToJournal(STDERR_FILENO, std::getenv("JOURNAL_STREAM")));
    CommandLine line;
    RecorderChoice recorder;
    try {
        line = ReadCommandLine({argv + 1, argv + argc});
        recorder = RecorderOf(line.recorder);
    } catch (const WrongCommandLine& wrong) {
        Warn(console, wrong.text);
        return ExitUsage;
    }
    if (line.help || line.version) {
        std::fputs(line.help ? HelpText().c_str() : "veltrix " VELTRIX_VERSION "\n", stdout);
        return 0;
    }
    const DisplayState display = line.headless ? DisplayState::None : ProbeDisplay(argv[0]);
    if (!line.headless && display != DisplayState::Open) {
        Warn(console, std::string(display == DisplayState::None ? "there is no display"
                                                                : "the display cannot be opened") +
                          ", so the station runs without a window");
        line.headless = true;
    }
    QCoreApplication::setApplicationName(QStringLiteral("veltrix"));
    return line.headless ? RunHeadless(argv[0], line, recorder, console)
                         : RunWithWindow(argv[0], line, recorder, console);
}
