#pragma once
// A dialog that lies on a view and lets the user choose the view's background.

#include <functional>
#include <string>
#include <string_view>

#include "platform/error_convention.h"
#include "platform/platform.h"
#include "station/form_controls.h"

namespace veltrix {

/// The controls of such a dialog, and the key of section "Setting" that keeps the choice.
struct BackgroundControls {
    std::string_view frame;
    std::string_view files;     ///< lists the pictures of the working directory
    std::string_view filename;  ///< shows the choice
    std::string_view clear;
    std::string_view cancel;
    std::string_view key;
    bool closesOnChoice = false;
};

/// Frame2 or Frame3. Owned by the view that it belongs to.
class BackgroundDialog {
  public:
    BackgroundDialog(FormControls& controls, Platform& platform, ErrorReporter& errors,
                     const BackgroundControls& parts);

    /// Reads the choice of the last time and binds the controls: a click on a file chooses it and runs
    /// `chosen`, the clear button runs `clear` and closes the dialog. Failures of both are reported.
    void Start(std::function<void()> chosen, std::function<void()> clear);

    /// Lists the pictures of the working directory and shows the dialog.
    void Open();
    void Close() { frame_.SetVisible(false); }

    /// Takes another file, or none with the empty name: keeps it and runs what Start() was given. Failures
    /// are reported as those of `procedure`, a name that lasts as long as the program.
    void Choose(const std::string& name, std::string_view procedure);

    /// Shows that another file is in use, without keeping it as the user's choice.
    void Show(const std::string& name);

    /// Keeps another file as the choice, and shows it; nothing is run.
    void Keep(const std::string& name);

    /// The choice in force; empty for none.
    const std::string& Chosen() const { return chosen_; }
    /// The chosen file when it is there, else the empty name.
    std::string PresentFile() const;

  private:
    void ListFiles();

    Platform& platform_;
    ErrorReporter& errors_;
    Frame& frame_;
    ListBox& files_;
    TextBox& filename_;
    Button& clear_;
    Button& cancel_;
    std::string key_;
    std::string filesClick_;  // names of procedures, for error reports
    std::string clearClick_;
    bool closesOnChoice_;
    std::string chosen_;  // name of the file
    std::function<void()> whenChosen_;
};

}  // namespace veltrix
