#pragma once
// A viewer delegate component, as a layer holds it.

#include "frame/object_triple.h"
#include "frame/plugin_object_ref.h"
#include "frame/viewer_delegate_component_plugin_base.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateComponentWrapper : public ViewerDelegateComponentPluginBase,
                                       public PluginObjectRef {
public:
    ViewerDelegateComponentWrapper(PluginHost* creatorHost, const ObjectTriple& triple);
};

}  // namespace Tessera::Sorrel::ViewerAPI
