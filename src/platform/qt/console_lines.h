#pragma once
// What a station says on standard error, be that a terminal, a file or the system's journal.

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"

namespace veltrix {

/// Whether what is written to `descriptor` goes to the journal of systemd. `stream` is the environment
/// variable JOURNAL_STREAM, null where it is not set: device and inode of the stream that the journal reads,
/// which is another one when the output has been redirected since.
bool LeadsToJournal(int descriptor, const char* stream);

/// Writes lines so that a fault that lasts for months does not fill a disk: a line that has stood there
/// within the last `QuietTime` is counted, and told with its count when that time is over and anything is
/// said, or at the end.
class ConsoleLines {
  public:
    /// Priorities of syslog, by which the journal sorts.
    enum class Level { Error = 3, Warning = 4 };

    static constexpr std::int32_t QuietTime = 600000;  ///< milliseconds
    /// Different lines that are remembered; past that the oldest is told with its count and forgotten.
    static constexpr std::size_t MostLines = 16;

    /// With `isJournal` each line begins with its priority, as in "<4>". REQUIRES that `clock` and `out`
    /// outlive this.
    ConsoleLines(Clock& clock, std::ostream& out, bool isJournal)
        : clock_(clock), out_(out), isJournal_(isJournal) {}
    /// Tells what has been counted and not told.
    ~ConsoleLines();
    ConsoleLines(const ConsoleLines&) = delete;
    ConsoleLines& operator=(const ConsoleLines&) = delete;

    /// Writes a line at once, or counts it. Characters that would steer a terminal or end the line are left
    /// out. A line that cannot be written is lost.
    void Say(Level level, std::string_view text);

  private:
    struct Line {
        Level level;
        std::string text;
        std::int32_t since;  // the clock's counter when it was written
        long repeats = 0;    // since then
    };

    void Write(Level level, const std::string& text);
    void TellRepeats(const Line& line);

    Clock& clock_;
    std::ostream& out_;
    bool isJournal_;
    std::vector<Line> lines_;  // the oldest first
};

}  // namespace veltrix
