#include "platform/qt/ini_settings_store.h"

#include <filesystem>
#include <iostream>
#include <system_error>
#include <utility>

#include "platform/qt/whole_file.h"

namespace veltrix {

namespace {

namespace fs = std::filesystem;

std::string ReasonOf(const std::system_error& error) {
    if (error.code() == std::errc::is_a_directory) return "it is a folder";
    if (error.code() == std::errc::invalid_argument) return "it is not a file";
    return error.code().message();
}

}  // namespace

IniSettingsStore::IniSettingsStore(const std::string& path)
    : path_(fs::absolute(path).string()), settings_(std::string_view()) {
    try {
        Reload();
    } catch (const std::system_error& error) {
        whyUnusable_ = "cannot use " + path + " as settings file: " + ReasonOf(error);
    }
}

bool IniSettingsStore::Reload() {
    std::string content;
    try {
        content = ReadFileWhole(path_);
    } catch (const std::system_error& error) {
        if (error.code() != std::errc::no_such_file_or_directory) throw;
    }
    if (content.empty()) return false;
    if (content != onDisk_) {
        settings_ = IniText(content);
        for (const Unsaved& setting : unsaved_)
            settings_.SetValue(setting.section, setting.key, setting.value);
        onDisk_ = std::move(content);
    }
    return true;
}

std::string IniSettingsStore::GetSetting(std::string_view section, std::string_view key,
                                         std::string_view defaultText) {
    return settings_.Value(section, key).value_or(std::string(defaultText));
}

void IniSettingsStore::SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
    const std::string text = StorableText(value);
    try {
        const bool isThere = Reload();
        if (isThere && unsaved_.empty() && settings_.Value(section, key) == text) return;
        Remember({std::string(section), std::string(key), text});
        Write();
        unsaved_.clear();
    } catch (const std::system_error& error) {
        Remember({std::string(section), std::string(key), text});
        if (!std::exchange(told_, true))
            std::cerr << "veltrix: cannot write the settings to " + path_ + ": " + ReasonOf(error) +
                             "; this is tried again at the next change\n"
                      << std::flush;
    }
}

void IniSettingsStore::Remember(Unsaved setting) {
    settings_.SetValue(setting.section, setting.key, setting.value);
    std::erase_if(unsaved_, [&](const Unsaved& known) {
        return IniText::SameName(known.section, setting.section) && IniText::SameName(known.key, setting.key);
    });
    unsaved_.push_back(std::move(setting));
}

void IniSettingsStore::Write() {
    if (!IniText::KeepsAllOf(onDisk_)) KeepCopy();
    fs::create_directories(fs::path(path_).parent_path());
    std::string text = settings_.Text();
    WriteFileWhole(path_, text);
    // Read anew, so that texts that were replaced do not gather in memory.
    settings_ = IniText(text);
    onDisk_ = std::move(text);
}

void IniSettingsStore::KeepCopy() const {
    for (int number = 1;; ++number) {
        const std::string copy = path_ + ".bak" + (number > 1 ? std::to_string(number) : "");
        if (!fs::exists(copy)) {
            WriteFileWhole(copy, onDisk_);
            fs::permissions(copy, fs::status(path_).permissions());
            return;
        }
        if (fs::is_regular_file(copy) && ReadFileWhole(copy) == onDisk_) return;
    }
}

}  // namespace veltrix
