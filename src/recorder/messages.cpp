#include "recorder/messages.h"

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <ctime>
#include <fstream>
#include <system_error>
#include <utility>

namespace veltrix {

namespace {

constexpr std::uintmax_t LargestLog = 64 * 1024;

std::filesystem::path OldName(std::filesystem::path log) {
    const std::filesystem::path extension = log.extension();
    return log.replace_extension(".old" + extension.string());
}

}  // namespace

Messages::Messages(std::filesystem::path log)
    : errors_(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)), log_(std::move(log)), oldLog_(OldName(log_)) {}

Messages::~Messages() {
    if (errors_ >= 0) ::close(errors_);
}

void Messages::Say(const std::string& line) const {
    ::dprintf(errors_, "SndInput: %s\n", line.c_str());
    if (!log_.empty()) Append(line);
}

void Messages::Append(const std::string& line) const {
    std::error_code ignored;
    const std::uintmax_t size = std::filesystem::file_size(log_, ignored);
    if (!ignored && size > LargestLog) std::filesystem::rename(log_, oldLog_, ignored);
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y/%m/%d %H:%M:%S ", &parts);
    std::ofstream(log_, std::ios::app) << stamp + line + "\n";
}

}  // namespace veltrix
