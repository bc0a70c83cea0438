#pragma once
// Controls as models: what a text box, an option or a list shows and what a user's action on it runs, without
// a screen. The window binds a widget to each; a station without a window runs the same code.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/bitmap.h"
#include "common/colour.h"

namespace veltrix {

/// What a control is, and so which widget shows it.
enum class ControlKind {
    Form,
    Frame,
    Text,
    Label,
    Check,
    Button,
    List,
    Combo,
    Tabs,
    Picture,
    Marker,
    Shape,
    Line,
    Menu
};

/// The lower-case name of a kind, such as "text".
std::string_view KindName(ControlKind kind);

/// The buttons of the mouse that mean something.
enum class MouseButton { Left, Right };
/// What the mouse does; a drop ends the drag of a marker.
enum class MouseAction { Down, Move, Up, Drop };

/// One action of the mouse, in the control's own coordinates.
struct MouseEvent {
    MouseAction action = MouseAction::Down;
    MouseButton button = MouseButton::Left;
    double x = 0;
    double y = 0;
};

/// What all controls have. A control belongs to its form and is known by its name; it never moves in memory.
/// Writing a property through its setter tells the bound widget, and only when the value changed.
class Control {
  public:
    Control(std::string name, ControlKind kind) : name_(std::move(name)), kind_(kind) {}
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// What its form and the control socket know it by; it never changes.
    const std::string& Name() const { return name_; }
    ControlKind Kind() const { return kind_; }

    /// The colours of its text and of its ground.
    virtual ColourValue ForeColor() const { return foreColor_; }
    void SetForeColor(ColourValue colour) { Set(foreColor_, colour); }
    virtual ColourValue BackColor() const { return backColor_; }
    void SetBackColor(ColourValue colour) { Set(backColor_, colour); }
    /// The background style: opaque, or clear so that what the control lies on is seen through it.
    bool Opaque() const { return opaque_; }
    void SetOpaque(bool opaque) { Set(opaque_, opaque); }
    /// Whether it is to be seen, when what it lies on is.
    bool Visible() const { return visible_; }
    void SetVisible(bool visible) { Set(visible_, visible); }
    /// What is told of it when the mouse rests on it; empty for nothing.
    const std::string& ToolTipText() const { return toolTip_; }
    void SetToolTipText(std::string text) { Set(toolTip_, std::move(text)); }
    /// The text on it, for the kinds that have one.
    const std::string& Caption() const { return caption_; }
    void SetCaption(std::string text) { Set(caption_, std::move(text)); }
    /// Its upper left corner, in the units of the surface that it lies on.
    double Left() const { return left_; }
    void SetLeft(double left) { Set(left_, left); }
    double Top() const { return top_; }
    void SetTop(double top) { Set(top_, top); }

    /// What the control shows, a line each: see the kinds below.
    virtual std::vector<std::string> Lines() const { return {caption_}; }

    /// A user's entry: types the whole text, ticks with 0 or 1, chooses an entry or a tab, and runs the
    /// handler. False when the control takes no entry, or not this one; nothing has changed then.
    virtual bool Enter(std::string_view) { return false; }

    /// A user's click with a mouse button. False when the control does nothing on it.
    virtual bool ClickBy(MouseButton button);

    /// Any mouse action of a user. False when the control does not follow the mouse.
    bool Mouse(const MouseEvent& event);

    /// What is painted on the control at this moment; nothing for one that has no pixels.
    virtual std::optional<Bitmap> Snapshot() const { return std::nullopt; }
    /// One pixel of that, in the control's own coordinates; -1 outside.
    virtual std::optional<ColourValue> PixelAt(double, double) const { return std::nullopt; }

    std::function<void(MouseButton)> OnClick;        ///< set by the form
    std::function<void(const MouseEvent&)> OnMouse;  ///< set by the form
    std::function<void()> OnShow;                    ///< set by the widget: something shown has changed

  protected:
    /// Whether the mouse is followed even while no handler is set.
    virtual bool AlwaysFollowsMouse() const { return false; }

    /// Gives a property its value, and tells the widget if that is another one.
    template <class T>
    void Set(T& property, T value) {
        if (property == value) return;
        property = std::move(value);
        Changed();
    }
    /// Tells the widget that something shown has changed.
    void Changed() const {
        if (OnShow) OnShow();
    }

