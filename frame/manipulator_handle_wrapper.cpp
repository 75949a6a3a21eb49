#include "frame/manipulator_handle_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

void ManipulatorHandleWrapper::setOption(OptionId id, Attribute value) const {
    const auto* entries = static_cast<void* const*>(pluginSuite_);
    const auto entry =
        reinterpret_cast<ManipulatorHandleSetOption>(entries[kManipulatorHandleSetOptionPosition]);
    entry(pluginHandle_, id, Attribute(value).release());  // the entry consumes its own reference
}

}  // namespace Tessera::Sorrel::ViewerAPI
