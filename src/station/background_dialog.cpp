#include "station/background_dialog.h"

#include <utility>

namespace veltrix {

BackgroundDialog::BackgroundDialog(FormControls& controls, Platform& platform, ErrorReporter& errors,
                                   const BackgroundControls& parts)
    : platform_(platform),
      errors_(errors),
      frame_(controls.Group(parts.frame)),
      files_(controls.List(parts.files)),
      filename_(controls.Text(parts.filename)),
      clear_(controls.Push(parts.clear)),
      cancel_(controls.Push(parts.cancel)),
      key_(parts.key),
      filesClick_(files_.Name() + "_Click"),
      clearClick_(clear_.Name() + "_Click"),
      closesOnChoice_(parts.closesOnChoice) {}

void BackgroundDialog::Start(std::function<void()> chosen, std::function<void()> clear) {
    whenChosen_ = std::move(chosen);
    files_.OnClick = [this](MouseButton) { Choose(files_.Chosen(), filesClick_); };
    clear_.OnClick = [this, clear = std::move(clear)](MouseButton) {
        UnderErrorConvention(errors_, clearClick_, clear, [this] { Close(); });
    };
    cancel_.OnClick = [this](MouseButton) { Close(); };
    chosen_ = platform_.store.GetSetting("Setting", key_, "");
    ListFiles();
}

void BackgroundDialog::Open() {
    ListFiles();
    frame_.SetVisible(true);
}

void BackgroundDialog::ListFiles() {
    files_.SetEntries(platform_.files.List("", PictureFiles));
    Show(chosen_);
}

void BackgroundDialog::Show(const std::string& name) {
    filename_.SetText(name);
    files_.Choose(name);
}

void BackgroundDialog::Keep(const std::string& name) {
    chosen_ = name;
    Show(chosen_);
    platform_.store.SaveSetting("Setting", key_, chosen_);
}

void BackgroundDialog::Choose(const std::string& name, std::string_view procedure) {
    UnderErrorConvention(
        errors_, procedure, [&] { Keep(name); }, whenChosen_,
        [&] {
            if (closesOnChoice_) Close();
        });
}

std::string BackgroundDialog::PresentFile() const {
    return platform_.files.Exists(chosen_) ? chosen_ : "";
}

}  // namespace veltrix
