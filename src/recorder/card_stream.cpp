#include "recorder/card_stream.h"

#include <portaudio.h>

#include <algorithm>
#include <optional>

#include "common/failure.h"
#include "common/letter_case.h"
#include "common/one_line.h"
#include "recorder/sound_probe.h"

namespace veltrix {

namespace {

constexpr std::size_t RingSeconds = 4;
constexpr double Latency = 0.1;  // s; frames wait for the station longer than that anyway

[[noreturn]] void Raise(const std::string& line) {
    throw Failure(errors::DeviceIo, line, "recorder");
}

/// Says that a card is not there, or that another program holds it.
[[noreturn]] void RaiseNotFound(const std::string& name) {
    for (const std::string& card : SoundCardsInUse())
        if (name.empty() || LowerCase(card).find(LowerCase(name)) != std::string::npos)
            Raise("sound card '" + card + "' " + InUseText(ProbeSound(card).holder));
    Raise((name.empty() ? "a default sound card" : "sound card '" + name + "'") + " is not there");
}

std::string TextOf(PaError error) {
    const PaHostErrorInfo* const host =
        error == paUnanticipatedHostError ? Pa_GetLastHostErrorInfo() : nullptr;
    std::string text = Pa_GetErrorText(error);
    if (host != nullptr && host->errorText != nullptr && *host->errorText != '\0')
        text += std::string(" (") + host->errorText + ")";
    return OnOneLine(text);
}

}  // namespace

std::size_t CardRing::Write(const std::int16_t* samples, std::size_t frames) {
    const std::size_t written = written_.load(std::memory_order_relaxed);
    const std::size_t free = ring_.size() - (written - read_.load(std::memory_order_acquire));
    const std::size_t count = std::min(2 * frames, free / 2 * 2);
    for (std::size_t i = 0; i < count; ++i) ring_[(written + i) % ring_.size()] = samples[i];
    written_.store(written + count, std::memory_order_release);
    return count / 2;
}

std::size_t CardRing::Read(std::span<std::int16_t> samples) {
    const std::size_t read = read_.load(std::memory_order_relaxed);
    const std::size_t held = written_.load(std::memory_order_acquire) - read;
    const std::size_t count = std::min(samples.size() / 2 * 2, held);
    for (std::size_t i = 0; i < count; ++i) samples[i] = ring_[(read + i) % ring_.size()];
    read_.store(read + count, std::memory_order_release);
    return count / 2;
}

/// PortAudio's handle of a stream.
struct CardStream::PortAudioStream {
    PortAudioStream() = default;
    ~PortAudioStream() {
        if (stream == nullptr) return;
        Pa_AbortStream(stream);
        Pa_CloseStream(stream);
    }
    PortAudioStream(const PortAudioStream&) = delete;
    PortAudioStream& operator=(const PortAudioStream&) = delete;

    PaStream* stream = nullptr;
};

/// Runs in the sound library's thread.
struct CardStream::Taker {
    static int TakeFrames(const void* input, void*, unsigned long frames, const PaStreamCallbackTimeInfo*,
                          PaStreamCallbackFlags flags, void* self) {
        static_cast<CardStream*>(self)->TakeFrames(static_cast<const std::int16_t*>(input), frames,
                                                   (flags & paInputOverflow) != 0);
        return paContinue;
    }
};

CardStream::CardStream(const std::string& name, int rate) {
    const std::optional<SoundCard> card = system_.Find(name);
    if (!card) RaiseNotFound(name);
    name_ = card->name;
    if (card->channels < 2) Raise("sound card '" + name_ + "' has one channel; two are needed");
    SoundProbe probe;
    if (card->isAlsa)
        probe = ProbeSound(name_);
    else
        probe.rates = {RecorderSampleRate, card->nativeRate};
    if (probe.isInUse) Raise("sound card '" + name_ + "' " + InUseText(probe.holder));
    Open(*card, rate == 0 ? RatesToTry(probe) : std::vector{rate});
}

CardStream::~CardStream() {
    stream_.reset();  // before what its thread writes to
}

void CardStream::Open(const SoundCard& card, const std::vector<int>& rates) {
    stream_ = std::make_unique<PortAudioStream>();
    PaStreamParameters input{};
    input.device = card.device;
    input.channelCount = 2;
    input.sampleFormat = paInt16;
    input.suggestedLatency = Latency;
    PaError error = paInvalidSampleRate;
    for (std::size_t i = 0; i < rates.size() && error == paInvalidSampleRate; ++i) {
        rate_ = rates[i];
        error = Pa_OpenStream(&stream_->stream, &input, nullptr, rate_, paFramesPerBufferUnspecified,
                              paClipOff | paDitherOff, &Taker::TakeFrames, this);
    }
    if (error == paNoError) {
        ring_ = std::make_unique<CardRing>(RingSeconds * static_cast<std::size_t>(rate_));
        if (rate_ != RecorderSampleRate) resampler_ = std::make_unique<Resampler>(rate_);
        error = Pa_StartStream(stream_->stream);
    }
    if (error == paDeviceUnavailable) Raise("sound card '" + name_ + "' " + InUseText({}));
    if (error == paInvalidSampleRate)
        Raise("sound card '" + name_ + "' does not offer " + std::to_string(rate_) + " Hz");
    if (error != paNoError) Raise("sound card '" + name_ + "' cannot be opened: " + TextOf(error));
}

void CardStream::TakeFrames(const std::int16_t* samples, std::size_t frames, bool isOverflow) {
    const std::size_t taken = samples == nullptr ? frames : ring_->Write(samples, frames);
    if (taken < frames) dropped_.fetch_add(frames - taken, std::memory_order_relaxed);
    if (taken < frames || isOverflow) hasOverrun_ = true;
}

bool CardStream::IsRunning() const {
    return Pa_IsStreamActive(stream_->stream) == 1;
}

std::size_t CardStream::Read(std::span<std::int16_t> samples) {
    if (!resampler_) return ring_->Read(samples);
    return resampler_->Read(samples, [this](std::span<float> input) {
        piece_.resize(input.size());
        const std::size_t frames = ring_->Read(piece_);
        std::transform(piece_.begin(), piece_.begin() + static_cast<std::ptrdiff_t>(2 * frames),
                       input.begin(),
                       [](std::int16_t sample) { return static_cast<float>(sample) / 32768.0F; });
        return frames;
    });
}

std::uint64_t CardStream::FramesLost() const {
    return dropped_.load(std::memory_order_relaxed) * RecorderSampleRate / static_cast<std::uint64_t>(rate_);
}

std::uint64_t CardStream::FramesClipped() const {
    return resampler_ ? resampler_->ClippedFrames() : 0;
}

}  // namespace veltrix
