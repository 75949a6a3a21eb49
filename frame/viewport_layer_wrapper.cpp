#include "frame/viewport_layer_wrapper.h"

#include <utility>

#include "frame/abi/viewport_layer_plugin_suite.h"
#include "frame/option_id.h"
#include "frame/plugin_object_handle.h"

namespace Tessera::Sorrel::ViewerAPI {

Attribute ViewportLayerWrapper::getOption(OptionId id) const {
    const auto* suite = static_cast<const ViewportLayerPluginSuite*>(pluginSuite_);
    return Attribute::adopt(suite->getOption(static_cast<PluginObjectHandle*>(pluginHandle_), id));
}

Attribute ViewportLayerWrapper::getOption(const std::string& name) const {
    return getOption(getOptionId(name.c_str()));
}

void ViewportLayerWrapper::setOption(OptionId id, Attribute value) const {
    const auto* suite = static_cast<const ViewportLayerPluginSuite*>(pluginSuite_);
    suite->setOption(static_cast<PluginObjectHandle*>(pluginHandle_), id, value.release());
}

void ViewportLayerWrapper::setOption(const std::string& name, Attribute value) const {
    setOption(getOptionId(name.c_str()), std::move(value));
}

}  // namespace Tessera::Sorrel::ViewerAPI
