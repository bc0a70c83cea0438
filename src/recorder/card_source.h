#pragma once
// Samples from a sound card, come what may.

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>

#include "recorder/card_stream.h"
#include "recorder/sample_source.h"
#include "recorder/sound_cards.h"

namespace veltrix {

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

/// Records a sound card in two channels; one that does not offer 22050 Hz is resampled. A card that is
/// missing, or goes away, or delivers no frames, is looked for again by its name, for ever, every few
/// seconds; each change is told once. One that is muted is as good as missing: exact zeros are held back
/// after some seconds, for no station can measure noise in them. Cards are opened and closed by threads of
/// their own, for a sound system that hangs must not hold up the recorder. While it lives, standard error
/// leads nowhere, for the sound libraries write to it from threads of their own.
class CardSource final : public SampleSource {
  public:
    /// `device`: the card's name or a part of it; empty: the default card. `rate`: frames a second that the
    /// card is to deliver; 0: the best that it offers.
    CardSource(std::string device, int rate, Say say);
    ~CardSource() override;

    std::size_t Read(std::span<std::int16_t> samples, Moment now) override;
    bool Release() override;

  private:
    struct Opening {
        std::unique_ptr<CardStream> stream;
        std::string problem;
    };

    bool IsOpen(Moment now);
    void TakeOpened(Moment now);
    void Close(Moment now);
    std::size_t HearSilence(std::span<const std::int16_t> samples);
    void Watch(Moment now);
    void Tell(const std::string& state);

    QuietErrors quiet_;
    std::string device_;
    int rate_;
    Say say_;
    std::future<Opening> opening_;
    std::future<void> closing_;
    std::unique_ptr<CardStream> stream_;
    std::string cardName_;
    std::string told_;  // the last state that was told
    std::optional<Moment> retryAt_;
    std::optional<Moment> unansweredSince_;
    Moment lastFrames_;
    std::optional<Moment> lastOverrun_;
    std::uint64_t lostBefore_ = 0;  // by earlier streams
    std::uint64_t clippedBefore_ = 0;
    SilenceWatch silence_;
};

}  // namespace veltrix
