#include "network/ping.h"

#include "common/neutral_text.h"
#include "common/split_by_pattern.h"
#include "network/capability.h"
#include "network/wire_text.h"

namespace veltrix {

namespace {

constexpr std::int16_t TicksPerPing = 5;
constexpr double QuietMinutes = 25;
constexpr int FirstLocalPort = 24711;
constexpr std::int16_t LocalPorts = 10;
constexpr int WaitForClose = 100;        // ms
constexpr int LeastBetweenWaits = 1000;  // ms
constexpr int LongestSilence = 2000;     // ms
constexpr ColourValue Waiting = Rgb(0, 0, 255);

}  // namespace

Ping::Ping(const Parts& parts)
    : parts_(parts), sckPing(*parts.sockets.sckPing), stopwatch_(parts.clock), sinceWait_(parts.clock) {
    sckPing.OnDataArrival = [this] { sckPing_DataArrival(); };
}

void Ping::PingTick() {
    iTick_ = static_cast<std::int16_t>((iTick_ + 1) % TicksPerPing);
    if (iTick_ != 0) return;
    const auto isQuiet = [this](const ClassMapper& row) {
        return row.MapperActive() && !row.HearedFromSince(QuietMinutes, parts_.clock.Now());
    };
    // When none is quiet the search comes round to where it began.
    for (int i = 0; i < C_NUMBEROFMAPPERS; ++i) {
        iRow_ = static_cast<std::int16_t>(iRow_ % C_NUMBEROFMAPPERS + 1);
        if (isQuiet(parts_.list.Rows()[iRow_])) break;
    }
    const std::string sIP = parts_.list.Rows()[iRow_].sIP;
    ShowPing(sIP);
    StationListPingUpdate(sIP);
}

void Ping::ShowPing(const std::string& address) {
    if (!sLastPing_.empty() && !parts_.list.KnownStation(address)) parts_.txtBadPing.SetText(sLastPing_);
    Show(address);
    parts_.txtLastPing.SetBackColor(Waiting);
}

void Ping::Show(const std::string& target) {
    sLastPing_ = target;
    parts_.txtLastPing.SetText(target);
}

std::int16_t Ping::StationListPingUpdate(const std::string& sIP) {
    if (sckPing.State() != SocketState::Closed) {
        sckPing.Close();
        // Peers can make pings follow each other at will; they must not make the program stand still.
        if (sinceWait_.ElapsedTime() > LeastBetweenWaits) {
            parts_.loop.Sleep(WaitForClose);
            sinceWait_.Reset();
        }
    }
    iLocalPort_ = static_cast<std::int16_t>((iLocalPort_ + 1) % LocalPorts);
    sckPing.LocalPort = FirstLocalPort + iLocalPort_;
    sckPing.Connect(sIP, StationPort);
    sLastPing_ = sIP;
    stopwatch_.Reset();
    const std::int16_t row = parts_.list.RowOf("", sIP, 0, 0);
    if (row != NoRow) Show(std::to_string(row) + " " + parts_.list.Rows()[row].sRemoteName);
    return row;
}

void Ping::CloseStalePing() {
    if (sckPing.State() != SocketState::Closed && stopwatch_.ElapsedTime() > LongestSilence) sckPing.Close();
}

void Ping::sckPing_DataArrival() {
    bool bAnswered = false;
    UnderErrorConvention(
        parts_.errors, "sckPing_DataArrival",
        [&] {
            if (sckPing.BytesReceived() == 0) return;
            bAnswered = true;
            const std::string text = sckPing.GetData();
            const std::string sLocalIP = sckPing.LocalIP();
            sckPing.Close();
            TakeAnswer(text, sLocalIP);
        },
        [&] {
            if (!bAnswered) return;
            parts_.txtLastPing.SetBackColor(White);
            sLastPing_.clear();
        });
}

void Ping::TakeAnswer(const std::string& text, const std::string& sLocalIP) {
    const PatternFields fields = SplitByPattern(text, GreetingPattern);
    if (!fields.matched) {
        // Any answer is a sign of life.
        if (const std::int16_t row = parts_.list.StationGet(sckPing.RemoteHostIP()); row >= 1)
            parts_.list.Heard(row);
        return;
    }
    ParsedStation parsed = ParseGreeting(fields.field);
    if (!parsed.bValid) return;
    parsed.record.sIP = sckPing.RemoteHostIP();
    parsed.record.sRemoteIP = parsed.record.sIP;
    parsed.record.sLocalIP = sLocalIP;
    const std::int16_t row =
        parts_.list.StationListUpdateRemote(fields.field, parsed.record.sIP, parsed.record.sLocalIP);
    if (StationList::StationListIndexValid(row)) TakeGreeting(row, parsed.record, text);
}

void Ping::TakeGreeting(std::int16_t row, const Station& record, const std::string& text) {
    parts_.list.Heard(row);
    ClassMapper& station = parts_.list.Rows()[row];
    station.dClock = record.dClock;
    parts_.receivers.DrawMark(row);
    parts_.online.Update(record.sStationName, record.sIP, GeneralNumber(record.dLongitude),
                         GeneralNumber(record.dLatitude));
    parts_.online.Display(parts_.lstOnline);
    parts_.presence.UpdateStationColors();
    station.tCapability = ParseMarks(text, station.tCapability);
}

}  // namespace veltrix
