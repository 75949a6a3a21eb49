#include "frame/viewer_delegate_component.h"

namespace Tessera::Sorrel::ViewerAPI {

bool ViewerDelegateComponent::usdLocationEvent(const UsdLocationEvent&, bool) { return false; }
void ViewerDelegateComponent::usdLocationsSelected(const std::vector<std::string>&) {}
bool ViewerDelegateComponent::queryFlag() { return false; }
void* ViewerDelegateComponent::reservedQuery() { return nullptr; }
void ViewerDelegateComponent::setOption(OptionId, Attribute) {}
Attribute ViewerDelegateComponent::getOption(OptionId) { return {}; }
Attribute ViewerDelegateComponent::attributeQueryA(const std::string&) { return {}; }
Attribute ViewerDelegateComponent::attributeQueryB(const std::string&) { return {}; }

}  // namespace Tessera::Sorrel::ViewerAPI
