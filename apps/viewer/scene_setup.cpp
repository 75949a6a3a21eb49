#include "apps/viewer/scene_setup.h"

#include "host/core/attribute_model.h"
#include "host/core/names.h"
#include "host/core/plugin_objects.h"
#include "host/siblings/light_package_commands.h"
#include "host/viewer/selection.h"
#include "host/viewer_stage.h"

namespace viewer {

using sorrel::AttrRef;

namespace {

/// The locations above every light location, parents first.
const char* const kStandardGroups[] = {"/root", "/root/world", "/root/world/lgt"};

AttrRef lightAttributes(const LightDescription& light) {
    return sorrel::groupAttr({{sorrel::names::kType, sorrel::stringAttr(sorrel::names::kLightType)},
                              {sorrel::names::kGeometry,
                               sorrel::lightGeometry(light.properties, light.centerOfInterest)}});
}

/// Whatever the variant holds, as the attribute of its type.
struct ToAttribute {
    AttrRef operator()(int value) const { return sorrel::intAttr(value); }
    AttrRef operator()(double value) const { return sorrel::doubleAttr(value); }
    AttrRef operator()(const std::string& value) const { return sorrel::stringAttr(value); }
    AttrRef operator()(const std::vector<std::string>& values) const {
        return AttrRef(sorrel::AttributeModel::instance().makeStrings(values));
    }
};

}  // namespace

void putSceneIntoStage(const SceneDescription& scene, sorrel::ViewerStage& stage,
                       vrt::Stage& usdStage) {
    for (const MeshDescription& mesh : scene.meshes)
        stage.scene().meshes().emplace(mesh.name, mesh.mesh);
    sorrel::ViewerDelegate& delegate = stage.delegate();
    for (const char* path : kStandardGroups) delegate.putLocation(path, sorrel::groupAttr({}));
    for (const GroupDescription& group : scene.groups)
        delegate.putLocation(group.path,
                             group.packageClass
                                 ? sorrel::lightPackageAttributes(*group.packageClass, "")
                                 : sorrel::groupAttr({}),
                             group.local);
    for (const LightDescription& light : scene.lights)
        delegate.putLocation(light.path, lightAttributes(light), light.local);

    for (const LightDescription& light : scene.usdLights) {
        vrt::Prim prim = usdStage.definePrim(vrt::Path(light.path));
        prim.applyApi(vrt::Token(sorrel::names::kUsdLightApi));
        prim.setAttr(vrt::Token(sorrel::names::kUsdCenterOfInterest),
                     vrt::Value(light.centerOfInterest));
        prim.setLocalTransformation(lqm::Mat4<double>(light.local));
        delegate.sendUsdPrim(prim, sorrel::UsdFlags::kPrimAdded);
    }
    stage.select(scene.selection);
}

AttrRef optionAttribute(const OptionValue& value) { return std::visit(ToAttribute{}, value); }

void setLayerOptions(const sorrel::LayerObject& layer,
                     const std::vector<std::pair<std::string, OptionValue>>& options) {
    for (const auto& [name, value] : options) layer.setOption(name, optionAttribute(value));
}

std::vector<sorrel::SceneLight> usdSceneLights(const SceneDescription& scene) {
    std::vector<sorrel::SceneLight> lights;
    for (const LightDescription& light : scene.usdLights) {
        sorrel::SceneLight placed = sorrel::placedLight(light.path, light.local);
        placed.centerOfInterest = light.centerOfInterest;
        placed.properties = light.properties;
        lights.push_back(std::move(placed));
    }
    return lights;
}

}  // namespace viewer
