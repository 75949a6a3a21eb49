#pragma once
// A viewport layer living anywhere, here or in another plugin, reached through
// its own entry table.

#include <string>

#include "frame/attribute.h"
#include "frame/object_wrapper.h"
#include "frame/viewport_layer_plugin_base.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewportLayerWrapper : public ObjectWrapper<ViewportLayerPluginBase> {
public:
    using ObjectWrapper::ObjectWrapper;

    Attribute getOption(OptionId id) const;
    /// Turns the text into an identifier on each call.
    Attribute getOption(const std::string& name) const;
    /// The value is lent: the layer's entry takes a reference of its own.
    void setOption(OptionId id, Attribute value) const;
    void setOption(const std::string& name, Attribute value) const;
};

}  // namespace Tessera::Sorrel::ViewerAPI
