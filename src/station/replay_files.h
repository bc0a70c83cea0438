#pragma once
// Where the user looks for strike logs to plot again.

#include <functional>
#include <string>
#include <string_view>

#include "platform/platform.h"
#include "station/form_controls.h"

namespace veltrix {

/// Drive, folder and log, each in its list. Dir1 lists the open folder by its whole name, the one above as
/// "..", and the folders within. Owned by the form.
class ReplayFiles {
  public:
    /// `replay` plots the log of today from a folder.
    ReplayFiles(FormControls& controls, Platform& platform, std::function<void(const std::string&)> replay);

    /// Opens the folder of the last time, else the working directory, and binds the lists.
    void Start();

  private:
    void ChooseDrive();
    void ChooseFolder();
    bool GoTo(std::string_view folder);
    void Open(std::string folder);

    ListBox& Drive1;
    ListBox& Dir1;
    ListBox& File1;
    Platform& platform_;
    std::function<void(const std::string&)> replay_;
    std::string folder_;
};

}  // namespace veltrix
