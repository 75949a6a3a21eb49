#pragma once
// What a viewport layer is on both sides of the boundary: the layers of this
// plugin and the wrappers that stand for layers living anywhere.

#include <cstdint>
#include <memory>

#include "frame/attribute.h"
#include "frame/plugin_kinds.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewportWrapper;
class PickedAttrsMap;

class ViewportLayerPluginBase : public PluginBaseOf<ViewportLayerKind> {
public:
    /// The layer's viewport, made on the first call and the same one afterwards.
    std::shared_ptr<ViewportWrapper> getViewport();
    /// Registers an attribute for picking; the identifier becomes a colour.
    std::uint64_t addPickedAttr(const Attribute& attribute) const;
    /// Asks the host what lies in a rectangle of the viewport (pixels).
    bool pick(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, bool flag,
              PickedAttrsMap& picked, float* depth) const;

private:
    std::shared_ptr<ViewportWrapper> viewport_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
