#pragma once
// A viewport layer living anywhere, here or in another plugin, reached through
// its own entry table.

#include <string>

#include "frame/attribute.h"
#include "frame/object_triple.h"
#include "frame/viewport_layer_plugin_base.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewportLayerWrapper : public ViewportLayerPluginBase {
public:
    ViewportLayerWrapper(PluginHost* creatorHost, const ObjectTriple& triple);

    Attribute getOption(OptionId id) const;
    /// Turns the text into an identifier on each call.
    Attribute getOption(const std::string& name) const;
    /// The value is lent: the layer's entry takes a reference of its own.
    void setOption(OptionId id, Attribute value) const;
    void setOption(const std::string& name, Attribute value) const;
    /// The address of the layer's object, read from its plugin handle. Only a
    /// caller that knows the layer lives in this plugin may cast it.
    void* getPluginInstance() const;

    void* pluginHandle() const { return pluginHandle_; }
    const void* pluginSuite() const { return pluginSuite_; }

private:
    void* pluginHandle_;
    const void* pluginSuite_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
