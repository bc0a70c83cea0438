#include "support/running_program.h"

#include <thread>

namespace veltrix {

namespace {

constexpr int LimitMilliseconds = 90000;

}  // namespace

bool WaitFor(const std::function<bool()>& condition, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

RunningProgram::RunningProgram(const std::string& name, const std::vector<std::string>& arguments,
                               const std::string& folder, const std::vector<std::string>& environment) {
    QStringList words;
    for (const std::string& argument : arguments) words << QString::fromStdString(argument);
    QStringList variables = QProcess::systemEnvironment();
    for (const std::string& variable : environment) variables << QString::fromStdString(variable);
    process_.setEnvironment(variables);
    process_.setWorkingDirectory(QString::fromStdString(folder));
    process_.start(QString::fromStdString(VELTRIX_BIN_DIR "/" + name), words);
    process_.waitForStarted(LimitMilliseconds);
}

void RunningProgram::Collect() {
    output_ += process_.readAllStandardOutput().toStdString();
    errors_ += process_.readAllStandardError().toStdString();
}

bool RunningProgram::HasPrinted(const std::string& text) {
    return WaitFor([&] {
        process_.waitForReadyRead(5);
        return Output().find(text) != std::string::npos;
    });
}

int RunningProgram::Wait() {
    const bool ended =
        process_.state() == QProcess::NotRunning || process_.waitForFinished(LimitMilliseconds);
    Collect();
    return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

void RunningProgram::Kill() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished(LimitMilliseconds);
}

const std::string& RunningProgram::Output() {
    Collect();
    return output_;
}

const std::string& RunningProgram::Errors() {
    Collect();
    return errors_;
}

}  // namespace veltrix
