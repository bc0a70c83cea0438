#include "recorder/block_writer.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "common/failure.h"

namespace veltrix {

namespace {

constexpr std::size_t BytesPerFrame = 4;
/// Losses of a station that never catches up are told this often.
constexpr auto LossInterval = std::chrono::minutes(1);

}  // namespace

BlockWriter::BlockWriter(BlockFiles& files, const BlockWriterSettings& settings, Say say)
    : files_(files),
      settings_(settings),
      say_(std::move(say)),
      queue_(std::max(settings.queueFrames, 4 * (settings.maxBytes / BytesPerFrame))) {
    settings_.leastFrames =
        std::clamp<std::size_t>(settings_.leastFrames, 1, settings_.maxBytes / BytesPerFrame);
}

void BlockWriter::Take(std::span<const std::int16_t> samples) {
    const std::size_t lost = queue_.Push(samples);
    lost_ += lost;
    total_.framesLost += lost;
}

bool BlockWriter::IsHungry() const {
    return queue_.Size() < 2 * (settings_.maxBytes / BytesPerFrame);
}

void BlockWriter::Step(Moment now, bool isLast) {
    if (retryAt_ && now < *retryAt_) return;
    retryAt_.reset();
    if (!lastPublished_) lastPublished_ = now;
    const bool stood = std::exchange(stands_, files_.BlockStands());
    if (lost_ > 0 && !lossesSince_) lossesSince_ = now;
    if (stands_) {
        if (!untakenSince_) untakenSince_ = now;
        return;
    }
    if (stood) {
        if (IsTimeToTell(now)) TellLosses();
        untakenSince_.reset();
    }
    const bool isEnough = queue_.Size() >= settings_.leastFrames || (isLast && queue_.Size() > 0);
    const bool isProbe = !isLast && now - *lastPublished_ >= settings_.probeInterval;
    if (!isEnough && !isProbe) return;
    try {
        if (!WriteBlock(now, isLast)) return;
        untakenSince_ = now;
        if (!trouble_.empty()) say_("blocks go out again");
        trouble_.clear();
    } catch (const Failure& failure) {
        retryAt_ = now + settings_.retryInterval;
        // Only a missing folder says that the station may be gone.
        if (failure.Number() != errors::PathNotFound)
            untakenSince_.reset();
        else if (!untakenSince_)
            untakenSince_ = now;
        TellTrouble(failure.Description());
    }
}

/// True when a block went out.
bool BlockWriter::WriteBlock(Moment now, bool isLast) {
    std::size_t frames = std::min(queue_.Size(), settings_.maxBytes / BytesPerFrame);
    if (!isLast && frames < settings_.leastFrames) frames = 0;
    block_.resize(2 * frames);
    queue_.Peek(block_);
    files_.WriteTemporary(std::as_bytes(std::span<const std::int16_t>(block_)));
    // The station clears the file in progress away when it starts; the frames then go with the next try.
    if (files_.Publish() != BlockFiles::Publication::Done) return false;
    queue_.Drop(frames);
    total_.framesWritten += frames;
    ++total_.blocksWritten;
    stands_ = true;
    lastPublished_ = now;
    return true;
}

bool BlockWriter::IsAbandoned(Moment now) const {
    return untakenSince_ && now - *untakenSince_ >= settings_.untakenLimit;
}

void BlockWriter::Finish() {
    files_.RemoveTemporary();
    TellLosses();
}

bool BlockWriter::IsTimeToTell(Moment now) const {
    const bool hasCaughtUp = queue_.Size() <= settings_.maxBytes / BytesPerFrame;
    return hasCaughtUp || (lossesSince_ && now - *lossesSince_ >= LossInterval);
}

void BlockWriter::TellLosses() {
    if (lost_ == 0) return;
    char text[128];
    std::snprintf(text, sizeof text, "the station was late: %zu frames (%.2f s) were lost", lost_,
                  static_cast<double>(lost_) / RecorderSampleRate);
    lost_ = 0;
    lossesSince_.reset();
    say_(text);
}

void BlockWriter::TellTrouble(const std::string& what) {
    if (what == trouble_) return;
    trouble_ = what;
    say_(what + "; trying again");
}

}  // namespace veltrix
