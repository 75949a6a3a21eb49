#include "frame/wrappers.h"

#include <sstream>
#include <stdexcept>

#include "frame/option_id.h"
#include "frame/plugin_object_handle.h"
#include "frame/sample_accessor.h"
#include "frame/viewport_layer_suite.h"

namespace Tessera::Sorrel::ViewerAPI {

namespace {

/// Asks a host function with three outs; the wrapper only when all three are set.
template <typename Wrapper, typename Lookup, typename... Args>
std::shared_ptr<Wrapper> lookUp(PluginHost* creatorHost, Lookup lookup, void* hostHandle,
                                Args... args) {
    ObjectTriple triple;
    lookup(hostHandle, args..., &triple.hostHandle, &triple.pluginHandle, &triple.pluginSuite);
    if (!triple.complete()) return {};
    return std::make_shared<Wrapper>(creatorHost, triple);
}

/// Asks a host function with three outs and wraps whatever it answered.
template <typename Wrapper, typename Ask>
std::shared_ptr<Wrapper> askAndWrap(PluginHost* creatorHost, Ask ask, void* hostHandle) {
    ObjectTriple triple;
    ask(hostHandle, &triple.hostHandle, &triple.pluginHandle, &triple.pluginSuite);
    return std::make_shared<Wrapper>(creatorHost, triple);
}

}  // namespace

// ---- layers and components: the cached way up ----

std::shared_ptr<ViewportWrapper> ViewportLayerPluginBase::getViewport() {
    if (!viewport_)
        viewport_ = askAndWrap<ViewportWrapper>(pluginHost, hostSuite_->getViewport, hostHandle_);
    return viewport_;
}

std::shared_ptr<ViewerDelegateWrapper> ViewerDelegateComponentPluginBase::getViewerDelegate() {
    if (!viewerDelegate_)
        viewerDelegate_ = askAndWrap<ViewerDelegateWrapper>(
            pluginHost, hostSuite_->getViewerDelegate, hostHandle_);
    return viewerDelegate_;
}

// ---- viewer delegate ----

GroupAttribute ViewerDelegateWrapper::getLocationAttributes(const std::string& path,
                                                            std::uint32_t flag) const {
    return GroupAttribute(
        Attribute::adopt(hostSuite_->getLocationAttributes(hostHandle_, path.c_str(), flag)));
}

lqm::Mat4<double> ViewerDelegateWrapper::getWorldTransform(const std::string& path,
                                                           std::uint32_t flag) const {
    const DoubleAttribute transform(
        Attribute::adopt(hostSuite_->getWorldTransform(hostHandle_, path.c_str(), flag)));
    if (!transform.isValid()) return lqm::Mat4<double>();
    const SampleAccessor<double> samples(transform, kTimeZero);
    // The host is relied on to give sixteen values.
    return samples.empty() ? lqm::Mat4<double>() : lqm::Mat4<double>(samples.data());
}

Attribute ViewerDelegateWrapper::callMethod(const std::string& name, Attribute argument) const {
    return Attribute::adopt(hostSuite_->callMethod(hostHandle_, name.c_str(), argument.handle()));
}

std::shared_ptr<ViewerDelegateComponentWrapper> ViewerDelegateWrapper::getComponent(
    const std::string& name) const {
    return lookUp<ViewerDelegateComponentWrapper>(pluginHost, hostSuite_->getComponent, hostHandle_,
                                                  name.c_str());
}

// ---- viewport ----

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

namespace {
lqm::Mat4<double> matrixOrIdentity(const double* values) {
    return values != nullptr ? lqm::Mat4<double>(values) : lqm::Mat4<double>();
}
}  // namespace

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

// ---- camera ----

ViewportCameraWrapper::ViewportCameraWrapper(PluginHost* creatorHost, const ObjectTriple& triple)
    : ObjectWrapper(creatorHost, triple) {
    if (hostSuite_ == nullptr) {
        std::ostringstream message;
        message << "This ViewportCamera plugin requires version 2 of the host API. "
                << "A more recent version of Sorrel is probably required by this "
                << "plugin.";
        throw std::runtime_error(message.str());
    }
}

Vec3d ViewportCameraWrapper::getOrigin() const {
    Vec3d origin;
    hostSuite_->getOrigin(hostHandle_, &origin.x, &origin.y, &origin.z);
    return origin;
}

// ---- manipulators ----

std::shared_ptr<ManipulatorHandleWrapper> ManipulatorWrapper::getHandle(std::uint32_t index) const {
    return lookUp<ManipulatorHandleWrapper>(pluginHost, hostSuite_->getHandle, hostHandle_, index);
}

std::uint32_t ManipulatorWrapper::getNumberOfHandles() const {
    return hostSuite_->getNumberOfHandles(hostHandle_);
}

void ManipulatorHandleWrapper::setOption(OptionId id, Attribute value) const {
    const auto* entries = static_cast<void* const*>(pluginSuite_);
    const auto entry =
        reinterpret_cast<ManipulatorHandleSetOption>(entries[kManipulatorHandleSetOptionPosition]);
    entry(pluginHandle_, id, Attribute(value).release());  // the entry consumes its own reference
}

// ---- layer and component wrappers ----

ViewportLayerWrapper::ViewportLayerWrapper(PluginHost* creatorHost, const ObjectTriple& triple)
    : PluginObjectRef(triple) {
    adoptHostOnce(pluginHost, creatorHost);
    bind(triple.hostHandle);
}

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

ViewerDelegateComponentWrapper::ViewerDelegateComponentWrapper(PluginHost* creatorHost,
                                                               const ObjectTriple& triple)
    : PluginObjectRef(triple) {
    adoptHostOnce(pluginHost, creatorHost);
    bind(triple.hostHandle);
}

}  // namespace Tessera::Sorrel::ViewerAPI
