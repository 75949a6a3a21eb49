#include "frame/viewer_delegate_wrapper.h"

#include "frame/sample_accessor.h"
#include "frame/viewer_delegate_component_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

GroupAttribute ViewerDelegateWrapper::getLocationAttributes(const std::string& path,
                                                            std::uint32_t flag) const {
    return GroupAttribute(Attribute::adopt(
        askHost(&HostSuite::getLocationAttributes, AttributeHandle{nullptr}, path.c_str(), flag)));
}

lqm::Mat4<double> ViewerDelegateWrapper::getWorldTransform(const std::string& path,
                                                           std::uint32_t flag) const {
    const DoubleAttribute transform(Attribute::adopt(
        askHost(&HostSuite::getWorldTransform, AttributeHandle{nullptr}, path.c_str(), flag)));
    if (!transform.isValid()) return lqm::Mat4<double>();
    const SampleAccessor<double> samples(transform, kTimeZero);
    // The host is relied on to give sixteen values.
    return samples.empty() ? lqm::Mat4<double>() : lqm::Mat4<double>(samples.data());
}

Attribute ViewerDelegateWrapper::callMethod(const std::string& name, Attribute argument) const {
    return Attribute::adopt(
        askHost(&HostSuite::callMethod, AttributeHandle{nullptr}, name.c_str(), argument.handle()));
}

std::shared_ptr<ViewerDelegateComponentWrapper> ViewerDelegateWrapper::getComponent(
    const std::string& name) const {
    return lookUp<ViewerDelegateComponentWrapper>(pluginHost, hostSuite_, &HostSuite::getComponent,
                                                  hostHandle_, name.c_str());
}

}  // namespace Tessera::Sorrel::ViewerAPI
