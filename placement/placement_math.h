#pragma once
// The mathematics of placing a light: from a picked point and normal to where
// the light stands and points in each placement mode, and from a direction to
// the rotation of a new package.
//
// Points, normals and the eye share one space, the one in which the snapped
// point is given (world space); distances are in its units. Angles are in
// radians unless a name says degrees. All functions are pure arithmetic in
// double precision; nothing allocates, and a NaN passes on into the result.

#include <cstdint>
#include <optional>

#include "placement/placement_mode.h"
#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

/// Three rotation angles and the coding of their axis order.
struct EulerAngles {
    EulerAngles(bool isFrameStatic, bool isInitialRepeated, bool isParityEven, std::int32_t axis)
        : frameStatic(isFrameStatic),
          initialRepeated(isInitialRepeated),
          parityEven(isParityEven),
          initialAxis(axis) {}

    /// Radians: the first, second and third angle of the order, until
    /// toXyzAngles sorts them by axis.
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    /// Rotations about axes fixed in space; when false, the first and third
    /// angle change places at the end of extractEuler.
    bool frameStatic : 1;
    /// The first axis also serves as the third, as in an XYX order.
    bool initialRepeated : 1;
    /// The axes run in the cyclic order x, y, z.
    bool parityEven : 1;
    /// First axis: 0 for x, 1 for y, 2 for z.
    std::int32_t initialAxis;
};

/// Turns `m` by the rotation about x by radians.x, then y, then z: rows 0 to 2
/// of `m` become R * m, so the rotation acts first; row 3 stays.
void rotateEuler(Mat4d& m, const Vec3d& radians);

/// Fills the three angles of `angles` with those of the rotation in the upper
/// 3x3 block of `m`, in the axis order that the coding of `angles` names.
void extractEuler(EulerAngles& angles, const Mat4d& m);

/// The angles of `angles` about x, y and z, in radians.
Vec3d toXyzAngles(const EulerAngles& angles);

/// The rotation about x, y, z, in degrees, that turns a light at rest (aiming
/// down the negative z axis, y up) to aim along `direction`. A zero direction
/// counts as (0, 0, 1).
Vec3d rotationDegreesForDirection(const Vec3d& direction);

/// Where a light stands and where it points.
struct LightPose {
    Vec3d position;
    Vec3d direction;
};

/// Fixed Rotation, Normal and Shadow: the light stands `distance` from `point`
/// along the unit `normal` and aims back at the point.
LightPose aimAlongNormal(const Vec3d& point, const Vec3d& normal, double distance);

/// Reflection: the light stands `distance` from `point` on the line of sight
/// from `eye` mirrored at the surface, so that it is seen reflected in the point.
LightPose aimByReflection(const Vec3d& point, const Vec3d& normal, const Vec3d& eye,
                          double distance);

/// Specular: as Reflection, but along the half vector of the normal and the
/// mirrored line of sight.
LightPose aimBySpecular(const Vec3d& point, const Vec3d& normal, const Vec3d& eye, double distance);

/// Face and Object modes: the light stands on `point`, and its direction
/// carries the normal rather than a line of aim.
LightPose standOnPoint(const Vec3d& point, const Vec3d& normal);

/// The pose by the formula of `mode`, from the picked `point`, its unit
/// `normal` (or the zero vector) and `distance`; `eye`, the camera's origin, is
/// read only where the mode's traits say it uses the eye. Empty for the modes
/// that place nothing, ModeNone and ModeEditLightMaterials.
std::optional<LightPose> placeLight(PlacementMode mode, const Vec3d& point, const Vec3d& normal,
                                    const Vec3d& eye, double distance);

}  // namespace Tessera::Sorrel::ViewerUtils
