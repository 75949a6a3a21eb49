#pragma once
// The placement modes as the placement layer takes them through its "Mode"
// option, in the layer's order, with what the viewer shows of each.

#include <array>
#include <string>

namespace viewer {

struct PlacementModeLabel {
    /// The text of option "Mode"; empty for no mode.
    const char* label;
    /// Whether a press in this mode is meant to move the selected light.
    bool movesLight;
};

constexpr std::array<PlacementModeLabel, 12> kPlacementModes = {{
    {"", false},
    {"Edit Light Materials", false},
    {"Fixed Rotation", true},
    {"Normal", true},
    {"Specular", true},
    {"Reflection", true},
    {"Shadow", true},
    {"Face - Center", true},
    {"Face - Center - Oriented to Normal", true},
    {"Object Surface", true},
    {"Object Surface - Oriented to Normal", true},
    {"Object - Center", true},
}};

/// The mode's name for people: its label, or "None" for the empty one.
std::string modeTitle(const std::string& label);
/// The mode's name in a file name: lower case, words joined by '-'.
std::string modeSlug(const std::string& label);
/// Whether `text` is one of the labels above, the empty one included.
bool isModeLabel(const std::string& text);
/// Whether a press in the mode of `label` is meant to move the selected
/// light; false for labels that are no mode.
bool modeMovesLight(const std::string& label);

}  // namespace viewer
