// The station program: reads the command line, chooses the platform, builds the form and runs it.

#include <unistd.h>
#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string>

#include "command_line.h"
#include "detection/strike_log.h"
#include "platform/qt/console_message_box.h"
#include "platform/qt/control_server.h"
#include "platform/qt/desk_files.h"
#include "platform/qt/desk_processes.h"
#include "platform/qt/ini_settings_store.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/signal_watch.h"
#include "station/control_requests.h"
#include "station/frm_veltrix.h"

namespace {

using namespace veltrix;

constexpr int ExitUsage = 64;         // a wrong command line
constexpr int ExitCannotCreate = 73;  // a folder or socket that cannot be made
constexpr std::string_view Ports = "4711 (stations), 4712 (link)";

void Print(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

void Warn(const std::string& line) {
    std::fprintf(stderr, "veltrix: %s\n", line.c_str());
}

std::string PerUserStore() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
           "/veltrix/veltrix.ini";
}

/// The recorder that the command line names. Throws WrongCommandLine.
RecorderChoice RecorderOf(const std::string& text) {
    RecorderChoice choice;
    if (text == "none") {
        choice.command.reset();
        return choice;
    }
    choice.command = std::vector<std::string>{text};
    // A program that stands under the whole text may have blanks in its name; else they part its arguments.
    std::error_code tooLong;
    if (std::filesystem::exists(text, tooLong)) {
        choice.command->front() = std::filesystem::absolute(text).string();
        return choice;
    }
    choice.command->clear();
    for (const QString& word : QProcess::splitCommand(QString::fromStdString(text)))
        choice.command->push_back(word.toStdString());
    if (choice.command->empty()) throw WrongCommandLine{"--recorder needs a program, or none"};
    return choice;
}

int RunStation(const CommandLine& line, const RecorderChoice& recorder) {
    std::error_code error;
    const std::string directory =
        line.directory.empty() ? std::filesystem::current_path(error).string() : line.directory;
    if (!error) std::filesystem::create_directories(directory, error);
    std::error_code missing;
    if (!std::filesystem::is_directory(directory, missing)) {
        Warn("cannot make the folder " + directory + (error ? ": " + error.message() : ""));
        return ExitCannotCreate;
    }
    if (::access(directory.c_str(), W_OK) != 0)
        Warn("nothing can be written to the folder " + directory + ": no strike will be logged");
    IniSettingsStore store(line.settings.empty() ? PerUserStore() : line.settings);
    if (!store.WhyUnusable().empty()) {
        Warn(store.WhyUnusable());
        return ExitUsage;
    }
    QtClock clock;
    QtEventLoop loop;
    DeskFiles files(directory);
    DeskProcesses processes(files.WorkingDirectory(), QCoreApplication::applicationDirPath().toStdString());
    ConsoleMessageBox messageBox;
    FrmVeltrix form({clock, loop, files, processes, store, messageBox}, {VELTRIX_VERSION, recorder, Warn});
    if (line.print == CommandLine::Print::Detections)
        form.Consumers().onDetection = [](const Detection& detection) { Print(StrikeLogLine(detection)); };

    ControlRequests requests(form.Controls(), [&loop] { loop.Quit(); });
    ControlServer server([&requests](std::string_view request) { return requests.Answer(request); });
    if (!line.control.empty()) {
        if (const std::string why = server.Listen(line.control); !why.empty()) {
            Warn(why);
            return ExitCannotCreate;
        }
    }
    const SignalWatch signals([&loop] { loop.Quit(); });
    form.Form_Initialize();
    form.Form_Load();
    Print("Veltrix " + form.Version() + ", folder " + files.WorkingDirectory() + ", address " + line.address +
          ", ports " + std::string(Ports));
    loop.Run();
    form.Form_Unload();
    return 0;
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
    const QCoreApplication application(argc, argv);
    return RunStation(line, recorder);
}
