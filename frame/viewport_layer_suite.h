#pragma once
// The entry table of a layer class of this plugin.

#include "frame/abi/viewport_layer_plugin_suite.h"

namespace Tessera::Sorrel::ViewerAPI {

/// The table for one layer class: the shared entries with the class's `create`.
ViewportLayerPluginSuite buildViewportLayerSuite(PluginObjectHandle* (*create)(void*));

}  // namespace Tessera::Sorrel::ViewerAPI
