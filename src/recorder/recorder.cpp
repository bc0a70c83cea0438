#include "recorder/recorder.h"

#include <algorithm>
#include <cmath>
#include <thread>

namespace veltrix {

namespace {

constexpr std::size_t PieceFrames = 4096;
/// A station looks for a block every 100 ms, so it is not kept waiting.
constexpr auto RoundInterval = std::chrono::milliseconds(10);
/// Pieces moved in one round, so that a long backlog does not hold up the blocks.
constexpr int PiecesPerRound = 16;

}  // namespace

Recorder::Recorder(SampleSource& source, BlockWriter& writer, double gain)
    : source_(source), writer_(writer), gain_(gain), samples_(2 * PieceFrames) {}

std::string Recorder::Run(const std::function<bool()>& isStopped) {
    std::string why;
    while (why.empty()) {
        const Moment now = std::chrono::steady_clock::now();
        MoveSamples(now);
        writer_.Step(now, source_.HasEnded());
        if (isStopped())
            why = "asked to end";
        else if (source_.HasEnded() && writer_.IsDone())
            why = "all samples are taken";
        else if (writer_.IsAbandoned(now))
            why = "no station takes the blocks; ending";
        else
            std::this_thread::sleep_for(RoundInterval);
    }
    writer_.Finish();
    return why;
}

void Recorder::MoveSamples(Moment now) {
    for (int piece = 0; piece < PiecesPerRound; ++piece) {
        if (source_.Waits() && !writer_.IsHungry()) return;
        const std::size_t frames = source_.Read(samples_, now);
        const std::span<std::int16_t> read(samples_.data(), 2 * frames);
        if (gain_ != 1)
            for (std::int16_t& sample : read)
                sample = static_cast<std::int16_t>(std::lrint(std::clamp(gain_ * sample, -32768.0, 32767.0)));
        writer_.Take(read);
        if (frames < PieceFrames) return;
    }
}

}  // namespace veltrix
