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

}  // namespace viewer
