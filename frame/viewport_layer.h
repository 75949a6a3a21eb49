#pragma once
// The base of the viewport layers implemented in this plugin. The virtual
// operations keep the order of the entry table that drives them.

#include <cstdint>

#include "frame/attribute.h"
#include "frame/picked_attrs_map.h"
#include "frame/viewport_layer_plugin_base.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewportLayer : public ViewportLayerPluginBase {
public:
    explicit ViewportLayer(bool layerFlag) : layerFlag(layerFlag) {}
    ~ViewportLayer() override = default;

    virtual void setup() = 0;
    virtual void cleanup() = 0;
    /// True when the layer used the event.
    virtual bool event(const GroupAttribute& event);
    virtual void draw() = 0;
    /// Viewport size in pixels, as the host passes it.
    virtual void resize(std::int32_t width, std::int32_t height) = 0;
    virtual void stateChanged(bool state, void* detail);
    virtual void hostSignalA() = 0;
    virtual void hostSignalB() = 0;
    virtual void* reservedQuery();
    virtual void setOption(OptionId id, Attribute value);
    virtual Attribute getOption(OptionId id);
    virtual void pickerDraw(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                            const PickedAttrsMap& excluded);
    virtual bool pick(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                      bool flag, PickedAttrsMap& picked, float* depth);

    /// Creates an object of a concrete layer for the host (the table's first entry).
    template <typename Concrete>
    static struct PluginObjectHandle* create(void* hostHandle);

    /// Reported to the host; both layers of this plugin say false.
    const bool layerFlag;
};

}  // namespace Tessera::Sorrel::ViewerAPI

#include "frame/plugin_object_handle.h"

template <typename Concrete>
Tessera::Sorrel::ViewerAPI::PluginObjectHandle* Tessera::Sorrel::ViewerAPI::ViewportLayer::create(
    void* hostHandle) {
    auto layer = std::make_shared<Concrete>();
    layer->bind(hostHandle);
    return makePluginObjectHandle<ViewportLayer>(std::move(layer));
}
