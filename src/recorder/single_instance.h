#pragma once
// One recorder for each block file.

#include <chrono>
#include <filesystem>

namespace veltrix {

/// The right to write a block file. Held by a listening local socket whose name is made of the block file's
/// absolute path and the user; the name has no file, so it goes with its process, however that ends, and
/// nothing can be left behind or mistaken. A newcomer asks the holder to end by connecting to it. Users do
/// not disturb each other.
class SingleInstance {
  public:
    /// Becomes the recorder of `block`; an earlier one is asked to end and waited for. Raises
    /// PermissionDenied when it does not end within `limit`.
    SingleInstance(const std::filesystem::path& block, std::chrono::milliseconds limit);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// True once somebody has asked this one to end. Does not wait.
    bool IsAskedToEnd();

    /// What came of Stop().
    enum class Stopped { NoneRuns, Ended, StillRuns };
    /// Asks the recorder of `block` to end and waits for it up to `limit`.
    static Stopped Stop(const std::filesystem::path& block, std::chrono::milliseconds limit);

  private:
    int socket_ = -1;
    bool isAsked_ = false;
};

}  // namespace veltrix
