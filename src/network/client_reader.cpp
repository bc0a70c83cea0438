#include "network/client_reader.h"

#include <algorithm>
#include <cmath>

#include "common/neutral_text.h"
#include "common/split_by_pattern.h"
#include "network/capability.h"
#include "network/station_record.h"

namespace veltrix {

namespace {

/// Degrees and decibels that no antenna gives: a line with such a number is garbage, and its drawing would
/// only raise errors here.
constexpr double BeyondMeasure = 1e6;

/// The character at a place of a line, counted from 1; 0 beyond its end.
char At(std::string_view line, std::size_t place) {
    return place <= line.size() ? line[place - 1] : '\0';
}

bool HasPairedSeparators(std::string_view line) {
    return At(line, 5) == At(line, 8) && At(line, 14) == At(line, 17);
}

}  // namespace

void ClientReader::DataArrival(int index, std::int16_t row, std::string_view buffer) {
    if (bBusy_) return;
    bBusy_ = true;
    UnderErrorConvention(parts_.errors, "DataArrival", [&] { ReadLines(index, row, buffer); });
    bBusy_ = false;
}

void ClientReader::ReadLines(int index, std::int16_t row, std::string_view rest) {
    while (!rest.empty()) {
        // Without a line end the last character is lost: reads are not put together again.
        const std::size_t end = std::min(rest.find(LineEnd), rest.size() - 1);
        const std::string_view line = rest.substr(0, end);
        if (line.starts_with('#'))
            return ReadGreeting(*parts_.sockets.sckClient[static_cast<std::size_t>(index)], row, line);
        if (!ReadDetection(index, row, line)) return;
        rest.remove_prefix(end + 1);
    }
}

/// False when what follows in the same read is to be dropped.
bool ClientReader::ReadDetection(int index, std::int16_t row, std::string_view text) {
    // The first digit of the year.
    if (!text.starts_with('2') || !HasPairedSeparators(text)) return false;
    const std::optional<Line> line = TakeApart(text);
    if (!line) return false;
    HandOn(index, row, *line);
    return ReadTail(*parts_.sockets.sckClient[static_cast<std::size_t>(index)], row, line->tail);
}

std::optional<ClientReader::Line> ClientReader::TakeApart(std::string_view text) {
    PatternFields fields = SplitByPattern(text, DetectionPattern);
    if (!fields.matched) return std::nullopt;
    Line line;
    try {
        line.remoteTime = ParseStamp(fields.field[0]);
    } catch (const Failure&) {
        return std::nullopt;
    }
    line.dDir = ValNeutral(fields.field[1]);
    line.lSampleCount = ValNeutral(fields.field[2]);
    line.dAmp = ValNeutral(fields.field[3]);
    line.tail = std::move(fields.field[4]);
    if (!(std::abs(line.dDir) < BeyondMeasure && std::abs(line.dAmp) < BeyondMeasure)) return std::nullopt;
    return line;
}

void ClientReader::HandOn(int index, std::int16_t row, const Line& line) {
    const bool isSelected = row == parts_.selection.MapperIndex;
    const double difference = line.remoteTime - parts_.clock.Now();
    RemoteDetection detection{row, index, line.dDir, line.dAmp, line.lSampleCount};
    if (isSelected)
        parts_.txtDateRecv.SetText(
            FormatDate(line.remoteTime, "HH:MM:SS") + " " + FormatDate(std::abs(difference), "HH:MM:SS") +
            ", " + FormatNeutral(line.dDir, "000.0") + ", " + FormatNeutral(line.dAmp, "000.0"));
    if (isSelected && parts_.OptionRemoteCWCCW.Checked()) detection.dDir = 180 - detection.dDir;
    if (isSelected && parts_.OptionRemoteShow.Checked() && parts_.receivers.displays)
        parts_.receivers.displays->GyrelUpdate(detection.dDir, detection.dAmp, parts_.limits, Cyan);
    if (parts_.OptionRealTime.Checked())
        detection.dTime = ValNeutral(line.tail.substr(0, line.tail.find(','))) / 10;
    if (parts_.receivers.matching) Locate(detection);
}

void ClientReader::Locate(const RemoteDetection& detection) {
    StrikeFix fix = parts_.receivers.matching->MapUpdate(detection);
    if (parts_.OptionRealTime.Checked()) return;
    const HomeStation home = parts_.home();
    parts_.link.UpdateLink(home.HomeLongitude, home.HomeLatitude, fix.LongitudeLightning,
                           fix.LatitudeLightning, fix.bDoNotPlot);
    if (fix.bLocated && parts_.receivers.alarm)
        parts_.receivers.alarm->Update(ValNeutral(parts_.txtAlarmLatitude.Text()),
                                       ValNeutral(parts_.txtAlarmLongitude.Text()), fix.LatitudeLightning,
                                       fix.LongitudeLightning);
}

/// Position and name at the end of a detection line keep the station's row up to date.
bool ClientReader::ReadTail(const Socket& socket, std::int16_t row, const std::string& tail) {
    const PatternFields fields = SplitByPattern(tail, DetectionTailPattern);
    if (!fields.matched) return true;
    const ParsedStation parsed = ParseDetectionTail(fields.field);
    if (!parsed.bValid) return false;
    const Station& record = parsed.record;
    if (parts_.list.IsStation(row, record.sStationName, socket.RemoteHostIP(), record.dLongitude,
                              record.dLatitude))
        parts_.list.UpdateStation(row, record.sStationName, socket.RemoteHostIP(), record.dLongitude,
                                  record.dLatitude);
    return true;
}

void ClientReader::ReadGreeting(Socket& socket, std::int16_t row, std::string_view text) {
    const PatternFields fields = SplitByPattern(text, GreetingPattern);
    const ParsedStation parsed = fields.matched ? ParseGreeting(fields.field) : ParsedStation{};
    const std::int16_t found = parsed.bValid ? parts_.list.StationListUpdateRemote(
                                                   fields.field, socket.RemoteHostIP(), socket.LocalIP())
                                             : NoRow;
    if (StationList::StationListIndexValid(found)) {
        // The peer may have turned out to be another station than the one that was dialled.
        socket.Tag = std::to_string(found);
        parts_.list.Heard(found);
        parts_.list.Rows()[found].dClock = parsed.record.dClock;
        parts_.receivers.DrawMark(found);
        parts_.list.StationListSave();
    }
    ClassMapper& dialled = parts_.list.Rows()[row];
    dialled.tCapability = ParseMarks(text, dialled.tCapability);
}

}  // namespace veltrix
