#pragma once
// Samples from a sound file.

#include <memory>
#include <string>

#include "recorder/sample_source.h"

namespace veltrix {

/// Plays a sound file of two channels at 22050 Hz, of any format that libsndfile reads; other sample widths
/// are brought to 16 bit.
class FileSource final : public SampleSource {
  public:
    enum class Speed {
        Real,    ///< as a sound card would deliver it
        AsTaken  ///< as fast as the station takes it; nothing is lost
    };

    /// Raises FileNotFound when the file cannot be opened as a sound file, InvalidCall when it has another
    /// number of channels or sample rate.
    FileSource(const std::string& name, Speed speed, Say say);
    ~FileSource() override;

    std::size_t Read(std::span<std::int16_t> samples, Moment now) override;
    bool HasEnded() const override { return hasEnded_; }
    bool Waits() const override { return speed_ == Speed::AsTaken; }

  private:
    struct File;

    void End();

    std::string name_;
    Speed speed_;
    Say say_;
    std::unique_ptr<File> file_;
    Pacer pacer_{RecorderSampleRate};
    bool hasEnded_ = false;
};

}  // namespace veltrix
