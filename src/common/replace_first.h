#pragma once
// The cleaning of names before they become fields of a line.

#include <string>
#include <string_view>

namespace veltrix {

/// `text` with the first occurrence of `find`, sought without regard to the case of letters, replaced by
/// `with`. At most 4096 characters behind it are kept. A text without it, and an empty `find`, change
/// nothing.
std::string ReplaceFirst(std::string_view text, std::string_view find, std::string_view with);

}  // namespace veltrix
