#pragma once
// Which control of the form is shown by which widget.

#include <QObject>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "window/refresher.h"

namespace veltrix {

/// Ties widgets to the control models of a form: a model that changes refreshes its widget, a user's action
/// on a widget runs on its model. Serves as the context of all connections to widgets, so that nothing runs
/// once it is gone. REQUIRES that the controls outlive it, and that it goes before the widgets do.
class Bindings final : public QObject {
  public:
    /// `run` runs a handler of the form and takes what it throws.
    Bindings(ControlSet& controls, std::function<void(const std::function<void()>&)> run);
    ~Bindings() override;

    /// The control of that name. Throws std::logic_error when the form has none.
    Control& Find(std::string_view name) const { return controls_.Require(name); }

    /// The control of that name, or null.
    Control* FindIf(std::string_view name) const { return controls_.Find(name); }

    /// Runs `refresh` after each change of the control, in the next frame, and once at first.
    void Watch(Control& control, std::function<void()> refresh);
    /// The same for a widget, of which visibility and tool tip are kept too.
    void Bind(Control& control, QWidget& widget, std::function<void()> refresh);

    /// Runs more when a bound control is refreshed.
    void Also(Control& control, std::function<void()> more);

    /// Runs a user's action on a control, then brings everything that it changed to the screen. The control's
    /// own widget is refreshed in any case, since the user has changed it.
    void Act(Control& control, const std::function<void()>& action);
    /// Runs an action that comes often and is shown with the next frame.
    void ActQuietly(const std::function<void()>& action) { run_(action); }

    /// Who brings changes to the screen.
    Refresher& Screen() { return screen_; }

    /// The names of the controls that nothing is bound to.
    std::vector<std::string> Unbound() const;

  private:
    ControlSet& controls_;
    std::function<void(const std::function<void()>&)> run_;
    Refresher screen_;
    std::map<const Control*, std::size_t> bound_;  // to the number in screen_
};

}  // namespace veltrix
