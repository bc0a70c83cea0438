#pragma once
// The settings store in a file of the user.

#include <string>
#include <vector>

#include "platform/qt/ini_text.h"
#include "platform/settings_store.h"

namespace veltrix {

/// Keeps the settings in an INI file that the user may edit at any time. The file is read when the store is
/// made, and again before each save, so an edit made while the program runs stays; it is seen from then on.
///
/// A file that holds what an INI file cannot is kept beside it as NAME.bak (NAME.bak2 and so on when that is
/// taken by another content) before it is first written over.
class IniSettingsStore final : public SettingsStore {
  public:
    /// A file that is missing is an empty store; it is made, with its folders, at the first save.
    explicit IniSettingsStore(const std::string& path);

    std::string GetSetting(std::string_view section, std::string_view key,
                           std::string_view defaultText) override;
    void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;

    /// Why the file cannot serve as a store, in one line for the user: it is a folder or no file at all, or
    /// cannot be read. Empty when all is well, and when the file is missing.
    const std::string& WhyUnusable() const { return whyUnusable_; }

  private:
    struct Unsaved {
        std::string section;
        std::string key;
        std::string value;
    };

    /// Takes over what the file holds, with the unsaved values on top. False when it is missing or empty:
    /// what was in force stays. Raises std::system_error.
    bool Reload();
    void Remember(Unsaved setting);
    /// Writes what is in force. Raises std::system_error.
    void Write();
    /// Keeps what the file held under a name of its own. Raises std::system_error.
    void KeepCopy() const;

    std::string path_;
    std::string onDisk_;            // the file's content when it was last read or written
    IniText settings_;              // of onDisk_, with what could not be written
    std::vector<Unsaved> unsaved_;  // one for each key
    std::string whyUnusable_;
    bool told_ = false;
};

}  // namespace veltrix
