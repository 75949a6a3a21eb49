#include "frame/viewport_wrapper.h"

#include "frame/manipulator_wrapper.h"
#include "frame/viewer_delegate_wrapper.h"
#include "frame/viewport_camera_wrapper.h"
#include "frame/viewport_layer_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

namespace {
lqm::Mat4<double> matrixOrIdentity(const double* values) {
    return values != nullptr ? lqm::Mat4<double>(values) : lqm::Mat4<double>();
}
}  // namespace

std::shared_ptr<ViewerDelegateWrapper> ViewportWrapper::getViewerDelegate() {
    if (!viewerDelegate_)
        viewerDelegate_ = askAndWrap<ViewerDelegateWrapper>(
            pluginHost, hostSuite_->getViewerDelegate, hostHandle_);
    return viewerDelegate_;
}

std::shared_ptr<ViewportCameraWrapper> ViewportWrapper::getActiveCamera() const {
    return askAndWrap<ViewportCameraWrapper>(pluginHost, hostSuite_->getActiveCamera, hostHandle_);
}

std::int32_t ViewportWrapper::getWidth() const { return hostSuite_->getWidth(hostHandle_); }
std::int32_t ViewportWrapper::getHeight() const { return hostSuite_->getHeight(hostHandle_); }
void ViewportWrapper::setDirty(bool dirty) const {
    hostSuite_->setDirty(hostHandle_, dirty ? 1 : 0);
}

std::shared_ptr<ViewportLayerWrapper> ViewportWrapper::getLayer(const std::string& name) const {
    return lookUp<ViewportLayerWrapper>(pluginHost, hostSuite_->getLayerByName, hostHandle_,
                                        name.c_str());
}

std::shared_ptr<ViewportLayerWrapper> ViewportWrapper::getLayer(std::uint32_t index) const {
    return lookUp<ViewportLayerWrapper>(pluginHost, hostSuite_->getLayerByIndex, hostHandle_,
                                        index);
}

std::uint32_t ViewportWrapper::getNumberOfLayers() const {
    return hostSuite_->getNumberOfLayers(hostHandle_);
}

const double* ViewportWrapper::getViewMatrix() const {
    return hostSuite_->getViewMatrix(hostHandle_);
}

lqm::Mat4<double> ViewportWrapper::getViewMatrix44() const {
    return matrixOrIdentity(getViewMatrix());
}

const double* ViewportWrapper::getProjectionMatrix() const {
    return hostSuite_->getProjectionMatrix(hostHandle_);
}

lqm::Mat4<double> ViewportWrapper::getProjectionMatrix44() const {
    return matrixOrIdentity(getProjectionMatrix());
}

std::shared_ptr<ManipulatorWrapper> ViewportWrapper::getManipulator(const std::string& name) const {
    return lookUp<ManipulatorWrapper>(pluginHost, hostSuite_->getManipulator, hostHandle_,
                                      name.c_str());
}

}  // namespace Tessera::Sorrel::ViewerAPI
