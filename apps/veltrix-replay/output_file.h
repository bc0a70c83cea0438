#pragma once
// Files that are written at the end.

#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/qt/whole_file.h"

namespace veltrix {

/// Writes a file, whole. Raises std::system_error with its name.
inline void WriteOutput(const std::string& name, std::string_view content) {
    try {
        WriteFileWhole(name, content);
    } catch (const std::system_error& error) {
        throw std::system_error(error.code(), name);
    }
}

/// What --summary asks for.
struct SummaryOption {
    bool isOn = false;
    std::string file;  ///< empty: standard error
};

/// Puts a summary where the option says. Raises std::system_error.
inline void WriteSummary(const SummaryOption& option, const std::string& text) {
    if (option.file.empty())
        std::fputs(text.c_str(), stderr);
    else
        WriteOutput(option.file, text);
}

}  // namespace veltrix
