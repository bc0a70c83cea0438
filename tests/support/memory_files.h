#pragma once
// The files of a station in memory, with failures on demand.

#include <fnmatch.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "common/failure.h"
#include "common/letter_case.h"
#include "platform/files.h"
#include "support/manual_clock.h"

namespace veltrix {

enum class FileOperation { Open, Read, ReadLines, AppendLine, WriteWhole, Delete, Copy, MakeFolder, Date };

/// Keeps the contract of Files. The working directory stands, and so does each folder that a test or the code
/// under test makes; dates of change come from the clock.
class MemoryFiles final : public Files {
  public:
    explicit MemoryFiles(ManualClock& clock) : clock_(clock) {}

    /// Puts a file there as another program would, with the folders it needs.
    void Put(std::string_view name, std::string content) {
        const std::string plain = Plain(name);
        for (std::string above = FolderOf(plain); !above.empty(); above = FolderOf(above))
            entries_.try_emplace(above, Entry{"", clock_.Now(), true});
        entries_[plain] = {std::move(content), clock_.Now(), false};
    }
    /// The content of a file; empty when it is missing.
    std::string Content(std::string_view name) const {
        const auto found = entries_.find(Plain(name));
        return found == entries_.end() ? "" : found->second.content;
    }
    /// The names of all files, as they were first written, folders left out.
    std::vector<std::string> AllFiles() const {
        std::vector<std::string> names;
        for (const auto& [name, entry] : entries_)
            if (!entry.isFolder) names.push_back(name);
        return names;
    }
    /// The next `times` operations of that kind on `name` fail with `number`; the empty name stands for any.
    void FailOn(FileOperation operation, std::string_view name, int number, int times = 1) {
        faults_.push_back({operation, Plain(name), number, times});
    }

    bool Exists(std::string_view name) override {
        return !name.empty() && (Plain(name).empty() || entries_.contains(Plain(name)));
    }
    std::unique_ptr<InputFile> Open(std::string_view name) override {
        return std::make_unique<Reader>(*this, name, File(FileOperation::Open, name).content);
    }
    std::vector<std::string> ReadLines(std::string_view name) override {
        std::vector<std::string> lines;
        std::istringstream content(File(FileOperation::ReadLines, name).content);
        for (std::string line; std::getline(content, line); lines.push_back(line))
            if (line.ends_with('\r')) line.pop_back();
        return lines;
    }
    void AppendLine(std::string_view name, std::string_view line) override {
        Store(FileOperation::AppendLine, name, Content(name) + std::string(line) + "\n");
    }
    void WriteWhole(std::string_view name, std::string_view content) override {
        Store(FileOperation::WriteWhole, name, std::string(content));
    }
    void Delete(std::string_view name) override {
        File(FileOperation::Delete, name);
        entries_.erase(Plain(name));
    }
    void Copy(std::string_view from, std::string_view to) override {
        Store(FileOperation::Copy, to, std::string(File(FileOperation::Copy, from).content));
    }
    void MakeFolder(std::string_view name) override {
        CheckFault(FileOperation::MakeFolder, name);
        if (Plain(name).empty()) return;
        Entry& entry = Stand(name, {"", clock_.Now(), true});
        if (!entry.isFolder) throw FailureOf(errors::PathAccess, name);
    }
    DateTime DateOfLastChange(std::string_view name) override {
        return File(FileOperation::Date, name).changed;
    }
    bool HasArchive(std::string_view name) override {
        const auto found = entries_.find(Plain(name));
        return found != entries_.end() && found->second.hasArchive;
    }
    void ClearArchive(std::string_view name) override {
        const auto found = entries_.find(Plain(name));
        if (found != entries_.end()) found->second.hasArchive = false;
    }
    std::vector<std::string> List(std::string_view folder, std::string_view patterns) override {
        std::vector<std::string> names;
        for (const std::string& path : AllFiles()) {
            if (!EqualIgnoringCase(FolderOf(path), Plain(folder))) continue;
            const std::string name = path.substr(path.rfind('\\') + 1);
            std::istringstream all{std::string(patterns)};
            bool matches = false;
            for (std::string pattern; !matches && std::getline(all, pattern, ';');)
                matches = ::fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
            if (matches) names.push_back(name);
        }
        return names;
    }
    bool IsFolder(std::string_view name) override {
        const auto found = entries_.find(Plain(name));
        return Plain(name).empty() || (found != entries_.end() && found->second.isFolder);
    }
    std::vector<std::string> Folders(std::string_view folder) override {
        std::vector<std::string> names;
        for (const auto& [path, entry] : entries_) {
            const std::string name = path.substr(path.rfind('\\') + 1);
            if (entry.isFolder && !name.starts_with('.') && EqualIgnoringCase(FolderOf(path), Plain(folder)))
                names.push_back(name);
        }
        return names;
    }
    std::vector<std::string> Drives() override { return {"/", "D:"}; }
    std::string WorkingDirectory() const override { return "/memory"; }

