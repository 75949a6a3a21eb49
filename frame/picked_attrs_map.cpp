#include "frame/picked_attrs_map.h"

#include <sstream>
#include <string>

#include "frame/group_builder.h"

namespace Tessera::Sorrel::ViewerAPI {

void PickedAttrsMap::fill(GroupAttribute&& group) {
    clear();
    if (!group.isValid()) return;
    const GroupAttribute owned(std::move(group));
    for (std::int64_t i = 0; i < owned.getNumberOfChildren(); ++i) {
        std::uint64_t key = 0;
        std::istringstream(owned.getChildName(i)) >> key;
        (*this)[key] = owned.getChildByIndex(i);
    }
}

GroupAttribute PickedAttrsMap::toGroup() const {
    if (empty()) return {};
    GroupBuilder builder;
    for (const auto& [key, value] : *this) {
        std::ostringstream name;
        name << key;
        builder.set(name.str(), value);
    }
    return builder.build();
}

}  // namespace Tessera::Sorrel::ViewerAPI
