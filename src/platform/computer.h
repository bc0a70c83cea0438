#pragma once
// The state of the computer that a station runs on, as far as its user should know of it.

#include <cstdint>
#include <optional>

namespace veltrix {

/// Room on the disk that holds the station's working directory, in bytes.
struct DiskSpace {
    std::uint64_t free = 0;   ///< that the station may fill
    std::uint64_t total = 0;  ///< of the whole disk
};

/// Both questions are answered at once and never fail; what cannot be found out is none.
class Computer {
  public:
    virtual ~Computer() = default;

    /// The room on that disk.
    virtual std::optional<DiskSpace> Space() = 0;

    /// Whether a time service keeps the computer's clock right.
    virtual std::optional<bool> IsClockSynchronised() = 0;
};

}  // namespace veltrix
