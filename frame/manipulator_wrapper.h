#pragma once
// A manipulator of the viewport and its handles, as the plugin sees them.

#include <cstdint>
#include <memory>

#include "frame/attribute.h"
#include "frame/object_triple.h"
#include "frame/plugin_kinds.h"
#include "frame/viewer_host_suites.h"

namespace Tessera::Sorrel::ViewerAPI {

class ManipulatorHandleWrapper
    : public ObjectWrapper<ManipulatorHandlePluginBase, ManipulatorHandleHostSuite> {
public:
    using ObjectWrapper::ObjectWrapper;

    /// Hands the option to the handle's own entry table; the value is lent.
    void setOption(OptionId id, Attribute value) const;
};

class ManipulatorWrapper : public ObjectWrapper<ManipulatorPluginBase, ManipulatorHostSuite> {
public:
    using ObjectWrapper::ObjectWrapper;

    std::shared_ptr<ManipulatorHandleWrapper> getHandle(std::uint32_t index) const;
    std::uint32_t getNumberOfHandles() const;
};

}  // namespace Tessera::Sorrel::ViewerAPI
