#include "platform/qt/find_name.h"

#include <dirent.h>
#include <sys/stat.h>

#include <QString>
#include <algorithm>
#include <memory>
#include <vector>

#include "common/letter_case.h"
#include "common/pieces.h"

namespace veltrix {

namespace {

bool IsPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

QString Folded(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toCaseFolded();
}

bool Stands(const std::string& path) {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0;
}

/// The components of a name, those that say "here" left out.
std::vector<std::string_view> ComponentsOf(std::string_view name) {
    std::vector<std::string_view> components = PiecesOf(name, "\\/");
    std::erase(components, ".");
    return components;
}

/// The entry of `folder` with that name but for case; empty when there is none.
std::string EntryLike(const std::string& folder, std::string_view name) {
    const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(folder.c_str()),
                                                   [](DIR* dir) { return ::closedir(dir); });
    std::string found;
    if (!open) return found;
    while (const dirent* entry = ::readdir(open.get())) {
        const std::string_view candidate = entry->d_name;
        if (SameButCase(candidate, name) && (found.empty() || candidate < found)) found = candidate;
    }
    return found;
}

/// `pattern` holds at most a few asterisks; each takes as little as it can.
bool Matches(std::string_view name, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string_view::npos;
    std::size_t taken = 0;
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            taken = at;
        } else if (in < pattern.size() && LowerCase(pattern[in]) == LowerCase(name[at])) {
            ++in;
            ++at;
        } else if (star != std::string_view::npos) {
            in = star + 1;
            at = ++taken;
        } else {
            return false;
        }
    }
    return pattern.substr(in).find_first_not_of('*') == std::string_view::npos;
}

}  // namespace

bool SameButCase(std::string_view one, std::string_view other) {
    const bool plain = IsPlain(other);
    if (plain && one.size() != other.size()) return false;
    if (EqualIgnoringCase(one, other)) return true;
    return !plain && !IsPlain(one) && Folded(one) == Folded(other);
}

std::string FindName(const std::string& folder, std::string_view name) {
    const bool isAbsolute = !name.empty() && (name.front() == '\\' || name.front() == '/');
    const std::vector<std::string_view> components = ComponentsOf(name);
    const std::string base = isAbsolute ? "" : folder;

    std::string asWritten = base;
    for (const std::string_view component : components) asWritten.append("/").append(component);
    if (asWritten.empty()) return "/";
    if (Stands(asWritten)) return asWritten;

    std::string path = base;
    for (const std::string_view component : components) {
        const std::string exact = path + "/" + std::string(component);
        const std::string like = Stands(exact) ? "" : EntryLike(path.empty() ? "/" : path, component);
        path = like.empty() ? exact : path + "/" + like;
    }
    return path;
}

bool MatchesOneOf(std::string_view name, std::string_view patterns) {
    return std::ranges::any_of(PiecesOf(patterns, ";"),
                               [name](std::string_view pattern) { return Matches(name, pattern); });
}

}  // namespace veltrix
