#pragma once
// Asset files read with Assimp, whatever their format (glTF 2.0, FBX, Collada,
// .blend, OBJ with its MTL, 3DS, PLY, STL, ...): every mesh placed by its
// node's world transform with its material, every light as a light location
// below kLightsRoot, every camera.
//
// A mesh is named after its node, so that each object of the file (an OBJ's
// groups and objects among them) is an object of its own; triangles and quads
// stay faces, larger polygons become fans, points and lines are left out.
// Where every vertex of a mesh has a normal it is shaded smooth.
//
// Every problem throws a SceneFileError with one line naming the file: one
// Assimp cannot read or whose data it refuses to validate, a coordinate that
// is not finite, or more than the limits below allow (checked before the
// viewer allocates for them).

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "apps/scene/scene_description.h"

namespace viewer {

/// The most an asset may hold, each checked before the viewer allocates for it.
struct ImportLimits {
    std::size_t triangles = 5'000'000;  // of every mesh where it is placed
    std::size_t points = 5'000'000;     // likewise
    std::size_t nodes = 100'000;
    std::size_t lights = 1'000;
    std::size_t cameras = 1'000;
    std::size_t materials = 10'000;
};

/// What one asset brings into a scene.
struct ImportedAsset {
    std::vector<MeshDescription> meshes;
    /// Placed and aimed in world space, their centres of interest not yet
    /// known (see aimImportedLights); a directional light stands at its node.
    std::vector<LightDescription> lights;
    std::vector<NamedCamera> cameras;
};

/// Names taken in the scene the asset goes into; an asset's names are made
/// unique against them and added.
struct TakenNames {
    std::set<std::string> meshes;
    std::set<std::string> locations;  // paths
    std::set<std::string> cameras;
};

/// Reads the asset at `path`, placed in the world by `placement`. Its meshes
/// are named after their nodes, below `prefix` ("prefix/node") when one is
/// given, or `prefix` alone when the asset holds a single mesh.
ImportedAsset importAsset(const std::string& path, const Matrix& placement,
                          const std::string& prefix, TakenNames& taken,
                          const ImportLimits& limits = {});

/// Gives each light that came from an asset its centre of interest: along
/// its aim at the first surface it meets, else at the scene's size; a
/// directional light is first moved back along its aim to the scene's edge,
/// aiming through its centre's plane.
void aimImportedLights(SceneDescription& scene);

}  // namespace viewer
