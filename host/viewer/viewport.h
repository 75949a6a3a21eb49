#pragma once
// The host's viewport: size, matrices, an active camera, an ordered list of
// layers (the plugin's and the host's own), manipulators by name, a redraw
// counter and the picking machinery.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/core/host_object.h"
#include "host/core/plugin_objects.h"
#include "host/viewer/camera.h"
#include "host/viewer/host_layer.h"
#include "host/viewer/manipulator.h"
#include "host/viewer/scene.h"

namespace sorrel {

class ViewerDelegate;

class Viewport : public HostObject {
public:
    Viewport(ViewerDelegate& delegate, std::int32_t width, std::int32_t height);
    ~Viewport() override;

    ViewerDelegate& viewerDelegate() { return delegate_; }
    Camera& camera() { return camera_; }
    const Camera& camera() const { return camera_; }

    std::int32_t width = 0;
    std::int32_t height = 0;
    Matrix view = kIdentity;        // world to camera, row vectors
    Matrix projection = kIdentity;  // camera to clip, row vectors
    /// Looks from `eye` at `target` (world space) with a perspective of
    /// `fovYDegrees`; sets view, projection and the camera origin.
    void lookAt(const double eye[3], const double target[3], double fovYDegrees = 45.0,
                double nearPlane = 0.1, double farPlane = 1000.0);

    /// Creates a plugin layer by its entry table (setup is the caller's call).
    LayerObject& addPluginLayer(const std::string& name, void* const* suite);
    /// Adds a layer of the host's own.
    HostLayer& addHostLayer(std::unique_ptr<HostLayer> layer);
    LayerObject* pluginLayer(const std::string& name);
    HostLayer* hostLayer(const std::string& name);
    std::uint32_t numberOfLayers() const { return static_cast<std::uint32_t>(layers_.size()); }
    /// Destroys the plugin layers, newest first (cleanup is the caller's call).
    void removeLayers();
    /// Destroys one plugin layer and takes it off the list (cleanup is the caller's call).
    void removePluginLayer(const std::string& name);
    /// Calls `visit` for each plugin layer in order.
    void forEachPluginLayer(const std::function<void(LayerObject&)>& visit);

    void addManipulator(std::unique_ptr<Manipulator> manipulator);
    Manipulator* manipulator(const std::string& name);

    /// What the host does when the plugin asks for a redraw: counts it.
    void setDirty() { ++dirtyCount_; }
    /// How often the plugin asked for a redraw.
    std::uint64_t dirtyCount() const { return dirtyCount_; }

    // Picking: attributes registered during a picker pass, by identifier.
    std::uint64_t addPickedAttr(const AttrRef& attribute);
    const AttrRef* pickedAttr(std::uint64_t id) const;
    void clearPickedAttrs() { picked_.clear(); }
    /// Where the next identifiers start; tests reach ids whose colour bytes all differ.
    void setNextPickId(std::uint64_t id) { nextPickId_ = id; }
    /// Answers a layer's pick request: `layerName` names the asking layer, the
    /// area is in pixels with y from the top. A new reference, or null.
    using PickHandler =
        std::function<AttrRef(const std::string& layerName, std::int32_t x, std::int32_t y,
                              std::int32_t w, std::int32_t h, bool flag, float* depth)>;
    /// Without a handler (null), nothing is under the cursor.
    void setPickHandler(PickHandler handler) { pickHandler_ = std::move(handler); }
    AttrRef pick(const std::string& layerName, std::int32_t x, std::int32_t y, std::int32_t w,
                 std::int32_t h, bool flag, float* depth) const;

    ObjectTriple triple();

private:
    struct LayerSlot {
        Viewport* viewport = nullptr;
        std::string name;
        std::unique_ptr<LayerObject> plugin;
        std::unique_ptr<HostLayer> host;
        HostObjectRecord record;
        ObjectTriple triple() const;
    };

    ViewerDelegate& delegate_;
    Camera camera_;
    std::vector<std::unique_ptr<LayerSlot>> layers_;
    std::map<std::string, std::unique_ptr<Manipulator>> manipulators_;
    std::map<std::uint64_t, AttrRef> picked_;
    std::uint64_t nextPickId_ = 1;
    PickHandler pickHandler_;
    std::uint64_t dirtyCount_ = 0;
    HostObjectRecord record_;

    friend struct ViewerTables;
};

}  // namespace sorrel
