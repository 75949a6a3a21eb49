#include "apps/window/orbit_camera.h"

#include <algorithm>
#include <cmath>

namespace viewer {

using sorrel::Vec3;

namespace {

constexpr double kPi = 3.14159265358979323846;
/// Degrees the camera turns for each pixel the pointer moves.
constexpr double kDegreesPerPixel = 0.4;
/// Pitch stays this far from straight up or down, degrees, so that "up" stays defined.
constexpr double kMaxPitchDegrees = 89.0;
/// Each dolly step keeps this share of the distance.
constexpr double kDollyStep = 0.9;
/// The nearest the eye comes to the target, world units.
constexpr double kMinDistance = 1e-3;

double radians(double degrees) { return degrees * kPi / 180.0; }
double degrees(double radians) { return radians * 180.0 / kPi; }

/// Unit vectors of the camera's view plane, world space: right and up on the screen.
struct ViewPlane {
    Vec3 right;
    Vec3 up;
};

ViewPlane viewPlaneOf(const OrbitCamera& camera) {
    const double yaw = radians(camera.yawDegrees);
    const Vec3 right{std::cos(yaw), 0.0, -std::sin(yaw)};
    const Vec3 forward = sorrel::normalizedOrZero(camera.target - eyeOf(camera));
    return {right, sorrel::cross(right, forward)};
}

}  // namespace

OrbitCamera orbitCameraLookingAt(const Vec3& eye, const Vec3& target, double fovDegrees) {
    const Vec3 offset = eye - target;
    OrbitCamera camera;
    camera.target = target;
    camera.distance = std::max(sorrel::length(offset), kMinDistance);
    camera.yawDegrees = degrees(std::atan2(offset.x, offset.z));
    camera.pitchDegrees =
        std::clamp(degrees(std::asin(std::clamp(offset.y / camera.distance, -1.0, 1.0))),
                   -kMaxPitchDegrees, kMaxPitchDegrees);
    camera.fovDegrees = fovDegrees;
    return camera;
}

Vec3 eyeOf(const OrbitCamera& camera) {
    const double yaw = radians(camera.yawDegrees);
    const double pitch = radians(camera.pitchDegrees);
    const Vec3 offset{std::sin(yaw) * std::cos(pitch), std::sin(pitch),
                      std::cos(yaw) * std::cos(pitch)};
    return camera.target + offset * camera.distance;
}

OrbitCamera orbited(const OrbitCamera& camera, double dx, double dy) {
    OrbitCamera turned = camera;
    turned.yawDegrees -= dx * kDegreesPerPixel;
    turned.pitchDegrees = std::clamp(camera.pitchDegrees + dy * kDegreesPerPixel, -kMaxPitchDegrees,
                                     kMaxPitchDegrees);
    return turned;
}

OrbitCamera panned(const OrbitCamera& camera, double dx, double dy, int heightPixels) {
    // World units that one pixel spans at the target's depth.
    const double perPixel =
        2.0 * camera.distance * std::tan(radians(camera.fovDegrees) / 2.0) / heightPixels;
    const ViewPlane plane = viewPlaneOf(camera);
    OrbitCamera moved = camera;
    // The scene follows the pointer, so the camera moves against it; pixel y runs down.
    moved.target = camera.target - plane.right * (dx * perPixel) + plane.up * (dy * perPixel);
    return moved;
}

OrbitCamera dollied(const OrbitCamera& camera, double steps) {
    OrbitCamera moved = camera;
    moved.distance = std::max(camera.distance * std::pow(kDollyStep, steps), kMinDistance);
    return moved;
}

OrbitCamera framed(const OrbitCamera& camera, const std::vector<Vec3>& points, double aspect) {
    if (points.empty()) return camera;
    Vec3 low = points.front();
    Vec3 high = points.front();
    for (const Vec3& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    OrbitCamera moved = camera;
    moved.target = (low + high) * 0.5;
    double radius = 0.0;
    for (const Vec3& p : points) radius = std::max(radius, sorrel::length(p - moved.target));
    if (radius == 0.0) return moved;
    // The sphere around the points fits the narrower of the two angles of view.
    const double halfHeight = radians(camera.fovDegrees) / 2.0;
    const double halfWidth = std::atan(std::tan(halfHeight) * aspect);
    moved.distance = std::max(radius / std::sin(std::min(halfHeight, halfWidth)), kMinDistance);
    return moved;
}

}  // namespace viewer
