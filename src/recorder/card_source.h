#pragma once
// Samples from a sound card.

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "recorder/sample_source.h"
#include "recorder/sound_cards.h"

namespace veltrix {

/// Frames on their way from the sound library's thread to ours: one writes, one reads, none waits.
class CardRing {
  public:
    explicit CardRing(std::size_t frames) : ring_(2 * frames) {}

    /// Called by the writer. What does not fit is dropped; returns false then.
    bool Write(const std::int16_t* samples, std::size_t frames);
    /// Called by the reader; returns the frames copied.
    std::size_t Read(std::span<std::int16_t> samples);

  private:
    std::vector<std::int16_t> ring_;
    std::atomic<std::size_t> written_ = 0;  // samples since the start
    std::atomic<std::size_t> read_ = 0;
};

/// Tells once that a card delivers nothing but zeros, and how long that lasts.
class SilenceWatch {
  public:
    /// True when exactly these frames make the silence long enough to be told.
    bool Hears(std::span<const std::int16_t> samples);
    /// True from then on until a sample is not zero.
    bool IsSilent() const;

  private:
    std::size_t silentSamples_ = 0;
};

/// Records a sound card at 22050 Hz in two channels. A card that is missing, or goes away, is looked for
/// again by its name, for ever, every few seconds; each change is told once. One that is muted is as good as
/// missing: exact zeros are held back after some seconds, for no station can measure noise in them. While it
/// lives, standard error leads nowhere, for the sound libraries write to it from threads of their own.
class CardSource final : public SampleSource {
  public:
    /// `device`: the card's name or a part of it; empty: the default card.
    CardSource(std::string device, Say say);
    ~CardSource() override;

    std::size_t Read(std::span<std::int16_t> samples, Moment now) override;

  private:
    class Stream;

    void Open(Moment now);
    void Close(Moment now);
    void Tell(const std::string& state);

    QuietErrors quiet_;
    std::string device_;
    Say say_;
    std::unique_ptr<SoundSystem> system_;
    std::unique_ptr<Stream> stream_;
    std::string cardName_;
    std::string told_;  // the last state that was told
    std::optional<Moment> retryAt_;
    Moment lastFrames_;
    std::optional<Moment> lastOverrun_;
    SilenceWatch silence_;
};

}  // namespace veltrix
