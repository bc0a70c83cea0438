#include "platform/qt/desk_computer.h"

#ifdef __linux__
#include <sys/timex.h>
#endif

#include <filesystem>
#include <system_error>

namespace veltrix {

std::optional<DiskSpace> DeskComputer::Space() {
    std::error_code error;
    const std::filesystem::space_info space = std::filesystem::space(folder_, error);
    if (error) return std::nullopt;
    return DiskSpace{space.available, space.capacity};
}

std::optional<bool> DeskComputer::IsClockSynchronised() {
#ifdef __linux__
    timex state{};  // mode 0 only reads
    const int discipline = ::adjtimex(&state);
    if (discipline == -1) return std::nullopt;
    return discipline != TIME_ERROR && (state.status & STA_UNSYNC) == 0;
#else
    return std::nullopt;
#endif
}

}  // namespace veltrix
