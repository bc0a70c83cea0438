#pragma once
// The capability mask of a station and the marks that tell of it.

#include <cstdint>
#include <string_view>

namespace veltrix {

/// The peer understands marked online entries.
inline constexpr std::int32_t UnderstandsMarkedEntries = 1;

/// The mark of UnderstandsMarkedEntries in a line.
inline constexpr std::string_view MarkedEntriesMark = "#O";

/// `mask` with those bits set.
constexpr std::int32_t CapabilitySet(std::int32_t mask, std::int32_t bits) {
    return mask | bits;
}
/// True when one of the bits is set in `mask`.
constexpr bool CapabilityTest(std::int32_t mask, std::int32_t bits) {
    return (mask & bits) != 0;
}

/// `mask` with the bits set of the marks that `line` begins with: "#" and one character each. Unknown marks
/// are passed over.
std::int32_t ParseMarks(std::string_view line, std::int32_t mask);

}  // namespace veltrix
