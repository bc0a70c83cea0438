#include "health/health_prometheus.h"

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "common/neutral_text.h"
#include "health/verdicts.h"

namespace veltrix {

namespace {

using Labels = std::initializer_list<std::pair<std::string_view, std::string_view>>;

std::string ValueText(double value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "+Inf" : "-Inf";
    return GeneralNumber(value);
}

/// The text that comes about, a family of samples after the other.
class Exposition {
  public:
    /// Begins a metric. The samples of one metric follow it without another between them.
    void Metric(std::string_view name, std::string_view type, std::string_view help) {
        name_ = "veltrix_" + std::string(name);
        text_ += "# HELP " + name_ + ' ' + std::string(help) + "\n# TYPE " + name_ + ' ' + std::string(type) +
                 '\n';
    }
    void Sample(std::string_view value, Labels labels) {
        text_ += name_;
        char before = '{';
        for (const auto& [label, content] : labels) {
            text_ += std::exchange(before, ',');
            text_ += std::string(label) + "=\"" + EscapedLabel(content) + '"';
        }
        if (labels.size() > 0) text_ += '}';
        text_ += ' ' + std::string(value) + '\n';
    }
    void Sample(double value, Labels labels) { Sample(ValueText(value), labels); }

    void Gauge(std::string_view name, std::string_view help, double value) {
        Metric(name, "gauge", help);
        Sample(value, {});
    }
    void Count(std::string_view name, std::string_view help, std::uint64_t value) {
        Metric(std::string(name) + "_total", "counter", help);
        Sample(std::to_string(value), {});
    }
    /// A counter, and how much of it came lately.
    void Counts(std::string_view name, const std::string& what, const Rates& rates) {
        Count(name, what + " since start.", rates.total);
        Gauge(std::string(name) + "_last_minute", what + " in the last 60 seconds.",
              static_cast<double>(rates.minute));
        Gauge(std::string(name) + "_last_hour", what + " in the last 3600 seconds.",
              static_cast<double>(rates.hour));
    }

    std::string Text() && { return std::move(text_); }

