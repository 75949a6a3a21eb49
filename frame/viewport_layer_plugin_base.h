#pragma once
// What a viewport layer is on both sides of the boundary: the layers of this
// plugin and the wrappers that stand for layers living anywhere.

#include <cstdint>
#include <memory>

#include "frame/attribute.h"
#include "frame/host_api.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewportWrapper;
class PickedAttrsMap;

/// "ViewportLayerHost" version 2, the host's table for a layer.
struct ViewportLayerHostSuite {
    void (*getViewport)(void* layerHostHandle, void** viewportHostHandle, void** pluginHandle,
                        const void** suite);  // 0
    ReservedSlot reserved1to3[3];
    std::uint64_t (*addPickedAttr)(void* layerHostHandle, AttributeHandle borrowed);  // 4
    AttributeHandle (*pick)(void* layerHostHandle, std::int32_t x, std::int32_t y,
                            std::int32_t width, std::int32_t height, std::int32_t flag,
                            float* depth);  // 5
};
static_assert(offsetof(ViewportLayerHostSuite, addPickedAttr) == 4 * sizeof(void*));
static_assert(offsetof(ViewportLayerHostSuite, pick) == 5 * sizeof(void*));

class ViewportLayerPluginBase {
public:
    static constexpr const char* apiName = "ViewportLayerPlugin";
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* kHostSuiteName = "ViewportLayerHost";
    static constexpr unsigned int kHostSuiteVersion = 2;

    /// Shared by every layer and layer wrapper of this plugin; null until set.
    static PluginHost* pluginHost;
    /// The row's setHost: stores the host and fetches the shared tables.
    static int setHost(PluginHost* host);

    virtual ~ViewportLayerPluginBase();

    /// The layer's viewport, made on the first call and the same one afterwards.
    std::shared_ptr<ViewportWrapper> getViewport();
    /// Registers an attribute for picking; the identifier becomes a colour.
    std::uint64_t addPickedAttr(const Attribute& attribute) const;
    /// Asks the host what lies in a rectangle of the viewport (pixels).
    bool pick(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, bool flag,
              PickedAttrsMap& picked, float* depth) const;

    void* hostHandle() const { return hostHandle_; }

protected:
    /// Binds a new object to its host handle and fetches its host table.
    void bind(void* hostHandle);

    const ViewportLayerHostSuite* hostSuite_ = nullptr;
    void* hostHandle_ = nullptr;
    std::shared_ptr<ViewportWrapper> viewport_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
