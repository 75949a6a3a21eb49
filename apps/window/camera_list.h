#pragma once
// The scene's cameras in the window's panel, to switch the view to one of
// them: one line at the panel's top, shown when the scene has a camera to offer.

#include <optional>
#include <string>
#include <vector>

namespace viewer {

/// Lays the list out in the current ImGui window for this frame; answers the
/// index of the camera a person chose, if any. `current` is the one the view
/// last switched to.
std::optional<std::size_t> drawCameraList(const std::vector<std::string>& cameras,
                                          std::optional<std::size_t> current);

}  // namespace viewer
