#pragma once
// Rays through a viewport's pixels into the scene's meshes.
//
// Pixel coordinates are window coordinates in pixels, x from the left edge
// and y from the top edge, taken as continuous: (width / 2, height / 2) is the
// centre of the view, (0, 0) its top left corner.

#include <optional>
#include <string>

#include "host/viewer/mesh.h"
#include "host/viewer/vec3.h"

namespace sorrel {

class Scene;
class Viewport;

/// A ray in world space; `direction` has unit length.
struct Ray {
    Vec3 origin;
    Vec3 direction;
};

/// The nearest mesh that a ray met.
struct SceneHit {
    std::string mesh;
    MeshHit hit;
    Vec3 boundsCentre;  // of the hit mesh, world space
};

/// The ray from the near to the far plane through a pixel, by the viewport's
/// view and projection; nothing when the two cannot be inverted.
std::optional<Ray> rayThroughPixel(const Viewport& viewport, double x, double y);

/// The nearest hit over all meshes of the scene, or nothing.
std::optional<SceneHit> castRay(const Scene& scene, const Ray& ray);

}  // namespace sorrel
