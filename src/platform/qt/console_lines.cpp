#include "platform/qt/console_lines.h"

#include <sys/stat.h>

#include <algorithm>

namespace veltrix {

namespace {

std::string OneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        const bool isControl = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        if (!isControl) line += c;
    }
    return line;
}

/// Milliseconds between two readings of the clock's counter, right across its wrap.
std::uint32_t Since(std::int32_t earlier, std::int32_t now) {
    return static_cast<std::uint32_t>(now) - static_cast<std::uint32_t>(earlier);
}

}  // namespace

bool LeadsToJournal(int descriptor, const char* stream) {
    struct stat status {};
    if (stream == nullptr || ::fstat(descriptor, &status) != 0) return false;
    return std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino) == stream;
}

ConsoleLines::~ConsoleLines() {
    for (const Line& line : lines_) TellRepeats(line);
}

void ConsoleLines::Say(Level level, std::string_view text) {
    const std::int32_t now = clock_.timeGetTime();
    std::erase_if(lines_, [this, now](const Line& line) {
        const bool isOver = Since(line.since, now) >= static_cast<std::uint32_t>(QuietTime);
        if (isOver) TellRepeats(line);
        return isOver;
    });
    const std::string line = OneLine(text);
    const auto same = std::ranges::find(lines_, line, &Line::text);
    if (same != lines_.end()) {
        ++same->repeats;
        return;
    }
    if (lines_.size() == MostLines) {
        TellRepeats(lines_.front());
        lines_.erase(lines_.begin());
    }
    Write(level, line);
    lines_.push_back({level, line, now});
}

void ConsoleLines::Write(Level level, const std::string& text) {
    if (isJournal_) out_ << '<' << static_cast<int>(level) << '>';
    out_ << text << '\n' << std::flush;
}

void ConsoleLines::TellRepeats(const Line& line) {
    if (line.repeats == 0) return;
    Write(line.level, line.text + " (repeated " +
                          (line.repeats == 1 ? "once" : std::to_string(line.repeats) + " times") + ')');
}

}  // namespace veltrix
