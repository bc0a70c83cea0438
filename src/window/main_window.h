#pragma once
// The window of a station.

#include <QMainWindow>
#include <functional>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/qt/qt_event_loop.h"
#include "window/bindings.h"
#include "window/window_place.h"

namespace veltrix {

/// Puts the controls and surfaces of the main form on a screen and nothing else: what is shown comes from the
/// models, and what the user does goes to them. REQUIRES a QApplication, and that the controls and the loop
/// outlive it. Made once the form is initialised. Ctrl+Q closes it, F11 fills the screen and gives it back.
class MainWindow final : public QMainWindow {
  public:
    /// `placeFile` remembers where the window stood; empty remembers nothing. `closed` is called once, when
    /// the user closes the window.
    MainWindow(ControlSet& controls, QtEventLoop& loop, const std::string& placeFile,
               std::function<void()> closed);

    /// Remembers its place too when it goes without having been closed, as on a signal.
    ~MainWindow() override;

    /// The names of the controls that no widget shows, which are those of hidden surfaces.
    std::vector<std::string> Unbound() const { return bindings_.Unbound(); }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void AddKeys();

    Bindings bindings_;
    WindowPlace place_;
    std::function<void()> closed_;
};

}  // namespace veltrix
