#include "recorder/card_source.h"

#include <portaudio.h>

#include <algorithm>
#include <utility>

#include "common/failure.h"

namespace veltrix {

namespace {

constexpr std::size_t RingFrames = 4 * RecorderSampleRate;
constexpr auto RetryInterval = std::chrono::seconds(3);
constexpr auto StallLimit = std::chrono::seconds(5);  // a card that delivers nothing for so long is gone
constexpr auto OverrunQuiet = std::chrono::minutes(1);
constexpr std::size_t SilentSamples = std::size_t{2} * 5 * RecorderSampleRate;
constexpr double Latency = 0.1;  // s; frames wait for the station longer than that anyway

}  // namespace

bool CardRing::Write(const std::int16_t* samples, std::size_t frames) {
    const std::size_t written = written_.load(std::memory_order_relaxed);
    const std::size_t free = ring_.size() - (written - read_.load(std::memory_order_acquire));
    const std::size_t count = std::min(2 * frames, free / 2 * 2);
    for (std::size_t i = 0; i < count; ++i) ring_[(written + i) % ring_.size()] = samples[i];
    written_.store(written + count, std::memory_order_release);
    return count == 2 * frames;
}

std::size_t CardRing::Read(std::span<std::int16_t> samples) {
    const std::size_t read = read_.load(std::memory_order_relaxed);
    const std::size_t held = written_.load(std::memory_order_acquire) - read;
    const std::size_t count = std::min(samples.size() / 2 * 2, held);
    for (std::size_t i = 0; i < count; ++i) samples[i] = ring_[(read + i) % ring_.size()];
    read_.store(read + count, std::memory_order_release);
    return count / 2;
}

bool SilenceWatch::Hears(std::span<const std::int16_t> samples) {
    const std::size_t before = silentSamples_;
    for (const std::int16_t sample : samples) silentSamples_ = sample == 0 ? silentSamples_ + 1 : 0;
    return before < SilentSamples && silentSamples_ >= SilentSamples;
}

bool SilenceWatch::IsSilent() const {
    return silentSamples_ >= SilentSamples;
}

/// A PortAudio stream that is running.
class CardSource::Stream {
  public:
    explicit Stream(const SoundCard& card) {
        PaStreamParameters input{};
        input.device = card.device;
        input.channelCount = 2;
        input.sampleFormat = paInt16;
        input.suggestedLatency = Latency;
        PaError error =
            Pa_OpenStream(&stream_, &input, nullptr, RecorderSampleRate, paFramesPerBufferUnspecified,
                          paClipOff | paDitherOff, &Stream::TakeFrames, this);
        if (error == paNoError && (error = Pa_StartStream(stream_)) == paNoError) return;
        if (stream_ != nullptr) Pa_CloseStream(stream_);
        throw Failure(errors::DeviceIo, Pa_GetErrorText(error), "recorder");
    }
    ~Stream() {
        Pa_AbortStream(stream_);
        Pa_CloseStream(stream_);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    bool IsRunning() const { return Pa_IsStreamActive(stream_) == 1; }
    std::size_t Read(std::span<std::int16_t> samples) { return ring_.Read(samples); }
    /// True when frames were lost since the last call.
    bool HasOverrun() { return hasOverrun_.exchange(false); }

  private:
    static int TakeFrames(const void* input, void*, unsigned long frames, const PaStreamCallbackTimeInfo*,
                          PaStreamCallbackFlags flags, void* self) {
        auto* const stream = static_cast<Stream*>(self);
        const bool fits =
            input == nullptr || stream->ring_.Write(static_cast<const std::int16_t*>(input), frames);
        if (!fits || (flags & paInputOverflow) != 0) stream->hasOverrun_ = true;
        return paContinue;
    }

    CardRing ring_{RingFrames};
    std::atomic<bool> hasOverrun_ = false;
    PaStream* stream_ = nullptr;
};

CardSource::CardSource(std::string device, Say say) : device_(std::move(device)), say_(std::move(say)) {}

CardSource::~CardSource() = default;

std::size_t CardSource::Read(std::span<std::int16_t> samples, Moment now) {
    if (!stream_) {
        if (retryAt_ && now < *retryAt_) return 0;
        Open(now);
        return 0;
    }
    const std::size_t frames = stream_->Read(samples);
    if (frames > 0) {
        lastFrames_ = now;
        const bool wasSilent = silence_.IsSilent();
        if (silence_.Hears(samples.first(2 * frames)))
            say_(
                "the card delivers only zeros, which are held back: is it muted, or the wrong input chosen?");
        if (wasSilent && !silence_.IsSilent()) say_("the card is heard again");
    }
    if (stream_->HasOverrun()) {
        if (!lastOverrun_ || now - *lastOverrun_ > OverrunQuiet)
            say_("the computer was too busy for the card: samples were lost");
        lastOverrun_ = now;
    }
    if (frames == 0 && (!stream_->IsRunning() || now - lastFrames_ > StallLimit)) Close(now);
    return silence_.IsSilent() ? 0 : frames;
}

void CardSource::Open(Moment now) {
    const std::string wanted = device_.empty() ? "a default sound card" : "sound card '" + device_ + "'";
    try {
        system_ = std::make_unique<SoundSystem>();
        const std::optional<SoundCard> card = system_->Find(device_);
        if (!card) throw Failure(errors::DeviceIo, wanted + " is not there", "recorder");
        cardName_ = "sound card '" + card->name + "'";
        if (card->channels < 2)
            throw Failure(errors::DeviceIo, cardName_ + " has one channel; two are needed", "recorder");
        try {
            stream_ = std::make_unique<Stream>(*card);
        } catch (const Failure& failure) {
            throw Failure(errors::DeviceIo, cardName_ + " cannot be opened: " + failure.Description(),
                          "recorder");
        }
        lastFrames_ = now;
        // When it goes away, this very card is waited for, not the next one that the computer prefers; at
        // which place it is plugged in again does not matter.
        if (device_.empty()) device_ = card->name.substr(0, card->name.find(" (hw:"));
        Tell("recording from " + cardName_);
    } catch (const Failure& failure) {
        system_.reset();
        retryAt_ = now + RetryInterval;
        Tell(failure.Description() + "; trying again");
    }
}

void CardSource::Close(Moment now) {
    stream_.reset();
    system_.reset();
    retryAt_ = now + RetryInterval;
    Tell(cardName_ + " has gone; trying again");
}

void CardSource::Tell(const std::string& state) {
    if (state != told_) say_(state);
    told_ = state;
}

}  // namespace veltrix
