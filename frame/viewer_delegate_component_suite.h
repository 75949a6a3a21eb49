#pragma once
// The entry table of a viewer delegate component class of this plugin.

#include "frame/abi/viewer_delegate_component_plugin_suite.h"

namespace Tessera::Sorrel::ViewerAPI {

/// The table for one component class: the shared entries with the class's `create`.
ViewerDelegateComponentPluginSuite buildViewerDelegateComponentSuite(
    PluginObjectHandle* (*create)(void*));

}  // namespace Tessera::Sorrel::ViewerAPI
