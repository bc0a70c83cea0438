#pragma once
// Files of a station.

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/date_time.h"

namespace veltrix {

/// A file open for reading from its start to its end.
class InputFile {
  public:
    virtual ~InputFile() = default;
    /// Reads into `buffer` until it is full, the file ends or cannot be read on; returns the bytes read, 0 at
    /// the end of the file. Raises DeviceIo when the file cannot be read on and nothing was.
    virtual std::size_t Read(std::span<std::byte> buffer) = 0;
};

/// The file operations the system uses. Names are written with "\" as separator and are relative to the
/// station's working directory; an existing name is found without regard to case, so ".\Log" and ".\log" are
/// one folder. Every failure raises a Failure: FileNotFound, PathNotFound, PathAccess, PermissionDenied,
/// DiskFull or DeviceIo, with the name as the system writes it in the description.
class Files {
  public:
    virtual ~Files() = default;

    /// True when a file or folder of that name stands. The empty name never exists.
    virtual bool Exists(std::string_view name) = 0;
    /// True when a file of that name stands, not a folder.
    bool IsFile(std::string_view name) { return Exists(name) && !IsFolder(name); }
    /// Opens a file for reading, from its start.
    virtual std::unique_ptr<InputFile> Open(std::string_view name) = 0;
    /// The lines of a text file, without their line ends, whichever these are.
    virtual std::vector<std::string> ReadLines(std::string_view name) = 0;

    /// Appends one line with the line end of the system: opens, writes, closes. The file is made when
    /// missing, its folder is not. After a failure the file is as it was before: no half line stays. DiskFull
    /// and DeviceIo are failures of the writing; what fails in the opening raises other numbers.
    virtual void AppendLine(std::string_view name, std::string_view line) = 0;
    /// Replaces or makes a file whole. A reader, and a computer that loses power, sees the old or the new
    /// content.
    virtual void WriteWhole(std::string_view name, std::string_view content) = 0;

    /// Deletes a file.
    virtual void Delete(std::string_view name) = 0;
    /// Copies a file over another name, whole or not at all.
    virtual void Copy(std::string_view from, std::string_view to) = 0;
    /// Makes a folder; a folder that stands already is no failure.
    virtual void MakeFolder(std::string_view name) = 0;

    /// The local date-time of a file's last change.
    virtual DateTime DateOfLastChange(std::string_view name) = 0;

    /// The archive attribute: true when the file was changed, by whomever, since ClearArchive() was last
    /// called for it, and when that never happened in this run. A file that is missing has none.
    virtual bool HasArchive(std::string_view name) = 0;
    /// Clears the attribute; does nothing for a file that is missing.
    virtual void ClearArchive(std::string_view name) = 0;

    /// The names in `folder` ("" is the working directory) that match one of the patterns, such as
    /// "*.bmp;*.jpg", without regard to case, in alphabetical order. A folder that is missing has none.
    virtual std::vector<std::string> List(std::string_view folder, std::string_view patterns) = 0;

    /// True when a folder of that name stands; "" is the working directory.
    virtual bool IsFolder(std::string_view name) = 0;

    /// The names of the folders in `folder`, in alphabetical order; hidden ones are left out. A folder that
    /// is missing, or that may not be read, has none.
    virtual std::vector<std::string> Folders(std::string_view folder) = 0;

    /// What stands for the drives of the computer, in the computer's own form: the root first, then the
    /// mounted volumes.
    virtual std::vector<std::string> Drives() = 0;

    /// The working directory in the computer's own form.
    virtual std::string WorkingDirectory() const = 0;
};

}  // namespace veltrix
