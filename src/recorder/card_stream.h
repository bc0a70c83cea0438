#pragma once
// A sound card that is open.

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "recorder/resampler.h"
#include "recorder/sound_cards.h"

namespace veltrix {

/// Frames on their way from the sound library's thread to ours: one writes, one reads, none waits.
class CardRing {
  public:
    explicit CardRing(std::size_t frames) : ring_(2 * frames) {}

    /// Called by the writer; returns the frames that fitted, the rest is dropped.
    std::size_t Write(const std::int16_t* samples, std::size_t frames);
    /// Called by the reader; returns the frames copied.
    std::size_t Read(std::span<std::int16_t> samples);

  private:
    std::vector<std::int16_t> ring_;
    std::atomic<std::size_t> written_ = 0;  // samples since the start
    std::atomic<std::size_t> read_ = 0;
};

/// The sound system and a card of it that records, from its opening to its end. Both may take long, or for
/// ever, when the sound system does not answer; the other calls never do.
class CardStream {
  public:
    /// Opens the card of that name, see SoundSystem::Find(), at `rate`, or at the best rate that it offers
    /// where that is 0. Raises DeviceIo with one line for the user.
    CardStream(const std::string& name, int rate);
    ~CardStream();
    CardStream(const CardStream&) = delete;
    CardStream& operator=(const CardStream&) = delete;

    /// The card's own name.
    const std::string& Name() const { return name_; }
    /// Frames a second that it delivers.
    int Rate() const { return rate_; }

    /// False when the card has gone.
    bool IsRunning() const;
    /// Copies the frames that have come, at 22050 Hz; returns their number.
    std::size_t Read(std::span<std::int16_t> samples);
    /// True when frames were lost since the last call.
    bool HasOverrun() { return hasOverrun_.exchange(false); }
    /// Frames lost for want of room, counted at 22050 Hz; what the sound system loses is not counted.
    std::uint64_t FramesLost() const;
    /// Frames at full scale, where they were resampled.
    std::uint64_t FramesClipped() const;

  private:
    struct PortAudioStream;
    struct Taker;

    void Open(const SoundCard& card, const std::vector<int>& rates);
    void TakeFrames(const std::int16_t* samples, std::size_t frames, bool isOverflow);

    SoundSystem system_;
    std::string name_;
    int rate_ = 0;
    std::unique_ptr<CardRing> ring_;
    std::unique_ptr<Resampler> resampler_;
    std::vector<std::int16_t> piece_;  // at the card's rate
    std::atomic<bool> hasOverrun_ = false;
    std::atomic<std::uint64_t> dropped_ = 0;  // at the card's rate
    std::unique_ptr<PortAudioStream> stream_;
};

}  // namespace veltrix