  private:
    std::string name_;
    ControlKind kind_;
    std::string caption_;
    std::string toolTip_;
    ColourValue foreColor_ = White;
    ColourValue backColor_ = Black;
    bool opaque_ = true;
    bool visible_ = true;
    double left_ = 0;
    double top_ = 0;
};

/// A box of text that the user edits or only reads.
class TextBox final : public Control {
  public:
    explicit TextBox(std::string name) : Control(std::move(name), ControlKind::Text) {}
    /// What stands in the box. Setting it runs no handler.
    const std::string& Text() const { return text_; }
    void SetText(std::string text) { Set(text_, std::move(text)); }
    std::vector<std::string> Lines() const override { return {text_}; }
    bool Enter(std::string_view text) override;

    std::function<void()> OnEntry;  ///< the key-up or change handler, set by the form

  private:
    std::string text_;
};

/// A label: its caption is what it shows.
class Label final : public Control {
  public:
    explicit Label(std::string name) : Control(std::move(name), ControlKind::Label) {}

    /// The room from Left() on that its text is reckoned to take, in pixels of the surface that it lies on.
    /// Whoever shows it may find that the text takes more.
    double Width() const { return width_; }
    void SetWidth(double width) { Set(width_, width); }
    /// Whether the text ends where that room ends, instead of beginning where it begins.
    bool RightAligned() const { return rightAligned_; }
    void SetRightAligned(bool rightAligned) { Set(rightAligned_, rightAligned); }

  private:
    double width_ = 0;
    bool rightAligned_ = false;
};

/// A check box or option: off is 0, on is 1.
class CheckBox final : public Control {
  public:
    explicit CheckBox(std::string name) : Control(std::move(name), ControlKind::Check) {}
    /// Setting the value runs no handler. Stored settings may hold other numbers; from 1 on it counts as on.
    std::int32_t Value() const { return value_; }
    bool Checked() const { return value_ >= 1; }
    void SetValue(std::int32_t value) { Set(value_, value); }
    std::vector<std::string> Lines() const override { return {std::to_string(value_)}; }
    bool Enter(std::string_view text) override;
    /// Flips the value and runs the handler.
    bool ClickBy(MouseButton button) override;

  private:
    std::int32_t value_ = 0;
};

/// A push button or menu entry: its caption is what it shows.
class Button final : public Control {
  public:
    explicit Button(std::string name) : Control(std::move(name), ControlKind::Button) {}
    /// The left button alone pushes it.
    bool ClickBy(MouseButton button) override;
};

/// A list of entries, one of which can be chosen; as a combo box it drops down.
class ListBox final : public Control {
  public:
    ListBox(std::string name, ControlKind kind) : Control(std::move(name), kind) {}
    /// All entries, from the top.
    const std::vector<std::string>& Entries() const { return entries_; }
    /// Replaces all entries; none is chosen afterwards.
    void SetEntries(std::vector<std::string> entries);
    /// Appends an entry; the chosen one stays so.
    void Add(std::string entry);
    /// Takes all entries out.
    void Clear() { SetEntries({}); }
    /// Index of the chosen entry, -1 when there is none.
    int ListIndex() const { return listIndex_; }
    /// The chosen entry; empty when there is none.
    std::string Chosen() const;
    /// Chooses the entry that reads so, if need be without regard to case, without running the handler; none
    /// when there is no such entry.
    void Choose(std::string_view entry);
    /// Chooses an entry without running the handler. REQUIRES -1 <= index < number of entries.
    void SetListIndex(int index) { Set(listIndex_, index); }
    std::vector<std::string> Lines() const override { return entries_; }
    bool Enter(std::string_view entry) override;
    /// Runs the handler for the chosen entry; nothing happens while there is none. A list that is filled when
    /// it drops down does so instead.
    bool ClickBy(MouseButton button) override;

    /// Takes a user's entry that is not in the list; false refuses it. Null where none is taken.
    std::function<bool(std::string_view)> OnOther;
    std::function<void()> OnDropDown;  ///< fills the list when it drops down; set by the form
    std::function<void()> OnCloseUp;   ///< the list has closed, after any choice; set by the form

  private:
    std::vector<std::string> entries_;
    int listIndex_ = -1;
};

/// A strip of tabs, one of which is open; a tab is named by its caption.
class TabStrip final : public Control {
  public:
    TabStrip(std::string name, std::vector<std::string> tabs)
        : Control(std::move(name), ControlKind::Tabs), tabs_(std::move(tabs)) {}
    /// The captions of all tabs, from the left.
    const std::vector<std::string>& Tabs() const { return tabs_; }
    /// Number of the open tab, from 0.
    int Tab() const { return tab_; }
    /// Opens a tab without running the handler. REQUIRES a number of an existing tab.
    void SetTab(int tab) { Set(tab_, tab); }
    std::vector<std::string> Lines() const override { return {tabs_.at(static_cast<std::size_t>(tab_))}; }
    bool Enter(std::string_view caption) override;

