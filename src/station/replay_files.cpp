#include "station/replay_files.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace veltrix {

namespace {

constexpr std::string_view Above = "..";

std::string Within(const std::string& folder, std::string_view name) {
    return folder + (folder.ends_with('/') ? "" : "/") + std::string(name);
}

/// The folder above; the root is above itself.
std::string FolderAbove(const std::string& folder) {
    const std::size_t end = folder.rfind('/');
    return end == std::string::npos || end == 0 ? "/" : folder.substr(0, end);
}

/// A folder by its whole name, with "/" between its parts and none at its end.
std::string WholeName(std::string_view folder, const std::string& workingDirectory) {
    std::string name(folder);
    std::ranges::replace(name, '\\', '/');
    const bool hasDrive = name.size() > 1 && name[1] == ':';
    if (!name.starts_with('/') && !hasDrive) name = Within(workingDirectory, name);
    while (name.size() > 1 && name.ends_with('/')) name.pop_back();
    return name;
}

}  // namespace

ReplayFiles::ReplayFiles(FormControls& controls, Platform& platform,
                         std::function<void(const std::string&)> replay)
    : Drive1(controls.List("Drive1")),
      Dir1(controls.List("Dir1")),
      File1(controls.List("File1")),
      platform_(platform),
      replay_(std::move(replay)) {}

void ReplayFiles::Start() {
    Drive1.OnClick = [this](MouseButton) { ChooseDrive(); };
    Dir1.OnClick = [this](MouseButton) { ChooseFolder(); };
    Dir1.OnOther = [this](std::string_view folder) { return GoTo(folder); };
    File1.OnClick = [this](MouseButton button) {
        if (button == MouseButton::Left) replay_(folder_);
    };
    Drive1.SetEntries(platform_.files.Drives());
    const std::string drive = platform_.store.GetSetting("Setting", "Drive", "");
    Drive1.Choose(drive.empty() && !Drive1.Entries().empty() ? Drive1.Entries().front() : drive);
    const std::string present = platform_.files.WorkingDirectory();
    const std::string stored = platform_.store.GetSetting("Setting", "Path", present);
    Open(!stored.empty() && platform_.files.IsFolder(stored) ? WholeName(stored, present) : present);
}

void ReplayFiles::ChooseDrive() {
    const std::string drive = Drive1.Chosen();
    platform_.store.SaveSetting("Setting", "Drive", drive);
    GoTo(drive);
}

void ReplayFiles::ChooseFolder() {
    const std::string entry = Dir1.Chosen();
    if (entry == Above)
        GoTo(FolderAbove(folder_));
    else
        GoTo(Dir1.ListIndex() <= 0 ? folder_ : Within(folder_, entry));
}

/// Opens a folder and remembers it. False when there is no such folder.
bool ReplayFiles::GoTo(std::string_view folder) {
    std::string name = WholeName(folder, platform_.files.WorkingDirectory());
    if (folder.empty() || !platform_.files.IsFolder(name)) return false;
    Open(std::move(name));
    platform_.store.SaveSetting("Setting", "Path", folder_);
    return true;
}

void ReplayFiles::Open(std::string folder) {
    folder_ = std::move(folder);
    std::vector<std::string> entries{folder_};
    if (folder_ != "/") entries.emplace_back(Above);
    for (std::string& name : platform_.files.Folders(folder_)) entries.push_back(std::move(name));
    Dir1.SetEntries(std::move(entries));
    Dir1.SetListIndex(0);
    File1.SetEntries(platform_.files.List(folder_, "*N.csv"));
}

}  // namespace veltrix
