#include "platform/qt/drives.h"

#include <QStorageInfo>
#include <algorithm>
#include <set>
#include <string_view>

namespace veltrix {

namespace {

bool IsBelow(std::string_view folder, std::string_view above) {
    return folder == above || (folder.starts_with(above) && folder[above.size()] == '/');
}

/// True for a disk or a share rather than for what the kernel or a program makes up.
bool IsReal(const Volume& volume) {
    for (const std::string_view kind : {"squashfs", "erofs", "overlay"})
        if (volume.kind == kind) return false;
    const bool isShare = volume.device.starts_with("//") || volume.device.find(":/") != std::string::npos;
    return isShare || (volume.device.starts_with("/dev/") && volume.device != "/dev/fuse");
}

bool IsSystemPlace(std::string_view root) {
    if (IsBelow(root, "/run/media")) return false;
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{"/boot", "/dev", "/efi", "/etc", "/nix", "/proc", "/run",
                                                "/snap", "/sys", "/tmp", "/usr", "/var"},
        [root](std::string_view place) { return IsBelow(root, place); });
}

}  // namespace

std::vector<Volume> MountedVolumes() {
    std::vector<Volume> volumes;
    for (const QStorageInfo& info : QStorageInfo::mountedVolumes())
        if (info.isValid() && info.isReady())
            volumes.push_back({info.rootPath().toStdString(), info.device().toStdString(),
                               info.fileSystemType().toStdString()});
    return volumes;
}

std::vector<std::string> DrivesAmong(std::vector<Volume> volumes) {
    // The shortest name of a device is the one that it is known by.
    std::ranges::sort(volumes, [](const Volume& one, const Volume& other) {
        return one.root.size() == other.root.size() ? one.root < other.root
                                                    : one.root.size() < other.root.size();
    });
    std::vector<std::string> drives;
    std::set<std::string> devices;
    for (const Volume& volume : volumes) {
        const bool isRoot = volume.root == "/";
        if (!isRoot && (!IsReal(volume) || IsSystemPlace(volume.root))) continue;
        if (devices.insert(volume.device).second && !isRoot) drives.push_back(volume.root);
    }
    std::ranges::sort(drives);
    drives.insert(drives.begin(), "/");
    return drives;
}

}  // namespace veltrix
