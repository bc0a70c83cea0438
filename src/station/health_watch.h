#pragma once
// Watches over the station: gathers its figures, shows them and writes them for other programs.

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "detection/noise_control.h"
#include "health/health_report.h"
#include "health/status_texts.h"
#include "output/error_log.h"
#include "output/publishing.h"
#include "station/pair_matching.h"
#include "station/pulse_delivery.h"
#include "station/sample_tick.h"

namespace veltrix {

/// Works once a second on a timer of its own, beside the station's jobs: what fails here touches none of
/// them. The figures go to the labels of the status bar and, each minute and at the end, to "stats.json" and
/// "stats.prom" in the working directory. Owned by the form, after all that it looks at.
class HealthWatch {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        FormControls& controls;
        Platform& platform;
        SampleTick& tick;
        NoiseControl& noise;
        PulseDelivery& delivery;
        StationNetwork& network;
        PairMatching& matching;
        Publishing& publishing;
        ErrorLog& errors;
        std::string version;
        std::function<std::string()> recorderFolder;  ///< where the block file lies, with its separator
        std::function<void(const std::string&)> warn;
    };

    explicit HealthWatch(Parts parts);

    /// Begins the watch.
    void Start();
    /// Ends the watch and writes the files once more.
    void Stop();

    /// A repeated failure has ended detection.
    void DetectionHasStopped() { detecting_ = false; }

    /// The figures of this moment. REQUIRES to be called about once a second while the watch runs.
    HealthReport Gather();

  private:
    void Tick();
    void Show(const HealthReport& report);
    void Write(const HealthReport& report);
    void GatherRecorder(HealthReport& report, std::int64_t now);
    void GatherPeers(HealthReport& report);
    void GatherComputer(HealthReport& report, std::int64_t now);
    const ClassMapper* RowOf(const Socket& socket);
    PeerHealth PeerOf(const Socket& socket, bool isClient, int index);

    Parts parts_;
    LongTime time_;
    DateTime started_;
    std::unique_ptr<Timer> timer_;
    std::array<Label*, StatusLabels.size()> labels_{};
    RecorderAccountFile recorderFile_;
    RateCounter framesLost_;
    std::uint64_t framesLostSeen_ = 0;
    bool bRecorderSeen_ = false;
    RateCounter linesDropped_;
    std::uint64_t linesDroppedSeen_ = 0;
    std::optional<DateTime> published_;
    std::int64_t publishedAt_ = 0;
    std::optional<DiskSpace> disk_;
    std::optional<bool> clockSynchronised_;
    std::int64_t nextLook_ = 0;   // at the computer, milliseconds
    std::int64_t nextWrite_ = 0;  // milliseconds
    bool detecting_ = true;
    bool cannotWrite_ = false;  // has been told
};

}  // namespace veltrix
