// The plugin table, the three entry tables and the two exported functions.

#include <vector>

#include "frame/plugin_object_handle.h"
#include "frame/plugin_row.h"
#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_suite.h"
#include "handles/handles_layer.h"
#include "placement/placement_layer.h"
#include "scene/light_component.h"

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

// Built by static initialisers when the library loads, in this order.
const ViewportLayerPluginSuite handlesLayerSuite =
    buildViewportLayerSuite(&ViewportLayer::create<BeamwrightCOIHandlesLayer>);
const ViewportLayerPluginSuite placementLayerSuite =
    buildViewportLayerSuite(&ViewportLayer::create<BeamwrightLayer>);
const ViewerDelegateComponentPluginSuite lightComponentSuite =
    buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);

std::vector<PluginRow>& rowTable() {
    static std::vector<PluginRow> rows;
    return rows;
}

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

namespace Tessera::Sorrel::ViewerAPI {
void destroyPluginObject(PluginObjectHandle* handle) { delete handle; }
}  // namespace Tessera::Sorrel::ViewerAPI

extern "C" const PluginRow* getPlugins(unsigned int* outCount) {
    // The source rows are rewritten on every call; the host's last rows stay valid.
    static PluginRow handlesRow, placementRow, componentRow;
    rowTable().clear();
    registerRow<ViewportLayerPluginBase>(handlesRow, "BeamwrightCOIHandlesLayer",
                                         &handlesLayerSuiteEntry);
    registerRow<ViewportLayerPluginBase>(placementRow, "BeamwrightLayer", &placementLayerSuiteEntry);
    registerRow<ViewerDelegateComponentPluginBase>(componentRow, "BeamwrightLayerVDC",
                                                   &lightComponentSuiteEntry);
    const std::vector<PluginRow>& rows = rowTable();
    *outCount = static_cast<unsigned int>(rows.size());
    return rows.empty() ? nullptr : rows.data();
}

extern "C" void registerPlugin(const PluginRow* row) { rowTable().push_back(*row); }
