#pragma once
// From names as the system writes them to names of the computer.

#include <string>
#include <string_view>

namespace veltrix {

/// The path of `name` below `folder`; both "\" and "/" separate, and a name that begins with one is absolute.
/// Each component that does not stand as written is sought without regard to case; of several the
/// alphabetically first counts. What is found in neither way stays as written.
std::string FindName(const std::string& folder, std::string_view name);

/// True when two names are the same but for case, in all scripts that have one.
bool SameButCase(std::string_view one, std::string_view other);

/// True when `name` matches one of the patterns, such as "*.bmp;*.jpg", without regard to case.
bool MatchesOneOf(std::string_view name, std::string_view patterns);

}  // namespace veltrix
