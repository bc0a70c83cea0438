#include "health/health_json.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "common/neutral_text.h"
#include "health/verdicts.h"

namespace veltrix {

namespace {

using Json = nlohmann::ordered_json;

/// Rounded to `decimals`, so that the file holds no digits without meaning; null for no finite number.
Json Rounded(double value, int decimals) {
    if (!std::isfinite(value)) return nullptr;
    const double unit = std::pow(10, decimals);
    return std::round(value * unit) / unit + 0.0;  // no minus before a zero
}

template <class T>
Json OrNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json OrNull(const std::optional<double>& value, int decimals) {
    return value ? Rounded(*value, decimals) : Json(nullptr);
}

Json JsonOf(const Rates& rates) {
    return {{"last_minute", rates.minute}, {"last_hour", rates.hour}, {"since_start", rates.total}};
}

Json Sound(const SoundHealth& sound, bool detecting) {
    const std::optional<MeasuredRate>& rate = sound.rate;
    return {{"arriving", sound.arriving},
            {"since", GeneralDate(sound.since)},
            {"since_s", sound.secondsAgo},
            {"digital_silence", sound.isDigitalSilence},
            {"detecting", detecting},
            {"blocks", sound.blocks},
            {"frames", sound.frames},
            {"rate_hz", rate ? Rounded(rate->rate, 2) : Json(nullptr)},
            {"rate_uncertainty_hz", rate ? Rounded(rate->uncertainty, 2) : Json(nullptr)},
            {"rate_nominal_hz", NominalRate}};
}

Json Level(const SoundHealth& sound) {
    const auto& [left, right] = sound.minute.channels;
    const std::uint64_t frames = sound.minute.frames;
    return {{"peak_left_db", Rounded(left.PeakDb(), 1)},
            {"peak_right_db", Rounded(right.PeakDb(), 1)},
            {"rms_left_db", Rounded(left.RmsDb(frames), 1)},
            {"rms_right_db", Rounded(right.RmsDb(frames), 1)},
            {"frames_last_minute", frames},
            {"clipped_frames_last_minute", sound.minute.clippedFrames},
            {"zero_frames_last_minute", sound.minute.zeroFrames},
            {"clipped_frames", sound.clipped}};
}

Json Recorder(const HealthReport& report) {
    if (!report.recorder) return nullptr;
    const RecorderAccount& recorder = *report.recorder;
    return {{"state", recorder.state},
            {"since_utc", recorder.since},
            {"source", recorder.source},
            {"device", recorder.device},
            {"device_rate_hz", OrNull(recorder.deviceRate, 2)},
            {"frames_written", OrNull(recorder.framesWritten)},
            {"frames_lost", OrNull(recorder.framesLost)},
            {"frames_lost_last_hour", report.framesLostHour}};
}

Json Peers(const HealthReport& report) {
    Json list = Json::array();
    for (const PeerHealth& peer : report.peers)
        list.push_back({{"side", peer.isClient ? "client" : "server"},
                        {"socket", peer.socket},
                        {"station", peer.station},
                        {"address", peer.address},
                        {"state", peer.stateText},
                        {"connected", peer.IsConnected()}});
    return list;
}

Json Verdicts(const HealthReport& report) {
    Json verdicts;
    for (const auto& [figure, finding] : JudgeAll(report))
        verdicts[std::string(figure)] = {{"verdict", VerdictName(finding.verdict)}, {"says", finding.word}};
    return verdicts;
}

}  // namespace

std::string HealthJson(const HealthReport& report) {
    const Json all = {{"version", report.version},
                      {"station", report.station},
                      {"running", report.running},
                      {"time", GeneralDate(report.time)},
                      {"started", GeneralDate(report.started)},
                      {"uptime_s", report.uptime},
                      {"verdict", VerdictName(WorstOf(report))},
                      {"verdicts", Verdicts(report)},
                      {"sound", Sound(report.sound, report.detecting)},
                      {"level", Level(report.sound)},
                      {"recorder", Recorder(report)},
                      {"threshold", Rounded(report.threshold.raw, 1)},
                      {"threshold_db", OrNull(report.threshold.db, 1)},
                      {"noise", Rounded(report.noise.raw, 1)},
                      {"noise_db", OrNull(report.noise.db, 1)},
                      {"strikes", JsonOf(report.strikes)},
                      {"paired", JsonOf(report.pairs)},
                      {"located", JsonOf(report.located)},
                      {"peers", Peers(report)},
                      {"lines_dropped", JsonOf(report.linesDropped)},
                      {"publication",
                       {{"last", report.published ? Json(GeneralDate(*report.published)) : Json(nullptr)},
                        {"last_s", report.published ? Json(report.publishedAgo) : Json(nullptr)}}},
                      {"disk_free_bytes", report.disk ? Json(report.disk->free) : Json(nullptr)},
                      {"disk_size_bytes", report.disk ? Json(report.disk->total) : Json(nullptr)},
                      {"clock_synchronised", OrNull(report.clockSynchronised)},
                      {"errors", report.errors}};
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace veltrix
