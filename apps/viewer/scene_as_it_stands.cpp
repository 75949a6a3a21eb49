#include "apps/viewer/scene_as_it_stands.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "apps/scene/gltf_export.h"
#include "apps/scene/scene_writer.h"
#include "host/core/names.h"
#include "host/siblings/light_package_commands.h"
#include "host/viewer/scene.h"
#include "host/viewer/scene_light.h"
#include "host/viewer/selection.h"

namespace viewer {

namespace {

/// Whether `path` lies below the lights' root, where a scene file's groups
/// and lights stand; the roots themselves the viewer makes.
bool belowLightsRoot(const std::string& path) {
    const std::string prefix = std::string(kLightsRoot) + "/";
    return path.compare(0, prefix.size(), prefix) == 0;
}

}  // namespace

SceneDescription sceneAsItStands(const SceneDescription& loaded, const sorrel::Scene& scene,
                                 const ViewNow& view) {
    SceneDescription now = loaded;
    now.camera = view.camera;
    now.selection = view.selection;
    for (const auto& [name, value] : view.options) {
        auto held = std::find_if(now.options.begin(), now.options.end(),
                                 [&name](const auto& option) { return option.first == name; });
        if (held != now.options.end())
            held->second = value;
        else
            now.options.emplace_back(name, value);
    }

    std::map<std::string, const LightDescription*> loadedLights;
    for (const LightDescription& light : loaded.lights) loadedLights[light.path] = &light;
    std::map<std::string, sorrel::SceneLight> lights;
    for (sorrel::SceneLight& light : sorrel::locationLights(scene))
        lights[light.path] = std::move(light);

    // Locations in path order: parents before children, as a scene file lists them.
    now.groups.clear();
    now.lights.clear();
    for (const auto& [path, location] : scene.locations()) {
        if (!belowLightsRoot(path)) continue;
        const auto light = lights.find(path);
        if (light == lights.end()) {
            now.groups.push_back({path, location.local, sorrel::lightPackageClassOf(location)});
            continue;
        }
        const auto known = loadedLights.find(path);
        LightDescription description =
            known != loadedLights.end() ? *known->second : LightDescription{};
        description.path = path;
        description.local = location.local;
        description.centerOfInterest = light->second.centerOfInterest;
        description.properties = light->second.properties;
        description.asset.reset();  // the saved scene lists it as its own
        description.defaultRig = false;
        now.lights.push_back(std::move(description));
    }
    return now;
}

void saveAsItStands(const std::string& path, const SceneDescription& loaded,
                    const sorrel::Scene& scene, const ViewNow& view) {
    saveSceneFile(path, sceneAsItStands(loaded, scene, view));
}

void exportAsItStands(const std::string& path, const SceneDescription& loaded,
                      const sorrel::Scene& scene) {
    LightKinds kinds;
    for (const LightDescription& light : loaded.lights) kinds[light.path] = light.kind;
    exportGltf(path, scene, sorrel::locationLights(scene), kinds);
}

std::string exportPathFor(const std::string& opened) {
    std::filesystem::path path(opened);
    return path.replace_extension(".beamwright.gltf").string();
}

}  // namespace viewer
