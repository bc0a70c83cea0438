#include "recorder/sound_probe.h"

#include <alsa/asoundlib.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include "recorder/sample_source.h"

namespace veltrix {

namespace {

/// Rates of which no content below 11 kHz is missing, the best one first: the true one, then those that are
/// cheap to bring to 22050.
constexpr int Rates[] = {22050, 44100, 88200, 48000, 96000, 176400, 192000, 32000, 24000};
/// A sound server is asked for this one: it would bring the card's rate to 22050 by a filter of its own
/// choice, mostly a poor one; from here on the filter is ours.
constexpr int ServerRate = 48000;

struct CloseDevice {
    void operator()(snd_pcm_t* device) const { snd_pcm_close(device); }
    void operator()(snd_ctl_t* control) const { snd_ctl_close(control); }
};
using Device = std::unique_ptr<snd_pcm_t, CloseDevice>;
using Control = std::unique_ptr<snd_ctl_t, CloseDevice>;

/// "hw:1,0" of "USB Audio: Line (plughw:1,0)"; other names are ALSA's own.
std::string AlsaName(const std::string& deviceName) {
    const std::size_t at = deviceName.rfind("hw:");
    if (at == std::string::npos || !deviceName.ends_with(')')) return deviceName;
    return deviceName.substr(at, deviceName.size() - 1 - at);
}

struct Opened {
    Device device;
    int error = 0;
};

Opened Open(const std::string& alsaName) {
    snd_pcm_t* device = nullptr;
    const int error = snd_pcm_open(&device, alsaName.c_str(), SND_PCM_STREAM_CAPTURE, SND_PCM_NONBLOCK);
    return {Device(error == 0 ? device : nullptr), error};
}

/// Who holds a device of a card, by what the kernel tells of it.
std::string HolderOf(const std::string& alsaName) {
    int card = 0;
    int number = 0;
    if (std::sscanf(alsaName.c_str(), "hw:%d,%d", &card, &number) != 2) return {};
    const std::filesystem::path folder =
        "/proc/asound/card" + std::to_string(card) + "/pcm" + std::to_string(number) + "c";
    std::ifstream status(folder / "sub0" / "status");
    constexpr std::string_view Key = "owner_pid";
    for (std::string line; std::getline(status, line);) {
        if (!line.starts_with(Key)) continue;
        const std::size_t digits = std::min(line.find_first_of("0123456789"), line.size());
        const std::string process = line.substr(digits);
        std::string program;
        std::getline(std::ifstream("/proc/" + process + "/comm") >> std::ws, program);
        return program.empty() ? "process " + process : program + ", process " + process;
    }
    return {};
}

}  // namespace

SoundProbe ProbeSound(const std::string& deviceName) {
    const std::string name = AlsaName(deviceName);
    const auto [device, error] = Open(name);
    SoundProbe probe;
    if (!device) {
        probe.isInUse = error == -EBUSY;
        if (probe.isInUse) probe.holder = HolderOf(name);
        return probe;
    }
    probe.isServer = snd_pcm_type(device.get()) == SND_PCM_TYPE_IOPLUG;
    snd_pcm_hw_params_t* parameters = nullptr;
    snd_pcm_hw_params_alloca(&parameters);
    if (snd_pcm_hw_params_any(device.get(), parameters) < 0) return probe;
    snd_pcm_hw_params_set_rate_resample(device.get(), parameters, 0);
    for (const int rate : Rates)
        if (snd_pcm_hw_params_test_rate(device.get(), parameters, static_cast<unsigned>(rate), 0) == 0)
            probe.rates.push_back(rate);
    return probe;
}

std::vector<std::string> SoundCardsInUse() {
    std::vector<std::string> names;
    snd_ctl_card_info_t* cardInfo = nullptr;
    snd_pcm_info_t* info = nullptr;
    snd_ctl_card_info_alloca(&cardInfo);
    snd_pcm_info_alloca(&info);
    for (int card = -1; snd_card_next(&card) == 0 && card >= 0;) {
        snd_ctl_t* opened = nullptr;
        if (snd_ctl_open(&opened, ("hw:" + std::to_string(card)).c_str(), 0) != 0) continue;
        const Control control(opened);
        if (snd_ctl_card_info(opened, cardInfo) != 0) continue;
        for (int number = -1; snd_ctl_pcm_next_device(opened, &number) == 0 && number >= 0;) {
            snd_pcm_info_set_device(info, static_cast<unsigned>(number));
            snd_pcm_info_set_subdevice(info, 0);
            snd_pcm_info_set_stream(info, SND_PCM_STREAM_CAPTURE);
            if (snd_ctl_pcm_info(opened, info) != 0) continue;
            const std::string name = "hw:" + std::to_string(card) + "," + std::to_string(number);
            if (Open(name).error == -EBUSY)
                names.push_back(std::string(snd_ctl_card_info_get_name(cardInfo)) + ": " +
                                snd_pcm_info_get_name(info) + " (" + name + ")");
        }
    }
    return names;
}

std::vector<int> RatesToTry(const SoundProbe& probe) {
    std::vector<int> rates = probe.isServer ? std::vector{ServerRate} : probe.rates;
    if (std::ranges::find(rates, RecorderSampleRate) == rates.end()) rates.push_back(RecorderSampleRate);
    return rates;
}

std::string InUseText(const std::string& holder) {
    return "is in use by another program" + (holder.empty() ? std::string() : " (" + holder + ")");
}

}  // namespace veltrix
