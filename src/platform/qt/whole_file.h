#pragma once
// Files that are read whole and replaced whole, by the computer's own names.

#include <string>
#include <string_view>

namespace veltrix {

/// The content of a regular file. Raises std::system_error.
std::string ReadFileWhole(const std::string& path);

/// Replaces or makes a file whole, through a temporary name in the same folder: a reader, a process that is
/// killed and a computer that loses power leave the old or the new content. A symbolic link stays and its
/// target is replaced. The permissions of an existing file stay. Two programs that write the same name take
/// turns. Raises std::system_error; the file is as before then, and no temporary file stays.
void WriteFileWhole(const std::string& path, std::string_view content);

}  // namespace veltrix
