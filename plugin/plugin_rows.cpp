// The library's three rows, their entry tables and getPlugins: the one place
// that knows every product class.

#include <cstdint>
#include <vector>

#include "frame/abi/plugin_row.h"
#include "frame/plugin_registry.h"
#include "frame/viewer_delegate_component.h"
#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer.h"
#include "frame/viewport_layer_suite.h"
#include "handles/handles_layer.h"
#include "placement/placement_layer.h"
#include "placement/placement_names.h"
#include "scene/light_component.h"
#include "scene/scene_names.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;

namespace {

// The project's version, as the build gives it.
constexpr std::uint32_t kPluginVersionMajor = BEAMWRIGHT_VERSION_MAJOR;
constexpr std::uint32_t kPluginVersionMinor = BEAMWRIGHT_VERSION_MINOR;

// Built by static initialisers when the library loads, in this order.
const ViewportLayerPluginSuite handlesLayerSuite =
    buildViewportLayerSuite(&ViewportLayer::create<BeamwrightCOIHandlesLayer>);
const ViewportLayerPluginSuite placementLayerSuite =
    buildViewportLayerSuite(&ViewportLayer::create<BeamwrightLayer>);
const ViewerDelegateComponentPluginSuite lightComponentSuite =
    buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);

void flushPlugin() {}

const void* handlesLayerSuiteEntry() { return &handlesLayerSuite; }
const void* placementLayerSuiteEntry() { return &placementLayerSuite; }
const void* lightComponentSuiteEntry() { return &lightComponentSuite; }

template <typename PluginBase>
void registerRow(PluginRow& source, const char* name, const void* (*getSuite)()) {
    source = PluginRow{name,
                       PluginBase::apiName,
                       PluginBase::apiVersion,
                       kPluginVersionMajor,
                       kPluginVersionMinor,
                       &PluginBase::setHost,
                       getSuite,
                       &flushPlugin};
    registerPlugin(&source);
}

}  // namespace

extern "C" const PluginRow* getPlugins(unsigned int* outCount) {
    // The source rows are rewritten on every call; the host's last rows stay valid.
    static PluginRow handlesRow, placementRow, componentRow;
    pluginRows().clear();
    registerRow<ViewportLayerPluginBase>(handlesRow, kHandlesLayerName, &handlesLayerSuiteEntry);
    registerRow<ViewportLayerPluginBase>(placementRow, kPlacementLayerName,
                                         &placementLayerSuiteEntry);
    registerRow<ViewerDelegateComponentPluginBase>(componentRow, kLightComponentName,
                                                   &lightComponentSuiteEntry);
    const std::vector<PluginRow>& rows = pluginRows();
    *outCount = static_cast<unsigned int>(rows.size());
    return rows.empty() ? nullptr : rows.data();
}
