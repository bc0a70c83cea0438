#pragma once
// Samples from sound files.

#include <memory>
#include <optional>
#include <set>
#include <string>

#include "recorder/file_list.h"
#include "recorder/resampler.h"
#include "recorder/sample_source.h"

namespace veltrix {

/// Plays sound files of two channels one after the other, without a gap, of any format that libsndfile reads;
/// other sample widths are brought to 16 bit and other rates to 22050 Hz. A file that cannot be used is told
/// once and left out.
class FileSource final : public SampleSource {
  public:
    /// How fast the frames come.
    enum class Speed {
        Real,    ///< as a sound card would deliver it
        AsTaken  ///< as fast as the station takes it; nothing is lost
    };
    /// What follows the last file.
    enum class AtEnd {
        End,
        Again,  ///< from the first file on
        Wait    ///< for further files, for ever
    };

    /// `names`: see FileList. Unless it waits, raises FileNotFound when no file can be opened as a sound
    /// file, InvalidCall when the last of them has another number of channels.
    FileSource(const std::string& names, Speed speed, AtEnd atEnd, Say say);
    ~FileSource() override;

    std::size_t Read(std::span<std::int16_t> samples, Moment now) override;
    bool Waits() const override { return speed_ == Speed::AsTaken; }

  private:
    struct File;

    std::size_t ReadOn(std::span<std::int16_t> samples, Moment now);
    bool OpenNext();
    bool Open(const std::string& name);
    void CloseFile();
    void RunOut(Moment now);
    void LeaveOut(const std::string& problem, int number);

    FileList list_;
    Speed speed_;
    AtEnd atEnd_;
    Say say_;
    std::unique_ptr<File> file_;
    std::unique_ptr<Resampler> resampler_;
    std::uint64_t clippedBefore_ = 0;  // of earlier resamplers
    Pacer pacer_{RecorderSampleRate};
    std::uint64_t framesThisRound_ = 0;
    bool isFirstRound_ = true;
    std::set<std::string> leftOut_;  // the problems told
    std::string lastProblem_;
    int lastProblemNumber_ = 0;
    std::optional<Moment> lookAgainAt_;
};

}  // namespace veltrix
