#include "frame/manipulator_wrapper.h"

#include "frame/manipulator_handle_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

std::shared_ptr<ManipulatorHandleWrapper> ManipulatorWrapper::getHandle(std::uint32_t index) const {
    return lookUp<ManipulatorHandleWrapper>(pluginHost, hostSuite_->getHandle, hostHandle_, index);
}

std::uint32_t ManipulatorWrapper::getNumberOfHandles() const {
    return hostSuite_->getNumberOfHandles(hostHandle_);
}

}  // namespace Tessera::Sorrel::ViewerAPI
