#include "platform/qt/whole_file.h"

#include <sys/file.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>

#include "platform/qt/file_handle.h"

namespace veltrix {

namespace {

namespace fs = std::filesystem;

/// The file that a chain of symbolic links ends at, which need not exist.
fs::path TargetOf(fs::path path) {
    constexpr int MostLinks = 40;
    for (int i = 0; i < MostLinks; ++i) {
        std::error_code none;
        const fs::path next = fs::read_symlink(path, none);
        if (none) return path;
        path = path.parent_path() / next;
    }
    throw std::system_error(ELOOP, std::generic_category());
}

std::optional<struct stat> StatusOf(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) return status;
    if (errno != ENOENT) ThrowErrno();
    return {};
}

/// The temporary file `path`, opened and locked. One that a killed program left behind is taken over.
FileHandle LockedTemporary(const fs::path& path) {
    constexpr int MostTries = 200;
    for (int i = 0; i < MostTries; ++i) {
        FileHandle file(path, O_WRONLY | O_CREAT | O_NOFOLLOW, 0666);
        const bool isOurs = ::flock(file.Descriptor(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        // The program that had the lock may have renamed the file meanwhile.
        const std::optional<struct stat> standing = StatusOf(path);
        if (isOurs && standing && standing->st_ino == file.Status().st_ino) return file;
        if (!isOurs) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::system_error(EACCES, std::generic_category());
}

/// Gives a new file the permissions and, where we may, the owner of the old one.
void TakeOver(const FileHandle& file, const struct stat& old) {
    const bool isOwned = ::fchown(file.Descriptor(), old.st_uid, old.st_gid) == 0;
    const mode_t bits = isOwned ? 07777 : 0777;
    if (::fchmod(file.Descriptor(), old.st_mode & bits) != 0) ThrowErrno();
}

/// Makes the entries of a folder safe from a loss of power. File systems that cannot are left as they are.
void SyncFolder(const fs::path& folder) {
    const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}  // namespace

std::string ReadFileWhole(const std::string& path) {
    FileHandle file(path, O_RDONLY);
    const struct stat status = file.Status();
    if (S_ISDIR(status.st_mode)) throw std::system_error(EISDIR, std::generic_category());
    if (!S_ISREG(status.st_mode)) throw std::system_error(EINVAL, std::generic_category());
    std::string content;
    content.reserve(static_cast<std::size_t>(status.st_size) + 1);
    std::array<char, 65536> buffer;
    while (const std::size_t count = file.Read(buffer.data(), buffer.size()))
        content.append(buffer.data(), count);
    return content;
}

void WriteFileWhole(const std::string& path, std::string_view content) {
    const fs::path target = TargetOf(path);
    const std::optional<struct stat> old = StatusOf(target);
    if (old && S_ISDIR(old->st_mode)) throw std::system_error(EISDIR, std::generic_category());
    if (old && !S_ISREG(old->st_mode)) throw std::system_error(EINVAL, std::generic_category());
    if (old && ::access(target.c_str(), W_OK) != 0) ThrowErrno();

    const fs::path temporary = target.parent_path() / ("." + target.filename().string() + ".tmp");
    FileHandle file = LockedTemporary(temporary);
    try {
        if (::ftruncate(file.Descriptor(), 0) != 0) ThrowErrno();
        if (old) TakeOver(file, *old);
        file.WriteAll(content);
        if (::fsync(file.Descriptor()) != 0) ThrowErrno();
        // The lock is held until the new name stands.
        if (::rename(temporary.c_str(), target.c_str()) != 0) ThrowErrno();
    } catch (const std::system_error&) {
        ::unlink(temporary.c_str());
        throw;
    }
    SyncFolder(target.parent_path());
}

}  // namespace veltrix
