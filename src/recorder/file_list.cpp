#include "recorder/file_list.h"

#include <glob.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "common/failure.h"
#include "common/letter_case.h"

namespace veltrix {

namespace {

namespace fs = std::filesystem;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes a run of digits off the front of `text`, without the zeros before it.
std::string_view TakeNumber(std::string_view& text) {
    std::size_t end = 0;
    while (end < text.size() && IsDigit(text[end])) ++end;
    std::string_view number = text.substr(0, end);
    text.remove_prefix(end);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

std::vector<std::string> FilesOfFolder(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        std::error_code ignored;
        if (at->is_regular_file(ignored) && !at->path().filename().string().starts_with('.'))
            files.push_back(at->path().string());
    }
    return files;
}

std::vector<std::string> FilesOfPattern(const std::string& pattern) {
    std::string escaped;  // brackets are letters like others
    for (const char c : pattern) {
        if (c == '[' || c == '\\') escaped += '\\';
        escaped += c;
    }
    std::vector<std::string> files;
    glob_t found{};
    if (::glob(escaped.c_str(), GLOB_NOSORT, nullptr, &found) == 0)
        for (std::size_t i = 0; i < found.gl_pathc; ++i)
            if (std::error_code ignored; fs::is_regular_file(found.gl_pathv[i], ignored))
                files.emplace_back(found.gl_pathv[i]);
    ::globfree(&found);
    return files;
}

std::vector<std::string> FilesOf(const std::string& entry) {
    std::error_code ignored;
    if (fs::is_directory(entry, ignored)) return FilesOfFolder(entry);
    if (!fs::exists(entry, ignored) && entry.find_first_of("*?") != std::string::npos)
        return FilesOfPattern(entry);
    return {entry};  // one that is missing, too, so that this is told
}

bool IsPlayList(const std::string& name) {
    const std::string lower = LowerCase(name);
    return lower.ends_with(".m3u") || lower.ends_with(".m3u8");
}

}  // namespace

bool ComesBefore(std::string_view a, std::string_view b) {
    std::string_view restA = a;
    std::string_view restB = b;
    while (!restA.empty() && !restB.empty()) {
        if (IsDigit(restA.front()) && IsDigit(restB.front())) {
            const std::string_view numberA = TakeNumber(restA);
            const std::string_view numberB = TakeNumber(restB);
            if (numberA.size() != numberB.size()) return numberA.size() < numberB.size();
            if (numberA != numberB) return numberA < numberB;
            continue;
        }
        const auto letterA = static_cast<unsigned char>(LowerCase(restA.front()));
        const auto letterB = static_cast<unsigned char>(LowerCase(restB.front()));
        if (letterA != letterB) return letterA < letterB;
        restA.remove_prefix(1);
        restB.remove_prefix(1);
    }
    if (restA.empty() != restB.empty()) return restA.empty();
    return a < b;
}

FileList::FileList(const std::string& names) {
    std::error_code ignored;
    if (fs::exists(names, ignored) || names.find('|') == std::string::npos) {
        if (IsPlayList(names))
            AddPlayList(names);
        else
            entries_.push_back(names);
        return;
    }
    for (std::size_t at = 0; at <= names.size();) {
        const std::size_t end = std::min(names.find('|', at), names.size());
        const std::string name = names.substr(at, end - at);
        if (IsPlayList(name))
            AddPlayList(name);
        else if (!name.empty())
            entries_.push_back(name);
        at = end + 1;
    }
}

void FileList::AddPlayList(const std::string& name) {
    std::ifstream list(name);
    if (!list) throw Failure(errors::FileNotFound, name + ": the play list cannot be read", "recorder");
    for (std::string line; std::getline(list, line);) {
        if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
        if (line.ends_with('\r')) line.pop_back();
        if (!line.empty() && !line.starts_with('#'))
            entries_.push_back((fs::path(name).parent_path() / line).string());
    }
}

std::optional<std::string> FileList::Next() {
    for (; entry_ < entries_.size(); ++entry_, last_.clear()) {
        std::optional<std::string> first;
        for (std::string& file : FilesOf(entries_[entry_]))
            if ((last_.empty() || ComesBefore(last_, file)) && (!first || ComesBefore(file, *first)))
                first = std::move(file);
        if (first) return first;
        // Behind the last file of the last entry more may come.
        if (entry_ + 1 == entries_.size()) break;
    }
    return {};
}

void FileList::Take(const std::string& file) {
    last_ = file;
}

void FileList::Rewind() {
    entry_ = 0;
    last_.clear();
}

}  // namespace veltrix
