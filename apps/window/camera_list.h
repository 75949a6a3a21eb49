#pragma once
// The scene's cameras in the window's panel, to switch the view to one of
// them: a line of its own below the panel's other parts, shown when the scene
// has a camera to offer.

#include <optional>
#include <string>
#include <vector>

#include "apps/scene/scene_description.h"

namespace viewer {

/// The panel's lines that the camera list takes.
constexpr float kCameraListLines = 1.0f;

/// Adds the list to the panel (the ImGui window named `panel`) for this frame;
/// answers the index of the camera a person chose, if any. `current` is the
/// one the view last switched to.
std::optional<std::size_t> drawCameraList(const char* panel,
                                          const std::vector<NamedCamera>& cameras,
                                          std::optional<std::size_t> current);

}  // namespace viewer
