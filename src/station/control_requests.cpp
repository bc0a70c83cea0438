#include "station/control_requests.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

#include "common/failure.h"
#include "common/neutral_text.h"
#include "display/bitmap_file.h"

namespace veltrix {

namespace {

/// What ends a request: the text becomes the error line of its answer.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Takes the first word off `text`, and the one blank behind it.
std::string_view TakeWord(std::string_view& text) {
    const std::size_t length = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return word;
}

MouseButton ButtonOf(std::string_view word) {
    if (word == "right") return MouseButton::Right;
    if (word.empty() || word == "left") return MouseButton::Left;
    throw Refused("unknown button " + std::string(word));
}

MouseAction ActionOf(std::string_view word) {
    if (word == "down") return MouseAction::Down;
    if (word == "move") return MouseAction::Move;
    if (word == "up") return MouseAction::Up;
    if (word == "drop") return MouseAction::Drop;
    throw Refused("unknown mouse action " + std::string(word));
}

double CoordinateOf(std::string_view word) {
    if (word.empty()) throw Refused("the position is missing");
    double value = 0;
    const auto read = std::from_chars(word.data(), word.data() + word.size(), value);
    if (read.ec != std::errc() || !std::isfinite(value) || read.ptr != word.data() + word.size())
        throw Refused("'" + std::string(word) + "' is no position");
    return value;
}

std::string PropertyOf(const Control& control, std::string_view property) {
    if (property == "ForeColor") return std::to_string(control.ForeColor());
    if (property == "BackColor") return std::to_string(control.BackColor());
    if (property == "Visible") return control.Visible() ? "1" : "0";
    if (property == "ToolTipText") return control.ToolTipText();
    if (property == "Caption") return control.Caption();
    if (property == "Left") return GeneralNumber(control.Left());
    if (property == "Top") return GeneralNumber(control.Top());
    throw Refused("unknown property " + std::string(property));
}

}  // namespace

ControlRequests::ControlRequests(ControlSet& controls, Files& files, std::function<void()> quit)
    : controls_(controls), files_(files), quit_(std::move(quit)) {}

std::vector<std::string> ControlRequests::Answer(std::string_view request) {
    Lines answer;
    std::string_view rest = request;
    const std::string_view word = TakeWord(rest);
    try {
        if (word == "list") {
            answer = List();
        } else if (word == "get") {
            answer = Get(rest);
        } else if (word == "set") {
            const std::string_view name = TakeWord(rest);
            Enter(name, rest);
        } else if (word == "click") {
            const std::string_view name = TakeWord(rest);
            Click(name, rest);
        } else if (word == "mouse") {
            const std::string_view name = TakeWord(rest);
            Mouse(name, rest);
        } else if (word == "point") {
            const std::string_view name = TakeWord(rest);
            answer = Point(name, rest);
        } else if (word == "save") {
            const std::string_view name = TakeWord(rest);
            Save(name, rest);
        } else if (word == "quit") {
            quit_();
        } else if (word.empty()) {
            throw Refused("the request is empty");
        } else {
            throw Refused("unknown request " + std::string(word));
        }
        answer.emplace_back("ok");
    } catch (const Refused& refused) {
        answer = {std::string("error ") + refused.what()};
    }
    return answer;
}

ControlRequests::Lines ControlRequests::List() const {
    Lines lines;
    for (const auto& control : controls_.All())
        lines.push_back("= " + control->Name() + " " + std::string(KindName(control->Kind())));
    return lines;
}

ControlRequests::Lines ControlRequests::Get(std::string_view name) const {
    const std::size_t point = name.rfind('.');
    if (point != std::string_view::npos)
        return {"= " + PropertyOf(Find(name.substr(0, point)), name.substr(point + 1))};
    Lines lines = Find(name).Lines();
    for (std::string& line : lines) line.insert(0, "= ");
    return lines;
}

void ControlRequests::Enter(std::string_view name, std::string_view value) const {
    if (!Find(name).Enter(value))
        throw Refused(std::string(name) + " does not take '" + std::string(value) + "'");
}

void ControlRequests::Click(std::string_view name, std::string_view arguments) const {
    Control& control = Find(name);
    const MouseButton button = ButtonOf(arguments);
    // A click is a press and a release, too.
    bool acts = control.Mouse({MouseAction::Down, button, 0, 0});
    acts = control.Mouse({MouseAction::Up, button, 0, 0}) || acts;
    if (!control.ClickBy(button) && !acts) throw Refused(std::string(name) + " does nothing on a click");
}

void ControlRequests::Mouse(std::string_view name, std::string_view arguments) const {
    Control& control = Find(name);
    MouseEvent event;
    event.action = ActionOf(TakeWord(arguments));
    const std::string_view x = TakeWord(arguments);
    const std::string_view y = TakeWord(arguments);
    event.x = CoordinateOf(x);
    event.y = CoordinateOf(y);
    event.button = ButtonOf(arguments);
    if (!control.Mouse(event)) throw Refused(std::string(name) + " does not follow the mouse");
}

ControlRequests::Lines ControlRequests::Point(std::string_view name, std::string_view arguments) const {
    const Control& control = Find(name);
    const double x = CoordinateOf(TakeWord(arguments));
    const double y = CoordinateOf(arguments);
    const std::optional<ColourValue> color = control.PixelAt(x, y);
    if (!color) throw Refused(std::string(name) + " has no pixels");
    return {"= " + std::to_string(*color)};
}

void ControlRequests::Save(std::string_view name, std::string_view fileName) const {
    const std::optional<Bitmap> image = Find(name).Snapshot();
    if (!image) throw Refused(std::string(name) + " has no pixels");
    if (fileName.empty()) throw Refused("the name of the file is missing");
    try {
        SaveBitmap(files_, fileName, *image);
    } catch (const Failure& failure) {
        throw Refused(failure.Description());
    }
}

Control& ControlRequests::Find(std::string_view name) const {
    if (name.empty()) throw Refused("the name of a control is missing");
    Control* const control = controls_.Find(name);
    if (!control) throw Refused("no control named " + std::string(name));
    return *control;
}

}  // namespace veltrix
