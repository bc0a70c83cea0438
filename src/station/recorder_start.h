#pragma once
// Timer2_Timer: the start of the recorder, one second after the form stands.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "timebase/c_stop_watch_mm.h"

namespace veltrix {

/// Which recorder a station starts.
struct RecorderChoice {
    /// The program, and arguments that go before our own; none: no recorder is started.
    std::optional<std::vector<std::string>> command = std::vector<std::string>{"SndInput.exe"};
};

/// The arguments of the recorder. `sPath` is the RAM-drive path with its final "\", or empty.
std::vector<std::string> RecorderArguments(const std::string& sPath);

/// Clears away what an earlier recorder left, starts ours, and throws its first block away. Owned by the
/// form.
class RecorderStart {
  public:
    /// `ramDrivePath` gives the RAM-drive path in force.
    RecorderStart(Platform& platform, RecorderChoice choice, std::function<std::string()> ramDrivePath);

    /// Enables the timer, which fires once, in a second.
    void Start();

    /// Told once when the recorder could not be started; the station goes on without.
    std::function<void(const std::string& why)> OnNoRecorder;

  private:
    void Timer2_Timer();
    void StartRecorder();

    Files& files_;
    Processes& processes_;
    EventLoop& loop_;
    RecorderChoice choice_;
    std::function<std::string()> ramDrivePath_;
    CStopWatchMM stopwatch_;
    std::unique_ptr<Timer> Timer2;
    bool bRunning = false;
};

}  // namespace veltrix
