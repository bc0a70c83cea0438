// The station program: reads the command line and chooses between a window and none.

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QLibraryInfo>

#include <csignal>
#include <cstdio>
#include <string>

#include "command_line.h"
#include "platform/qt/resources.h"
#include "station_program.h"

namespace {

using namespace veltrix;

/// Whether a window can be opened; Qt ends the program where it cannot.
bool HasDisplay() {
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY"))
        return true;
    // Qt's part for Wayland is a package of its own.
    const QDir platforms(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
           !platforms.entryList({QStringLiteral("*wayland*")}).isEmpty();
}

int RunHeadless(char* program, const CommandLine& line, const RecorderChoice& recorder) {
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
    return RunStation(line, recorder);
}

int RunWithWindow(char* program, const CommandLine& line, const RecorderChoice& recorder) {
    char* arguments[] = {program, nullptr};
    int count = 1;
    const QApplication application(count, arguments);
    QGuiApplication::setQuitOnLastWindowClosed(false);  // the station ends itself, in its order
    resources::Open();
    QGuiApplication::setWindowIcon(QIcon(QString::fromLatin1(resources::Icon)));
    return RunStation(line, recorder);
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    CommandLine line;
    RecorderChoice recorder;
    try {
        line = ReadCommandLine({argv + 1, argv + argc});
        recorder = RecorderOf(line.recorder);
    } catch (const WrongCommandLine& wrong) {
        Warn(wrong.text);
        return ExitUsage;
    }
    if (line.help || line.version) {
        std::fputs(line.help ? HelpText().c_str() : "veltrix " VELTRIX_VERSION "\n", stdout);
        return 0;
    }
    if (!line.headless && !HasDisplay()) {
        Warn("there is no display, so the station runs without a window");
        line.headless = true;
    }
    QCoreApplication::setApplicationName(QStringLiteral("veltrix"));
    return line.headless ? RunHeadless(argv[0], line, recorder) : RunWithWindow(argv[0], line, recorder);
}
