#pragma once
// The host's tables for viewer objects, at the positions the plugin calls:
// "ViewportLayerHost" 2, "ViewportHost" 3, "ViewportCameraHost" 2,
// "ViewerDelegateHost" 4, "ViewerDelegateComponentHost" 2, "ManipulatorHost" 2
// and "ManipulatorHandleHost" 1.

#include "host/core/plugin_host.h"

namespace sorrel {

/// The record to hand to a plugin's setHost: the process's PluginHost, made
/// to answer the viewer's tables beside the core's.
HostRecord* viewerHostRecord();

}  // namespace sorrel
