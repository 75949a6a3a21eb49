#pragma once
// A viewer delegate component, as a layer holds it.

#include "frame/object_triple.h"
#include "frame/viewer_delegate_component_plugin_base.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateComponentWrapper : public ViewerDelegateComponentPluginBase {
public:
    ViewerDelegateComponentWrapper(PluginHost* creatorHost, const ObjectTriple& triple);

    /// The address of the component's object, read from its plugin handle.
    void* getPluginInstance() const;

    void* pluginHandle() const { return pluginHandle_; }
    const void* pluginSuite() const { return pluginSuite_; }

private:
    void* pluginHandle_;
    const void* pluginSuite_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
