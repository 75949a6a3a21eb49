#include "host/viewer/ray_cast.h"

#include "host/viewer/scene.h"
#include "host/viewer/viewport.h"

namespace sorrel {

namespace {
// Normalised device depth of the near and far planes.
constexpr double kNearDepth = -1.0;
constexpr double kFarDepth = 1.0;
}  // namespace

std::optional<Ray> rayThroughPixel(const Viewport& viewport, double x, double y) {
    const auto clipToWorld = invertMatrix(multiplyMatrices(viewport.view, viewport.projection));
    if (!clipToWorld || viewport.width <= 0 || viewport.height <= 0) return std::nullopt;
    const double ndcX = 2.0 * x / viewport.width - 1.0;
    const double ndcY = 1.0 - 2.0 * y / viewport.height;  // y runs down the window, up in the view
    const Vec3 nearPoint = transformPoint({ndcX, ndcY, kNearDepth}, *clipToWorld);
    const Vec3 farPoint = transformPoint({ndcX, ndcY, kFarDepth}, *clipToWorld);
    const Vec3 direction = normalizedOrZero(farPoint - nearPoint);
    if (length(direction) == 0.0) return std::nullopt;
    return Ray{nearPoint, direction};
}

std::optional<SceneHit> castRay(const Scene& scene, const Ray& ray) {
    std::optional<SceneHit> nearest;
    for (const auto& [name, mesh] : scene.meshes()) {
        const auto hit = mesh.intersect(ray.origin, ray.direction);
        if (hit && (!nearest || hit->distance < nearest->hit.distance))
            nearest = SceneHit{name, *hit, Vec3{}};
    }
    if (nearest) nearest->boundsCentre = scene.meshes().at(nearest->mesh).boundsCentre();
    return nearest;
}

}  // namespace sorrel
