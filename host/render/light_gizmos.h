#pragma once
// What the host draws of lights over the lit scene, as line segments: each
// light as a small star in its colour with its spot cone opening ahead of it,
// and the manipulator's marker on a selected light, its handle where the
// placement layer's flags put it, and its shadow handles when they show.

#include <optional>

#include "host/render/line_batch.h"
#include "host/viewer/scene_light.h"

namespace sorrel {

/// The manipulator's colour (linear red, green, blue): its marker and the cursor's.
constexpr Vec3 kManipulatorColor{1.0, 0.42, 0.0};
constexpr Vec3 kCursorColor{0.0, 0.9, 1.0};
/// The shadow handles' colour (linear red, green, blue).
constexpr Vec3 kShadowHandleColor{0.75, 0.2, 1.0};

/// How the manipulator shows on a light.
struct ManipulatorMarkerStyle {
    /// The handle (a cross) at the light's origin rather than at its centre of interest.
    bool handleAtOrigin = false;
    /// Where the shadow handles stand along the aim, world units; none when they do not show.
    std::optional<double> shadowFallDistance;
};

/// A star about the light and its cone a short way along its aim (world space).
void addLightGizmo(LineBatch& lines, const SceneLight& light);

/// A ring about the light facing the camera (whose right and up axes are given
/// in world space), the line of aim out to the centre of interest, and the
/// handle, a cross, there or at the light's origin; with the shadow handles, a
/// second line along the aim to the shadow fall distance ending in a square.
void addManipulatorMarker(LineBatch& lines, const SceneLight& light, const Vec3& cameraRight,
                          const Vec3& cameraUp, const ManipulatorMarkerStyle& style = {});

/// A crosshair with a ring about a pixel, in pixels from the bottom left corner.
void addCursorMarker(LineBatch& lines, double x, double y);

}  // namespace sorrel
