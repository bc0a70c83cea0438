#include "recorder/sound_cards.h"

#include <fcntl.h>
#include <portaudio.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "common/failure.h"
#include "common/letter_case.h"

namespace veltrix {

void SoundSystem::Prepare() {
    // Lets cards be used that know only other widths of samples than ours. It could convert rates, too, but
    // badly; we open a card at a rate of its own.
    ::setenv("PA_ALSA_PLUGHW", "1", 0);
}

SoundSystem::SoundSystem() {
    const QuietErrors quiet;
    const PaError error = Pa_Initialize();
    if (error != paNoError) throw Failure(errors::DeviceIo, Pa_GetErrorText(error), "recorder");
}

SoundSystem::~SoundSystem() {
    const QuietErrors quiet;
    Pa_Terminate();
}

std::vector<SoundCard> SoundSystem::Cards() const {
    std::vector<SoundCard> cards;
    const int preset = Pa_GetDefaultInputDevice();
    for (int device = 0; device < Pa_GetDeviceCount(); ++device) {
        const PaDeviceInfo* const info = Pa_GetDeviceInfo(device);
        if (info != nullptr && info->maxInputChannels > 0)
            cards.push_back({device, info->name, info->maxInputChannels, device == preset,
                             static_cast<int>(std::lrint(info->defaultSampleRate)),
                             Pa_GetHostApiInfo(info->hostApi)->type == paALSA});
    }
    return cards;
}

std::optional<SoundCard> SoundSystem::Find(const std::string& name) const {
    const std::vector<SoundCard> cards = Cards();
    const auto first = [&cards](auto&& suits) -> std::optional<SoundCard> {
        const auto found = std::ranges::find_if(cards, suits);
        return found == cards.end() ? std::optional<SoundCard>() : *found;
    };
    if (name.empty()) return first([](const SoundCard& card) { return card.isDefault; });
    if (auto card = first([&name](const SoundCard& c) { return c.name == name; })) return card;
    return first([part = LowerCase(name)](const SoundCard& card) {
        return LowerCase(card.name).find(part) != std::string::npos;
    });
}

QuietErrors::QuietErrors() : kept_(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)) {
    std::fflush(stderr);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    ::dup2(nowhere, STDERR_FILENO);
    ::close(nowhere);
}

QuietErrors::~QuietErrors() {
    std::fflush(stderr);
    if (kept_ < 0) {
        ::close(STDERR_FILENO);
        return;
    }
    ::dup2(kept_, STDERR_FILENO);
    ::close(kept_);
}

}  // namespace veltrix
