#include "station/form_controls.h"

#include <stdexcept>

#include "station/control_designs.h"

namespace veltrix {

namespace {

Control& MakeOne(ControlSet& set, const ControlDesign& design, std::string name) {
    switch (design.kind) {
        case ControlKind::Text: {
            TextBox& box = set.Make<TextBox>(std::move(name));
            box.SetText(std::string(design.shows));
            return box;
        }
        case ControlKind::Check:
            return set.Make<CheckBox>(std::move(name));
        case ControlKind::Button:
            return set.Make<Button>(std::move(name));
        case ControlKind::List:
        case ControlKind::Combo:
            return set.Make<ListBox>(std::move(name), design.kind);
        case ControlKind::Marker:
            return set.Make<Marker>(std::move(name));
        case ControlKind::Shape:
            return set.Make<Shape>(std::move(name));
        case ControlKind::Line:
            return set.Make<LineShape>(std::move(name));
        case ControlKind::Frame:
            return set.Make<Frame>(std::move(name));
        case ControlKind::Label:
            return set.Make<Label>(std::move(name));
        default:
            throw std::logic_error("a control of this kind has a table of its own: " + name);
    }
}

void Make(ControlSet& set, const ControlDesign& design, std::string name) {
    Control& made = MakeOne(set, design, std::move(name));
    if (design.kind != ControlKind::Text) made.SetCaption(std::string(design.shows));
    made.SetToolTipText(std::string(design.toolTip));
    made.SetVisible(design.visible);
}

}  // namespace

FormControls::FormControls(Glyphs& glyphs)
    : form_(set_.Make<FormControl>("FrmVeltrix")), splash_(set_.Make<FormControl>("FrmSplash")) {
    splash_.SetVisible(false);
    for (const SurfaceDesign& design : SurfaceDesigns()) {
        const auto make = [&](std::string name) {
            set_.Make<PictureBox>(std::move(name), design.width, design.height, design.scale, glyphs)
                .SetVisible(design.visible);
        };
        if (design.elements == 0) make(std::string(design.name));
        for (int i = 0; i < design.elements; ++i) make(ElementName(design.name, i));
    }
    for (const ControlDesign& design : ControlDesigns()) {
        if (design.elements == 0) Make(set_, design, std::string(design.name));
        for (int i = 0; i < design.elements; ++i)
            Make(set_, design, ElementName(design.name, design.first + i));
    }
    for (const TabDesign& strip : TabDesigns()) set_.Make<TabStrip>(std::string(strip.name), strip.tabs);
    for (const MenuDesign& menu : MenuDesigns())
        set_.Make<Menu>(std::string(menu.name), menu.entries).SetCaption(std::string(menu.caption));
}

}  // namespace veltrix
