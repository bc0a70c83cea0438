#pragma once
// The recordings of one station, played through its detector as one stream.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "archive/read_ahead.h"
#include "archive/start_stamp.h"
#include "common/date_time.h"
#include "detection/detector.h"

namespace veltrix {

/// How a station's recordings are to be heard.
struct ReplayRules {
    std::int16_t threshold = 80;  ///< dB, 1 to 100
    bool filter = true;
    AntennaOptions antenna;
    std::optional<DateTime> start;  ///< when the first recording began; else its file tells
    unsigned threads = 1;           ///< that decode
};

/// A pulse of the stream.
struct HeardPulse {
    DateTime date = 0;       ///< of the recording, at the threshold crossing
    std::int64_t frame = 0;  ///< of the crossing, counted from the start of the stream, gaps included
    int run = 0;             ///< which row of recordings without a gap it is of, from 0
    bool isClipped = false;
    Pulse pulse;  ///< its sample number is the frame as a station counts it
};

/// The log line of a pulse.
std::string LogLineOf(const HeardPulse& heard);

/// Plays recordings in their order. A recording that begins where the one before ended (give or take 2 s and
/// 100 ppm of its length, for stamps are whole seconds and sample clocks differ) goes on with the very next
/// frame; a later one leaves a gap, over which the sample counter moves on. Dates of a recording count from
/// its own start. Detector, filter and noise figure go on over all of it, as in a station.
class StationReplay final : private PulseReceiver {
  public:
    explicit StationReplay(const ReplayRules& rules);

    /// Plays one recording to its end. Throws BadRecording when it cannot be read (on), or begins before the
    /// one before has ended.
    void Play(const std::string& name);

    /// Told of each pulse when it has ended; may be empty.
    std::function<void(const HeardPulse&)> OnPulse;
    /// Told between two pieces, with all that has been played of this recording; may be empty.
    std::function<void(const ReadAhead& recording)> OnProgress;

    /// What was played so far. Frames and dates are of recordings, without the gaps.
    struct Played {
        int recordings = 0;
        int gaps = 0;
        std::int64_t frames = 0;
        std::int64_t gapFrames = 0;
        DateTime start = 0;
        DateTime end = 0;
        bool isUniversal = false;  ///< the dates are universal time, as all the file names say
        double noiseSum = 0;       ///< of the noise figures
        double quietestAuto = 0;   ///< dB, of the automatic thresholds
        double loudestAuto = 0;
        std::int64_t noiseReadings = 0;
    };
    const Played& Sum() const { return played_; }
    std::int32_t Threshold() const { return noise_.lThreshold; }

  private:
    void OnTrigger() override {}
    void OnPulseEnd() override {}
    void ShowClipping(bool bClipped) override { isClipped_ = bClipped; }
    bool Deliver(const Pulse& pulse, FailureHandler& failures) override;

    DateTime StartOf(const std::string& name, std::int64_t frames, std::optional<FileStamp> stamp) const;
    void JoinTo(const std::string& name, DateTime start, bool isStamped);
    std::int64_t FrameNow() const;
    void TakeNoise(double automatic);

    ReplayRules rules_;
    NoiseControl noise_;
    Detector detector_;
    Played played_;
    DateTime shift_ = 0;             // from the stamps of the files to the dates
    DateTime recordingStart_ = 0;    // of the present one
    std::int64_t firstFrame_ = 0;    // of it, in the stream
    std::int64_t pieceFrame_ = 0;    // frames of the stream before the present piece
    std::int32_t pieceCounter_ = 0;  // what the detector counted then
    int run_ = 0;
    bool isClipped_ = false;
};

}  // namespace veltrix
