#pragma once
// A scene as a scene file describes it, read and checked but not yet put into
// a viewer: the camera, the meshes (built), the lights and the groups above
// them, USD light prims, the selection, the options of the plugin's layers and
// where the tour points. Nothing here holds an attribute or a GL object.

#include <array>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/viewer/matrix.h"
#include "host/viewer/mesh.h"
#include "host/viewer/scene_light.h"
#include "host/viewer/vec3.h"

namespace viewer {

using sorrel::Matrix;
using sorrel::Vec3;

struct CameraDescription {
    Vec3 eye{0.0, 4.0, 12.0};    // world space
    Vec3 target{0.0, 1.0, 0.0};  // world space
    double fovDegrees = 40.0;    // vertical
    int width = 640;             // pixels
    int height = 480;            // pixels
};

struct MeshDescription {
    std::string name;
    sorrel::Mesh mesh;  // placed in the world, with its material
};

/// A location that lights stand under, with a transform they inherit.
struct GroupDescription {
    std::string path;
    Matrix local = sorrel::kIdentity;
};

struct LightDescription {
    std::string path;                  // a location, or a USD prim path
    Matrix local = sorrel::kIdentity;  // relative to the parent
    double centerOfInterest = 5.0;     // world units ahead of the light
    sorrel::LightProperties properties;
};

/// A pixel of the viewport, x from the left and y from the top.
using Pixel = std::array<int, 2>;

/// What the tour points at; what a file leaves out the tour chooses itself.
struct TourDescription {
    std::optional<std::string> light;          // the light the modes move
    std::optional<Pixel> press;                // where each mode presses
    std::optional<Pixel> drag;                 // where "Normal" drags to
    std::map<std::string, Pixel> pressByMode;  // by mode label
    std::optional<std::string> hover;          // the light whose handle is hovered and picked
    std::optional<Pixel> package;              // where Shift with a left press creates a package
};

/// An option value as the layer receives it.
using OptionValue = std::variant<int, double, std::string, std::vector<std::string>>;

struct SceneDescription {
    std::string file;  // where it was read from
    CameraDescription camera;
    std::vector<MeshDescription> meshes;
    std::vector<GroupDescription> groups;  // parents before children
    std::vector<LightDescription> lights;
    std::vector<LightDescription> usdLights;
    std::vector<std::string> selection;
    /// Options of the placement layer, which hands each on to the handles layer.
    std::vector<std::pair<std::string, OptionValue>> options;
    TourDescription tour;
};

}  // namespace viewer
