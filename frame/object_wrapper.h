#pragma once
// The common construction of the wrappers that stand for viewer objects.

#include "frame/abi/plugin_host.h"
#include "frame/host_suite_registry.h"
#include "frame/object_triple.h"
#include "frame/plugin_object_ref.h"

namespace Tessera::Sorrel::ViewerAPI {

/// A wrapper over a viewer object, living in the host, in this plugin or in
/// another one. `PluginBase` gives the kind's static host pointer and host
/// table. A wrapper owns nothing of what it stands for.
template <typename PluginBase>
class ObjectWrapper : public PluginBase, public PluginObjectRef {
public:
    ObjectWrapper(PluginHost* creatorHost, const ObjectTriple& triple) : PluginObjectRef(triple) {
        adoptHostOnce(PluginBase::pluginHost, creatorHost);
        this->bind(triple.hostHandle);
    }
};

}  // namespace Tessera::Sorrel::ViewerAPI
