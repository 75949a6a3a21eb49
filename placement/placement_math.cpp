#include "placement/placement_math.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace Tessera::Sorrel::ViewerUtils {

namespace {

constexpr int kAxes = 3;

/// 180 / pi, bits 0x404CA5DC1A63C1F8.
constexpr double kDegreesPerRadian = 57.29577951308232;

/// A light at rest aims down the negative z axis with the y axis up.
constexpr Vec3d kRestDirection{0.0, 0.0, -1.0};
constexpr Vec3d kRestUp{0.0, 1.0, 0.0};

/// The first, second and third axis of an Euler order.
struct AxisOrder {
    int i;
    int j;
    int k;
};

AxisOrder axisOrder(const EulerAngles& angles) {
    const int i = angles.initialAxis;
    const int next = (i + 1) % kAxes;
    const int previous = (i + kAxes - 1) % kAxes;
    return angles.parityEven ? AxisOrder{i, next, previous} : AxisOrder{i, previous, next};
}

/// The line of sight from `eye` to `point`, mirrored at the surface with
/// `normal`, as a unit vector. The line of sight itself is not normalised first.
Vec3d mirroredLineOfSight(const Vec3d& point, const Vec3d& normal, const Vec3d& eye) {
    const Vec3d sight = point - eye;
    return normalizedOrZero(sight - normal * (2.0 * dot(sight, normal)));
}

/// The light stands `distance` from `point` against `direction`, aiming at the point.
LightPose aimAt(const Vec3d& point, const Vec3d& direction, double distance) {
    return {point - direction * distance, direction};
}

}  // namespace

void rotateEuler(Mat4d& m, const Vec3d& radians) {
    const double cx = std::cos(radians.x), sx = std::sin(radians.x);
    const double cy = std::cos(radians.y), sy = std::sin(radians.y);
    const double cz = std::cos(radians.z), sz = std::sin(radians.z);
    const double rotation[kAxes][kAxes] = {
        {cz * cy, sz * cy, -sy},
        {cz * sy * sx - sz * cx, sz * sy * sx + cz * cx, cy * sx},
        {cz * sy * cx + sz * sx, sz * sy * cx - cz * sx, cy * cx},
    };

    const Mat4d old = m;
    for (int r = 0; r < kAxes; ++r) {
        for (std::size_t c = 0; c < Mat4d::kRows; ++c) {
            m[r][c] = rotation[r][0] * old[0][c] + rotation[r][1] * old[1][c] +
                      rotation[r][2] * old[2][c];
        }
    }
}

void extractEuler(EulerAngles& angles, const Mat4d& m) {
    const auto [i, j, k] = axisOrder(angles);

    double first =
        angles.initialRepeated ? std::atan2(m[j][i], m[k][i]) : std::atan2(m[j][k], m[k][k]);

    // Remove the first rotation, so that the two others read without gimbal lock.
    Vec3d undoFirst;
    undoFirst[i] = angles.parityEven ? -first : first;
    Mat4d n;
    rotateEuler(n, undoFirst);
    n = multiply(n, m);

    double second = 0.0;
    double third = 0.0;
    if (angles.initialRepeated) {
        second = std::atan2(std::sqrt(n[j][i] * n[j][i] + n[k][i] * n[k][i]), n[i][i]);
        third = std::atan2(n[j][k], n[j][j]);
    } else {
        second = std::atan2(-n[i][k], std::sqrt(n[i][i] * n[i][i] + n[i][j] * n[i][j]));
        third = std::atan2(-n[j][i], n[j][j]);
    }

    if (!angles.parityEven) {
        first = -first;
        second = -second;
        third = -third;
    }
    if (!angles.frameStatic) std::swap(first, third);
    angles.x = first;
    angles.y = second;
    angles.z = third;
}

Vec3d toXyzAngles(const EulerAngles& angles) {
    const double inOrder[kAxes] = {angles.x, angles.y, angles.z};
    const int i = angles.initialAxis;
    int slot[kAxes] = {};
    slot[i] = 0;
    slot[(i + 1) % kAxes] = angles.parityEven ? 1 : 2;
    slot[(i + 2) % kAxes] = angles.parityEven ? 2 : 1;
    return {inOrder[slot[0]], inOrder[slot[1]], inOrder[slot[2]]};
}

Vec3d rotationDegreesForDirection(const Vec3d& direction) {
    const Mat4d rotation = rotationFromTo(kRestDirection, direction, kRestUp);
    EulerAngles angles(/* frameStatic = */ true, /* initialRepeated = */ false,
                       /* parityEven = */ true, /* initialAxis = */ 0);
    extractEuler(angles, rotation);
    return toXyzAngles(angles) * kDegreesPerRadian;
}

LightPose aimAlongNormal(const Vec3d& point, const Vec3d& normal, const double distance) {
    return {point + normal * distance, -normal};
}

LightPose aimByReflection(const Vec3d& point, const Vec3d& normal, const Vec3d& eye,
                          const double distance) {
    return aimAt(point, -mirroredLineOfSight(point, normal, eye), distance);
}

LightPose aimBySpecular(const Vec3d& point, const Vec3d& normal, const Vec3d& eye,
                        const double distance) {
    const Vec3d halfway = normalizedOrZero(normal + mirroredLineOfSight(point, normal, eye));
    return aimAt(point, -halfway, distance);
}

LightPose standOnPoint(const Vec3d& point, const Vec3d& normal) { return {point, normal}; }

std::optional<LightPose> placeLight(const PlacementMode mode, const Vec3d& point,
                                    const Vec3d& normal, const Vec3d& eye, const double distance) {
    switch (placementModeTraits(mode).formula) {
        case PlacementFormula::AimAlongNormal:
            return aimAlongNormal(point, normal, distance);
        case PlacementFormula::AimByReflection:
            return aimByReflection(point, normal, eye, distance);
        case PlacementFormula::AimBySpecular:
            return aimBySpecular(point, normal, eye, distance);
        case PlacementFormula::StandOnPoint:
            return standOnPoint(point, normal);
        case PlacementFormula::None:
            break;
    }
    return std::nullopt;
}

}  // namespace Tessera::Sorrel::ViewerUtils
