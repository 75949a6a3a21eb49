#pragma once
// The viewer in a window: the scene lit in a viewport on the left, the
// plugin's layers over it, a panel on the right. The window is another
// front-end of a viewer session, as the tour is.
//
// Input reaches the plugin as the host hands it on: mouse presses, moves and
// releases, with the buttons and modifier keys held, become event groups for
// the plugin's layers in the viewport's order. A plain left press on a
// light's handle picks it through the picking pass and selects the light
// instead. Alt with the left, middle or right button orbits, pans or dollies
// the camera, as does the wheel; F frames the lights and where they aim; the
// number keys choose placement modes; F12 writes a picture of the window;
// Escape closes it. What it does is reported line by line (window_report.h).

#include <cstdio>
#include <string>

#include "apps/scene/scene_description.h"

namespace sorrel {
class PluginLibrary;
}

namespace viewer {

struct WindowSettings {
    /// Where F12 writes its pictures, window-01.png and on.
    std::string shotsFolder = ".";
};

/// Opens `scene` in a window with `plugin` loaded and runs until the window
/// closes, reporting on `report`. Throws std::runtime_error when no window
/// can open (no display, no GL 4.5 compatibility context) or the session
/// cannot start.
void runWindow(const SceneDescription& scene, const sorrel::PluginLibrary& plugin,
               const WindowSettings& settings, std::FILE* report);

}  // namespace viewer
