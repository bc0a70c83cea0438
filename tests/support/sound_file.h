#pragma once
// Recordings as files, for test programs that link libsndfile.

#include <sndfile.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "support/samples.h"

namespace veltrix {

/// What a sound file holds.
struct SoundFormat {
    int rate = 22050;  ///< frames a second
    int channels = 2;
    int format = 0;  ///< libsndfile's number; 0: 16 bits, FLAC or WAV as the file's name ends
};

/// Writes a recording, the samples of all channels in turn.
inline void WriteSound(const std::filesystem::path& name, const Samples& samples, SoundFormat sound = {}) {
    SF_INFO info{};
    info.channels = sound.channels;
    info.samplerate = sound.rate;
    info.format = sound.format;
    if (info.format == 0)
        info.format = (name.extension() == ".flac" ? SF_FORMAT_FLAC : SF_FORMAT_WAV) | SF_FORMAT_PCM_16;
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(name.c_str(), SFM_WRITE, &info), sf_close);
    const auto count = static_cast<sf_count_t>(samples.size());
    // Formats of floats take full scale as 1.
    if (file) sf_command(file.get(), SFC_SET_SCALE_INT_FLOAT_WRITE, nullptr, SF_TRUE);
    if (!file || sf_write_short(file.get(), samples.data(), count) != count)
        throw std::runtime_error("cannot write " + name.string());
}

}  // namespace veltrix
