#pragma once
// A viewer delegate component, as a layer holds it.

#include "frame/object_wrapper.h"
#include "frame/viewer_delegate_component_plugin_base.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateComponentWrapper : public ObjectWrapper<ViewerDelegateComponentPluginBase> {
public:
    using ObjectWrapper::ObjectWrapper;
};

}  // namespace Tessera::Sorrel::ViewerAPI
