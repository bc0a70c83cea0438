#include "archive/start_stamp.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <regex>
#include <system_error>

#include "archive/recording.h"
#include "common/letter_case.h"

namespace veltrix {

namespace {

bool IsSoundFile(const std::filesystem::path& path) {
    static constexpr std::array<std::string_view, 8> Kinds{".flac", ".wav", ".w64", ".aiff",
                                                           ".aif",  ".au",  ".caf", ".ogg"};
    const std::string kind = path.extension().string();
    return std::ranges::any_of(Kinds, [&](std::string_view one) { return EqualIgnoringCase(kind, one); });
}

std::vector<std::string> SoundFilesIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        const std::filesystem::path& path = entry->path();
        if (IsSoundFile(path) && !path.filename().string().starts_with('.') &&
            entry->is_regular_file(ignored))
            names.push_back(path.string());
    }
    if (error) throw BadRecording{folder + ": " + error.message()};
    if (names.empty()) throw BadRecording{folder + ": no sound file in it"};
    std::ranges::sort(names);
    return names;
}

}  // namespace

std::optional<FileStamp> StampInName(std::string_view path) {
    static const std::regex Stamp(
        R"(((?:19|20|21)\d\d)[-_.]?(\d\d)[-_.]?(\d\d)[-_.T ]?(\d\d)[-_.:]?(\d\d)(?:[-_.:]?(\d\d))?(Z?)(?!\d))");
    const std::string name = std::filesystem::path(path).filename().string();
    std::smatch part;
    for (auto from = name.begin(); std::regex_search(from, name.end(), part, Stamp);
         from = part[0].first + 1) {
        const bool isWithinNumber = part[0].first != name.begin() &&
                                    std::isdigit(static_cast<unsigned char>(*(part[0].first - 1))) != 0;
        const auto number = [&part](std::size_t i) { return part[i].matched ? std::stoi(part[i]) : 0; };
        const CalendarParts parts{number(1), number(2), number(3), number(4), number(5), number(6)};
        if (!isWithinNumber && IsCalendarDate(parts))
            return FileStamp{DateTimeOf(parts), part[7].length() > 0};
    }
    return {};
}

std::vector<std::string> RecordingsOf(const std::vector<std::string>& words) {
    std::vector<std::string> names;
    for (const std::string& word : words) {
        std::error_code ignored;
        if (std::filesystem::is_directory(word, ignored)) {
            const std::vector<std::string> inside = SoundFilesIn(word);
            names.insert(names.end(), inside.begin(), inside.end());
        } else {
            names.push_back(word);
        }
    }
    if (std::ranges::all_of(names, [](const std::string& name) { return StampInName(name).has_value(); }))
        std::ranges::stable_sort(names, {}, [](const std::string& name) { return StampInName(name)->date; });
    return names;
}

}  // namespace veltrix
