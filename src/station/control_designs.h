#pragma once
// The design of the main form: every control with its kind, what it shows at first and its tool tip.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "display/surface.h"
#include "platform/controls.h"

namespace veltrix {

/// One control, or an array of them, as the form is designed.
struct ControlDesign {
    ControlKind kind;
    std::string_view name;
    std::string_view shows = "";  ///< text of a box, caption of anything else
    std::string_view toolTip = "";
    int elements = 0;     ///< above 0: an array
    int first = 0;        ///< index of an array's first element
    bool visible = true;  ///< at start
};

/// A drawing surface of the form.
struct SurfaceDesign {
    std::string_view name;
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels
    SurfaceScale scale{0, 0, static_cast<double>(width), static_cast<double>(height)};
    bool visible = true;  ///< at start
    int elements = 0;     ///< above 0: an array
};

/// A strip of tabs, by their captions.
struct TabDesign {
    std::string_view name;
    std::vector<std::string> tabs;
};

/// A menu; its entries are buttons.
struct MenuDesign {
    std::string_view name;
    std::string_view caption;
    std::vector<std::string> entries;
};

/// All that the form is made of, in the order in which it is made.
std::span<const ControlDesign> ControlDesigns();
std::span<const SurfaceDesign> SurfaceDesigns();
std::span<const TabDesign> TabDesigns();
std::span<const MenuDesign> MenuDesigns();

}  // namespace veltrix
