#include "apps/window/input_routing.h"

#include "host/core/names.h"

namespace viewer {

namespace names = sorrel::names;

bool isCameraGesture(Gesture gesture) {
    return gesture == Gesture::Orbit || gesture == Gesture::Pan || gesture == Gesture::Dolly;
}

MoveAction routeMove(const InputState& state) {
    switch (state.gesture) {
        case Gesture::Orbit:
            return MoveAction::Orbit;
        case Gesture::Pan:
            return MoveAction::Pan;
        case Gesture::Dolly:
            return MoveAction::Dolly;
        case Gesture::Panel:
        case Gesture::Select:
            return MoveAction::Nothing;
        case Gesture::Plugin:
            // A drag that leaves the viewport still belongs to the layers.
            return MoveAction::SendMove;
        case Gesture::None:
            break;
    }
    if (state.inViewport) return MoveAction::SendMove;
    return state.pointerInside ? MoveAction::SendLeave : MoveAction::Nothing;
}

bool pressAsksForHandle(const InputState& state, int button, int modifiers) {
    return state.gesture == Gesture::None && state.inViewport && button == names::kLeftButton &&
           modifiers == 0;
}

PressRoute routePress(const InputState& state, int button, int modifiers, bool handleFound) {
    // A second button during a gesture starts nothing new; the layers see it
    // only when they have the gesture.
    if (state.gesture != Gesture::None) return {state.gesture, state.gesture == Gesture::Plugin};
    if (!state.inViewport) return {Gesture::Panel, false};
    if ((modifiers & names::kAltModifier) != 0) {
        if (button == names::kLeftButton) return {Gesture::Orbit, false};
        if (button == names::kMiddleButton) return {Gesture::Pan, false};
        return {Gesture::Dolly, false};
    }
    if (handleFound && pressAsksForHandle(state, button, modifiers))
        return {Gesture::Select, false};
    return {Gesture::Plugin, true};
}

bool releaseGoesToPlugin(const InputState& state) { return state.gesture == Gesture::Plugin; }

bool wheelDollies(const InputState& state) {
    return state.gesture == Gesture::None && state.inViewport;
}

}  // namespace viewer
