#include "recorder/recorder.h"

#include <algorithm>
#include <thread>

#include "recorder/sound_frames.h"

namespace veltrix {

namespace {

constexpr std::size_t PieceFrames = 4096;
/// A station looks for a block every 100 ms, so it is not kept waiting.
constexpr auto RoundInterval = std::chrono::milliseconds(10);
/// Pieces moved in one round, so that a long backlog does not hold up the blocks.
constexpr int PiecesPerRound = 16;

}  // namespace

void ClippedCount::Add(const SoundLevel& level, const SourceStatus& status) {
    const std::uint64_t bySource = status.framesClipped - seenBySource_;
    seenBySource_ = status.framesClipped;
    frames_ += std::max(level.clippedFrames, bySource);
}

Recorder::Recorder(SampleSource& source, BlockWriter& writer, StateFile& file, double gain)
    : source_(source), writer_(writer), file_(file), gain_(gain), samples_(2 * PieceFrames) {}

std::string Recorder::Run(const std::function<bool()>& isStopped) {
    std::string why;
    while (why.empty()) {
        const Moment now = std::chrono::steady_clock::now();
        MoveSamples(now);
        writer_.Step(now, source_.HasEnded());
        if (file_.IsDue(now, source_.Status())) file_.Write(now, State());
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
    file_.End(std::chrono::steady_clock::now(), State());
    return why;
}

void Recorder::MoveSamples(Moment now) {
    level_.Advance(now.time_since_epoch() / std::chrono::seconds(1));
    for (int piece = 0; piece < PiecesPerRound; ++piece) {
        if (source_.Waits() && !writer_.IsHungry()) return;
        const std::size_t frames = source_.Read(samples_, now);
        const std::span<std::int16_t> read(samples_.data(), 2 * frames);
        ApplyGain(read, gain_);
        const SoundLevel level = SoundLevel::Of(read);
        level_.Add(level);
        clipped_.Add(level, source_.Status());
        writer_.Take(read);
        if (frames < PieceFrames) return;
    }
}

RecorderState Recorder::State() const {
    const BlockWriter::Counts& written = writer_.Total();
    return {.source = source_.Status(),
            .framesWritten = written.framesWritten,
            .framesLost = written.framesLost + source_.Status().framesLost,
            .blocksWritten = written.blocksWritten,
            .clippedFrames = clipped_.Frames(),
            .level = level_.All()};
}

}  // namespace veltrix
