#pragma once
// The window's panel beside the viewport: the placement modes with the keys
// that choose them, the layers' options, the lights with their selection, the
// hovered light, the history of edits, what the latest action did and how
// long the handles layer's passes take.

#include <optional>
#include <string>
#include <vector>

#include "apps/window/layer_options.h"

namespace viewer {

/// The panel's ImGui window, which other parts of the panel add to.
constexpr const char* kPanelName = "Beamwright";

struct PanelLight {
    std::string path;
    bool selected = false;
    bool usd = false;  // a USD prim's light, which no placement moves
};

/// What the panel shows beside the options.
struct PanelInfo {
    std::vector<PanelLight> lights;
    std::string hovered;  // the light whose handle the pointer is on; empty for none
    /// The handles layer's latest draw pass and picking pass, milliseconds.
    std::optional<double> drawMilliseconds;
    std::optional<double> pickMilliseconds;
    /// The history's steps, oldest first, and how many of them are done.
    std::vector<std::string> history;
    std::size_t historyDone = 0;
    /// What the latest action did, when it is worth saying ("nothing placed: ...").
    std::string status;
    /// The scene's cameras, and the one the view last switched to.
    std::vector<std::string> cameras;
    std::optional<std::size_t> camera;
};

/// What a person chose in the panel this frame.
struct PanelChoice {
    std::optional<std::string> light;   // clicked in the light list
    std::optional<std::size_t> camera;  // an index into PanelInfo::cameras
};

/// What a person does to the light list, kept from frame to frame.
struct LightListState {
    /// Text a light's path must hold to be listed, any case; empty lists all.
    std::string filter;
    /// Set when a light was selected outside the list (by its handle): the
    /// list scrolls to it on the next frame and clears this.
    bool scrollToSelected = false;
};

/// Whether the light at `path` is listed under `filter`.
bool passesFilter(const std::string& path, const std::string& filter);

/// The panel's area of the window, pixels from the top left corner.
struct PanelArea {
    float x = 0.0f;
    float width = 0.0f;
    float height = 0.0f;
};

/// Lays the panel out for this ImGui frame: edits `options` and `list` in
/// place and answers the light or camera a person chose, if any.
PanelChoice drawViewerPanel(LayerOptions& options, LightListState& list, const PanelInfo& info,
                            const PanelArea& area);

}  // namespace viewer
