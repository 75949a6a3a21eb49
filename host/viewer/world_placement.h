#pragma once
// Putting a location at a given world transform, whatever lies above it.

#include <string>

#include "host/viewer/matrix.h"

namespace sorrel {

class Scene;

/// The world transform of the nearest ancestor of `path` that the scene
/// holds; the identity when there is none.
Matrix parentWorldTransform(const Scene& scene, const std::string& path);

/// Sets the local transform of the location at `path` so that its world
/// transform becomes `world`. False, and nothing changed, when the location is
/// unknown or its parent's transform cannot be inverted.
bool placeInWorld(Scene& scene, const std::string& path, const Matrix& world);

}  // namespace sorrel
