#include "location/recent_data.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/arithmetic.h"
#include "common/neutral_text.h"
#include "location/class_mapper.h"

namespace veltrix {

namespace {

constexpr std::string_view FileName = "pMA.dat";
constexpr std::size_t Fields = 5;

/// The dates that a calendar has: from the first of the year 100 to the end of 9999.
constexpr DateTime FirstDate = -657434;
constexpr DateTime LastDate = 2958466;
constexpr DateTime FarthestAhead = 1;    // days
constexpr double FarthestBearing = 1e6;  // degrees

/// The five fields of a line, or nothing when it has fewer. The last one holds what follows, too.
std::optional<std::array<std::string_view, Fields>> FieldsOf(std::string_view line) {
    std::array<std::string_view, Fields> fields;
    for (std::size_t i = 0; i + 1 < Fields; ++i) {
        const std::size_t end = line.find(';');
        if (end == std::string_view::npos) return std::nullopt;
        fields[i] = line.substr(0, end);
        line.remove_prefix(end + 1);
    }
    fields.back() = line;
    return fields;
}

/// Whether a bearing can be worked with, if need be after some turns.
bool IsBearing(double value) {
    return std::abs(value) <= FarthestBearing;
}

/// The record of a line's fields. Empty when it counts as a fix and nothing can have made it; a clock that
/// was set back accounts for a time that is still to come.
RecentFix FixOf(const std::array<std::string_view, Fields>& fields, DateTime now) {
    const double time = ValNeutral(fields[0]);
    const double mapper = RoundTiesToEven(ValNeutral(fields[3]));
    const double local = ValNeutral(fields[2]);
    const double remote = ValNeutral(fields[4]);
    if (mapper < 0 || mapper > C_NUMBEROFMAPPERS || time < FirstDate ||
        time > std::min(LastDate, now + FarthestAhead) || !IsBearing(local) || !IsBearing(remote))
        return {};
    return {ValNeutral(fields[1]) != 0, local, static_cast<std::int16_t>(mapper), remote,
            time == 0 ? now : time};
}

/// Slot `number` of the ring, counted round it.
std::int16_t SlotOf(double number) {
    const double slot = std::fmod(RoundTiesToEven(number), RecentData::Length);
    return static_cast<std::int16_t>(slot < 0 ? slot + RecentData::Length : slot);
}

}  // namespace

void RecentData::Add(const RecentFix& fix) {
    iRecentHead = SlotOf(iRecentHead + 1);
    slots_[static_cast<std::size_t>(iRecentHead)] = fix;
}

void RecentData::TakeBack() {
    slots_[static_cast<std::size_t>(iRecentHead)] = {};
    iRecentHead = SlotOf(iRecentHead - 1);
}

void RecentData::Clear() {
    slots_.fill({});
    iRecentHead = 0;
}

const RecentFix& RecentData::Slot(int slot) const {
    if (slot < 0 || slot >= Length) throw Failure(errors::OutOfRange, "Subscript out of range", "RecentData");
    return slots_[static_cast<std::size_t>(slot)];
}

void RecentData::LoadpMA(Files& files, DateTime now) {
    if (iRecentHead != 0) return;
    std::vector<std::string> lines;
    try {
        lines = files.ReadLines(FileName);
    } catch (const Failure&) {
        return;
    }
    if (lines.empty()) return;
    iRecentHead = SlotOf(ValNeutral(lines.front()));
    const std::size_t records = std::min(lines.size() - 1, slots_.size());
    for (std::size_t i = 0; i < records; ++i)
        if (const auto fields = FieldsOf(lines[i + 1])) slots_[i] = FixOf(*fields, now);
}

void RecentData::SavepMA(Files& files) const {
    std::string text = std::to_string(iRecentHead) + "\n";
    for (const RecentFix& fix : slots_) {
        text += FormatNeutral(fix.dRecentTime, "0.000000");
        text += fix.bRecentValid ? ";-1;" : ";0;";
        text += FormatNeutral(fix.dRecentDirLocal, "000.00") + ";";
        text += std::to_string(fix.iRecentMapper) + ";";
        text += FormatNeutral(fix.dRecentDirRemote, "000.00") + "\n";
    }
    files.WriteWhole(FileName, text);
}

}  // namespace veltrix
