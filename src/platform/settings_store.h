#pragma once
// The per-user settings store.

#include <string>
#include <string_view>

namespace veltrix {

/// Text values under a section and a key, both compared without regard to case.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    /// The stored text, or `defaultText` when there is none.
    virtual std::string GetSetting(std::string_view section, std::string_view key,
                                   std::string_view defaultText) = 0;

    /// Stores a text at once: when this returns it survives a loss of power. Storing what stands there
    /// already does not touch the file. When the file cannot be written the value holds for this run, and the
    /// user is told in one line on standard error, once; nothing is raised.
    virtual void SaveSetting(std::string_view section, std::string_view key, std::string_view value) = 0;
};

}  // namespace veltrix
