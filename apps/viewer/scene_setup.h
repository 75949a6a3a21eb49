#pragma once
// Putting a scene description into a viewer as the host would: meshes into
// the scene, groups and lights as locations sent to the delegate's components,
// USD light prims authored on a USD stage and sent as USD events, then the
// selection; and the options, set on the placement layer, which hands each on
// to the handles layer.

#include <string>
#include <vector>

#include "apps/scene/scene_description.h"
#include "host/core/attribute_ref.h"
#include "host/viewer/scene_light.h"
#include "vrt/stage.h"

namespace sorrel {
class LayerObject;
class ViewerStage;
}  // namespace sorrel

namespace viewer {

void putSceneIntoStage(const SceneDescription& scene, sorrel::ViewerStage& stage,
                       vrt::Stage& usdStage);

/// The attribute that carries an option's value.
sorrel::AttrRef optionAttribute(const OptionValue& value);

void setLayerOptions(const sorrel::LayerObject& layer,
                     const std::vector<std::pair<std::string, OptionValue>>& options);

/// The USD lights as the viewport shades with them (their prims never move).
std::vector<sorrel::SceneLight> usdSceneLights(const SceneDescription& scene);

}  // namespace viewer
