#include "frame/viewport_layer.h"

namespace Tessera::Sorrel::ViewerAPI {

bool ViewportLayer::event(const GroupAttribute&) { return false; }
void ViewportLayer::stateChanged(bool, void*) {}
void* ViewportLayer::reservedQuery() { return nullptr; }
void ViewportLayer::setOption(OptionId, Attribute) {}
Attribute ViewportLayer::getOption(OptionId) { return {}; }
void ViewportLayer::pickerDraw(std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                               const PickedAttrsMap&) {}
bool ViewportLayer::pick(std::int32_t, std::int32_t, std::int32_t, std::int32_t, bool,
                         PickedAttrsMap&, float*) {
    return false;
}

}  // namespace Tessera::Sorrel::ViewerAPI
