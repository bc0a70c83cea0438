#include "health/recorder_state.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <span>
#include <utility>

#include "common/failure.h"
#include "health/foreign_text.h"

namespace veltrix {

namespace {

constexpr std::array<std::string_view, 4> States{"recording", "waiting", "silent", "ended"};
constexpr std::size_t MostTextLength = 200;  // of a value

/// A number that is neither below 0 nor infinite.
template <class Number>
std::optional<Number> NumberOf(std::string_view text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    const auto asFloat = static_cast<double>(number);
    if (!std::isfinite(asFloat) || asFloat < 0) return std::nullopt;
    return number;
}

void Take(RecorderAccount& state, std::string_view key, std::string_view value) {
    const auto text = [value] { return CleanUtf8(value.substr(0, MostTextLength)); };
    if (key == "state" && std::ranges::find(States, value) != States.end()) state.state = value;
    if (key == "since") state.since = text();
    if (key == "source") state.source = text();
    if (key == "device") state.device = text();
    if (key == "device_rate") state.deviceRate = NumberOf<double>(value);
    if (key == "frames_written") state.framesWritten = NumberOf<std::uint64_t>(value);
    if (key == "frames_lost") state.framesLost = NumberOf<std::uint64_t>(value);
}

/// The content of a file; empty when there is none of at most `most` bytes.
std::string TextOf(Files& files, std::string_view name, std::size_t most) try {
    if (!files.Exists(name)) return "";
    const std::unique_ptr<InputFile> file = files.Open(name);
    std::string text(most + 1, '\0');
    std::size_t length = 0;
    while (length <= most) {
        const std::size_t got = file->Read(std::as_writable_bytes(std::span(text).subspan(length)));
        if (got == 0) break;
        length += got;
    }
    if (length > most) return "";
    text.resize(length);
    return text;
} catch (const Failure&) {
    return "";
}

}  // namespace

std::optional<RecorderAccount> ParseRecorderAccount(std::string_view text) {
    RecorderAccount state;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::size_t sign = line.find('=');
        if (sign != std::string_view::npos) Take(state, line.substr(0, sign), line.substr(sign + 1));
    }
    if (state.state.empty()) return std::nullopt;
    return state;
}

std::optional<RecorderAccount> RecorderAccountFile::Read(Files& files, std::string_view name,
                                                         std::int64_t milliseconds) {
    std::string text = TextOf(files, name, MostBytes);
    if (text_ && text != *text_) changed_ = milliseconds;
    text_ = std::move(text);
    if (!changed_ || milliseconds - *changed_ >= StaleSeconds * 1000) return std::nullopt;
    return ParseRecorderAccount(*text_);
}

}  // namespace veltrix
