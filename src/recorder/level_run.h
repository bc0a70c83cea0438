#pragma once
// Shows a source's level on a terminal, or line by line.

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "recorder/level_meter.h"
#include "recorder/recorder.h"
#include "recorder/sample_source.h"

namespace veltrix {

/// Listens to a source without recording it. On a terminal that is wide enough two lines are drawn anew ten
/// times a second; elsewhere a line comes each second. At the end comes a summary.
class LevelRun {
  public:
    /// Writes text as it is.
    using Write = std::function<void(const std::string& text)>;

    /// `width`: columns of the terminal; 0: there is none. `gain`: as for the recorder.
    LevelRun(double gain, std::size_t width, Write write);

    /// Takes a line for the user, for the source to say what it does.
    void Say(const std::string& line);

    /// Listens until `isStopped` says so, the source has ended or the limit has passed. True when anything
    /// but zeros was heard.
    bool Run(SampleSource& source, std::optional<std::chrono::duration<double>> limit,
             const std::function<bool()>& isStopped);

  private:
    void Hear(SampleSource& source, Moment now);
    void Show(Moment now);

    double gain_;
    std::size_t width_;
    Write write_;
    LevelMeter meter_;
    ClippedCount clipped_;
    std::vector<std::int16_t> samples_;
    std::optional<Moment> shownAt_;
    bool isDrawn_ = false;
};

}  // namespace veltrix
