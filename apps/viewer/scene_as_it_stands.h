#pragma once
// The scene as it stands in a viewer, as a description a writer can save:
// what was loaded, with the lights and groups of the viewer's scene as they
// are now (moved, re-aimed, created as packages), the view, the selection and
// the layers' options.

#include <string>
#include <utility>
#include <vector>

#include "apps/scene/scene_description.h"

namespace sorrel {
class Scene;
}

namespace viewer {

struct ViewNow {
    CameraDescription camera;
    std::vector<std::string> selection;  // locations and USD prims
    /// Options as the layers hold them now; those not given keep their loaded value.
    std::vector<std::pair<std::string, OptionValue>> options;
};

SceneDescription sceneAsItStands(const SceneDescription& loaded, const sorrel::Scene& scene,
                                 const ViewNow& view);

/// Saves sceneAsItStands as a scene file at `path`; exports the viewer's
/// scene (its meshes and light locations) as glTF at `path`. Both throw
/// FileWriteError naming the file and the cause, the earlier file whole.
void saveAsItStands(const std::string& path, const SceneDescription& loaded,
                    const sorrel::Scene& scene, const ViewNow& view);
void exportAsItStands(const std::string& path, const SceneDescription& loaded,
                      const sorrel::Scene& scene);

/// Where the window exports a scene opened from `opened`: beside it, as
/// "<name>.beamwright.gltf", never over the file it came from.
std::string exportPathFor(const std::string& opened);

}  // namespace viewer
