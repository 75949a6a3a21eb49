#pragma once
// The viewer delegate as the plugin sees it: location data, commands, components.

#include <cstdint>
#include <memory>
#include <string>

#include "frame/attribute.h"
#include "frame/object_wrapper.h"
#include "frame/plugin_kinds.h"
#include "lqm/mat4.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateComponentWrapper;

class ViewerDelegateWrapper : public ObjectWrapper<ViewerDelegatePluginBase> {
public:
    using ObjectWrapper::ObjectWrapper;

    /// The attribute group of a location; null when absent or no group.
    GroupAttribute getLocationAttributes(const std::string& path, std::uint32_t flag = 0) const;
    /// The location's world matrix (row vectors); the identity when the host
    /// has none or answers with anything but doubles.
    lqm::Mat4<double> getWorldTransform(const std::string& path, std::uint32_t flag = 0) const;
    /// Runs a named command of the viewer delegate; the argument is lent.
    Attribute callMethod(const std::string& name, Attribute argument) const;
    /// A component by name, or empty.
    std::shared_ptr<ViewerDelegateComponentWrapper> getComponent(const std::string& name) const;
};

}  // namespace Tessera::Sorrel::ViewerAPI
