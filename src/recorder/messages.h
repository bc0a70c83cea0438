#pragma once
// What the recorder tells the user.

#include <filesystem>
#include <string>

namespace veltrix {

/// Writes each line to what was standard error at the start and, with the local date-time, to a log of
/// bounded size. The recorder is often started without a terminal, and then the log is all there is. Lines
/// that cannot be written are dropped.
class Messages {
  public:
    /// `log`: the log file; none where it is empty. When it grows beyond 64 KiB it is renamed, ".old" before
    /// the extension, and begun anew.
    explicit Messages(std::filesystem::path log);
    ~Messages();
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    /// Writes a line, without a line end.
    void Say(const std::string& line) const;

  private:
    void Append(const std::string& line) const;

    int errors_;
    std::filesystem::path log_;
    std::filesystem::path oldLog_;
};

}  // namespace veltrix
