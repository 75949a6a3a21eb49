#pragma once
// GLFW's input as the host's viewport hands it on: mouse buttons and
// modifier keys as the bits of mouse events, and the keys that choose
// placement modes.

#include <cstddef>
#include <optional>

namespace viewer {

/// The event's "button" value (also its bit in "buttons") of a GLFW mouse
/// button; kNoButton for buttons the viewport does not use.
int hostButton(int glfwButton);
/// The event's "modifiers" bits of GLFW's modifier bits.
int hostModifiers(int glfwMods);

/// The placement mode a key chooses, as an index into kPlacementModes: the
/// digits 0 to 9 (top row or keypad) choose the first ten, '-' and '=' the
/// last two.
std::optional<std::size_t> modeOfKey(int glfwKey);
/// The name of the key that chooses the mode at `index`, for the panel.
const char* keyOfMode(std::size_t index);

}  // namespace viewer
