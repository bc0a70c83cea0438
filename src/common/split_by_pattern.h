#pragma once
// Fields cut out of a line by a pattern of asterisks and separators.

#include <array>
#include <string>
#include <string_view>

namespace veltrix {

/// What SplitByPattern() found. Fields that were not stored are empty.
struct PatternFields {
    bool matched = false;               ///< all literals of the pattern were found
    std::array<std::string, 21> field;  ///< what the asterisks stood for
};

/// Takes `text` apart by a pattern such as "*,*,*": each field receives what an asterisk stood for.
///
/// The first literal is sought from the left, and behind it the other literals one after the other, each at
/// its first occurrence; the first place of the first literal for which all are found decides, so the last
/// asterisk swallows all further separators. The piece before the first literal is stored only if the pattern
/// begins with an asterisk and the piece is not empty: an empty first field is left out, and the later fields
/// stand one element further left. The piece behind the last literal is stored if the pattern ends with an
/// asterisk and the piece is not empty. REQUIRES at least one literal in the pattern, and at most 20.
PatternFields SplitByPattern(std::string_view text, std::string_view pattern);

}  // namespace veltrix
