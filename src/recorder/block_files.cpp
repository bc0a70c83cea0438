#include "recorder/block_files.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "common/failure.h"

namespace veltrix {

DiskBlockFiles::DiskBlockFiles(std::filesystem::path block)
    : block_(std::move(block)), temporary_(block_.parent_path() / "audio.tmp") {}

bool DiskBlockFiles::BlockStands() {
    struct stat status {};
    return ::lstat(block_.c_str(), &status) == 0;
}

void DiskBlockFiles::WriteTemporary(std::span<const std::byte> content) {
    const int file = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) Raise(errno);
    int error = 0;
    while (error == 0 && !content.empty()) {
        const ssize_t written = ::write(file, content.data(), content.size());
        if (written >= 0)
            content = content.subspan(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            error = errno;
    }
    // Some file systems report a full disk only here.
    if (::close(file) != 0 && error == 0 && errno != EINTR) error = errno;
    if (error == 0) return;
    RemoveTemporary();
    Raise(error);
}

BlockFiles::Publication DiskBlockFiles::Publish() {
    int error = ::renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, block_.c_str(), RENAME_NOREPLACE) == 0
                    ? 0
                    : errno;
    if (error == EINVAL || error == ENOSYS) {
        // A file system that cannot refuse to replace: look first. Nobody but us brings files under this
        // name.
        if (BlockStands()) return Publication::NameTaken;
        error = ::rename(temporary_.c_str(), block_.c_str()) == 0 ? 0 : errno;
    }
    if (error == 0) return Publication::Done;
    if (error == EEXIST) return Publication::NameTaken;
    if (error == ENOENT) return Publication::TemporaryGone;
    Raise(error);
}

void DiskBlockFiles::RemoveTemporary() noexcept {
    ::unlink(temporary_.c_str());
}

void DiskBlockFiles::Raise(int error) const {
    const std::string folder = block_.has_parent_path() ? block_.parent_path().string() : ".";
    switch (error) {
        case ENOSPC:
        case EDQUOT:
            throw Failure(errors::DiskFull, "the disk of folder " + folder + " is full", "recorder");
        case ENOENT:
        case ENOTDIR:
            throw Failure(errors::PathNotFound, "folder " + folder + " is missing", "recorder");
        case EACCES:
        case EPERM:
        case EROFS:
            throw Failure(errors::PermissionDenied, "folder " + folder + " cannot be written to", "recorder");
        default:
            throw Failure(errors::DeviceIo, temporary_.string() + ": " + std::strerror(error), "recorder");
    }
}

}  // namespace veltrix
