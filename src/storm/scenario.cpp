#include "storm/scenario.h"

#define SI_NO_CONVERSION   // bytes pass through as they are
#define SI_IMPLEMENTATION  // the templates themselves, so that no library is needed at run time
#include <SimpleIni.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "common/failure.h"
#include "common/letter_case.h"

namespace veltrix {

namespace {

/// A number of a cell or a station: its key, where it goes, its range, and its value where the key may be
/// left out.
template <typename Part>
struct NumberKey {
    const char* key;
    double Part::*member;
    double least;
    double greatest;
    std::optional<double> preset = {};
};

// The greatest clock error, noise and strength are far beyond real ones, and keep every sum within a float's
// reach.
constexpr NumberKey<StormCell> CellKeys[] = {
    {"latitude", &StormCell::latitude, -90, 90},    {"longitude", &StormCell::longitude, -180, 180},
    {"radius", &StormCell::radius, 0, 2000},        {"rate", &StormCell::rate, 0, 600},
    {"strength", &StormCell::strength, 1, 1e6},     {"spread", &StormCell::spread, 0, 20, 4.0},
    {"speed", &StormCell::speed, 0, 200, 0.0},      {"direction", &StormCell::direction, 0, 360, 0.0},
    {"period", &StormCell::period, 0.1, 1000, 6.0},
};

constexpr NumberKey<StormStation> StationKeys[] = {
    {"latitude", &StormStation::latitude, -90, 90},
    {"longitude", &StormStation::longitude, -180, 180},
    {"bearing_error", &StormStation::bearingError, -180, 180, 0.0},
    {"noise", &StormStation::noise, 0, 10000, 70.0},
    {"hum", &StormStation::hum, 0, 32000, 0.0},
    {"hum_frequency", &StormStation::humFrequency, 1, 1000, 50.0},
    {"clock_error", &StormStation::clockError, -1000, 1000, 0.0},
};

constexpr std::size_t MostParts = 50;
constexpr std::size_t LongestName = 32;
constexpr std::uintmax_t LargestFile = 1 << 20;

/// A damaged file may have line ends inside a name; the refusal is one line all the same.
[[noreturn]] void Refuse(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    throw Failure(errors::InvalidCall, text, "storm");
}

std::string Brief(double value) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

/// The scenario file while it is read. Every refusal names the file, the section and the key.
class Reader {
  public:
    Reader(std::string_view text, std::string_view name) : name_(name), ini_(true) {
        ini_.LoadData(std::string(text));
    }

    Scenario Read() {
        Scenario scenario;
        scenario.name = name_;
        bool hasHead = false;
        CSimpleIniA::TNamesDepend sections;
        ini_.GetAllSections(sections);
        sections.sort(CSimpleIniA::Entry::LoadOrder());
        for (const CSimpleIniA::Entry& entry : sections) {
            section_ = entry.pItem;
            if (EqualIgnoringCase(section_, "storm")) {
                hasHead = true;
                ReadHead(scenario);
            } else if (IsKind("cell ")) {
                scenario.cells.push_back(Part<StormCell>(CellKeys));
            } else if (IsKind("station ")) {
                scenario.stations.push_back(Part<StormStation>(StationKeys));
            } else if (section_.empty()) {
                CSimpleIniA::TNamesDepend keys;
                ini_.GetAllKeys("", keys);
                if (!keys.empty())
                    Refuse(name_ + ": " + keys.front().pItem + ": stands before the first section");
            } else {
                Refuse(Where() + "unknown section; known are [storm], [cell NAME] and [station NAME]");
            }
        }
        if (!hasHead) Refuse(name_ + ": [storm] is missing");
        CheckParts("cell", scenario.cells);
        CheckParts("station", scenario.stations);
        return scenario;
    }

  private:
    bool IsKind(std::string_view kind) const {
        return EqualIgnoringCase(std::string_view(section_).substr(0, kind.size()), kind);
    }

    std::string Where() const { return name_ + ": [" + section_ + "]: "; }
    std::string Where(std::string_view key) const {
        return name_ + ": [" + section_ + "] " + std::string(key) + ": ";
    }

    std::optional<std::string> Value(const char* key) const {
        const char* const value = ini_.GetValue(section_.c_str(), key);
        if (value == nullptr) return {};
        return value;
    }

    std::string Needed(const char* key) const {
        const std::optional<std::string> value = Value(key);
        if (!value || value->empty()) Refuse(Where(key) + "is missing");
        return *value;
    }

