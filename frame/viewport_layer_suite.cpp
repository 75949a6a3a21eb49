#include "frame/viewport_layer_suite.h"

#include "frame/attribute.h"
#include "frame/picked_attrs_map.h"
#include "frame/plugin_object_handle.h"
#include "frame/viewport_layer.h"

namespace Tessera::Sorrel::ViewerAPI {

namespace {

ViewportLayer& layerOf(PluginObjectHandle* handle) { return pluginObject<ViewportLayer>(handle); }

void setupEntry(PluginObjectHandle* handle) { layerOf(handle).setup(); }
void cleanupEntry(PluginObjectHandle* handle) { layerOf(handle).cleanup(); }
void drawEntry(PluginObjectHandle* handle) { layerOf(handle).draw(); }
void hostSignalAEntry(PluginObjectHandle* handle) { layerOf(handle).hostSignalA(); }
void hostSignalBEntry(PluginObjectHandle* handle) { layerOf(handle).hostSignalB(); }

void resizeEntry(PluginObjectHandle* handle, std::int32_t width, std::int32_t height) {
    layerOf(handle).resize(width, height);
}

void stateChangedEntry(PluginObjectHandle* handle, std::uint8_t state, void* detail) {
    layerOf(handle).stateChanged(state != 0, detail);
}

// The event's reference is given over to the entry.
std::int32_t eventEntry(PluginObjectHandle* handle, AttributeHandle givenOver) {
    const Attribute event = Attribute::adopt(givenOver);
    if (event.type() != kGroupType) return 0;
    const GroupAttribute group(event);
    return layerOf(handle).event(group) ? 1 : 0;
}

// The class's setOption releases its by-value copy; the entry releases the given one.
void setOptionEntry(PluginObjectHandle* handle, OptionId id, AttributeHandle givenOver) {
    const Attribute given = Attribute::adopt(givenOver);
    layerOf(handle).setOption(id, given);
}

AttributeHandle getOptionEntry(PluginObjectHandle* handle, OptionId id) {
    return layerOf(handle).getOption(id).release();
}

void pickerDrawEntry(PluginObjectHandle* handle, std::int32_t x, std::int32_t y, std::int32_t width,
                     std::int32_t height, AttributeHandle borrowed) {
    PickedAttrsMap excluded;
    excluded.fill(GroupAttribute(Attribute::share(borrowed)));
    layerOf(handle).pickerDraw(x, y, width, height, excluded);
}

std::uint8_t getLayerFlagEntry(PluginObjectHandle* handle) {
    return layerOf(handle).layerFlag ? 1 : 0;
}

std::int32_t pickEntry(PluginObjectHandle* handle, std::int32_t x, std::int32_t y,
                       std::int32_t width, std::int32_t height, std::int32_t flag,
                       AttributeHandle* out, float* depth) {
    PickedAttrsMap picked;
    if (!layerOf(handle).pick(x, y, width, height, flag != 0, picked, depth)) return 0;
    *out = picked.toGroup().release();
    return 1;
}

}  // namespace

ViewportLayerPluginSuite buildViewportLayerSuite(PluginObjectHandle* (*create)(void*)) {
    return ViewportLayerPluginSuite{
        create,
        &destroyPluginObject,
        &setupEntry,
        &cleanupEntry,
        &eventEntry,
        &drawEntry,
        &resizeEntry,
        &stateChangedEntry,
        &hostSignalAEntry,
        &hostSignalBEntry,
        &setOptionEntry,
        &getOptionEntry,
        &pickerDrawEntry,
        &getLayerFlagEntry,
        &pickEntry,
    };
}

}  // namespace Tessera::Sorrel::ViewerAPI
