#include "location/direction_table.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "common/arithmetic.h"
#include "common/neutral_text.h"

namespace veltrix {

namespace {

constexpr std::string_view Folder = ".\\pSD\\";
constexpr int Around = 5;  // segments searched beyond either end of the table
constexpr double HalfCircle = 180;
constexpr float Step = 10;  // between the points of the identity

/// The 4-byte float nearest to `value`. Raises Overflow when there is none.
float ToSingle(double value) {
    constexpr double Largest = std::numeric_limits<float>::max();
    constexpr double TooLarge = 0x1.ffffffp127;  // half a step above
    if (!(std::abs(value) < TooLarge)) throw Failure(errors::Overflow, "Overflow", "DirectionTable");
    return static_cast<float>(std::clamp(value, -Largest, Largest));
}

/// The five decimals of a coordinate; of a negative one those above the whole degree below it.
std::string DecimalsOf(double coordinate) {
    return FormatNeutral(coordinate - IntegerPart(coordinate), "0.00000").substr(2);
}

/// Does `work`; what fails in it ends it without a word.
template <typename Work>
void EndingQuietly(Work work) {
    try {
        work();
    } catch (const Failure&) {
        return;
    }
}

}  // namespace

std::string pSDFilename(double Longitude, double Latitude) {
    return "pSD" + DecimalsOf(Longitude) + DecimalsOf(Latitude) + ".dat";
}

DirectionTable::DirectionTable(Files& files) : files_(files) {
    Clear();
    points_.back() = {static_cast<float>(HalfCircle), static_cast<float>(HalfCircle)};
}

void DirectionTable::Clear() {
    count_ = Slots - 1;
    for (int i = 0; i < count_; ++i) {
        const float angle = Step * static_cast<float>(i);
        points_[static_cast<std::size_t>(i)] = {angle, angle};
    }
}

const DirectionTable::Point& DirectionTable::PointAt(int slot) const {
    if (slot < 0 || slot >= Slots)
        throw Failure(errors::OutOfRange, "Subscript out of range", "DirectionTable");
    return points_[static_cast<std::size_t>(slot)];
}

/// Point `k` of the table laid end to end along the line, before its start a half circle lower, beyond its
/// end a half circle higher. REQUIRES a point.
DirectionTable::Turned DirectionTable::PointAround(int k) const {
    const Point& point = PointAt(((k % count_) + count_) % count_);
    const double turn = k < 0 ? -HalfCircle : k < count_ ? 0 : HalfCircle;
    return {point.source + turn, point.destination + turn};
}

double DirectionTable::DestinToSource(float sDestin) const {
    const double s = sDestin > HalfCircle ? sDestin - HalfCircle : sDestin;
    if (count_ == 0) return static_cast<float>(s);
    double source = 0;
    Turned before = PointAround(-Around - 1);
    for (int i = -Around; i <= count_ + Around; ++i) {
        const Turned point = PointAround(i);
        if (before.destination < s && s <= point.destination) {
            const double t = (s - before.destination) / (point.destination - before.destination);
            source = ToSingle(before.source + (point.source - before.source) * t);
            break;
        }
        before = point;
    }
    const double turn = std::abs(sDestin - source);
    return turn > 90 && turn < 270 ? ToSingle(source + HalfCircle) : source;
}

void DirectionTable::Init(double Longitude, double Latitude, std::string& pSDdat) {
    Clear();
    EndingQuietly([&] {
        const std::string name = pSDFilename(Longitude, Latitude);
        const std::string path = std::string(Folder) + name;
        const bool isPlaced = Longitude != 0 && Latitude != 0;
        std::string chosen = path;
        if (!(isPlaced && files_.Exists(path)) && files_.Exists(pSDdat)) {
            if (isPlaced)
                files_.Copy(pSDdat, path);
            else
                chosen = pSDdat;
        }
        pSDdat = chosen;
        if (files_.Exists(name) && files_.Exists(path)) files_.Delete(name);
        if (files_.Exists(chosen)) Load(chosen);
    });
}

void DirectionTable::pSD_Restore(std::string_view pSDFile) {
    Clear();
    EndingQuietly([&] { Load(pSDFile); });
}

/// Points are stored one by one. When one of them fails, those before it stay, neither counted nor sorted.
void DirectionTable::Load(std::string_view name) {
    int read = 0;
    for (const std::string& text : files_.ReadLines(name)) {
        const std::string_view line = text;
        const std::size_t semicolon = line.find(';');
        const std::size_t separator = semicolon != std::string_view::npos ? semicolon : line.find(',');
        if (separator == std::string_view::npos)
            throw Failure(errors::InvalidCall, "Invalid procedure call", "Load");
        if (read == Slots) throw Failure(errors::OutOfRange, "Subscript out of range", "Load");
        points_[static_cast<std::size_t>(read++)] = {ToSingle(ValNeutral(line.substr(0, separator))),
                                                     ToSingle(ValNeutral(line.substr(separator + 1)))};
    }
    count_ = static_cast<std::int16_t>(read);
    Sort();
}

void DirectionTable::Sort() {
    std::stable_sort(points_.begin(), points_.begin() + count_,
                     [](const Point& one, const Point& other) { return one.source < other.source; });
}

void DirectionTable::pSD_Backup(std::string_view pSDFile) const {
    EndingQuietly([&] {
        std::string text;
        for (int i = 0; i < count_; ++i)
            text += GeneralSingle(CTSource(i)) + ";" + GeneralSingle(CTDestion(i)) + "\n";
        files_.WriteWhole(pSDFile, text);
    });
}

void DirectionTable::Save(std::string_view pSDdat) const {
    if (bSDDirty && !pSDdat.empty()) pSD_Backup(pSDdat);
}

double DirectionTable::UpdatepSD(double dCentreAngle, double /*dApertureAngle*/, double dCorrectionAngle,
                                 double dOutputAngle) {
    const double c = IntegerPart(dCentreAngle);
    double sum = 0;
    for (int i = 0; i < count_; ++i) {
        Point& point = points_[static_cast<std::size_t>(i)];
        const double d = point.source;
        if (d >= 0 && d < HalfCircle && d == IntegerPart(d)) {
            const double w = (std::cos((d - c) * 2 * std::numbers::pi / HalfCircle) + 1) / 2;
            point.destination = ToSingle(point.destination - w * dCorrectionAngle);
        }
        sum += point.destination - d;
    }
    const double m = Divide(sum, count_);
    for (int i = 0; i < count_; ++i) {
        float& destination = points_[static_cast<std::size_t>(i)].destination;
        destination = ToSingle(destination - m);
    }
    bSDDirty = true;
    return dOutputAngle + m;
}

}  // namespace veltrix
