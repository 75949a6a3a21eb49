#include "host/siblings/light_orientation.h"

#include <cmath>

namespace sorrel {

namespace {
constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;
constexpr Vec3 kWorldUp{0.0, 1.0, 0.0};
// Stand-in ups, tried in turn when the direction is parallel to world up.
constexpr Vec3 kFirstAxisX{1.0, 0.0, 0.0};
constexpr Vec3 kFirstAxisZ{0.0, 0.0, 1.0};
}  // namespace

Matrix rotationFromEulerDegrees(const Vec3& degrees) {
    const double cx = std::cos(degrees.x * kRadiansPerDegree);
    const double sx = std::sin(degrees.x * kRadiansPerDegree);
    const double cy = std::cos(degrees.y * kRadiansPerDegree);
    const double sy = std::sin(degrees.y * kRadiansPerDegree);
    const double cz = std::cos(degrees.z * kRadiansPerDegree);
    const double sz = std::sin(degrees.z * kRadiansPerDegree);
    Matrix m = kIdentity;
    setMatrixRow(m, 0, {cz * cy, sz * cy, -sy});
    setMatrixRow(m, 1, {cz * sy * sx - sz * cx, sz * sy * sx + cz * cx, cy * sx});
    setMatrixRow(m, 2, {cz * sy * cx + sz * sx, sz * sy * cx - cz * sx, cy * cx});
    return m;
}

std::optional<Matrix> orientationAlong(const Vec3& direction) {
    const Vec3 aim = normalizedOrZero(direction);
    if (length(aim) == 0.0) return std::nullopt;
    Vec3 up = kWorldUp;
    if (length(cross(up, aim)) == 0.0) up = cross(aim, kFirstAxisX);
    if (length(cross(up, aim)) == 0.0) up = cross(aim, kFirstAxisZ);
    const Vec3 side = cross(up, aim);
    const Vec3 top = cross(aim, side);
    // Local -Z along the aim; X completes a right-handed frame with Y near up.
    Matrix m = kIdentity;
    setMatrixRow(m, 0, -normalizedOrZero(side));
    setMatrixRow(m, 1, normalizedOrZero(top));
    setMatrixRow(m, 2, -aim);
    return m;
}

}  // namespace sorrel
