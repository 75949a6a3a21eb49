#include "frame/manipulator_wrapper.h"

#include "frame/manipulator_handle_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

std::shared_ptr<ManipulatorHandleWrapper> ManipulatorWrapper::getHandle(std::uint32_t index) const {
    return lookUp<ManipulatorHandleWrapper>(pluginHost, hostSuite_, &HostSuite::getHandle,
                                            hostHandle_, index);
}

std::uint32_t ManipulatorWrapper::getNumberOfHandles() const {
    return askHost(&HostSuite::getNumberOfHandles, std::uint32_t{0});
}

}  // namespace Tessera::Sorrel::ViewerAPI
