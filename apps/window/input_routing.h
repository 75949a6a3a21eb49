#pragma once
// What the window's mouse input becomes, decided apart from the window: a
// plain function of what the window knows when the input comes (the gesture
// going on, where the pointer is, the button and keys) and of what the
// picking pass found under the pointer. The window then does what it says:
// moves the camera, selects a light, or hands the event to the plugin's
// layers as the host does.

namespace viewer {

/// What a press in the window started; it lasts until every button is up.
/// The camera's gestures and a press on a handle go no further; Plugin
/// hands the press, the moves and the releases on to the plugin's layers.
enum class Gesture { None, Panel, Orbit, Pan, Dolly, Select, Plugin };

bool isCameraGesture(Gesture gesture);

/// What the window knows when input comes.
struct InputState {
    /// The gesture a press started, None while no button is down.
    Gesture gesture = Gesture::None;
    /// Whether the pointer is over the viewport (not the panel).
    bool inViewport = false;
    /// Whether the layers last saw the pointer inside the viewport.
    bool pointerInside = false;
};

/// What a pointer move does.
enum class MoveAction { Nothing, Orbit, Pan, Dolly, SendMove, SendLeave };

MoveAction routeMove(const InputState& state);

/// Whether a press must first ask the picking pass what lies under the
/// pointer: only a plain left press in the viewport, while no gesture goes
/// on, may select a light by its handle.
bool pressAsksForHandle(const InputState& state, int button, int modifiers);

/// What a press does: the gesture it starts (the one going on, when there
/// is one) and whether the press goes on to the plugin's layers.
/// `handleFound` is what the picking pass found: the handle of a light not
/// yet selected under the pointer (asked only where pressAsksForHandle).
struct PressRoute {
    Gesture gesture = Gesture::None;
    bool toPlugin = false;
};

PressRoute routePress(const InputState& state, int button, int modifiers, bool handleFound);

/// Whether a release goes on to the plugin's layers.
bool releaseGoesToPlugin(const InputState& state);

/// Whether the wheel dollies the camera: over the viewport, with no button down.
bool wheelDollies(const InputState& state);

}  // namespace viewer
