#include "host/viewer/world_placement.h"

#include "host/viewer/scene.h"

namespace sorrel {

Matrix parentWorldTransform(const Scene& scene, const std::string& path) {
    for (std::string parent = parentOf(path); !parent.empty(); parent = parentOf(parent))
        if (const auto world = scene.worldTransform(parent)) return *world;
    return kIdentity;
}

bool placeInWorld(Scene& scene, const std::string& path, const Matrix& world) {
    Location* const location = scene.find(path);
    const auto toParent = invertMatrix(parentWorldTransform(scene, path));
    if (location == nullptr || !toParent) return false;
    // world = local * parentWorld, so local = world * inverse(parentWorld).
    location->local = multiplyMatrices(world, *toParent);
    return true;
}

}  // namespace sorrel
