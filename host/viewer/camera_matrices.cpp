#include "host/viewer/camera_matrices.h"

#include <cmath>

namespace sorrel {

namespace {
constexpr double kPi = 3.14159265358979323846;
/// Nearer to vertical than this, world +Y no longer serves as up.
constexpr double kVerticalLimit = 0.999;
}  // namespace

Matrix lookAtMatrix(const Vec3& eye, const Vec3& target) {
    const Vec3 f = normalizedOrZero(target - eye);
    const Vec3 up = std::fabs(f.y) > kVerticalLimit ? Vec3{0, 0, -1} : Vec3{0, 1, 0};
    const Vec3 s = normalizedOrZero(cross(f, up));
    const Vec3 u = cross(s, f);
    // Columns are the camera axes (x = s, y = u, z = -f).
    // clang-format off
    return {s.x, u.x, -f.x, 0,
            s.y, u.y, -f.y, 0,
            s.z, u.z, -f.z, 0,
            -dot(s, eye), -dot(u, eye), dot(f, eye), 1};
    // clang-format on
}

Matrix perspectiveMatrix(double fovYDegrees, double aspect, double nearPlane, double farPlane) {
    const double t = 1.0 / std::tan(fovYDegrees * kPi / 360.0);
    const double depthScale = (farPlane + nearPlane) / (nearPlane - farPlane);
    const double depthOffset = 2 * farPlane * nearPlane / (nearPlane - farPlane);
    // clang-format off
    return {t / aspect, 0, 0,           0,
            0,          t, 0,           0,
            0,          0, depthScale,  -1,
            0,          0, depthOffset, 0};
    // clang-format on
}

}  // namespace sorrel
