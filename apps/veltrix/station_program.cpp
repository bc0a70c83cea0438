#include "station_program.h"

#include <unistd.h>
#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <utility>

#include "detection/strike_log.h"
#include "platform/qt/console_message_box.h"
#include "platform/qt/control_server.h"
#include "platform/qt/desk_computer.h"
#include "platform/qt/desk_files.h"
#include "platform/qt/desk_processes.h"
#include "platform/qt/ini_settings_store.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_glyphs.h"
#include "platform/qt/qt_pictures.h"
#include "platform/qt/qt_sockets.h"
#include "platform/qt/resources.h"
#include "platform/qt/signal_watch.h"
#include "station/control_requests.h"
#include "station/frm_veltrix.h"
#include "window/main_window.h"
#include "window/window_message_box.h"

namespace veltrix {

namespace {

constexpr std::string_view Ports = "4711 (stations), 4712 (link)";

void Print(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

std::string PerUserStore() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
           "/veltrix/veltrix.ini";
}

std::string ReleaseNotes() {
    resources::Open();
    QFile notes(QString::fromLatin1(resources::Changes));
    return notes.open(QIODevice::ReadOnly) ? notes.readAll().toStdString() : std::string();
}

/// The station's working directory, made if it is missing; empty when it cannot be, and the user has been
/// told.
std::string FolderOf(const CommandLine& line, ConsoleLines& console) {
    std::error_code error;
    std::string directory =
        line.directory.empty() ? std::filesystem::current_path(error).string() : line.directory;
    if (!error) std::filesystem::create_directories(directory, error);
    std::error_code missing;
    if (!std::filesystem::is_directory(directory, missing)) {
        Warn(console, "cannot make the folder " + directory + (error ? ": " + error.message() : ""));
        return "";
    }
    if (::access(directory.c_str(), W_OK) != 0)
        Warn(console, "nothing can be written to the folder " + directory + ": no strike will be logged");
    return directory;
}

std::unique_ptr<MessageBox> MessageBoxFor(const CommandLine& line, QtEventLoop& loop, ConsoleLines& console) {
    if (line.headless) return std::make_unique<ConsoleMessageBox>(console);
    return std::make_unique<WindowMessageBox>(loop);
}

/// Makes and shows the window, which remembers its place beside the settings.
std::unique_ptr<MainWindow> Window(FrmVeltrix& form, QtEventLoop& loop,
                                   const std::filesystem::path& settings) {
    auto window = std::make_unique<MainWindow>(form.Controls(), loop, settings.parent_path() / "window.ini",
                                               [&loop] { loop.Quit(); });
    window->show();
    return window;
}

}  // namespace

void Warn(ConsoleLines& console, const std::string& line) {
    console.Say(ConsoleLines::Level::Warning, "veltrix: " + line);
}

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

int RunStation(const CommandLine& line, const RecorderChoice& recorder, ConsoleLines& console) {
    const std::string directory = FolderOf(line, console);
    if (directory.empty()) return ExitCannotCreate;
    const std::string settings = line.settings.empty() ? PerUserStore() : line.settings;
    IniSettingsStore store(settings);
    if (!store.WhyUnusable().empty()) {
        Warn(console, store.WhyUnusable());
        return ExitUsage;
    }
    QtClock clock;
    QtEventLoop loop;
    QtSockets sockets(loop, line.address);
    DeskFiles files(directory);
    DeskProcesses processes(files.WorkingDirectory(), QCoreApplication::applicationDirPath().toStdString());
    QtPictures pictures(files.WorkingDirectory());
    QtGlyphs glyphs;
    QtClipboard clipboard;
    DeskComputer computer(files.WorkingDirectory());
    const std::unique_ptr<MessageBox> messageBox = MessageBoxFor(line, loop, console);
    FrmVeltrix form(
        {clock, loop, files, processes, store, *messageBox, pictures, glyphs, sockets, clipboard, computer},
        {VELTRIX_VERSION, recorder, [&console](const std::string& text) { Warn(console, text); },
         ReleaseNotes()});
    if (line.print == CommandLine::Print::Detections)
        form.Consumers().onDetection = [](const Detection& detection) { Print(StrikeLogLine(detection)); };

    if (line.print != CommandLine::Print::Nothing)
        form.OnLocated() = [](const LocatedStrike& strike) { Print(FixLine(strike)); };

    ControlRequests requests(form.Controls(), files, [&loop] { loop.Quit(); });
    ControlServer server([&requests](std::string_view request) { return requests.Answer(request); });
    if (!line.control.empty()) {
        if (const std::string why = server.Listen(line.control); !why.empty()) {
            Warn(console, why);
            return ExitCannotCreate;
        }
    }
    const SignalWatch signals([&loop] { loop.Quit(); });
    form.Form_Initialize();
    const std::unique_ptr<MainWindow> window = line.headless ? nullptr : Window(form, loop, settings);
    form.Form_Load();
    Print("Veltrix " + form.Version() + ", folder " + files.WorkingDirectory() + ", address " + line.address +
          ", ports " + std::string(Ports));
    loop.Run();
    form.Form_Unload();
    return 0;
}

}  // namespace veltrix
