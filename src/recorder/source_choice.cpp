#include "recorder/source_choice.h"

#define SI_NO_CONVERSION   // bytes pass through as they are
#define SI_IMPLEMENTATION  // the templates themselves, so that no library is needed at run time
#include <SimpleIni.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fstream>
#include <iterator>

#include "common/letter_case.h"

#include "recorder/recorder_options.h"
#include "recorder/resampler.h"

namespace veltrix {

namespace {

constexpr std::string_view KnownKeys[] = {"source", "device", "rate", "speed", "loop", "wait", "idle"};
constexpr double LongestIdle = 86400;  // s

/// Takes what stands before `sign` off the front of `rest`, and the sign, too.
std::string_view TakeUpTo(char sign, std::string_view& rest) {
    const std::size_t end = rest.find(sign);
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return part;
}

void CheckKey(const std::string& key, const std::string& where) {
    if (std::ranges::find(KnownKeys, key) == std::end(KnownKeys))
        throw WrongRecorderOption{where + ": unknown key '" + key +
                                  "'; known are source, device, rate, speed, loop, wait and idle"};
}

std::chrono::milliseconds IdleOf(const std::string& text) {
    double seconds = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, seconds);
    if (read.ec != std::errc() || read.ptr != end || !(seconds >= 1 && seconds <= LongestIdle))
        throw WrongRecorderOption{"idle=" + text + ": seconds, 1 to 86400"};
    return std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000));
}

int RateOf(const std::string& text) {
    int rate = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, rate);
    if (read.ec != std::errc() || read.ptr != end || rate < Resampler::LeastRate ||
        rate > Resampler::LargestRate)
        throw WrongRecorderOption{"rate=" + text + ": frames a second, 4000 to 768000"};
    return rate;
}

bool IsYes(const std::string& key, const std::string& text) {
    if (LowerCase(text) == "yes") return true;
    if (text.empty() || LowerCase(text) == "no") return false;
    throw WrongRecorderOption{key + "=" + text + ": yes or no"};
}

bool IsFullSpeed(const std::string& text) {
    if (LowerCase(text) == "max") return true;
    if (text == "1") return false;
    throw WrongRecorderOption{"speed=" + text + ": 1 or max"};
}

void ReadKindAndName(std::string_view source, SourceChoice& choice) {
    std::string_view name = source;
    const std::string kind = LowerCase(TakeUpTo(':', name));
    if (kind == "card" && name.empty()) {
        choice.kind = SourceChoice::Kind::Card;
        return;
    }
    if ((kind != "file" && kind != "storm") || name.empty())
        throw WrongRecorderOption{"source '" + std::string(source) +
                                  "' is none of card, file:NAME, storm:NAME and storm:NAME,STATION"};
    choice.kind = kind == "file" ? SourceChoice::Kind::File : SourceChoice::Kind::Storm;
    std::error_code ignored;
    const std::size_t comma = name.rfind(',');
    if (kind == "storm" && comma != std::string_view::npos && !std::filesystem::exists(name, ignored)) {
        choice.station = name.substr(comma + 1);
        name = name.substr(0, comma);
    }
    choice.name = name;
}

}  // namespace

RecorderIni ParseRecorderIni(std::string_view text, std::string_view name) {
    CSimpleIniA file;
    file.LoadData(std::string(text));
    RecorderIni ini;
    for (const char* const section : {"", "SndInput"}) {
        CSimpleIniA::TNamesDepend keys;
        file.GetAllKeys(section, keys);
        for (const CSimpleIniA::Entry& entry : keys) {
            const std::string key = LowerCase(entry.pItem);
            CheckKey(key, std::string(name));
            ini[key] = file.GetValue(section, entry.pItem);
        }
    }
    return ini;
}

RecorderIni LoadRecorderIni(const std::vector<std::filesystem::path>& folders) {
    for (const std::filesystem::path& folder : folders) {
        const std::filesystem::path name = folder / "SndInput.ini";
        std::ifstream file(name, std::ios::binary);
        if (file)
            return ParseRecorderIni(std::string(std::istreambuf_iterator<char>(file), {}), name.string());
    }
    return {};
}

SourceChoice ChooseSource(const std::optional<std::string>& environment, const RecorderIni& ini) {
    RecorderIni keys = ini;
    if (environment && !environment->empty()) keys["source"] = *environment;
    const std::string source = keys["source"].empty() ? "card" : keys["source"];

    std::string_view rest = source;
    const std::string_view kindAndName = TakeUpTo(';', rest);
    while (!rest.empty()) {
        std::string_view value = TakeUpTo(';', rest);
        if (value.empty()) continue;
        const std::string key = LowerCase(TakeUpTo('=', value));
        CheckKey(key, "source '" + source + "'");
        keys[key] = value;
    }

    SourceChoice choice;
    ReadKindAndName(kindAndName, choice);
    choice.device = keys["device"];
    if (!keys["speed"].empty()) choice.fullSpeed = IsFullSpeed(keys["speed"]);
    if (!keys["rate"].empty()) choice.rate = RateOf(keys["rate"]);
    choice.loops = IsYes("loop", keys["loop"]);
    choice.waits = IsYes("wait", keys["wait"]);
    if (choice.loops && choice.waits) throw WrongRecorderOption{"loop=yes and wait=yes do not go together"};
    if (!keys["idle"].empty()) choice.idle = IdleOf(keys["idle"]);
    return choice;
}

}  // namespace veltrix
