#include "frame/viewer_delegate_component_suite.h"

#include <string>
#include <vector>

#include "frame/attribute.h"
#include "frame/plugin_object_handle.h"
#include "frame/viewer_delegate_component.h"

namespace Tessera::Sorrel::ViewerAPI {

namespace {

ViewerDelegateComponent& componentOf(PluginObjectHandle* handle) {
    return pluginObject<ViewerDelegateComponent>(handle);
}

std::vector<std::string> copyPaths(const char* const* paths, std::int64_t count) {
    std::vector<std::string> copied;
    copied.reserve(count > 0 ? static_cast<std::size_t>(count) : 0);
    for (std::int64_t i = 0; i < count; ++i) copied.emplace_back(paths[i]);
    return copied;
}

std::uint8_t locationEventEntry(PluginObjectHandle* handle, const RawLocationEvent* raw,
                                std::uint8_t flag) {
    const LocationEvent event = LocationEvent::fromRaw(*raw);
    return componentOf(handle).locationEvent(event, flag != 0) ? 1 : 0;
}

std::uint8_t usdLocationEventEntry(PluginObjectHandle* handle, const RawUsdLocationEvent* raw,
                                   std::uint8_t flag) {
    return componentOf(handle).usdLocationEvent(UsdLocationEvent::fromRaw(*raw), flag != 0) ? 1 : 0;
}

void locationsSelectedEntry(PluginObjectHandle* handle, const char* const* paths,
                            std::int64_t count) {
    componentOf(handle).locationsSelected(copyPaths(paths, count));
}

void usdLocationsSelectedEntry(PluginObjectHandle* handle, const char* const* paths,
                               std::int64_t count) {
    componentOf(handle).usdLocationsSelected(copyPaths(paths, count));
}

void setOptionEntry(PluginObjectHandle* handle, OptionId id, AttributeHandle givenOver) {
    const Attribute given = Attribute::adopt(givenOver);
    componentOf(handle).setOption(id, given);
}

AttributeHandle getOptionEntry(PluginObjectHandle* handle, OptionId id) {
    return componentOf(handle).getOption(id).release();
}

void setupEntry(PluginObjectHandle* handle) { componentOf(handle).setup(); }
void cleanupEntry(PluginObjectHandle* handle) { componentOf(handle).cleanup(); }
std::uint8_t queryFlagEntry(PluginObjectHandle* handle) {
    return componentOf(handle).queryFlag() ? 1 : 0;
}

AttributeHandle attributeQueryAEntry(PluginObjectHandle* handle, const char* text) {
    return componentOf(handle).attributeQueryA(text).release();
}

AttributeHandle attributeQueryBEntry(PluginObjectHandle* handle, const char* text) {
    return componentOf(handle).attributeQueryB(text).release();
}

}  // namespace

ViewerDelegateComponentPluginSuite buildViewerDelegateComponentSuite(
    PluginObjectHandle* (*create)(void*)) {
    return ViewerDelegateComponentPluginSuite{
        create,
        &destroyPluginObject,
        &locationEventEntry,
        &locationsSelectedEntry,
        &setOptionEntry,
        &getOptionEntry,
        &setupEntry,
        &cleanupEntry,
        &queryFlagEntry,
        &attributeQueryAEntry,
        &attributeQueryBEntry,
        kViewerDelegateComponentSuiteMarker,
        &usdLocationEventEntry,
        &usdLocationsSelectedEntry,
    };
}

}  // namespace Tessera::Sorrel::ViewerAPI
