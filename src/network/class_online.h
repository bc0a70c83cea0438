#pragma once
// ClassOnline: the bounded list of stations seen, which is passed on to others entry by entry.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"
#include "platform/clock.h"
#include "platform/controls.h"

namespace veltrix {

/// A queue of tidings: stations seen go in at the end, if none like them is there, and what is at the top
/// leaves the list as it is sent. One for the program. REQUIRES that the clock outlives it.
class ClassOnline {
  public:
    /// A station as it waits to be told of.
    struct Entry {
        DateTime dTime = 0;  ///< when it was entered
        std::string sStationName;
        std::string IP;
        std::string dLongitude;  ///< degrees, as text
        std::string dLatitude;
    };

    explicit ClassOnline(Clock& clock) : clock_(clock) {}

    /// Empties the list and gives it room for `size` entries, of which the last is overwritten again and
    /// again once the others are filled.
    void Init(std::int16_t size);

    /// Enters a station unless it is Found().
    void Update(const std::string& sStationName, const std::string& IP, const std::string& dLongitude,
                const std::string& dLatitude);
    /// Enters a station that has a name, a longitude and a latitude other than 0; another one does nothing.
    void Into(const std::string& sStationName, const std::string& IP, const std::string& dLongitude,
              const std::string& dLatitude);
    /// True if an entry has the same name, address, longitude text or latitude text: one alone is enough, so
    /// that two stations on one latitude stand for one.
    bool Found(std::string_view sStationName, std::string_view IP, std::string_view dLongitude,
               std::string_view dLatitude) const;
    /// The entry at the top; none when the list is empty.
    std::optional<Entry> Top() const;
    /// Takes the entry from the top.
    std::optional<Entry> From();

    /// Shows a line per entry.
    void Display(ListBox& list) const;

  private:
    Clock& clock_;
    std::vector<Entry> entries_;
    std::int16_t iCount = 0;
};

}  // namespace veltrix
