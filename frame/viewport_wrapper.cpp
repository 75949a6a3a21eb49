#include "frame/viewport_wrapper.h"

#include "frame/manipulator_wrapper.h"
#include "frame/viewer_delegate_wrapper.h"
#include "frame/viewport_camera_wrapper.h"
#include "frame/viewport_layer_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

std::shared_ptr<ViewerDelegateWrapper> ViewportWrapper::getViewerDelegate() {
    if (!viewerDelegate_)
        viewerDelegate_ = askAndWrap<ViewerDelegateWrapper>(
            pluginHost, hostSuite_, &HostSuite::getViewerDelegate, hostHandle_);
    return viewerDelegate_;
}

std::shared_ptr<ViewportCameraWrapper> ViewportWrapper::getActiveCamera() const {
    return askAndWrap<ViewportCameraWrapper>(pluginHost, hostSuite_, &HostSuite::getActiveCamera,
                                             hostHandle_);
}

void ViewportWrapper::setDirty(bool dirty) const {
    if (hostSuite_ != nullptr) hostSuite_->setDirty(hostHandle_, dirty ? 1 : 0);
}

std::shared_ptr<ViewportLayerWrapper> ViewportWrapper::getLayer(const std::string& name) const {
    return lookUp<ViewportLayerWrapper>(pluginHost, hostSuite_, &HostSuite::getLayerByName,
                                        hostHandle_, name.c_str());
}

std::shared_ptr<ViewportLayerWrapper> ViewportWrapper::getLayer(std::uint32_t index) const {
    return lookUp<ViewportLayerWrapper>(pluginHost, hostSuite_, &HostSuite::getLayerByIndex,
                                        hostHandle_, index);
}

std::uint32_t ViewportWrapper::getNumberOfLayers() const {
    return askHost(&HostSuite::getNumberOfLayers, std::uint32_t{0});
}

std::shared_ptr<ManipulatorWrapper> ViewportWrapper::getManipulator(const std::string& name) const {
    return lookUp<ManipulatorWrapper>(pluginHost, hostSuite_, &HostSuite::getManipulator,
                                      hostHandle_, name.c_str());
}

}  // namespace Tessera::Sorrel::ViewerAPI
