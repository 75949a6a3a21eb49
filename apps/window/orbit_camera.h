#pragma once
// The window's camera, turning about a target as in lighting tools: orbit
// (tumble about the target), pan (track in the view plane, so that the
// scene follows the pointer) and dolly (towards and away from the target),
// and framing a set of points. Free functions of a small value type.

#include <vector>

#include "host/viewer/vec3.h"

namespace viewer {

struct OrbitCamera {
    sorrel::Vec3 target;        // world space
    double distance = 1.0;      // eye to target, world units
    double yawDegrees = 0.0;    // about world +Y; 0 looks down -Z
    double pitchDegrees = 0.0;  // positive looks down on the target
    double fovDegrees = 40.0;   // vertical
};

/// The camera at `eye` looking at `target` (world space, apart).
OrbitCamera orbitCameraLookingAt(const sorrel::Vec3& eye, const sorrel::Vec3& target,
                                 double fovDegrees);
/// Where the eye stands, world space.
sorrel::Vec3 eyeOf(const OrbitCamera& camera);

/// Turned by a pointer's move of (dx, dy) pixels: right turns the scene
/// right (the eye left), down tilts it down; pitch stays short of vertical.
OrbitCamera orbited(const OrbitCamera& camera, double dx, double dy);
/// Moved in the view plane by a pointer's move of (dx, dy) pixels (y down)
/// in a viewport `heightPixels` high: a point at the target's depth follows
/// the pointer.
OrbitCamera panned(const OrbitCamera& camera, double dx, double dy, int heightPixels);
/// Moved towards the target by `steps` (a wheel's clicks; negative: away),
/// each step a fixed fraction of the distance; never onto the target.
OrbitCamera dollied(const OrbitCamera& camera, double steps);
/// Looking the same way at the centre of `points`' bounds, near enough that
/// all of them are in view of a viewport of `aspect` (width / height).
/// Unchanged when there are no points.
OrbitCamera framed(const OrbitCamera& camera, const std::vector<sorrel::Vec3>& points,
                   double aspect);

}  // namespace viewer
