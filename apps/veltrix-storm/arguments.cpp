#include "arguments.h"

#include <charconv>
#include <optional>

namespace veltrix {

namespace {

constexpr double LongestSeconds = 7 * 86400;

}  // namespace

void StormArguments::TakeScenario(std::string& scenario) const {
    if (!scenario.empty()) throw WrongUse{"one scenario at a time, not '" + Name() + "', too"};
    scenario = Name();
}

double StormArguments::Seconds() {
    const std::string name = Name();
    const std::string text = Value();
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end || !(value > 0 && value <= LongestSeconds))
        throw WrongUse{name + ": '" + text + "' is no number above 0, up to 604800"};
    return value;
}

UtcTime StormArguments::Stamp() {
    const std::string name = Name();
    const std::string text = Value();
    const std::optional<UtcTime> time = ParseUtc(text);
    if (!time)
        throw WrongUse{name + ": '" + text + "' is no stamp like 2024-01-01T00:00:00Z of 1970 to 2199"};
    return *time;
}

std::pair<std::string, std::string> StormArguments::NamedFile() {
    const std::string name = Name();
    const std::string text = Value();
    const std::size_t sign = text.find('=');
    if (sign == 0 || sign == std::string::npos || sign + 1 == text.size())
        throw WrongUse{name + ": '" + text + "' is not STATION=FILE"};
    return {text.substr(0, sign), text.substr(sign + 1)};
}

}  // namespace veltrix
