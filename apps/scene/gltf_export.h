#pragma once
// The scene as it stands, written as glTF 2.0 so that the placed lights
// travel to any tool that reads it: every mesh as a node with its world
// matrix, its triangles and a metallic-roughness material of its colour;
// every light as a node with the light's world matrix and a
// KHR_lights_punctual light (its centre of interest in the node's
// extras, as "centerOfInterest"). Buffers are embedded, so the file stands
// alone.

#include <map>
#include <string>
#include <vector>

#include "apps/scene/scene_description.h"
#include "host/viewer/scene.h"
#include "host/viewer/scene_light.h"

namespace viewer {

/// What kind each light is, by path, as the file it came from said; a light
/// not named is a spot. A point or directional light is written as one; an
/// area light, which glTF has not, as a spot.
using LightKinds = std::map<std::string, LightKind>;

/// The text of a .gltf file for the meshes of `scene` and `lights`.
std::string gltfText(const sorrel::Scene& scene, const std::vector<sorrel::SceneLight>& lights,
                     const LightKinds& kinds = {});

/// Writes gltfText to `path` through the writer of files the user keeps;
/// throws FileWriteError naming the file and the cause.
void exportGltf(const std::string& path, const sorrel::Scene& scene,
                const std::vector<sorrel::SceneLight>& lights, const LightKinds& kinds = {});

}  // namespace viewer
