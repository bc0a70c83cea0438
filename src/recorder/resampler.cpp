#include "recorder/resampler.h"

#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "common/failure.h"
#include "recorder/sound_frames.h"

namespace veltrix {

namespace {

constexpr std::size_t InputFrames = 2048;
constexpr std::size_t OutputFrames = 1024;
/// The steepest filter costs 5 % of a desk computer's core at 44100 Hz and 16 % at 96000; beyond that the
/// next one has to do. docs/recorder.md has the figures.
constexpr int SteepestUpTo = 96000;
constexpr float FullScale = 32767.0F / 32768.0F;

}  // namespace

struct Resampler::Converter {
    explicit Converter(int rate) {
        int error = 0;
        state = src_new(rate <= SteepestUpTo ? SRC_SINC_BEST_QUALITY : SRC_SINC_MEDIUM_QUALITY, 2, &error);
        if (state == nullptr) throw Failure(errors::Internal, src_strerror(error), "recorder");
    }
    ~Converter() { src_delete(state); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    SRC_STATE* state = nullptr;
};

Resampler::Resampler(int rate) : rate_(rate), input_(2 * InputFrames), output_(2 * OutputFrames) {
    if (rate < LeastRate || rate > LargestRate)
        throw Failure(errors::InvalidCall,
                      std::to_string(rate) + " frames a second are beyond what can be resampled", "recorder");
    converter_ = std::make_unique<Converter>(rate);
}

Resampler::~Resampler() = default;

std::size_t Resampler::Read(std::span<std::int16_t> samples, const Input& input) {
    std::size_t made = 0;
    while (2 * made < samples.size()) {
        if (pending_.empty()) Refill(input);
        if (pending_.empty()) break;
        made += Convert(samples.subspan(2 * made), false);
    }
    return made;
}

std::size_t Resampler::Drain(std::span<std::int16_t> samples) {
    std::size_t made = 0;
    while (2 * made < samples.size()) {
        const std::size_t more = Convert(samples.subspan(2 * made), true);
        if (more == 0) break;
        made += more;
    }
    return made;
}

std::uint64_t Resampler::ClippedFrames() const {
    const double counted = static_cast<double>(clipped_) * RecorderSampleRate / rate_;
    return static_cast<std::uint64_t>(std::ceil(counted));
}

void Resampler::Refill(const Input& input) {
    pending_ = std::span<const float>(input_).first(2 * input(input_));
    for (std::size_t i = 0; i < pending_.size(); i += 2)
        if (std::max(std::abs(pending_[i]), std::abs(pending_[i + 1])) >= FullScale) ++clipped_;
}

std::size_t Resampler::Convert(std::span<std::int16_t> samples, bool isLast) {
    SRC_DATA data{};
    data.data_in = pending_.empty() ? input_.data() : pending_.data();
    data.input_frames = static_cast<long>(pending_.size() / 2);
    data.data_out = output_.data();
    data.output_frames = static_cast<long>(std::min(output_.size(), samples.size()) / 2);
    data.src_ratio = static_cast<double>(RecorderSampleRate) / rate_;
    data.end_of_input = isLast ? 1 : 0;
    if (const int error = src_process(converter_->state, &data); error != 0)
        throw Failure(errors::DeviceIo, src_strerror(error), "recorder");
    pending_ = pending_.subspan(2 * static_cast<std::size_t>(data.input_frames_used));
    const auto made = static_cast<std::size_t>(data.output_frames_gen);
    std::transform(output_.begin(), output_.begin() + static_cast<std::ptrdiff_t>(2 * made), samples.begin(),
                   SampleOf);
    return made;
}

}  // namespace veltrix