    template <typename IsKnown>
    void RefuseUnknownKeys(IsKnown&& isKnown) const {
        CSimpleIniA::TNamesDepend keys;
        ini_.GetAllKeys(section_.c_str(), keys);
        for (const CSimpleIniA::Entry& key : keys)
            if (!isKnown(std::string_view(key.pItem))) Refuse(Where(key.pItem) + "unknown key");
    }

    void ReadHead(Scenario& scenario) const {
        RefuseUnknownKeys([](std::string_view key) {
            return EqualIgnoringCase(key, "seed") || EqualIgnoringCase(key, "start");
        });
        const std::string seed = Needed("seed");
        const char* const end = seed.data() + seed.size();
        const auto read = std::from_chars(seed.data(), end, scenario.seed);
        if (read.ec != std::errc() || read.ptr != end)
            Refuse(Where("seed") + "'" + seed + "' is no whole number from 0 to 18446744073709551615");
        const std::string start = Needed("start");
        const std::optional<UtcTime> time = ParseUtc(start);
        if (!time) Refuse(Where("start") + "'" + start + "' is no stamp like 2024-01-01T00:00:00Z");
        scenario.start = *time;
    }

    template <typename PartType, std::size_t Size>
    PartType Part(const NumberKey<PartType> (&keys)[Size]) const {
        RefuseUnknownKeys([&keys](std::string_view key) {
            return std::ranges::any_of(
                keys, [key](const auto& known) { return EqualIgnoringCase(key, known.key); });
        });
        PartType part;
        part.name = PartName();
        for (const NumberKey<PartType>& key : keys) part.*key.member = Number(key);
        return part;
    }

    /// The name behind "cell " or "station ". It becomes part of a column's title, so its characters are few.
    std::string PartName() const {
        std::string name = section_.substr(section_.find_first_not_of(' ', section_.find(' ')));
        const bool isPlain = std::ranges::all_of(name, [](char c) {
            return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' ' ||
                   c == '-' || c == '_';
        });
        if (!isPlain || name.size() > LongestName)
            Refuse(Where() + "a name has up to 32 letters, digits, blanks, - and _");
        return name;
    }

    template <typename PartType>
    double Number(const NumberKey<PartType>& key) const {
        if (key.preset && !Value(key.key)) return *key.preset;
        const std::string text = Needed(key.key);
        const char* const end = text.data() + text.size();
        double value = 0;
        const auto read = std::from_chars(text.data(), end, value);
        if (read.ec != std::errc() || read.ptr != end) Refuse(Where(key.key) + "'" + text + "' is no number");
        if (!(value >= key.least && value <= key.greatest))
            Refuse(Where(key.key) + text + " is outside " + Brief(key.least) + " to " + Brief(key.greatest));
        return value;
    }

    template <typename PartType>
    void CheckParts(const std::string& kind, const std::vector<PartType>& parts) const {
        if (parts.empty()) Refuse(name_ + ": [" + kind + " NAME] is missing");
        if (parts.size() > MostParts) Refuse(name_ + ": more than 50 [" + kind + " NAME] sections");
    }

    std::string name_;
    CSimpleIniA ini_;
    std::string section_;
};

}  // namespace

std::size_t Scenario::StationIndex(std::string_view station) const {
    if (station.empty()) return 0;
    std::string names;
    for (std::size_t i = 0; i < stations.size(); ++i) {
        if (EqualIgnoringCase(stations[i].name, station)) return i;
        names += (i == 0 ? "" : ", ") + stations[i].name;
    }
    Refuse(name + ": no station '" + std::string(station) + "'; there are: " + names);
}

Scenario ParseScenario(std::string_view text, std::string_view name) {
    return Reader(text, name).Read();
}

Scenario LoadScenario(const std::string& name) {
    std::error_code ignored;
    const bool isFolder = std::filesystem::is_directory(name, ignored);
    if (isFolder || !std::filesystem::exists(name, ignored)) {
        if (const std::optional<std::string_view> text = BuiltInScenario(name))
            return ParseScenario(*text, name);
    }
    if (!std::filesystem::exists(name, ignored))
        throw Failure(errors::FileNotFound, name + ": no such scenario file; built in: " + BuiltInNames(),
                      "storm");
    std::ifstream file(name, std::ios::binary);
    if (!file || isFolder)
        throw Failure(errors::PermissionDenied, name + ": cannot be read as a scenario file", "storm");
    if (std::filesystem::file_size(name, ignored) > LargestFile)
        Refuse(name + ": too large for a scenario file");
    return ParseScenario(std::string(std::istreambuf_iterator<char>(file), {}), name);
}

}  // namespace veltrix