  private:
    std::string name_;
    std::string text_;
};

void Station(Exposition& out, const HealthReport& report) {
    out.Metric("station_info", "gauge", "Version and name of the station.");
    out.Sample(1, {{"version", report.version}, {"station", report.station}});
    out.Gauge("running", "1 while the station runs, 0 after an orderly end.", report.running ? 1 : 0);
    out.Gauge("uptime_seconds", "Time since the start of the station.", static_cast<double>(report.uptime));
    out.Metric("verdict", "gauge", "What a figure is worth: 1 good, 2 look into it, 3 bad.");
    for (const auto& [figure, finding] : JudgeAll(report))
        if (finding.verdict != Verdict::None)
            out.Sample(static_cast<double>(finding.verdict), {{"figure", figure}});
}

void Sound(Exposition& out, const HealthReport& report) {
    const SoundHealth& sound = report.sound;
    out.Gauge("sound_arriving", "1 while blocks of sound arrive.", sound.arriving ? 1 : 0);
    out.Gauge("sound_state_seconds", "Time since sound began or ceased to arrive.",
              static_cast<double>(sound.secondsAgo));
    out.Gauge("sound_digital_silence", "1 when the last 10 seconds of sound were exact zeros.",
              sound.isDigitalSilence ? 1 : 0);
    out.Gauge("detecting", "0 once a repeated failure has ended detection.", report.detecting ? 1 : 0);
    out.Count("blocks_read", "Blocks of sound read since start.", sound.blocks);
    out.Count("frames_read", "Frames of sound read since start.", sound.frames);
    if (sound.rate) {
        out.Gauge("sample_rate_hertz", "Frames a second, measured over an hour at most.", sound.rate->rate);
        out.Gauge("sample_rate_uncertainty_hertz", "How far the true rate may lie from it.",
                  sound.rate->uncertainty);
    }
    out.Gauge("sample_rate_nominal_hertz", "Frames a second that the detector reckons with.", NominalRate);
    if (sound.minute.frames > 0) {
        const auto& [left, right] = sound.minute.channels;
        out.Metric("input_peak_decibels", "gauge", "Peak of the last minute relative to full scale.");
        out.Sample(left.PeakDb(), {{"channel", "left"}});
        out.Sample(right.PeakDb(), {{"channel", "right"}});
        out.Metric("input_rms_decibels", "gauge", "RMS of the last minute relative to full scale.");
        out.Sample(left.RmsDb(sound.minute.frames), {{"channel", "left"}});
        out.Sample(right.RmsDb(sound.minute.frames), {{"channel", "right"}});
        const auto frames = static_cast<double>(sound.minute.frames);
        out.Gauge("input_zero_ratio", "Part of the last minute's frames that are exact zeros.",
                  static_cast<double>(sound.minute.zeroFrames) / frames);
        out.Gauge("input_clipped_ratio", "Part of the last minute's frames that are clipped.",
                  static_cast<double>(sound.minute.clippedFrames) / frames);
    }
    out.Count("input_clipped_frames", "Clipped frames since start.", sound.clipped);
}

void Recorder(Exposition& out, const HealthReport& report) {
    if (!report.recorder) return;
    const RecorderAccount& recorder = *report.recorder;
    out.Metric("recorder_info", "gauge", "What the recorder says of itself.");
    out.Sample(1, {{"state", recorder.state}, {"source", recorder.source}, {"device", recorder.device}});
    if (recorder.framesWritten)
        out.Count("recorder_frames_written", "Frames that the recorder has written since its start.",
                  *recorder.framesWritten);
    if (recorder.framesLost)
        out.Count("recorder_frames_lost", "Frames that the recorder has lost since its start.",
                  *recorder.framesLost);
    out.Gauge("recorder_frames_lost_last_hour", "Frames that the recorder has lost in the last 3600 seconds.",
              static_cast<double>(report.framesLostHour));
}

void Detections(Exposition& out, const HealthReport& report) {
    out.Gauge("threshold_level", "Threshold of detection in raw units.", report.threshold.raw);
    out.Gauge("noise_level", "Noise figure in raw units, 5 standard deviations of the envelope.",
              report.noise.raw);
    if (report.threshold.db)
        out.Gauge("threshold_decibels", "Threshold of detection in decibels.", *report.threshold.db);
    if (report.noise.db) out.Gauge("noise_decibels", "Noise figure in decibels.", *report.noise.db);
    out.Counts("strikes", "Detected strikes", report.strikes);
    out.Counts("pairs", "Detections paired with those of another station", report.pairs);
    out.Counts("located", "Strikes located and on the map", report.located);
}

void Network(Exposition& out, const HealthReport& report) {
    double connected = 0;
    for (const PeerHealth& peer : report.peers) connected += peer.IsConnected() ? 1 : 0;
    out.Gauge("peers_connected", "Sockets that carry a station.", connected);
    if (!report.peers.empty()) {
        out.Metric("peer_state", "gauge", "State of a socket, 0 to 9; 7 is connected.");
        for (const PeerHealth& peer : report.peers)
            out.Sample(peer.state, {{"side", peer.isClient ? "client" : "server"},
                                    {"socket", std::to_string(peer.socket)},
                                    {"station", peer.station},
                                    {"address", peer.address}});
    }
    out.Counts("lines_dropped", "Lines for peers that were dropped", report.linesDropped);
}

void Surroundings(Exposition& out, const HealthReport& report) {
    if (report.published)
        out.Gauge("publication_age_seconds", "Time since the displays were last published.",
                  static_cast<double>(report.publishedAgo));
    if (report.disk) {
        out.Gauge("disk_free_bytes", "Room on the disk of the station.",
                  static_cast<double>(report.disk->free));
        out.Gauge("disk_size_bytes", "Size of that disk.", static_cast<double>(report.disk->total));
    }
    if (report.clockSynchronised)
        out.Gauge("clock_synchronised", "1 while a time service keeps the computer's clock right.",
                  *report.clockSynchronised ? 1 : 0);
    out.Count("errors", "Failures reported since start.", report.errors);
}

}  // namespace

std::string EscapedLabel(std::string_view value) {
    std::string escaped;
    for (const char c : value) {
        if (c == '\\' || c == '"') escaped += '\\';
        if (c == '\n') {
            escaped += "\\n";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string HealthPrometheus(const HealthReport& report) {
    Exposition out;
    Station(out, report);
    Sound(out, report);
    Recorder(out, report);
    Detections(out, report);
    Network(out, report);
    Surroundings(out, report);
    return std::move(out).Text();
}

}  // namespace veltrix
