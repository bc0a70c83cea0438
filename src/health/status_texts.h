#pragma once
// The status bar: a few words for each figure, and the whole story as a tool tip.

#include <array>
#include <string>
#include <string_view>

#include "common/colour.h"
#include "health/verdicts.h"

namespace veltrix {

/// One cell of the bar.
struct StatusCell {
    std::string_view label;  ///< name of the label control that shows it
    std::string text;        ///< some 20 characters; "! " stands before what is not healthy
    std::string toolTip;     ///< sentences
    Verdict verdict = Verdict::None;
};

/// The names of the labels, from the left.
inline constexpr std::array<std::string_view, 7> StatusLabels{
    "lblHealthSound",   "lblHealthLevel", "lblHealthRate",    "lblHealthNoise",
    "lblHealthStrikes", "lblHealthPeers", "lblHealthComputer"};

/// The cells of a report, in the order of StatusLabels.
std::array<StatusCell, StatusLabels.size()> StatusCells(const HealthReport& report);

/// The colour of a cell's text. White, which stands for the window's own colour, where there is no verdict.
ColourValue VerdictColour(Verdict verdict);

}  // namespace veltrix
