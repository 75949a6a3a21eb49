#pragma once
// The host's tables for viewer objects, at the positions the plugin calls.

namespace sorrel {

class PluginHost;

/// Makes "ViewportLayerHost" 2, "ViewportHost" 3, "ViewportCameraHost" 2,
/// "ViewerDelegateHost" 4, "ViewerDelegateComponentHost" 2, "ManipulatorHost" 2
/// and "ManipulatorHandleHost" 1 answerable.
void provideViewerTables(PluginHost& host);

}  // namespace sorrel
