#include "station/about.h"

#include <utility>

namespace veltrix {

namespace {

constexpr int SplashMilliseconds = 3000;
constexpr const char* NotesFile = "ReleaseNotes.txt";

}  // namespace

About::About(FormControls& controls, Platform& platform, ErrorReporter& errors, std::string strVersion,
             std::string releaseNotes)
    : controls_(controls),
      platform_(platform),
      errors_(errors),
      strVersion_(std::move(strVersion)),
      releaseNotes_(std::move(releaseNotes)),
      splashEnd_(platform.loop.MakeTimer([this] { HideSplash(); })) {
    splashEnd_->SetInterval(SplashMilliseconds);
}

void About::Start() {
    controls_.Caption("Label22").SetCaption("Veltrix " + strVersion_);
    controls_.Splash().SetCaption("Veltrix " + strVersion_);
    controls_.Splash().OnClick = [this](MouseButton) { HideSplash(); };
    controls_.Push("Command1").OnClick = [this](MouseButton) { OpenReleaseNotes(); };
    PictureBox& picture = controls_.Picture("Picture10");
    picture.OnClick = [this](MouseButton button) {
        if (button == MouseButton::Left) ShowSplash();
    };
    picture.surface.SetPicture(platform_.pictures.BuiltIn(BuiltInPicture::Splash));
}

void About::ShowSplash() {
    controls_.Splash().SetVisible(true);
    splashEnd_->SetEnabled(false);  // to begin anew
    splashEnd_->SetEnabled(true);
}

void About::HideSplash() {
    splashEnd_->SetEnabled(false);
    controls_.Splash().SetVisible(false);
}

void About::OpenReleaseNotes() {
    UnderErrorConvention(
        errors_, "Command1_Click", [&] { platform_.files.WriteWhole(NotesFile, releaseNotes_); },
        [&] { platform_.processes.Start("notepad", {NotesFile}, WindowStyle::Maximized); });
}

}  // namespace veltrix
