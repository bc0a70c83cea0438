#include "platform/qt/desk_processes.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

// The header of glibc 2.36 does not say that these are C functions.
extern "C" {
#include <sys/pidfd.h>
}

#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "common/failure.h"
#include "common/pieces.h"
#include "platform/qt/file_handle.h"
#include "platform/qt/find_name.h"

namespace veltrix {

namespace {

bool EndsIn(std::string_view name, std::string_view ending) {
    return name.size() > ending.size() && SameButCase(name.substr(name.size() - ending.size()), ending);
}

bool IsScript(std::string_view name) {
    return EndsIn(name, ".bat") || EndsIn(name, ".cmd");
}

bool IsFile(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool CanRun(const std::string& path) {
    return ::access(path.c_str(), IsScript(path) ? R_OK : X_OK) == 0;
}

/// The forms in which a program may be installed, the given one first.
std::vector<std::string> FormsOf(std::string_view program) {
    std::vector<std::string> forms{std::string(program)};
    if (EndsIn(program, ".exe")) forms.emplace_back(program.substr(0, program.size() - 4));
    return forms;
}

std::vector<std::string_view> SearchPath() {
    const char* const variable = std::getenv("PATH");
    return PiecesOf(variable ? variable : "/usr/local/bin:/usr/bin:/bin", ":");
}

/// The files that the name of a program may mean, in the order of the search.
std::vector<std::string> PlacesOf(std::string_view program, const std::string& directory,
                                  const std::string& ownFolder) {
    std::vector<std::string> places;
    const std::vector<std::string> forms = FormsOf(program);
    for (const std::string& form : forms) places.push_back(FindName(directory, form));
    if (program.find_first_of("\\/") == std::string_view::npos) {
        for (const std::string& form : forms) places.push_back(FindName(ownFolder, form));
        for (const std::string_view folder : SearchPath())
            for (const std::string& form : forms)
                places.push_back((std::filesystem::path(folder) / form).string());
    }
    std::erase_if(places, [](const std::string& place) { return !IsFile(place); });
    return places;
}

/// The commands of this desktop that do the work of a program that is missing, the best first.
std::vector<std::string> StandInsOf(std::string_view program) {
    const auto isCalled = [program](std::string_view name) {
        return SameButCase(program, name) || SameButCase(program, std::string(name) + ".exe");
    };
    const std::string launcher = "xdg-open";
    if (isCalled("explorer")) return {launcher};
    if (!isCalled("notepad")) return {};
    const char* const editor = std::getenv("VISUAL");
    return {editor ? editor : "", launcher};
}

/// A program that is asked to close when this ends.
class CloseRequest final : public QObject {
  public:
    CloseRequest(FileHandle program, QObject& parent) : QObject(&parent), program_(std::move(program)) {}
    ~CloseRequest() override { ::pidfd_send_signal(program_.Descriptor(), SIGTERM, nullptr, 0); }

  private:
    FileHandle program_;
};

// Arguments pass through the local 8-bit form, as names of files do.
QString Text(const std::string& text) {
    return QString::fromLocal8Bit(text.data(), static_cast<qsizetype>(text.size()));
}
std::string Bytes(const QString& text) {
    return text.toLocal8Bit().toStdString();
}

/// A file that may be the program to start.
struct Candidate {
    std::string path;
    QStringList arguments;  // its own, before those of the caller
};

}  // namespace

long long DeskProcesses::Start(std::string_view program, const std::vector<std::string>& arguments,
                               WindowStyle) {
    std::vector<Candidate> candidates;
    const auto add = [&](std::string_view name, const QStringList& own) {
        if (name.empty()) return;
        for (std::string& place : PlacesOf(name, workingDirectory_, ownFolder_))
            candidates.push_back({std::move(place), own});
    };
    add(program, {});
    if (candidates.empty())
        for (const std::string& standIn : StandInsOf(program))
            if (const QStringList words = QProcess::splitCommand(Text(standIn)); !words.empty())
                add(Bytes(words.front()), words.mid(1));
    const std::string name(program);
    if (candidates.empty()) throw Failure(errors::FileNotFound, "File not found: " + name, "DeskProcesses");

    const auto found = std::ranges::find_if(candidates, CanRun, &Candidate::path);
    const Failure denied(errors::PermissionDenied, "Permission denied: " + name, "DeskProcesses");
    if (found == candidates.end()) throw denied;

    const bool isScript = IsScript(found->path);
    QStringList list = found->arguments;
    if (isScript) list.prepend(Text(found->path));
    for (const std::string& argument : arguments) list.append(Text(argument));
    QProcess process;
    process.setProgram(isScript ? QStringLiteral("/bin/sh") : Text(found->path));
    process.setArguments(list);
    process.setWorkingDirectory(Text(workingDirectory_));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    qint64 number = 0;
    if (!process.startDetached(&number)) throw denied;
    return number;
}

void DeskProcesses::AskToClose(long long process) {
    // A handle stays that of this program, even if its number is given to another one meanwhile.
    const int descriptor = ::pidfd_open(static_cast<pid_t>(process), 0);
    if (descriptor < 0) return;
    auto* const request = new CloseRequest(FileHandle(descriptor), requests_);
    QTimer::singleShot(ReadyAfter, request, [request] { delete request; });
}

}  // namespace veltrix
