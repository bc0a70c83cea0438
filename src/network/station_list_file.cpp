#include "network/station_list_file.h"

#include <algorithm>
#include <array>
#include <functional>
#include <tuple>
#include <vector>

#include "common/arithmetic.h"
#include "common/neutral_text.h"
#include "common/one_line.h"
#include "common/split_by_pattern.h"
#include "common/trimmed.h"
#include "network/station_record.h"

namespace veltrix {

namespace {

constexpr std::string_view FileName = "StationList.dat";
constexpr std::string_view Separator = "; ";
constexpr DateTime HalfAnHour = 30.0 / 1440;

std::string PadRight(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

/// A number in a column that also has room for a minus sign.
std::string FormatColumn(double value, std::string_view mask) {
    const std::string text = (value >= 0 ? " " : "") + FormatNeutral(value, mask);
    return PadRight(text, mask.size());
}

DateTime StampOrNone(std::string_view text) {
    std::string stamp(text);
    try {
        return ParseStamp(stamp);
    } catch (const Failure&) {
        return 0;
    }
}

/// How a row is written in a column, and how what stands there is read back.
struct Column {
    std::function<std::string(const ClassMapper&)> write;
    std::function<void(ClassMapper&, std::string_view)> read;
    bool asWideAsLongest = false;
    std::size_t width = 0;  ///< at least
};

Column TextColumn(std::string ClassMapper::*field) {
    return {[field](const ClassMapper& row) { return OnOneLine(row.*field); },
            [field](ClassMapper& row, std::string_view text) { row.*field = text; }, true};
}

/// The label is made anew with every save.
Column LabelColumn() {
    Column column = TextColumn(&ClassMapper::sLocalName);
    column.asWideAsLongest = false;
    return column;
}

Column SeenAddressColumn() {
    Column column = TextColumn(&ClassMapper::sRemoteIP);
    column.asWideAsLongest = false;
    column.width = 15;
    return column;
}

std::string Placed(const ClassMapper& row, double coordinate, std::string_view mask) {
    return FormatColumn(row.MapperActive() ? coordinate : 0, mask);
}

const std::array<Column, 12>& Columns() {
    static const std::array<Column, 12> all = {
        LabelColumn(),
        Column{[](const ClassMapper& row) { return Placed(row, row.Longitude, "000.00000"); },
               [](ClassMapper& row, std::string_view text) {
                   row.RemoteX = ValNeutral(text);
                   row.Longitude = row.RemoteX;
               }},
        Column{[](const ClassMapper& row) { return Placed(row, row.Latitude, "00.00000"); },
               [](ClassMapper& row, std::string_view text) { row.Latitude = ValNeutral(text); }},
        TextColumn(&ClassMapper::MapFilenamePicture4),
        TextColumn(&ClassMapper::pSDdat),
        TextColumn(&ClassMapper::sIP),
        TextColumn(&ClassMapper::sRemoteName),
        Column{[](const ClassMapper& row) { return FormatColumn(row.dCorrectionAngle, "00.00"); },
               [](ClassMapper& row, std::string_view text) { row.dCorrectionAngle = ValNeutral(text); }},
        // Written, but deliberately never read back.
        Column{[](const ClassMapper& row) { return FormatColumn(row.dBalance, "0.00"); },
               [](ClassMapper& row, std::string_view) { row.dBalance = 1; }},
        Column{
            [](const ClassMapper& row) { return FormatColumn(IntegerPart(row.Corr.dPreDrift), "0000000"); },
            [](ClassMapper& row, std::string_view text) {
                row.Corr.SetPreDrift(std::clamp(ValNeutral(text), -ClassCorrelator::FarthestPreDrift,
                                                ClassCorrelator::FarthestPreDrift));
                row.Corr.TOAMedian.Start(ClassCorrelator::TOAMedianLength);
            }},
        Column{[](const ClassMapper& row) { return FormatDate(row.dLastHeared, "YYYY/MM/DD HH:MM:SS"); },
               [](ClassMapper& row, std::string_view text) { row.dLastHeared = StampOrNone(text); }},
        SeenAddressColumn(),
    };
    return all;
}

/// Cuts the next token off `rest`. Each may end with either separator; `isLast` when there is none.
struct Token {
    std::string text;
    std::string rest;
    bool isLast = false;
};

Token CutToken(const std::string& text) {
    for (const std::string_view pattern : {"*;*", "*,*"})
        if (PatternFields fields = SplitByPattern(text, pattern); fields.matched)
            return {std::move(fields.field[0]), std::move(fields.field[1])};
    return {text, {}, true};
}

std::string LabelOf(int row) {
    return "Station " + FormatNeutral(row, "00");
}

}  // namespace

void StationListFile::StationListGet(const std::function<void(std::int16_t row)>& moved) {
    if (!files_.Exists(FileName)) return;
    std::vector<std::string> lines;
    UnderErrorConvention(
        errors_, "StationListGet",
        [&] {
            // Before the reading, so that an edit while we read is seen as one.
            files_.ClearArchive(FileName);
            bUnread_ = true;
            lines = files_.ReadLines(FileName);
            bUnread_ = false;
        },
        [&] {
            if (lines.size() > C_NUMBEROFMAPPERS) lines.resize(C_NUMBEROFMAPPERS);
            std::int16_t index = 0;
            for (const std::string& line : lines) {
                ClassMapper& row = mappers_[++index];
                const auto calibrated = [&row] {
                    return std::tuple(row.Longitude, row.Latitude, row.pSDdat);
                };
                const auto before = calibrated();
                row.dCorrectionAngle = 0;
                row.dBalance = 1;
                TakeLine(row, line);
                if (row.MapperActive() && calibrated() != before) moved(index);
                if (row.dLastHeared == 0) row.dLastHeared = clock_.Now() - HalfAnHour;
                if (row.Picture7) row.Picture7->SetVisible(row.MapperActive());
            }
        });
}

void StationListFile::TakeLine(ClassMapper& row, std::string_view line) {
    constexpr std::size_t NameColumn = 6;
    Token token{{}, std::string(line)};
    for (std::size_t i = 0; i < Columns().size() && !token.isLast; ++i) {
        token = CutToken(token.rest);
        Columns()[i].read(row, Trimmed(token.text));
        if (i == NameColumn) CheckRow(row);
    }
}

void StationListFile::CheckRow(ClassMapper& row) const {
    if (row.sRemoteName == "0" || !ValidLongitude(row.Longitude) || !ValidLatitude(row.Latitude))
        row.RemoteX = 0;
    if (row.MapperActive()) return;
    row.sIP = "0.0.0.0";
    row.sRemoteName.clear();
}

bool StationListFile::IsEdited() {
    return files_.HasArchive(FileName);
}

void StationListFile::StationListSave() {
    if (bUnread_) return;
    UnderErrorConvention(errors_, "StationListSave", [&] {
        files_.WriteWhole(FileName, Table());
        files_.ClearArchive(FileName);
    });
}

std::string StationListFile::Table() {
    std::vector<std::array<std::string, 12>> cells;
    std::array<std::size_t, 12> widths{};
    for (int i = 1; i <= C_NUMBEROFMAPPERS; ++i) {
        ClassMapper& row = mappers_[i];
        row.sLocalName = LabelOf(i);
        if (Trimmed(row.MapFilenamePicture4).empty()) row.MapFilenamePicture4 = DefaultMap;
        if (IsAddressNumeric(row.sIP)) row.sRemoteIP.clear();
        auto& line = cells.emplace_back();
        for (std::size_t column = 0; column < line.size(); ++column) {
            const Column& design = Columns()[column];
            line[column] = design.write(row);
            widths[column] = std::max({widths[column], design.width,
                                       design.asWideAsLongest ? line[column].size() : std::size_t{0}});
        }
    }
    std::string table;
    for (auto& line : cells) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            if (column > 0) table += Separator;
            table += PadRight(std::move(line[column]), widths[column]);
        }
        table += '\n';
    }
    return table;
}

}  // namespace veltrix
