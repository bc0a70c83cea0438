#include "platform/qt/desk_files.h"

#include <dirent.h>

#include <algorithm>

#include "common/failure.h"
#include "common/letter_case.h"
#include "platform/qt/drives.h"
#include "platform/qt/file_handle.h"
#include "platform/qt/find_name.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/whole_file.h"

namespace veltrix {

namespace {

constexpr std::string_view LineEnd = "\n";

bool StandsAsFolder(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Alphabetical order, without regard to case as long as that tells two names apart.
bool ComesBefore(const std::string& one, const std::string& other) {
    const std::string lowerOne = LowerCase(one);
    const std::string lowerOther = LowerCase(other);
    return lowerOne == lowerOther ? one < other : lowerOne < lowerOther;
}

/// The error number that stands for an errno on `path`.
int NumberOf(int error, const std::string& path) {
    switch (error) {
        case ENOENT:
            return StandsAsFolder(std::filesystem::path(path).parent_path()) ? errors::FileNotFound
                                                                             : errors::PathNotFound;
        case ENOTDIR:
            return errors::PathNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY:
            return errors::PermissionDenied;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return errors::DiskFull;
        case EISDIR:
        case EEXIST:
        case EINVAL:
        case ELOOP:
        case ENAMETOOLONG:
            return errors::PathAccess;
        default:
            return errors::DeviceIo;
    }
}

std::string_view TextOf(int number) {
    switch (number) {
        case errors::FileNotFound:
            return "File not found";
        case errors::PathNotFound:
            return "Path not found";
        case errors::PermissionDenied:
            return "Permission denied";
        case errors::DiskFull:
            return "Disk full";
        case errors::PathAccess:
            return "Path/File access error";
        default:
            return "Device I/O error";
    }
}

Failure FailureOf(int number, std::string_view name) {
    return {number, std::string(TextOf(number)) + ": " + std::string(name), "DeskFiles"};
}

/// Runs a call of the operating system on `path`, turning its failures into ours.
template <class Call>
auto Calling(std::string_view name, const std::string& path, Call&& call) {
    try {
        return call();
    } catch (const std::system_error& error) {
        throw FailureOf(NumberOf(error.code().value(), path), name);
    }
}

class DeskInputFile final : public InputFile {
  public:
    DeskInputFile(FileHandle file, std::string_view name) : file_(std::move(file)), name_(name) {}

    std::size_t Read(std::span<std::byte> buffer) override {
        std::size_t filled = 0;
        try {
            while (filled < buffer.size()) {
                const std::size_t count = file_.Read(buffer.data() + filled, buffer.size() - filled);
                if (count == 0) break;
                filled += count;
            }
        } catch (const std::system_error&) {
            if (filled == 0) throw FailureOf(errors::DeviceIo, name_);
        }
        return filled;
    }

  private:
    FileHandle file_;
    std::string name_;
};

/// The number for a file that could not be opened to append to it: never one of a failed writing, such as a
/// disk without room for one more file would give.
int OpeningNumberOf(const std::system_error& error, const std::string& path) {
    const int number = NumberOf(error.code().value(), path);
    return number == errors::DiskFull || number == errors::DeviceIo ? errors::PathAccess : number;
}

/// The file opened for appending; `made` tells whether it is new.
struct Appending {
    FileHandle file;
    bool made = false;
};

Appending OpenToAppend(std::string_view name, const std::string& path) {
    try {
        return {FileHandle(path, O_WRONLY | O_APPEND)};
    } catch (const std::system_error& error) {
        if (error.code().value() != ENOENT) throw FailureOf(OpeningNumberOf(error, path), name);
    }
    try {
        return {FileHandle(path, O_WRONLY | O_APPEND | O_CREAT, 0666), true};
    } catch (const std::system_error& error) {
        throw FailureOf(OpeningNumberOf(error, path), name);
    }
}

void AppendTo(std::string_view name, const std::string& path, std::string_view text) {
    Appending open = OpenToAppend(name, path);
    const struct stat before = open.file.Status();
    try {
        open.file.WriteAll(text);
        open.file.Close();
    } catch (const std::system_error&) {
        // What was written of the line goes again. Devices and pipes cannot be shortened.
        if (open.made)
            ::unlink(path.c_str());
        else if (S_ISREG(before.st_mode) && ::truncate(path.c_str(), before.st_size) != 0)
            ThrowErrno();
        throw;
    }
}

}  // namespace

DeskFiles::DeskFiles(const std::string& workingDirectory) {
    const std::filesystem::path path =
        std::filesystem::absolute(workingDirectory.empty() ? "." : workingDirectory);
    directory_ = path.lexically_normal().string();
    while (directory_.size() > 1 && directory_.back() == '/') directory_.pop_back();
}

std::string DeskFiles::PathOf(std::string_view name) const {
    if (name.empty() || name.find('\0') != std::string_view::npos) throw FailureOf(errors::PathAccess, name);
    return FindName(directory_, name);
}

bool DeskFiles::Exists(std::string_view name) {
    if (name.empty() || name.find('\0') != std::string_view::npos) return false;
    struct stat status;
    return ::stat(FindName(directory_, name).c_str(), &status) == 0;
}

std::unique_ptr<InputFile> DeskFiles::Open(std::string_view name) {
    const std::string path = PathOf(name);
    return Calling(name, path, [&] {
        FileHandle file(path, O_RDONLY);
        if (!S_ISREG(file.Status().st_mode)) throw FailureOf(errors::PathAccess, name);
        return std::make_unique<DeskInputFile>(std::move(file), name);
    });
}

std::vector<std::string> DeskFiles::ReadLines(std::string_view name) {
    const std::string path = PathOf(name);
    const std::string content = Calling(name, path, [&] { return ReadFileWhole(path); });
    std::vector<std::string> lines;
    std::string_view rest = content;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        lines.emplace_back(rest.substr(0, end));
        const std::size_t width = rest.substr(end, 2) == "\r\n" ? 2 : 1;
        rest.remove_prefix(std::min(end + width, rest.size()));
    }
    return lines;
}

void DeskFiles::AppendLine(std::string_view name, std::string_view line) {
    const std::string path = PathOf(name);
    const std::string text = std::string(line).append(LineEnd);
    Calling(name, path, [&] { AppendTo(name, path, text); });
}

void DeskFiles::WriteWhole(std::string_view name, std::string_view content) {
    const std::string path = PathOf(name);
    Calling(name, path, [&] { WriteFileWhole(path, content); });
}

void DeskFiles::Delete(std::string_view name) {
    const std::string path = PathOf(name);
    if (StandsAsFolder(path)) throw FailureOf(errors::PathAccess, name);
    Calling(name, path, [&] {
        if (::unlink(path.c_str()) != 0) ThrowErrno();
    });
}

void DeskFiles::Copy(std::string_view from, std::string_view to) {
    const std::string source = PathOf(from);
    const std::string content = Calling(from, source, [&] { return ReadFileWhole(source); });
    WriteWhole(to, content);
}

void DeskFiles::MakeFolder(std::string_view name) {
    const std::string path = PathOf(name);
    if (StandsAsFolder(path)) return;
    Calling(name, path, [&] {
        if (::mkdir(path.c_str(), 0777) != 0) ThrowErrno();
    });
}

DateTime DeskFiles::DateOfLastChange(std::string_view name) {
    const std::string path = PathOf(name);
    return Calling(name, path, [&] {
        struct stat status;
        if (::stat(path.c_str(), &status) != 0) ThrowErrno();
        return LocalDateTime(std::int64_t{status.st_mtim.tv_sec} * 1000 + status.st_mtim.tv_nsec / 1000000);
    });
}

std::optional<DeskFiles::Imprint> DeskFiles::ImprintOf(const std::string& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    const auto nanoseconds = [](const timespec& time) {
        return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
    };
    return Imprint{status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
                   nanoseconds(status.st_ctim)};
}

bool DeskFiles::HasArchive(std::string_view name) {
    if (!Exists(name)) return false;
    const std::string path = PathOf(name);
    const std::optional<Imprint> imprint = ImprintOf(path);
    const auto cleared = cleared_.find(path);
    return imprint && (cleared == cleared_.end() || cleared->second != *imprint);
}

void DeskFiles::ClearArchive(std::string_view name) {
    if (!Exists(name)) return;
    const std::string path = PathOf(name);
    if (const std::optional<Imprint> imprint = ImprintOf(path)) cleared_.insert_or_assign(path, *imprint);
}

std::vector<std::string> DeskFiles::NamesIn(
    std::string_view folder,
    const std::function<bool(const std::string&, const std::filesystem::directory_entry&)>& isWanted) const {
    const std::string path = folder.empty() ? directory_ : PathOf(folder);
    std::vector<std::string> names;
    std::error_code failed;
    for (std::filesystem::directory_iterator entry(path, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const std::string name = entry->path().filename().string();
        // Names that begin with a point are hidden by custom, our own temporary files among them.
        if (!name.starts_with('.') && isWanted(name, *entry)) names.push_back(name);
    }
    std::ranges::sort(names, ComesBefore);
    return names;
}

std::vector<std::string> DeskFiles::List(std::string_view folder, std::string_view patterns) {
    return NamesIn(folder, [patterns](const std::string& name, const auto& entry) {
        std::error_code unknown;
        return MatchesOneOf(name, patterns) && entry.is_regular_file(unknown);
    });
}

bool DeskFiles::IsFolder(std::string_view name) {
    return name.empty() || StandsAsFolder(PathOf(name));
}

std::vector<std::string> DeskFiles::Folders(std::string_view folder) {
    return NamesIn(folder, [](const std::string&, const auto& entry) {
        std::error_code unknown;
        return entry.is_directory(unknown);
    });
}

std::vector<std::string> DeskFiles::Drives() {
    return DrivesAmong(MountedVolumes());
}

}  // namespace veltrix
