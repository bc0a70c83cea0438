#pragma once
// Timer3_Timer: everything that is not a reaction to samples or to socket events, once a second.

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/platform.h"
#include "station/form_controls.h"
#include "station/station_network.h"
#include "timebase/c_stop_watch_mm.h"

namespace veltrix {

/// The jobs of others that the tick runs, in their order within the tick. A place that nobody fills is empty
/// and passed over.
struct HousekeepingJobs {
    // Once a minute.
    std::function<double()> GetCoarse;     ///< samples per day
    std::function<void()> ShowClockDrift;  ///< evaluates the drift of the sample clock
    std::function<void()> NoiseLogMinute;  ///< a line of the noise log
    std::function<void()> MapUpdatePlot;   ///< ages the dots on the map
    std::function<void()> PublishMinute;   ///< counts towards the next publication
    std::function<void()> MapInit;         ///< shows list and map anew, when one of their files has changed
    // Every second.
    std::function<void()> Timer5_Timer;  ///< the daily jobs
};

/// A fixed list of steps, of which one that fails is passed over. Owned by the form.
class Housekeeping {
  public:
    Housekeeping(FormControls& controls, Platform& platform, StationNetwork& network,
                 std::function<HomeStation()> home);

    /// Switches the tick on or off.
    void Start();
    void Stop();

    /// To be filled before Start().
    HousekeepingJobs jobs;

  private:
    void Timer3_Timer();
    void AngleOnMap();
    void AngleOnGlobe();
    void Minute();
    void OnlineMinute();
    void TakeChangedFiles();
    bool AddressHasChanged();

    Files& files_;
    StationNetwork& network_;
    std::function<HomeStation()> home_;
    ListBox& lstOnline;
    TextBox& txtAngleClientServer;
    TextBox& txtAngleServerClient;
    CStopWatchMM stopwatch_;
    std::unique_ptr<Timer> Timer3;
    std::int16_t iMinute_ = 0;  // ticks, 0 to 59
};

}  // namespace veltrix
