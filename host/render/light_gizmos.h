#pragma once
// What the host draws of lights over the lit scene, as line segments: each
// light as a small star in its colour with its spot cone opening ahead of it,
// and the manipulator's marker on a selected light.

#include "host/render/line_batch.h"
#include "host/viewer/scene_light.h"

namespace sorrel {

/// The manipulator's colour (linear red, green, blue): its marker and the cursor's.
constexpr Vec3 kManipulatorColor{1.0, 0.42, 0.0};
constexpr Vec3 kCursorColor{0.0, 0.9, 1.0};

/// A star about the light and its cone a short way along its aim (world space).
void addLightGizmo(LineBatch& lines, const SceneLight& light);

/// A ring about the light facing the camera (whose right and up axes are given
/// in world space), the line of aim out to the centre of interest, and a cross there.
void addManipulatorMarker(LineBatch& lines, const SceneLight& light, const Vec3& cameraRight,
                          const Vec3& cameraUp);

/// A crosshair with a ring about a pixel, in pixels from the bottom left corner.
void addCursorMarker(LineBatch& lines, double x, double y);

}  // namespace sorrel
