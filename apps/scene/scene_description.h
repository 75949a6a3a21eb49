#pragma once
// A scene as a scene file or an asset describes it, read and checked but not
// yet put into a viewer: the camera and the cameras to switch to, the meshes
// (built) with the asset each came from, the lights and the groups above them,
// USD light prims, the selection, the options of the plugin's layers and where
// the tour points. Nothing here holds an attribute or a GL object: it is a
// plain value, which a writer can write back as it stands.

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

/// Where light locations stand: every light path lies below it.
constexpr const char* kLightsRoot = "/root/world/lgt";

struct CameraDescription {
    Vec3 eye{0.0, 4.0, 12.0};    // world space
    Vec3 target{0.0, 1.0, 0.0};  // world space
    double fovDegrees = 40.0;    // vertical
    int width = 640;             // pixels
    int height = 480;            // pixels
    double nearPlane = 0.1;      // world units from the eye
    double farPlane = 1000.0;    // world units from the eye
};

/// A named view of the scene: one of an asset's cameras.
struct NamedCamera {
    std::string name;
    CameraDescription camera;
};

/// An asset file a scene brings in whole: its meshes, lights and cameras.
struct AssetDescription {
    std::string name;  // the scene's name for it; its meshes' names start with it
    std::string file;  // as the scene file names it
    std::string path;  // where it was read from
    Matrix transform = sorrel::kIdentity;      // placing the whole asset in the world
    std::optional<sorrel::Material> material;  // given by the scene, over the asset's own
};

/// A built-in shape as the scene file gives it; what the shape leaves unused
/// keeps its default.
struct ShapeDescription {
    std::string shape;         // plane, box, sphere, cylinder or torus
    Vec3 size{1.0, 1.0, 1.0};  // a box's sides; a plane's width and depth in x and z
    int divisions = 1;         // a plane's quads a side
    double radius = 1.0;       // a sphere's or a cylinder's
    double height = 1.0;       // a cylinder's
    double majorRadius = 1.0;  // a torus's, to the tube's centre
    double minorRadius = 0.3;  // a torus's tube
};

struct MeshDescription {
    std::string name;
    sorrel::Mesh mesh;  // placed in the world, with its material
    /// The shape it was built from, for a shape the scene file describes.
    std::optional<ShapeDescription> shape;
    /// The index into SceneDescription::assets of the asset it came from;
    /// nothing for a shape the scene file describes.
    std::optional<std::size_t> asset;
    std::string node;  // the asset's node that holds it
};

/// A location that lights stand under, with a transform they inherit.
struct GroupDescription {
    std::string path;
    Matrix local = sorrel::kIdentity;
    /// For a light package (as Shift with a left press creates): its class.
    std::optional<std::string> packageClass;
};

/// What kind of light a file said it was; the viewport shades each as a spot.
enum class LightKind { Spot, Point, Directional, Area };

struct LightDescription {
    std::string path;                  // a location, or a USD prim path
    Matrix local = sorrel::kIdentity;  // relative to the parent
    double centerOfInterest = 5.0;     // world units ahead of the light
    sorrel::LightProperties properties;
    LightKind kind = LightKind::Spot;
    /// The index into SceneDescription::assets of the asset it came from.
    std::optional<std::size_t> asset;
    /// One of the rig the viewer adds to a scene without lights, not the file's.
    bool defaultRig = false;
    /// An asset gave the centre of interest itself (as the viewer's own glTF
    /// export does), so it is not worked out from the surfaces ahead.
    bool centerOfInterestGiven = false;
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
    std::string file;                  // where it was read from
    CameraDescription camera;          // the view it opens with
    std::vector<NamedCamera> cameras;  // the assets' cameras, in file order
    std::vector<AssetDescription> assets;
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
