#include "frame/viewport_layer_plugin_base.h"

#include "frame/object_triple.h"
#include "frame/picked_attrs_map.h"
#include "frame/viewport_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

std::shared_ptr<ViewportWrapper> ViewportLayerPluginBase::getViewport() {
    if (!viewport_)
        viewport_ = askAndWrap<ViewportWrapper>(pluginHost, hostSuite_, &HostSuite::getViewport,
                                                hostHandle_);
    return viewport_;
}

std::uint64_t ViewportLayerPluginBase::addPickedAttr(const Attribute& attribute) const {
    return askHost(&HostSuite::addPickedAttr, std::uint64_t{0}, attribute.handle());
}

bool ViewportLayerPluginBase::pick(std::int32_t x, std::int32_t y, std::int32_t width,
                                   std::int32_t height, bool flag, PickedAttrsMap& picked,
                                   float* depth) const {
    const AttributeHandle answer = askHost(&HostSuite::pick, AttributeHandle{nullptr}, x, y, width,
                                           height, std::int32_t{flag ? 1 : 0}, depth);
    picked.fill(GroupAttribute(Attribute::adopt(answer)));
    return true;
}

}  // namespace Tessera::Sorrel::ViewerAPI
