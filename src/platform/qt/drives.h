#pragma once
// The mounted volumes of a computer, and which of them a user would call a drive.

#include <string>
#include <vector>

namespace veltrix {

/// One mounted file system.
struct Volume {
    std::string root;    ///< the folder it stands at
    std::string device;  ///< what is mounted there, such as "/dev/sdb1" or "server:/music"
    std::string kind;    ///< of file system, such as "ext4"
};

/// All file systems that are mounted now and can be used.
std::vector<Volume> MountedVolumes();

/// The roots of those that a user knows: "/" first and always, then disks and shares in alphabetical order.
/// Left out is what the system mounts for itself, and the second and further places of one device.
std::vector<std::string> DrivesAmong(std::vector<Volume> volumes);

}  // namespace veltrix
