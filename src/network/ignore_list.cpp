#include "network/ignore_list.h"

#include <algorithm>

#include "common/trimmed.h"

namespace veltrix {

namespace {

constexpr std::size_t MostEntries = 100;

}  // namespace

bool IgnoreList::IsIgnored(std::string_view address) {
    if (!files_.Exists(FileName)) return false;
    if (files_.HasArchive(FileName)) {
        entries_.clear();
        files_.ClearArchive(FileName);
    }
    if (entries_.empty()) Read();
    return std::ranges::any_of(entries_,
                               [&](const std::string& entry) { return Trimmed(entry) == Trimmed(address); });
}

void IgnoreList::Read() {
    for (std::string& line : files_.ReadLines(FileName)) {
        if (entries_.size() < MostEntries)
            entries_.push_back(std::move(line));
        else
            entries_.back() = std::move(line);
    }
}

}  // namespace veltrix
