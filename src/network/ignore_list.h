#pragma once
// The addresses that the user wants thrown out.

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace veltrix {

/// Follows the file "IgnoreList.txt", one address a line, which the user edits. It is read again only when
/// it has changed. REQUIRES that the files outlive it.
class IgnoreList {
  public:
    /// The file, in the working directory.
    static constexpr std::string_view FileName = "IgnoreList.txt";

    explicit IgnoreList(Files& files) : files_(files) {}

    /// True if the file stands and a line of it is the address, blanks around both left out. Of more than 100
    /// lines the last one stands for all from the hundredth on. Raises what reading the file raises.
    bool IsIgnored(std::string_view address);

  private:
    void Read();

    Files& files_;
    std::vector<std::string> entries_;
};

}  // namespace veltrix
