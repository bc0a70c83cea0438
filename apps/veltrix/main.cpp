// The station program: reads the command line and runs a station.

#include <QGuiApplication>

#include <csignal>
#include <cstdio>
#include <string>

#include "command_line.h"
#include "station_program.h"

namespace {

using namespace veltrix;

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
    QCoreApplication::setApplicationName(QStringLiteral("veltrix"));
    return RunHeadless(argv[0], line, recorder);
}
