#pragma once
// Where a scene stands and what to add where a file leaves something out: the
// box around its meshes, the first surface a ray meets, a camera that frames
// it, and the default rig of three lights (key, fill and rim) for a scene
// without a light.

#include <optional>
#include <vector>

#include "apps/scene/scene_description.h"

namespace viewer {

/// The world-space box around every mesh's points; a unit box about the
/// origin when there is no point.
struct SceneBounds {
    Vec3 min{-1.0, -1.0, -1.0};
    Vec3 max{1.0, 1.0, 1.0};

    Vec3 centre() const { return (min + max) * 0.5; }
    /// The box's diagonal, world units; never less than kMinSceneSize.
    double size() const;
};

/// The smallest size a scene counts as having, so that a flat or single-point
/// asset still gets lights and a camera at a distance.
constexpr double kMinSceneSize = 1e-3;

SceneBounds sceneBounds(const std::vector<MeshDescription>& meshes);

/// How far along the ray from `origin` towards `direction` (unit, world space)
/// the first mesh lies, or nothing when it meets none.
std::optional<double> distanceToFirstSurface(const std::vector<MeshDescription>& meshes,
                                             const Vec3& origin, const Vec3& direction);

/// A view onto the whole scene from the front, above and to the right, with
/// the width and height of `like`.
CameraDescription framingCamera(const SceneBounds& bounds, const CameraDescription& like);

/// The camera's depth range widened, where the scene reaches farther, to
/// hold the whole scene (an asset in centimetres among them); the near plane
/// moves out with the far one, so that depth keeps its precision.
void fitDepthRange(CameraDescription& camera, const SceneBounds& bounds);

/// How far from what it lights a light placed in the scene stands, world
/// units: a share of the scene's size, so that an asset in centimetres is lit
/// as one in metres.
double placementDistance(const SceneBounds& bounds);

/// Key, fill and rim below kLightsRoot, aimed at the scene's centre, their
/// intensities grown with their distance so that the scene is lit alike at
/// any size; each marked as the default rig.
std::vector<LightDescription> defaultRig(const SceneBounds& bounds);

}  // namespace viewer
