#pragma once
// A manipulator of the viewport as the plugin sees it: its handles.

#include <cstdint>
#include <memory>

#include "frame/object_wrapper.h"
#include "frame/plugin_kinds.h"

namespace Tessera::Sorrel::ViewerAPI {

class ManipulatorHandleWrapper;

class ManipulatorWrapper : public ObjectWrapper<ManipulatorPluginBase> {
public:
    using ObjectWrapper::ObjectWrapper;

    std::shared_ptr<ManipulatorHandleWrapper> getHandle(std::uint32_t index) const;
    std::uint32_t getNumberOfHandles() const;
};

}  // namespace Tessera::Sorrel::ViewerAPI