  private:
    struct Entry {
        std::string content;
        DateTime changed = 0;
        bool isFolder = false;
        bool hasArchive = true;  ///< until it is cleared
    };
    struct Fault {
        FileOperation operation;
        std::string name;
        int number;
        int times;
    };
    struct BeforeInAnyCase {
        bool operator()(const std::string& one, const std::string& other) const {
            return LowerCase(one) < LowerCase(other);
        }
    };
    struct Reader final : InputFile {
        Reader(MemoryFiles& owner, std::string_view ofName, std::string text)
            : files(owner), name(ofName), content(std::move(text)) {}
        std::size_t Read(std::span<std::byte> buffer) override {
            files.CheckFault(FileOperation::Read, name);
            const auto count = content.copy(reinterpret_cast<char*>(buffer.data()), buffer.size(), at);
            at += count;
            return count;
        }
        MemoryFiles& files;
        std::string name;
        std::string content;
        std::size_t at = 0;
    };

    /// A name with single "\" as separators and without "." components; empty for the working directory.
    static std::string Plain(std::string_view name) {
        std::string plain(name);
        std::ranges::replace(plain, '\\', '/');
        plain = std::filesystem::path(plain).lexically_normal().string();
        if (plain.size() > 1 && plain.back() == '/') plain.pop_back();
        std::ranges::replace(plain, '/', '\\');
        return plain == "." ? "" : plain;
    }
    static std::string FolderOf(const std::string& plain) {
        const std::size_t end = plain.rfind('\\');
        return end == std::string::npos ? "" : plain.substr(0, end);
    }
    static Failure FailureOf(int number, std::string_view name) {
        return {number, "Failure " + std::to_string(number) + " on " + std::string(name), "MemoryFiles"};
    }

    void CheckFault(FileOperation operation, std::string_view name) {
        for (Fault& fault : faults_) {
            if (fault.operation != operation || fault.times == 0) continue;
            if (!fault.name.empty() && !EqualIgnoringCase(fault.name, Plain(name))) continue;
            --fault.times;
            throw FailureOf(fault.number, name);
        }
    }
    /// The entry of that name, made when missing. Raises PathNotFound when its folder is missing.
    Entry& Stand(std::string_view name, Entry made) {
        const std::string plain = Plain(name);
        if (!FolderOf(plain).empty() && !entries_.contains(FolderOf(plain)))
            throw FailureOf(errors::PathNotFound, name);
        return entries_.try_emplace(plain, std::move(made)).first->second;
    }
    /// The file of that name for an operation; raises what is missing.
    Entry& File(FileOperation operation, std::string_view name) {
        CheckFault(operation, name);
        const std::string plain = Plain(name);
        const auto found = entries_.find(plain);
        if (plain.empty() || (found != entries_.end() && found->second.isFolder))
            throw FailureOf(errors::PathAccess, name);
        if (found != entries_.end()) return found->second;
        const bool folderStands = FolderOf(plain).empty() || entries_.contains(FolderOf(plain));
        throw FailureOf(folderStands ? errors::FileNotFound : errors::PathNotFound, name);
    }
    /// Gives a file its content; makes it when missing.
    void Store(FileOperation operation, std::string_view name, std::string content) {
        CheckFault(operation, name);
        if (Plain(name).empty()) throw FailureOf(errors::PathAccess, name);
        Entry& file = Stand(name, {});
        if (file.isFolder) throw FailureOf(errors::PathAccess, name);
        file = {std::move(content), clock_.Now(), false};
    }

    ManualClock& clock_;
    std::map<std::string, Entry, BeforeInAnyCase> entries_;
    std::vector<Fault> faults_;
};

}  // namespace veltrix
