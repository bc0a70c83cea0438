#include "recorder/level_run.h"

#include <thread>
#include <utility>

#include "recorder/sound_frames.h"

namespace veltrix {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t PieceFrames = 4096;
constexpr int PiecesPerRound = 64;
constexpr auto RoundInterval = 20ms;
constexpr auto DrawInterval = 100ms;
constexpr auto LineInterval = 1s;

// What terminals understand.
constexpr const char* TwoLinesUp = "\x1B[2A\r";
constexpr const char* ClearLine = "\x1B[K";
constexpr const char* ClearBelow = "\x1B[J";

}  // namespace

LevelRun::LevelRun(double gain, std::size_t width, Write write)
    : gain_(gain), width_(width), write_(std::move(write)), samples_(2 * PieceFrames) {}

void LevelRun::Say(const std::string& line) {
    // The bars come below the line again.
    if (isDrawn_) write_(std::string(TwoLinesUp) + ClearBelow);
    isDrawn_ = false;
    write_(line + "\n");
}

bool LevelRun::Run(SampleSource& source, std::optional<std::chrono::duration<double>> limit,
                   const std::function<bool()>& isStopped) {
    const Moment start = std::chrono::steady_clock::now();
    while (!isStopped() && !source.HasEnded()) {
        const Moment now = std::chrono::steady_clock::now();
        if (limit && now - start >= *limit) break;
        Hear(source, now);
        Show(now);
        if (!source.Waits()) std::this_thread::sleep_for(RoundInterval);
    }
    Say(meter_.Summary());
    return meter_.HasHeardSound();
}

void LevelRun::Hear(SampleSource& source, Moment now) {
    SoundLevel heard;
    for (int piece = 0; piece < PiecesPerRound; ++piece) {
        const std::size_t frames = source.Read(samples_, now);
        const std::span<std::int16_t> read(samples_.data(), 2 * frames);
        ApplyGain(read, gain_);
        heard.Add(SoundLevel::Of(read));
        if (frames < PieceFrames) break;
    }
    const std::uint64_t before = clipped_.Frames();
    clipped_.Add(heard, source.Status());
    meter_.Add(heard, clipped_.Frames() - before, now);
}

void LevelRun::Show(Moment now) {
    if (!shownAt_) shownAt_ = now;
    const bool isTerminal = width_ > LevelMeter::LeastWidth;
    if (now - *shownAt_ < (isTerminal ? std::chrono::milliseconds(DrawInterval) : LineInterval)) return;
    shownAt_ = now;
    if (!isTerminal) {
        write_(meter_.Line() + "\n");
        return;
    }
    std::string text = isDrawn_ ? TwoLinesUp : "";
    for (const std::string& bar : meter_.Bars(width_ - 1)) text += bar + ClearLine + "\n";
    write_(text);
    isDrawn_ = true;
}

}  // namespace veltrix
