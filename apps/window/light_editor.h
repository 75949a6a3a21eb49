#pragma once
// The selected light's numbers in the window's panel: where it stands and
// where it aims (world space), the distance to its centre of interest, its
// intensity and its cone. An edit, from the first change to letting go of the
// field, is one step of the history.

#include <string>

#include "host/viewer/vec3.h"

namespace viewer {

/// The panel's lines that the editor takes, closed: its heading.
constexpr float kLightEditorLines = 1.0f;

struct LightNumbers {
    sorrel::Vec3 position;          // world space
    sorrel::Vec3 aim;               // world space; any length but zero
    double centerOfInterest = 0.0;  // world units ahead
    double intensity = 0.0;
    double coneAngle = 0.0;  // degrees, full opening
};

/// What happened to the numbers this frame.
struct LightEditorEvents {
    bool changed = false;   // a number changed; `numbers` hold the new ones
    bool finished = false;  // a field was let go after a change: the edit is over
};

/// Adds the editor for the light at `path` to the panel (the ImGui window
/// named `panel`) for this frame; an empty `path` says no light can be edited.
LightEditorEvents drawLightEditor(const char* panel, const std::string& path,
                                  LightNumbers& numbers);

}  // namespace viewer
