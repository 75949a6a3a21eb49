#pragma once
// How the viewer's window is laid out: what the window, its tests and
// anything that drives it by pixels agree on.

namespace viewer {

/// The window's title, followed by " - " and the scene file's path.
inline constexpr const char* kWindowTitle = "Beamwright viewer";
/// The panel's width beside the viewport, pixels; the viewport takes the rest.
inline constexpr int kPanelWidth = 330;

}  // namespace viewer
