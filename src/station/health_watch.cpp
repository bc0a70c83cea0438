#include "station/health_watch.h"

#include <exception>
#include <utility>

#include "health/foreign_text.h"
#include "health/health_json.h"
#include "health/health_prometheus.h"
#include "network/station_sockets.h"

namespace veltrix {

namespace {

constexpr int TickMilliseconds = 1000;
constexpr std::int64_t WriteInterval = 60'000;
constexpr std::int64_t LookInterval = 10'000;  // a disk far away may answer slowly
constexpr std::string_view RecorderFile = "SndInput.state";

DetectionLevel LevelOf(double raw) {
    if (raw <= 0) return {raw, std::nullopt};
    return {raw, -DecibelsBelowReference(raw)};
}

/// How much a counter of another part has grown. One that went back has begun anew.
std::uint32_t GrowthOf(std::uint64_t& seen, std::uint64_t now) {
    const std::uint64_t before = std::exchange(seen, now);
    return static_cast<std::uint32_t>(now >= before ? now - before : now);
}

}  // namespace

HealthWatch::HealthWatch(Parts parts)
    : parts_(std::move(parts)),
      time_(parts_.platform.clock),
      started_(parts_.platform.clock.Now()),
      timer_(parts_.platform.loop.MakeTimer([this] { Tick(); })) {
    timer_->SetInterval(TickMilliseconds);
    for (std::size_t i = 0; i < labels_.size(); ++i) labels_[i] = &parts_.controls.Caption(StatusLabels[i]);
}

void HealthWatch::Start() {
    timer_->SetEnabled(true);
}

void HealthWatch::Stop() {
    timer_->SetEnabled(false);
    HealthReport report = Gather();
    report.running = false;
    Write(report);
}

/// Whoever watches must not disturb: whatever fails here, the next second tries again.
void HealthWatch::Tick() try {
    const HealthReport report = Gather();
    Show(report);
    const std::int64_t now = time_.Now();
    if (now < nextWrite_) return;
    nextWrite_ = now + WriteInterval;
    Write(report);
} catch (const std::exception&) {
}

HealthReport HealthWatch::Gather() {
    const std::int64_t now = time_.Now();
    const std::int64_t second = now / 1000;
    for (RateCounter* const counter : {&parts_.delivery.strikeCount, &parts_.matching.pairCount,
                                       &parts_.matching.locatedCount, &framesLost_, &linesDropped_})
        counter->Advance(second);
    HealthReport report;
    report.version = parts_.version;
    report.station = CleanUtf8(parts_.network.mappers.Local().sRemoteName);
    report.time = parts_.platform.clock.Now();
    report.started = started_;
    report.uptime = second;
    report.sound = parts_.tick.sound.State();
    report.detecting = detecting_;
    GatherRecorder(report, now);
    report.threshold = LevelOf(parts_.noise.lThreshold);
    report.noise = LevelOf(parts_.noise.DNoiseLevel());
    report.strikes = Rates(parts_.delivery.strikeCount);
    report.pairs = Rates(parts_.matching.pairCount);
    report.located = Rates(parts_.matching.locatedCount);
    GatherPeers(report);
    report.published = parts_.publishing.LastPublished();
    if (report.published != published_) publishedAt_ = now;
    published_ = report.published;
    report.publishedAgo = (now - publishedAt_) / 1000;
    GatherComputer(report, now);
    report.errors = parts_.errors.Reported();
    return report;
}

void HealthWatch::GatherRecorder(HealthReport& report, std::int64_t now) {
    report.recorder =
        recorderFile_.Read(parts_.platform.files, parts_.recorderFolder() + std::string(RecorderFile), now);
    if (report.recorder && report.recorder->framesLost) {
        // What was lost before this station began is not its loss.
        const bool isFirst = !std::exchange(bRecorderSeen_, true);
        const std::uint32_t growth = GrowthOf(framesLostSeen_, *report.recorder->framesLost);
        if (!isFirst) framesLost_.Count(growth);
    }
    report.framesLostHour = framesLost_.LastHour();
}

void HealthWatch::GatherPeers(HealthReport& report) {
    const StationSockets& sockets = parts_.network.sockets;
    std::uint64_t dropped = parts_.network.sender.DroppedLines() + sockets.sckLink->Dropped;
    for (int i = 0; i < ServerSockets; ++i) {
        const Socket& socket = *sockets.sckServer[static_cast<std::size_t>(i)];
        dropped += socket.Dropped;
        if (i != ListenIndex && socket.State() != SocketState::Closed)
            report.peers.push_back(PeerOf(socket, false, i));
    }
    for (int i = 0; i < ClientSockets; ++i) {
        const Socket& socket = *sockets.sckClient[static_cast<std::size_t>(i)];
        dropped += socket.Dropped;
        const ClassMapper* const row = RowOf(socket);
        const bool isWanted =
            row && row->MapperActive() && !row->sIP.empty() && !parts_.network.client.IsHeld();
        if (isWanted || socket.State() == SocketState::Connected)
            report.peers.push_back(PeerOf(socket, true, i));
    }
    linesDropped_.Count(GrowthOf(linesDroppedSeen_, dropped));
    report.linesDropped = Rates(linesDropped_);
}

/// The station of the list that a socket is tied to, or null.
const ClassMapper* HealthWatch::RowOf(const Socket& socket) {
    const ClassMapper* row = nullptr;
    SkippingErrors([&] {
        if (!socket.Tag.empty()) row = &parts_.network.mappers[RowOfTag(socket.Tag)];
    });
    return row;
}

PeerHealth HealthWatch::PeerOf(const Socket& socket, bool isClient, int index) {
    PeerHealth peer;
    peer.isClient = isClient;
    peer.socket = index;
    if (const ClassMapper* const row = RowOf(socket)) peer.station = CleanUtf8(row->sRemoteName);
    peer.address = CleanUtf8(socket.RemoteHostIP().empty() ? socket.RemoteHost : socket.RemoteHostIP());
    peer.state = static_cast<int>(socket.State());
    peer.stateText = SocketStateText(socket.State());
    return peer;
}

void HealthWatch::GatherComputer(HealthReport& report, std::int64_t now) {
    if (now >= nextLook_) {
        nextLook_ = now + LookInterval;
        disk_ = parts_.platform.computer.Space();
        clockSynchronised_ = parts_.platform.computer.IsClockSynchronised();
    }
    report.disk = disk_;
    report.clockSynchronised = clockSynchronised_;
}

void HealthWatch::Show(const HealthReport& report) {
    const auto cells = StatusCells(report);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        labels_[i]->SetCaption(cells[i].text);
        labels_[i]->SetToolTipText(cells[i].toolTip);
        labels_[i]->SetForeColor(VerdictColour(cells[i].verdict));
    }
}

/// A disk that is full or cannot be written to is no matter for the error log: the next minute tries again.
void HealthWatch::Write(const HealthReport& report) {
    try {
        parts_.platform.files.WriteWhole("stats.json", HealthJson(report));
        parts_.platform.files.WriteWhole("stats.prom", HealthPrometheus(report));
        cannotWrite_ = false;
    } catch (const Failure& failure) {
        // Told once, until it has worked again.
        if (!std::exchange(cannotWrite_, true))
            parts_.warn("the station's figures cannot be written: " + failure.Description() +
                        "; it is tried again every minute");
    }
}

}  // namespace veltrix
