#pragma once
// What the program says while it works and when something is wrong.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

namespace veltrix {

/// A bar on a terminal's standard error, drawn anew a few times a second at most; nothing on a pipe or a
/// file.
class Progress {
  public:
    /// `frames` is 0 when the length is not known; then there is no bar.
    void Show(std::int64_t position, std::int64_t frames, long strikes) {
        const auto now = std::chrono::steady_clock::now();
        const bool done = position >= frames;
        if (!terminal_ || frames <= 0 || (!done && now - shown_ < std::chrono::milliseconds(100))) return;
        shown_ = now;
        const double part = std::min(static_cast<double>(position) / static_cast<double>(frames), 1.0);
        std::string bar(static_cast<std::size_t>(part * Width), '#');
        bar.resize(Width, '.');
        std::fflush(stdout);
        std::fprintf(stderr, "\r[%s] %3.0f %%  %ld strikes%s", bar.c_str(), part * 100, strikes,
                     done ? "\n" : "");
    }

  private:
    static constexpr std::size_t Width = 40;
    bool terminal_ = isatty(STDERR_FILENO) == 1;
    std::chrono::steady_clock::time_point shown_;
};

/// One line on standard error, behind what was printed so far.
inline void Say(const std::string& text) {
    std::fflush(stdout);
    std::fprintf(stderr, "veltrix-replay: %s\n", text.c_str());
}

}  // namespace veltrix
