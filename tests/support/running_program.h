#pragma once
// One of our programs as a process of its own.

#include <QProcess>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace veltrix {

/// Waits until `condition` holds, looking every few milliseconds; false after a limit that only a fault
/// reaches.
bool WaitFor(const std::function<bool()>& condition, std::chrono::seconds limit = std::chrono::seconds(90));

/// A program of ours, started from the folder of programs; killed at the end if it still runs.
class RunningProgram {
  public:
    /// `folder`: where it runs; empty: here. `environment`: variables besides ours, as "NAME=value".
    RunningProgram(const std::string& name, const std::vector<std::string>& arguments,
                   const std::string& folder = {}, const std::vector<std::string>& environment = {});
    ~RunningProgram() { Kill(); }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Waits until its standard output holds `text`.
    bool HasPrinted(const std::string& text);
    /// Asks it to end by a terminate signal and returns its exit code; -1 when it does not end.
    int Terminate() {
        process_.terminate();
        return Wait();
    }
    /// Waits for its end and returns its exit code.
    int Wait();
    /// True once it has ended.
    bool HasEnded() { return process_.state() == QProcess::NotRunning || process_.waitForFinished(1); }
    /// Kills it, without any chance to tidy up.
    void Kill();

    const std::string& Output();
    const std::string& Errors();

  private:
    void Collect();

    QProcess process_;
    std::string output_;
    std::string errors_;
};

}  // namespace veltrix