  private:
    std::vector<std::string> tabs_;
    int tab_ = 0;
};

/// A small square mark that lies on a surface, all of its background colour.
class Marker final : public Control {
  public:
    static constexpr int Side = 9;  ///< pixels

    explicit Marker(std::string name) : Control(std::move(name), ControlKind::Marker) {}
    /// Puts it before the other marks on its surface.
    void BringToFront() const {
        if (OnFront) OnFront();
    }
    /// Width of its border, 0 or 1.
    int Border() const { return border_; }
    void SetBorder(int border) { Set(border_, border); }
    /// One line: left, top, background and visibility, with blanks between.
    std::vector<std::string> Lines() const override;
    std::optional<Bitmap> Snapshot() const override;
    std::optional<ColourValue> PixelAt(double x, double y) const override;

    std::function<void()> OnFront;  ///< set by the widget

  protected:
    bool AlwaysFollowsMouse() const override { return true; }

  private:
    int border_ = 0;
};

/// A figure that lies on a surface and leaves the mouse to what is under it; its lines have its fore colour.
class Shape final : public Control {
  public:
    explicit Shape(std::string name) : Control(std::move(name), ControlKind::Shape) {}
    /// Its size, in pixels of the surface.
    double Width() const { return width_; }
    void SetWidth(double width) { Set(width_, width); }
    double Height() const { return height_; }
    void SetHeight(double height) { Set(height_, height); }
    /// One line: left, top, width, height and visibility, with blanks between.
    std::vector<std::string> Lines() const override;

  private:
    double width_ = 0;
    double height_ = 0;
};

/// A straight line that lies on a surface and leaves the mouse to what is under it.
class LineShape final : public Control {
  public:
    /// Its two ends, in pixels of the surface.
    struct Ends {
        double X1 = 0;
        double Y1 = 0;
        double X2 = 0;
        double Y2 = 0;

        bool operator==(const Ends&) const = default;
    };

    explicit LineShape(std::string name) : Control(std::move(name), ControlKind::Line) {}
    /// Where it runs.
    const Ends& TheEnds() const { return ends_; }
    void SetEnds(const Ends& ends) { Set(ends_, ends); }
    /// One line: both ends, x before y, and visibility, with blanks between.
    std::vector<std::string> Lines() const override;

  private:
    Ends ends_;
};

/// A menu that pops up. Its entries are buttons of the form; one with the caption "-" separates others.
class Menu final : public Control {
  public:
    Menu(std::string name, std::vector<std::string> entries)
        : Control(std::move(name), ControlKind::Menu), entries_(std::move(entries)) {}
    /// The names of the buttons, from the top.
    const std::vector<std::string>& Entries() const { return entries_; }
    /// Opens it at a place of the surface that it belongs to. Without a window nothing is seen of it.
    void PopUp(double left, double top) {
        SetLeft(left);
        SetTop(top);
        if (OnPopUp) OnPopUp();
    }
    std::vector<std::string> Lines() const override { return entries_; }

    std::function<void()> OnPopUp;  ///< set by the widget

  private:
    std::vector<std::string> entries_;
};

/// A group of controls that is seen or hidden as a whole, such as a dialog that lies on a view.
class Frame final : public Control {
  public:
    explicit Frame(std::string name) : Control(std::move(name), ControlKind::Frame) {}
};

/// A form: its caption is the window's title.
class FormControl final : public Control {
  public:
    explicit FormControl(std::string name) : Control(std::move(name), ControlKind::Form) {}
};

/// All controls of a form by name, names compared without regard to case, kept in the order they were made.
class ControlSet {
  public:
    /// Makes a control that lives as long as the set. REQUIRES a name not yet used.
    template <class T, class... Args>
    T& Make(std::string name, Args&&... args) {
        auto control = std::make_unique<T>(std::move(name), std::forward<Args>(args)...);
        T& made = *control;
        Keep(std::move(control));
        return made;
    }
    /// The control of that name, or null.
    Control* Find(std::string_view name) const;
    /// The same for a name that the form is designed with. Throws std::logic_error when there is none.
    Control& Require(std::string_view name) const;
    /// All controls, in the order they were made.
    const std::vector<std::unique_ptr<Control>>& All() const { return all_; }

  private:
    void Keep(std::unique_ptr<Control> control);

    std::vector<std::unique_ptr<Control>> all_;
    std::map<std::string, Control*, std::less<>> byName_;
};

/// The name of element `index` of an array of controls: `Picture7(12)`.
std::string ElementName(std::string_view array, int index);

}  // namespace veltrix
