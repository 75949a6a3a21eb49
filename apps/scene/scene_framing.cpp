#include "apps/scene/scene_framing.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/siblings/light_orientation.h"

namespace viewer {

namespace {

/// The rig's lights: where each stands about the scene's centre, in sizes of
/// the scene, and how it lights it.
struct RigLight {
    const char* name;
    Vec3 offset;  // in scene sizes from the centre, world axes
    Vec3 color;
    double intensity;  // at the reference distance
    double coneDegrees;
    bool shadows;
};
constexpr RigLight kRig[] = {
    {"key", {0.9, 1.0, 1.1}, {1.0, 0.93, 0.82}, 2.0, 50.0, true},
    {"fill", {-1.3, 0.45, 0.8}, {0.65, 0.74, 1.0}, 0.8, 70.0, false},
    {"rim", {0.35, 1.1, -1.3}, {1.0, 1.0, 1.0}, 1.2, 45.0, false},
};
/// The framing camera's direction from the centre, and how much room it leaves.
constexpr Vec3 kViewFrom{0.35, 0.45, 1.0};
constexpr double kFramingMargin = 1.15;
constexpr double kDegrees = 3.14159265358979323846 / 180.0;
/// The depth range holds the scene with room to orbit about it; the near
/// plane stands at this share of the far one.
constexpr double kDepthRoom = 2.0;
constexpr double kNearShare = 1e-4;
/// The share of the scene's size between a placed light and its point.
constexpr double kPlacementShare = 0.25;

}  // namespace

double SceneBounds::size() const { return std::max(sorrel::length(max - min), kMinSceneSize); }

SceneBounds sceneBounds(const std::vector<MeshDescription>& meshes) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    SceneBounds bounds{{kInf, kInf, kInf}, {-kInf, -kInf, -kInf}};
    bool any = false;
    for (const MeshDescription& description : meshes) {
        for (const Vec3& point : description.mesh.points()) {
            const Vec3 p = sorrel::transformPoint(point, description.mesh.world);
            bounds.min = {std::min(bounds.min.x, p.x), std::min(bounds.min.y, p.y),
                          std::min(bounds.min.z, p.z)};
            bounds.max = {std::max(bounds.max.x, p.x), std::max(bounds.max.y, p.y),
                          std::max(bounds.max.z, p.z)};
            any = true;
        }
    }
    return any ? bounds : SceneBounds{};
}

std::optional<double> distanceToFirstSurface(const std::vector<MeshDescription>& meshes,
                                             const Vec3& origin, const Vec3& direction) {
    std::optional<double> nearest;
    for (const MeshDescription& description : meshes) {
        const auto hit = description.mesh.intersect(origin, direction);
        if (hit && hit->distance > 0.0 && (!nearest || hit->distance < *nearest))
            nearest = hit->distance;
    }
    return nearest;
}

CameraDescription framingCamera(const SceneBounds& bounds, const CameraDescription& like) {
    CameraDescription camera = like;
    const double radius = bounds.size() / 2.0;
    const double halfFov = camera.fovDegrees / 2.0 * kDegrees;
    const double distance = kFramingMargin * radius / std::sin(halfFov);
    camera.target = bounds.centre();
    camera.eye = camera.target + sorrel::normalizedOrZero(kViewFrom) * distance;
    return camera;
}

void fitDepthRange(CameraDescription& camera, const SceneBounds& bounds) {
    const double reach =
        kDepthRoom * (sorrel::length(bounds.centre() - camera.eye) + bounds.size());
    if (reach <= camera.farPlane) return;
    camera.farPlane = reach;
    camera.nearPlane = std::max(camera.nearPlane, reach * kNearShare);
}

double placementDistance(const SceneBounds& bounds) { return kPlacementShare * bounds.size(); }

std::vector<LightDescription> defaultRig(const SceneBounds& bounds) {
    std::vector<LightDescription> rig;
    const Vec3 centre = bounds.centre();
    for (const RigLight& item : kRig) {
        LightDescription light;
        light.path = std::string(kLightsRoot) + "/" + item.name;
        const Vec3 towards = -item.offset * bounds.size();
        light.local = *sorrel::orientationAlong(towards);
        sorrel::setMatrixRow(light.local, sorrel::kTranslationRow, centre - towards);
        light.centerOfInterest = sorrel::length(towards);
        const double reach = light.centerOfInterest / sorrel::kReferenceDistance;
        light.properties.color = item.color;
        light.properties.intensity = item.intensity * reach * reach;
        light.properties.coneAngle = item.coneDegrees;
        light.properties.shadows = item.shadows;
        light.kind = LightKind::Spot;
        light.defaultRig = true;
        rig.push_back(light);
    }
    return rig;
}

}  // namespace viewer
