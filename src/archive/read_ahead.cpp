#include "archive/read_ahead.h"

#include <algorithm>
#include <utility>

namespace veltrix {

namespace {

constexpr std::size_t PieceSamples = 2 * static_cast<std::size_t>(ReadAhead::PieceFrames);
constexpr std::int64_t MostWaiting = 2;  // pieces besides one for each thread

}  // namespace

ReadAhead::ReadAhead(const std::string& name, unsigned threads) : name_(name) {
    auto first = std::make_unique<Recording>(name);
    frames_ = first->Frames();
    if (threads == 1) {
        plain_ = std::move(first);
        return;
    }
    const std::int64_t pieces = (frames_ + PieceFrames - 1) / PieceFrames;
    inParts_ = first->DecodesInParts();
    const auto decoders = inParts_ ? std::min<std::int64_t>(threads, pieces) : 1;
    mostAhead_ = decoders + MostWaiting;
    for (std::int64_t i = 0; i < decoders; ++i) {
        auto own = i == 0 ? std::move(first) : std::make_unique<Recording>(name);
        threads_.emplace_back([this, recording = std::move(own)] { Decode(*recording); });
    }
}

ReadAhead::~ReadAhead() {
    StopThreads();
}

void ReadAhead::StopThreads() {
    {
        const std::lock_guard lock(mutex_);
        stops_ = true;
    }
    changed_.notify_all();
    threads_.clear();
}

/// A piece from where the recording stands. One that is shorter than others is the last.
ReadAhead::Piece ReadAhead::ReadPiece(Recording& recording) {
    Piece piece;
    piece.samples.resize(PieceSamples);
    std::size_t got = 0;
    try {
        while (got < PieceSamples) {
            const std::size_t more = recording.Read(std::span(piece.samples).subspan(got));
            if (more == 0) break;
            got += more;
        }
    } catch (const BadRecording& bad) {
        piece.failure = bad;
    }
    piece.samples.resize(got);
    return piece;
}

/// The number of the next piece to decode, once there is room for it; nothing when no more are wanted.
std::optional<std::int64_t> ReadAhead::Claim() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return stops_ || nextToDecode_ < nextToTake_ + mostAhead_; });
    if (stops_ || (inParts_ && nextToDecode_ * PieceFrames >= frames_)) return {};
    return nextToDecode_++;
}

/// The work of one thread.
void ReadAhead::Decode(Recording& recording) {
    while (const std::optional<std::int64_t> number = Claim()) {
        Piece piece;
        try {
            if (recording.Position() != *number * PieceFrames) recording.Seek(*number * PieceFrames);
            piece = ReadPiece(recording);
        } catch (const BadRecording& bad) {
            piece.failure = bad;
        }
        const bool isLast = piece.samples.size() < PieceSamples;
        {
            const std::lock_guard lock(mutex_);
            decoded_[*number] = std::move(piece);
        }
        changed_.notify_all();
        if (isLast) return;
    }
}

ReadAhead::Piece ReadAhead::Take() {
    if (plain_) return ReadPiece(*plain_);
    Piece piece;
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return decoded_.contains(nextToTake_); });
        piece = std::move(decoded_.extract(nextToTake_).mapped());
        ++nextToTake_;
    }
    changed_.notify_all();
    const bool isAsTold = !piece.failure && (piece.samples.size() == PieceSamples ||
                                             position_ + std::ssize(piece.samples) / 2 == frames_);
    return !inParts_ || isAsTold ? std::move(piece) : ReadAgain();
}

/// What a thread finds behind a damaged place depends on where it began to read, so from here on the file is
/// read as one thread would have done it from the start.
ReadAhead::Piece ReadAhead::ReadAgain() {
    StopThreads();
    plain_ = std::make_unique<Recording>(name_);
    for (std::int64_t passed = 0; passed < position_; passed += PieceFrames) ReadPiece(*plain_);
    return ReadPiece(*plain_);
}

std::span<const std::int16_t> ReadAhead::Next() {
    if (piece_.failure) throw *std::exchange(piece_.failure, {});
    if (isOver_) return {};
    piece_ = Take();
    position_ += std::ssize(piece_.samples) / 2;
    isOver_ = piece_.samples.size() < PieceSamples || (inParts_ && !plain_ && position_ == frames_);
    if (piece_.samples.empty() && piece_.failure) throw *std::exchange(piece_.failure, {});
    return piece_.samples;
}

}  // namespace veltrix
