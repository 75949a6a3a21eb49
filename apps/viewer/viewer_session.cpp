#include "apps/viewer/viewer_session.h"

#include <stdexcept>

#include "apps/viewer/scene_setup.h"
#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/core/plugin_objects.h"
#include "host/render/scene_renderer.h"
#include "host/viewer/gl_pass_timer.h"
#include "host/viewer/picking.h"
#include "host/viewer_stage.h"

namespace viewer {

namespace {

const sorrel::LayerObject& layerNamed(sorrel::Viewport& viewport, const char* name) {
    const sorrel::LayerObject* layer = viewport.pluginLayer(name);
    if (layer == nullptr) throw std::runtime_error(std::string("the plugin has no layer ") + name);
    return *layer;
}

}  // namespace

ViewerSession::ViewerSession(const SceneDescription& scene, const sorrel::PluginLibrary& plugin,
                             const sorrel::GLSurface& context)
    : scene_(scene) {
    const CameraDescription& camera = scene.camera;
    stage_ = std::make_unique<sorrel::ViewerStage>(camera.width, camera.height, camera.eye,
                                                   camera.target, &plugin);
    const double eye[3] = {camera.eye.x, camera.eye.y, camera.eye.z};
    const double target[3] = {camera.target.x, camera.target.y, camera.target.z};
    viewport().lookAt(eye, target, camera.fovDegrees, camera.nearPlane, camera.farPlane);
    placementLayer_ = &layerNamed(viewport(), sorrel::names::kPlacementLayer);
    handlesLayer_ = &layerNamed(viewport(), sorrel::names::kHandlesLayer);

    picking_ = std::make_unique<sorrel::Picking>(viewport(), context);
    picking_->install();
    renderer_ = std::make_unique<sorrel::SceneRenderer>();

    putSceneIntoStage(scene, *stage_, usdStage_);
    for (const auto& [name, value] : scene.options) setOption(name, optionAttribute(value));
}

ViewerSession::~ViewerSession() {
    renderer_.reset();
    picking_.reset();
    stage_.reset();
}

sorrel::Viewport& ViewerSession::viewport() { return stage_->viewport(); }

void ViewerSession::setOption(const std::string& name, sorrel::AttrRef value) const {
    // The stand-in manipulator draws the shadow handles at the distance the layer was given.
    if (name == sorrel::names::kDefaultShadowFallDistance)
        if (const auto distance = sorrel::readDouble(value))
            stage_->manipulator().defaultShadowFallDistance = *distance;
    placementLayer_->setOption(name, std::move(value));
}

bool ViewerSession::sendEvent(const sorrel::AttrRef& event) {
    bool used = false;
    viewport().forEachPluginLayer([&used, &event](sorrel::LayerObject& layer) {
        if (!used) used = layer.event(event);
    });
    return used;
}

std::vector<sorrel::SceneLight> ViewerSession::lights() const {
    std::vector<sorrel::SceneLight> lights = sorrel::locationLights(stage_->scene());
    for (sorrel::SceneLight& light : usdSceneLights(scene_)) lights.push_back(std::move(light));
    return lights;
}

void ViewerSession::drawFrame(const LayerDrawTime& timed) {
    renderer_->draw(viewport(), stage_->scene(), lights(), &stage_->manipulator());
    viewport().forEachPluginLayer([&timed](sorrel::LayerObject& layer) {
        if (timed)
            timed(layer, sorrel::finishedSeconds([&layer] { layer.draw(); }));
        else
            layer.draw();
    });
}

}  // namespace viewer
