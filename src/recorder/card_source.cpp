#include "recorder/card_source.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "common/failure.h"

namespace veltrix {

namespace {

using State = SourceStatus::State;
using namespace std::chrono_literals;

constexpr auto RetryInterval = 3s;
constexpr auto StallLimit = 5s;    // a card that delivers nothing for so long is gone
constexpr auto AnswerLimit = 20s;  // a sound system that takes longer to open or close a card hangs
constexpr auto ReleaseLimit = 3s;
constexpr auto OverrunQuiet = 1min;
constexpr std::size_t SilentSamples = std::size_t{2} * 5 * RecorderSampleRate;

/// Runs `work` in a thread that nobody waits for.
template <typename Work>
auto Start(Work work) -> std::future<decltype(work())> {
    std::packaged_task<decltype(work())()> task(std::move(work));
    auto result = task.get_future();
    std::thread(std::move(task)).detach();
    return result;
}

template <typename Result>
bool IsReady(const std::future<Result>& result, std::chrono::milliseconds limit = 0ms) {
    return result.wait_for(limit) == std::future_status::ready;
}

}  // namespace

bool SilenceWatch::Hears(std::span<const std::int16_t> samples) {
    const std::size_t before = silentSamples_;
    for (const std::int16_t sample : samples) silentSamples_ = sample == 0 ? silentSamples_ + 1 : 0;
    return before < SilentSamples && silentSamples_ >= SilentSamples;
}

bool SilenceWatch::IsSilent() const {
    return silentSamples_ >= SilentSamples;
}

CardSource::CardSource(std::string device, int rate, Say say)
    : SampleSource("card"), device_(std::move(device)), rate_(rate), say_(std::move(say)) {
    SoundSystem::Prepare();
    status_.state = State::Waiting;
    status_.device = device_;
}

CardSource::~CardSource() {
    Release();
}

std::size_t CardSource::Read(std::span<std::int16_t> samples, Moment now) {
    if (!IsOpen(now)) return 0;
    const std::size_t frames = stream_->Read(samples);
    if (frames > 0) lastFrames_ = now;
    const std::size_t heard = HearSilence(samples.first(2 * frames));
    Watch(now);
    return heard;
}

/// Opens the card when it is time; true when it is open.
bool CardSource::IsOpen(Moment now) {
    if (opening_.valid() && IsReady(opening_)) TakeOpened(now);
    if (closing_.valid() && IsReady(closing_)) closing_.get();
    if (stream_) return true;
    if (opening_.valid() || closing_.valid()) {
        if (!unansweredSince_) unansweredSince_ = now;
        if (now - *unansweredSince_ >= AnswerLimit) Tell("the sound system does not answer; waiting for it");
        return false;
    }
    unansweredSince_.reset();
    if (retryAt_ && now < *retryAt_) return false;
    opening_ = Start([device = device_, rate = rate_]() -> Opening {
        try {
            return {std::make_unique<CardStream>(device, rate), {}};
        } catch (const Failure& failure) {
            return {nullptr, failure.Description()};
        }
    });
    return false;
}

void CardSource::TakeOpened(Moment now) {
    auto [stream, problem] = opening_.get();
    unansweredSince_.reset();
    if (!stream) {
        retryAt_ = now + RetryInterval;
        Tell(problem + "; trying again");
        return;
    }
    stream_ = std::move(stream);
    lastFrames_ = now;
    cardName_ = "sound card '" + stream_->Name() + "'";
    // When it goes away, this very card is waited for, not the next one that the computer prefers; at which
    // place it is plugged in again does not matter.
    if (device_.empty())
        device_ = stream_->Name().substr(
            0, std::min(stream_->Name().find(" (hw:"), stream_->Name().find(" (plughw:")));
    status_.state = State::Recording;
    status_.device = stream_->Name();
    status_.rate = stream_->Rate();
    Tell("recording from " + cardName_ +
         (status_.rate == RecorderSampleRate ? std::string()
                                             : " at " + std::to_string(status_.rate) + " Hz, resampled"));
}

/// What a station is to get of these frames.
std::size_t CardSource::HearSilence(std::span<const std::int16_t> samples) {
    const bool wasSilent = silence_.IsSilent();
    if (silence_.Hears(samples))
        say_("the card delivers only zeros, which are held back: is it muted, or the wrong input chosen?");
    if (wasSilent && !silence_.IsSilent()) say_("the card is heard again");
    status_.state = silence_.IsSilent() ? State::Silent : State::Recording;
    return silence_.IsSilent() ? 0 : samples.size() / 2;
}

/// Looks whether the card still works.
void CardSource::Watch(Moment now) {
    status_.framesLost = lostBefore_ + stream_->FramesLost();
    status_.framesClipped = clippedBefore_ + stream_->FramesClipped();
    if (stream_->HasOverrun()) {
        if (!lastOverrun_ || now - *lastOverrun_ > OverrunQuiet)
            say_("the computer was too busy for the card: samples were lost");
        lastOverrun_ = now;
    }
    if (lastFrames_ != now && (!stream_->IsRunning() || now - lastFrames_ > StallLimit)) Close(now);
}

void CardSource::Close(Moment now) {
    lostBefore_ = status_.framesLost;
    clippedBefore_ = status_.framesClipped;
    status_.state = State::Waiting;
    retryAt_ = now + RetryInterval;
    Tell(cardName_ +
         (stream_->IsRunning() ? " delivers nothing any more; trying again" : " has gone; trying again"));
    closing_ = Start([stream = std::move(stream_)]() mutable { stream.reset(); });
}

bool CardSource::Release() {
    if (stream_) closing_ = Start([stream = std::move(stream_)]() mutable { stream.reset(); });
    if (closing_.valid() && !IsReady(closing_, ReleaseLimit)) return false;
    if (opening_.valid()) {
        if (!IsReady(opening_, ReleaseLimit)) return false;
        // What was opened meanwhile is closed again.
        closing_ = Start([opened = opening_.get()]() mutable { opened.stream.reset(); });
        return IsReady(closing_, ReleaseLimit);
    }
    return true;
}

void CardSource::Tell(const std::string& state) {
    if (state != told_) say_(state);
    told_ = state;
}

}  // namespace veltrix
