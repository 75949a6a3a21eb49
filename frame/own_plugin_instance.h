#pragma once
// Finding an object of this plugin behind a wrapper without touching anything
// else. A layer or component of another library may stand behind any wrapper,
// and its object may be of a class this plugin never saw, or no C++ object at
// all: a cast of it would read memory that means nothing here. An object is
// recognised first by its entry table, whose `create` is the one this plugin
// built for the class, and only then cast.

#include "frame/abi/viewer_delegate_component_plugin_suite.h"
#include "frame/abi/viewport_layer_plugin_suite.h"
#include "frame/plugin_object_ref.h"
#include "frame/viewer_delegate_component.h"
#include "frame/viewport_layer.h"

namespace Tessera::Sorrel::ViewerAPI {

/// The layer of class `Concrete` of this plugin behind `layer`, or null.
template <typename Concrete>
Concrete* ownLayerInstance(const PluginObjectRef& layer) {
    const auto* suite = static_cast<const ViewportLayerPluginSuite*>(layer.pluginSuite());
    if (suite == nullptr || suite->create != &ViewportLayer::create<Concrete>) return nullptr;
    return dynamic_cast<Concrete*>(static_cast<ViewportLayer*>(layer.getPluginInstance()));
}

/// The component of class `Concrete` of this plugin behind `component`, or null.
template <typename Concrete>
Concrete* ownComponentInstance(const PluginObjectRef& component) {
    const auto* suite =
        static_cast<const ViewerDelegateComponentPluginSuite*>(component.pluginSuite());
    if (suite == nullptr || suite->create != &ViewerDelegateComponent::create<Concrete>)
        return nullptr;
    return dynamic_cast<Concrete*>(
        static_cast<ViewerDelegateComponent*>(component.getPluginInstance()));
}

}  // namespace Tessera::Sorrel::ViewerAPI
