#pragma once
// The computer we run on.

#include <string>
#include <utility>

#include "platform/computer.h"

namespace veltrix {

/// The computer that the program runs on.
class DeskComputer final : public Computer {
  public:
    /// `folder` lies on the disk that is asked about.
    explicit DeskComputer(std::string folder) : folder_(std::move(folder)) {}

    std::optional<DiskSpace> Space() override;
    /// As the kernel's clock discipline says, where there is one.
    std::optional<bool> IsClockSynchronised() override;

  private:
    std::string folder_;
};

}  // namespace veltrix
