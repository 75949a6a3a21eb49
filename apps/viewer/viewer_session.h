#pragma once
// One scene open in the stand-in host with the plugin loaded: the viewer
// stage with the scene put into it, the USD stage its light prims live on, the
// picking machinery and the lit viewport. Front-ends (the tour, a window) hand
// it events and ask it for frames.
//
// A GL context must be current when a session is made, whenever it draws or
// picks, and when it is destroyed.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apps/scene/scene_description.h"
#include "host/core/attribute_ref.h"
#include "host/viewer/scene_light.h"
#include "vrt/stage.h"

namespace sorrel {
class GLSurface;
class LayerObject;
class Picking;
class PluginLibrary;
class SceneRenderer;
class ViewerStage;
class Viewport;
}  // namespace sorrel

namespace viewer {

class ViewerSession {
public:
    /// Loads the plugin's rows into a viewer of the scene's size and camera,
    /// puts the scene into it and sets the scene's options. Throws
    /// std::runtime_error when the plugin lacks one of its two layers or the
    /// viewport's own shaders fail.
    ViewerSession(const SceneDescription& scene, const sorrel::PluginLibrary& plugin,
                  const sorrel::GLSurface& context);
    ~ViewerSession();
    ViewerSession(const ViewerSession&) = delete;
    ViewerSession& operator=(const ViewerSession&) = delete;

    const SceneDescription& scene() const { return scene_; }
    sorrel::ViewerStage& stage() { return *stage_; }
    sorrel::Viewport& viewport();
    sorrel::Picking& picking() { return *picking_; }
    sorrel::SceneRenderer& renderer() { return *renderer_; }
    const sorrel::LayerObject& placementLayer() const { return *placementLayer_; }
    const sorrel::LayerObject& handlesLayer() const { return *handlesLayer_; }

    /// Sets an option as the host does: on the placement layer, which hands it on.
    void setOption(const std::string& name, sorrel::AttrRef value) const;
    /// Hands an event to the plugin's layers in the viewport's order until one
    /// uses it up; true when one did.
    bool sendEvent(const sorrel::AttrRef& event);
    /// Every light, the locations' and the USD prims', where they stand now.
    std::vector<sorrel::SceneLight> lights() const;
    /// Told how long a plugin layer's draw took: wall clock, seconds, GL finished.
    using LayerDrawTime = std::function<void(const sorrel::LayerObject& layer, double seconds)>;
    /// The host's lit scene, then each plugin layer's drawing, in order; each
    /// layer's draw timed when `timed` is given.
    void drawFrame(const LayerDrawTime& timed = nullptr);

private:
    SceneDescription scene_;
    // Declared before the stage: the plugin's USD mirror may outlive events, not the prims.
    vrt::Stage usdStage_;
    std::unique_ptr<sorrel::ViewerStage> stage_;
    std::unique_ptr<sorrel::Picking> picking_;
    std::unique_ptr<sorrel::SceneRenderer> renderer_;
    const sorrel::LayerObject* placementLayer_ = nullptr;
    const sorrel::LayerObject* handlesLayer_ = nullptr;
};

}  // namespace viewer
