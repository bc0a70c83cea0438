#include "network/class_online.h"

#include <algorithm>
#include <utility>

#include "common/neutral_text.h"

namespace veltrix {

void ClassOnline::Init(std::int16_t size) {
    entries_.assign(static_cast<std::size_t>(size), {});
    iCount = 0;
}

void ClassOnline::Update(const std::string& sStationName, const std::string& IP,
                         const std::string& dLongitude, const std::string& dLatitude) {
    if (!Found(sStationName, IP, dLongitude, dLatitude)) Into(sStationName, IP, dLongitude, dLatitude);
}

void ClassOnline::Into(const std::string& sStationName, const std::string& IP, const std::string& dLongitude,
                       const std::string& dLatitude) {
    if (sStationName.empty() || ValNeutral(dLongitude) == 0 || ValNeutral(dLatitude) == 0) return;
    entries_[static_cast<std::size_t>(iCount)] = {clock_.Now(), sStationName, IP, dLongitude, dLatitude};
    if (static_cast<std::size_t>(iCount) + 1 < entries_.size()) ++iCount;
}

bool ClassOnline::Found(std::string_view sStationName, std::string_view IP, std::string_view dLongitude,
                        std::string_view dLatitude) const {
    return std::any_of(entries_.begin(), entries_.begin() + iCount, [&](const Entry& entry) {
        return entry.sStationName == sStationName || entry.IP == IP || entry.dLongitude == dLongitude ||
               entry.dLatitude == dLatitude;
    });
}

std::optional<ClassOnline::Entry> ClassOnline::Top() const {
    if (iCount < 1) return {};
    return entries_.front();
}

std::optional<ClassOnline::Entry> ClassOnline::From() {
    std::optional<Entry> top = Top();
    if (!top) return top;
    std::move(entries_.begin() + 1, entries_.begin() + iCount, entries_.begin());
    --iCount;
    return top;
}

void ClassOnline::Display(ListBox& list) const {
    std::vector<std::string> lines;
    std::for_each(entries_.begin(), entries_.begin() + iCount, [&lines](const Entry& entry) {
        lines.push_back(" " + GeneralDate(entry.dTime) + ", " + entry.IP + ", " + entry.dLongitude + ", " +
                        entry.dLatitude + ", " + entry.sStationName);
    });
    if (lines != list.Entries()) list.SetEntries(std::move(lines));
}

}  // namespace veltrix
