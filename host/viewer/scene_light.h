#pragma once
// The lights of the host's scene as the viewport shades with them. A light
// location carries what the viewport needs in its "geometry" group, beside the
// "centerOfInterest" that the plugin reads:
//
//   geometry.color        three floats, linear red, green and blue
//   geometry.intensity    double, 1 lights a surface facing it at kReferenceDistance fully
//   geometry.coneAngle    double, the full opening of the spot cone, degrees
//   geometry.coneFalloff  double, the degrees inside the cone's edge over which it fades
//   geometry.shadows      int, non-zero when the light casts shadows
//
// What a light does not carry takes the defaults below.

#include <string>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/viewer/matrix.h"
#include "host/viewer/vec3.h"

namespace sorrel {

class Scene;

struct LightProperties {
    Vec3 color{1.0, 1.0, 1.0};
    double intensity = 1.0;
    double coneAngle = 60.0;    // degrees
    double coneFalloff = 10.0;  // degrees
    bool shadows = false;
};

/// World units at which a light of intensity 1 lights a surface facing it fully.
constexpr double kReferenceDistance = 5.0;

/// One light, placed in the world.
struct SceneLight {
    std::string path;
    Vec3 position;   // world space
    Vec3 direction;  // unit, world space: where the light aims
    /// Distance to the centre of interest along `direction`, world units.
    double centerOfInterest = 0.0;
    LightProperties properties;
    bool selected = false;
};

/// The "geometry" group of a light location with these properties and a
/// centre of interest.
AttrRef lightGeometry(const LightProperties& properties, double centerOfInterest);

/// A light at a world transform: it stands on the translation and aims down
/// its negative local Z axis.
SceneLight placedLight(const std::string& path, const Matrix& world);

/// Every location of type "light" with its world transform and what its
/// attributes say, in path order.
std::vector<SceneLight> locationLights(const Scene& scene);

}  // namespace sorrel
