#pragma once
// Small assets the viewer tests write for themselves: a glTF 2.0 scene with two
// objects sharing one quad, a spot and a point light (KHR_lights_punctual) and a
// camera, its buffer in a .bin beside it; and an OBJ with two groups and an MTL.

#include <assimp/scene.h>

#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

namespace testing_support {

/// The quad: four corners on y = 0 from -1 to 1 in x and z, two triangles.
/// `lastIndex` lets a test name a corner the quad does not have.
inline std::string quadBuffer(std::uint16_t lastIndex = 1) {
    const float corners[] = {-1, 0, -1, 1, 0, -1, 1, 0, 1, -1, 0, 1};
    const std::uint16_t indices[] = {0, 3, 2, 0, 2, lastIndex};
    std::string bytes(sizeof corners + sizeof indices, '\0');
    std::memcpy(bytes.data(), corners, sizeof corners);
    std::memcpy(bytes.data() + sizeof corners, indices, sizeof indices);
    return bytes;
}

/// "floor" (the quad five times wider) and "crate" (the quad raised to y = 1
/// about x = 2); "Key Light.001", a spot at (0, 4, 0) aiming down; "bulb", a
/// point light at (2, 3, 0); "shot", a camera at (0, 3, 10) looking down -z.
/// `nodesExtra` (more keys of the floor node) and `indexCount` let a test break it.
inline std::string gltfScene(const std::string& nodesExtra = "", int indexCount = 6) {
    return R"({"asset": {"version": "2.0"},
  "extensionsUsed": ["KHR_lights_punctual"],
  "extensions": {"KHR_lights_punctual": {"lights": [
    {"type": "spot", "name": "Key Light.001", "color": [1, 0.5, 0.25], "intensity": 2,
     "spot": {"innerConeAngle": 0.2, "outerConeAngle": 0.4}},
    {"type": "point", "name": "bulb", "intensity": 3}]}},
  "scene": 0,
  "scenes": [{"nodes": [0, 1, 2, 3, 4]}],
  "nodes": [
    {"name": "floor", "mesh": 0, "scale": [5, 1, 5])" +
           nodesExtra + R"(},
    {"name": "crate", "mesh": 0, "translation": [2, 1, 0]},
    {"name": "Key Light.001", "translation": [0, 4, 0], "rotation": [-0.70710678, 0, 0, 0.70710678],
     "extensions": {"KHR_lights_punctual": {"light": 0}}},
    {"name": "bulb", "translation": [2, 3, 0], "extensions": {"KHR_lights_punctual": {"light": 1}}},
    {"name": "shot", "translation": [0, 3, 10], "camera": 0}],
  "cameras": [{"type": "perspective", "name": "shot",
               "perspective": {"yfov": 0.6, "aspectRatio": 1.5, "znear": 0.1, "zfar": 100}}],
  "meshes": [{"name": "quad", "primitives": [{"attributes": {"POSITION": 0}, "indices": 1, "material": 0}]}],
  "materials": [{"name": "red", "pbrMetallicRoughness": {"baseColorFactor": [0.8, 0.2, 0.1, 1], "roughnessFactor": 0.3}}],
  "buffers": [{"uri": "quad.bin", "byteLength": 60}],
  "bufferViews": [{"buffer": 0, "byteOffset": 0, "byteLength": 48},
                  {"buffer": 0, "byteOffset": 48, "byteLength": 12}],
  "accessors": [{"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3",
                 "min": [-1, 0, -1], "max": [1, 0, 1]},
                {"bufferView": 1, "componentType": 5123, "count": )" +
           std::to_string(indexCount) + R"(, "type": "SCALAR"}]
})";
}

/// The glTF scene with a second camera, "top", twelve units above the origin
/// looking down.
inline std::string gltfSceneWithTwoCameras() {
    std::string text = gltfScene();
    const auto replace = [&text](const std::string& from, const std::string& to) {
        text.replace(text.find(from), from.size(), to);
    };
    replace(R"("nodes": [0, 1, 2, 3, 4]})", R"("nodes": [0, 1, 2, 3, 4, 5]})");
    replace(R"("camera": 0}],)", R"("camera": 0},
    {"name": "top", "translation": [0, 12, 0], "rotation": [-0.70710678, 0, 0, 0.70710678],
     "camera": 1}],)");
    replace(R"("zfar": 100}}],)", R"("zfar": 100}},
              {"type": "perspective", "name": "top", "perspective": {"yfov": 0.8, "znear": 0.1}}],)");
    return text;
}

/// Writes the glTF scene and its buffer into `folder`; returns the .gltf's path.
inline std::string writeGltfScene(const TempFolder& folder, const std::string& name = "set.gltf") {
    folder.write("quad.bin", quadBuffer());
    return folder.write(name, gltfScene());
}

/// A file of each format Assimp writes, and whether it keeps lights and a camera.
struct WrittenAsset {
    std::string path;
    bool lightsAndCamera;
};

/// The glTF scene written again by Assimp's exporters: glb, Collada, ASCII FBX
/// (its binary FBX writer makes files its own reader refuses), OBJ with MTL,
/// PLY, STL and 3DS. Of these, Collada alone keeps the lights and the camera.
inline std::vector<WrittenAsset> writeEveryFormat(const TempFolder& folder) {
    Assimp::Importer importer;
    if (importer.ReadFile(writeGltfScene(folder), 0) == nullptr)
        throw std::runtime_error(importer.GetErrorString());
    const std::unique_ptr<aiScene> source(importer.GetOrphanedScene());
    // The exporters cannot copy the glTF reader's nested node metadata.
    for (std::vector<aiNode*> nodes{source->mRootNode}; !nodes.empty();) {
        aiNode* const node = nodes.back();
        nodes.pop_back();
        delete node->mMetaData;
        node->mMetaData = nullptr;
        nodes.insert(nodes.end(), node->mChildren, node->mChildren + node->mNumChildren);
    }
    const struct {
        const char* format;  // Assimp's exporter id
        const char* file;
        bool lightsAndCamera;
    } formats[] = {
        {"glb2", "set.glb", false}, {"collada", "set.dae", true}, {"fbxa", "set.fbx", false},
        {"obj", "set.obj", false},  {"ply", "set.ply", false},    {"stl", "set.stl", false},
        {"3ds", "set.3ds", false},
    };
    Assimp::Exporter exporter;
    std::vector<WrittenAsset> written;
    for (const auto& format : formats) {
        const std::string path = folder.path() + "/" + format.file;
        if (exporter.Export(source.get(), format.format, path) != aiReturn_SUCCESS)
            throw std::runtime_error(std::string(format.format) + ": " + exporter.GetErrorString());
        written.push_back({path, format.lightsAndCamera});
    }
    return written;
}

/// Two groups, "left" (a red triangle about x = -2) and "right" (a blue quad
/// about x = 2), their colours in set.mtl.
constexpr const char* kGroupsObj = R"(mtllib set.mtl
v -3 0 0
v -1 0 0
v -2 1 0
v 1 0 0
v 3 0 0
v 3 1 0
v 1 1 0
g left
usemtl red
f 1 2 3
g right
usemtl blue
f 4 5 6 7
)";
constexpr const char* kGroupsMtl = R"(newmtl red
Kd 0.9 0.1 0.1
newmtl blue
Kd 0.1 0.2 0.9
)";

}  // namespace testing_support
