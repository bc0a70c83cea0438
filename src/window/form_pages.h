#pragma once
// Where each control stands on the tabs and in the groups: a table of rows for every page.

#include <string_view>
#include <vector>

namespace veltrix {

/// One row of a page: what stands on the left, usually a label; the boxes in the middle; what follows on the
/// right, such as the range. Each is the name of a control. Behind "=" stands a plain text, which may be
/// empty, for what has no label of its own; ":" before a name makes a box only as wide as its text.
struct RowDesign {
    std::string_view left;
    std::vector<std::string_view> middle;
    std::string_view right = "";
    bool toTheEnd = false;  ///< the middle takes the place of the right, too, where other rows have one
};

/// A page of a strip of tabs, or the inside of a frame (tab 0).
struct PageDesign {
    std::string_view owner;
    int tab;
    std::vector<RowDesign> rows;
};

/// The rows of a page. Throws std::logic_error when there is no such page.
const std::vector<RowDesign>& RowsOf(std::string_view owner, int tab = 0);

}  // namespace veltrix
