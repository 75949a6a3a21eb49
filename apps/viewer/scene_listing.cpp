#include "apps/viewer/scene_listing.h"

#include <map>

#include "apps/scene/light_kind.h"
#include "apps/viewer/number_text.h"
#include "host/viewer/scene.h"

namespace viewer {

namespace {

/// World transforms of the scene's groups, parents given before children.
std::map<std::string, Matrix> groupWorlds(const SceneDescription& scene) {
    std::map<std::string, Matrix> worlds;
    for (const GroupDescription& group : scene.groups) {
        const auto parent = worlds.find(sorrel::parentOf(group.path));
        worlds[group.path] = parent == worlds.end()
                                 ? group.local
                                 : sorrel::multiplyMatrices(group.local, parent->second);
    }
    return worlds;
}

std::string lightLine(const char* word, const LightDescription& light, const Matrix& world) {
    const Vec3 position = sorrel::matrixRow(world, sorrel::kTranslationRow);
    const Vec3 aim = sorrel::normalizedOrZero(-sorrel::matrixRow(world, 2));
    return std::string(word) + " " + light.path + " " + lightKindName(light.kind) + " position " +
           fixedTriple(position) + " aim " + fixedTriple(aim) + " coi " +
           fixed(light.centerOfInterest) + (light.defaultRig ? " default" : "") + "\n";
}

}  // namespace

std::string sceneListing(const SceneDescription& scene) {
    std::string text;
    for (const MeshDescription& mesh : scene.meshes)
        text +=
            "mesh " + mesh.name + " " + std::to_string(mesh.mesh.triangleCorners().size()) + "\n";
    const std::map<std::string, Matrix> groups = groupWorlds(scene);
    for (const LightDescription& light : scene.lights) {
        const auto parent = groups.find(sorrel::parentOf(light.path));
        text += lightLine("light", light,
                          parent == groups.end()
                              ? light.local
                              : sorrel::multiplyMatrices(light.local, parent->second));
    }
    for (const LightDescription& light : scene.usdLights)
        text += lightLine("usdlight", light, light.local);
    for (const NamedCamera& camera : scene.cameras) text += "camera " + camera.name + "\n";
    return text;
}

}  // namespace viewer
