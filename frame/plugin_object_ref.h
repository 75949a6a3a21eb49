#pragma once
// What a wrapper keeps of the object it stands for: its plugin handle and
// entry table, neither owned.

#include "frame/object_triple.h"
#include "frame/plugin_object_handle.h"

namespace Tessera::Sorrel::ViewerAPI {

class PluginObjectRef {
public:
    explicit PluginObjectRef(const ObjectTriple& triple)
        : pluginHandle_(triple.pluginHandle), pluginSuite_(triple.pluginSuite) {}

    /// The address of the object, read from the first field of its plugin
    /// handle. Only a caller that knows the object lives in this plugin may cast it.
    void* getPluginInstance() const {
        return pluginInstanceOf(static_cast<const PluginObjectHandle*>(pluginHandle_));
    }
    void* pluginHandle() const { return pluginHandle_; }
    const void* pluginSuite() const { return pluginSuite_; }

protected:
    void* pluginHandle_;
    const void* pluginSuite_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
